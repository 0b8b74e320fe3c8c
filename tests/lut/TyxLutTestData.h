// Table buffers from value lists, break point luts and table entries as values, for the lut tests.
#pragma once

#include <tyx/TyxBreakPointLut.h>
#include <tyx/TyxBuffer.h>
#include <tyx/TyxLutDesc.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace tyx::test {

template <class T>
TyxBufferPtr bufferOf(const std::vector<T> &values)
{
    TyxBufferPtr buffer(new TyxBuffer(values.size() * sizeof(T), true));
    std::memcpy(buffer->data(), values.data(), values.size() * sizeof(T));
    return buffer;
}

/// A break point lut of output type \p output holding \p points.
inline TyxBreakPointLut pointLut(const TyxDataType &output, const std::vector<TyxBreakPoint> &points)
{
    TyxBreakPointLut lut(output);
    for (const TyxBreakPoint &p : points)
        lut.add(p);
    return lut;
}

/// Every entry the buffer of \p lut holds.
template <class T>
std::vector<T> entriesOf(const TyxLutDesc &lut)
{
    const T *p = static_cast<const T *>(lut.buffer()->data());
    return std::vector<T>(p, p + lut.buffer()->size() / sizeof(T));
}

/// The entries of a table of the types the tests build, as doubles.
inline std::vector<double> entriesAsDoubles(const TyxLutDesc &lut)
{
    const auto widen = [](const auto &values) { return std::vector<double>(values.begin(), values.end()); };
    switch (lut.dataType().code()) {
    case TyxNumericType::U8: return widen(entriesOf<uint8_t>(lut));
    case TyxNumericType::I8: return widen(entriesOf<int8_t>(lut));
    case TyxNumericType::I16: return widen(entriesOf<int16_t>(lut));
    default: return widen(entriesOf<float>(lut));
    }
}

} // namespace tyx::test
