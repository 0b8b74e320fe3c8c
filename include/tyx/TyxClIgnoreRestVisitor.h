// Visitor that records that the rest of the command line is to be ignored.
#pragma once

#include <tyx/TyxClArgVisitorIF.h>

namespace tyx {

TYX_DECLARE_SMART_PTR(TyxClIgnoreRestVisitor);

/// Holds one flag: set by visit(), read by ignoreRest(), cleared by reset().
class TYX_EXPORT TyxClIgnoreRestVisitor : public TyxClArgVisitorIF {
public:
    TyxClIgnoreRestVisitor() = default;
    ~TyxClIgnoreRestVisitor() override;
    /// "TyxClIgnoreRestVisitor".
    TyxString className() const override;
    TyxClArgVisitorIF *clone() const override;
    void visit() const override { m_ignoreRest = true; }

    bool ignoreRest() const { return m_ignoreRest; }
    void reset() { m_ignoreRest = false; }

private:
    mutable bool m_ignoreRest = false;
};

} // namespace tyx
