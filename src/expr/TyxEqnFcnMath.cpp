// Function bodies of elementary mathematics: the unary functions, powers, logarithms and Bessel functions.
#include "expr/TyxEqnFcnDispatch.h"

#include <cmath>
#include <limits>

#include "core/TyxPost.h"
#include "units/TyxBessel.h"

namespace tyx::internal {

namespace {

// ---- Unary groups ------------------------------------------------------------

// Group A: the C function for a Double, the scalar function for a TyxScalar,
// the tile function for a tile.
template <class F>
struct UnaryA {
    struct OnD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            return state.store(F::d(as<double>(x)));
        }
    };
    struct OnU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            return state.store(F::u(as<TyxScalar>(x)));
        }
    };
    struct OnT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            return state.store(F::t(as<TyxEqnTile>(x)));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 1);
        const TyxVariant &x = evalArg(args, 0);
        switch (code(x)) {
        case kDouble: return pick<OnD>(state, x);
        case kScalar: return pick<OnU>(state, x);
        case kTile: return pick<OnT>(state, x);
        default: TYX_BAD_ARG(state, x.type());
        }
    }
};

// Group B: a Double goes through the scalar function and comes back as a
// ComplexDouble, so that sqrt(-1) is (0,1).
template <class F>
struct UnaryB : UnaryA<F> {
    struct OnD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            const TyxScalar r = F::u(TyxScalar(as<double>(x)));
            return state.store(Complex(r.real(), r.imaginary()));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 1);
        const TyxVariant &x = evalArg(args, 0);
        switch (code(x)) {
        case kDouble: return pick<OnD>(state, x);
        case kScalar: return pick<typename UnaryA<F>::OnU>(state, x);
        case kTile: return pick<typename UnaryA<F>::OnT>(state, x);
        default: TYX_BAD_ARG(state, x.type());
        }
    }
};

#define TYX_UNARY(name, fn)                                                                                  \
    struct name##Body {                                                                                      \
        static double d(double x) { return std::fn(x); }                                                     \
        static TyxScalar u(const TyxScalar &x) { return x.fn(); }                                            \
        static TyxEqnTile t(const TyxEqnTile &x) { return x.fn(); }                                          \
    }

TYX_UNARY(Sin, sin);
TYX_UNARY(Asin, asin);
TYX_UNARY(Sinh, sinh);
TYX_UNARY(Cos, cos);
TYX_UNARY(Acos, acos);
TYX_UNARY(Cosh, cosh);
TYX_UNARY(Tan, tan);
TYX_UNARY(Atan, atan);
TYX_UNARY(Tanh, tanh);
TYX_UNARY(Exp, exp);
TYX_UNARY(Log, log);
TYX_UNARY(Log10, log10);
TYX_UNARY(Abs, abs);
TYX_UNARY(Ceil, ceil);
TYX_UNARY(Floor, floor);

#define TYX_UNARY_B(name, fn)                                                                                \
    struct name##Body {                                                                                      \
        static TyxScalar u(const TyxScalar &x) { return x.fn(); }                                            \
        static TyxEqnTile t(const TyxEqnTile &x) { return x.fn(); }                                          \
    }

TYX_UNARY_B(Arg, arg);
TYX_UNARY_B(Norm, norm);
TYX_UNARY_B(Conj, conj);
TYX_UNARY_B(Sqrt, sqrt);
TYX_UNARY_B(Trunc, trunc);
TYX_UNARY_B(Round, round);
TYX_UNARY_B(Sinc, sinc);
TYX_UNARY_B(Y0, y0);
TYX_UNARY_B(Y1, y1);
TYX_UNARY_B(J0, j0);
TYX_UNARY_B(J1, j1);
TYX_UNARY_B(Factorial, factorial);

// The real and imaginary parts of a scalar keep its units.
struct RealBody {
    static TyxScalar u(const TyxScalar &x) { return TyxScalar(x.real(), x.units()); }
    static TyxEqnTile t(const TyxEqnTile &x) { return x.real(); }
};
struct ImagBody {
    static TyxScalar u(const TyxScalar &x) { return TyxScalar(x.imaginary(), x.units()); }
    static TyxEqnTile t(const TyxEqnTile &x) { return x.imag(); }
};

// ---- Two Doubles, or scalars ---------------------------------------------------

struct ModBody {
    // Both operands convert to 32-bit integers (see toInt32). A divisor of 0
    // and the smallest integer divided by -1 would fault the processor; they
    // end in a thrown message instead.
    static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
    {
        const int32_t n = toInt32(as<double>(x));
        const int32_t d = toInt32(as<double>(y));
        if (d == 0)
            TYX_THROW_ERROR(L"Division by zero in 'mod'.");
        if (d == -1 && n == std::numeric_limits<int32_t>::min())
            TYX_THROW_ERROR(L"Integer overflow in 'mod'.");
        return state.store(static_cast<int>(n % d));
    }
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        if (code(x) != kDouble || code(y) != kDouble)
            TYX_BAD_ARG(state, x.type(), y.type());
        return pick<ModBody>(state, x, y);
    }
};

struct FmodBody {
    static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
    {
        return state.store(std::fmod(as<double>(x), as<double>(y)));
    }
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        if (code(x) != kDouble || code(y) != kDouble)
            TYX_BAD_ARG(state, x.type(), y.type());
        return pick<FmodBody>(state, x, y);
    }
};

// Functions of (D,D), (U,U) with D beside U counted as U, and optionally a
// tile with a number. F::d, F::u and F::t compute the three forms.
template <class F, bool WithTile>
struct Binary {
    struct DD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(F::d(as<double>(x), as<double>(y)));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(F::u(scalarOf(x, CX), scalarOf(y, CY)));
        }
    };
    struct TN {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(F::t(as<TyxEqnTile>(x), numberOf(y)));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (const TyxVariant *picked = pickRealPair<Binary>(state, x, y, cx, cy))
            return *picked;
        if constexpr (WithTile) {
            if (cx == kTile && isNumber(y))
                return pick<TN>(state, x, y);
        }
        TYX_BAD_ARG(state, x.type(), y.type());
    }
};

struct HypotBody {
    static double d(double x, double y) { return std::hypot(x, y); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return TyxScalar().hypot(x, y); }
};
struct LdexpBody {
    static double d(double x, double y) { return std::ldexp(x, toInt32(y)); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return x.ldexp(y); }
    static TyxEqnTile t(const TyxEqnTile &x, double y) { return x.ldexp(y); }
};
struct LogbBody {
    static double d(double x, double y) { return std::log(x) / std::log(y); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return x.logb(y); }
    static TyxEqnTile t(const TyxEqnTile &x, double y) { return x.logb(y); }
};
// The second argument is the order in every form, as it is for tiles.
struct YnBody {
    static double d(double x, double n) { return boundedYn(toInt32(n), x); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &n) { return x.yn(n); }
    static TyxEqnTile t(const TyxEqnTile &x, double n) { return x.yn(toInt32(n)); }
};
struct JnBody {
    static double d(double x, double n) { return boundedJn(toInt32(n), x); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &n) { return x.jn(n); }
    static TyxEqnTile t(const TyxEqnTile &x, double n) { return x.jn(toInt32(n)); }
};

struct Atan2Body : Binary<Atan2Body, false> {
    static double d(double y, double x) { return std::atan2(y, x); }
    static TyxScalar u(const TyxScalar &y, const TyxScalar &x) { return TyxScalar().atan2(y, x); }
    struct TT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(TyxEqnTile::atan2(as<TyxEqnTile>(x), as<TyxEqnTile>(y)));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        if (args.size() == 2) {
            const TyxVariant &x = evalArg(args, 0);
            const TyxVariant &y = evalArg(args, 1);
            if (code(x) == kTile && code(y) == kTile)
                return pick<TT>(state, x, y);
            // The arguments are evaluated again by the general form; only on
            // this first evaluation.
        }
        return Binary<Atan2Body, false>::generic(state, args);
    }
};

struct PowBody {
    struct DD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(std::pow(as<double>(x), as<double>(y)));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(scalarOf(x, CX).pow(scalarOf(y, CY)));
        }
    };
    struct TN {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(as<TyxEqnTile>(x).pow(numberOf(y)));
        }
    };
    struct NT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(TyxEqnTile::pow(numberOf(x), as<TyxEqnTile>(y)));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (const TyxVariant *picked = pickRealPair<PowBody>(state, x, y, cx, cy))
            return *picked;
        if (cx == kTile && cy != kTile && isNumber(y))
            return pick<TN>(state, x, y);
        if (cy == kTile && cx != kTile && isNumber(x))
            return pick<NT>(state, x, y);
        TYX_BAD_ARG(state, x.type(), y.type());
    }
};

struct CmplxBody {
    struct DD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(Complex(as<double>(x), as<double>(y)));
        }
    };
    // Real parts of both, in the units of the first.
    template <int CX, int CY>
    struct UU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            const TyxScalar re = scalarOf(x, CX);
            return state.store(TyxScalar(re.real(), scalarOf(y, CY).real(), re.units()));
        }
    };
    struct TT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(TyxEqnTile::cmplx(as<TyxEqnTile>(x), as<TyxEqnTile>(y)));
        }
    };
    struct TN {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(TyxEqnTile::cmplx(as<TyxEqnTile>(x), numberOf(y)));
        }
    };
    struct NT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(TyxEqnTile::cmplx(numberOf(x), as<TyxEqnTile>(y)));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (const TyxVariant *picked = pickRealPair<CmplxBody>(state, x, y, cx, cy))
            return *picked;
        if (cx == kTile && cy == kTile)
            return pick<TT>(state, x, y);
        if (cx == kTile && isNumber(y))
            return pick<TN>(state, x, y);
        if (cy == kTile && isNumber(x))
            return pick<NT>(state, x, y);
        TYX_BAD_ARG(state, x.type(), y.type());
    }
};

} // namespace

void addElementaryMathFunctions(FunctionRegistry &registry)
{
    addFunction<UnaryA<SinBody>>(registry, L"sin");
    addFunction<UnaryA<AsinBody>>(registry, L"asin");
    addFunction<UnaryA<SinhBody>>(registry, L"sinh");
    addFunction<UnaryA<CosBody>>(registry, L"cos");
    addFunction<UnaryA<AcosBody>>(registry, L"acos");
    addFunction<UnaryA<CoshBody>>(registry, L"cosh");
    addFunction<UnaryA<TanBody>>(registry, L"tan");
    addFunction<UnaryA<AtanBody>>(registry, L"atan");
    addFunction<UnaryA<TanhBody>>(registry, L"tanh");
    addFunction<UnaryA<ExpBody>>(registry, L"exp");
    addFunction<UnaryA<LogBody>>(registry, L"log");
    addFunction<UnaryA<Log10Body>>(registry, L"log10");
    addFunction<UnaryA<AbsBody>>(registry, L"abs");
    addFunction<UnaryA<CeilBody>>(registry, L"ceil");
    addFunction<UnaryA<FloorBody>>(registry, L"floor");
    addFunction<UnaryB<ArgBody>>(registry, L"arg");
    addFunction<UnaryB<NormBody>>(registry, L"norm");
    addFunction<UnaryB<ConjBody>>(registry, L"conj");
    addFunction<UnaryB<RealBody>>(registry, L"real");
    addFunction<UnaryB<ImagBody>>(registry, L"imag");
    addFunction<UnaryB<SincBody>>(registry, L"sinc");
    addFunction<UnaryB<SqrtBody>>(registry, L"sqrt");
    addFunction<UnaryB<TruncBody>>(registry, L"trunc");
    addFunction<UnaryB<RoundBody>>(registry, L"round");
    addFunction<UnaryB<Y0Body>>(registry, L"y0");
    addFunction<UnaryB<Y1Body>>(registry, L"y1");
    addFunction<UnaryB<J0Body>>(registry, L"j0");
    addFunction<UnaryB<J1Body>>(registry, L"j1");
    addFunction<UnaryB<FactorialBody>>(registry, L"factorial");
    addFunction<CmplxBody>(registry, L"cmplx");
    addFunction<ModBody>(registry, L"mod");
    addFunction<FmodBody>(registry, L"fmod");
    addFunction<PowBody>(registry, L"pow");
    addFunction<Atan2Body>(registry, L"atan2");
    addFunction<Binary<HypotBody, false>>(registry, L"hypot");
    addFunction<Binary<LdexpBody, true>>(registry, L"ldexp");
    addFunction<Binary<LogbBody, true>>(registry, L"logb");
    addFunction<Binary<YnBody, true>>(registry, L"yn");
    addFunction<Binary<JnBody, true>>(registry, L"jn");
}

} // namespace tyx::internal
