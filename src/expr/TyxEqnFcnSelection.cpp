// Function bodies that choose among their arguments: ternary and select.
#include "expr/TyxEqnFcnDispatch.h"

namespace tyx::internal {

namespace {

// ---- Selection -------------------------------------------------------------------

// ternary and select pass on the variant of the argument they choose. The
// functions above them read their operands without a type test, so the
// chosen values must keep one type across evaluations, as variables do: a
// value of another type than the first one passed on ends in the
// combination message (first type, new type) instead of a wrong reading.
const TyxVariant &passOn(TyxFcnState &state, const TyxVariant &chosen)
{
    const int c = code(chosen);
    if (c != state.sharedCode && c != TyxMetaType::Invalid) {
        if (state.sharedCode >= 0)
            TYX_BAD_ARG(state, TyxMetaType(static_cast<TyxMetaType::Code>(state.sharedCode)), chosen.type());
        state.sharedCode = c;
    }
    return chosen;
}

// A ternary branch beside a tile condition: a scalar counts as its complex
// value when its imaginary part is not 0, else as a double.
TyxEqnTile tileTernary(const TyxFcnState &state, const TyxEqnTile &cond, const TyxVariant &x,
                       const TyxVariant &y)
{
    const auto kind = [](const TyxVariant &v) {
        const int c = code(v);
        if (c == kScalar)
            return as<TyxScalar>(v).isReal() ? kDouble : kComplex;
        return c;
    };
    const auto real = [](const TyxVariant &v) {
        return code(v) == kScalar ? as<TyxScalar>(v).real() : as<double>(v);
    };
    const auto cplx = [](const TyxVariant &v) {
        return code(v) == kScalar   ? as<TyxScalar>(v).complex()
               : code(v) == kDouble ? Complex(as<double>(v))
                                    : as<Complex>(v);
    };
    const int kx = kind(x);
    const int ky = kind(y);
    if (kx == kTile && ky == kTile)
        return cond.ternary(as<TyxEqnTile>(x), as<TyxEqnTile>(y));
    if (kx == kTile && ky == kDouble)
        return cond.ternary(as<TyxEqnTile>(x), real(y));
    if (kx == kTile && ky == kComplex)
        return cond.ternary(as<TyxEqnTile>(x), cplx(y));
    if (kx == kDouble && ky == kTile)
        return cond.ternary(real(x), as<TyxEqnTile>(y));
    if (kx == kComplex && ky == kTile)
        return cond.ternary(cplx(x), as<TyxEqnTile>(y));
    if (kx == kDouble && ky == kDouble)
        return cond.ternary(real(x), real(y));
    if ((kx == kDouble || kx == kComplex) && (ky == kDouble || ky == kComplex))
        return cond.ternary(cplx(x), cplx(y));
    TYX_BAD_ARG(state, TyxMetaType(TyxMetaType::EqnTile), x.type(), y.type());
}

struct TernaryBody {
    // A tile condition takes both branches, whose types are looked at in
    // each evaluation since a scalar branch may turn complex; any other
    // condition evaluates only the chosen branch and shares its variant.
    struct OnTile {
        static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
        {
            const TyxEqnTile &cond = as<TyxEqnTile>(args[0]->evaluate());
            const TyxVariant &x = args[1]->evaluate();
            const TyxVariant &y = args[2]->evaluate();
            return state.store(tileTernary(state, cond, x, y));
        }
    };
    struct OnValue {
        static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
        {
            return passOn(state, truthOf(state, args[0]->evaluate()) ? evalArg(args, 1) : evalArg(args, 2));
        }
    };
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        checkCount(state, args, 3);
        const TyxVariant &c = evalArg(args, 0);
        if (code(c) == kTile) {
            state.evaluator = &runList<OnTile>;
            const TyxVariant &x = evalArg(args, 1);
            const TyxVariant &y = evalArg(args, 2);
            return state.store(tileTernary(state, as<TyxEqnTile>(c), x, y));
        }
        const bool truth = truthOf(state, c);
        state.evaluator = &runList<OnValue>;
        return passOn(state, truth ? evalArg(args, 1) : evalArg(args, 2));
    }
};

struct SelectBody {
    static const TyxVariant &apply(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        const TyxVariant &selector = evalArg(args, 0);
        double index = 0.0;
        if (code(selector) == kDouble)
            index = as<double>(selector);
        else if (code(selector) == kScalar)
            index = as<TyxScalar>(selector).real();
        else if (!selector.value(TyxMetaType::Double, &index))
            TYX_BAD_ARG(state, selector.type());
        // Negative and NaN selectors are out of range like large ones.
        if (!(index >= 0.0) || index >= static_cast<double>(args.size()))
            TYX_BAD_ARG(state, selector.type());
        const size_t i = static_cast<size_t>(index);
        return passOn(state, i == 0 ? selector : evalArg(args, i));
    }
    static const TyxVariant &generic(TyxFcnState &state, const TyxEqnNodeList &args)
    {
        if (args.size() < 2)
            TYX_BAD_COUNT(state, args.size(), 2);
        state.evaluator = &runList<SelectBody>;
        return apply(state, args);
    }
};

} // namespace

void addSelectionFunctions(FunctionRegistry &registry)
{
    addFunction<TernaryBody>(registry, L"ternary");
    addFunction<SelectBody>(registry, L"select");
}

} // namespace tyx::internal
