// Base of the expression tree nodes and the pointers that hold them.
#pragma once

#include <vector>

#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>
#include <tyx/TyxVariant.h>

namespace tyx::internal {

class TyxConstNode;
class TyxFcnNode;
class TyxVarNode;

TYX_DECLARE_SMART_PTR(TyxEqnNode);

/// Argument list of a function node. An element may be null: the grammar
/// marks an omitted index (`:`) and the end of a matrix row that way.
using TyxEqnNodeList = std::vector<TyxEqnNodePtr>;

/// One node of an expression tree: a constant, a variable or a function
/// call. Nodes are shared through TyxEqnNodePtr; a new node has no owner
/// until the first pointer takes it.
class TyxEqnNode : public TyxObject, public TyxRefCounted {
public:
    ~TyxEqnNode() override;

    /// A deep copy of the subtree under this node, owned by the result.
    virtual TyxEqnNodePtr clone() const = 0;
    /// The value of the subtree.
    virtual const TyxVariant &evaluate() = 0;

    /// This node as a constant, or null.
    virtual TyxConstNode *toConstNode();
    virtual const TyxConstNode *toConstNode() const;
    /// This node as a variable, or null.
    virtual TyxVarNode *toVarNode();
    virtual const TyxVarNode *toVarNode() const;
    /// This node as a function call, or null.
    virtual TyxFcnNode *toFcnNode();
    virtual const TyxFcnNode *toFcnNode() const;

protected:
    TyxEqnNode() = default;
    TyxEqnNode(const TyxEqnNode &) = default;
    TyxEqnNode &operator=(const TyxEqnNode &) = delete;

    /// The form in which a node stores \p value: a Double, text, tile,
    /// scalar or invalid value is shared as it is, a complex number becomes
    /// a scalar and every other type a Double. Functions of the engine thus
    /// meet no other numeric type.
    static TyxVariant normalized(const TyxVariant &value);
};

} // namespace tyx::internal
