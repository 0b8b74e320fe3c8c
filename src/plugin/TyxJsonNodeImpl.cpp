// The implementation of JSON nodes over one variant.
#include "plugin/TyxJsonNodeImpl.h"

#include <iterator>

#include "core/TyxPost.h"
#include "plugin/TyxJsonText.h"

namespace tyx::internal {

namespace {

template <class T>
const T &heldValue(const TyxVariant &value)
{
    return static_cast<const TyxVariantImpl<T> &>(value.impl()).get();
}

TyxVariant emptyValueOf(const TyxJsonNodeType &type)
{
    switch (type) {
    case TyxJsonNodeType::String: return TyxVariant(TyxString());
    case TyxJsonNodeType::Number: return TyxVariant(0.0);
    case TyxJsonNodeType::Bool: return TyxVariant(false);
    case TyxJsonNodeType::Array: return TyxVariant(TyxVariantList());
    case TyxJsonNodeType::Node: return TyxVariant(TyxVariantMap());
    default: return TyxVariant();
    }
}

} // namespace

TyxJsonNodeImpl::TyxJsonNodeImpl(const TyxJsonNodeType &type) : m_value(emptyValueOf(type)) {}

TyxJsonNodeImpl::TyxJsonNodeImpl(const TyxString &name, const TyxVariant &value)
    : m_name(name), m_value(value)
{
}

TyxJsonNodeImpl::TyxJsonNodeImpl(const TyxJsonNodeImpl &other)
    : TyxJsonNodeIF(), m_name(other.m_name), m_value(other.m_value), m_comment(other.m_comment)
{
}

TyxJsonNodeImpl::~TyxJsonNodeImpl() = default;

TyxJsonNodeIF *TyxJsonNodeImpl::clone() const { return new TyxJsonNodeImpl(*this); }

void TyxJsonNodeImpl::clear()
{
    m_value.clear();
    m_comment.clear();
    m_hasPosition = false;
}

void TyxJsonNodeImpl::setValue(const TyxVariant &value)
{
    m_value = value;
    m_hasPosition = false;
}

void TyxJsonNodeImpl::setName(const TyxString &name) { m_name = name; }

void TyxJsonNodeImpl::setComment(const TyxString &comment) { m_comment = comment; }

void TyxJsonNodeImpl::pushBack(const TyxJsonNodeIF &node)
{
    const auto *other = dynamic_cast<const TyxJsonNodeImpl *>(&node);
    if (!other) {
        TYX_POST_ERROR(L"Cannot pushBack an TyxJsonNodeIFPtr instantiated by a different TyxJsonNode "
                       L"implementation.");
        return;
    }
    m_hasPosition = false;
    const TyxVariant added = other->m_value;
    if (m_value.type() == TyxMetaType::VariantList && !m_value.isShared()) {
        // The list is this node's alone: it grows in place.
        auto *list = static_cast<TyxVariantList *>(const_cast<TyxVariantIF &>(m_value.impl()).data());
        list->push_back(added);
        return;
    }
    TyxVariantList list;
    if (m_value.type() == TyxMetaType::VariantList)
        list = heldValue<TyxVariantList>(m_value);
    else if (m_value.isValid())
        list.push_back(m_value);
    list.push_back(added);
    m_value = TyxVariant(std::move(list));
}

bool TyxJsonNodeImpl::empty() const { return size() == 0; }

size_t TyxJsonNodeImpl::size() const
{
    switch (m_value.type()) {
    case TyxMetaType::VariantList: return heldValue<TyxVariantList>(m_value).size();
    case TyxMetaType::VariantMap: return heldValue<TyxVariantMap>(m_value).size();
    default: return 0;
    }
}

TyxJsonNodeType TyxJsonNodeImpl::type() const { return typeOf(m_value); }

TyxString TyxJsonNodeImpl::name() const { return m_name; }

TyxString TyxJsonNodeImpl::comment() const { return m_comment; }

bool TyxJsonNodeImpl::toBool() const { return m_value.value<bool>(); }

TyxString TyxJsonNodeImpl::toString() const { return m_value.value<TyxString>(); }

int TyxJsonNodeImpl::toInt() const { return m_value.value<int>(); }

double TyxJsonNodeImpl::toDouble() const { return m_value.value<double>(); }

TyxJsonNodeIF *TyxJsonNodeImpl::toNode() const
{
    return new TyxJsonNodeImpl(m_name, TyxVariant(m_value.value<TyxVariantMap>()));
}

TyxJsonNodeIF *TyxJsonNodeImpl::toArray() const
{
    return new TyxJsonNodeImpl(m_name, TyxVariant(m_value.value<TyxVariantList>()));
}

TyxString TyxJsonNodeImpl::toJson(bool pretty) const { return jsonText(m_value, pretty); }

TyxJsonNodeIF *TyxJsonNodeImpl::begin() const { return at(0); }

TyxJsonNodeIF *TyxJsonNodeImpl::end() const { return nullptr; }

TyxJsonNodeIF *TyxJsonNodeImpl::at(unsigned int index) const
{
    if (m_value.type() == TyxMetaType::VariantList) {
        const TyxVariantList &list = heldValue<TyxVariantList>(m_value);
        return index < list.size() ? new TyxJsonNodeImpl(TyxString(), list[index]) : nullptr;
    }
    if (m_value.type() != TyxMetaType::VariantMap)
        return nullptr;
    const TyxVariantMap &map = heldValue<TyxVariantMap>(m_value);
    if (index >= map.size())
        return nullptr;
    if (m_hasPosition && m_position + 1 == index)
        ++m_member;
    else if (!m_hasPosition || m_position != index)
        m_member = std::next(map.begin(), index);
    m_position = index;
    m_hasPosition = true;
    return new TyxJsonNodeImpl(m_member->first, m_member->second);
}

TyxJsonNodeIF *TyxJsonNodeImpl::find(const TyxString &name) const
{
    if (m_value.type() != TyxMetaType::VariantMap)
        return nullptr;
    const TyxVariantMap &map = heldValue<TyxVariantMap>(m_value);
    const auto it = map.find(name);
    return it == map.end() ? nullptr : new TyxJsonNodeImpl(it->first, it->second);
}

TyxJsonNodeType TyxJsonNodeImpl::typeOf(const TyxVariant &value)
{
    switch (value.type()) {
    case TyxMetaType::Invalid: return TyxJsonNodeType::Null;
    case TyxMetaType::Bool: return TyxJsonNodeType::Bool;
    case TyxMetaType::String: return TyxJsonNodeType::String;
    case TyxMetaType::VariantList: return TyxJsonNodeType::Array;
    case TyxMetaType::VariantMap: return TyxJsonNodeType::Node;
    default: return value.isNumeric() ? TyxJsonNodeType::Number : TyxJsonNodeType::String;
    }
}

} // namespace tyx::internal
