// Function bodies of reductions and element functions: limits, clipping, subscript and foreach.
#include "expr/TyxEqnFcnDispatch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>
#include <type_traits>
#include <vector>

#include "core/TyxPost.h"
#include "expr/TyxEqnBudget.h"
#include "expr/TyxEqnTileInto.h"
#include "expr/TyxFcnNode.h"
#include "expr/TyxVarNode.h"

namespace tyx::internal {

namespace {

// ---- Reductions ---------------------------------------------------------------

enum class Reduction { Min, Max, Sum };

template <Reduction R>
double combine(double x, double y)
{
    if constexpr (R == Reduction::Min)
        return y < x ? y : x;
    else if constexpr (R == Reduction::Max)
        return y > x ? y : x;
    else
        return x + y;
}

template <Reduction R>
TyxScalar combine(const TyxScalar &x, const TyxScalar &y)
{
    if constexpr (R == Reduction::Min)
        return y < x ? y : x;
    else if constexpr (R == Reduction::Max)
        return y > x ? y : x;
    else
        return x + y;
}

template <Reduction R>
TyxEqnTile combine(const TyxEqnTile &x, const TyxEqnTile &y)
{
    if constexpr (R == Reduction::Min)
        return x.min(y);
    else if constexpr (R == Reduction::Max)
        return x.max(y);
    else
        return x + y;
}

template <Reduction R>
double reduceTile(const TyxEqnTile &t)
{
    if constexpr (R == Reduction::Min)
        return t.min();
    else if constexpr (R == Reduction::Max)
        return t.max();
    else
        return t.sum();
}

// min, max and sum; mean is sum divided by the number of arguments.
template <Reduction R, bool Mean>
struct Reduce {
    static double scale(const TyxEqnNodeList &args) { return static_cast<double>(args.size()); }

    struct OneTile {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            const double r = reduceTile<R>(as<TyxEqnTile>(x));
            return state.store(Mean ? r / 1.0 : r);
        }
    };
    // One argument that is not a tile is its own result.
    struct Same {
        static const TyxVariant &apply(TyxFcnState &, const TyxVariant &x) { return x; }
    };
    // A tile and a number: the elementwise limit, or the sum.
    template <bool TileLeft>
    struct TileNumber {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            const TyxEqnTile &t = as<TyxEqnTile>(TileLeft ? x : y);
            const double n = numberOf(TileLeft ? y : x);
            if constexpr (R == Reduction::Min)
                return state.store(t.min(n));
            else if constexpr (R == Reduction::Max)
                return state.store(t.max(n));
            else if constexpr (Mean)
                return state.store((t + n) / 2.0);
            else
                return state.store(t + n);
        }
    };
    struct AllD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
        {
            double r = as<double>(args[0]->evaluate());
            for (size_t i = 1; i < args.size(); ++i)
                r = combine<R>(r, as<double>(args[i]->evaluate()));
            return state.store(Mean ? r / scale(args) : r);
        }
    };
    struct AllU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
        {
            TyxScalar r = as<TyxScalar>(args[0]->evaluate());
            for (size_t i = 1; i < args.size(); ++i)
                r = combine<R>(r, as<TyxScalar>(args[i]->evaluate()));
            return state.store(Mean ? r / TyxScalar(scale(args)) : r);
        }
    };
    struct AllT {
        static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
        {
            TyxEqnTile r = as<TyxEqnTile>(args[0]->evaluate());
            for (size_t i = 1; i < args.size(); ++i)
                r = combine<R>(r, as<TyxEqnTile>(args[i]->evaluate()));
            return state.store(Mean ? r / scale(args) : r);
        }
    };

    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        if (args.empty())
            TYX_BAD_COUNT(state, 0, 1);
        if (args.size() == 1) {
            const TyxVariant &x = evalArg(args, 0);
            if (code(x) == kTile)
                return pick<OneTile>(state, x);
            if (Mean && code(x) != kDouble && code(x) != kScalar)
                TYX_BAD_ARG(state, x.type());
            return pick<Same>(state, x);
        }
        std::vector<const TyxVariant *> values;
        values.reserve(args.size());
        for (size_t i = 0; i < args.size(); ++i)
            values.push_back(&evalArg(args, i));
        if (args.size() == 2) {
            const TyxVariant &x = *values[0];
            const TyxVariant &y = *values[1];
            if (code(x) == kTile && code(y) != kTile && isNumber(y))
                return pick<TileNumber<true>>(state, x, y);
            if (code(y) == kTile && code(x) != kTile && isNumber(x))
                return pick<TileNumber<false>>(state, x, y);
        }
        const int first = code(*values[0]);
        for (const TyxVariant *v : values) {
            if (code(*v) != first || (first != kDouble && first != kTile && first != kScalar))
                TYX_BAD_ARG(state, v->type());
        }
        // The arguments are evaluated again by the picked routine, only on
        // this first evaluation.
        switch (first) {
        case kDouble: state.evaluator = &runList<AllD>; return AllD::apply(state, args);
        case kScalar: state.evaluator = &runList<AllU>; return AllU::apply(state, args);
        default: state.evaluator = &runList<AllT>; return AllT::apply(state, args);
        }
    }
};

// median of one tile, or of a list of Doubles: the lower middle value.
struct MedianBody {
    struct OneTile {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x)
        {
            return state.store(as<TyxEqnTile>(x).median());
        }
    };
    struct AllD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
        {
            std::vector<double> values;
            values.reserve(args.size());
            for (const TyxEqnNodePtr &arg : args)
                values.push_back(as<double>(arg->evaluate()));
            std::sort(values.begin(), values.end());
            const size_t n = values.size();
            return state.store(values[n % 2 ? n / 2 : n / 2 - 1]);
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        if (args.empty())
            TYX_BAD_COUNT(state, 0, 1);
        if (args.size() == 1 && code(evalArg(args, 0)) == kTile)
            return pick<OneTile>(state, evalArg(args, 0));
        for (size_t i = 0; i < args.size(); ++i) {
            const TyxVariant &v = evalArg(args, i);
            if (code(v) != kDouble)
                TYX_BAD_ARG(state, v.type());
        }
        state.evaluator = &runList<AllD>;
        return AllD::apply(state, args);
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
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            return state.store(limit(as<double>(x), numberOf(y)));
        }
    };
    struct TN {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            const TyxEqnTile &t = as<TyxEqnTile>(x);
            return state.store(IsMin ? t.clipmin(numberOf(y)) : t.clipmax(numberOf(y)));
        }
    };
    template <int CY>
    struct UN {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
        {
            const TyxScalar m = CY == kScalar ? as<TyxScalar>(y) : TyxScalar(numberOf(y));
            return state.store(IsMin ? as<TyxScalar>(x).clipmin(m) : as<TyxScalar>(x).clipmax(m));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        if (isNumber(y)) {
            switch (code(x)) {
            case kDouble: return pick<DN>(state, x, y);
            case kTile: return pick<TN>(state, x, y);
            case kScalar:
                return code(y) == kScalar ? pick<UN<kScalar>>(state, x, y) : pick<UN<kDouble>>(state, x, y);
            }
        }
        TYX_BAD_ARG(state, x.type(), y.type());
    }
};

struct ClipBody {
    struct DDD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &lo,
                                       const TyxVariant &hi)
        {
            // The low bound is tested first.
            const double v = as<double>(x);
            const double l = as<double>(lo);
            const double h = as<double>(hi);
            return state.store(l > v ? l : (v > h ? h : v));
        }
    };
    struct TDD {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &lo,
                                       const TyxVariant &hi)
        {
            return state.store(as<TyxEqnTile>(x).clip(as<double>(lo), as<double>(hi)));
        }
    };
    template <int CL, int CH>
    struct UUU {
        static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &lo,
                                       const TyxVariant &hi)
        {
            return state.store(as<TyxScalar>(x).clip(scalarOf(lo, CL), scalarOf(hi, CH)));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 3);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &lo = evalArg(args, 1);
        const TyxVariant &hi = evalArg(args, 2);
        const int cx = code(x);
        const int cl = code(lo);
        const int ch = code(hi);
        if (cl == kDouble && ch == kDouble) {
            if (cx == kDouble)
                return pick<DDD>(state, x, lo, hi);
            if (cx == kTile)
                return pick<TDD>(state, x, lo, hi);
        }
        if (cx == kScalar && (cl == kDouble || cl == kScalar) && (ch == kDouble || ch == kScalar)) {
            if (cl == kScalar && ch == kScalar)
                return pick<UUU<kScalar, kScalar>>(state, x, lo, hi);
            if (cl == kScalar)
                return pick<UUU<kScalar, kDouble>>(state, x, lo, hi);
            if (ch == kScalar)
                return pick<UUU<kDouble, kScalar>>(state, x, lo, hi);
            return pick<UUU<kDouble, kDouble>>(state, x, lo, hi);
        }
        TYX_BAD_ARG(state, x.type(), lo.type(), hi.type());
    }
};

// roundclip(x, type, lo, hi). The target type is given as its name ("U8",
// "Double") or as its numeric code; a Double value is rounded and clipped as
// a sample of that type would be and stays a Double.
TyxDataType roundclipType(const TyxFcnState &state, const TyxVariant &type)
{
    TyxDataType result;
    if (code(type) == kString)
        result = TyxDataType(as<TyxString>(type));
    else if (isNumber(type))
        result = TyxDataType(static_cast<TyxNumericType::Code>(toInt32(numberOf(type))));
    if (!result.isValid())
        TYX_BAD_ARG(state, type.type());
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

struct RoundClipBody {
    template <bool IsTile>
    struct Run {
        static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
        {
            const TyxVariant &x = args[0]->evaluate();
            const TyxDataType type = roundclipType(state, args[1]->evaluate());
            const double lo = numberOf(args[2]->evaluate());
            const double hi = numberOf(args[3]->evaluate());
            if constexpr (IsTile)
                return state.store(as<TyxEqnTile>(x).roundclip(type, lo, hi));
            else
                return state.store(roundclipValue(type, as<double>(x), lo, hi));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 4);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &type = evalArg(args, 1);
        const TyxVariant &lo = evalArg(args, 2);
        const TyxVariant &hi = evalArg(args, 3);
        if ((code(x) != kDouble && code(x) != kTile) || !isNumber(lo) || !isNumber(hi))
            TYX_BAD_ARG(state, x.type(), lo.type(), hi.type());
        roundclipType(state, type);
        // The arguments are evaluated again here, only on this first evaluation.
        if (code(x) == kTile) {
            state.evaluator = &runList<Run<true>>;
            return Run<true>::apply(state, args);
        }
        state.evaluator = &runList<Run<false>>;
        return Run<false>::apply(state, args);
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
struct SubscriptBody {
    static const TyxVariant &apply(TyxFcnState &state, const TyxVariant &x, const TyxVariant &y)
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
        if (state.slot && code(state.result) != (complex ? kComplex : kDouble))
            state.slot = nullptr;
        if (complex) {
            const Complex value = t.dataType().code() == TyxNumericType::ComplexFloat
                                      ? Complex(samples<std::complex<float>>(t)[i])
                                      : samples<Complex>(t)[i];
            return state.store(value);
        }
        const double value = visitAnyCode(t.dataType().code(), std::nan(""), [&](auto tag) {
            using A = typename decltype(tag)::type;
            if constexpr (TileIsComplex<A>::value)
                return std::nan("");
            else
                return static_cast<double>(samples<A>(t)[i]);
        });
        return state.store(value);
    }
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 2);
        const TyxVariant &x = evalArg(args, 0);
        const TyxVariant &y = evalArg(args, 1);
        if (code(x) != kTile || !isNumber(y))
            TYX_BAD_ARG(state, x.type(), y.type());
        state.evaluator = &runTwo<SubscriptBody>;
        return apply(state, x, y);
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
    const TyxVariant &value = var.value();
    if (code(value) == kDouble && !value.isShared())
        *static_cast<double *>(const_cast<void *>(value.impl().constData())) = counter;
    else
        var.setValue(TyxVariant(counter));
}

// foreach(name, count, expression): the variable of that name in the
// expression counts from 0 while below count; the values form a tile. The
// variable nodes of the name in the expression are bound by setting their
// value in each round. The first value fixes the element type of the tile,
// which is then made at its full size and filled as the values come. A
// count of 0 gives the empty tile.
struct ForeachBody {
    static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        const TyxVariant &name = evalArg(args, 0);
        const TyxVariant &count = evalArg(args, 1);
        if (code(name) != kString || code(count) != kDouble)
            TYX_BAD_ARG(state, name.type(), count.type());
        std::vector<TyxVarNode *> vars;
        collectVars(args[2], as<TyxString>(name), vars);
        const double limit = as<double>(count);
        const uint64_t n = limit > 0.0 ? static_cast<uint64_t>(std::min(limit, 9.007199254740992e15)) : 0;
        TyxEqnTile &out = state.tileResult();
        if (n == 0) {
            out = TyxEqnTile();
            return state.result;
        }
        // Charged before the first round, so an oversized count fails at once.
        TyxEqnBudget::chargeIterations(n, state.name);
        TyxEqnBudget::chargeElements(n, state.name);
        double *reals = nullptr;
        Complex *complexes = nullptr;
        for (uint64_t i = 0; i < n; ++i) {
            for (TyxVarNode *var : vars)
                setCounter(*var, static_cast<double>(i));
            const TyxVariant &value = evalArg(args, 2);
            Complex c;
            switch (code(value)) {
            case kDouble: c = as<double>(value); break;
            case kComplex: c = as<Complex>(value); break;
            case kScalar: c = as<TyxScalar>(value).complex(); break;
            default: TYX_BAD_ARG(state, value.type());
            }
            if (i == 0) {
                // A failed allocation has been posted and leaves the empty tile.
                if (code(value) == kComplex || (code(value) == kScalar && c.imag() != 0.0))
                    complexes = prepareInto<Complex>(out, n);
                else
                    reals = prepareInto<double>(out, n);
                if (!complexes && !reals)
                    return state.result;
            }
            if (complexes)
                complexes[i] = c;
            else
                reals[i] = c.real();
        }
        return state.result;
    }
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 3);
        // The expression is collapsed once, with the counter unset so that it
        // is not folded: what does not depend on the counter becomes constant.
        const TyxVariant &name = evalArg(args, 0);
        if (TyxFcnNode *fcn = args[2] && code(name) == kString ? args[2]->toFcnNode() : nullptr) {
            std::vector<TyxVarNode *> vars;
            collectVars(args[2], as<TyxString>(name), vars);
            for (TyxVarNode *var : vars)
                var->setValue(TyxVariant());
            int folded = 0;
            // The list is this call's own argument list, held by its node.
            if (TyxEqnNodePtr node = fcn->collapse(&folded))
                const_cast<TyxEqnNodePtr &>(args[2]) = node;
        }
        state.evaluator = &runList<ForeachBody>;
        return apply(state, args);
    }
};

} // namespace

void addReductionFunctions(FunctionRegistry &registry)
{
    addFunction<ClipOne<true>>(registry, L"clipmin");
    addFunction<ClipOne<false>>(registry, L"clipmax");
    addFunction<ClipBody>(registry, L"clip");
    addFunction<RoundClipBody>(registry, L"roundclip");
    addFunction<SubscriptBody>(registry, L"subscript");
    addFunction<ForeachBody>(registry, L"foreach");
    addFunction<Reduce<Reduction::Min, false>>(registry, L"min");
    addFunction<Reduce<Reduction::Max, false>>(registry, L"max");
    addFunction<Reduce<Reduction::Sum, false>>(registry, L"sum");
    addFunction<Reduce<Reduction::Sum, true>>(registry, L"mean");
    addFunction<MedianBody>(registry, L"median");
}

} // namespace tyx::internal
