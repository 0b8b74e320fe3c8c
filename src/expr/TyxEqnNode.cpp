// Base of the expression tree nodes: casts and the stored form of values.
#include "expr/TyxEqnNode.h"

namespace tyx::internal {

namespace {

// The scalar type belongs to a later area and joins the variant at start-up,
// so the conversion goes by type code: a fresh default scalar is made from
// the registered prototype and filled through the conversion matrix. Should
// the scalar type be missing or the conversion fail, the value stays as it is.
TyxVariant asScalar(const TyxVariant &value)
{
    const TyxMetaType scalarType(TyxMetaType::Scalar);
    const TyxVariant scalar(scalarType, nullptr);
    // The fresh value has no other owner, so writing into it changes no copy.
    if (scalar.isValid() && value.value(scalarType, const_cast<void *>(scalar.impl().constData())))
        return scalar;
    return value;
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
