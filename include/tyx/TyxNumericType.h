// The numeric codes of image samples.
#pragma once

#include <cstdint>

namespace tyx {

/// Scope of the numeric sample codes. A code is also the row of the type in
/// the data-type table, and the order matters: TyxDataType::leastCommon
/// compares codes numerically.
struct TyxNumericType {
    enum Code : int32_t {
        I8 = 0,
        U8 = 1,
        I16 = 2,
        U16 = 3,
        I32 = 4,
        U32 = 5,
        I64 = 6,
        U64 = 7,
        Float = 8,
        Double = 9,
        ComplexFloat = 10,
        ComplexDouble = 11,
        Invalid = 12
    };
};

} // namespace tyx
