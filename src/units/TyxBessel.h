// Bessel functions of integer order with a cost that does not grow with the order.
#pragma once

#include <cmath>
#include <limits>
#include <numbers>

namespace tyx::internal {

/// Orders up to this magnitude go to the C library, whose recurrences take
/// time in proportion to the order. Beyond it the value is settled by a
/// bound: jn is ±0 and yn is -infinity (for a positive argument) where the
/// first term of the power series shows that the true value is below the
/// smallest double or above the largest; otherwise NaN. So every value costs
/// at most some ten thousand steps.
inline constexpr long kBesselOrderLimit = 10000;

namespace bessel {

// The natural logarithm of (|x|/2)^m / m!, the size of the first term of the
// series of J_m(x).
inline double logFirstTerm(long m, double x)
{
    return static_cast<double>(m) * std::log(std::fabs(x) / 2.0) - std::lgamma(static_cast<double>(m) + 1.0);
}

// (-1)^m as a sign factor.
inline double signOfOrder(long m) { return (m % 2 == 0) ? 1.0 : -1.0; }

} // namespace bessel

/// J_n(x), the Bessel function of the first kind of order \p n.
inline double boundedJn(int n, double x)
{
    if (n >= -kBesselOrderLimit && n <= kBesselOrderLimit)
        return ::jn(n, x);
    if (std::isnan(x))
        return x;
    // J_-m = (-1)^m J_m, and J_m(-x) = (-1)^m J_m(x).
    const long m = n < 0 ? -static_cast<long>(n) : static_cast<long>(n);
    const double sign = (n < 0 ? bessel::signOfOrder(m) : 1.0) * (x < 0 ? bessel::signOfOrder(m) : 1.0);
    if (x == 0.0)
        return sign * 0.0;
    // |J_m(x)| <= (|x|/2)^m / m! for every real x.
    if (std::isfinite(x) && bessel::logFirstTerm(m, x) < std::log(std::numeric_limits<double>::denorm_min()))
        return sign * 0.0;
    return std::numeric_limits<double>::quiet_NaN();
}

/// Y_n(x), the Bessel function of the second kind of order \p n.
inline double boundedYn(int n, double x)
{
    if (n >= -kBesselOrderLimit && n <= kBesselOrderLimit)
        return ::yn(n, x);
    if (std::isnan(x) || x < 0.0)
        return std::numeric_limits<double>::quiet_NaN();
    const long m = n < 0 ? -static_cast<long>(n) : static_cast<long>(n);
    const double sign = n < 0 ? bessel::signOfOrder(m) : 1.0;
    if (x == 0.0)
        return -sign * std::numeric_limits<double>::infinity();
    // |Y_m(x)| >= (m-1)! (2/x)^m / pi, which is m / pi over the first term of J_m.
    if (std::isfinite(x) && std::log(static_cast<double>(m) / std::numbers::pi) - bessel::logFirstTerm(m, x) >
                                std::log(std::numeric_limits<double>::max()))
        return -sign * std::numeric_limits<double>::infinity();
    return std::numeric_limits<double>::quiet_NaN();
}

} // namespace tyx::internal
