// Tree of named values addressed by paths "group/sub/field".
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include <tyx/TyxLexigraphicalNoCase.h>
#include <tyx/TyxMetaDataSet.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

namespace internal {
class TyxMetaDataSegmentedPath;
}

/// A tree of fields in sets, addressed by paths. Every segment but the last
/// names a set; the last names a field, "x[2]" being the third value of "x".
/// Repeating groups are sets named "<name>[0]", "<name>[1]", ... Lookups
/// ignore case and walk one map per segment; nothing scans the tree.
class TYX_EXPORT TyxMetaData : public TyxObject, public TyxRefCounted {
public:
    /// Walks the field paths (or, after paths(), the subset paths) below a set.
    class TYX_EXPORT const_iterator {
    public:
        const_iterator() = default;
        const_iterator(const TyxMetaData *metaData, const TyxString &path, bool recurse, bool fieldPaths,
                       bool repeating);
        const TyxString &operator*() const { return m_paths[m_position]; }
        const TyxString *operator->() const { return &m_paths[m_position]; }
        /// Moves on; at the end the list is dropped, so the iterator equals end().
        const_iterator &operator++();
        bool operator==(const const_iterator &other) const;
        bool operator!=(const const_iterator &other) const { return !(*this == other); }

        /// The same walk without descending into subsets.
        const_iterator norecurse() const;
        /// The same walk over subset paths.
        const_iterator paths() const;
        /// The same walk over repeating fields (more than one value) or,
        /// with paths(), repeating subsets ("<name>[n]").
        const_iterator repeating() const;

    private:
        void fill();
        void fieldPathsRecurse(const TyxMetaDataSet &set, const TyxString &prefix);
        void subsetPathsRecurse(const TyxMetaDataSet &set, const TyxString &prefix);

        const TyxMetaData *m_owner = nullptr;
        // Null once the walk has ended, so that the iterator equals end().
        const TyxMetaData *m_metaData = nullptr;
        TyxString m_start;
        std::vector<TyxString> m_paths;
        size_t m_position = 0;
        bool m_recurse = true;
        bool m_fieldPaths = true;
        bool m_repeating = false;
    };

    TyxMetaData();
    /// A metadata whose root is \p root, sharing its contents.
    explicit TyxMetaData(const TyxMetaDataSet &root);
    TyxMetaData(const TyxMetaData &other);
    TyxMetaData &operator=(const TyxMetaData &other);
    ~TyxMetaData() override;

    virtual void clear();
    /// Stores \p value at \p path, creating sets and the field as needed. A
    /// field or set value is copied in whole. Returns 1 for an invalid
    /// value, an empty path or a path ending in "/" with a plain value, and
    /// for an index more than 1,048,576 past the field's values: the gap is
    /// filled with invalid values, and the bound keeps a stray index from
    /// taking all memory.
    virtual int setValue(TyxString &&path, const TyxVariant &value,
                         const TyxString &description = TyxString(),
                         const TyxString &formatSpec = TyxString());
    virtual int setValue(const TyxString &path, const TyxVariant &value,
                         const TyxString &description = TyxString(),
                         const TyxString &formatSpec = TyxString());
    /// As setValue(), appending to the field when the path has no index; a
    /// field or set value becomes a new repeating element.
    virtual int pushBack(const TyxString &path, const TyxVariant &value,
                         const TyxString &description = TyxString(),
                         const TyxString &formatSpec = TyxString());
    /// True when the matching status form returns 0.
    virtual bool set(TyxString &&path, const TyxVariant &value, const TyxString &description = TyxString(),
                     const TyxString &formatSpec = TyxString());
    virtual bool set(const TyxString &path, const TyxVariant &value,
                     const TyxString &description = TyxString(), const TyxString &formatSpec = TyxString());
    virtual bool push_back(const TyxString &path, const TyxVariant &value,
                           const TyxString &description = TyxString(),
                           const TyxString &formatSpec = TyxString());
    /// Removes the field or set at \p path; "/" clears all. False on a miss.
    virtual bool remove(const TyxString &path);
    virtual bool quiet() const;
    /// Keeps failed reads quiet instead of posting them.
    virtual void quiet(bool quiet) const;
    /// "TyxMetaData".
    TyxString className() const override;
    /// The value at \p path, or EMPTY_VARIANT().
    virtual const TyxVariant &value(const TyxString &path) const;
    /// As value(), by value; a path naming a set gives a TyxMetaData of it.
    virtual TyxVariant get(const TyxString &path);

    bool exists(const TyxString &path) const { return find(path) != nullptr; }
    bool isField(const TyxString &path) const { return findField(path) != nullptr; }
    bool isPath(const TyxString &path) const { return findSubset(path) != nullptr; }
    bool containsField(const TyxString &path) const { return isField(path); }
    bool containsSubset(const TyxString &path) const { return isPath(path); }
    /// The field at \p path, or a static empty field.
    const TyxMetaDataField &field(const TyxString &path) const;
    /// The value count of a field; for a set the number of its "<name>[n]"
    /// elements, or its own size for "a/" and "/a".
    uint64_t size(const TyxString &path) const;
    bool empty() const { return m_root.empty(); }
    const TyxMetaDataSet &root() const { return m_root; }
    TyxMetaDataSet &root() { return m_root; }
    const TyxString &name() const { return m_root.name(); }

    /// The object at \p path: field first unless the path ends in "/".
    const TyxMetaDataObject *find(const TyxString &path) const;
    const TyxMetaDataField *findField(const TyxString &path) const;
    const TyxMetaDataSet *findSubset(const TyxString &path) const;

    /// Every field path with its first value.
    std::map<TyxString, TyxVariant, TyxLexigraphicalNoCase> toVariantMap() const;
    /// Clears the metadata; the map is not read.
    void fromVariantMap(const std::map<TyxString, TyxVariant, TyxLexigraphicalNoCase> &map);

    const_iterator begin(const TyxString &path = L"/") const;
    const_iterator end() const { return const_iterator(); }

    bool operator==(const TyxMetaData &other) const { return m_root == other.m_root; }
    bool operator!=(const TyxMetaData &other) const { return !(*this == other); }

    /// Splits \p path into the set names before the field and the field's
    /// name; false for no segments or a path ending in "/".
    static bool parseFieldName(const TyxString &path, std::vector<TyxString> &subsets, TyxString &fieldName);
    /// The one process-wide invalid variant.
    static const TyxVariant &EMPTY_VARIANT();

    /// Code 14, or a string of exactly one character.
    static bool isValidCharVariant(const TyxString &name, const TyxVariant &value);
    /// A number or a text that converts to a 32-bit integer within the
    /// limits; a limit at the extreme is not tested.
    static bool isValidIntegerVariant(const TyxString &name, const TyxVariant &value, int min, int max);
    static bool isValidDoubleVariant(const TyxString &name, const TyxVariant &value, double min, double max);
    /// A list whose elements all pass the double or the string test.
    static bool isValidDoubleVariantList(const TyxString &name, const TyxVariant &value);
    static bool isValidStringVariantList(const TyxString &name, const TyxVariant &value);

protected:
    int setValueImpl(const internal::TyxMetaDataSegmentedPath &path, const TyxVariant &value,
                     const TyxString &description, const TyxString &formatSpec, bool pushBack);

private:
    int write(const TyxString &path, const TyxVariant &value, const TyxString &description,
              const TyxString &formatSpec, bool pushBack);
    const TyxMetaDataSet *walk(const internal::TyxMetaDataSegmentedPath &path, size_t count) const;

    TyxMetaDataSet m_root;
    mutable bool m_quiet = false;
};

TYX_DECLARE_SMART_PTR_ONLY(TyxMetaData);

/// Writes the root set's stream form.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxMetaData &metaData);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxMetaData &metaData);

namespace internal {
template <>
struct TyxVariantTraits<TyxMetaData> : TyxRegisteredVariantTraits<TyxMetaData> {
    static TyxString className() { return L"TyxMetaData"; }
};
} // namespace internal

} // namespace tyx
