// What one evaluation of an expression may still build: the parser's limits and what was used of them.
#pragma once

#include <cstdint>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxString.h>

namespace tyx::internal {

/// The limits in force on this thread and what the running evaluation has
/// used of them. TyxEqnParser opens a scope around each evaluation and
/// collapse; outside one, the default limits hold and nothing adds up.
class TyxEqnBudget {
public:
    /// Makes \p limits the ones in force on this thread, with nothing used,
    /// until the scope ends; scopes nest.
    class Scope {
    public:
        explicit Scope(const TyxEqnParser::Limits &limits);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        TyxEqnBudget *m_previous;
    };

    /// Throws a TyxTextMsg when \p length characters exceed the string limit;
    /// \p name is the function that builds the string.
    static void checkString(uint64_t length, const wchar_t *name);
    /// Counts \p rounds more loop rounds of \p name; throws a TyxTextMsg when
    /// the evaluation's total would exceed the iteration limit.
    static void chargeIterations(uint64_t rounds, const wchar_t *name);
    /// Counts \p count more elements made by \p name; throws a TyxTextMsg when
    /// the evaluation's total would exceed the element limit.
    static void chargeElements(uint64_t count, const wchar_t *name);
    /// Throws the message of an allocation that failed.
    [[noreturn]] static void throwOutOfMemory(const char *file, int line);

private:
    TyxEqnBudget(const TyxEqnParser::Limits &limits) : m_limits(limits) {}
    static TyxEqnBudget &current();

    TyxEqnParser::Limits m_limits;
    uint64_t m_iterations = 0;
    uint64_t m_elements = 0;
};

} // namespace tyx::internal
