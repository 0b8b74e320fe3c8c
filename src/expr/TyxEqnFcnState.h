// State and routine machinery shared by the function bodies of the expression engine.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>
#include <tyx/TyxVariant.h>

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
        using V = std::remove_cvref_t<T>;
        if (slot && !result.isShared()) {
            *static_cast<V *>(slot) = std::forward<T>(value);
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

} // namespace tyx::internal
