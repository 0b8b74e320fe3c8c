// Reference-counted root.
#include <tyx/TyxRefCounted.h>

namespace tyx {

TyxRefCounted::~TyxRefCounted() = default;

} // namespace tyx
