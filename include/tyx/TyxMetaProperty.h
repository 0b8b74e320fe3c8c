// Description of one named property: type, flags, texts, command-line
// letter, user data and validator.
#pragma once

#include <iosfwd>

#include <tyx/TyxKeyedObject.h>
#include <tyx/TyxMetaFlag.h>
#include <tyx/TyxMetaObject.h>
#include <tyx/TyxMetaType.h>
#include <tyx/TyxValidator.h>
#include <tyx/TyxVariant.h>

namespace tyx {

/// Describes one property of a class. The name is the keyed object's name,
/// trimmed; an empty label becomes the name.
class TYX_EXPORT TyxMetaProperty : public TyxKeyedObject {
public:
    /// A property of type TyxString named after its key.
    TyxMetaProperty();
    TyxMetaProperty(const TyxString &name, const TyxMetaType &type = TyxMetaType::String,
                    const TyxMetaFlag &flags = TyxMetaFlag(), const TyxString &label = TyxString(),
                    const TyxString &description = TyxString(), wchar_t cmdLineFlag = 0);
    TyxMetaProperty(wchar_t cmdLineFlag, const TyxString &name, const TyxString &label,
                    const TyxMetaType &type = TyxMetaType::String, const TyxMetaFlag &flags = TyxMetaFlag(),
                    const TyxString &description = TyxString());
    /// Copies share the validator, which nobody changes.
    TyxMetaProperty(const TyxMetaProperty &other) = default;
    TyxMetaProperty &operator=(const TyxMetaProperty &other) = default;
    ~TyxMetaProperty() override;

    const TyxMetaType &type() const { return m_type; }
    const TyxMetaFlag &flags() const { return m_flags; }
    const TyxString &label() const { return m_label; }
    const TyxString &description() const { return m_description; }
    wchar_t cmdLineFlag() const { return m_cmdLineFlag; }
    const TyxVariant &data() const { return m_data; }
    const TyxValidatorConstPtr &validator() const { return m_validator; }

    /// Sets the name, trimmed.
    void setName(const TyxString &name);
    void setType(const TyxMetaType &type) { m_type = type; }
    void setFlags(const TyxMetaFlag &flags) { m_flags = flags; }
    void setLabel(const TyxString &label) { m_label = label; }
    void setDescription(const TyxString &description) { m_description = description; }
    void setCmdLineFlag(wchar_t flag) { m_cmdLineFlag = flag; }
    void setData(const TyxVariant &data) { m_data = data; }
    /// Stores a clone of \p validator; null clears it.
    void setValidator(const TyxValidator *validator);
    void setValidator(const TyxValidatorConstPtr &validator) { setValidator(validator.get()); }

    /// Compares name, label, description, flags, type, letter, data, then
    /// the validators by their own equality (two nulls are equal).
    bool operator==(const TyxMetaProperty &other) const;
    bool operator!=(const TyxMetaProperty &other) const { return !(*this == other); }

    /// "TyxMetaProperty".
    TyxString className() const override;
    /// A new TyxMetaPropertyMetaObj over this property.
    TyxMetaObjectConstPtr metaObject() const override;
    using TyxObject::metaObject;

private:
    TyxMetaType m_type = TyxMetaType::String;
    TyxMetaFlag m_flags;
    TyxString m_label;
    TyxString m_description;
    wchar_t m_cmdLineFlag = 0;
    TyxVariant m_data;
    TyxValidatorConstPtr m_validator;
};

TYX_DECLARE_SMART_PTR(TyxMetaProperty);

/// Writes "(name,label,type,flags,description,letter,data)"; the letter is
/// one raw character (its low byte on a narrow stream), the data in the
/// variant's stream form. Nothing is escaped.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxMetaProperty &property);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxMetaProperty &property);
/// Reads that form back. A damaged form keeps what was read so far and sets
/// the failure bit.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxMetaProperty &property);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxMetaProperty &property);

namespace internal {

template <>
struct TyxVariantTraits<TyxMetaProperty> : TyxRegisteredVariantTraits<TyxMetaProperty> {
    static TyxString className() { return L"TyxMetaProperty"; }
};

/// Text through the stream form.
template <>
struct TYX_EXPORT TyxDefaultCasts<TyxMetaProperty> {
    static bool toString(const TyxMetaProperty &value, TyxString &text);
    static bool fromString(const TyxString &text, TyxMetaProperty &value);
    static void getDefault(TyxMetaProperty &value) { value = TyxMetaProperty(); }
};

} // namespace internal

} // namespace tyx
