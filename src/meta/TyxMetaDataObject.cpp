// Base of the nodes of metadata trees.
#include <tyx/TyxMetaDataObject.h>

namespace tyx {

TyxMetaDataObject::~TyxMetaDataObject() = default;

} // namespace tyx
