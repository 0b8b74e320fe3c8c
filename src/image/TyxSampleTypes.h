// Private: the sample type of each data type code, and dispatch on a code.
#pragma once

#include <complex>
#include <cstdint>

#include <tyx/TyxNumericType.h>

namespace tyx::internal {

/// Tag naming a sample type without a value.
template <class T>
struct SampleTag {
    using type = T;
};

template <class T>
struct IsComplexSample : std::false_type {
};
template <class T>
struct IsComplexSample<std::complex<T>> : std::true_type {
};

/// Calls \p f with the tag of the sample type of \p code; an invalid code
/// gives \p fallback. This is the one dispatch of an operation, outside its
/// element loops.
template <class R, class F>
inline R visitSampleCode(int code, R fallback, F &&f)
{
    switch (code) {
    case TyxNumericType::I8: return f(SampleTag<int8_t>());
    case TyxNumericType::U8: return f(SampleTag<uint8_t>());
    case TyxNumericType::I16: return f(SampleTag<int16_t>());
    case TyxNumericType::U16: return f(SampleTag<uint16_t>());
    case TyxNumericType::I32: return f(SampleTag<int32_t>());
    case TyxNumericType::U32: return f(SampleTag<uint32_t>());
    case TyxNumericType::I64: return f(SampleTag<int64_t>());
    case TyxNumericType::U64: return f(SampleTag<uint64_t>());
    case TyxNumericType::Float: return f(SampleTag<float>());
    case TyxNumericType::Double: return f(SampleTag<double>());
    case TyxNumericType::ComplexFloat: return f(SampleTag<std::complex<float>>());
    case TyxNumericType::ComplexDouble: return f(SampleTag<std::complex<double>>());
    default: return fallback;
    }
}

} // namespace tyx::internal
