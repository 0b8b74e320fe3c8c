// Private dispatch from a numeric code to the sample type of the look-up tables.
#pragma once

#include <cstdint>

#include <tyx/TyxNumericType.h>

#include "image/TyxSampleTypes.h"

namespace tyx::internal {

/// Tag naming a sample type without a value.
template <class T>
using LutTag = SampleTag<T>;

/// Calls \p f with the tag of an integer code (I8 to U64); any other code
/// gives \p fallback.
template <class R, class F>
inline R visitLutIntegerCode(int code, R fallback, F &&f)
{
    return visitSampleCode<SampleSet::Integer>(code, fallback, f);
}

/// Calls \p f with the tag of a table entry type that is built from break
/// points and stored by the file reader: I8 to U32, Float and Double. Any
/// other code gives \p fallback.
template <class R, class F>
inline R visitLutEntryCode(int code, R fallback, F &&f)
{
    return visitSampleCode<SampleSet::Narrow>(code, fallback, f);
}

/// As visitLutEntryCode, with I64 and U64 as well: every real code.
template <class R, class F>
inline R visitLutRealCode(int code, R fallback, F &&f)
{
    return visitSampleCode<SampleSet::Real>(code, fallback, f);
}

} // namespace tyx::internal
