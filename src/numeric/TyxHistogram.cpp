// Histogram of integer values and the statistics, median, percentiles and entropy derived from it.
#include <tyx/TyxHistogram.h>

#include <algorithm>
#include <cmath>
#include <istream>
#include <limits>
#include <ostream>

#include "numeric/TyxSampleLoops.h"

namespace tyx {

namespace {

// A new zeroed buffer of \p bins counts.
TyxBufferPtr newCounts(uint64_t bins)
{
    TyxBufferPtr counts(new TyxBuffer(bins * sizeof(uint64_t), true));
    if (counts->data())
        std::memset(counts->data(), 0, bins * sizeof(uint64_t));
    return counts;
}

} // namespace

void TyxHistogram::reset()
{
    m_buffer = nullptr;
    m_histogram = nullptr;
    m_cumulativeBuffer = nullptr;
    m_cumulative = nullptr;
    TyxStatistics::clear();
    m_minDataTypeValue = m_maxDataTypeValue = 0;
    m_firstBin = m_lastBin = m_modeBin = 0;
    m_peakPercent = 0.0;
    m_median = 0.0;
    m_entropy = 0.0;
}

void TyxHistogram::clear()
{
    if (m_numSamples == 0)
        return;
    reset();
}

int64_t TyxHistogram::numBins() const
{
    return m_histogram ? int64_t(m_maxDataTypeValue) - m_minDataTypeValue + 1 : 0;
}

void TyxHistogram::initialize(TyxBufferPtr counts, int a, int b)
{
    // Everything is reset, also after a histogram of only empty bins that
    // clear() would leave alone.
    reset();
    if (!counts)
        return;
    const int lo = std::min(a, b);
    const int hi = std::max(a, b);
    const uint64_t bins = uint64_t(int64_t(hi) - lo + 1);
    // Never read beyond the caller's block: a buffer that cannot hold every
    // bin is not taken.
    if (!counts->data() || counts->size() / sizeof(uint64_t) < bins)
        return;
    m_buffer = std::move(counts);
    m_buffer->setDataType(TyxDataType(TyxNumericType::U64));
    m_histogram = static_cast<const uint64_t *>(m_buffer->data());
    m_minDataTypeValue = lo;
    m_maxDataTypeValue = hi;
    computeStatistics();
}

void TyxHistogram::computeStatistics()
{
    const int64_t bins = numBins();
    int64_t first = 0;
    while (first < bins && m_histogram[first] == 0)
        ++first;
    if (first == bins)
        return; // no sample: the statistics stay empty
    m_firstBin = static_cast<int>(first);
    uint64_t n = 0;
    uint64_t peak = 0;
    double sum = 0.0;
    double squares = 0.0;
    for (int64_t index = first; index < bins; ++index) {
        const uint64_t c = m_histogram[index];
        if (c == 0)
            continue;
        const double x = static_cast<double>(m_minDataTypeValue + index);
        const double count = static_cast<double>(c);
        n += c;
        sum += count * x;
        squares += x * (count * x);
        m_lastBin = static_cast<int>(index);
        if (c > peak) {
            peak = c;
            m_modeBin = static_cast<int>(index);
        }
    }
    m_numSamples = n;
    m_sum = sum;
    m_sumOfSquares = squares;
    m_min = static_cast<double>(m_minDataTypeValue + m_firstBin);
    m_max = static_cast<double>(m_minDataTypeValue + m_lastBin);
    const double total = static_cast<double>(n);
    m_mean = sum / total;
    m_rms = std::sqrt(squares / total);
    m_variance = squares / total - m_mean * m_mean;
    m_peakPercent = static_cast<double>(peak) / total * 100.0;
    m_median = m_minDataTypeValue;
    m_entropy = 0.0;
}

double TyxHistogram::median() const
{
    if (m_median != m_minDataTypeValue || empty())
        return m_median;
    const uint64_t half = m_numSamples / 2;
    uint64_t running = 0;
    for (int index = m_firstBin; index <= m_lastBin; ++index) {
        running += m_histogram[index];
        if (running > half) {
            m_median = index;
            break;
        }
        if (running == half) {
            if (m_numSamples % 2 == 1) {
                m_median = index;
                break;
            }
            int next = index + 1;
            while (next <= m_lastBin && m_histogram[next] == 0)
                ++next;
            m_median = next <= m_lastBin ? (index + next) / 2.0 : index;
            break;
        }
    }
    return m_median;
}

double TyxHistogram::entropy() const
{
    if (m_entropy != 0.0 || empty())
        return m_entropy;
    static const double invLn2 = 1.0 / std::log(2.0);
    const double total = static_cast<double>(m_numSamples);
    double entropy = 0.0;
    for (int index = m_lastBin; index >= m_firstBin; --index) {
        const uint64_t c = m_histogram[index];
        if (c == 0)
            continue;
        const double p = static_cast<double>(c) / total;
        entropy -= std::log(p) * invLn2 * p;
    }
    m_entropy = entropy;
    return m_entropy;
}

int TyxHistogram::percentile(double p, bool skipFirst) const
{
    if (p > 1.0)
        p /= 100.0;
    if (empty() || p < 0.0 || p > 100.0)
        return static_cast<int>(m_min) - 1;
    int index = m_firstBin;
    double total = static_cast<double>(m_numSamples);
    if (skipFirst) {
        total = static_cast<double>(m_numSamples - m_histogram[m_firstBin]);
        ++index;
    }
    double share = 0.0;
    for (; index < m_lastBin; ++index) {
        share += static_cast<double>(m_histogram[index]) / total;
        if (share >= p)
            return m_minDataTypeValue + index;
    }
    return m_minDataTypeValue + std::min(index, m_lastBin);
}

const double *TyxHistogram::cumulativeHistogram() const
{
    if (m_cumulative || empty())
        return m_cumulative;
    const int64_t bins = numBins();
    TyxBufferPtr table(new TyxBuffer(uint64_t(bins) * sizeof(double), true));
    double *out = static_cast<double *>(table->data());
    if (!out)
        return nullptr;
    const double scale = 1.0 / static_cast<double>(m_numSamples);
    uint64_t running = 0;
    for (int64_t index = 0; index < bins; ++index) {
        if (index < m_firstBin) {
            out[index] = 0.0;
        } else if (index <= m_lastBin) {
            running += m_histogram[index];
            out[index] = static_cast<double>(running) * scale;
        } else {
            out[index] = 1.0;
        }
    }
    table->setDataType(TyxDataType(TyxNumericType::Double));
    m_cumulativeBuffer = table;
    m_cumulative = out;
    return m_cumulative;
}

namespace {

const wchar_t kTooWide[] = L"The samples reach beyond the values a histogram can count; "
                           L"count them through a bin width and a range.";

// Counts integer samples by value, in the runs rowAt(0) to rowAt(rows - 1).
template <class T, class RowAt>
int countIntegers(TyxHistogram &histogram, size_t rows, RowAt rowAt, TyxTextMsg *msg)
{
    int64_t lo = 0;
    int64_t hi = 0;
    if constexpr (sizeof(T) <= 2) {
        lo = std::numeric_limits<T>::min();
        hi = std::numeric_limits<T>::max();
    } else {
        T low = std::numeric_limits<T>::max();
        T high = std::numeric_limits<T>::lowest();
        for (size_t r = 0; r < rows; ++r) {
            const auto row = rowAt(r);
            const size_t n = row.size();
            for (size_t i = 0; i < n; ++i) {
                const T x = row[i];
                low = x < low ? x : low;
                high = x > high ? x : high;
            }
        }
        // Bins are numbered by 32-bit values.
        if constexpr (std::is_unsigned_v<T>) {
            if (high > T(std::numeric_limits<int32_t>::max())) {
                TYX_FILL_ERROR(msg, TyxString(kTooWide));
                return 1;
            }
        }
        lo = static_cast<int64_t>(low);
        hi = static_cast<int64_t>(high);
        if (lo < std::numeric_limits<int32_t>::min() || hi > std::numeric_limits<int32_t>::max() ||
            uint64_t(hi - lo) >= internal::kMaxBins) {
            TYX_FILL_ERROR(msg, TyxString(kTooWide));
            return 1;
        }
    }
    const uint64_t bins = uint64_t(hi - lo + 1);
    TyxBufferPtr counts = newCounts(bins);
    if (!counts->data()) {
        TYX_FILL_ERROR(msg, TyxString(L"No memory for the counts."));
        return 1;
    }
    internal::countRows<T>(rows, rowAt, bins, static_cast<uint64_t *>(counts->data()),
                           [lo](T x) { return static_cast<size_t>(static_cast<int64_t>(x) - lo); });
    histogram.initialize(counts, static_cast<int>(lo), static_cast<int>(hi));
    return 0;
}

// Checks the bin width and the range and makes the zeroed counts; null with
// a message when they do not make a histogram.
TyxBufferPtr binCounts(double binWidth, double min, double max, uint64_t &bins, TyxTextMsg *msg)
{
    if (!(binWidth > 0.0) || std::isinf(binWidth)) {
        TYX_FILL_ERROR(msg,
                       L"The bin width must be above 0 and finite, not " + std::to_wstring(binWidth) + L".");
        return TyxBufferPtr();
    }
    if (!std::isfinite(min) || !std::isfinite(max) || min > max) {
        TYX_FILL_ERROR(msg, L"The range from " + std::to_wstring(min) + L" to " + std::to_wstring(max) +
                                L" is not a range of numbers from low to high.");
        return TyxBufferPtr();
    }
    const double span = std::ceil((max - min) / binWidth);
    if (!(span <= double(internal::kMaxBins))) {
        TYX_FILL_ERROR(msg, TyxString(L"The range holds more than 16777216 bins of that width."));
        return TyxBufferPtr();
    }
    bins = std::max<uint64_t>(1, static_cast<uint64_t>(span));
    TyxBufferPtr counts = newCounts(bins);
    if (!counts->data()) {
        TYX_FILL_ERROR(msg, TyxString(L"No memory for the counts."));
        return TyxBufferPtr();
    }
    return counts;
}

// Counts any real samples into \p bins bins of \p binWidth from \p min.
template <class T, class RowAt>
void countIntoBins(size_t rows, RowAt rowAt, uint64_t bins, uint64_t *out, double binWidth, double min,
                   double max)
{
    const size_t last = static_cast<size_t>(bins - 1);
    internal::countRows<T>(rows, rowAt, static_cast<size_t>(bins), out, [=](T sample) -> size_t {
        const double x = static_cast<double>(sample);
        // NaN fails both tests and is left out with the samples outside.
        if (!(x >= min && x <= max))
            return static_cast<size_t>(bins);
        return std::min(static_cast<size_t>((x - min) / binWidth), last);
    });
}

} // namespace

int TyxHistogram::fill(const TyxEqnTile &tile, TyxTextMsg *msg)
{
    reset();
    if (!internal::readableTile(tile, msg))
        return 1;
    if (!tile.dataType().isInteger()) {
        TYX_FILL_ERROR(msg, L"Samples of type " + tile.dataType().toString() +
                                L" are counted through a bin width and a range.");
        return 1;
    }
    return internal::withSampleType(tile.dataType().code(), [&](auto *type) -> int {
        using T = std::remove_pointer_t<decltype(type)>;
        if constexpr (std::is_integral_v<T>) {
            const std::span<const T> samples = tile.samples<T>();
            return countIntegers<T>(
                *this, 1, [samples](size_t) { return samples; }, msg);
        } else {
            return 1;
        }
    });
}

int TyxHistogram::fill(const TyxImageTile &tile, unsigned int band, TyxTextMsg *msg)
{
    reset();
    if (!internal::readableBand(tile, band, msg))
        return 1;
    if (!tile.dataType().isInteger()) {
        TYX_FILL_ERROR(msg, L"Samples of type " + tile.dataType().toString() +
                                L" are counted through a bin width and a range.");
        return 1;
    }
    return internal::withSampleType(tile.dataType().code(), [&](auto *type) -> int {
        using T = std::remove_pointer_t<decltype(type)>;
        if constexpr (std::is_integral_v<T>) {
            return countIntegers<T>(
                *this, tile.height(),
                [&tile, band](size_t y) {
                    return internal::bandRow<T>(tile, band, static_cast<unsigned>(y));
                },
                msg);
        } else {
            return 1;
        }
    });
}

int TyxHistogram::fill(const TyxEqnTile &tile, double binWidth, double min, double max, TyxTextMsg *msg)
{
    reset();
    uint64_t bins = 0;
    TyxBufferPtr counts = binCounts(binWidth, min, max, bins, msg);
    if (!counts || !internal::readableTile(tile, msg))
        return 1;
    uint64_t *out = static_cast<uint64_t *>(counts->data());
    internal::withSampleType(tile.dataType().code(), [&](auto *type) {
        using T = std::remove_pointer_t<decltype(type)>;
        const std::span<const T> samples = tile.samples<T>();
        countIntoBins<T>(
            1, [samples](size_t) { return samples; }, bins, out, binWidth, min, max);
    });
    initialize(counts, 0, static_cast<int>(bins - 1));
    return 0;
}

int TyxHistogram::fill(const TyxImageTile &tile, unsigned int band, double binWidth, double min, double max,
                       TyxTextMsg *msg)
{
    reset();
    uint64_t bins = 0;
    TyxBufferPtr counts = binCounts(binWidth, min, max, bins, msg);
    if (!counts || !internal::readableBand(tile, band, msg))
        return 1;
    uint64_t *out = static_cast<uint64_t *>(counts->data());
    internal::withSampleType(tile.dataType().code(), [&](auto *type) {
        using T = std::remove_pointer_t<decltype(type)>;
        countIntoBins<T>(
            tile.height(),
            [&tile, band](size_t y) { return internal::bandRow<T>(tile, band, static_cast<unsigned>(y)); },
            bins, out, binWidth, min, max);
    });
    initialize(counts, 0, static_cast<int>(bins - 1));
    return 0;
}

bool TyxHistogram::operator==(const TyxHistogram &other) const
{
    if (empty() || other.empty())
        return empty() && other.empty();
    return m_minDataTypeValue == other.m_minDataTypeValue && m_maxDataTypeValue == other.m_maxDataTypeValue &&
           *m_buffer == *other.m_buffer;
}

std::ostream &operator<<(std::ostream &os, const TyxHistogram &)
{
    os.setstate(std::ios::failbit);
    return os;
}

std::wostream &operator<<(std::wostream &os, const TyxHistogram &)
{
    os.setstate(std::ios::failbit);
    return os;
}

std::istream &operator>>(std::istream &is, TyxHistogram &)
{
    is.setstate(std::ios::failbit);
    return is;
}

std::wistream &operator>>(std::wistream &is, TyxHistogram &)
{
    is.setstate(std::ios::failbit);
    return is;
}

} // namespace tyx
