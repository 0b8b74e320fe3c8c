// Base of the expression tree nodes: casts and the stored form of values.
#include "expr/TyxEqnNode.h"

namespace tyx::internal {

TyxEqnNode::~TyxEqnNode() = default;

TyxConstNode *TyxEqnNode::toConstNode() { return nullptr; }

const TyxConstNode *TyxEqnNode::toConstNode() const { return nullptr; }

TyxVarNode *TyxEqnNode::toVarNode() { return nullptr; }

const TyxVarNode *TyxEqnNode::toVarNode() const { return nullptr; }

TyxFcnNode *TyxEqnNode::toFcnNode() { return nullptr; }

const TyxFcnNode *TyxEqnNode::toFcnNode() const { return nullptr; }

TyxVariant TyxEqnNode::normalized(const TyxVariant &value)
{
    // STAND-IN: the placeholder variant holds only Double, text or nothing.
    return value;
}

} // namespace tyx::internal
