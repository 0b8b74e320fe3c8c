// Message sink interface.
#include <tyx/TyxTextHandler.h>

namespace tyx {

TyxTextHandler::~TyxTextHandler() = default;

} // namespace tyx
