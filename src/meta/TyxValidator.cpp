// Base of the validators.
#include <tyx/TyxValidator.h>

namespace tyx {

namespace {
[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxValidatorConstPtr>();
}

TyxValidator::~TyxValidator() = default;

TyxString TyxValidator::className() const { return L"TyxValidator"; }

} // namespace tyx
