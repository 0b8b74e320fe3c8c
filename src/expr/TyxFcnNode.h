// Expression tree node that calls a named function on its arguments.
#pragma once

#include <memory>

#include "expr/TyxEqnFunctions.h"
#include "expr/TyxEqnNode.h"

namespace tyx::internal {

class TyxEqnBlockPlan;

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
    /// Runs the function's body on the arguments, or the block plan when the
    /// node has one. A node whose name has no registered function has no
    /// body and throws a TyxTextMsg naming it.
    const TyxVariant &evaluate() override;
    /// Runs the function's body on the arguments, ignoring a block plan.
    const TyxVariant &evaluateBody();
    TyxFcnNode *toFcnNode() override;
    const TyxFcnNode *toFcnNode() const override;

    /// The function name, as written or as the operator's name.
    const TyxString &name() const { return m_name; }
    const TyxEqnNodeList &args() const { return m_args; }

    /// The first function node called \p name (exact match) in a depth-first
    /// search that starts with this node and takes arguments in order; null
    /// if there is none.
    TyxEqnNodeConstPtr node(const TyxString &name) const;

    /// Folds what is already known: arguments that are function calls are
    /// collapsed in turn, variables with a value become constants (each adds
    /// 1 to \p count). When every argument is constant the result is a new
    /// constant of this call's value and \p count goes up by 1; a
    /// "unaryplus" call gives its argument. Otherwise null. Throws what
    /// evaluate throws.
    TyxEqnNodePtr collapse(int *count);

    /// Gives every function node of this subtree a fresh body, so that the
    /// next evaluation looks at the operand types again.
    void resetBodies();

    /// Makes \p plan evaluate this subtree (null: the body evaluates it).
    /// Collapsing and resetBodies drop plans.
    void setPlan(std::unique_ptr<TyxEqnBlockPlan> plan);
    /// Gives this node alone a fresh body, dropping its specialisation and
    /// result; the plan stays.
    void renewBody() { takeBody(); }

protected:
    TyxFcnNode();

    TyxEqnNodeList &args() { return m_args; }
    /// Drops all arguments.
    void clear();
    /// Replaces the arguments by deep copies of those of \p other.
    void copyArgs(const TyxFcnNode &other);

private:
    void takeBody();

    TyxString m_name;
    TyxEqnNodeList m_args;
    TyxEqnFunctions::TyxEqnFcnBodyIFPtr m_body;
    // The body behind m_body, read without the proxy's indirection.
    TyxEqnFunctions::TyxEqnFcnBodyIF *m_bodyRaw = nullptr;
    // Evaluation in blocks of an element-wise subtree; set by the parser.
    std::unique_ptr<TyxEqnBlockPlan> m_plan;
};

} // namespace tyx::internal
