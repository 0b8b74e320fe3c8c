// Function bodies of elementary mathematics: the unary functions, powers, logarithms and Bessel functions.
#include "expr/TyxEqnFcnDispatch.h"

#include <cmath>
#include <limits>

#include "core/TyxPost.h"

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

// ---- Two Doubles, or scalars ---------------------------------------------------

struct mod_s {
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
        return pick<mod_s>(state, x, y);
    }
};

struct fmod_s {
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
        return pick<fmod_s>(state, x, y);
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

struct hypot_s {
    static double d(double x, double y) { return std::hypot(x, y); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return TyxScalar().hypot(x, y); }
};
struct ldexp_s {
    static double d(double x, double y) { return std::ldexp(x, toInt32(y)); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return x.ldexp(y); }
    static TyxEqnTile t(const TyxEqnTile &x, double y) { return x.ldexp(y); }
};
struct logb_s {
    static double d(double x, double y) { return std::log(x) / std::log(y); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &y) { return x.logb(y); }
    static TyxEqnTile t(const TyxEqnTile &x, double y) { return x.logb(y); }
};
// The second argument is the order in every form, as it is for tiles.
struct yn_s {
    static double d(double x, double n) { return ::yn(toInt32(n), x); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &n) { return x.yn(n); }
    static TyxEqnTile t(const TyxEqnTile &x, double n) { return x.yn(toInt32(n)); }
};
struct jn_s {
    static double d(double x, double n) { return ::jn(toInt32(n), x); }
    static TyxScalar u(const TyxScalar &x, const TyxScalar &n) { return x.jn(n); }
    static TyxEqnTile t(const TyxEqnTile &x, double n) { return x.jn(toInt32(n)); }
};

struct atan2_s : Binary<atan2_s, false> {
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
        return Binary<atan2_s, false>::generic(state, args);
    }
};

struct pow_s {
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
        if (const TyxVariant *picked = pickRealPair<pow_s>(state, x, y, cx, cy))
            return *picked;
        if (cx == kTile && cy != kTile && isNumber(y))
            return pick<TN>(state, x, y);
        if (cy == kTile && cx != kTile && isNumber(x))
            return pick<NT>(state, x, y);
        TYX_BAD_ARG(state, x.type(), y.type());
    }
};

struct cmplx_s {
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
        if (const TyxVariant *picked = pickRealPair<cmplx_s>(state, x, y, cx, cy))
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
    addFunction<UnaryA<sin_s>>(registry, L"sin");
    addFunction<UnaryA<asin_s>>(registry, L"asin");
    addFunction<UnaryA<sinh_s>>(registry, L"sinh");
    addFunction<UnaryA<cos_s>>(registry, L"cos");
    addFunction<UnaryA<acos_s>>(registry, L"acos");
    addFunction<UnaryA<cosh_s>>(registry, L"cosh");
    addFunction<UnaryA<tan_s>>(registry, L"tan");
    addFunction<UnaryA<atan_s>>(registry, L"atan");
    addFunction<UnaryA<tanh_s>>(registry, L"tanh");
    addFunction<UnaryA<exp_s>>(registry, L"exp");
    addFunction<UnaryA<log_s>>(registry, L"log");
    addFunction<UnaryA<log10_s>>(registry, L"log10");
    addFunction<UnaryA<abs_s>>(registry, L"abs");
    addFunction<UnaryA<ceil_s>>(registry, L"ceil");
    addFunction<UnaryA<floor_s>>(registry, L"floor");
    addFunction<UnaryB<arg_s>>(registry, L"arg");
    addFunction<UnaryB<norm_s>>(registry, L"norm");
    addFunction<UnaryB<conj_s>>(registry, L"conj");
    addFunction<UnaryB<real_s>>(registry, L"real");
    addFunction<UnaryB<imag_s>>(registry, L"imag");
    addFunction<UnaryB<sinc_s>>(registry, L"sinc");
    addFunction<UnaryB<sqrt_s>>(registry, L"sqrt");
    addFunction<UnaryB<trunc_s>>(registry, L"trunc");
    addFunction<UnaryB<round_s>>(registry, L"round");
    addFunction<UnaryB<y0_s>>(registry, L"y0");
    addFunction<UnaryB<y1_s>>(registry, L"y1");
    addFunction<UnaryB<j0_s>>(registry, L"j0");
    addFunction<UnaryB<j1_s>>(registry, L"j1");
    addFunction<UnaryB<factorial_s>>(registry, L"factorial");
    addFunction<cmplx_s>(registry, L"cmplx");
    addFunction<mod_s>(registry, L"mod");
    addFunction<fmod_s>(registry, L"fmod");
    addFunction<pow_s>(registry, L"pow");
    addFunction<atan2_s>(registry, L"atan2");
    addFunction<Binary<hypot_s, false>>(registry, L"hypot");
    addFunction<Binary<ldexp_s, true>>(registry, L"ldexp");
    addFunction<Binary<logb_s, true>>(registry, L"logb");
    addFunction<Binary<yn_s, true>>(registry, L"yn");
    addFunction<Binary<jn_s, true>>(registry, L"jn");
}

} // namespace tyx::internal
