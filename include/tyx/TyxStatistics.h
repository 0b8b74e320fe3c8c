// Summary of a sample set: count, extremes, the two sums and what derives from them.
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxGlobal.h>

namespace tyx {

class TyxEqnTile;
class TyxImageTile;
class TyxTextMsg;

/// Count, extremes, sum and sum of squares of a sample set, with the mean,
/// variance and root mean square derived from them.
///
/// The variance is sumOfSquares / n - mean * mean, the only form the stored
/// sums allow. For data whose spread is small beside its offset this loses
/// the digits the subtraction cancels (values near 1e9 keep no digit of a
/// spread near 1); a negative or NaN result is clamped to 0.
///
/// The library's addition: fill() counts the samples of a TyxEqnTile, or of
/// one band of a TyxImageTile, itself with a loop per sample type.
class TYX_EXPORT TyxStatistics {
public:
    /// The empty set.
    TyxStatistics() = default;
    /// As initialize(), without the answer.
    TyxStatistics(uint64_t numSamples, double min, double max, double sum, double sumOfSquares);
    virtual ~TyxStatistics() = default;
    TyxStatistics(const TyxStatistics &other) = default;
    TyxStatistics &operator=(const TyxStatistics &other) = default;

    /// Takes the given values and derives mean, variance and rms. Answers 1
    /// and stays empty when \p numSamples is 0 or \p sumOfSquares is not at
    /// least 0 (a NaN included); 0 otherwise.
    int initialize(uint64_t numSamples, double min, double max, double sum, double sumOfSquares);
    /// Sets every field to 0.
    virtual void clear();

    /// Joins the set of \p other to this one: counts and sums add, the
    /// extremes widen, and the derived values follow. An empty \p other
    /// changes nothing.
    void merge(const TyxStatistics &other);

    /// The statistics of the samples of \p tile, any real sample type (I8 to
    /// Double). NaN samples are left out. Integer samples up to 16 bits are
    /// summed exactly in integers; wider ones and floating-point samples in
    /// double. Answers 0; 1 with a message in \p msg (when not null) and the
    /// set empty for a complex or invalid type, a step other than 1, a
    /// buffer too small for the samples, or no sample to count.
    int fill(const TyxEqnTile &tile, TyxTextMsg *msg = nullptr);
    /// The same for band \p band of \p tile, in any layout. Integer samples
    /// up to 16 bits are summed exactly row by row. Answers 1 with a message
    /// and the set empty also for a band the tile does not have, an invalid
    /// layout, or a tile without memory for all its samples.
    int fill(const TyxImageTile &tile, unsigned int band, TyxTextMsg *msg = nullptr);

    bool empty() const { return m_numSamples == 0; }
    bool isEmpty() const { return m_numSamples == 0; }
    uint64_t numSamples() const { return m_numSamples; }
    double min() const { return m_min; }
    double max() const { return m_max; }
    double sum() const { return m_sum; }
    double sumOfSquares() const { return m_sumOfSquares; }
    double mean() const { return m_mean; }
    double variance() const { return m_variance; }
    double rms() const { return m_rms; }

    /// Compares count, extremes and the two sums; the derived values follow.
    bool operator==(const TyxStatistics &other) const;
    bool operator!=(const TyxStatistics &other) const { return !(*this == other); }

protected:
    uint64_t m_numSamples = 0;
    double m_min = 0.0;
    double m_max = 0.0;
    double m_sum = 0.0;
    double m_sumOfSquares = 0.0;
    double m_mean = 0.0;
    double m_variance = 0.0;
    double m_rms = 0.0;
};

/// Statistics have no text form: each of these sets the failbit and does
/// nothing else.
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxStatistics &stats);
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxStatistics &stats);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxStatistics &stats);
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxStatistics &stats);

} // namespace tyx
