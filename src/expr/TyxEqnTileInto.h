// Tile arithmetic that writes into the buffer of an earlier result.
#pragma once

#include <algorithm>

#include "expr/TyxEqnTileLoops.h"

namespace tyx::internal {

/// Makes \p out a tile of \p n elements of R with step 1 and returns its
/// samples. The buffer of \p out is kept when nobody else holds it and it is
/// large enough, so that a repeated evaluation allocates nothing; otherwise
/// a new one is allocated. Null when n is 0 or the allocation failed.
template <class R>
R *prepareInto(TyxEqnTile &out, uint64_t n)
{
    const TyxDataType type = tileResultType<R>();
    TyxBufferPtr &buffer = out.buffer();
    if (n > 0 && buffer && !buffer->hasMultipleRefs() && buffer->ownsData() && buffer->data() &&
        buffer->size() >= n * sizeof(R)) {
        if (out.size() != n || out.step() != 1 || out.dataType() != type)
            out = TyxEqnTile(TyxBufferPtr(buffer), type, n, 1);
        return static_cast<R *>(out.buffer()->data());
    }
    out.initialize(type, n);
    if (n == 0 || !out.buffer() || !out.buffer()->data()) {
        out = TyxEqnTile();
        return nullptr;
    }
    return static_cast<R *>(out.buffer()->data());
}

/// out = a op b element by element, as the tile operators compute it: the
/// smaller size, every served pair of types, an empty result otherwise.
template <class Op>
void tileTileInto(TyxEqnTile &out, const TyxEqnTile &a, const TyxEqnTile &b, Op op)
{
    if (!readable(a) || !readable(b)) {
        out = TyxEqnTile();
        return;
    }
    const uint64_t n = std::min(a.size(), b.size());
    const bool served = visitServedCode(codeOf(a), false, [&](auto ta) {
        using A = typename decltype(ta)::type;
        return visitServedCode(codeOf(b), false, [&](auto tb) {
            using B = typename decltype(tb)::type;
            using R = decltype(op(widen(A()), widen(B())));
            R *r = prepareInto<R>(out, n);
            if (r)
                zipLoop(r, samples<A>(a), a.step(), samples<B>(b), b.step(), n,
                        [op](const A &x, const B &y) { return op(widen(x), widen(y)); });
            return true;
        });
    });
    if (!served)
        out = TyxEqnTile();
}

/// out = a op s, or s op a with ScalarLeft, for each element. ComplexFloat
/// tiles are not served with a scalar, as in the tile operators.
template <bool ScalarLeft, class S, class Op>
void tileScalarInto(TyxEqnTile &out, const TyxEqnTile &a, const S &s, Op op)
{
    if (!readable(a)) {
        out = TyxEqnTile();
        return;
    }
    const uint64_t n = a.size();
    const bool served = visitServedCode(codeOf(a), false, [&](auto ta) {
        using A = typename decltype(ta)::type;
        if constexpr (isComplexFloat<A>) {
            return false;
        } else {
            using R = decltype(op(widen(A()), s));
            R *r = prepareInto<R>(out, n);
            if (r) {
                if constexpr (ScalarLeft)
                    mapLoop(r, samples<A>(a), a.step(), n, [op, s](const A &x) { return op(s, widen(x)); });
                else
                    mapLoop(r, samples<A>(a), a.step(), n, [op, s](const A &x) { return op(widen(x), s); });
            }
            return true;
        }
    });
    if (!served)
        out = TyxEqnTile();
}

/// out = -a element by element.
inline void negateInto(TyxEqnTile &out, const TyxEqnTile &a)
{
    if (!readable(a)) {
        out = TyxEqnTile();
        return;
    }
    const uint64_t n = a.size();
    const bool served = visitServedCode(codeOf(a), false, [&](auto ta) {
        using A = typename decltype(ta)::type;
        using R = decltype(widen(A()));
        R *r = prepareInto<R>(out, n);
        if (r)
            mapLoop(r, samples<A>(a), a.step(), n, [](const A &x) { return -widen(x); });
        return true;
    });
    if (!served)
        out = TyxEqnTile();
}

} // namespace tyx::internal
