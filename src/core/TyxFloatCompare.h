// Equality of doubles within four units in the last place.
#pragma once

#include <bit>
#include <cstdint>

namespace tyx::internal {

/// Whether \p a and \p b lie at most 4 representable doubles apart. The bits
/// of each value map onto an unsigned line on which neighbouring doubles are
/// neighbouring integers, so that -0.0 and +0.0 meet; a NaN equals nothing.
inline bool withinFourUlps(double a, double b)
{
    constexpr uint64_t sign = uint64_t(1) << 63;
    const uint64_t bitsA = std::bit_cast<uint64_t>(a);
    const uint64_t bitsB = std::bit_cast<uint64_t>(b);
    const uint64_t lineA = (bitsA & sign) ? ~bitsA + 1 : bitsA | sign;
    const uint64_t lineB = (bitsB & sign) ? ~bitsB + 1 : bitsB | sign;
    const uint64_t distance = lineA > lineB ? lineA - lineB : lineB - lineA;
    return a == a && b == b && distance <= 4;
}

} // namespace tyx::internal
