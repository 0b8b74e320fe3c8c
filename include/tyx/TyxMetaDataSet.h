// Inner node of a metadata tree: named fields and named subsets.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <tyx/TyxMetaDataField.h>
#include <tyx/TyxMetaDataReader.h>
#include <tyx/TyxStrList.h>

namespace tyx {

namespace internal {
struct TyxMetaDataSetState;
}

/// A set of fields and subsets, looked up without regard to case; names
/// keep the spelling in which they were first written. Copies share their
/// contents. A set with a reader fills itself on first read, once for its
/// fields and once for its subsets.
class TYX_EXPORT TyxMetaDataSet : public TyxMetaDataObject {
public:
    /// Field name and the indexes of one run of consecutive writes to it.
    using RepeatIndex = std::vector<std::pair<TyxString, std::vector<uint64_t>>>;

    TyxMetaDataSet();
    explicit TyxMetaDataSet(const TyxString &name, const TyxString &description = TyxString());
    /// Shares \p other's contents.
    TyxMetaDataSet(const TyxMetaDataSet &other);
    TyxMetaDataSet(TyxMetaDataSet &&other) noexcept;
    TyxMetaDataSet &operator=(const TyxMetaDataSet &other);
    TyxMetaDataSet &operator=(TyxMetaDataSet &&other) noexcept;
    ~TyxMetaDataSet() override;

    /// "TyxMetaDataSet".
    TyxString className() const override;

    /// The field \p name, with \p recurse also in the subsets, depth first;
    /// a static empty field when there is none.
    const TyxMetaDataField &field(const TyxString &name, bool recurse = false) const;
    /// The subset \p name, likewise; a static empty set when there is none.
    const TyxMetaDataSet &subset(const TyxString &name, bool recurse = false) const;
    bool containsField(const TyxString &name) const;
    bool containsSubset(const TyxString &name) const;
    /// Names in the order of first writing.
    const TyxStrList &fieldNames() const;
    const TyxStrList &subsetNames() const;
    /// The fields and subsets in that order.
    std::vector<const TyxMetaDataField *> fields() const;
    std::vector<const TyxMetaDataSet *> subsets() const;
    const RepeatIndex &repeatIndex() const;
    /// No fields and no subsets.
    bool empty() const;
    bool isEmpty() const { return empty(); }
    /// Fills the subsets from the reader, then every subset recursively.
    void readAll() const;
    const TyxMetaDataReaderPtr &reader() const;
    void setReader(const TyxMetaDataReaderPtr &reader);
    /// Whether a failed read is kept quiet instead of posted.
    bool quiet() const;
    void setQuiet(bool quiet);

    /// The field \p name, created when missing.
    TyxMetaDataField &rfield(const TyxString &name);
    /// The subset \p name, created when missing.
    TyxMetaDataSet &rsubset(const TyxString &name);
    /// Stores \p value at \p index of field \p name; an index of all ones
    /// appends and receives the index used.
    void setFieldValue(const TyxString &name, const TyxVariant &value, uint64_t &index);
    void appendFieldValue(const TyxString &name, const TyxVariant &value);
    /// 1 when there is no such field.
    int removeField(const TyxString &name);
    int removeSubset(const TyxString &name);
    /// 1 when \p newName exists or \p oldName does not.
    int renameField(const TyxString &oldName, const TyxString &newName);
    int renameSubset(const TyxString &oldName, const TyxString &newName);
    void clear();

    /// Base comparison, then fields and subsets by name and content.
    bool operator==(const TyxMetaDataSet &other) const;
    bool operator!=(const TyxMetaDataSet &other) const { return !(*this == other); }

    /// The same contents object: the two sets are copies of each other.
    bool sharesWith(const TyxMetaDataSet &other) const { return m_state == other.m_state; }

private:
    friend class TyxMetaData;

    /// Lookups by a view of a path segment: null on a miss, no allocation.
    const TyxMetaDataField *fieldAt(std::wstring_view name) const;
    const TyxMetaDataSet *subsetAt(std::wstring_view name) const;
    TyxMetaDataSet &rsubsetAt(std::wstring_view name);
    void readFieldsOnce() const;
    void readSubsetsOnce() const;

    std::shared_ptr<internal::TyxMetaDataSetState> m_state;
};

/// Writes "name{field;...;subset{...}}".
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxMetaDataSet &set);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxMetaDataSet &set);

namespace internal {
template <>
struct TyxVariantTraits<TyxMetaDataSet> : TyxRegisteredVariantTraits<TyxMetaDataSet> {
    static TyxString className() { return L"TyxMetaDataSet"; }
};
} // namespace internal

} // namespace tyx
