// Expression parser front end: parses expression text, holds variables and evaluates.
#pragma once

#include <cstdint>
#include <memory>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxStrList.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariant.h>

namespace tyx {

/// Parses expression text such as "(a - b) / (a + b)" into trees, lets the
/// caller set the variables and evaluates. Values are Double, ComplexDouble
/// (held as TyxScalar), TyxString, TyxEqnTile and TyxScalar variants; other
/// numeric types are stored as Double.
///
/// A text is a main expression followed by definitions: "a + b; a = 2*b;
/// b = 3". Definitions are evaluated from the last to the first, then the
/// main expression. Each function call decides on its first evaluation what
/// to compute for the types of its operands and keeps that decision, so a
/// variable keeps its type across evaluations; setting a value of another
/// type makes the next evaluation decide afresh.
///
/// Not safe for concurrent use: a thread needs its own copy.
class TYX_EXPORT TyxEqnParser : public TyxObject {
public:
    /// Bounds on what one evaluate or collapse may build, so that text from
    /// an untrusted user cannot exhaust memory or time. A breach fails the
    /// evaluation with a TyxTextMsg saying which limit was reached, as any
    /// other evaluation error; so does an allocation that fails.
    struct Limits {
        /// The most characters of a string that a function builds, by
        /// repetition ("ab" * 3) or concatenation: 16 Mi (64 MiB of text).
        uint64_t maxStringLength = uint64_t{1} << 24;
        /// The most loop rounds of one evaluation, those of all foreach
        /// calls added up (nested loops multiply): 1 million.
        uint64_t maxLoopIterations = 1'000'000;
        /// The most tile elements that functions make from counts in one
        /// evaluation (the tiles of foreach, added up): 1 million.
        uint64_t maxElements = 1'000'000;
    };

    TyxEqnParser();
    /// A deep copy when \p other holds a parsed expression: new trees with
    /// the same values, which decide their operand types afresh. A parser
    /// that failed or holds nothing copies its text and message only.
    TyxEqnParser(const TyxEqnParser &other);
    TyxEqnParser &operator=(const TyxEqnParser &other);
    ~TyxEqnParser() override;

    /// "TyxEqnParser".
    TyxString className() const override;

    /// Parses \p text, replacing whatever was parsed before. Names of
    /// TyxMathConst constants get their values at once. 0 on success (also
    /// for an empty text); 1 on a syntax error or an unknown function name,
    /// with the message copied to \p msg when it is not null.
    int parse(const TyxString &text, TyxTextMsg *msg = nullptr);

    /// The value of the main expression; the invalid variant on failure,
    /// with the message copied to \p msg when it is not null. The result is
    /// cached until setValue, parse or a folding collapse. Never throws a
    /// TyxTextMsg.
    const TyxVariant &evaluate(TyxTextMsg *msg = nullptr);

    /// Folds constant parts of the trees into constants, variables with a
    /// value included (they then no longer answer to setValue). The number of
    /// foldings; 0 if nothing changed. Throws the TyxTextMsg of a function
    /// that fails on constant arguments.
    int collapse();

    /// Sets every occurrence of the variable \p name; ignored for a name that
    /// the expression does not use.
    void setValue(const TyxString &name, const TyxVariant &value);
    /// The value of the variable \p name; the invalid variant if unknown.
    const TyxVariant &value(const TyxString &name) const;
    /// The names of the variables of the last parse.
    const TyxStrList &variables() const;
    /// The text last parsed.
    const TyxString &expression() const;

    /// Replaces the limits of evaluate and collapse; a copy of the parser
    /// takes them along.
    void setLimits(const Limits &limits);
    /// The limits in force; the defaults of Limits unless set.
    const Limits &limits() const;

    /// Makes \p alias a further name of the function \p existing, for all
    /// parsers of the process. 0 on success; 1 if \p existing is unknown or
    /// \p alias exists. Not guarded by a lock: call it before parsing.
    static int createFunctionAlias(const TyxString &existing, const TyxString &alias);

private:
    struct Body;
    std::unique_ptr<Body> m_body;
};

} // namespace tyx
