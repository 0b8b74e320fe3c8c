// The numeric codes of image samples.
#pragma once

#include <complex>
#include <cstdint>
#include <type_traits>

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

    /// The code of the C++ sample type \p T (const or not): int8_t to
    /// uint64_t, float, double, std::complex<float> and std::complex<double>;
    /// Invalid for any other type. This is the library's one table from C++
    /// sample types to codes.
    template <class T>
    static constexpr Code codeOf()
    {
        using U = std::remove_cv_t<T>;
        if constexpr (std::is_same_v<U, int8_t>)
            return I8;
        else if constexpr (std::is_same_v<U, uint8_t>)
            return U8;
        else if constexpr (std::is_same_v<U, int16_t>)
            return I16;
        else if constexpr (std::is_same_v<U, uint16_t>)
            return U16;
        else if constexpr (std::is_same_v<U, int32_t>)
            return I32;
        else if constexpr (std::is_same_v<U, uint32_t>)
            return U32;
        else if constexpr (std::is_same_v<U, int64_t>)
            return I64;
        else if constexpr (std::is_same_v<U, uint64_t>)
            return U64;
        else if constexpr (std::is_same_v<U, float>)
            return Float;
        else if constexpr (std::is_same_v<U, double>)
            return Double;
        else if constexpr (std::is_same_v<U, std::complex<float>>)
            return ComplexFloat;
        else if constexpr (std::is_same_v<U, std::complex<double>>)
            return ComplexDouble;
        else
            return Invalid;
    }
};

} // namespace tyx
