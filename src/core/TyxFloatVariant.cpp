// The implementation of the variant that holds a float.
#include <tyx/TyxFloatVariant.h>

namespace tyx {

bool TyxFloatVariant::isEqual(const TyxVariantIF &other) const
{
    float converted = 0.0f;
    return other.value(type(), &converted) && internal::isNearlyEqual(m_value, converted);
}

} // namespace tyx
