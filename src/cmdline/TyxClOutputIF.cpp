// Output interface of a parser.
#include <tyx/TyxClOutputIF.h>

#include <cstdlib>

namespace tyx {

TyxClOutputIF::~TyxClOutputIF() = default;

TyxString TyxClOutputIF::className() const { return L"TyxClOutputIF"; }

void TyxClOutputIF::exitProgram(int status) const { std::exit(status); }

} // namespace tyx
