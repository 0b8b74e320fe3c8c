// Version visitor.
#include <tyx/TyxClVersionVisitor.h>

#include <tyx/TyxClExitException.h>
#include <tyx/TyxClParserIF.h>

namespace tyx {

TyxClVersionVisitor::~TyxClVersionVisitor() = default;

TyxString TyxClVersionVisitor::className() const { return L"TyxClVersionVisitor"; }

TyxClArgVisitorIF *TyxClVersionVisitor::clone() const { return new TyxClVersionVisitor(m_parser); }

void TyxClVersionVisitor::visit() const
{
    if (TyxClOutputIFPtr output = m_parser->output())
        output->version(*m_parser);
    throw TyxClExitException(0);
}

} // namespace tyx
