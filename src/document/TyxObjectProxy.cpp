// Documents of objects: from an object through its meta object, back through
// its factory, and the map form used for JSON.
#include <tyx/TyxObjectProxy.h>

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <sstream>

#include <tyx/TyxBase64.h>
#include <tyx/TyxBuffer.h>
#include <tyx/TyxMetaObject.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxObjectFactory.h>
#include <tyx/TyxValidator.h>

#include "core/TyxPost.h"
#include "document/TyxXmlText.h"

namespace tyx {

namespace {

using Holder = std::pair<TyxObjectProxy::ObjectOf, TyxObjectProxy::VariantOf>;

struct HolderTable {
    std::mutex mutex;
    std::map<int, Holder> holders;
};

HolderTable &holderTable()
{
    static HolderTable table;
    return table;
}

// The library's own holders join on first use of the table.
void joinLibraryHolders()
{
    static const bool joined = [] {
        TyxObjectProxy::registerPointerHolder<TyxValidatorConstPtr, TyxValidator>();
        TyxObjectProxy::registerValueHolder<TyxMetaProperty>();
        return true;
    }();
    (void)joined;
}

bool holderOf(const TyxMetaType &type, Holder &holder)
{
    joinLibraryHolders();
    HolderTable &table = holderTable();
    const std::lock_guard lock(table.mutex);
    const auto it = table.holders.find(type.toEnum());
    if (it == table.holders.end())
        return false;
    holder = it->second;
    return true;
}

const TyxMetaType &proxyType() { return internal::TyxVariantTraits<TyxObjectProxy>::type(); }

TyxString where(const TyxString &name, const TyxString &className)
{
    return L"Property '" + name + L"' of class '" + className + L"'";
}

TyxTextMsg nested(const TyxString &name, const TyxString &className, const TyxTextMsg &inner)
{
    return TYX_ERROR_MSG(L"In property '" + name + L"' of class '" + className + L"': " + inner.text());
}

TyxString shortText(const TyxVariant &value)
{
    TyxString text = value.value<TyxString>();
    if (text.size() > 40)
        text = text.substr(0, 40) + L"...";
    return text;
}

TyxTextMsg tooDeep(const TyxString &className)
{
    return TYX_ERROR_MSG(L"Objects are nested deeper than " + std::to_wstring(internal::TyxXmlMaxDepth) +
                         L" levels at class '" + className + L"'.");
}

TyxTextMsg readObject(const TyxObject &object, TyxObjectProxy &document, int depth)
{
    const TyxString className = object.className();
    if (depth >= internal::TyxXmlMaxDepth)
        return tooDeep(className);
    const TyxMetaObjectConstPtr view = object.metaObject();
    if (!view)
        return TYX_ERROR_MSG(L"Class '" + className + L"' has no meta object.");
    // The view is fresh and ours alone; its getters only read the object.
    TyxMetaObject &meta = const_cast<TyxMetaObject &>(*view);
    const TyxMetaPropertiesConstPtr properties = meta.properties();
    TyxObjectProxy read(className);
    for (const TyxString &name : properties->propertyNames(true)) {
        const TyxMetaPropertyConstPtr description = properties->property(name, true);
        if (!description || !description->flags().isPersistable())
            continue;
        TyxVariant value;
        if (meta.getProperty(name, value) != 0)
            continue; // no getter: nothing to persist
        Holder holder;
        if (holderOf(value.type(), holder)) {
            const TyxObject *child = holder.first(value);
            if (!child) {
                value = TyxVariant();
            } else {
                TyxObjectProxy childDocument;
                if (TyxTextMsg msg = readObject(*child, childDocument, depth + 1); !msg.empty())
                    return nested(name, className, msg);
                value = TyxVariant(std::move(childDocument));
            }
        }
        read.setProperty(name, value);
    }
    document = std::move(read);
    return TyxTextMsg();
}

TyxTextMsg applyDocument(const TyxObjectProxy &document, TyxObject &object, int depth);

TyxTextMsg createFrom(const TyxObjectProxy &document, TyxObject *&object, int depth)
{
    if (depth >= internal::TyxXmlMaxDepth)
        return tooDeep(document.objectClassName());
    TyxVariantMap arguments;
    for (const auto &[name, value] : document.properties())
        arguments[name] = value;
    TyxTextMsg msg;
    std::unique_ptr<TyxObject> made(
        TyxObjectFactory::createObject(document.objectClassName(), arguments, &msg));
    if (!made)
        return msg;
    if (msg = applyDocument(document, *made, depth); !msg.empty())
        return msg;
    object = made.release();
    return TyxTextMsg();
}

struct Prepared {
    TyxString name;
    TyxVariant value;
};

// Turns the document's value of one property into the value to set.
TyxTextMsg prepare(const TyxMetaProperty &description, const TyxString &name, const TyxString &className,
                   TyxVariant &value, int depth)
{
    const TyxMetaType &type = description.type();
    Holder holder;
    const bool holds = holderOf(type, holder);
    if (value.type() == proxyType()) {
        if (!holds)
            return TYX_ERROR_MSG(where(name, className) + L" does not hold objects.");
        const TyxObjectProxy &childDocument = value.value<TyxObjectProxy>();
        TyxObject *child = nullptr;
        if (TyxTextMsg msg = createFrom(childDocument, child, depth + 1); !msg.empty())
            return nested(name, className, msg);
        if (!holder.second(child, value))
            return TYX_ERROR_MSG(where(name, className) + L" cannot hold an object of class '" +
                                 childDocument.objectClassName() + L"'.");
    } else if (!value.isValid() && holds) {
        if (!holder.second(nullptr, value))
            return TYX_ERROR_MSG(where(name, className) + L" needs an object.");
    } else if (type == TyxMetaType::BufferPtr && value.type() == TyxMetaType::String) {
        std::vector<uint8_t> bytes;
        if (TyxTextMsg msg = TyxBase64::decode(value.value<TyxString>(), bytes); !msg.empty())
            return TYX_ERROR_MSG(where(name, className) + L": " + msg.text());
        TyxBufferPtr buffer(new TyxBuffer(bytes.size(), true));
        std::copy(bytes.begin(), bytes.end(), static_cast<uint8_t *>(buffer->data()));
        value = TyxVariant(buffer);
    }
    TyxTextMsg refusal;
    if (const TyxValidatorConstPtr &validator = description.validator();
        validator && !validator->isValid(value, &refusal))
        return TYX_ERROR_MSG(where(name, className) + L" refused the value: " + refusal.text());
    return TyxTextMsg();
}

TyxTextMsg applyDocument(const TyxObjectProxy &document, TyxObject &object, int depth)
{
    const TyxString className = object.className();
    if (document.objectClassName() != className)
        return TYX_ERROR_MSG(L"A document of class '" + document.objectClassName() +
                             L"' cannot be applied to an object of class '" + className + L"'.");
    const TyxMetaObjectPtr meta = object.metaObject();
    if (!meta)
        return TYX_ERROR_MSG(L"Class '" + className + L"' has no meta object.");
    const TyxMetaPropertiesConstPtr properties = meta->properties();

    // Every value is prepared and checked before the first one is set.
    std::vector<Prepared> toSet;
    for (const auto &[name, documentValue] : document.properties()) {
        const TyxMetaPropertyConstPtr description = properties->property(name, true);
        if (!description)
            return TYX_ERROR_MSG(L"Unknown property '" + name + L"' of class '" + className + L"'.");
        TyxVariant value = documentValue;
        if (TyxTextMsg msg = prepare(*description, name, className, value, depth); !msg.empty())
            return msg;
        if (!description->flags().isEditable()) {
            TyxVariant current;
            if (meta->getProperty(name, current) == 0 && !(current == value))
                return TYX_ERROR_MSG(where(name, className) + L" is read-only and holds '" +
                                     shortText(current) + L"', not '" + shortText(value) + L"'.");
            continue;
        }
        toSet.push_back({name, std::move(value)});
    }

    // A setter may still refuse: what was set before it goes back.
    std::vector<Prepared> before;
    for (const Prepared &entry : toSet) {
        TyxVariant old;
        const bool readable = meta->getProperty(entry.name, old) == 0;
        if (meta->setProperty(entry.name, entry.value) != 0) {
            for (auto it = before.rbegin(); it != before.rend(); ++it)
                meta->setProperty(it->name, it->value);
            return TYX_ERROR_MSG(where(entry.name, className) + L" did not accept the value '" +
                                 shortText(entry.value) + L"'.");
        }
        if (readable)
            before.push_back({entry.name, old});
    }
    return TyxTextMsg();
}

// JSON has no buffers and no documents: buffers go as Base64, documents as maps.
TyxVariant toPlain(const TyxVariant &value)
{
    switch (value.type()) {
    case TyxMetaType::BufferPtr: {
        const TyxBufferPtr buffer = value.value<TyxBufferPtr>();
        if (!buffer)
            return TyxVariant();
        std::string text;
        TyxBase64::encode(buffer->data(), buffer->size(), text);
        return TyxVariant(text);
    }
    case TyxMetaType::VariantList: {
        TyxVariantList list;
        for (const TyxVariant &element : value.value<TyxVariantList>())
            list.push_back(toPlain(element));
        return TyxVariant(std::move(list));
    }
    case TyxMetaType::VariantMap: {
        TyxVariantMap map;
        for (const auto &[key, member] : value.value<TyxVariantMap>())
            map.emplace(key, toPlain(member));
        return TyxVariant(std::move(map));
    }
    default: break;
    }
    const int code = value.type().toEnum();
    if (code == TyxMetaType::Invalid || code <= TyxMetaType::Double || code == TyxMetaType::Char ||
        code == TyxMetaType::String)
        return value;
    if (value.type() == proxyType())
        return value.value<TyxObjectProxy>().toVariant();
    if (TyxObjectProxy document;
        TyxObjectProxy::isHolder(value.type()) && TyxObjectProxy::fromHolder(value, document).empty())
        return document.objectClassName().empty() ? TyxVariant() : document.toVariant();
    // Anything else as its stream form, which the property's setter reads back.
    std::wostringstream os;
    os.precision(std::numeric_limits<double>::max_digits10);
    value.impl().write(os);
    return TyxVariant(os.str());
}

bool isDocumentMap(const TyxVariantMap &map)
{
    if (map.size() != 2)
        return false;
    const auto cls = map.find(L"class");
    const auto props = map.find(L"properties");
    return cls != map.end() && props != map.end() && cls->second.type() == TyxMetaType::String &&
           props->second.type() == TyxMetaType::VariantMap;
}

TyxTextMsg fromPlain(const TyxVariant &value, TyxVariant &out, int depth)
{
    if (depth >= internal::TyxXmlMaxDepth)
        return TYX_ERROR_MSG(L"The document is nested deeper than " +
                             std::to_wstring(internal::TyxXmlMaxDepth) + L" levels.");
    if (value.type() == TyxMetaType::VariantList) {
        TyxVariantList list;
        for (const TyxVariant &element : value.value<TyxVariantList>()) {
            list.emplace_back();
            if (TyxTextMsg msg = fromPlain(element, list.back(), depth + 1); !msg.empty())
                return msg;
        }
        out = TyxVariant(std::move(list));
        return TyxTextMsg();
    }
    if (value.type() != TyxMetaType::VariantMap) {
        out = value;
        return TyxTextMsg();
    }
    const TyxVariantMap &map = value.value<TyxVariantMap>();
    if (isDocumentMap(map)) {
        TyxObjectProxy document;
        if (TyxTextMsg msg = TyxObjectProxy::fromVariant(value, document); !msg.empty())
            return msg;
        out = TyxVariant(std::move(document));
        return TyxTextMsg();
    }
    TyxVariantMap result;
    for (const auto &[key, member] : map) {
        TyxVariant converted;
        if (TyxTextMsg msg = fromPlain(member, converted, depth + 1); !msg.empty())
            return msg;
        result.emplace(key, converted);
    }
    out = TyxVariant(std::move(result));
    return TyxTextMsg();
}

} // namespace

TyxObjectProxy::TyxObjectProxy(const TyxString &objectClassName) : m_objectClassName(objectClassName) {}

TyxObjectProxy::~TyxObjectProxy() = default;

TyxString TyxObjectProxy::className() const { return L"TyxObjectProxy"; }

TyxVariant TyxObjectProxy::property(const TyxString &name) const
{
    for (const auto &entry : m_properties) {
        if (entry.first == name)
            return entry.second;
    }
    return TyxVariant();
}

bool TyxObjectProxy::contains(const TyxString &name) const
{
    return std::any_of(m_properties.begin(), m_properties.end(),
                       [&](const TyxVariantPair &entry) { return entry.first == name; });
}

void TyxObjectProxy::setProperty(const TyxString &name, const TyxVariant &value)
{
    for (auto &entry : m_properties) {
        if (entry.first == name) {
            entry.second = value;
            return;
        }
    }
    m_properties.emplace_back(name, value);
}

bool TyxObjectProxy::removeProperty(const TyxString &name)
{
    const auto it = std::find_if(m_properties.begin(), m_properties.end(),
                                 [&](const TyxVariantPair &entry) { return entry.first == name; });
    if (it == m_properties.end())
        return false;
    m_properties.erase(it);
    return true;
}

void TyxObjectProxy::clear()
{
    m_objectClassName.clear();
    m_properties.clear();
}

bool TyxObjectProxy::operator==(const TyxObjectProxy &other) const
{
    if (m_objectClassName != other.m_objectClassName || m_properties.size() != other.m_properties.size())
        return false;
    for (size_t i = 0; i < m_properties.size(); ++i) {
        const auto &a = m_properties[i];
        const auto &b = other.m_properties[i];
        if (a.first != b.first || a.second.type() != b.second.type() || !(a.second == b.second))
            return false;
    }
    return true;
}

TyxTextMsg TyxObjectProxy::fromObject(const TyxObject &object, TyxObjectProxy &document)
{
    return readObject(object, document, 0);
}

TyxTextMsg TyxObjectProxy::createObject(TyxObject *&object) const { return createFrom(*this, object, 0); }

TyxTextMsg TyxObjectProxy::applyTo(TyxObject &object) const { return applyDocument(*this, object, 0); }

TyxVariant TyxObjectProxy::toVariant() const
{
    TyxVariantMap properties;
    for (const auto &[name, value] : m_properties)
        properties.emplace(name, toPlain(value));
    TyxVariantMap map;
    map.emplace(L"class", TyxVariant(m_objectClassName));
    map.emplace(L"properties", TyxVariant(std::move(properties)));
    return TyxVariant(std::move(map));
}

TyxTextMsg TyxObjectProxy::fromVariant(const TyxVariant &value, TyxObjectProxy &document)
{
    if (value.type() != TyxMetaType::VariantMap)
        return TYX_ERROR_MSG(L"A document is a map with the members \"class\" and \"properties\", not a " +
                             value.typeName() + L".");
    const TyxVariantMap &map = value.value<TyxVariantMap>();
    TyxObjectProxy read;
    for (const auto &[key, member] : map) {
        if (key == L"class") {
            if (member.type() != TyxMetaType::String || member.value<TyxString>().empty())
                return TYX_ERROR_MSG(L"The member \"class\" of a document must be a class name.");
            read.m_objectClassName = member.value<TyxString>();
        } else if (key == L"properties") {
            if (member.type() != TyxMetaType::VariantMap)
                return TYX_ERROR_MSG(L"The member \"properties\" of a document must be a map.");
        } else {
            return TYX_ERROR_MSG(L"Unknown member '" + key + L"' in a document.");
        }
    }
    if (read.m_objectClassName.empty())
        return TYX_ERROR_MSG(L"A document needs the member \"class\".");
    if (const auto it = map.find(L"properties"); it != map.end()) {
        for (const auto &[name, member] : it->second.value<TyxVariantMap>()) {
            TyxVariant converted;
            if (TyxTextMsg msg = fromPlain(member, converted, 1); !msg.empty())
                return nested(name, read.m_objectClassName, msg);
            read.m_properties.emplace_back(name, converted);
        }
    }
    document = std::move(read);
    return TyxTextMsg();
}

void TyxObjectProxy::registerHolder(const TyxMetaType &type, ObjectOf objectOf, VariantOf variantOf)
{
    HolderTable &table = holderTable();
    const std::lock_guard lock(table.mutex);
    table.holders[type.toEnum()] = Holder(objectOf, variantOf);
}

TyxTextMsg TyxObjectProxy::fromHolder(const TyxVariant &value, TyxObjectProxy &document)
{
    Holder holder;
    if (!holderOf(value.type(), holder))
        return TYX_ERROR_MSG(L"The type " + value.typeName() + L" holds no objects.");
    const TyxObject *object = holder.first(value);
    if (!object) {
        document = TyxObjectProxy();
        return TyxTextMsg();
    }
    return readObject(*object, document, 0);
}

TyxTextMsg TyxObjectProxy::toHolder(const TyxMetaType &type, TyxVariant &value) const
{
    Holder holder;
    if (!holderOf(type, holder))
        return TYX_ERROR_MSG(L"The type " + type.toString() + L" holds no objects.");
    TyxObject *object = nullptr;
    if (!m_objectClassName.empty()) {
        if (TyxTextMsg msg = createFrom(*this, object, 0); !msg.empty())
            return msg;
    }
    TyxVariant made;
    if (!holder.second(object, made))
        return TYX_ERROR_MSG(L"The type " + type.toString() + L" cannot hold " +
                             (m_objectClassName.empty()
                                  ? TyxString(L"a null object")
                                  : L"an object of class '" + m_objectClassName + L"'") +
                             L".");
    value = made;
    return TyxTextMsg();
}

bool TyxObjectProxy::isHolder(const TyxMetaType &type)
{
    Holder holder;
    return holderOf(type, holder);
}

} // namespace tyx
