// Histogram of integer values with mode, median, percentiles, entropy and a cumulative table.
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxStatistics.h>

namespace tyx {

class TyxEqnTile;
class TyxImageTile;
class TyxTextMsg;

/// A table of counts, one unsigned 64-bit count per integer value from
/// minDataTypeValue() to maxDataTypeValue(), and the statistics derived from
/// it. The counts are shared with the caller; changing them afterwards does
/// not update the derived values. median(), entropy() and
/// cumulativeHistogram() store their results in the object: a histogram
/// shared between threads needs a lock of the caller's around them.
///
/// The library's addition: the fill() functions count the samples of a
/// TyxEqnTile, or of one band of a TyxImageTile, themselves, with a loop
/// per sample type; integer samples by
/// their values, any real samples through a bin width and a range the
/// caller gives.
class TYX_EXPORT TyxHistogram : public TyxStatistics {
public:
    TyxHistogram() = default;
    /// Shares both buffers.
    TyxHistogram(const TyxHistogram &other) = default;
    TyxHistogram &operator=(const TyxHistogram &other) = default;

    /// Shares \p counts, labels it U64 and derives the statistics; the bins
    /// are the values from the smaller to the larger of \p a and \p b. A null
    /// \p counts leaves the histogram empty, and so does a buffer without a
    /// block or too small for the bins (it is not read beyond its end).
    void initialize(TyxBufferPtr counts, int a, int b);
    /// Drops the buffers and sets every field to 0; an empty histogram is
    /// left as it is.
    void clear() override;

    /// Counts the integer samples of \p tile (I8 to U64) by value. 8- and
    /// 16-bit types get a bin for every value of the type; wider types a bin
    /// for every value from their smallest to their largest sample, which
    /// must lie in the 32-bit signed range and span at most 2^24 bins.
    /// Answers 0; 1 with a message in \p msg (when not null) and the
    /// histogram empty when the type is not an integer type, the step is not
    /// 1, the buffer is too small, the tile holds no sample or the range is
    /// too wide.
    int fill(const TyxEqnTile &tile, TyxTextMsg *msg = nullptr);
    /// Counts the real samples of \p tile (I8 to Double) into bins of
    /// \p binWidth from \p min: bin i holds [min + i * binWidth,
    /// min + (i + 1) * binWidth), and the last bin also takes \p max.
    /// Samples outside [min, max] and NaN samples are not counted. The
    /// histogram's values are the bin indices, from 0. Answers 0; 1 with a
    /// message in \p msg (when not null) and the histogram empty for a bin
    /// width not above 0, a range with min above max, a NaN or infinite
    /// bound, more than 2^24 bins, a complex type, a step other than 1 or a
    /// buffer too small.
    int fill(const TyxEqnTile &tile, double binWidth, double min, double max, TyxTextMsg *msg = nullptr);
    /// The two counts above for band \p band of \p tile, in any layout. The
    /// same answers and messages, and 1 with a message also for a band the
    /// tile does not have, an invalid layout, or a tile without memory for
    /// all its samples.
    int fill(const TyxImageTile &tile, unsigned int band, TyxTextMsg *msg = nullptr);
    int fill(const TyxImageTile &tile, unsigned int band, double binWidth, double min, double max,
             TyxTextMsg *msg = nullptr);

    /// The counts, one per bin; null while empty.
    const uint64_t *histogram() const { return m_histogram; }
    /// The buffer of counts.
    const TyxBufferPtr &buffer() const { return m_buffer; }
    /// Per bin the share of the samples in it and all bins before, made on
    /// first use: 0 before the first non-empty bin, exactly 1.0 after the
    /// last one. Null for an empty histogram.
    const double *cumulativeHistogram() const;
    int minDataTypeValue() const { return m_minDataTypeValue; }
    int maxDataTypeValue() const { return m_maxDataTypeValue; }
    /// The number of bins.
    int64_t numBins() const;
    /// Indices of the first and last non-empty bins.
    int firstBin() const { return m_firstBin; }
    int lastBin() const { return m_lastBin; }
    /// The value of the most populated bin; the first one of a tie.
    int mode() const { return m_modeBin + m_minDataTypeValue; }
    /// The mode's count in per cent of all samples.
    double peakPercent() const { return m_peakPercent; }
    /// The median as a bin index (minDataTypeValue() not added, unlike
    /// mode() and percentile()). Where the samples split evenly between two
    /// bins it is the mean of their indices.
    double median() const;
    /// The entropy of the counts, in bits.
    double entropy() const;
    /// The value at which the share of samples reaches \p p: a fraction, or
    /// per cent when above 1. With \p skipFirst the first non-empty bin is
    /// left out as background. An empty histogram or \p p out of range gives
    /// min() - 1.
    int percentile(double p, bool skipFirst) const;

    /// Two empty histograms are equal; filled ones need the same value range
    /// and equal counts.
    bool operator==(const TyxHistogram &other) const;
    bool operator!=(const TyxHistogram &other) const { return !(*this == other); }

private:
    void reset();
    void computeStatistics();

    TyxBufferPtr m_buffer;
    const uint64_t *m_histogram = nullptr;
    int m_minDataTypeValue = 0;
    int m_maxDataTypeValue = 0;
    int m_firstBin = 0;
    int m_lastBin = 0;
    int m_modeBin = 0;
    double m_peakPercent = 0.0;
    mutable TyxBufferPtr m_cumulativeBuffer;
    mutable const double *m_cumulative = nullptr;
    mutable double m_median = 0.0;
    mutable double m_entropy = 0.0;
};

/// Histograms have no text form: each of these sets the failbit and does
/// nothing else.
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxHistogram &histogram);
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxHistogram &histogram);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxHistogram &histogram);
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxHistogram &histogram);

} // namespace tyx
