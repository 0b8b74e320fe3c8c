// Help visitor.
#include <tyx/TyxClHelpVisitor.h>

#include <tyx/TyxClExitException.h>
#include <tyx/TyxClParserIF.h>

namespace tyx {

TyxClHelpVisitor::~TyxClHelpVisitor() = default;

TyxString TyxClHelpVisitor::className() const { return L"TyxClHelpVisitor"; }

TyxClArgVisitorIF *TyxClHelpVisitor::clone() const { return new TyxClHelpVisitor(m_parser); }

void TyxClHelpVisitor::visit() const
{
    if (TyxClOutputIFPtr output = m_parser->output())
        output->usage(*m_parser);
    throw TyxClExitException(0);
}

} // namespace tyx
