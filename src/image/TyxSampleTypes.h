// Private: the library's one dispatch from a data-type code to its C++ sample type.
#pragma once

#include <complex>
#include <cstdint>
#include <type_traits>

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

/// The sample types an operation serves.
enum class SampleSet {
    All,          ///< the twelve sample types
    Real,         ///< all but the complex ones
    Integer,      ///< I8 to U64
    Narrow,       ///< I8 to U32, Float and Double
    NarrowComplex ///< Narrow with ComplexFloat and ComplexDouble
};

template <SampleSet Set, class T>
constexpr bool inSampleSet()
{
    constexpr TyxNumericType::Code code = TyxNumericType::codeOf<T>();
    constexpr bool wide = code == TyxNumericType::I64 || code == TyxNumericType::U64;
    switch (Set) {
    case SampleSet::All: return true;
    case SampleSet::Real: return !IsComplexSample<T>::value;
    case SampleSet::Integer: return std::is_integral_v<T>;
    case SampleSet::Narrow: return !IsComplexSample<T>::value && !wide;
    case SampleSet::NarrowComplex: return !wide;
    }
    return false;
}

template <SampleSet Set, class T, class R, class F>
inline R visitIfServed(R &fallback, F &f)
{
    if constexpr (inSampleSet<Set, T>())
        return f(SampleTag<T>());
    else
        return fallback;
}

/// Calls \p f with the tag of the sample type of \p code when \p Set serves
/// it; any other code gives \p fallback. The codes come from
/// TyxNumericType::codeOf, so the mapping between types and codes has one
/// source. This is the one dispatch of an operation, outside its element
/// loops.
template <SampleSet Set = SampleSet::All, class R, class F>
inline R visitSampleCode(int code, R fallback, F &&f)
{
    switch (code) {
    case TyxNumericType::codeOf<int8_t>(): return visitIfServed<Set, int8_t>(fallback, f);
    case TyxNumericType::codeOf<uint8_t>(): return visitIfServed<Set, uint8_t>(fallback, f);
    case TyxNumericType::codeOf<int16_t>(): return visitIfServed<Set, int16_t>(fallback, f);
    case TyxNumericType::codeOf<uint16_t>(): return visitIfServed<Set, uint16_t>(fallback, f);
    case TyxNumericType::codeOf<int32_t>(): return visitIfServed<Set, int32_t>(fallback, f);
    case TyxNumericType::codeOf<uint32_t>(): return visitIfServed<Set, uint32_t>(fallback, f);
    case TyxNumericType::codeOf<int64_t>(): return visitIfServed<Set, int64_t>(fallback, f);
    case TyxNumericType::codeOf<uint64_t>(): return visitIfServed<Set, uint64_t>(fallback, f);
    case TyxNumericType::codeOf<float>(): return visitIfServed<Set, float>(fallback, f);
    case TyxNumericType::codeOf<double>(): return visitIfServed<Set, double>(fallback, f);
    case TyxNumericType::codeOf<std::complex<float>>():
        return visitIfServed<Set, std::complex<float>>(fallback, f);
    case TyxNumericType::codeOf<std::complex<double>>():
        return visitIfServed<Set, std::complex<double>>(fallback, f);
    default: return fallback;
    }
}

} // namespace tyx::internal
