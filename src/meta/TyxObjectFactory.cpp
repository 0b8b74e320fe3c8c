// Base of object factories.
#include <tyx/TyxObjectFactory.h>

namespace tyx {

TyxObjectFactory::~TyxObjectFactory() = default;

TyxString TyxObjectFactory::className() const { return L"TyxObjectFactory"; }

} // namespace tyx
