// Visitor of the ignore-the-rest marker.
#include <tyx/TyxClIgnoreRestVisitor.h>

namespace tyx {

TyxClIgnoreRestVisitor::~TyxClIgnoreRestVisitor() = default;

TyxString TyxClIgnoreRestVisitor::className() const { return L"TyxClIgnoreRestVisitor"; }

TyxClArgVisitorIF *TyxClIgnoreRestVisitor::clone() const { return new TyxClIgnoreRestVisitor(); }

} // namespace tyx
