// Base of the readers that fill metadata sets on demand.
#include <tyx/TyxMetaDataReader.h>

namespace tyx {

TyxMetaDataReader::~TyxMetaDataReader() = default;

} // namespace tyx
