// Histogram and statistics of a band, and uniform deviates, against hand-written loops doing the same work.
#include <benchmark/benchmark.h>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxHistogram.h>
#include <tyx/TyxRandomNumber.h>
#include <tyx/TyxStatistics.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <span>
#include <vector>

namespace {

using tyx::TyxBuffer;
using tyx::TyxBufferPtr;
using tyx::TyxDataType;
using tyx::TyxEqnTile;
using N = tyx::TyxNumericType;

constexpr uint64_t kSamples = 16777216;

// An image-like U16 band: values around 2000 with a spread of 300, so that
// neighbouring samples often fall into the same bin.
const TyxEqnTile &u16Band()
{
    static const TyxEqnTile tile = [] {
        TyxEqnTile t(TyxDataType(N::U16), kSamples);
        const std::span<uint16_t> p = t.samples<uint16_t>();
        std::mt19937 random(7);
        std::normal_distribution<double> values(2000.0, 300.0);
        for (uint64_t i = 0; i < kSamples; ++i)
            p[i] = static_cast<uint16_t>(std::clamp(values(random), 0.0, 65535.0));
        return t;
    }();
    return tile;
}

const TyxEqnTile &floatBand()
{
    static const TyxEqnTile tile = [] {
        TyxEqnTile t(TyxDataType(N::Float), kSamples);
        const std::span<float> p = t.samples<float>();
        std::mt19937 random(11);
        std::uniform_real_distribution<float> values(-100.0f, 100.0f);
        for (uint64_t i = 0; i < kSamples; ++i)
            p[i] = values(random);
        return t;
    }();
    return tile;
}

void finish(benchmark::State &state, uint64_t items)
{
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * items));
}

void BM_HistogramU16(benchmark::State &state)
{
    const TyxEqnTile &tile = u16Band();
    tyx::TyxHistogram histogram;
    for (auto _ : state) {
        histogram.fill(tile);
        benchmark::DoNotOptimize(histogram.histogram());
    }
    finish(state, kSamples);
}
BENCHMARK(BM_HistogramU16)->Unit(benchmark::kMillisecond);

// The same work by hand: a new zeroed count buffer, four partial 32-bit
// tables taken in turn, added into it.
void BM_HistogramU16HandLoop(benchmark::State &state)
{
    const uint16_t *p = static_cast<const uint16_t *>(u16Band().buffer()->data());
    for (auto _ : state) {
        TyxBufferPtr counts(new TyxBuffer(65536 * sizeof(uint64_t), true));
        uint64_t *out = static_cast<uint64_t *>(counts->data());
        std::memset(out, 0, 65536 * sizeof(uint64_t));
        std::vector<uint32_t> tables(4 * 65536, 0u);
        uint32_t *t = tables.data();
        for (uint64_t i = 0; i < kSamples; i += 4) {
            ++t[p[i]];
            ++t[65536 + p[i + 1]];
            ++t[2 * 65536 + p[i + 2]];
            ++t[3 * 65536 + p[i + 3]];
        }
        for (size_t b = 0; b < 65536; ++b)
            out[b] = uint64_t(t[b]) + t[65536 + b] + t[2 * 65536 + b] + t[3 * 65536 + b];
        benchmark::DoNotOptimize(out);
    }
    finish(state, kSamples);
}
BENCHMARK(BM_HistogramU16HandLoop)->Unit(benchmark::kMillisecond);

// The plain loop everyone writes first, for scale.
void BM_HistogramU16SingleTable(benchmark::State &state)
{
    const uint16_t *p = static_cast<const uint16_t *>(u16Band().buffer()->data());
    std::vector<uint64_t> counts(65536);
    for (auto _ : state) {
        std::fill(counts.begin(), counts.end(), 0);
        for (uint64_t i = 0; i < kSamples; ++i)
            ++counts[p[i]];
        benchmark::DoNotOptimize(counts.data());
    }
    finish(state, kSamples);
}
BENCHMARK(BM_HistogramU16SingleTable)->Unit(benchmark::kMillisecond);

void BM_StatisticsFloat(benchmark::State &state)
{
    const TyxEqnTile &tile = floatBand();
    tyx::TyxStatistics stats;
    for (auto _ : state) {
        stats.fill(tile);
        benchmark::DoNotOptimize(stats.variance());
    }
    finish(state, kSamples);
}
BENCHMARK(BM_StatisticsFloat)->Unit(benchmark::kMillisecond);

// Count, extremes and both sums in double, NaN samples left out.
void BM_StatisticsFloatHandLoop(benchmark::State &state)
{
    const float *p = static_cast<const float *>(floatBand().buffer()->data());
    for (auto _ : state) {
        uint64_t n = 0;
        double lo = std::numeric_limits<double>::infinity(), hi = -lo, sum = 0.0, squares = 0.0;
        for (uint64_t i = 0; i < kSamples; ++i) {
            const double x = p[i];
            if (x != x)
                continue;
            ++n;
            lo = x < lo ? x : lo;
            hi = x > hi ? x : hi;
            sum += x;
            squares += x * x;
        }
        const double mean = sum / double(n);
        benchmark::DoNotOptimize(lo);
        benchmark::DoNotOptimize(hi);
        benchmark::DoNotOptimize(squares / double(n) - mean * mean);
    }
    finish(state, kSamples);
}
BENCHMARK(BM_StatisticsFloatHandLoop)->Unit(benchmark::kMillisecond);

constexpr int kDeviates = 10000000;

void BM_UniformDeviates(benchmark::State &state)
{
    for (auto _ : state) {
        tyx::TyxRandomNumber random(12345);
        double sum = 0.0;
        for (int i = 0; i < kDeviates; ++i)
            sum += random.ran1();
        benchmark::DoNotOptimize(sum);
    }
    finish(state, kDeviates);
}
BENCHMARK(BM_UniformDeviates)->Unit(benchmark::kMillisecond);

// The same generator and shuffle written inline with 64-bit integer
// arithmetic.
void BM_UniformDeviatesHandLoop(benchmark::State &state)
{
    for (auto _ : state) {
        int64_t seed = 12345, iy = 0, iv[32];
        for (int j = 39; j >= 0; --j) {
            seed = seed * 16807 % 2147483647;
            if (j < 32)
                iv[j] = seed;
        }
        iy = iv[0];
        double sum = 0.0;
        for (int i = 0; i < kDeviates; ++i) {
            seed = seed * 16807 % 2147483647;
            const int64_t j = iy * 16 / 1073741823;
            iy = iv[j];
            iv[j] = seed;
            sum += std::min(static_cast<double>(iy) * 4.656612875245797e-10, 0.99999988);
        }
        benchmark::DoNotOptimize(sum);
    }
    finish(state, kDeviates);
}
BENCHMARK(BM_UniformDeviatesHandLoop)->Unit(benchmark::kMillisecond);

// The same steps inline in the double arithmetic of the class: the cost of
// the exact double form itself, without the object.
void BM_UniformDeviatesDoubleHandLoop(benchmark::State &state)
{
    for (auto _ : state) {
        int32_t seed = 12345, iy = 0, iv[32];
        auto step = [&seed] {
            const double k = static_cast<double>(static_cast<int32_t>(seed / 127773.0));
            int32_t next = static_cast<int32_t>((seed - k * 127773.0) * 16807.0 - k * 2836.0);
            seed = next < 0 ? next + 2147483647 : next;
        };
        for (int j = 39; j >= 0; --j) {
            step();
            if (j < 32)
                iv[j] = seed;
        }
        iy = iv[0];
        double sum = 0.0;
        for (int i = 0; i < kDeviates; ++i) {
            step();
            const int j = static_cast<int>(iy / 67108864.9375);
            iy = iv[j];
            iv[j] = seed;
            sum += std::min(iy * 4.656612875245797e-10, 0.99999988);
        }
        benchmark::DoNotOptimize(sum);
    }
    finish(state, kDeviates);
}
BENCHMARK(BM_UniformDeviatesDoubleHandLoop)->Unit(benchmark::kMillisecond);

} // namespace
