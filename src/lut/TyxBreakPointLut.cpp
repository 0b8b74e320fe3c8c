// Break-point look-up table: limits, checks and the cached dense table.
#include <tyx/TyxBreakPointLut.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "core/TyxPost.h"
#include "image/TyxSampleTypes.h"
#include "lut/TyxLutBuild.h"

namespace tyx {

namespace {

/// Truncates toward zero into 64 bits, saturating where the value does not
/// fit (the 64-bit and float types' limits), with NaN as 0.
int64_t truncInt64(double d)
{
    if (std::isnan(d))
        return 0;
    if (d >= 9.2233720368547758e18)
        return std::numeric_limits<int64_t>::max();
    if (d <= -9.2233720368547758e18)
        return std::numeric_limits<int64_t>::min();
    return static_cast<int64_t>(d);
}

int32_t saturateInt32(double d)
{
    return int32_t(std::clamp(truncInt64(d), int64_t(std::numeric_limits<int32_t>::min()),
                              int64_t(std::numeric_limits<int32_t>::max())));
}

/// The value range a table spans for \p type: the logical range of an integer
/// type, truncated, and -32768 to 32767 for the others.
void typeLimits(const TyxDataType &type, double &lo, double &hi)
{
    if (type.isInteger()) {
        lo = std::trunc(type.logicalMinValue());
        hi = std::trunc(type.logicalMaxValue());
    } else {
        lo = -32768.0;
        hi = 32767.0;
    }
}

/// A limit or a byte count as the messages show it: a whole number.
TyxString wholeText(double d)
{
    std::wostringstream os;
    if (std::fabs(d) < 9.2e18)
        os << static_cast<int64_t>(d);
    else
        os.precision(17), os << d;
    return os.str();
}

TyxString valueText(double d)
{
    std::wostringstream os;
    os << d;
    return os.str();
}

TyxString typeText(const TyxDataType &type)
{
    std::wostringstream os;
    os << type;
    return os.str();
}

void postLimit(const wchar_t *which, const TyxString &value, const wchar_t *relation, const wchar_t *bound,
               double limit)
{
    TYX_POST_ERROR(TyxString(which) + L" value (" + value + L") for all bands is " + relation + L" than " +
                   bound + L" (" + wholeText(limit) + L") for bit depth.");
}

template <class T>
void fillAllBands(void *data, const std::vector<TyxBreakPoint> &sorted, uint64_t bands, int64_t minIn,
                  int64_t maxIn)
{
    T *dst = static_cast<T *>(data);
    const uint64_t entries = uint64_t(maxIn - minIn) + 1;
    auto first = sorted.begin();
    for (uint64_t b = 0; b < bands; ++b) {
        auto last = std::find_if(first, sorted.end(), [b](const TyxBreakPoint &p) { return p.band() != b; });
        internal::fillLutBand(dst + b * entries, &*first, size_t(last - first), minIn, maxIn);
        first = last;
    }
}

} // namespace

TyxBreakPointLut::TyxBreakPointLut(const TyxDataType &outputDataType) : m_outputDataType(outputDataType) {}

TyxBreakPointLut::TyxBreakPointLut(const TyxBreakPointLut &other)
    : TyxRefCounted(), m_outputDataType(other.m_outputDataType), m_points(other.m_points)
{
}

TyxBreakPointLut TyxBreakPointLut::operator=(const TyxBreakPointLut &other)
{
    if (this != &other) {
        m_lut = nullptr;
        m_inputDataType = TyxDataType();
        m_outputDataType = other.m_outputDataType;
        m_points = other.m_points;
    }
    return *this;
}

TyxBreakPointLut::~TyxBreakPointLut() = default;

void TyxBreakPointLut::add(const TyxBreakPoint &point)
{
    m_points.push_back(point);
    m_lut = nullptr;
}

void TyxBreakPointLut::clear()
{
    m_points.clear();
    m_lut = nullptr;
    m_inputDataType = TyxDataType();
}

void TyxBreakPointLut::get(std::vector<TyxBreakPoint> &result, unsigned band) const
{
    result.clear();
    if (m_points.empty()) {
        if (!m_lut)
            return;
        // Input values wrap to 32 bits as the integer conversion does.
        result.emplace_back(int32_t(truncInt64(m_inputDataType.logicalMinValue())),
                            double(truncInt64(m_outputDataType.logicalMinValue())), band);
        result.emplace_back(int32_t(truncInt64(m_inputDataType.logicalMaxValue())),
                            double(truncInt64(m_outputDataType.logicalMaxValue())), band);
        return;
    }
    for (const TyxBreakPoint &p : m_points)
        if (p.band() == band)
            result.push_back(p);
    std::sort(result.begin(), result.end());
}

void TyxBreakPointLut::setOutputDataType(const TyxDataType &type)
{
    if (!type.isValid() || type == m_outputDataType)
        return;
    m_outputDataType = type;
    m_lut = nullptr;
}

unsigned TyxBreakPointLut::numBands() const
{
    if (m_lut)
        return m_lut->numBands();
    if (m_points.empty())
        return 0;
    const auto [lo, hi] = std::minmax_element(
        m_points.begin(), m_points.end(),
        [](const TyxBreakPoint &a, const TyxBreakPoint &b) { return a.band() < b.band(); });
    return hi->band() - lo->band() + 1;
}

const TyxLutDescPtr &TyxBreakPointLut::lut(const TyxDataType &input)
{
    if (!input.isValid() || !m_outputDataType.isValid()) {
        m_lut = nullptr;
        if (!input.isValid())
            TYX_POST_ERROR(L"Input data type (" + typeText(input) + L") is not valid.");
        else
            TYX_POST_ERROR(L"Output data type (" + typeText(m_outputDataType) + L") is not valid.");
        return m_lut;
    }
    if (input != m_inputDataType)
        m_lut = nullptr;
    if (m_lut)
        return m_lut;

    double minIn = 0.0, maxIn = 0.0, minOut = 0.0, maxOut = 0.0;
    typeLimits(input, minIn, maxIn);
    typeLimits(m_outputDataType, minOut, maxOut);

    std::vector<TyxBreakPoint> sorted = m_points;
    if (sorted.empty()) {
        // The limits of 32-bit unsigned and 64-bit inputs do not fit a point's
        // input value; they saturate, and the table's size then refuses them.
        sorted.emplace_back(saturateInt32(minIn), minOut, 0);
        sorted.emplace_back(saturateInt32(maxIn), maxOut, 0);
    }
    m_inputDataType = input;

    int32_t lowIn = sorted.front().in(), highIn = lowIn;
    double lowOut = sorted.front().out(), highOut = lowOut;
    uint32_t lowBand = sorted.front().band(), highBand = lowBand;
    bool outIsNaN = false;
    for (const TyxBreakPoint &p : sorted) {
        lowIn = std::min(lowIn, p.in());
        highIn = std::max(highIn, p.in());
        lowOut = std::min(lowOut, p.out());
        highOut = std::max(highOut, p.out());
        lowBand = std::min(lowBand, p.band());
        highBand = std::max(highBand, p.band());
        outIsNaN = outIsNaN || std::isnan(p.out());
    }
    if (lowIn < minIn) {
        postLimit(L"Minimum input", std::to_wstring(lowIn), L"smaller", L"minimum", minIn);
        return m_lut;
    }
    if (highIn > maxIn) {
        postLimit(L"Maximum input", std::to_wstring(highIn), L"larger", L"maximum", maxIn);
        return m_lut;
    }
    // A NaN has no integer entry: converting it would be undefined, so it
    // fails the lower limit of an integer output type.
    const bool integerOut = m_outputDataType.isInteger();
    if (lowOut < minOut || (outIsNaN && integerOut)) {
        postLimit(L"Minimum output", valueText(outIsNaN && integerOut ? std::nan("") : lowOut), L"smaller",
                  L"minimum", minOut);
        return m_lut;
    }
    if (highOut > maxOut) {
        postLimit(L"Maximum output", valueText(highOut), L"larger", L"maximum", maxOut);
        return m_lut;
    }
    if (lowBand != 0) {
        TYX_POST_ERROR(L"Band numbers must start at zero and cannot be negative.");
        return m_lut;
    }

    const uint64_t bands = uint64_t(highBand) + 1;
    const double entries = maxIn - minIn + 1.0;
    const double bytes = double(bands) * entries * double(m_outputDataType.size());
    // A band's entry count is held in 32 bits: a range of 2^32 values or more
    // (full 32-bit and 64-bit inputs) is refused as an allocation failure
    // rather than wrapped.
    if (entries > 4294967295.0 || bytes >= 1.8446744073709552e19) {
        TYX_POST_ERROR(L"Could not allocate " + wholeText(bytes) + L" for LUT data.");
        return m_lut;
    }

    // The per-band tests run before the allocation, so that points on a
    // stray high band fail without a table being allocated for it.
    std::sort(sorted.begin(), sorted.end());
    const bool servedType = internal::visitSampleCode<internal::SampleSet::Narrow>(
        m_outputDataType.code(), false, [](auto) { return true; });
    {
        auto first = sorted.begin();
        for (uint64_t b = 0; b < bands; ++b) {
            auto last =
                std::find_if(first, sorted.end(), [b](const TyxBreakPoint &p) { return p.band() != b; });
            if (last - first < 2) {
                TYX_POST_ERROR(L"Band " + std::to_wstring(b) + L" does not have at least two break points.");
                return m_lut;
            }
            if (!servedType) {
                TYX_POST_ERROR(L"Invalid data type");
                return m_lut;
            }
            first = last;
        }
    }

    const uint64_t byteCount = uint64_t(bytes);
    TyxBufferPtr buffer(new TyxBuffer(byteCount, true));
    if (!buffer->isValid() || !buffer->data()) {
        TYX_POST_ERROR(L"Could not allocate " + std::to_wstring(byteCount) + L" for LUT data.");
        return m_lut;
    }
    buffer->setDataType(m_outputDataType);

    const int64_t lo = int64_t(minIn), hi = int64_t(maxIn);
    internal::visitSampleCode<internal::SampleSet::Narrow>(m_outputDataType.code(), 0, [&](auto tag) {
        fillAllBands<typename decltype(tag)::type>(buffer->data(), sorted, bands, lo, hi);
        return 0;
    });
    m_lut = new TyxLutDesc(buffer, m_outputDataType, unsigned(entries), lo, unsigned(bands), highBand == 0);
    return m_lut;
}

} // namespace tyx
