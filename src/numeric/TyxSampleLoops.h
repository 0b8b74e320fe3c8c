// Typed loops that count and sum the samples of a tile, one instance per sample type.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>
#include <vector>

#include <tyx/TyxEqnTile.h>
#include <tyx/TyxImageTile.h>
#include <tyx/TyxNumericType.h>
#include <tyx/TyxTextMsg.h>

#include "core/TyxPost.h"
#include "image/TyxSampleTypes.h"

namespace tyx::internal {

/// The most bins a counting call makes: 2^24 counts, 128 MiB.
constexpr uint64_t kMaxBins = uint64_t(1) << 24;

/// Whether the samples of \p tile can be read as a span: a real or integer
/// type, step 1, a block large enough. Fills \p msg with the reason when not.
inline bool readableTile(const TyxEqnTile &tile, TyxTextMsg *msg)
{
    const TyxDataType &type = tile.dataType();
    if (!type.isValid() || type.isComplex()) {
        TYX_FILL_ERROR(msg, L"The tile's samples are not real numbers (" + type.toString() + L").");
        return false;
    }
    if (tile.size() == 0) {
        TYX_FILL_ERROR(msg, TyxString(L"The tile holds no samples."));
        return false;
    }
    if (tile.step() != 1) {
        TYX_FILL_ERROR(msg,
                       L"The tile's step is " + std::to_wstring(tile.step()) + L"; only step 1 is counted.");
        return false;
    }
    const TyxBufferConstPtr buffer = tile.buffer();
    if (!buffer || !buffer->data() || buffer->size() / type.size() < tile.size()) {
        TYX_FILL_ERROR(msg, TyxString(L"The tile's buffer is too small for its samples."));
        return false;
    }
    return true;
}

/// Whether band \p band of \p tile can be read row by row: a real or
/// integer type, a valid layout, the band present, memory for all samples.
/// Fills \p msg with the reason when not.
inline bool readableBand(const TyxImageTile &tile, unsigned int band, TyxTextMsg *msg)
{
    const TyxDataType &type = tile.dataType();
    if (!type.isValid() || type.isComplex()) {
        TYX_FILL_ERROR(msg, L"The tile's samples are not real numbers (" + type.toString() + L").");
        return false;
    }
    if (tile.width() == 0 || tile.height() == 0 || tile.numBands() == 0) {
        TYX_FILL_ERROR(msg, TyxString(L"The tile holds no samples."));
        return false;
    }
    if (band >= tile.numBands()) {
        TYX_FILL_ERROR(msg, L"The tile has " + std::to_wstring(tile.numBands()) + L" bands; band " +
                                std::to_wstring(band) + L" does not exist.");
        return false;
    }
    if (tile.pixelStrideSamples() == 0) {
        TYX_FILL_ERROR(msg, TyxString(L"The tile's layout is not valid."));
        return false;
    }
    const TyxBufferConstPtr buffer = tile.buffer();
    if (!buffer || !buffer->data() || buffer->size() < tile.numBytes()) {
        TYX_FILL_ERROR(msg, TyxString(L"The tile's buffer is too small for its samples."));
        return false;
    }
    return true;
}

/// Every \p stride-th sample from \p data, \p count of them: one band of
/// one row of an image tile.
template <class T>
struct StridedSamples {
    const T *data = nullptr;
    size_t count = 0;
    size_t stride = 1;
    size_t size() const { return count; }
    T operator[](size_t i) const { return data[i * stride]; }
};

/// Row \p y of band \p band of a tile that readableBand() accepted.
template <class T>
StridedSamples<T> bandRow(const TyxImageTile &tile, unsigned int band, unsigned int y)
{
    const T *row = tile.ptrAt<T>(0, y, band);
    return StridedSamples<T>{row, row ? size_t(tile.width()) : 0, size_t(tile.pixelStrideSamples())};
}

/// Calls \p body with a null pointer of the C++ type of \p code (real and
/// integer types); the one type switch of a counting call. Any other code
/// gives a default result without calling \p body: callers check the type
/// first.
template <class Body>
decltype(auto) withSampleType(TyxNumericType::Code code, Body &&body)
{
    using R = decltype(body(static_cast<double *>(nullptr)));
    const auto call = [&body](auto tag) -> R {
        return body(static_cast<typename decltype(tag)::type *>(nullptr));
    };
    if constexpr (std::is_void_v<R>) {
        visitSampleCode<SampleSet::Real>(code, false, [&call](auto tag) {
            call(tag);
            return true;
        });
    } else {
        return visitSampleCode<SampleSet::Real>(code, R{}, call);
    }
}

/// Count, extremes and the two sums of a run of samples.
struct SampleSums {
    uint64_t count = 0;
    double min = 0.0;
    double max = 0.0;
    double sum = 0.0;
    double sumOfSquares = 0.0;
};

/// Joins the sums of another run of samples to \p into.
inline void mergeSums(SampleSums &into, const SampleSums &run)
{
    if (run.count == 0)
        return;
    if (into.count == 0) {
        into = run;
        return;
    }
    into.count += run.count;
    into.min = std::min(into.min, run.min);
    into.max = std::max(into.max, run.max);
    into.sum += run.sum;
    into.sumOfSquares += run.sumOfSquares;
}

/// Integers up to 16 bits: sums and squares exact in 64-bit integers over
/// blocks short enough not to overflow, then added up in double, which is
/// exact while the totals stay below 2^53.
template <class T, class View = std::span<const T>>
requires(std::is_integral_v<T> && sizeof(T) <= 2) SampleSums sumSamples(const View &samples)
{
    constexpr size_t kBlock = size_t(1) << 24;
    SampleSums sums;
    T lo = std::numeric_limits<T>::max();
    T hi = std::numeric_limits<T>::lowest();
    for (size_t start = 0; start < samples.size(); start += kBlock) {
        const size_t end = std::min(samples.size(), start + kBlock);
        int64_t sum = 0;
        uint64_t squares = 0;
        for (size_t i = start; i < end; ++i) {
            const T x = samples[i];
            lo = x < lo ? x : lo;
            hi = x > hi ? x : hi;
            sum += x;
            squares += static_cast<uint64_t>(static_cast<int64_t>(x) * x);
        }
        sums.sum += static_cast<double>(sum);
        sums.sumOfSquares += static_cast<double>(squares);
    }
    sums.count = samples.size();
    sums.min = lo;
    sums.max = hi;
    return sums;
}

/// Wider integers and floating-point samples: four running sums in double,
/// which shortens the dependency chain and the rounding error alike. NaN
/// samples are left out.
template <class T, class View = std::span<const T>>
requires(!std::is_integral_v<T> || sizeof(T) > 2) SampleSums sumSamples(const View &samples)
{
    double sum[4] = {}, squares[4] = {};
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    uint64_t nans = 0;
    const size_t n = samples.size();
    const size_t n4 = n - n % 4;
    auto add = [&](size_t lane, T sample) {
        const double x = static_cast<double>(sample);
        if constexpr (std::is_floating_point_v<T>) {
            const bool isNan = x != x;
            nans += isNan;
            const double v = isNan ? 0.0 : x;
            sum[lane] += v;
            squares[lane] += v * v;
        } else {
            sum[lane] += x;
            squares[lane] += x * x;
        }
        lo = x < lo ? x : lo;
        hi = x > hi ? x : hi;
    };
    for (size_t i = 0; i < n4; i += 4) {
        add(0, samples[i]);
        add(1, samples[i + 1]);
        add(2, samples[i + 2]);
        add(3, samples[i + 3]);
    }
    for (size_t i = n4; i < n; ++i)
        add(i - n4, samples[i]);
    SampleSums sums;
    sums.count = n - nans;
    sums.min = lo;
    sums.max = hi;
    sums.sum = (sum[0] + sum[1]) + (sum[2] + sum[3]);
    sums.sumOfSquares = (squares[0] + squares[1]) + (squares[2] + squares[3]);
    return sums;
}

/// Counts the samples of \p rows runs, rowAt(r) giving run r (a span or a
/// StridedSamples), into \p counts by \p binOf, which answers a bin below
/// \p bins or \p bins itself for a sample to leave out. Up to 65536 bins the
/// counting runs in four 32-bit partial tables taken in turn, so that runs of
/// equal samples do not wait on their own previous store; the tables are
/// added up before any of them can overflow.
template <class T, class RowAt, class BinOf>
void countRows(size_t rows, RowAt rowAt, size_t bins, uint64_t *counts, BinOf binOf)
{
    if (bins > 65536) {
        for (size_t r = 0; r < rows; ++r) {
            const auto row = rowAt(r);
            const size_t n = row.size();
            for (size_t i = 0; i < n; ++i) {
                const size_t bin = binOf(row[i]);
                if (bin < bins)
                    ++counts[bin];
            }
        }
        return;
    }
    std::vector<uint32_t> tables(4 * (bins + 1), 0u);
    uint32_t *const t0 = tables.data();
    uint32_t *const t1 = t0 + (bins + 1);
    uint32_t *const t2 = t1 + (bins + 1);
    uint32_t *const t3 = t2 + (bins + 1);
    // At most this many samples between two flushes, so no 32-bit count can
    // overflow even when every sample lands in the same table.
    constexpr size_t kBlock = (size_t(1) << 32) - 1;
    size_t pending = 0;
    const auto flush = [&] {
        for (size_t b = 0; b < bins; ++b)
            counts[b] += uint64_t(t0[b]) + t1[b] + t2[b] + t3[b];
        std::fill(tables.begin(), tables.end(), 0u);
        pending = 0;
    };
    for (size_t r = 0; r < rows; ++r) {
        const auto row = rowAt(r);
        for (size_t start = 0; start < row.size();) {
            if (pending == kBlock)
                flush();
            const size_t end = start + std::min(row.size() - start, kBlock - pending);
            const size_t end4 = end - (end - start) % 4;
            // The spare bin at index bins takes the samples left out.
            for (size_t i = start; i < end4; i += 4) {
                ++t0[std::min(binOf(row[i]), bins)];
                ++t1[std::min(binOf(row[i + 1]), bins)];
                ++t2[std::min(binOf(row[i + 2]), bins)];
                ++t3[std::min(binOf(row[i + 3]), bins)];
            }
            for (size_t i = end4; i < end; ++i)
                ++t0[std::min(binOf(row[i]), bins)];
            pending += end - start;
            start = end;
        }
    }
    flush();
}

} // namespace tyx::internal
