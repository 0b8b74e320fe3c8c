// Expression tree node that stands for a named variable.
#include "expr/TyxVarNode.h"

namespace tyx::internal {

TyxVarNode::TyxVarNode(const TyxString &name) : m_name(name) {}

TyxVarNode::~TyxVarNode() = default;

TyxString TyxVarNode::className() const { return L"TyxVarNode"; }

TyxEqnNodePtr TyxVarNode::clone() const { return TyxEqnNodePtr(new TyxVarNode(*this)); }

const TyxVariant &TyxVarNode::evaluate() { return m_value; }

TyxVarNode *TyxVarNode::toVarNode() { return this; }

const TyxVarNode *TyxVarNode::toVarNode() const { return this; }

void TyxVarNode::setValue(const TyxVariant &value) { m_value = normalized(value); }

} // namespace tyx::internal
