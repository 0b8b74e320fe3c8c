// Private dispatch from a numeric code to the sample type of the look-up tables.
#pragma once

#include <cstdint>

#include <tyx/TyxNumericType.h>

namespace tyx::internal {

/// Tag naming a sample type without a value.
template <class T>
struct LutTag {
    using type = T;
};

/// Calls \p f with the tag of an integer code (I8 to U64); any other code
/// gives \p fallback.
template <class R, class F>
inline R visitLutIntegerCode(int code, R fallback, F &&f)
{
    switch (code) {
    case TyxNumericType::I8: return f(LutTag<int8_t>());
    case TyxNumericType::U8: return f(LutTag<uint8_t>());
    case TyxNumericType::I16: return f(LutTag<int16_t>());
    case TyxNumericType::U16: return f(LutTag<uint16_t>());
    case TyxNumericType::I32: return f(LutTag<int32_t>());
    case TyxNumericType::U32: return f(LutTag<uint32_t>());
    case TyxNumericType::I64: return f(LutTag<int64_t>());
    case TyxNumericType::U64: return f(LutTag<uint64_t>());
    default: return fallback;
    }
}

/// Calls \p f with the tag of a table entry type that is built from break
/// points and stored by the file reader: I8 to U32, Float and Double. Any
/// other code gives \p fallback.
template <class R, class F>
inline R visitLutEntryCode(int code, R fallback, F &&f)
{
    switch (code) {
    case TyxNumericType::I8: return f(LutTag<int8_t>());
    case TyxNumericType::U8: return f(LutTag<uint8_t>());
    case TyxNumericType::I16: return f(LutTag<int16_t>());
    case TyxNumericType::U16: return f(LutTag<uint16_t>());
    case TyxNumericType::I32: return f(LutTag<int32_t>());
    case TyxNumericType::U32: return f(LutTag<uint32_t>());
    case TyxNumericType::Float: return f(LutTag<float>());
    case TyxNumericType::Double: return f(LutTag<double>());
    default: return fallback;
    }
}

/// As visitLutEntryCode, with I64 and U64 as well: every real code.
template <class R, class F>
inline R visitLutRealCode(int code, R fallback, F &&f)
{
    switch (code) {
    case TyxNumericType::I64: return f(LutTag<int64_t>());
    case TyxNumericType::U64: return f(LutTag<uint64_t>());
    default: return visitLutEntryCode(code, fallback, f);
    }
}

} // namespace tyx::internal
