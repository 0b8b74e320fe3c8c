// Statistics of a sample set from its count, extremes and two sums.
#include <tyx/TyxStatistics.h>

#include <algorithm>
#include <cmath>
#include <istream>
#include <ostream>

#include "numeric/TyxSampleLoops.h"

namespace tyx {

TyxStatistics::TyxStatistics(uint64_t numSamples, double min, double max, double sum, double sumOfSquares)
{
    initialize(numSamples, min, max, sum, sumOfSquares);
}

int TyxStatistics::initialize(uint64_t numSamples, double min, double max, double sum, double sumOfSquares)
{
    TyxStatistics::clear();
    if (numSamples == 0 || !(sumOfSquares >= 0.0))
        return 1;
    m_numSamples = numSamples;
    m_min = min;
    m_max = max;
    m_sum = sum;
    m_sumOfSquares = sumOfSquares;
    const double n = static_cast<double>(numSamples);
    m_mean = sum / n;
    m_rms = std::sqrt(sumOfSquares / n);
    m_variance = sumOfSquares / n - m_mean * m_mean;
    // Rounding can leave a small negative value where the true one is 0.
    if (!(m_variance >= 0.0))
        m_variance = 0.0;
    return 0;
}

void TyxStatistics::clear()
{
    m_numSamples = 0;
    m_min = m_max = m_sum = m_sumOfSquares = 0.0;
    m_mean = m_variance = m_rms = 0.0;
}

void TyxStatistics::merge(const TyxStatistics &other)
{
    if (other.empty())
        return;
    if (empty()) {
        initialize(other.m_numSamples, other.m_min, other.m_max, other.m_sum, other.m_sumOfSquares);
        return;
    }
    initialize(m_numSamples + other.m_numSamples, std::min(m_min, other.m_min), std::max(m_max, other.m_max),
               m_sum + other.m_sum, m_sumOfSquares + other.m_sumOfSquares);
}

int TyxStatistics::fill(const TyxEqnTile &tile, TyxTextMsg *msg)
{
    TyxStatistics::clear();
    if (!internal::readableTile(tile, msg))
        return 1;
    const internal::SampleSums sums = internal::withSampleType(tile.dataType().code(), [&tile](auto *type) {
        using T = std::remove_pointer_t<decltype(type)>;
        return internal::sumSamples<T>(tile.samples<T>());
    });
    if (sums.count == 0) {
        TYX_FILL_ERROR(msg, TyxString(L"The tile holds no samples that are numbers."));
        return 1;
    }
    return initialize(sums.count, sums.min, sums.max, sums.sum, sums.sumOfSquares);
}

int TyxStatistics::fill(const TyxImageTile &tile, unsigned int band, TyxTextMsg *msg)
{
    TyxStatistics::clear();
    if (!internal::readableBand(tile, band, msg))
        return 1;
    const internal::SampleSums sums =
        internal::withSampleType(tile.dataType().code(), [&tile, band](auto *type) {
            using T = std::remove_pointer_t<decltype(type)>;
            internal::SampleSums all;
            for (unsigned int y = 0; y < tile.height(); ++y)
                internal::mergeSums(all, internal::sumSamples<T>(internal::bandRow<T>(tile, band, y)));
            return all;
        });
    if (sums.count == 0) {
        TYX_FILL_ERROR(msg, TyxString(L"The band holds no samples that are numbers."));
        return 1;
    }
    return initialize(sums.count, sums.min, sums.max, sums.sum, sums.sumOfSquares);
}

bool TyxStatistics::operator==(const TyxStatistics &other) const
{
    return m_min == other.m_min && m_max == other.m_max && m_sum == other.m_sum &&
           m_sumOfSquares == other.m_sumOfSquares && m_numSamples == other.m_numSamples;
}

std::ostream &operator<<(std::ostream &os, const TyxStatistics &)
{
    os.setstate(std::ios::failbit);
    return os;
}

std::wostream &operator<<(std::wostream &os, const TyxStatistics &)
{
    os.setstate(std::ios::failbit);
    return os;
}

std::istream &operator>>(std::istream &is, TyxStatistics &)
{
    is.setstate(std::ios::failbit);
    return is;
}

std::wistream &operator>>(std::wistream &is, TyxStatistics &)
{
    is.setstate(std::ios::failbit);
    return is;
}

} // namespace tyx
