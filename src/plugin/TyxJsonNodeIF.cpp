// The interface behind a JSON node.
#include <tyx/internal/TyxJsonNodeIF.h>

namespace tyx::internal {

TyxJsonNodeIF::~TyxJsonNodeIF() = default;

} // namespace tyx::internal
