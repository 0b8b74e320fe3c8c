// Interface of the implementation object behind a variant.
#include <tyx/TyxVariantIF.h>

namespace tyx {

TyxVariantIF::~TyxVariantIF() = default;

TyxString TyxVariantIF::className() const { return L"TyxVariantIF"; }

} // namespace tyx
