// JSON nodes, and the JSON text functions over variants.
#include <tyx/TyxJsonNode.h>

#include <istream>
#include <ostream>

#include "core/TyxPost.h"
#include "plugin/TyxJsonHooks.h"
#include "plugin/TyxJsonNodeImpl.h"
#include "plugin/TyxJsonText.h"

namespace tyx {

using internal::jsonHooks;
using internal::TyxJsonNodeIF;
using internal::TyxJsonNodeIFPtr;

namespace {

TyxJsonNodeIFPtr ownedPtr(TyxJsonNodeIF *impl) { return impl ? TyxJsonNodeIFPtr(impl) : TyxJsonNodeIFPtr(); }

TyxJsonNodeIFPtr cloneOf(const TyxJsonNodeIFPtr &impl) { return impl ? ownedPtr(impl->clone()) : impl; }

TyxJsonNodeIF *allocNode(const TyxString &name, const TyxVariant &value)
{
    return jsonHooks().allocNode(TyxJsonNodeType(), &name, &value);
}

} // namespace

TyxTextMsg fromJson(std::istream &is, TyxVariant &value)
{
    return internal::parseJsonText(internal::readAllText(is), value).msg;
}

TyxTextMsg fromJson(std::wistream &is, TyxVariant &value)
{
    return internal::parseJsonText(internal::readAllText(is), value).msg;
}

void toJson(std::ostream &os, const TyxVariant &value, const TyxString &indent, bool pretty)
{
    internal::writeJsonText(os, value, indent, pretty);
}

void toJson(std::wostream &os, const TyxVariant &value, const TyxString &indent, bool pretty)
{
    internal::writeJsonText(os, value, indent, pretty);
}

TyxJsonNode::TyxJsonNode() = default;

TyxJsonNode::TyxJsonNode(const TyxJsonNodeType &type)
    : m_impl(ownedPtr(jsonHooks().allocNode(type, nullptr, nullptr)))
{
}

TyxJsonNode::TyxJsonNode(const TyxString &name, const TyxVariant &value)
    : m_impl(ownedPtr(allocNode(name, value)))
{
}

TyxJsonNode::TyxJsonNode(const TyxJsonNode &other) : TyxObject(other), m_impl(cloneOf(other.m_impl)) {}

TyxJsonNode::TyxJsonNode(TyxJsonNode &&other) noexcept : TyxObject(other), m_impl(other.m_impl)
{
    other.m_impl = TyxJsonNodeIFPtr();
}

TyxJsonNode::TyxJsonNode(const TyxJsonNodeIFPtr &impl) : m_impl(impl) {}

TyxJsonNode::~TyxJsonNode() = default;

TyxJsonNode &TyxJsonNode::operator=(const TyxJsonNode &other)
{
    if (this != &other)
        m_impl = cloneOf(other.m_impl);
    return *this;
}

TyxJsonNode &TyxJsonNode::operator=(TyxJsonNode &&other) noexcept
{
    if (this != &other) {
        m_impl = other.m_impl;
        other.m_impl = TyxJsonNodeIFPtr();
    }
    return *this;
}

TyxJsonNode &TyxJsonNode::operator=(const TyxVariant &value)
{
    setValue(value);
    return *this;
}

TyxJsonNode TyxJsonNode::adopt(TyxJsonNodeIF *impl) { return TyxJsonNode(ownedPtr(impl)); }

unsigned int TyxJsonNode::indexOf(const TyxJsonNodeIF &owner, const TyxString &name)
{
    // Keys of a map are unique ignoring case, so the first match is the one.
    for (unsigned int index = 0;; ++index) {
        const TyxJsonNode member = adopt(owner.at(index));
        if (member.isNull() || isEqual(member.name(), name))
            return index;
    }
}

TyxString TyxJsonNode::className() const { return L"TyxJsonNode"; }

void TyxJsonNode::clear()
{
    if (m_impl)
        m_impl->clear();
}

bool TyxJsonNode::empty() const { return !m_impl || m_impl->empty(); }

size_t TyxJsonNode::size() const { return m_impl ? m_impl->size() : 0; }

TyxJsonNodeType TyxJsonNode::type() const
{
    return m_impl ? m_impl->type() : TyxJsonNodeType(TyxJsonNodeType::Null);
}

TyxString TyxJsonNode::name() const { return m_impl ? m_impl->name() : TyxString(); }

void TyxJsonNode::setName(const TyxString &name)
{
    if (!m_impl)
        m_impl = ownedPtr(allocNode(name, TyxVariant()));
    else
        m_impl->setName(name);
}

TyxString TyxJsonNode::comment() const { return m_impl ? m_impl->comment() : TyxString(); }

void TyxJsonNode::setComment(const TyxString &comment)
{
    if (!m_impl)
        m_impl = ownedPtr(allocNode(TyxString(), TyxVariant()));
    m_impl->setComment(comment);
}

TyxVariant TyxJsonNode::value() const
{
    const auto *impl = dynamic_cast<const internal::TyxJsonNodeImpl *>(m_impl.get());
    return impl ? impl->value() : TyxVariant();
}

void TyxJsonNode::setValue(const TyxVariant &value)
{
    if (!m_impl)
        m_impl = ownedPtr(allocNode(TyxString(), value));
    else
        m_impl->setValue(value);
}

void TyxJsonNode::pushBack(const TyxJsonNode &node)
{
    if (!node.m_impl) {
        TYX_POST_ERROR(L"Cannot pushBack an TyxJsonNodeIFPtr instantiated by a different TyxJsonNode "
                       L"implementation.");
        return;
    }
    if (!m_impl)
        m_impl = ownedPtr(allocNode(TyxString(), TyxVariant()));
    m_impl->pushBack(*node.m_impl);
}

bool TyxJsonNode::toBool() const { return m_impl ? m_impl->toBool() : TyxVariant().value<bool>(); }

double TyxJsonNode::toDouble() const { return m_impl ? m_impl->toDouble() : TyxVariant().value<double>(); }

int TyxJsonNode::toInt() const { return m_impl ? m_impl->toInt() : TyxVariant().value<int>(); }

TyxString TyxJsonNode::toString() const { return m_impl ? m_impl->toString() : TyxString(); }

TyxJsonNode TyxJsonNode::toNode() const
{
    return m_impl ? adopt(m_impl->toNode()) : TyxJsonNode(TyxString(), TyxVariant(TyxVariantMap()));
}

TyxJsonNode TyxJsonNode::toArray() const
{
    return m_impl ? adopt(m_impl->toArray()) : TyxJsonNode(TyxString(), TyxVariant(TyxVariantList()));
}

TyxString TyxJsonNode::toJson(bool pretty) const
{
    return m_impl ? m_impl->toJson(pretty) : internal::jsonText(TyxVariant(), pretty);
}

TyxJsonNode TyxJsonNode::parse(const TyxString &text) { return adopt(jsonHooks().parseJson(text)); }

TyxJsonNode TyxJsonNode::parse(std::istream &is)
{
    TyxVariant value;
    if (!fromJson(is, value).empty())
        return TyxJsonNode();
    return TyxJsonNode(TyxString(), value);
}

TyxJsonNode TyxJsonNode::parse(std::wistream &is)
{
    TyxVariant value;
    if (!fromJson(is, value).empty())
        return TyxJsonNode();
    return TyxJsonNode(TyxString(), value);
}

bool TyxJsonNode::isValid(const TyxString &text)
{
    TyxVariant value;
    return internal::parseJsonText(text, value).msg.empty();
}

bool TyxJsonNode::isValid(std::istream &is, uint64_t &line, uint64_t &offset)
{
    TyxVariant value;
    const internal::TyxJsonParseResult outcome = internal::parseJsonText(internal::readAllText(is), value);
    line = outcome.line;
    offset = outcome.offset;
    return outcome.msg.empty();
}

bool TyxJsonNode::isValid(std::wistream &is, uint64_t &line, uint64_t &offset)
{
    TyxVariant value;
    const internal::TyxJsonParseResult outcome = internal::parseJsonText(internal::readAllText(is), value);
    line = outcome.line;
    offset = outcome.offset;
    return outcome.msg.empty();
}

TyxString TyxJsonNode::stripWhiteSpace(const TyxString &text) { return jsonHooks().stripWhiteSpace(text); }

std::ostream &operator<<(std::ostream &os, const TyxJsonNode &node)
{
    return os << toUTF8(node.toJson(false));
}

std::wostream &operator<<(std::wostream &os, const TyxJsonNode &node) { return os << node.toJson(false); }

std::istream &operator>>(std::istream &is, TyxJsonNode &node)
{
    node = TyxJsonNode::parse(is);
    if (node.isNull())
        is.setstate(std::ios::failbit);
    return is;
}

std::wistream &operator>>(std::wistream &is, TyxJsonNode &node)
{
    node = TyxJsonNode::parse(is);
    if (node.isNull())
        is.setstate(std::ios::failbit);
    return is;
}

} // namespace tyx
