// Stop of a parse after help or version.
#include <tyx/TyxClExitException.h>

namespace tyx {

TyxClExitException::~TyxClExitException() = default;

TyxString TyxClExitException::className() const { return L"TyxClExitException"; }

const char *TyxClExitException::what() const noexcept { return "TyxClExitException"; }

} // namespace tyx
