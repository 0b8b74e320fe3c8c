// Base of the objects that decide whether a value is acceptable.
#pragma once

#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>
#include <tyx/TyxVariant.h>

namespace tyx {

class TyxTextMsg;

/// Decides whether a variant is acceptable and, if not, says why in words
/// for the user.
class TYX_EXPORT TyxValidator : public TyxObject, public TyxRefCounted {
public:
    ~TyxValidator() override;

    /// "TyxValidator".
    TyxString className() const override;
    /// A new copy, the caller's to delete.
    virtual TyxValidator *clone() const = 0;
    /// Whether \p other is a validator of the same class with the same rule.
    virtual bool isEqual(const TyxValidator *other) const = 0;
    /// Whether \p value is acceptable. On refusal \p msg, when not null,
    /// receives the reason as an error. Never throws for a refused value.
    virtual bool isValid(const TyxVariant &value, TyxTextMsg *msg) const = 0;

protected:
    TyxValidator() = default;
    TyxValidator(const TyxValidator &other) : TyxObject(other), TyxRefCounted() {}
    TyxValidator &operator=(const TyxValidator &) { return *this; }
};

TYX_DECLARE_SMART_PTR(TyxValidator);

namespace internal {

/// A validator pointer travels in a variant, as the "validator" property of
/// a property description does.
template <>
struct TyxVariantTraits<TyxValidatorConstPtr> : TyxRegisteredVariantTraits<TyxValidatorConstPtr> {
    static TyxString className() { return L"TyxValidatorConstPtr"; }
};

} // namespace internal

} // namespace tyx
