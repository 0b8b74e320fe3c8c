// Private: typed row loops of image tiles (moves by sample width, conversions
// per pair of sample types, fills per sample type).
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include <tyx/TyxCast.h>
#include <tyx/TyxDataType.h>

#include "image/TyxSampleTypes.h"

namespace tyx::internal {

/// A block of samples with its strides, in samples.
struct TileView {
    unsigned char *data = nullptr;
    uint64_t pixel = 0;
    uint64_t line = 0;
    uint64_t band = 0;
};

/// A box of width x height x bands copied from (srcX, srcY, srcBand) of one
/// view to (dstX, dstY, dstBand) of another, all tile-relative and inside.
struct CopyBox {
    uint64_t width = 0;
    uint64_t height = 0;
    uint64_t bands = 0;
    uint64_t srcX = 0, srcY = 0, srcBand = 0;
    uint64_t dstX = 0, dstY = 0, dstBand = 0;
};

/// A sample of 16 bytes moved as a whole.
struct Bytes16 {
    uint64_t lo;
    uint64_t hi;
};

/// d[x] = s[x * S] and d[x * S] = s[x] with the stride known to the compiler,
/// so that it can vectorise the usual band counts.
template <class E, unsigned S>
void gatherFixed(E *__restrict d, const E *__restrict s, uint64_t n)
{
    for (uint64_t x = 0; x < n; ++x)
        d[x] = s[x * S];
}

template <class E, unsigned S>
void scatterFixed(E *__restrict d, const E *__restrict s, uint64_t n)
{
    for (uint64_t x = 0; x < n; ++x)
        d[x * S] = s[x];
}

/// Splits S interleaved bands into S rows in one pass, and the reverse: the
/// usual layout changes between PixelInterleaved and the other layouts.
template <class E, unsigned S>
void deinterleaveFixed(E *d, uint64_t dBand, const E *__restrict s, uint64_t n)
{
    E *rows[S];
    for (unsigned b = 0; b < S; ++b)
        rows[b] = d + b * dBand;
    for (uint64_t x = 0; x < n; ++x)
        for (unsigned b = 0; b < S; ++b)
            rows[b][x] = s[x * S + b];
}

template <class E, unsigned S>
void interleaveFixed(E *__restrict d, const E *s, uint64_t sBand, uint64_t n)
{
    const E *rows[S];
    for (unsigned b = 0; b < S; ++b)
        rows[b] = s + b * sBand;
    for (uint64_t x = 0; x < n; ++x)
        for (unsigned b = 0; b < S; ++b)
            d[x * S + b] = rows[b][x];
}

/// Copies row \p row of \p box. Whole pixel-interleaved rows go in one memcpy,
/// planar rows in one memcpy per band, anything else sample by sample with
/// the strides. \p E is only the sample's width.
template <class E>
void copyBoxRow(const TileView &dst, const TileView &src, const CopyBox &box, uint64_t row)
{
    E *d = reinterpret_cast<E *>(dst.data) + (box.dstY + row) * dst.line + box.dstX * dst.pixel;
    const E *s = reinterpret_cast<const E *>(src.data) + (box.srcY + row) * src.line + box.srcX * src.pixel;
    if (dst.band == 1 && src.band == 1 && dst.pixel == box.bands && src.pixel == box.bands) {
        std::memcpy(d + box.dstBand, s + box.srcBand, box.width * box.bands * sizeof(E));
        return;
    }
    const uint64_t n = box.width;
    const uint64_t dp = dst.pixel, sp = src.pixel;
    // All bands of an interleaved row to or from rows of one band each.
    if (dp == 1 && src.band == 1 && sp == box.bands && box.srcBand == 0) {
        E *db = d + box.dstBand * dst.band;
        switch (sp) {
        case 2: deinterleaveFixed<E, 2>(db, dst.band, s, n); return;
        case 3: deinterleaveFixed<E, 3>(db, dst.band, s, n); return;
        case 4: deinterleaveFixed<E, 4>(db, dst.band, s, n); return;
        default: break;
        }
    }
    if (sp == 1 && dst.band == 1 && dp == box.bands && box.dstBand == 0) {
        const E *sb = s + box.srcBand * src.band;
        switch (dp) {
        case 2: interleaveFixed<E, 2>(d, sb, src.band, n); return;
        case 3: interleaveFixed<E, 3>(d, sb, src.band, n); return;
        case 4: interleaveFixed<E, 4>(d, sb, src.band, n); return;
        default: break;
        }
    }
    for (uint64_t b = 0; b < box.bands; ++b) {
        E *__restrict db = d + (box.dstBand + b) * dst.band;
        const E *__restrict sb = s + (box.srcBand + b) * src.band;
        if (dp == 1 && sp == 1) {
            std::memcpy(db, sb, n * sizeof(E));
        } else if (dp == 1) {
            switch (sp) {
            case 2: gatherFixed<E, 2>(db, sb, n); break;
            case 3: gatherFixed<E, 3>(db, sb, n); break;
            case 4: gatherFixed<E, 4>(db, sb, n); break;
            default:
                for (uint64_t x = 0; x < n; ++x)
                    db[x] = sb[x * sp];
            }
        } else if (sp == 1) {
            switch (dp) {
            case 2: scatterFixed<E, 2>(db, sb, n); break;
            case 3: scatterFixed<E, 3>(db, sb, n); break;
            case 4: scatterFixed<E, 4>(db, sb, n); break;
            default:
                for (uint64_t x = 0; x < n; ++x)
                    db[x * dp] = sb[x];
            }
        } else {
            for (uint64_t x = 0; x < n; ++x)
                db[x * dp] = sb[x * sp];
        }
    }
}

/// Calls \p f with the tag of an element type of \p size bytes (1, 2, 4, 8
/// or 16); other sizes give \p fallback.
template <class R, class F>
inline R visitSampleWidth(unsigned size, R fallback, F &&f)
{
    switch (size) {
    case 1: return f(SampleTag<uint8_t>());
    case 2: return f(SampleTag<uint16_t>());
    case 4: return f(SampleTag<uint32_t>());
    case 8: return f(SampleTag<uint64_t>());
    case 16: return f(SampleTag<Bytes16>());
    default: return fallback;
    }
}

/// d[i] = cast of s[i] for i in [begin, end): the plain cast of the
/// conversion matrix, no saturation.
template <class From, class To>
void convertSamples(To *__restrict d, const From *__restrict s, uint64_t begin, uint64_t end)
{
    for (uint64_t i = begin; i < end; ++i)
        d[i] = numberCast<To>(s[i]);
}

/// A value clamped to the logical range of \p type and, for integers, rounded
/// half away from zero. NaN gives 0 for integers.
template <class T>
T saturate(double v, const TyxDataType &type)
{
    if constexpr (std::is_integral_v<T>) {
        const double lo = type.logicalMinValue();
        const double hi = type.logicalMaxValue();
        unsigned depth = type.logicalBitDepth();
        depth = depth == 0 ? 1 : std::min(depth, 64u);
        if (std::isnan(v))
            return T(0);
        if (v >= hi) {
            // The exact integer maximum: the double of 2^63 - 1 is 2^63.
            if constexpr (std::is_signed_v<T>)
                return static_cast<T>(depth >= 64 ? INT64_MAX : (int64_t(1) << (depth - 1)) - 1);
            else
                return static_cast<T>(depth >= 64 ? UINT64_MAX : (uint64_t(1) << depth) - 1);
        }
        if (v <= lo)
            return static_cast<T>(static_cast<int64_t>(lo));
        return numberCast<T>(v >= 0.0 ? v + 0.5 : v - 0.5);
    } else {
        const double lo = type.logicalMinValue();
        const double hi = type.logicalMaxValue();
        if (v < lo)
            v = lo;
        else if (v > hi)
            v = hi;
        return static_cast<T>(v);
    }
}

} // namespace tyx::internal

namespace tyx::internal {

/// Casts \p n samples of code \p fromCode at \p src into samples of code
/// \p toCode at \p dst, in buffer order. False for an invalid code.
bool convertTileSamples(int fromCode, int toCode, void *dst, const void *src, uint32_t n, bool parallel,
                        bool timing);

} // namespace tyx::internal
