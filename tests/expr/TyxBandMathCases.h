// Operand tiles and expressions shared by the tests of evaluation in blocks.
#pragma once

#include <tyx/TyxBuffer.h>
#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>

#include <cstdint>
#include <cstring>

namespace tyx::testing {

/// A tile of \p n samples of T, read with \p step from a buffer of its own,
/// holding values that differ from sample to sample.
template <class T>
TyxEqnTile bandOf(TyxNumericType::Code code, uint64_t n, uint64_t step, unsigned seed)
{
    const uint64_t count = n == 0 ? 0 : (n - 1) * step + 1;
    TyxBufferPtr buffer(new TyxBuffer(count * sizeof(T) + 1, true));
    T *p = static_cast<T *>(buffer->data());
    for (uint64_t i = 0; i < count; ++i)
        p[i] = static_cast<T>(((i + seed) * 2654435761u >> 9) % 1000) / T(2) + T(1);
    return TyxEqnTile(buffer, TyxDataType(code), n, step);
}

/// Sets a: U16, b: Float read with step 3, c: I8 read with step 2 and
/// d: Double, each of \p n samples.
inline void setBands(TyxEqnParser &parser, uint64_t n)
{
    using N = TyxNumericType;
    parser.setValue(L"a", bandOf<uint16_t>(N::U16, n, 1, 1));
    parser.setValue(L"b", bandOf<float>(N::Float, n, 3, 2));
    parser.setValue(L"c", bandOf<int8_t>(N::I8, n, 2, 3));
    parser.setValue(L"d", bandOf<double>(N::Double, n, 1, 4));
    parser.setValue(L"k", 1.0);
}

/// Band math over a, b, c, d: element-wise trees of mixed types with
/// constants, comparisons, ternary and mathematical functions, and trees
/// with reductions and element access inside.
inline const wchar_t *const kBandMath[] = {
    L"(a - b) / (a + b)",
    L"(a * 0.5 + b * 0.3 - c) / sqrt(a * a + b * b + 1)",
    L"roundclip((a - b) / (a + b) * 10000, \"I16\", -10000, 10000)",
    L"ternary(a > 300, sin(b), cos(c) * 2) + (d == 0.5) - exp(-abs(d)) * (c <= 20)",
    L"cmplx(a, c) * 2.5 - cmplx(b, d) / (d + 1)",
    L"pow(a, 2) + atan2(b, d) + clip(a - b, -5, 5) + logb(a + 1, 2) - floor(d) * _PI",
    L"a * sum(b) - median(c) + d[0] + sum(a * d + c) / 1000000",
    L"k ? a * 2 : b",
    L"(k ? a : b) * 2",
    L"-(+a)",
};

/// Whether two tiles hold the same type, size and bytes.
inline bool sameBits(const TyxEqnTile &x, const TyxEqnTile &y)
{
    if (x.dataType() != y.dataType() || x.size() != y.size() || x.step() != y.step())
        return false;
    if (x.size() == 0)
        return true;
    const uint64_t bytes = ((x.size() - 1) * x.step() + 1) * x.dataType().size();
    return std::memcmp(x.buffer()->data(), y.buffer()->data(), bytes) == 0;
}

/// The result of \p parser as a tile of its own, since the parser reuses
/// its result buffer.
inline TyxEqnTile ownResult(TyxEqnParser &parser)
{
    TyxTextMsg msg;
    const TyxVariant &v = parser.evaluate(&msg);
    return v.isValid() ? v.value<TyxEqnTile>().clone() : TyxEqnTile();
}

} // namespace tyx::testing
