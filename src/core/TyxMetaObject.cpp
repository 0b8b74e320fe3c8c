// Object descriptions.
#include <tyx/TyxMetaObject.h>

namespace tyx {

TyxMetaObject::~TyxMetaObject() = default;

} // namespace tyx
