// What one evaluation of an expression may still build: the parser's limits and what was used of them.
#include "expr/TyxEqnBudget.h"

#include <string>

#include "core/TyxPost.h"

namespace tyx::internal {

namespace {

thread_local TyxEqnBudget *t_current = nullptr;

TyxString number(uint64_t n) { return TyxString(std::to_wstring(n)); }

// Adds \p n to \p used unless the sum passes \p limit; no wrap-around.
bool fits(uint64_t &used, uint64_t n, uint64_t limit)
{
    if (n > limit || used > limit - n)
        return false;
    used += n;
    return true;
}

} // namespace

TyxEqnBudget::Scope::Scope(const TyxEqnParser::Limits &limits) : m_previous(t_current)
{
    t_current = new TyxEqnBudget(limits);
}

TyxEqnBudget::Scope::~Scope()
{
    delete t_current;
    t_current = m_previous;
}

TyxEqnBudget &TyxEqnBudget::current()
{
    if (t_current)
        return *t_current;
    // Without a scope each call is measured alone against the defaults.
    thread_local TyxEqnBudget loose{TyxEqnParser::Limits()};
    loose.m_iterations = 0;
    loose.m_elements = 0;
    return loose;
}

void TyxEqnBudget::checkString(uint64_t length, const wchar_t *name)
{
    const uint64_t limit = current().m_limits.maxStringLength;
    if (length > limit)
        TYX_THROW_ERROR(L"The string built by '" + TyxString(name) + L"' would have " + number(length) +
                        L" characters, more than the limit of " + number(limit) + L".");
}

void TyxEqnBudget::chargeIterations(uint64_t rounds, const wchar_t *name)
{
    TyxEqnBudget &budget = current();
    if (!fits(budget.m_iterations, rounds, budget.m_limits.maxLoopIterations))
        TYX_THROW_ERROR(L"'" + TyxString(name) + L"' would run the evaluation past the limit of " +
                        number(budget.m_limits.maxLoopIterations) + L" loop iterations.");
}

void TyxEqnBudget::chargeElements(uint64_t count, const wchar_t *name)
{
    TyxEqnBudget &budget = current();
    if (!fits(budget.m_elements, count, budget.m_limits.maxElements))
        TYX_THROW_ERROR(L"'" + TyxString(name) +
                        L"' would make the evaluation produce more than the limit of " +
                        number(budget.m_limits.maxElements) + L" elements.");
}

void TyxEqnBudget::throwOutOfMemory(const char *file, int line)
{
    throw TyxTextMsg(L"Not enough memory to evaluate the expression.", file, line, TyxTextMsg::Error);
}

} // namespace tyx::internal
