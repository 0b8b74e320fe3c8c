// Expression tree node that calls a named function on its arguments.
#include "expr/TyxFcnNode.h"

#include <utility>

#include "core/TyxPost.h"
#include "expr/TyxConstNode.h"
#include "expr/TyxEqnBlockPlan.h"
#include "expr/TyxVarNode.h"

namespace tyx::internal {

TyxFcnNode::TyxFcnNode() = default;

TyxFcnNode::TyxFcnNode(const TyxString &name, TyxEqnNodeList args) : m_name(name), m_args(std::move(args))
{
    takeBody();
}

TyxFcnNode::TyxFcnNode(const TyxString &name, const TyxEqnNodePtr &arg) : m_name(name), m_args{arg}
{
    takeBody();
}

TyxFcnNode::TyxFcnNode(const TyxString &name, const TyxEqnNodePtr &arg1, const TyxEqnNodePtr &arg2)
    : m_name(name), m_args{arg1, arg2}
{
    takeBody();
}

TyxFcnNode::TyxFcnNode(const TyxFcnNode &other) : TyxEqnNode(other), m_name(other.m_name)
{
    takeBody();
    try {
        copyArgs(other);
    } catch (...) {
        clear();
        throw;
    }
}

TyxFcnNode::~TyxFcnNode() { clear(); }

TyxString TyxFcnNode::className() const { return L"TyxFcnNode"; }

TyxEqnNodePtr TyxFcnNode::clone() const { return TyxEqnNodePtr(new TyxFcnNode(*this)); }

void TyxFcnNode::takeBody()
{
    // A name without a registered function leaves the body empty; the
    // parser reports such a name, and evaluate refuses it.
    const TyxEqnFunctions::TyxEqnFcnBodyIFPtr &registered = TyxEqnFunctions::function(m_name);
    m_body = registered ? registered->clone() : TyxEqnFunctions::TyxEqnFcnBodyIFPtr();
    m_bodyRaw = m_body.get();
}

const TyxVariant &TyxFcnNode::evaluate()
{
    if (m_plan)
        return m_plan->evaluate(*this);
    return evaluateBody();
}

const TyxVariant &TyxFcnNode::evaluateBody()
{
    if (!m_bodyRaw)
        TYX_THROW_ERROR(L"'" + m_name + L"()' is not a valid parametric function.");
    return m_bodyRaw->evaluate(m_args);
}

void TyxFcnNode::setPlan(std::unique_ptr<TyxEqnBlockPlan> plan) { m_plan = std::move(plan); }

TyxEqnNodePtr TyxFcnNode::collapse(int *count)
{
    // Folding replaces nodes the plan refers to.
    m_plan.reset();
    const int before = *count;
    size_t known = 0;
    for (auto arg = m_args.rbegin(); arg != m_args.rend(); ++arg) {
        if (!*arg)
            continue;
        if (TyxFcnNode *fcn = (*arg)->toFcnNode()) {
            // A folded argument is seen as a constant by the next round of
            // the parser's collapse, not by this one.
            if (TyxEqnNodePtr folded = fcn->collapse(count))
                *arg = folded;
        } else if ((*arg)->toConstNode()) {
            ++known;
        } else if (const TyxVarNode *var = (*arg)->toVarNode(); var && var->isValid()) {
            *arg = TyxEqnNodePtr(new TyxConstNode(var->value()));
            ++known;
            ++*count;
        }
    }
    // A folded argument may hold a value of another type than the subtree
    // gave (a complex result becomes a scalar constant), and a folded
    // subtree may change the type this call gives: a body specialised for
    // the old types would read the new values as something they are not.
    // So every call above a folding picks its routine afresh.
    if (*count != before)
        takeBody();
    if (known == m_args.size()) {
        TyxEqnNodePtr folded(new TyxConstNode(evaluate()));
        ++*count;
        return folded;
    }
    if (m_name == L"unaryplus" && !m_args.empty()) {
        TyxEqnNodePtr first = m_args.front();
        m_args.front() = TyxEqnNodePtr();
        ++*count;
        return first;
    }
    return {};
}

void TyxFcnNode::resetBodies()
{
    std::vector<TyxFcnNode *> pending{this};
    while (!pending.empty()) {
        TyxFcnNode *fcn = pending.back();
        pending.pop_back();
        fcn->takeBody();
        fcn->m_plan.reset();
        for (const TyxEqnNodePtr &arg : fcn->m_args) {
            if (TyxFcnNode *child = arg ? arg->toFcnNode() : nullptr)
                pending.push_back(child);
        }
    }
}

TyxFcnNode *TyxFcnNode::toFcnNode() { return this; }

const TyxFcnNode *TyxFcnNode::toFcnNode() const { return this; }

TyxEqnNodeConstPtr TyxFcnNode::node(const TyxString &name) const
{
    std::vector<const TyxFcnNode *> pending{this};
    while (!pending.empty()) {
        const TyxFcnNode *fcn = pending.back();
        pending.pop_back();
        if (fcn->m_name == name)
            return TyxEqnNodeConstPtr(fcn);
        // Pushed last to first, so the first argument is searched next.
        for (auto arg = fcn->m_args.rbegin(); arg != fcn->m_args.rend(); ++arg) {
            if (const TyxFcnNode *child = *arg ? (*arg)->toFcnNode() : nullptr)
                pending.push_back(child);
        }
    }
    return {};
}

void TyxFcnNode::clear()
{
    // A function argument that nobody else holds hands its own arguments to
    // the pending list before it goes, so each destructor meets an empty
    // list and the teardown never recurses.
    TyxEqnNodeList pending;
    pending.swap(m_args);
    while (!pending.empty()) {
        const TyxEqnNodePtr node = pending.back();
        pending.pop_back();
        if (!node || node->hasMultipleRefs())
            continue;
        if (TyxFcnNode *fcn = node->toFcnNode()) {
            pending.insert(pending.end(), fcn->m_args.begin(), fcn->m_args.end());
            fcn->m_args.clear();
        }
    }
}

void TyxFcnNode::copyArgs(const TyxFcnNode &other)
{
    if (&other == this)
        return;
    clear();
    // Pairs of a source node and its copy whose arguments remain to be
    // copied; function arguments are copied bare and queued here.
    std::vector<std::pair<const TyxFcnNode *, TyxFcnNode *>> pending{{&other, this}};
    while (!pending.empty()) {
        const auto [source, target] = pending.back();
        pending.pop_back();
        target->m_args.reserve(source->m_args.size());
        for (const TyxEqnNodePtr &arg : source->m_args) {
            const TyxFcnNode *fcn = arg ? arg->toFcnNode() : nullptr;
            if (!fcn) {
                target->m_args.push_back(arg ? arg->clone() : TyxEqnNodePtr());
                continue;
            }
            auto *copy = new TyxFcnNode();
            const TyxEqnNodePtr owner(copy);
            copy->m_name = fcn->m_name;
            copy->takeBody();
            target->m_args.push_back(owner);
            pending.emplace_back(fcn, copy);
        }
    }
}

} // namespace tyx::internal
