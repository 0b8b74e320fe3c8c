// Expression tree node that stands for a named variable.
#pragma once

#include "expr/TyxEqnNode.h"

namespace tyx::internal {

TYX_DECLARE_SMART_PTR_ONLY(TyxVarNode);

/// A variable of an expression: a name and the value last set on it,
/// invalid until then.
class TyxVarNode : public TyxEqnNode {
public:
    explicit TyxVarNode(const TyxString &name);
    TyxVarNode(const TyxVarNode &other) = default;
    ~TyxVarNode() override;

    /// "TyxVarNode".
    TyxString className() const override;
    TyxEqnNodePtr clone() const override;
    /// The value as it stands, with no check: an unset variable gives the
    /// invalid variant.
    const TyxVariant &evaluate() override;
    TyxVarNode *toVarNode() override;
    const TyxVarNode *toVarNode() const override;

    const TyxString &name() const { return m_name; }
    const TyxVariant &value() const { return m_value; }
    TyxVariant &value() { return m_value; }
    /// Whether a valid value has been set.
    bool isValid() const { return m_value.isValid(); }
    /// Stores \p value in its normalised form (see TyxEqnNode::normalized).
    void setValue(const TyxVariant &value);

private:
    TyxString m_name;
    TyxVariant m_value;
};

} // namespace tyx::internal
