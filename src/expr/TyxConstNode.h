// Expression tree node that holds a fixed value.
#pragma once

#include "expr/TyxEqnNode.h"

namespace tyx::internal {

/// A constant of an expression: a literal of the text or a folded subtree.
class TyxConstNode : public TyxEqnNode {
public:
    /// Holds \p value in its normalised form (see TyxEqnNode::normalized).
    explicit TyxConstNode(const TyxVariant &value);
    TyxConstNode(const TyxConstNode &other) = default;
    ~TyxConstNode() override;

    /// "TyxConstNode".
    TyxString className() const override;
    TyxEqnNodePtr clone() const override;
    /// The held value.
    const TyxVariant &evaluate() override;
    TyxConstNode *toConstNode() override;
    const TyxConstNode *toConstNode() const override;

    /// The held value.
    const TyxVariant &value() const { return m_value; }

private:
    TyxVariant m_value;
};

} // namespace tyx::internal
