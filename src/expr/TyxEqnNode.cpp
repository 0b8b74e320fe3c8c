// Base of the expression tree nodes: casts and the stored form of values.
#include "expr/TyxEqnNode.h"

#include <complex>

#include <tyx/TyxScalar.h>

namespace tyx::internal {

namespace {

// A complex value is kept as a unit-less scalar of the same value.
TyxVariant asScalar(const TyxVariant &value)
{
    return TyxVariant(TyxScalar(value.value<std::complex<double>>(), TyxUnits()));
}

} // namespace

TyxEqnNode::~TyxEqnNode() = default;

TyxConstNode *TyxEqnNode::toConstNode() { return nullptr; }

const TyxConstNode *TyxEqnNode::toConstNode() const { return nullptr; }

TyxVarNode *TyxEqnNode::toVarNode() { return nullptr; }

const TyxVarNode *TyxEqnNode::toVarNode() const { return nullptr; }

TyxFcnNode *TyxEqnNode::toFcnNode() { return nullptr; }

const TyxFcnNode *TyxEqnNode::toFcnNode() const { return nullptr; }

TyxVariant TyxEqnNode::normalized(const TyxVariant &value)
{
    switch (value.type().toEnum()) {
    case TyxMetaType::Double:
    case TyxMetaType::String:
    case TyxMetaType::EqnTile:
    case TyxMetaType::Scalar:
    case TyxMetaType::Invalid: return value;
    case TyxMetaType::ComplexDouble: return asScalar(value);
    default: return TyxVariant(value.value<double>());
    }
}

} // namespace tyx::internal
