// Collections of property descriptions.
#include <tyx/TyxMetaProperties.h>

#include <utility>

namespace tyx {

TyxMetaProperties::Iterator_p::Iterator_p(const TyxMetaProperties *owner, TyxStrList names, size_t position)
    : m_owner(owner), m_names(std::move(names)), m_position(position)
{
}

TyxMetaPropertyPtr TyxMetaProperties::Iterator_p::operator*() const
{
    if (!m_owner || m_position >= m_names.size())
        return {};
    return TyxMetaPropertyPtr(
        const_cast<TyxMetaProperty *>(m_owner->property(m_names[m_position], true).get()));
}

TyxMetaProperties::TyxMetaProperties(const TyxString &metaClassName, const TyxMetaPropertiesPtr &superClass)
    : m_metaClassName(metaClassName), m_superClass(superClass)
{
}

TyxMetaProperties::TyxMetaProperties(const TyxMetaProperties &other)
    : TyxObject(other), TyxRefCounted(), m_names(other.m_names), m_table(other.m_table),
      m_metaClassName(other.m_metaClassName), m_superClass(other.m_superClass)
{
}

TyxMetaProperties &TyxMetaProperties::operator=(const TyxMetaProperties &other)
{
    if (this != &other) {
        // The parent may be reachable only through the old value: copy first.
        const TyxMetaPropertiesPtr parent = other.m_superClass;
        m_names = other.m_names;
        m_table = other.m_table;
        m_metaClassName = other.m_metaClassName;
        m_superClass = parent;
    }
    return *this;
}

TyxMetaProperties::~TyxMetaProperties() = default;

int TyxMetaProperties::append(const TyxMetaPropertyPtr &property)
{
    if (!property || m_table.count(property->name()))
        return 1;
    m_names.push_back(property->name());
    m_table.emplace(property->name(), property);
    return 0;
}

TyxMetaPropertyConstPtr TyxMetaProperties::property(const TyxString &name, bool inherited) const
{
    const auto it = m_table.find(name);
    if (it != m_table.end())
        return TyxMetaPropertyConstPtr(it->second.get());
    if (inherited && m_superClass)
        return static_cast<const TyxMetaProperties &>(*m_superClass).property(name, inherited);
    return {};
}

TyxMetaPropertyPtr TyxMetaProperties::property(const TyxString &name, bool inherited)
{
    const auto it = m_table.find(name);
    if (it != m_table.end())
        return it->second;
    if (inherited && m_superClass)
        return m_superClass->property(name, inherited);
    return {};
}

TyxMetaPropertyPtr TyxMetaProperties::property(uint64_t index, bool inherited) const
{
    const TyxStrList names = propertyNames(inherited);
    if (index >= names.size())
        return {}; // a safe miss instead of reading past the list
    return TyxMetaPropertyPtr(const_cast<TyxMetaProperty *>(property(names[index], true).get()));
}

bool TyxMetaProperties::contains(const TyxString &name, bool inherited) const
{
    return static_cast<bool>(property(name, inherited));
}

uint64_t TyxMetaProperties::indexOf(const TyxString &name, bool ignoreCase, bool inherited) const
{
    const size_t index = propertyNames(inherited).find(name, ignoreCase);
    return index == TyxStrList::INVALID_INDEX() ? INVALID_INDEX() : index;
}

uint64_t TyxMetaProperties::size(bool inherited) const
{
    uint64_t count = m_table.size();
    if (inherited && m_superClass)
        count += m_superClass->size(false); // one level only, on purpose
    return count;
}

uint64_t TyxMetaProperties::numProperties(bool) const { return size(false); }

TyxStrList TyxMetaProperties::propertyNames(bool inherited, bool editableOnly) const
{
    if (!inherited || !m_superClass)
        return m_names;
    TyxStrList names = m_superClass->propertyNames(inherited, false);
    if (editableOnly)
        names = removeNonEditables(names);
    for (const TyxString &name : m_names)
        names.push_back(name);
    return names;
}

TyxStrList TyxMetaProperties::removeNonEditables(const TyxStrList &names) const
{
    if (names.empty())
        return names;
    TyxStrList kept;
    for (const TyxString &name : names) {
        const TyxMetaPropertyConstPtr found = property(name, true);
        if (!found)
            continue;
        const uint32_t flags = found->flags().value();
        if (flags == 0 || (flags & (TyxMetaFlag::ReadOnly | TyxMetaFlag::Disabled)) == 0)
            kept.push_back(name);
    }
    return kept;
}

TyxStrList TyxMetaProperties::iterationNames() const
{
    TyxStrList names;
    if (m_superClass)
        names = m_superClass->propertyNames(true);
    for (const TyxString &name : m_names)
        names.push_back(name);
    return names;
}

TyxMetaProperties::Iterator_p TyxMetaProperties::begin() const
{
    return Iterator_p(this, iterationNames(), 0);
}

TyxMetaProperties::Iterator_p TyxMetaProperties::end() const
{
    TyxStrList names = iterationNames();
    const size_t count = names.size();
    return Iterator_p(this, std::move(names), count);
}

TyxMetaProperties::Iterator_p TyxMetaProperties::begin() { return std::as_const(*this).begin(); }

TyxMetaProperties::Iterator_p TyxMetaProperties::end() { return std::as_const(*this).end(); }

bool TyxMetaProperties::operator==(const TyxMetaProperties &other) const
{
    if (m_metaClassName != other.m_metaClassName || m_table.size() != other.m_table.size())
        return false;
    for (auto a = m_table.begin(), b = other.m_table.begin(); a != m_table.end(); ++a, ++b) {
        if (a->first != b->first || a->second.get() != b->second.get())
            return false;
    }
    return true;
}

TyxString TyxMetaProperties::className() const { return L"TyxMetaProperties"; }

} // namespace tyx
