// Function bodies of arithmetic, signs, comparisons and logical operators.
#include "expr/TyxEqnFcnDispatch.h"

#include <functional>
#include <type_traits>

#include "expr/TyxEqnBudget.h"
#include "expr/TyxEqnTileInto.h"

namespace tyx::internal {

namespace {

// ---- Signs and logic ----------------------------------------------------------

struct UnaryMinusBody {
    struct OnD {
        // The sign bit flips: 0 gives -0.0 and a NaN stays a NaN.
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            return state.store(-as<double>(x));
        }
    };
    struct OnU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            return state.store(-as<TyxScalar>(x));
        }
    };
    struct OnT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            negateInto(state.tileResult(), as<TyxEqnTile>(x));
            return state.result;
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

// The argument's own variant, shared.
struct UnaryPlusBody {
    static const TyxVariant &apply(TyxFcnState &, const TyxVariant &x) { return x; }
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 1);
        return pick<UnaryPlusBody>(state, evalArg(args, 0));
    }
};

struct LogicalNotBody {
    static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
    {
        return state.store(!truthOf(state, x));
    }
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 1);
        const TyxVariant &x = evalArg(args, 0);
        const bool value = truthOf(state, x);
        state.evaluator = &runOne<LogicalNotBody>;
        return state.store(!value);
    }
};

// The second operand is evaluated only when the first leaves the answer open,
// so its type is known only then: these two test the truth of each operand
// in every evaluation.
template <bool IsAnd>
struct Logical {
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        state.evaluator = &run;
        return run(state, args);
    }
    static const TyxVariant &run(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        const bool first = truthOf(state, evalArg(args, 0));
        if (first != IsAnd)
            return state.store(first);
        return state.store(truthOf(state, evalArg(args, 1)));
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

TyxString repeated(const TyxFcnState &state, const TyxString &text, double count)
{
    // The count converts to an integer; 0 or less gives the empty string.
    const int32_t n = toInt32(count);
    TyxString result;
    if (n > 0 && !text.empty()) {
        // No overflow: the size of a string is far below 2^64 / 2^31.
        TyxEqnBudget::checkString(static_cast<uint64_t>(text.size()) * static_cast<uint64_t>(n), state.name);
        result.reserve(text.size() * static_cast<size_t>(n));
        for (int32_t i = 0; i < n; ++i)
            result += text;
    }
    return result;
}

template <class Op>
struct Arith {
    struct DD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(Op()(as<double>(x), as<double>(y)));
        }
    };
    template <class X, class Y>
    struct CC {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(Complex(Op()(Complex(as<X>(x)), Complex(as<Y>(y)))));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(Op()(scalarOf(x, CX), scalarOf(y, CY)));
        }
    };
    struct TT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            tileTileInto(state.tileResult(), as<TyxEqnTile>(x), as<TyxEqnTile>(y), Op());
            return state.result;
        }
    };
    template <class X, bool ScalarLeft>
    struct TS {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            const TyxVariant &tile = ScalarLeft ? y : x;
            const TyxVariant &other = ScalarLeft ? x : y;
            if constexpr (std::is_same_v<X, TyxScalar>)
                tileWithScalarValue<ScalarLeft>(state.tileResult(), as<TyxEqnTile>(tile),
                                                as<TyxScalar>(other), Op());
            else
                tileScalarInto<ScalarLeft>(state.tileResult(), as<TyxEqnTile>(tile), as<X>(other), Op());
            return state.result;
        }
    };

    // The matrix without strings; false when the pair is refused.
    static const TyxVariant &numeric(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
    {
        const int cx = code(x);
        const int cy = code(y);
        switch (cx) {
        case kDouble:
            switch (cy) {
            case kDouble: return pick<DD>(state, x, y);
            case kComplex: return pick<CC<double, Complex>>(state, x, y);
            case kTile: return pick<TS<double, true>>(state, x, y);
            case kScalar: return pick<UU<kDouble, kScalar>>(state, x, y);
            }
            break;
        case kComplex:
            switch (cy) {
            case kDouble: return pick<CC<Complex, double>>(state, x, y);
            case kComplex: return pick<CC<Complex, Complex>>(state, x, y);
            case kTile: return pick<TS<Complex, true>>(state, x, y);
            case kScalar: return pick<UU<kComplex, kScalar>>(state, x, y);
            }
            break;
        case kTile:
            switch (cy) {
            case kDouble: return pick<TS<double, false>>(state, x, y);
            case kComplex: return pick<TS<Complex, false>>(state, x, y);
            case kTile: return pick<TT>(state, x, y);
            case kScalar: return pick<TS<TyxScalar, false>>(state, x, y);
            }
            break;
        case kScalar:
            switch (cy) {
            case kDouble: return pick<UU<kScalar, kDouble>>(state, x, y);
            case kComplex: return pick<UU<kScalar, kComplex>>(state, x, y);
            case kTile: return pick<TS<TyxScalar, true>>(state, x, y);
            case kScalar: return pick<UU<kScalar, kScalar>>(state, x, y);
            }
            break;
        }
        TYX_BAD_ARG(state, x.type(), y.type());
    }
};

struct AddBody {
    struct SS {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            const TyxString &a = as<TyxString>(x);
            const TyxString &b = as<TyxString>(y);
            TyxEqnBudget::checkString(static_cast<uint64_t>(a.size()) + b.size(), state.name);
            return state.store(a + b);
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        if (code(x) == kString && code(y) == kString)
            return pick<SS>(state, x, y);
        if (code(x) == kString || code(y) == kString)
            TYX_BAD_ARG(state, x.type(), y.type());
        return Arith<AddOp>::numeric(state, x, y);
    }
};

struct MultiplyBody {
    struct SD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(repeated(state, as<TyxString>(x), as<double>(y)));
        }
    };
    struct DS {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(repeated(state, as<TyxString>(y), as<double>(x)));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        if (code(x) == kString && code(y) == kDouble)
            return pick<SD>(state, x, y);
        if (code(x) == kDouble && code(y) == kString)
            return pick<DS>(state, x, y);
        if (code(x) == kString || code(y) == kString)
            TYX_BAD_ARG(state, x.type(), y.type());
        return Arith<MulOp>::numeric(state, x, y);
    }
};

template <class Op>
struct StringlessArith {
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        if (code(x) == kString || code(y) == kString)
            TYX_BAD_ARG(state, x.type(), y.type());
        return Arith<Op>::numeric(state, x, y);
    }
};

// ---- Comparisons ---------------------------------------------------------------

enum class Comparison { Eq, Ne, Lt, Le, Gt, Ge };

template <Comparison K, class X, class Y>
bool compareValues(const X &x, const Y &y)
{
    if constexpr (K == Comparison::Eq)
        return x == y;
    else if constexpr (K == Comparison::Ne)
        return x != y;
    else if constexpr (K == Comparison::Lt)
        return x < y;
    else if constexpr (K == Comparison::Le)
        return x < y || x == y;
    else if constexpr (K == Comparison::Gt)
        return x > y;
    else
        return x > y || x == y;
}

// The tile operators take the tile on the left; a number on the left turns
// the comparison round.
template <Comparison K>
constexpr Comparison mirrored()
{
    switch (K) {
    case Comparison::Lt: return Comparison::Gt;
    case Comparison::Le: return Comparison::Ge;
    case Comparison::Gt: return Comparison::Lt;
    case Comparison::Ge: return Comparison::Le;
    default: return K;
    }
}

template <Comparison K, class Y>
TyxEqnTile compareTile(const TyxEqnTile &t, const Y &y)
{
    if constexpr (K == Comparison::Eq)
        return t == y;
    else if constexpr (K == Comparison::Ne)
        return t != y;
    else if constexpr (K == Comparison::Lt)
        return t < y;
    else if constexpr (K == Comparison::Le)
        return t <= y;
    else if constexpr (K == Comparison::Gt)
        return t > y;
    else
        return t >= y;
}

template <Comparison K>
struct Compare {
    static constexpr bool servesComplex = K == Comparison::Eq || K == Comparison::Ne;

    struct DD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(compareValues<K>(as<double>(x), as<double>(y)));
        }
    };
    struct SS {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(compareValues<K>(as<TyxString>(x), as<TyxString>(y)));
        }
    };
    template <class X, class Y>
    struct CC {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(compareValues<K>(Complex(as<X>(x)), Complex(as<Y>(y))));
        }
    };
    template <int CX, int CY>
    struct UU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(compareValues<K>(scalarOf(x, CX), scalarOf(y, CY)));
        }
    };
    struct TT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(compareTile<K>(as<TyxEqnTile>(x), as<TyxEqnTile>(y)));
        }
    };
    template <int CO, bool TileLeft>
    struct TN {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            const TyxEqnTile &t = as<TyxEqnTile>(TileLeft ? x : y);
            const TyxVariant &o = TileLeft ? y : x;
            constexpr Comparison k = TileLeft ? K : mirrored<K>();
            if constexpr (CO == kComplex && servesComplex)
                return state.store(compareTile<k>(t, as<Complex>(o)));
            else if constexpr (CO == kComplex)
                return state.store(TyxEqnTile()); // not picked: ordering refuses complex values
            else if constexpr (CO == kScalar)
                return state.store(compareTile<k>(t, as<TyxScalar>(o).real()));
            else
                return state.store(compareTile<k>(t, as<double>(o)));
        }
    };

    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        const int cx = code(x);
        const int cy = code(y);
        if (cx == kString && cy == kString)
            return pick<SS>(state, x, y);
        const auto known = [](int c) {
            return c == kDouble || c == kTile || c == kScalar || (servesComplex && c == kComplex);
        };
        if (known(cx) && known(cy)) {
            if (cx == kTile && cy == kTile)
                return pick<TT>(state, x, y);
            if (cx == kTile)
                return cy == kDouble    ? pick<TN<kDouble, true>>(state, x, y)
                       : cy == kComplex ? pick<TN<kComplex, true>>(state, x, y)
                                        : pick<TN<kScalar, true>>(state, x, y);
            if (cy == kTile)
                return cx == kDouble    ? pick<TN<kDouble, false>>(state, x, y)
                       : cx == kComplex ? pick<TN<kComplex, false>>(state, x, y)
                                        : pick<TN<kScalar, false>>(state, x, y);
            if (cx == kDouble && cy == kDouble)
                return pick<DD>(state, x, y);
            if constexpr (servesComplex) {
                if (cx == kComplex && cy == kComplex)
                    return pick<CC<Complex, Complex>>(state, x, y);
                if (cx == kComplex && cy == kDouble)
                    return pick<CC<Complex, double>>(state, x, y);
                if (cx == kDouble && cy == kComplex)
                    return pick<CC<double, Complex>>(state, x, y);
                if (cx == kComplex)
                    return pick<UU<kComplex, kScalar>>(state, x, y);
                if (cy == kComplex)
                    return pick<UU<kScalar, kComplex>>(state, x, y);
            }
            if (cx == kScalar && cy == kScalar)
                return pick<UU<kScalar, kScalar>>(state, x, y);
            if (cx == kScalar)
                return pick<UU<kScalar, kDouble>>(state, x, y);
            return pick<UU<kDouble, kScalar>>(state, x, y);
        }
        TYX_BAD_ARG(state, x.type(), y.type());
    }
};

} // namespace

void addArithmeticFunctions(FunctionRegistry &registry)
{
    addFunction<LogicalNotBody>(registry, L"logicalnot");
    addFunction<UnaryPlusBody>(registry, L"unaryplus");
    addFunction<UnaryMinusBody>(registry, L"unaryminus");
    addFunction<AddBody>(registry, L"add");
    addFunction<StringlessArith<SubOp>>(registry, L"subtract");
    addFunction<MultiplyBody>(registry, L"multiply");
    addFunction<StringlessArith<DivOp>>(registry, L"divide");
    addFunction<Compare<Comparison::Eq>>(registry, L"equals");
    addFunction<Compare<Comparison::Ne>>(registry, L"notequals");
    addFunction<Compare<Comparison::Lt>>(registry, L"lessthan");
    addFunction<Compare<Comparison::Le>>(registry, L"lessthanequals");
    addFunction<Compare<Comparison::Gt>>(registry, L"greaterthan");
    addFunction<Compare<Comparison::Ge>>(registry, L"greaterthanequals");
    addFunction<Logical<false>>(registry, L"logicalor");
    addFunction<Logical<true>>(registry, L"logicaland");
}

} // namespace tyx::internal
