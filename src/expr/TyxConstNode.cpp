// Expression tree node that holds a fixed value.
#include "expr/TyxConstNode.h"

namespace tyx::internal {

TyxConstNode::TyxConstNode(const TyxVariant &value) : m_value(normalized(value)) {}

TyxConstNode::~TyxConstNode() = default;

TyxString TyxConstNode::className() const { return L"TyxConstNode"; }

TyxEqnNodePtr TyxConstNode::clone() const { return TyxEqnNodePtr(new TyxConstNode(*this)); }

const TyxVariant &TyxConstNode::evaluate() { return m_value; }

TyxConstNode *TyxConstNode::toConstNode() { return this; }

const TyxConstNode *TyxConstNode::toConstNode() const { return this; }

} // namespace tyx::internal
