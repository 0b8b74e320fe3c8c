// Tile arithmetic against hand-written loops doing the same work on the same
// data; both sides allocate their result as a TyxBuffer of the same size.
#include <benchmark/benchmark.h>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxEqnTile.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
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

template <class T>
TyxEqnTile randomTile(N::Code code, double lo, double hi, unsigned seed)
{
    TyxEqnTile tile(TyxDataType(code), kSamples);
    const std::span<T> p = tile.samples<T>();
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> values(lo, hi);
    for (uint64_t i = 0; i < kSamples; ++i)
        p[i] = static_cast<T>(values(random));
    return tile;
}

template <class T>
const T *samples(const TyxEqnTile &tile)
{
    return tile.samples<T>().data();
}

// The result block of a hand-written loop, allocated as the tiles do.
template <class R>
R *newResult(TyxBufferPtr &holder)
{
    holder = new TyxBuffer(kSamples * sizeof(R), true);
    return static_cast<R *>(holder->data());
}

void finish(benchmark::State &state)
{
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kSamples));
}

const TyxEqnTile &u16a();
const TyxEqnTile &u16b();
const TyxEqnTile &floats();
const TyxEqnTile &doublesA();
const TyxEqnTile &doublesB();

// Makes the input tiles before any timing starts.
void prepare()
{
    u16a();
    u16b();
    floats();
    doublesA();
    doublesB();
}

// ---- U16 + U16 ------------------------------------------------------------------

const TyxEqnTile &u16a()
{
    static const TyxEqnTile tile = randomTile<uint16_t>(N::U16, 0, 65535, 1);
    return tile;
}
const TyxEqnTile &u16b()
{
    static const TyxEqnTile tile = randomTile<uint16_t>(N::U16, 0, 65535, 2);
    return tile;
}

void BM_AddU16Tile(benchmark::State &state)
{
    prepare();
    for (auto _ : state)
        benchmark::DoNotOptimize(u16a() + u16b());
    finish(state);
}
BENCHMARK(BM_AddU16Tile)->Unit(benchmark::kMillisecond);

void BM_AddU16Hand(benchmark::State &state)
{
    const uint16_t *a = samples<uint16_t>(u16a());
    const uint16_t *b = samples<uint16_t>(u16b());
    for (auto _ : state) {
        TyxBufferPtr holder;
        double *out = newResult<double>(holder);
        for (uint64_t i = 0; i < kSamples; ++i)
            out[i] = static_cast<double>(a[i]) + static_cast<double>(b[i]);
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}
BENCHMARK(BM_AddU16Hand)->Unit(benchmark::kMillisecond);

// ---- Float * double ---------------------------------------------------------------

const TyxEqnTile &floats()
{
    static const TyxEqnTile tile = randomTile<float>(N::Float, -1000, 1000, 3);
    return tile;
}

void BM_MulFloatTile(benchmark::State &state)
{
    prepare();
    for (auto _ : state)
        benchmark::DoNotOptimize(floats() * 1.5);
    finish(state);
}
BENCHMARK(BM_MulFloatTile)->Unit(benchmark::kMillisecond);

void BM_MulFloatHand(benchmark::State &state)
{
    const float *a = samples<float>(floats());
    double factor = 1.5;
    benchmark::DoNotOptimize(factor);
    for (auto _ : state) {
        TyxBufferPtr holder;
        double *out = newResult<double>(holder);
        for (uint64_t i = 0; i < kSamples; ++i)
            out[i] = static_cast<double>(a[i]) * factor;
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}
BENCHMARK(BM_MulFloatHand)->Unit(benchmark::kMillisecond);

// ---- sin of Double ------------------------------------------------------------------

const TyxEqnTile &doublesA()
{
    static const TyxEqnTile tile = randomTile<double>(N::Double, -300, 300, 4);
    return tile;
}
const TyxEqnTile &doublesB()
{
    // Mostly equal to doublesA, so that the comparison takes both branches.
    static const TyxEqnTile tile = [] {
        TyxEqnTile copy = doublesA().clone();
        double *p = copy.samples<double>().data();
        for (uint64_t i = 0; i < kSamples; i += 3)
            p[i] = std::nextafter(p[i], 1e300);
        for (uint64_t i = 0; i < kSamples; i += 7)
            p[i] += 1.0;
        return copy;
    }();
    return tile;
}

void BM_SinDoubleTile(benchmark::State &state)
{
    prepare();
    for (auto _ : state)
        benchmark::DoNotOptimize(doublesA().sin());
    finish(state);
}
BENCHMARK(BM_SinDoubleTile)->Unit(benchmark::kMillisecond);

void BM_SinDoubleHand(benchmark::State &state)
{
    const double *a = samples<double>(doublesA());
    for (auto _ : state) {
        TyxBufferPtr holder;
        double *out = newResult<double>(holder);
        for (uint64_t i = 0; i < kSamples; ++i)
            out[i] = std::sin(a[i]);
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}
BENCHMARK(BM_SinDoubleHand)->Unit(benchmark::kMillisecond);

// ---- roundclip Double to U8 -------------------------------------------------------------

void BM_RoundclipTile(benchmark::State &state)
{
    prepare();
    for (auto _ : state)
        benchmark::DoNotOptimize(doublesA().roundclip(TyxDataType(N::U8), 0.0, 255.0));
    finish(state);
}
BENCHMARK(BM_RoundclipTile)->Unit(benchmark::kMillisecond);

void BM_RoundclipHand(benchmark::State &state)
{
    const double *a = samples<double>(doublesA());
    // Bounds as a caller passes them, not constants folded into the loop.
    double lo = 0.0, hi = 255.0;
    benchmark::DoNotOptimize(lo);
    benchmark::DoNotOptimize(hi);
    for (auto _ : state) {
        TyxBufferPtr holder;
        uint8_t *out = newResult<uint8_t>(holder);
        for (uint64_t i = 0; i < kSamples; ++i) {
            const double v = a[i];
            const bool low = lo >= v, high = v >= hi;
            const double clipped = low ? lo : (high ? hi : v);
            const double half = (low || high) ? 0.0 : (v >= 0.0 ? 0.5 : -0.5);
            out[i] = static_cast<uint8_t>(static_cast<int32_t>(clipped + half));
        }
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}
BENCHMARK(BM_RoundclipHand)->Unit(benchmark::kMillisecond);

// ---- == of two Double tiles -----------------------------------------------------------------

void BM_EqualDoubleTile(benchmark::State &state)
{
    prepare();
    for (auto _ : state)
        benchmark::DoNotOptimize(doublesA() == doublesB());
    finish(state);
}
BENCHMARK(BM_EqualDoubleTile)->Unit(benchmark::kMillisecond);

inline uint64_t biased(double x)
{
    const uint64_t bits = std::bit_cast<uint64_t>(x);
    return (bits >> 63) ? ~bits + 1 : bits | (uint64_t(1) << 63);
}

void BM_EqualDoubleHand(benchmark::State &state)
{
    const double *a = samples<double>(doublesA());
    const double *b = samples<double>(doublesB());
    for (auto _ : state) {
        TyxBufferPtr holder;
        double *out = newResult<double>(holder);
        for (uint64_t i = 0; i < kSamples; ++i) {
            const uint64_t x = biased(a[i]), y = biased(b[i]);
            const bool equal = !std::isnan(a[i]) && !std::isnan(b[i]) && (x > y ? x - y : y - x) < 5;
            out[i] = equal ? 1.0 : 0.0;
        }
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}
BENCHMARK(BM_EqualDoubleHand)->Unit(benchmark::kMillisecond);

// ---- median of U16 ----------------------------------------------------------------------------

void BM_MedianU16Tile(benchmark::State &state)
{
    prepare();
    for (auto _ : state)
        benchmark::DoNotOptimize(u16a().median());
    finish(state);
}
BENCHMARK(BM_MedianU16Tile)->Unit(benchmark::kMillisecond);

void BM_MedianU16Hand(benchmark::State &state)
{
    const uint16_t *a = samples<uint16_t>(u16a());
    for (auto _ : state) {
        std::vector<uint16_t> values(a, a + kSamples);
        const uint64_t k = kSamples % 2 ? kSamples / 2 : kSamples / 2 - 1;
        std::nth_element(values.begin(), values.begin() + k, values.end());
        benchmark::DoNotOptimize(static_cast<double>(values[k]));
    }
    finish(state);
}
BENCHMARK(BM_MedianU16Hand)->Unit(benchmark::kMillisecond);

// ---- Ternary: U8 condition, U16 tile or a double ---------------------------------------------

const TyxEqnTile &conditions()
{
    static const TyxEqnTile tile = randomTile<uint8_t>(N::U8, 0, 1.99, 4);
    return tile;
}

void BM_TernaryU8Tile(benchmark::State &state)
{
    prepare();
    conditions();
    for (auto _ : state)
        benchmark::DoNotOptimize(conditions().ternary(u16a(), -1.0));
    finish(state);
}
BENCHMARK(BM_TernaryU8Tile)->Unit(benchmark::kMillisecond);

void BM_TernaryU8Hand(benchmark::State &state)
{
    const uint8_t *c = samples<uint8_t>(conditions());
    const uint16_t *a = samples<uint16_t>(u16a());
    double other = -1.0;
    benchmark::DoNotOptimize(other);
    for (auto _ : state) {
        TyxBufferPtr holder;
        double *out = newResult<double>(holder);
        for (uint64_t i = 0; i < kSamples; ++i)
            out[i] = c[i] != 0 ? static_cast<double>(a[i]) : other;
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}
BENCHMARK(BM_TernaryU8Hand)->Unit(benchmark::kMillisecond);

} // namespace
