// Private routines that fill a dense table band from sorted break points.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <type_traits>

#include <tyx/TyxBreakPoint.h>

namespace tyx::internal {

/// A double as a table entry: integers rounded half away from zero (signed)
/// or by adding one half (unsigned), then truncated; Float cast; Double kept.
/// The caller has checked the values against the type's limits.
template <class T>
inline T lutEntry(double d)
{
    if constexpr (std::is_floating_point_v<T>)
        return static_cast<T>(d);
    // Types up to 32 bits, U32 aside, truncate through 32 bits: the rounded
    // value fits, and the 32-bit conversion vectorises.
    else if constexpr (std::is_signed_v<T>)
        return static_cast<T>(static_cast<int32_t>(d >= 0.0 ? d + 0.5 : d - 0.5));
    else if constexpr (sizeof(T) < 4)
        return static_cast<T>(static_cast<int32_t>(d + 0.5));
    else
        return static_cast<T>(static_cast<int64_t>(d + 0.5));
}

/// Fills the \p maxIn - \p minIn + 1 entries of one band at \p dst from the
/// \p n (at least 2) sorted points \p p, all with inputs within the range:
/// flat before the first point and after the last, linear between points,
/// each segment half open on the right. Slope and intercept are worked out
/// once per segment.
template <class T>
void fillLutBand(T *dst, const TyxBreakPoint *p, size_t n, int64_t minIn, int64_t maxIn)
{
    T *out = dst;
    out = std::fill_n(out, int64_t(p[0].in()) - minIn, lutEntry<T>(p[0].out()));
    for (size_t k = 1; k < n; ++k) {
        const TyxBreakPoint &a = p[k - 1];
        const TyxBreakPoint &b = p[k];
        const int64_t dx = int64_t(b.in()) - int64_t(a.in());
        const double dy = b.out() - a.out();
        if (dx <= 0)
            continue;
        if (dy == 0.0) {
            out = std::fill_n(out, dx, lutEntry<T>(b.out()));
            continue;
        }
        const double slope = dy / double(dx);
        const double intercept = a.out() - double(a.in()) * slope;
        // x runs through whole numbers, so start + i is exactly the value a
        // running sum of 1.0 would hold, without its loop-carried chain.
        const double start = double(a.in());
        if (dx <= INT32_MAX) {
            const int32_t count = int32_t(dx);
            for (int32_t i = 0; i < count; ++i)
                out[i] = lutEntry<T>((start + double(i)) * slope + intercept);
        } else {
            for (int64_t i = 0; i < dx; ++i)
                out[i] = lutEntry<T>((start + double(i)) * slope + intercept);
        }
        out += dx;
    }
    std::fill_n(out, maxIn - int64_t(p[n - 1].in()) + 1, lutEntry<T>(p[n - 1].out()));
}

} // namespace tyx::internal
