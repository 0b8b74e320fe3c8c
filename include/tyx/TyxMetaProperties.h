// Ordered, named collection of a class's property descriptions.
#pragma once

#include <cstdint>
#include <map>

#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxStrList.h>

namespace tyx {

class TyxMetaProperties;
TYX_DECLARE_SMART_PTR(TyxMetaProperties);

/// The properties of one class, in the order of append(), with an optional
/// parent collection for the inherited ones. Copies share the property
/// objects and the parent.
class TYX_EXPORT TyxMetaProperties : public TyxObject, public TyxRefCounted {
public:
    /// Walks the names of the parent's properties (all levels), then the own
    /// ones. It holds its own copy of the names, so a later append() does not
    /// disturb it.
    class TYX_EXPORT Iterator_p {
    public:
        Iterator_p(const TyxMetaProperties *owner, TyxStrList names, size_t position);
        /// The property at the position, resolved with inheritance.
        TyxMetaPropertyPtr operator*() const;
        TyxMetaPropertyPtr operator->() const { return **this; }
        const TyxString &name() const { return m_names[m_position]; }
        Iterator_p &operator++()
        {
            ++m_position;
            return *this;
        }
        bool operator==(const Iterator_p &other) const
        {
            return m_owner == other.m_owner && m_position == other.m_position;
        }
        bool operator!=(const Iterator_p &other) const { return !(*this == other); }

    private:
        const TyxMetaProperties *m_owner;
        TyxStrList m_names;
        size_t m_position;
    };

    TyxMetaProperties(const TyxString &metaClassName, const TyxMetaPropertiesPtr &superClass);
    TyxMetaProperties(const TyxMetaProperties &other);
    TyxMetaProperties &operator=(const TyxMetaProperties &other);
    ~TyxMetaProperties() override;

    /// Adds \p property under its name. Returns 1 and changes nothing when
    /// the name, compared exactly, is taken already.
    int append(const TyxMetaPropertyPtr &property);

    /// The property \p name, searched in the parents too with \p inherited;
    /// the nearest wins. Null when there is none.
    TyxMetaPropertyConstPtr property(const TyxString &name, bool inherited = true) const;
    TyxMetaPropertyPtr property(const TyxString &name, bool inherited = true);
    /// The property at \p index in propertyNames(\p inherited); \p index must
    /// stay below that list's size.
    TyxMetaPropertyPtr property(uint64_t index, bool inherited = true) const;
    TyxMetaPropertyPtr property(uint64_t index, bool inherited = true)
    {
        return static_cast<const TyxMetaProperties &>(*this).property(index, inherited);
    }

    bool contains(const TyxString &name, bool inherited = true) const;
    /// The last position of \p name in propertyNames(\p inherited), or INVALID_INDEX().
    uint64_t indexOf(const TyxString &name, bool ignoreCase = false, bool inherited = true) const;
    /// The own count, plus the direct parent's own count with \p inherited.
    uint64_t size(bool inherited = true) const;
    /// The own count; the argument is ignored.
    uint64_t numProperties(bool inherited = true) const;
    bool empty(bool inherited = true) const { return size(inherited) == 0; }
    bool isEmpty(bool inherited = true) const { return size(inherited) == 0; }

    /// The own names, preceded with \p inherited by the parents' names.
    TyxStrList propertyNames(bool inherited = true) const { return propertyNames(inherited, false); }
    /// As above; \p editableOnly drops the non-editable inherited names (the
    /// own names are never filtered).
    TyxStrList propertyNames(bool inherited, bool editableOnly) const;
    const TyxString &metaClassName() const { return m_metaClassName; }
    const TyxMetaPropertiesPtr &superClass() const { return m_superClass; }

    Iterator_p begin() const;
    Iterator_p end() const;
    Iterator_p begin();
    Iterator_p end();

    static constexpr uint64_t INVALID_INDEX() { return static_cast<uint64_t>(-1); }

    /// Same class name, same own count, and the same property objects, by
    /// pointer, under the same names. Names list and parent do not enter.
    bool operator==(const TyxMetaProperties &other) const;
    bool operator!=(const TyxMetaProperties &other) const { return !(*this == other); }

    /// "TyxMetaProperties".
    TyxString className() const override;

private:
    TyxStrList removeNonEditables(const TyxStrList &names) const;
    TyxStrList iterationNames() const;

    TyxStrList m_names;
    std::map<TyxString, TyxMetaPropertyPtr> m_table;
    TyxString m_metaClassName;
    TyxMetaPropertiesPtr m_superClass;
};

} // namespace tyx
