// Leaf of a metadata tree: a named vector of values.
#pragma once

#include <iosfwd>
#include <vector>

#include <tyx/TyxMetaDataObject.h>
#include <tyx/TyxVariant.h>

namespace tyx {

class TyxMetaDataSet;

/// A named field holding one value per index, so that a repeating field
/// keeps all its values.
class TYX_EXPORT TyxMetaDataField : public TyxMetaDataObject {
public:
    TyxMetaDataField() = default;
    explicit TyxMetaDataField(const TyxString &name, const TyxString &description = TyxString())
        : TyxMetaDataObject(name, description)
    {
    }
    TyxMetaDataField(const TyxMetaDataField &) = default;
    TyxMetaDataField &operator=(const TyxMetaDataField &) = default;
    ~TyxMetaDataField() override;

    /// "TyxMetaDataField".
    TyxString className() const override;

    /// A name and at least one value.
    bool isValid() const { return !name().empty() && !m_values.empty(); }
    size_t numValues() const { return m_values.size(); }
    size_t size() const { return m_values.size(); }
    /// The value at \p index; \p index must be below size().
    const TyxVariant &value(size_t index) const { return m_values[index]; }
    const TyxVariant &operator[](size_t index) const { return m_values[index]; }
    const std::vector<TyxVariant> &values() const { return m_values; }
    const TyxString &formatSpec() const { return m_formatSpec; }
    void setFormatSpec(const TyxString &formatSpec) { m_formatSpec = formatSpec; }

    /// Base comparison, then the values in order.
    bool operator==(const TyxMetaDataField &other) const
    {
        return TyxMetaDataObject::operator==(other) && m_values == other.m_values;
    }
    bool operator!=(const TyxMetaDataField &other) const { return !(*this == other); }

private:
    friend class TyxMetaDataSet;

    /// Appends at index size(), grows with invalid values above it, replaces below it.
    void setValue(const TyxVariant &value, size_t index);

    TyxString m_formatSpec;
    std::vector<TyxVariant> m_values;
};

/// Writes "name=[v0;v1;...]" with each value in the variant's stream form.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxMetaDataField &field);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxMetaDataField &field);

namespace internal {
template <>
struct TyxVariantTraits<TyxMetaDataField> : TyxRegisteredVariantTraits<TyxMetaDataField> {
    static TyxString className() { return L"TyxMetaDataField"; }
};
} // namespace internal

} // namespace tyx
