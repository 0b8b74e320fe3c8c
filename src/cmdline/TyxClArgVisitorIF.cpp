// Action of an argument.
#include <tyx/TyxClArgVisitorIF.h>

namespace tyx {

TyxClArgVisitorIF::~TyxClArgVisitorIF() = default;

TyxString TyxClArgVisitorIF::className() const { return L"TyxClArgVisitorIF"; }

} // namespace tyx
