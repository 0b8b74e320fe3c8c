// Safe truth test roots.
#include <tyx/TyxSafeBool.h>

namespace tyx::internal {

TyxSafeBoolBase::~TyxSafeBoolBase() = default;
TyxSafeBool::~TyxSafeBool() = default;

} // namespace tyx::internal
