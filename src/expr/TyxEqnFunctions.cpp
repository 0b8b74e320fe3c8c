// Registry of the functions of the expression language and their self-specialising bodies.
#include "expr/TyxEqnFunctions.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <limits>
#include <map>
#include <sstream>
#include <vector>

#include <tyx/TyxDataType.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>

#include "core/TyxPost.h"
#include "core/TyxSaturatingCast.h"
#include "expr/TyxEqnFcnState.h"
#include "expr/TyxEqnTileInto.h"
#include "expr/TyxFcnNode.h"
#include "expr/TyxVarNode.h"

namespace tyx::internal {

TyxEqnFunctions::TyxEqnFcnBodyIF::~TyxEqnFcnBodyIF() = default;

// ---- Messages ----------------------------------------------------------------

void throwBadArgError(const TyxString &name, const TyxMetaType &type, const TyxString &file,
                      unsigned long line)
{
    throw TyxTextMsg(L"Invalid argument type (" + type.toString() + L") passed to '" + name + L"'.", file,
                     static_cast<int>(line), TyxTextMsg::Error);
}

void throwBadArgError(const TyxString &name, const TyxMetaType &type1, const TyxMetaType &type2,
                      const TyxString &file, unsigned long line)
{
    throw TyxTextMsg(L"Invalid argument type combination (" + type1.toString() + L"," + type2.toString() +
                         L") passed to '" + name + L"'.",
                     file, static_cast<int>(line), TyxTextMsg::Error);
}

void throwBadArgError(const TyxString &name, const TyxMetaType &type1, const TyxMetaType &type2,
                      const TyxMetaType &type3, const TyxString &file, unsigned long line)
{
    throw TyxTextMsg(L"Invalid argument type combination (" + type1.toString() + L"," + type2.toString() +
                         L"," + type3.toString() + L") passed to '" + name + L"'.",
                     file, static_cast<int>(line), TyxTextMsg::Error);
}

void throwBadCountError(uint64_t got, uint64_t expected, const TyxString &name, const TyxString &file,
                        unsigned long line)
{
    throw TyxTextMsg(L"Incorrect number of arguments passed to '" + name + L"'. Got " + std::to_wstring(got) +
                         L", but expected " + std::to_wstring(expected) + L".",
                     file, static_cast<int>(line), TyxTextMsg::Error);
}

namespace {

using Cplx = std::complex<double>;
using State = TyxFcnState;
using Args = TyxEqnNodeList;
using V = TyxVariant;

constexpr int kBool = TyxMetaType::Bool;
constexpr int kInt = TyxMetaType::Int;
constexpr int kD = TyxMetaType::Double;
constexpr int kC = TyxMetaType::ComplexDouble;
constexpr int kS = TyxMetaType::String;
constexpr int kT = TyxMetaType::EqnTile;
constexpr int kU = TyxMetaType::Scalar;

#define TYX_BAD_ARG(s, ...) throwBadArgError((s).name, __VA_ARGS__, TyxString(__FILE__), __LINE__)
#define TYX_BAD_COUNT(s, got, expected)                                                                      \
    throwBadCountError((got), (expected), (s).name, TyxString(__FILE__), __LINE__)

inline int code(const V &v) { return v.type().toEnum(); }

// An argument for the generic routines; a null element of the list (an
// omitted index) evaluates as the invalid variant and so fails the type check.
const V &evalArg(const Args &a, size_t i)
{
    static const V invalid;
    return a[i] ? a[i]->evaluate() : invalid;
}

void checkCount(const State &s, const Args &a, size_t n)
{
    if (a.size() != n)
        TYX_BAD_COUNT(s, a.size(), n);
}

// Routines that evaluate the arguments and hand their variants to the
// computing part C::apply. The generic routine of a function evaluates once,
// picks C for the types it sees, stores run<C> and applies C to the values
// it has, so no argument is evaluated twice.
template <class C>
const V &run1(State &s, const Args &a)
{
    return C::apply(s, a[0]->evaluate());
}
template <class C>
const V &run2(State &s, const Args &a)
{
    const V &x = a[0]->evaluate();
    const V &y = a[1]->evaluate();
    return C::apply(s, x, y);
}
template <class C>
const V &run3(State &s, const Args &a)
{
    const V &x = a[0]->evaluate();
    const V &y = a[1]->evaluate();
    const V &z = a[2]->evaluate();
    return C::apply(s, x, y, z);
}
template <class C>
const V &runN(State &s, const Args &a)
{
    return C::apply(s, a);
}
template <class C>
const V &pick(State &s, const V &x)
{
    s.evaluator = &run1<C>;
    return C::apply(s, x);
}
template <class C>
const V &pick(State &s, const V &x, const V &y)
{
    s.evaluator = &run2<C>;
    return C::apply(s, x, y);
}
template <class C>
const V &pick(State &s, const V &x, const V &y, const V &z)
{
    s.evaluator = &run3<C>;
    return C::apply(s, x, y, z);
}

/// Picks \p F's routine for a pair of Double and Scalar operands (F::DD or
/// F::UU<CX, CY>); null for any other pair, which the caller handles.
template <class F>
const V *pickRealPair(State &s, const V &x, const V &y, int cx, int cy)
{
    if (cx == kD && cy == kD)
        return &pick<typename F::DD>(s, x, y);
    if (cx == kU && cy == kU)
        return &pick<typename F::template UU<kU, kU>>(s, x, y);
    if (cx == kD && cy == kU)
        return &pick<typename F::template UU<kD, kU>>(s, x, y);
    if (cx == kU && cy == kD)
        return &pick<typename F::template UU<kU, kD>>(s, x, y);
    return nullptr;
}

// ---- Value views -------------------------------------------------------------

inline TyxScalar scalarOf(const V &v, int c)
{
    switch (c) {
    case kD: return TyxScalar(as<double>(v));
    case kC: return TyxScalar(as<Cplx>(v).real(), as<Cplx>(v).imag(), TyxUnits());
    default: return as<TyxScalar>(v);
    }
}

// A numeric argument (Double, scalar, or any numeric variant such as the
// Int of mod) as a double.
inline double numberOf(const V &v)
{
    switch (code(v)) {
    case kD: return as<double>(v);
    case kU: return as<TyxScalar>(v).real();
    default: return v.value<double>();
    }
}

inline bool isNumber(const V &v) { return v.type().isNumeric(); }

// Integer conversion of a double for mod, the order of Bessel functions and
// string repetition: toward zero, saturated at the ends of the 32-bit range,
// NaN as 0, so that no conversion is undefined.
inline int32_t toInt32(double x) { return saturatingCast<int32_t>(x); }

// ---- Unary groups ------------------------------------------------------------

// Group A: the C function for a Double, the scalar function for a TyxScalar,
// the tile function for a tile.
template <class F>
struct UnaryA {
    struct OnD {
        static const V &apply(State &s, const V &x) { return s.store(F::d(as<double>(x))); }
    };
    struct OnU {
        static const V &apply(State &s, const V &x) { return s.store(F::u(as<TyxScalar>(x))); }
    };
    struct OnT {
        static const V &apply(State &s, const V &x) { return s.store(F::t(as<TyxEqnTile>(x))); }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 1);
        const V &x = evalArg(a, 0);
        switch (code(x)) {
        case kD: return pick<OnD>(s, x);
        case kU: return pick<OnU>(s, x);
        case kT: return pick<OnT>(s, x);
        default: TYX_BAD_ARG(s, x.type());
        }
    }
};

// Group B: a Double goes through the scalar function and comes back as a
// ComplexDouble, so that sqrt(-1) is (0,1).
template <class F>
struct UnaryB : UnaryA<F> {
    struct OnD {
        static const V &apply(State &s, const V &x)
        {
            const TyxScalar r = F::u(TyxScalar(as<double>(x)));
            return s.store(Cplx(r.real(), r.imaginary()));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 1);
        const V &x = evalArg(a, 0);
        switch (code(x)) {
        case kD: return pick<OnD>(s, x);
        case kU: return pick<typename UnaryA<F>::OnU>(s, x);
        case kT: return pick<typename UnaryA<F>::OnT>(s, x);
        default: TYX_BAD_ARG(s, x.type());
        }
    }
};

#define TYX_UNARY(fn)                                                                                        \
    struct fn##_s {                                                                                          \
        static double d(double x) { return std::fn(x); }                                                     \
        static TyxScalar u(const TyxScalar &x) { return x.fn(); }                                            \
        static TyxEqnTile t(const TyxEqnTile &x) { return x.fn(); }                                          \
    }

TYX_UNARY(sin);
TYX_UNARY(asin);
TYX_UNARY(sinh);
TYX_UNARY(cos);
TYX_UNARY(acos);
TYX_UNARY(cosh);
TYX_UNARY(tan);
TYX_UNARY(atan);
TYX_UNARY(tanh);
TYX_UNARY(exp);
TYX_UNARY(log);
TYX_UNARY(log10);
TYX_UNARY(abs);
TYX_UNARY(ceil);
TYX_UNARY(floor);

#define TYX_UNARY_B(fn)                                                                                      \
    struct fn##_s {                                                                                          \
        static TyxScalar u(const TyxScalar &x) { return x.fn(); }                                            \
        static TyxEqnTile t(const TyxEqnTile &x) { return x.fn(); }                                          \
    }

TYX_UNARY_B(arg);
TYX_UNARY_B(norm);
TYX_UNARY_B(conj);
TYX_UNARY_B(sqrt);
TYX_UNARY_B(trunc);
TYX_UNARY_B(round);
TYX_UNARY_B(sinc);
TYX_UNARY_B(y0);
TYX_UNARY_B(y1);
TYX_UNARY_B(j0);
TYX_UNARY_B(j1);
TYX_UNARY_B(factorial);

// The real and imaginary parts of a scalar keep its units.
struct real_s {
    static TyxScalar u(const TyxScalar &x) { return TyxScalar(x.real(), x.units()); }
    static TyxEqnTile t(const TyxEqnTile &x) { return x.real(); }
};
struct imag_s {
    static TyxScalar u(const TyxScalar &x) { return TyxScalar(x.imaginary(), x.units()); }
    static TyxEqnTile t(const TyxEqnTile &x) { return x.imag(); }
};

struct unaryminus_s {
    struct OnD {
        // The sign bit flips: 0 gives -0.0 and a NaN stays a NaN.
        static const V &apply(State &s, const V &x) { return s.store(-as<double>(x)); }
    };
    struct OnU {
        static const V &apply(State &s, const V &x) { return s.store(-as<TyxScalar>(x)); }
    };
    struct OnT {
        static const V &apply(State &s, const V &x)
        {
            negateInto(s.tileResult(), as<TyxEqnTile>(x));
            return s.result;
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 1);
        const V &x = evalArg(a, 0);
        switch (code(x)) {
        case kD: return pick<OnD>(s, x);
        case kU: return pick<OnU>(s, x);
        case kT: return pick<OnT>(s, x);
        default: TYX_BAD_ARG(s, x.type());
        }
    }
};

// The argument's own variant, shared.
struct unaryplus_s {
    static const V &apply(State &, const V &x) { return x; }
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 1);
        return pick<unaryplus_s>(s, evalArg(a, 0));
    }
};

// Truth of a value by the conversion to bool. An empty call fails with the
// count message like any other function.
inline bool truthOf(const State &s, const V &v)
{
    if (code(v) == kBool)
        return as<bool>(v);
    if (code(v) == kD)
        return as<double>(v) != 0.0;
    bool result = false;
    if (!v.value(TyxMetaType::Bool, &result))
        TYX_BAD_ARG(s, v.type());
    return result;
}

struct logicalnot_s {
    static const V &apply(State &s, const V &x) { return s.store(!truthOf(s, x)); }
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 1);
        const V &x = evalArg(a, 0);
        const bool value = truthOf(s, x);
        s.evaluator = &run1<logicalnot_s>;
        return s.store(!value);
    }
};

// The second operand is evaluated only when the first leaves the answer open,
// so its type is known only then: these two test the truth of each operand
// in every evaluation.
template <bool IsAnd>
struct Logical {
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        s.evaluator = &run;
        return run(s, a);
    }
    static const V &run(State &s, const Args &a)
    {
        const bool first = truthOf(s, evalArg(a, 0));
        if (first != IsAnd)
            return s.store(first);
        return s.store(truthOf(s, evalArg(a, 1)));
    }
};

// ---- Arithmetic --------------------------------------------------------------

using AddOp = std::plus<>;
using SubOp = std::minus<>;
using MulOp = std::multiplies<>;
using DivOp = std::divides<>;

// A scalar beside a tile counts by its value: a double when it is real, a
// complex number otherwise. Units do not reach tiles.
template <bool ScalarLeft, class Op>
void tileWithScalarValue(TyxEqnTile &out, const TyxEqnTile &t, const TyxScalar &u, Op op)
{
    if (u.isReal())
        tileScalarInto<ScalarLeft>(out, t, u.real(), op);
    else
        tileScalarInto<ScalarLeft>(out, t, u.complex(), op);
}

TyxString repeated(const TyxString &text, double count)
{
    // The count converts to an integer; 0 or less gives the empty string.
    const int32_t n = toInt32(count);
    TyxString result;
    if (n > 0) {
        result.reserve(text.size() * static_cast<size_t>(n));
        for (int32_t i = 0; i < n; ++i)
            result += text;
    }
    return result;
}

template <class Op>
struct Arith {
    struct DD {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(Op()(as<double>(x), as<double>(y)));
        }
    };
    template <class X, class Y>
    struct CC {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(Cplx(Op()(Cplx(as<X>(x)), Cplx(as<Y>(y)))));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(Op()(scalarOf(x, CX), scalarOf(y, CY)));
        }
    };
    struct TT {
        static const V &apply(State &s, const V &x, const V &y)
        {
            tileTileInto(s.tileResult(), as<TyxEqnTile>(x), as<TyxEqnTile>(y), Op());
            return s.result;
        }
    };
    template <class X, bool ScalarLeft>
    struct TS {
        static const V &apply(State &s, const V &x, const V &y)
        {
            const V &tile = ScalarLeft ? y : x;
            const V &other = ScalarLeft ? x : y;
            if constexpr (std::is_same_v<X, TyxScalar>)
                tileWithScalarValue<ScalarLeft>(s.tileResult(), as<TyxEqnTile>(tile), as<TyxScalar>(other),
                                                Op());
            else
                tileScalarInto<ScalarLeft>(s.tileResult(), as<TyxEqnTile>(tile), as<X>(other), Op());
            return s.result;
        }
    };

    // The matrix without strings; false when the pair is refused.
    static const V &numeric(State &s, const V &x, const V &y)
    {
        const int cx = code(x);
        const int cy = code(y);
        switch (cx) {
        case kD:
            switch (cy) {
            case kD: return pick<DD>(s, x, y);
            case kC: return pick<CC<double, Cplx>>(s, x, y);
            case kT: return pick<TS<double, true>>(s, x, y);
            case kU: return pick<UU<kD, kU>>(s, x, y);
            }
            break;
        case kC:
            switch (cy) {
            case kD: return pick<CC<Cplx, double>>(s, x, y);
            case kC: return pick<CC<Cplx, Cplx>>(s, x, y);
            case kT: return pick<TS<Cplx, true>>(s, x, y);
            case kU: return pick<UU<kC, kU>>(s, x, y);
            }
            break;
        case kT:
            switch (cy) {
            case kD: return pick<TS<double, false>>(s, x, y);
            case kC: return pick<TS<Cplx, false>>(s, x, y);
            case kT: return pick<TT>(s, x, y);
            case kU: return pick<TS<TyxScalar, false>>(s, x, y);
            }
            break;
        case kU:
            switch (cy) {
            case kD: return pick<UU<kU, kD>>(s, x, y);
            case kC: return pick<UU<kU, kC>>(s, x, y);
            case kT: return pick<TS<TyxScalar, true>>(s, x, y);
            case kU: return pick<UU<kU, kU>>(s, x, y);
            }
            break;
        }
        TYX_BAD_ARG(s, x.type(), y.type());
    }
};

template <class Op>
struct ArithFcn {
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        return Arith<Op>::numeric(s, x, y);
    }
};

struct add_s {
    struct SS {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(as<TyxString>(x) + as<TyxString>(y));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        if (code(x) == kS && code(y) == kS)
            return pick<SS>(s, x, y);
        if (code(x) == kS || code(y) == kS)
            TYX_BAD_ARG(s, x.type(), y.type());
        return Arith<AddOp>::numeric(s, x, y);
    }
};

struct multiply_s {
    struct SD {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(repeated(as<TyxString>(x), as<double>(y)));
        }
    };
    struct DS {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(repeated(as<TyxString>(y), as<double>(x)));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        if (code(x) == kS && code(y) == kD)
            return pick<SD>(s, x, y);
        if (code(x) == kD && code(y) == kS)
            return pick<DS>(s, x, y);
        if (code(x) == kS || code(y) == kS)
            TYX_BAD_ARG(s, x.type(), y.type());
        return Arith<MulOp>::numeric(s, x, y);
    }
};

template <class Op>
struct StringlessArith {
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        if (code(x) == kS || code(y) == kS)
            TYX_BAD_ARG(s, x.type(), y.type());
        return Arith<Op>::numeric(s, x, y);
    }
};

// ---- Two Doubles, or scalars ---------------------------------------------------

struct mod_s {
    // Both operands convert to 32-bit integers (see toInt32). A divisor of 0
    // and the smallest integer divided by -1 would fault the processor; they
    // end in a thrown message instead.
    static const V &apply(State &s, const V &x, const V &y)
    {
        const int32_t n = toInt32(as<double>(x));
        const int32_t d = toInt32(as<double>(y));
        if (d == 0)
            TYX_THROW_ERROR(L"Division by zero in 'mod'.");
        if (d == -1 && n == std::numeric_limits<int32_t>::min())
            TYX_THROW_ERROR(L"Integer overflow in 'mod'.");
        return s.store(static_cast<int>(n % d));
    }
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        if (code(x) != kD || code(y) != kD)
            TYX_BAD_ARG(s, x.type(), y.type());
        return pick<mod_s>(s, x, y);
    }
};

struct fmod_s {
    static const V &apply(State &s, const V &x, const V &y)
    {
        return s.store(std::fmod(as<double>(x), as<double>(y)));
    }
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        if (code(x) != kD || code(y) != kD)
            TYX_BAD_ARG(s, x.type(), y.type());
        return pick<fmod_s>(s, x, y);
    }
};

// Functions of (D,D), (U,U) with D beside U counted as U, and optionally a
// tile with a number. F::d, F::u and F::t compute the three forms.
template <class F, bool WithTile>
struct Binary {
    struct DD {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(F::d(as<double>(x), as<double>(y)));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(F::u(scalarOf(x, CX), scalarOf(y, CY)));
        }
    };
    struct TN {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(F::t(as<TyxEqnTile>(x), numberOf(y)));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (const V *picked = pickRealPair<Binary>(s, x, y, cx, cy))
            return *picked;
        if constexpr (WithTile) {
            if (cx == kT && isNumber(y))
                return pick<TN>(s, x, y);
        }
        TYX_BAD_ARG(s, x.type(), y.type());
    }
};

struct hypot_f {
    static double d(double x, double y) { return std::hypot(x, y); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return TyxScalar().hypot(x, y); }
};
struct ldexp_f {
    static double d(double x, double y) { return std::ldexp(x, toInt32(y)); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return x.ldexp(y); }
    static TyxEqnTile t(const TyxEqnTile &x, double y) { return x.ldexp(y); }
};
struct logb_f {
    static double d(double x, double y) { return std::log(x) / std::log(y); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return x.logb(y); }
    static TyxEqnTile t(const TyxEqnTile &x, double y) { return x.logb(y); }
};
// The second argument is the order in every form, as it is for tiles.
struct yn_f {
    static double d(double x, double n) { return ::yn(toInt32(n), x); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &n) { return x.yn(n); }
    static TyxEqnTile t(const TyxEqnTile &x, double n) { return x.yn(toInt32(n)); }
};
struct jn_f {
    static double d(double x, double n) { return ::jn(toInt32(n), x); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &n) { return x.jn(n); }
    static TyxEqnTile t(const TyxEqnTile &x, double n) { return x.jn(toInt32(n)); }
};

struct atan2_s : Binary<atan2_s, false> {
    static double d(double y, double x) { return std::atan2(y, x); }
    static TyxScalar u(const TyxScalar &y, const TyxScalar &x) { return TyxScalar().atan2(y, x); }
    struct TT {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(TyxEqnTile::atan2(as<TyxEqnTile>(x), as<TyxEqnTile>(y)));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        if (a.size() == 2) {
            const V &x = evalArg(a, 0);
            const V &y = evalArg(a, 1);
            if (code(x) == kT && code(y) == kT)
                return pick<TT>(s, x, y);
            // The arguments are evaluated again by the general form; only on
            // this first evaluation.
        }
        return Binary<atan2_s, false>::generic(s, a);
    }
};

struct pow_s {
    struct DD {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(std::pow(as<double>(x), as<double>(y)));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(scalarOf(x, CX).pow(scalarOf(y, CY)));
        }
    };
    struct TN {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(as<TyxEqnTile>(x).pow(numberOf(y)));
        }
    };
    struct NT {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(TyxEqnTile::pow(numberOf(x), as<TyxEqnTile>(y)));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (const V *picked = pickRealPair<pow_s>(s, x, y, cx, cy))
            return *picked;
        if (cx == kT && cy != kT && isNumber(y))
            return pick<TN>(s, x, y);
        if (cy == kT && cx != kT && isNumber(x))
            return pick<NT>(s, x, y);
        TYX_BAD_ARG(s, x.type(), y.type());
    }
};

struct cmplx_s {
    struct DD {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(Cplx(as<double>(x), as<double>(y)));
        }
    };
    // Real parts of both, in the units of the first.
    template <int CX, int CY>
    struct UU {
        static const V &apply(State &s, const V &x, const V &y)
        {
            const TyxScalar re = scalarOf(x, CX);
            return s.store(TyxScalar(re.real(), scalarOf(y, CY).real(), re.units()));
        }
    };
    struct TT {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(TyxEqnTile::cmplx(as<TyxEqnTile>(x), as<TyxEqnTile>(y)));
        }
    };
    struct TN {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(TyxEqnTile::cmplx(as<TyxEqnTile>(x), numberOf(y)));
        }
    };
    struct NT {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(TyxEqnTile::cmplx(numberOf(x), as<TyxEqnTile>(y)));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (const V *picked = pickRealPair<cmplx_s>(s, x, y, cx, cy))
            return *picked;
        if (cx == kT && cy == kT)
            return pick<TT>(s, x, y);
        if (cx == kT && isNumber(y))
            return pick<TN>(s, x, y);
        if (cy == kT && isNumber(x))
            return pick<NT>(s, x, y);
        TYX_BAD_ARG(s, x.type(), y.type());
    }
};

// ---- Limits ----------------------------------------------------------------------

template <bool IsMin>
struct ClipOne {
    static double limit(double x, double m)
    {
        if constexpr (IsMin)
            return m > x ? m : x;
        else
            return x > m ? m : x;
    }
    struct DN {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(limit(as<double>(x), numberOf(y)));
        }
    };
    struct TN {
        static const V &apply(State &s, const V &x, const V &y)
        {
            const TyxEqnTile &t = as<TyxEqnTile>(x);
            return s.store(IsMin ? t.clipmin(numberOf(y)) : t.clipmax(numberOf(y)));
        }
    };
    template <int CY>
    struct UN {
        static const V &apply(State &s, const V &x, const V &y)
        {
            const TyxScalar m = CY == kU ? as<TyxScalar>(y) : TyxScalar(numberOf(y));
            return s.store(IsMin ? as<TyxScalar>(x).clipmin(m) : as<TyxScalar>(x).clipmax(m));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        if (isNumber(y)) {
            switch (code(x)) {
            case kD: return pick<DN>(s, x, y);
            case kT: return pick<TN>(s, x, y);
            case kU: return code(y) == kU ? pick<UN<kU>>(s, x, y) : pick<UN<kD>>(s, x, y);
            }
        }
        TYX_BAD_ARG(s, x.type(), y.type());
    }
};

struct clip_s {
    struct DDD {
        static const V &apply(State &s, const V &x, const V &lo, const V &hi)
        {
            // The low bound is tested first.
            const double v = as<double>(x);
            const double l = as<double>(lo);
            const double h = as<double>(hi);
            return s.store(l > v ? l : (v > h ? h : v));
        }
    };
    struct TDD {
        static const V &apply(State &s, const V &x, const V &lo, const V &hi)
        {
            return s.store(as<TyxEqnTile>(x).clip(as<double>(lo), as<double>(hi)));
        }
    };
    template <int CL, int CH>
    struct UUU {
        static const V &apply(State &s, const V &x, const V &lo, const V &hi)
        {
            return s.store(as<TyxScalar>(x).clip(scalarOf(lo, CL), scalarOf(hi, CH)));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 3);
        const V &x = evalArg(a, 0);
        const V &lo = evalArg(a, 1);
        const V &hi = evalArg(a, 2);
        const int cx = code(x);
        const int cl = code(lo);
        const int ch = code(hi);
        if (cl == kD && ch == kD) {
            if (cx == kD)
                return pick<DDD>(s, x, lo, hi);
            if (cx == kT)
                return pick<TDD>(s, x, lo, hi);
        }
        if (cx == kU && (cl == kD || cl == kU) && (ch == kD || ch == kU)) {
            if (cl == kU && ch == kU)
                return pick<UUU<kU, kU>>(s, x, lo, hi);
            if (cl == kU)
                return pick<UUU<kU, kD>>(s, x, lo, hi);
            if (ch == kU)
                return pick<UUU<kD, kU>>(s, x, lo, hi);
            return pick<UUU<kD, kD>>(s, x, lo, hi);
        }
        TYX_BAD_ARG(s, x.type(), lo.type(), hi.type());
    }
};

// roundclip(x, type, lo, hi). The target type is given as its name ("U8",
// "Double") or as its numeric code; a Double value is rounded and clipped as
// a sample of that type would be and stays a Double.
TyxDataType roundclipType(const State &s, const V &type)
{
    TyxDataType result;
    if (code(type) == kS)
        result = TyxDataType(as<TyxString>(type));
    else if (isNumber(type))
        result = TyxDataType(static_cast<TyxNumericType::Code>(toInt32(numberOf(type))));
    if (!result.isValid())
        TYX_BAD_ARG(s, type.type());
    return result;
}

double roundclipValue(const TyxDataType &type, double v, double lo, double hi)
{
    const double r = lo >= v ? lo : (v >= hi ? hi : (v >= 0.0 ? v + 0.5 : v - 0.5));
    const double clipped = std::isnan(r) ? 0.0 : r;
    return visitRealCode(type.code(), std::trunc(clipped), [&](auto tag) {
        using T = typename decltype(tag)::type;
        if constexpr (std::is_integral_v<T>) {
            // Beyond the target's range the bounds were not clipping; the
            // value saturates instead of an undefined conversion.
            return static_cast<double>(saturatingCast<T>(clipped));
        } else {
            return static_cast<double>(static_cast<T>(r));
        }
    });
}

struct roundclip_s {
    template <bool IsTile>
    struct Run {
        static const V &apply(State &s, const Args &a)
        {
            const V &x = a[0]->evaluate();
            const TyxDataType type = roundclipType(s, a[1]->evaluate());
            const double lo = numberOf(a[2]->evaluate());
            const double hi = numberOf(a[3]->evaluate());
            if constexpr (IsTile)
                return s.store(as<TyxEqnTile>(x).roundclip(type, lo, hi));
            else
                return s.store(roundclipValue(type, as<double>(x), lo, hi));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 4);
        const V &x = evalArg(a, 0);
        const V &type = evalArg(a, 1);
        const V &lo = evalArg(a, 2);
        const V &hi = evalArg(a, 3);
        if ((code(x) != kD && code(x) != kT) || !isNumber(lo) || !isNumber(hi))
            TYX_BAD_ARG(s, x.type(), lo.type(), hi.type());
        roundclipType(s, type);
        // The arguments are evaluated again here, only on this first evaluation.
        if (code(x) == kT) {
            s.evaluator = &runN<Run<true>>;
            return Run<true>::apply(s, a);
        }
        s.evaluator = &runN<Run<false>>;
        return Run<false>::apply(s, a);
    }
};

// ---- Comparisons ---------------------------------------------------------------

enum class Cmp { Eq, Ne, Lt, Le, Gt, Ge };

template <Cmp K, class X, class Y>
bool compareValues(const X &x, const Y &y)
{
    if constexpr (K == Cmp::Eq)
        return x == y;
    else if constexpr (K == Cmp::Ne)
        return x != y;
    else if constexpr (K == Cmp::Lt)
        return x < y;
    else if constexpr (K == Cmp::Le)
        return x < y || x == y;
    else if constexpr (K == Cmp::Gt)
        return x > y;
    else
        return x > y || x == y;
}

// The tile operators take the tile on the left; a number on the left turns
// the comparison round.
template <Cmp K>
constexpr Cmp mirrored()
{
    switch (K) {
    case Cmp::Lt: return Cmp::Gt;
    case Cmp::Le: return Cmp::Ge;
    case Cmp::Gt: return Cmp::Lt;
    case Cmp::Ge: return Cmp::Le;
    default: return K;
    }
}

template <Cmp K, class Y>
TyxEqnTile compareTile(const TyxEqnTile &t, const Y &y)
{
    if constexpr (K == Cmp::Eq)
        return t == y;
    else if constexpr (K == Cmp::Ne)
        return t != y;
    else if constexpr (K == Cmp::Lt)
        return t < y;
    else if constexpr (K == Cmp::Le)
        return t <= y;
    else if constexpr (K == Cmp::Gt)
        return t > y;
    else
        return t >= y;
}

template <Cmp K>
struct Compare {
    static constexpr bool servesComplex = K == Cmp::Eq || K == Cmp::Ne;

    struct DD {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(compareValues<K>(as<double>(x), as<double>(y)));
        }
    };
    struct SS {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(compareValues<K>(as<TyxString>(x), as<TyxString>(y)));
        }
    };
    template <class X, class Y>
    struct CC {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(compareValues<K>(Cplx(as<X>(x)), Cplx(as<Y>(y))));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(compareValues<K>(scalarOf(x, CX), scalarOf(y, CY)));
        }
    };
    struct TT {
        static const V &apply(State &s, const V &x, const V &y)
        {
            return s.store(compareTile<K>(as<TyxEqnTile>(x), as<TyxEqnTile>(y)));
        }
    };
    template <int CO, bool TileLeft>
    struct TN {
        static const V &apply(State &s, const V &x, const V &y)
        {
            const TyxEqnTile &t = as<TyxEqnTile>(TileLeft ? x : y);
            const V &o = TileLeft ? y : x;
            constexpr Cmp k = TileLeft ? K : mirrored<K>();
            if constexpr (CO == kC && servesComplex)
                return s.store(compareTile<k>(t, as<Cplx>(o)));
            else if constexpr (CO == kC)
                return s.store(TyxEqnTile()); // not picked: ordering refuses complex values
            else if constexpr (CO == kU)
                return s.store(compareTile<k>(t, as<TyxScalar>(o).real()));
            else
                return s.store(compareTile<k>(t, as<double>(o)));
        }
    };

    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (cx == kS && cy == kS)
            return pick<SS>(s, x, y);
        const auto known = [](int c) { return c == kD || c == kT || c == kU || (servesComplex && c == kC); };
        if (known(cx) && known(cy)) {
            if (cx == kT && cy == kT)
                return pick<TT>(s, x, y);
            if (cx == kT)
                return cy == kD   ? pick<TN<kD, true>>(s, x, y)
                       : cy == kC ? pick<TN<kC, true>>(s, x, y)
                                  : pick<TN<kU, true>>(s, x, y);
            if (cy == kT)
                return cx == kD   ? pick<TN<kD, false>>(s, x, y)
                       : cx == kC ? pick<TN<kC, false>>(s, x, y)
                                  : pick<TN<kU, false>>(s, x, y);
            if (cx == kD && cy == kD)
                return pick<DD>(s, x, y);
            if constexpr (servesComplex) {
                if (cx == kC && cy == kC)
                    return pick<CC<Cplx, Cplx>>(s, x, y);
                if (cx == kC && cy == kD)
                    return pick<CC<Cplx, double>>(s, x, y);
                if (cx == kD && cy == kC)
                    return pick<CC<double, Cplx>>(s, x, y);
                if (cx == kC)
                    return pick<UU<kC, kU>>(s, x, y);
                if (cy == kC)
                    return pick<UU<kU, kC>>(s, x, y);
            }
            if (cx == kU && cy == kU)
                return pick<UU<kU, kU>>(s, x, y);
            if (cx == kU)
                return pick<UU<kU, kD>>(s, x, y);
            return pick<UU<kD, kU>>(s, x, y);
        }
        TYX_BAD_ARG(s, x.type(), y.type());
    }
};

// ---- Selection -------------------------------------------------------------------

// ternary and select pass on the variant of the argument they choose. The
// functions above them read their operands without a type test, so the
// chosen values must keep one type across evaluations, as variables do: a
// value of another type than the first one passed on ends in the
// combination message (first type, new type) instead of a wrong reading.
const V &passOn(State &s, const V &chosen)
{
    const int c = code(chosen);
    if (c != s.sharedCode && c != TyxMetaType::Invalid) {
        if (s.sharedCode >= 0)
            TYX_BAD_ARG(s, TyxMetaType(static_cast<TyxMetaType::Code>(s.sharedCode)), chosen.type());
        s.sharedCode = c;
    }
    return chosen;
}

// A ternary branch beside a tile condition: a scalar counts as its complex
// value when its imaginary part is not 0, else as a double.
TyxEqnTile tileTernary(const State &s, const TyxEqnTile &cond, const V &x, const V &y)
{
    const auto kind = [](const V &v) {
        const int c = code(v);
        if (c == kU)
            return as<TyxScalar>(v).isReal() ? kD : kC;
        return c;
    };
    const auto real = [](const V &v) { return code(v) == kU ? as<TyxScalar>(v).real() : as<double>(v); };
    const auto cplx = [](const V &v) {
        return code(v) == kU ? as<TyxScalar>(v).complex() : code(v) == kD ? Cplx(as<double>(v)) : as<Cplx>(v);
    };
    const int kx = kind(x);
    const int ky = kind(y);
    if (kx == kT && ky == kT)
        return cond.ternary(as<TyxEqnTile>(x), as<TyxEqnTile>(y));
    if (kx == kT && ky == kD)
        return cond.ternary(as<TyxEqnTile>(x), real(y));
    if (kx == kT && ky == kC)
        return cond.ternary(as<TyxEqnTile>(x), cplx(y));
    if (kx == kD && ky == kT)
        return cond.ternary(real(x), as<TyxEqnTile>(y));
    if (kx == kC && ky == kT)
        return cond.ternary(cplx(x), as<TyxEqnTile>(y));
    if (kx == kD && ky == kD)
        return cond.ternary(real(x), real(y));
    if ((kx == kD || kx == kC) && (ky == kD || ky == kC))
        return cond.ternary(cplx(x), cplx(y));
    TYX_BAD_ARG(s, TyxMetaType(TyxMetaType::EqnTile), x.type(), y.type());
}

struct ternary_s {
    // A tile condition takes both branches, whose types are looked at in
    // each evaluation since a scalar branch may turn complex; any other
    // condition evaluates only the chosen branch and shares its variant.
    struct OnTile {
        static const V &apply(State &s, const Args &a)
        {
            const TyxEqnTile &cond = as<TyxEqnTile>(a[0]->evaluate());
            const V &x = a[1]->evaluate();
            const V &y = a[2]->evaluate();
            return s.store(tileTernary(s, cond, x, y));
        }
    };
    struct OnValue {
        static const V &apply(State &s, const Args &a)
        {
            return passOn(s, truthOf(s, a[0]->evaluate()) ? evalArg(a, 1) : evalArg(a, 2));
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 3);
        const V &c = evalArg(a, 0);
        if (code(c) == kT) {
            s.evaluator = &runN<OnTile>;
            const V &x = evalArg(a, 1);
            const V &y = evalArg(a, 2);
            return s.store(tileTernary(s, as<TyxEqnTile>(c), x, y));
        }
        const bool truth = truthOf(s, c);
        s.evaluator = &runN<OnValue>;
        return passOn(s, truth ? evalArg(a, 1) : evalArg(a, 2));
    }
};

struct select_s {
    static const V &apply(State &s, const Args &a)
    {
        const V &selector = evalArg(a, 0);
        double index = 0.0;
        if (code(selector) == kD)
            index = as<double>(selector);
        else if (code(selector) == kU)
            index = as<TyxScalar>(selector).real();
        else if (!selector.value(TyxMetaType::Double, &index))
            TYX_BAD_ARG(s, selector.type());
        // Negative and NaN selectors are out of range like large ones.
        if (!(index >= 0.0) || index >= static_cast<double>(a.size()))
            TYX_BAD_ARG(s, selector.type());
        const size_t i = static_cast<size_t>(index);
        return passOn(s, i == 0 ? selector : evalArg(a, i));
    }
    static const V &generic(State &s, const Args &a)
    {
        if (a.size() < 2)
            TYX_BAD_COUNT(s, a.size(), 2);
        s.evaluator = &runN<select_s>;
        return apply(s, a);
    }
};

// ---- Reductions ---------------------------------------------------------------

enum class Red { Min, Max, Sum };

template <Red R>
double combine(double x, double y)
{
    if constexpr (R == Red::Min)
        return y < x ? y : x;
    else if constexpr (R == Red::Max)
        return y > x ? y : x;
    else
        return x + y;
}

template <Red R>
TyxScalar combine(const TyxScalar &x, const TyxScalar &y)
{
    if constexpr (R == Red::Min)
        return y < x ? y : x;
    else if constexpr (R == Red::Max)
        return y > x ? y : x;
    else
        return x + y;
}

template <Red R>
TyxEqnTile combine(const TyxEqnTile &x, const TyxEqnTile &y)
{
    if constexpr (R == Red::Min)
        return x.min(y);
    else if constexpr (R == Red::Max)
        return x.max(y);
    else
        return x + y;
}

template <Red R>
double reduceTile(const TyxEqnTile &t)
{
    if constexpr (R == Red::Min)
        return t.min();
    else if constexpr (R == Red::Max)
        return t.max();
    else
        return t.sum();
}

// min, max and sum; mean is sum divided by the number of arguments.
template <Red R, bool Mean>
struct Reduce {
    static double scale(const Args &a) { return static_cast<double>(a.size()); }

    struct OneTile {
        static const V &apply(State &s, const V &x)
        {
            const double r = reduceTile<R>(as<TyxEqnTile>(x));
            return s.store(Mean ? r / 1.0 : r);
        }
    };
    // One argument that is not a tile is its own result.
    struct Same {
        static const V &apply(State &, const V &x) { return x; }
    };
    // A tile and a number: the elementwise limit, or the sum.
    template <bool TileLeft>
    struct TileNumber {
        static const V &apply(State &s, const V &x, const V &y)
        {
            const TyxEqnTile &t = as<TyxEqnTile>(TileLeft ? x : y);
            const double n = numberOf(TileLeft ? y : x);
            if constexpr (R == Red::Min)
                return s.store(t.min(n));
            else if constexpr (R == Red::Max)
                return s.store(t.max(n));
            else if constexpr (Mean)
                return s.store((t + n) / 2.0);
            else
                return s.store(t + n);
        }
    };
    struct AllD {
        static const V &apply(State &s, const Args &a)
        {
            double r = as<double>(a[0]->evaluate());
            for (size_t i = 1; i < a.size(); ++i)
                r = combine<R>(r, as<double>(a[i]->evaluate()));
            return s.store(Mean ? r / scale(a) : r);
        }
    };
    struct AllU {
        static const V &apply(State &s, const Args &a)
        {
            TyxScalar r = as<TyxScalar>(a[0]->evaluate());
            for (size_t i = 1; i < a.size(); ++i)
                r = combine<R>(r, as<TyxScalar>(a[i]->evaluate()));
            return s.store(Mean ? r / TyxScalar(scale(a)) : r);
        }
    };
    struct AllT {
        static const V &apply(State &s, const Args &a)
        {
            TyxEqnTile r = as<TyxEqnTile>(a[0]->evaluate());
            for (size_t i = 1; i < a.size(); ++i)
                r = combine<R>(r, as<TyxEqnTile>(a[i]->evaluate()));
            return s.store(Mean ? r / scale(a) : r);
        }
    };

    static const V &generic(State &s, const Args &a)
    {
        if (a.empty())
            TYX_BAD_COUNT(s, 0, 1);
        if (a.size() == 1) {
            const V &x = evalArg(a, 0);
            if (code(x) == kT)
                return pick<OneTile>(s, x);
            if (Mean && code(x) != kD && code(x) != kU)
                TYX_BAD_ARG(s, x.type());
            return pick<Same>(s, x);
        }
        std::vector<const V *> values;
        values.reserve(a.size());
        for (size_t i = 0; i < a.size(); ++i)
            values.push_back(&evalArg(a, i));
        if (a.size() == 2) {
            const V &x = *values[0];
            const V &y = *values[1];
            if (code(x) == kT && code(y) != kT && isNumber(y))
                return pick<TileNumber<true>>(s, x, y);
            if (code(y) == kT && code(x) != kT && isNumber(x))
                return pick<TileNumber<false>>(s, x, y);
        }
        const int first = code(*values[0]);
        for (const V *v : values) {
            if (code(*v) != first || (first != kD && first != kT && first != kU))
                TYX_BAD_ARG(s, v->type());
        }
        // The arguments are evaluated again by the picked routine, only on
        // this first evaluation.
        switch (first) {
        case kD: s.evaluator = &runN<AllD>; return AllD::apply(s, a);
        case kU: s.evaluator = &runN<AllU>; return AllU::apply(s, a);
        default: s.evaluator = &runN<AllT>; return AllT::apply(s, a);
        }
    }
};

// median of one tile, or of a list of Doubles: the lower middle value.
struct median_s {
    struct OneTile {
        static const V &apply(State &s, const V &x) { return s.store(as<TyxEqnTile>(x).median()); }
    };
    struct AllD {
        static const V &apply(State &s, const Args &a)
        {
            std::vector<double> values;
            values.reserve(a.size());
            for (const TyxEqnNodePtr &arg : a)
                values.push_back(as<double>(arg->evaluate()));
            std::sort(values.begin(), values.end());
            const size_t n = values.size();
            return s.store(values[n % 2 ? n / 2 : n / 2 - 1]);
        }
    };
    static const V &generic(State &s, const Args &a)
    {
        if (a.empty())
            TYX_BAD_COUNT(s, 0, 1);
        if (a.size() == 1 && code(evalArg(a, 0)) == kT)
            return pick<OneTile>(s, evalArg(a, 0));
        for (size_t i = 0; i < a.size(); ++i) {
            const V &v = evalArg(a, i);
            if (code(v) != kD)
                TYX_BAD_ARG(s, v.type());
        }
        s.evaluator = &runN<AllD>;
        return AllD::apply(s, a);
    }
};

// ---- Element access and generation ------------------------------------------------

TyxString indexText(double index)
{
    std::wostringstream text;
    text << index;
    return text.str();
}

// An index outside the tile, negative or NaN ends in a thrown message.
struct subscript_s {
    static const V &apply(State &s, const V &x, const V &y)
    {
        const TyxEqnTile &t = as<TyxEqnTile>(x);
        const double index = numberOf(y);
        if (!(index >= 0.0) || index >= static_cast<double>(t.size()) || !readable(t))
            TYX_THROW_ERROR(L"Index " + indexText(index) + L" is outside the tile of " +
                            std::to_wstring(t.size()) + L" elements in 'subscript'.");
        const uint64_t i = static_cast<uint64_t>(index) * t.step();
        // The sample type of a tile may change between evaluations (the
        // variant type does not), so the element is read by its current type.
        const bool complex = t.dataType().code() == TyxNumericType::ComplexFloat ||
                             t.dataType().code() == TyxNumericType::ComplexDouble;
        // A real and a complex element store different types; the slot is
        // of one type, so a result of the other type is made anew.
        if (s.slot && code(s.result) != (complex ? kC : kD))
            s.slot = nullptr;
        if (complex) {
            const Cplx value = t.dataType().code() == TyxNumericType::ComplexFloat
                                   ? Cplx(samples<std::complex<float>>(t)[i])
                                   : samples<Cplx>(t)[i];
            return s.store(value);
        }
        const double value = visitAnyCode(t.dataType().code(), std::nan(""), [&](auto tag) {
            using A = typename decltype(tag)::type;
            if constexpr (TileIsComplex<A>::value)
                return std::nan("");
            else
                return static_cast<double>(samples<A>(t)[i]);
        });
        return s.store(value);
    }
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 2);
        const V &x = evalArg(a, 0);
        const V &y = evalArg(a, 1);
        if (code(x) != kT || !isNumber(y))
            TYX_BAD_ARG(s, x.type(), y.type());
        s.evaluator = &run2<subscript_s>;
        return apply(s, x, y);
    }
};

// Collects every variable node named \p name under \p node.
void collectVars(const TyxEqnNodePtr &node, const TyxString &name, std::vector<TyxVarNode *> &found)
{
    std::vector<TyxEqnNode *> pending{node.get()};
    while (!pending.empty()) {
        TyxEqnNode *n = pending.back();
        pending.pop_back();
        if (!n)
            continue;
        if (TyxVarNode *var = n->toVarNode()) {
            if (var->name() == name)
                found.push_back(var);
        } else if (const TyxFcnNode *fcn = n->toFcnNode()) {
            for (const TyxEqnNodePtr &arg : fcn->args())
                pending.push_back(arg.get());
        }
    }
}

// Sets the counter of foreach on a variable. A Double that only the node
// holds is overwritten in place; otherwise the node gets a new variant.
void setCounter(TyxVarNode &var, double counter)
{
    const V &value = var.value();
    if (code(value) == kD && !value.isShared())
        *static_cast<double *>(const_cast<void *>(value.impl().constData())) = counter;
    else
        var.setValue(V(counter));
}

// foreach(name, count, expression): the variable of that name in the
// expression counts from 0 while below count; the values form a tile. The
// variable nodes of the name in the expression are bound by setting their
// value in each round. The first value fixes the element type of the tile,
// which is then made at its full size and filled as the values come. A
// count of 0 gives the empty tile.
struct foreach_s {
    static const V &apply(State &s, const Args &a)
    {
        const V &name = evalArg(a, 0);
        const V &count = evalArg(a, 1);
        if (code(name) != kS || code(count) != kD)
            TYX_BAD_ARG(s, name.type(), count.type());
        std::vector<TyxVarNode *> vars;
        collectVars(a[2], as<TyxString>(name), vars);
        const double limit = as<double>(count);
        const uint64_t n = limit > 0.0 ? static_cast<uint64_t>(std::min(limit, 9.007199254740992e15)) : 0;
        TyxEqnTile &out = s.tileResult();
        if (n == 0) {
            out = TyxEqnTile();
            return s.result;
        }
        double *reals = nullptr;
        Cplx *complexes = nullptr;
        for (uint64_t i = 0; i < n; ++i) {
            for (TyxVarNode *var : vars)
                setCounter(*var, static_cast<double>(i));
            const V &value = evalArg(a, 2);
            Cplx c;
            switch (code(value)) {
            case kD: c = as<double>(value); break;
            case kC: c = as<Cplx>(value); break;
            case kU: c = as<TyxScalar>(value).complex(); break;
            default: TYX_BAD_ARG(s, value.type());
            }
            if (i == 0) {
                // A failed allocation has been posted and leaves the empty tile.
                if (code(value) == kC || (code(value) == kU && c.imag() != 0.0))
                    complexes = prepareInto<Cplx>(out, n);
                else
                    reals = prepareInto<double>(out, n);
                if (!complexes && !reals)
                    return s.result;
            }
            if (complexes)
                complexes[i] = c;
            else
                reals[i] = c.real();
        }
        return s.result;
    }
    static const V &generic(State &s, const Args &a)
    {
        checkCount(s, a, 3);
        // The expression is collapsed once, with the counter unset so that it
        // is not folded: what does not depend on the counter becomes constant.
        const V &name = evalArg(a, 0);
        if (TyxFcnNode *fcn = a[2] && code(name) == kS ? a[2]->toFcnNode() : nullptr) {
            std::vector<TyxVarNode *> vars;
            collectVars(a[2], as<TyxString>(name), vars);
            for (TyxVarNode *var : vars)
                var->setValue(TyxVariant());
            int folded = 0;
            // The list is this call's own argument list, held by its node.
            if (TyxEqnNodePtr node = fcn->collapse(&folded))
                const_cast<TyxEqnNodePtr &>(a[2]) = node;
        }
        s.evaluator = &runN<foreach_s>;
        return apply(s, a);
    }
};

// ---- Registry ---------------------------------------------------------------------

using Registry = std::map<TyxString, TyxEqnFunctions::TyxEqnFcnBodyIFPtr>;

} // namespace

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

namespace {

template <class F>
void add(Registry &registry, const wchar_t *name)
{
    registry.emplace(name,
                     TyxEqnFunctions::TyxEqnFcnBodyIFPtr(new TyxEqnFunctions::TyxEqnFcnBodyImpl<F>(name)));
}

Registry &registry()
{
    static Registry functions = [] {
        Registry r;
        add<UnaryA<sin_s>>(r, L"sin");
        add<UnaryA<asin_s>>(r, L"asin");
        add<UnaryA<sinh_s>>(r, L"sinh");
        add<UnaryA<cos_s>>(r, L"cos");
        add<UnaryA<acos_s>>(r, L"acos");
        add<UnaryA<cosh_s>>(r, L"cosh");
        add<UnaryA<tan_s>>(r, L"tan");
        add<UnaryA<atan_s>>(r, L"atan");
        add<UnaryA<tanh_s>>(r, L"tanh");
        add<UnaryA<exp_s>>(r, L"exp");
        add<UnaryA<log_s>>(r, L"log");
        add<UnaryA<log10_s>>(r, L"log10");
        add<UnaryA<abs_s>>(r, L"abs");
        add<UnaryA<ceil_s>>(r, L"ceil");
        add<UnaryA<floor_s>>(r, L"floor");
        add<UnaryB<arg_s>>(r, L"arg");
        add<UnaryB<norm_s>>(r, L"norm");
        add<UnaryB<conj_s>>(r, L"conj");
        add<UnaryB<real_s>>(r, L"real");
        add<UnaryB<imag_s>>(r, L"imag");
        add<UnaryB<sinc_s>>(r, L"sinc");
        add<UnaryB<sqrt_s>>(r, L"sqrt");
        add<UnaryB<trunc_s>>(r, L"trunc");
        add<UnaryB<round_s>>(r, L"round");
        add<UnaryB<y0_s>>(r, L"y0");
        add<UnaryB<y1_s>>(r, L"y1");
        add<UnaryB<j0_s>>(r, L"j0");
        add<UnaryB<j1_s>>(r, L"j1");
        add<UnaryB<factorial_s>>(r, L"factorial");
        add<logicalnot_s>(r, L"logicalnot");
        add<unaryplus_s>(r, L"unaryplus");
        add<unaryminus_s>(r, L"unaryminus");
        add<cmplx_s>(r, L"cmplx");
        add<add_s>(r, L"add");
        add<StringlessArith<SubOp>>(r, L"subtract");
        add<multiply_s>(r, L"multiply");
        add<StringlessArith<DivOp>>(r, L"divide");
        add<mod_s>(r, L"mod");
        add<fmod_s>(r, L"fmod");
        add<pow_s>(r, L"pow");
        add<atan2_s>(r, L"atan2");
        add<Binary<hypot_f, false>>(r, L"hypot");
        add<Binary<ldexp_f, true>>(r, L"ldexp");
        add<Binary<logb_f, true>>(r, L"logb");
        add<Binary<yn_f, true>>(r, L"yn");
        add<Binary<jn_f, true>>(r, L"jn");
        add<ClipOne<true>>(r, L"clipmin");
        add<ClipOne<false>>(r, L"clipmax");
        add<clip_s>(r, L"clip");
        add<roundclip_s>(r, L"roundclip");
        add<Compare<Cmp::Eq>>(r, L"equals");
        add<Compare<Cmp::Ne>>(r, L"notequals");
        add<Compare<Cmp::Lt>>(r, L"lessthan");
        add<Compare<Cmp::Le>>(r, L"lessthanequals");
        add<Compare<Cmp::Gt>>(r, L"greaterthan");
        add<Compare<Cmp::Ge>>(r, L"greaterthanequals");
        add<Logical<false>>(r, L"logicalor");
        add<Logical<true>>(r, L"logicaland");
        add<subscript_s>(r, L"subscript");
        add<ternary_s>(r, L"ternary");
        add<foreach_s>(r, L"foreach");
        add<Reduce<Red::Min, false>>(r, L"min");
        add<Reduce<Red::Max, false>>(r, L"max");
        add<Reduce<Red::Sum, false>>(r, L"sum");
        add<Reduce<Red::Sum, true>>(r, L"mean");
        add<median_s>(r, L"median");
        add<select_s>(r, L"select");
        return r;
    }();
    return functions;
}

} // namespace

bool TyxEqnFunctions::contains(const TyxString &name) { return registry().count(name) != 0; }

const TyxEqnFunctions::TyxEqnFcnBodyIFPtr &TyxEqnFunctions::function(const TyxString &name)
{
    static const TyxEqnFcnBodyIFPtr none;
    const Registry &functions = registry();
    const auto found = functions.find(name);
    return found == functions.end() ? none : found->second;
}

int TyxEqnFunctions::createAlias(const TyxString &name, const TyxString &alias)
{
    Registry &functions = registry();
    const auto found = functions.find(name);
    if (found == functions.end() || functions.count(alias) != 0)
        return 1;
    functions.emplace(alias, found->second->clone());
    return 0;
}

} // namespace tyx::internal
