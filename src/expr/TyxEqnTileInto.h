// Tile arithmetic that writes into the buffer of an earlier result.
#pragma once

#include <complex>
#include <functional>

#include "expr/TyxEqnTileLoops.h"

namespace tyx::internal {

/// Makes \p out a tile of \p n elements of R with step 1 and returns its
/// samples. The buffer of \p out is kept when nobody else holds it and it is
/// large enough, so that a repeated evaluation allocates nothing; otherwise
/// a new one is allocated. Null when n is 0 (\p out is then a tile of the
/// result type and size 0) or when the allocation failed (the empty tile).
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
    if (n == 0)
        return nullptr;
    if (!out.buffer() || !out.buffer()->data()) {
        out = TyxEqnTile();
        return nullptr;
    }
    return static_cast<R *>(out.buffer()->data());
}

// The arithmetic of tiles, shared by the tile operators and the function
// bodies of the expression engine. The element loops are instantiated once,
// in TyxEqnTile.cpp, for the four operations: std::plus<>, std::minus<>,
// std::multiplies<> and std::divides<>.

/// out = a op b element by element: the smaller size, every served pair of
/// types (a complex operand gives a ComplexDouble tile, else Double), and
/// the empty tile for an unserved type.
template <class Op>
void tileTileInto(TyxEqnTile &out, const TyxEqnTile &a, const TyxEqnTile &b, Op op);

/// out = a op s, or s op a with ScalarLeft, for each element, S being double
/// or std::complex<double>. ComplexFloat tiles are not served with a scalar.
template <bool ScalarLeft, class S, class Op>
void tileScalarInto(TyxEqnTile &out, const TyxEqnTile &a, const S &s, Op op);

/// out = -a element by element.
void negateInto(TyxEqnTile &out, const TyxEqnTile &a);

} // namespace tyx::internal
