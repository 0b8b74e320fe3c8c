// The size and physical limits of one numeric sample type.
#pragma once

#include <cstdint>

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

} // namespace tyx
