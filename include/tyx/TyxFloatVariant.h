// The implementation of the variant that holds a float.
#pragma once

#include <tyx/TyxDoubleVariant.h>

namespace tyx {

/// Holds a float; equality allows an absolute difference of 2^-23.
class TYX_EXPORT TyxFloatVariant : public TyxVariantImpl<float> {
public:
    using TyxVariantImpl<float>::TyxVariantImpl;

    /// Converts \p other to float and compares within the tolerance.
    bool isEqual(const TyxVariantIF &other) const override;
};

} // namespace tyx
