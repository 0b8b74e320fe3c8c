// Validator that accepts the keys of an enumeration.
#pragma once

#include <tyx/TyxEnum.h>
#include <tyx/TyxValidator.h>

namespace tyx {

/// Accepts a value whose text is a key of its enumeration, in any case. A
/// tuple "(key,...)" is tested by its first element.
class TYX_EXPORT TyxEnumValidator : public TyxValidator {
public:
    TyxEnumValidator() = default;
    explicit TyxEnumValidator(const TyxEnum &enumerator) : m_enumerator(enumerator) {}
    TyxEnumValidator(const TyxEnumValidator &other) = default;
    TyxEnumValidator &operator=(const TyxEnumValidator &other) = default;
    ~TyxEnumValidator() override;

    const TyxEnum &enumerator() const { return m_enumerator; }
    void setEnumerator(const TyxEnum &enumerator) { m_enumerator = enumerator; }

    /// "TyxEnumValidator".
    TyxString className() const override;
    TyxValidator *clone() const override;
    /// False for a null pointer or another class.
    bool isEqual(const TyxValidator *other) const override;
    /// On refusal \p msg receives "The value of '<value>' is not a member of
    /// {<keys>}." with the keys joined by ",".
    bool isValid(const TyxVariant &value, TyxTextMsg *msg) const override;

    bool operator==(const TyxEnumValidator &other) const { return m_enumerator == other.m_enumerator; }
    bool operator!=(const TyxEnumValidator &other) const { return !(*this == other); }

private:
    TyxEnum m_enumerator;
};

} // namespace tyx
