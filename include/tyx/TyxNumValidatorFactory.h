// Factory of number validators by element type.
#pragma once

#include <tyx/TyxObjectFactory.h>

namespace tyx {

/// Makes a TyxNumValidator from the argument "template_type", a numeric
/// type code 0 to 9 (signed char, unsigned char, short, unsigned short,
/// int, unsigned int, the 64-bit signed and unsigned, float, double). The
/// new validator has flags and bounds 0; they arrive through its meta object.
class TYX_EXPORT TyxNumValidatorFactory : public TyxObjectFactory {
public:
    TyxNumValidatorFactory() = default;
    ~TyxNumValidatorFactory() override;

    /// "TyxNumValidatorFactory".
    TyxString className() const override;
    /// "TyxNumValidator".
    TyxString productName() const override;
    /// Null when "template_type" is missing or not a code from 0 to 9.
    TyxObject *create(const TyxVariantMap &arguments) const override;
};

} // namespace tyx
