// Parser interface.
#include <tyx/TyxClParserIF.h>

namespace tyx {

TyxClParserIF::~TyxClParserIF() = default;

TyxString TyxClParserIF::className() const { return L"TyxClParserIF"; }

} // namespace tyx
