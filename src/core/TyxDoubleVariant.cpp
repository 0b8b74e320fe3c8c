// The implementation of the variant that holds a double.
#include <tyx/TyxDoubleVariant.h>

namespace tyx {

bool TyxDoubleVariant::isEqual(const TyxVariantIF &other) const
{
    double converted = 0.0;
    return other.value(type(), &converted) && internal::isNearlyEqual(m_value, converted);
}

} // namespace tyx
