// Conversion of a double to an integer type without undefined results.
#pragma once

#include <cmath>
#include <limits>
#include <type_traits>

namespace tyx::internal {

/// \p value truncated toward zero as an \p Int; values beyond the type's
/// range give its smallest or largest value, and NaN gives 0.
template <class Int>
inline Int saturatingCast(double value)
{
    static_assert(std::is_integral_v<Int>);
    if (std::isnan(value))
        return 0;
    // The limits of 64-bit types round up to a power of two as doubles, so
    // the tests are "at least" for the top and "at most" for the bottom.
    if (value >= static_cast<double>(std::numeric_limits<Int>::max()))
        return std::numeric_limits<Int>::max();
    if (value <= static_cast<double>(std::numeric_limits<Int>::min()))
        return std::numeric_limits<Int>::min();
    return static_cast<Int>(value);
}

} // namespace tyx::internal
