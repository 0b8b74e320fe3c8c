// Dispatch machinery of the function bodies: the state, the routines that run and pick them, and the
// views of operand values they share.
#pragma once

#include <complex>
#include <cstdint>
#include <map>
#include <type_traits>
#include <utility>

#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>
#include <tyx/TyxVariant.h>

#include "core/TyxSaturatingCast.h"
#include "expr/TyxEqnFunctions.h"

namespace tyx::internal {

/// The functor of a body: the routine to run, the result and a raw pointer
/// to the value inside it. At construction the routine is the function's
/// generic one, which looks at the operand types, replaces itself by the
/// routine for exactly that combination and runs it.
///
/// Operands are not kept as addresses between evaluations: a routine takes
/// the variant that each argument node returns and reads its value by a
/// static cast chosen at specialisation. setValue replaces a variable's
/// variant, so an address kept from an earlier evaluation could point at a
/// value that is gone; reading through the returned variant sees the new
/// value of the same type at no extra cost.
struct TyxFcnState {
    using Routine = const TyxVariant &(*)(TyxFcnState &, const TyxEqnNodeList &);

    TyxFcnState(Routine generic, const wchar_t *fcnName) : evaluator(generic), name(fcnName) {}
    TyxFcnState(const TyxFcnState &) = delete;
    TyxFcnState &operator=(const TyxFcnState &) = delete;

    Routine evaluator;
    void *slot = nullptr;
    TyxVariant result;
    const wchar_t *name;
    // The type code of the first valid value passed on by a function that
    // shares a chosen argument's variant (ternary, select); -1 before it.
    int32_t sharedCode = -1;

    /// Stores \p value as the result. The value is written in place into the
    /// result variant when this state is its only holder, so Double and
    /// ComplexDouble results of repeated evaluations allocate nothing; a
    /// result that someone copied is left to them and a new one is made.
    template <class T>
    const TyxVariant &store(T &&value)
    {
        using Value = std::remove_cvref_t<T>;
        if (slot && !result.isShared()) {
            *static_cast<Value *>(slot) = std::forward<T>(value);
            return result;
        }
        result = TyxVariant(std::forward<T>(value));
        slot = const_cast<void *>(result.impl().constData());
        return result;
    }

    /// The result tile to write into: the previous one when nobody else
    /// shares the result, so its buffer can be reused; else a new empty tile.
    TyxEqnTile &tileResult()
    {
        if (!slot || result.isShared()) {
            result = TyxVariant(TyxEqnTile());
            slot = const_cast<void *>(result.impl().constData());
        }
        return *static_cast<TyxEqnTile *>(slot);
    }
};

/// The value held by \p v, which the routine knows to be a T.
template <class T>
inline const T &as(const TyxVariant &v)
{
    return static_cast<const TyxVariantImpl<T> &>(v.impl()).get();
}

// ---- Operand types and routines ------------------------------------------------

using Complex = std::complex<double>;

// The type codes the bodies tell apart.
constexpr int kBool = TyxMetaType::Bool;
constexpr int kDouble = TyxMetaType::Double;
constexpr int kComplex = TyxMetaType::ComplexDouble;
constexpr int kString = TyxMetaType::String;
constexpr int kTile = TyxMetaType::EqnTile;
constexpr int kScalar = TyxMetaType::Scalar;

#define TYX_BAD_ARG(state, ...) throwBadArgError((state).name, __VA_ARGS__, TyxString(__FILE__), __LINE__)
#define TYX_BAD_COUNT(state, got, expected)                                                                  \
    throwBadCountError((got), (expected), (state).name, TyxString(__FILE__), __LINE__)

/// The type code of a value.
inline int code(const TyxVariant &v) { return v.type().toEnum(); }

// An argument for the generic routines; a null element of the list (an
// omitted index) evaluates as the invalid variant and so fails the type check.
inline const TyxVariant &evalArg(const TyxEqnNodeList &args, size_t i)
{
    static const TyxVariant invalid;
    return args[i] ? args[i]->evaluate() : invalid;
}

inline void checkCount(const TyxFcnState &state, const TyxEqnNodeList &args, size_t n)
{
    if (args.size() != n)
        TYX_BAD_COUNT(state, args.size(), n);
}

// Routines that evaluate the arguments and hand their variants to the
// computing part C::apply. The generic routine of a function evaluates once,
// picks C for the types it sees, stores the run routine of C and applies C
// to the values it has, so no argument is evaluated twice.
template <class C>
const TyxVariant &runOne(TyxFcnState &state, const TyxEqnNodeList &args)
{
    return C::apply(state, args[0]->evaluate());
}
template <class C>
const TyxVariant &runTwo(TyxFcnState &state, const TyxEqnNodeList &args)
{
    const TyxVariant &x = args[0]->evaluate();
    const TyxVariant &y = args[1]->evaluate();
    return C::apply(state, x, y);
}
template <class C>
const TyxVariant &runThree(TyxFcnState &state, const TyxEqnNodeList &args)
{
    const TyxVariant &x = args[0]->evaluate();
    const TyxVariant &y = args[1]->evaluate();
    const TyxVariant &z = args[2]->evaluate();
    return C::apply(state, x, y, z);
}
template <class C>
const TyxVariant &runList(TyxFcnState &state, const TyxEqnNodeList &args)
{
    return C::apply(state, args);
}
template <class C>
const TyxVariant &pick(TyxFcnState &state, const TyxVariant &x)
{
    state.evaluator = &runOne<C>;
    return C::apply(state, x);
}
template <class C>
const TyxVariant &pick(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
{
    state.evaluator = &runTwo<C>;
    return C::apply(state, x, y);
}
template <class C>
const TyxVariant &pick(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y, const TyxVariant &z)
{
    state.evaluator = &runThree<C>;
    return C::apply(state, x, y, z);
}

/// Picks \p F's routine for a pair of Double and Scalar operands (F::DD or
/// F::UU<CX, CY>); null for any other pair, which the caller handles.
template <class F>
const TyxVariant *pickRealPair(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y, int cx, int cy)
{
    if (cx == kDouble && cy == kDouble)
        return &pick<typename F::DD>(state, x, y);
    if (cx == kScalar && cy == kScalar)
        return &pick<typename F::template UU<kScalar, kScalar>>(state, x, y);
    if (cx == kDouble && cy == kScalar)
        return &pick<typename F::template UU<kDouble, kScalar>>(state, x, y);
    if (cx == kScalar && cy == kDouble)
        return &pick<typename F::template UU<kScalar, kDouble>>(state, x, y);
    return nullptr;
}

// ---- Value views -------------------------------------------------------------

// A Double, ComplexDouble or scalar operand as a scalar; \p c is its code.
inline TyxScalar scalarOf(const TyxVariant &v, int c)
{
    switch (c) {
    case kDouble: return TyxScalar(as<double>(v));
    case kComplex: return TyxScalar(as<Complex>(v).real(), as<Complex>(v).imag(), TyxUnits());
    default: return as<TyxScalar>(v);
    }
}

// A numeric argument (Double, scalar, or any numeric variant such as the
// Int of mod) as a double.
inline double numberOf(const TyxVariant &v)
{
    switch (code(v)) {
    case kDouble: return as<double>(v);
    case kScalar: return as<TyxScalar>(v).real();
    default: return v.value<double>();
    }
}

inline bool isNumber(const TyxVariant &v) { return v.type().isNumeric(); }

// Integer conversion of a double for mod, the order of Bessel functions and
// string repetition: toward zero, saturated at the ends of the 32-bit range,
// NaN as 0, so that no conversion is undefined.
inline int32_t toInt32(double x) { return saturatingCast<int32_t>(x); }

// Truth of a value by the conversion to bool. An empty call fails with the
// count message like any other function.
inline bool truthOf(const TyxFcnState &state, const TyxVariant &v)
{
    if (code(v) == kBool)
        return as<bool>(v);
    if (code(v) == kDouble)
        return as<double>(v) != 0.0;
    bool result = false;
    if (!v.value(TyxMetaType::Bool, &result))
        TYX_BAD_ARG(state, v.type());
    return result;
}

// ---- Bodies and their registration --------------------------------------------

/// A registered body around the functor F: evaluate jumps through the
/// routine stored in the state.
template <class F>
class TyxEqnFunctions::TyxEqnFcnBodyImpl final : public TyxEqnFunctions::TyxEqnFcnBodyIF {
public:
    explicit TyxEqnFcnBodyImpl(const wchar_t *name) : m_fn(&F::generic, name) {}

    TyxEqnFcnBodyIFPtr clone() const override
    {
        return TyxEqnFcnBodyIFPtr(new TyxEqnFcnBodyImpl<F>(m_fn.name));
    }
    const TyxVariant &evaluate(const TyxEqnNodeList &args) override { return m_fn.evaluator(m_fn, args); }

private:
    TyxFcnState m_fn;
};

using FunctionRegistry = std::map<TyxString, TyxEqnFunctions::TyxEqnFcnBodyIFPtr>;

/// Registers the body of functor F under \p name.
template <class F>
void addFunction(FunctionRegistry &registry, const wchar_t *name)
{
    registry.emplace(name,
                     TyxEqnFunctions::TyxEqnFcnBodyIFPtr(new TyxEqnFunctions::TyxEqnFcnBodyImpl<F>(name)));
}

// The families of functions, each registering its own bodies.
void addElementaryMathFunctions(FunctionRegistry &registry);
void addArithmeticFunctions(FunctionRegistry &registry);
void addSelectionFunctions(FunctionRegistry &registry);
void addReductionFunctions(FunctionRegistry &registry);

} // namespace tyx::internal
