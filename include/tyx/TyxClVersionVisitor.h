// Visitor that writes the version and stops the parse.
#pragma once

#include <tyx/TyxClArgVisitorIF.h>

namespace tyx {

class TyxClParserIF;

/// Writes the version through the parser's output, then throws
/// TyxClExitException(0). The parser must outlive the visitor.
class TYX_EXPORT TyxClVersionVisitor : public TyxClArgVisitorIF {
public:
    explicit TyxClVersionVisitor(const TyxClParserIF *parser) : m_parser(parser) {}
    ~TyxClVersionVisitor() override;
    /// "TyxClVersionVisitor".
    TyxString className() const override;
    TyxClArgVisitorIF *clone() const override;
    void visit() const override;

private:
    const TyxClParserIF *m_parser;
};

} // namespace tyx
