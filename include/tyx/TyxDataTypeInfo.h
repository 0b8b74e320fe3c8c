// The size and physical limits of one numeric sample type, and its variant.
#pragma once

#include <cstdint>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// One row of the data-type table: the size in bytes and the physical limits
/// of a sample (of one component for complex types).
struct TyxDataTypeInfo {
    uint32_t size = 0;
    double minimum = 0.0;
    double maximum = 0.0;

    bool operator==(const TyxDataTypeInfo &other) const
    {
        return size == other.size && minimum == other.minimum && maximum == other.maximum;
    }
    bool operator!=(const TyxDataTypeInfo &other) const { return !(*this == other); }
};

/// The variant of a TyxDataTypeInfo, registered at library load under the
/// type name "TyxDataTypeInfo". Two are equal when all three fields are.
class TYX_EXPORT TyxDataTypeInfoVariant : public TyxVariantImpl<TyxDataTypeInfo> {
public:
    using TyxVariantImpl<TyxDataTypeInfo>::TyxVariantImpl;
};

namespace internal {

template <>
struct TyxVariantTraits<TyxDataTypeInfo> : TyxRegisteredVariantTraits<TyxDataTypeInfo, TyxDataTypeInfoVariant> {
    static TyxString className() { return L"TyxDataTypeInfo"; }
};

} // namespace internal

} // namespace tyx
