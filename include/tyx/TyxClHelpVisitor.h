// Visitor that writes the usage and stops the parse.
#pragma once

#include <tyx/TyxClArgVisitorIF.h>

namespace tyx {

class TyxClParserIF;

/// Writes the usage through the parser's output, then throws
/// TyxClExitException(0). The parser must outlive the visitor; the parser
/// owns the argument that owns it.
class TYX_EXPORT TyxClHelpVisitor : public TyxClArgVisitorIF {
public:
    explicit TyxClHelpVisitor(const TyxClParserIF *parser) : m_parser(parser) {}
    ~TyxClHelpVisitor() override;
    /// "TyxClHelpVisitor".
    TyxString className() const override;
    TyxClArgVisitorIF *clone() const override;
    void visit() const override;

private:
    const TyxClParserIF *m_parser;
};

} // namespace tyx
