// Metadata that presents the fields of another metadata under its own names.
#pragma once

#include <tyx/TyxMetaData.h>

namespace tyx {

/// A translation layer in front of a source metadata. Each translated field
/// is a constant, an alias of a source field (optionally passed through a
/// translator function), or computed by a translator; reads and writes are
/// forwarded to the source. Subclasses register their fields with the
/// protected operations and supply translators as member functions.
class TYX_EXPORT TyxMetaDataTranslated : public TyxMetaData {
public:
    /// Turns the source's value for a path into the translated value.
    using GetTranslator = TyxVariant (TyxMetaDataTranslated::*)(const TyxString &path,
                                                                const TyxVariant &value);
    /// Computes the value of a path.
    using Translator = TyxVariant (TyxMetaDataTranslated::*)(const TyxString &path);
    /// Stores a value for a path; false when it cannot.
    using SetTranslator = bool (TyxMetaDataTranslated::*)(const TyxString &path, const TyxVariant &value);

    /// The description of one translated field, carried in a variant.
    struct FieldInfo {
        enum Kind { Constant = 1, Alias = 2, Translated = 3 };
        int kind = Constant;
        TyxString sourceField;
        TyxVariant data;
        GetTranslator getTranslator = nullptr;
        Translator translator = nullptr;
        SetTranslator setTranslator = nullptr;
        bool operator==(const FieldInfo &other) const;
    };

    explicit TyxMetaDataTranslated(const TyxMetaDataPtr &source = TyxMetaDataPtr());
    TyxMetaDataTranslated(const TyxMetaDataTranslated &other) = default;
    ~TyxMetaDataTranslated() override;

    /// Forwarded to the source by the field's kind; 1 when the field is not
    /// writable or there is no source. Field and set values go to this tree.
    int setValue(TyxString &&path, const TyxVariant &value, const TyxString &description = TyxString(),
                 const TyxString &formatSpec = TyxString()) override;
    int setValue(const TyxString &path, const TyxVariant &value, const TyxString &description = TyxString(),
                 const TyxString &formatSpec = TyxString()) override;
    int pushBack(const TyxString &path, const TyxVariant &value, const TyxString &description = TyxString(),
                 const TyxString &formatSpec = TyxString()) override;
    /// The translated value of \p path; invalid when the path is not
    /// translated or there is no source.
    TyxVariant get(const TyxString &path) override;
    /// Does nothing: the flag of a translated metadata never changes.
    void quiet(bool quiet) const override;
    using TyxMetaData::quiet;
    /// "TyxMetaDataTranslated".
    TyxString className() const override;

    const TyxMetaDataPtr &sourceMetadata() const { return m_source; }
    void setSourceMetadata(const TyxMetaDataPtr &source);

    /// \p text without a trailing numeric "[n]"; texts below 4 characters
    /// come back unchanged.
    static TyxString toFieldName(const TyxString &text);

protected:
    /// A constant field.
    int add(const TyxString &name, const TyxVariant &value) { return setConstant(name, value); }
    int setConstant(const TyxString &name, const TyxVariant &value);
    /// An alias of \p sourceField, passed through \p getTranslator when given.
    int setAlias(const TyxString &name, const TyxString &sourceField, GetTranslator getTranslator = nullptr);
    int setAlias(const TyxString &name, const TyxString &sourceField, const TyxVariant &fallback,
                 GetTranslator getTranslator = nullptr);
    /// A computed field; \p fallback stands in when \p translator gives an
    /// invalid value, and \p setTranslator, when given, makes it writable.
    int setTranslator(const TyxString &name, Translator translator, SetTranslator setTranslator = nullptr,
                      const TyxVariant &fallback = TyxVariant());

private:
    using BaseWrite = int (TyxMetaData::*)(const TyxString &, const TyxVariant &, const TyxString &,
                                           const TyxString &);
    using BaseOp = int (TyxMetaDataTranslated::*)(const TyxString &, const TyxVariant &, const TyxString &,
                                                  const TyxString &);
    int pushBackImpl(const TyxString &path, const TyxVariant &value, const TyxString &description,
                     const TyxString &formatSpec, BaseOp base, BaseWrite forward);
    int basePushBack(const TyxString &path, const TyxVariant &value, const TyxString &description,
                     const TyxString &formatSpec);
    int baseSetValue(const TyxString &path, const TyxVariant &value, const TyxString &description,
                     const TyxString &formatSpec);
    /// The FieldInfo stored for \p path in this tree.
    const TyxVariant &value(const TyxString &path) const override;
    int store(const TyxString &name, const FieldInfo &info);

    TyxMetaDataPtr m_source;
};

namespace internal {
template <>
struct TyxVariantTraits<TyxMetaDataTranslated::FieldInfo>
    : TyxRegisteredVariantTraits<TyxMetaDataTranslated::FieldInfo> {
    static TyxString className() { return L"FieldInfo"; }
};
} // namespace internal

} // namespace tyx
