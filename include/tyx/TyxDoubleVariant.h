// The implementation of the variant that holds a double.
#pragma once

#include <tyx/TyxVariantImpl.h>

namespace tyx {

namespace internal {

/// Equal when exactly equal or within 2^-23 of each other.
template <class Real>
bool isNearlyEqual(Real a, Real b)
{
    constexpr Real tolerance = Real(1.1920928955078125e-07);
    return a == b || (a > b ? a - b : b - a) <= tolerance;
}

} // namespace internal

/// Holds a double; equality allows an absolute difference of 2^-23.
class TYX_EXPORT TyxDoubleVariant : public TyxVariantImpl<double> {
public:
    using TyxVariantImpl<double>::TyxVariantImpl;

    /// Converts \p other to double and compares within the tolerance.
    bool isEqual(const TyxVariantIF &other) const override;
};

} // namespace tyx
