// Expression tree node that calls a named function on its arguments.
#pragma once

#include "expr/TyxEqnNode.h"

namespace tyx::internal {

/// A function call of an expression: every operator of the language and
/// every named function becomes one. The argument subtrees are owned; a
/// null argument is a marker of the grammar (see TyxEqnNodeList).
///
/// Copying, cloning, searching and destruction walk the subtree with an
/// explicit stack, so trees of any depth (a sum of many thousand terms is a
/// chain as deep as it is long) never exhaust the call stack.
class TyxFcnNode : public TyxEqnNode {
public:
    TyxFcnNode(const TyxString &name, TyxEqnNodeList args);
    TyxFcnNode(const TyxString &name, const TyxEqnNodePtr &arg);
    TyxFcnNode(const TyxString &name, const TyxEqnNodePtr &arg1, const TyxEqnNodePtr &arg2);
    /// A deep copy: the argument subtrees are cloned.
    TyxFcnNode(const TyxFcnNode &other);
    ~TyxFcnNode() override;

    /// "TyxFcnNode".
    TyxString className() const override;
    TyxEqnNodePtr clone() const override;
    /// Runs the function on the arguments. No function body is attached to
    /// a node yet, so this throws a TyxTextMsg naming the function as unknown.
    const TyxVariant &evaluate() override;
    TyxFcnNode *toFcnNode() override;
    const TyxFcnNode *toFcnNode() const override;

    /// The function name, as written or as the operator's name.
    const TyxString &name() const { return m_name; }
    const TyxEqnNodeList &args() const { return m_args; }

    /// The first function node called \p name (exact match) in a depth-first
    /// search that starts with this node and takes arguments in order; null
    /// if there is none.
    TyxEqnNodeConstPtr node(const TyxString &name) const;

protected:
    TyxFcnNode() = default;

    TyxEqnNodeList &args() { return m_args; }
    /// Drops all arguments.
    void clear();
    /// Replaces the arguments by deep copies of those of \p other.
    void copyArgs(const TyxFcnNode &other);

private:
    TyxString m_name;
    TyxEqnNodeList m_args;
};

} // namespace tyx::internal
