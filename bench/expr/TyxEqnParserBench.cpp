// Band math through the expression parser against hand-written loops doing the
// same work, and the cost of one scalar evaluation.
//
// Large blocks are counted by interposing the C allocator, which serves every
// TyxBuffer: the counter "buffers/eval" is the number of sample buffers
// allocated per repeated evaluation.
#include <benchmark/benchmark.h>

#include "TyxBandMathData.h"

#include <tyx/TyxBuffer.h>
#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

namespace {

using tyx::bench::kSamples;
constexpr size_t kLargeBlock = 1 << 20;

std::atomic<uint64_t> g_largeBlocks{0};

} // namespace

extern "C" {
void *__libc_malloc(size_t size);
void *__libc_memalign(size_t alignment, size_t size);

void *malloc(size_t size)
{
    if (size >= kLargeBlock)
        g_largeBlocks.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}

void *aligned_alloc(size_t alignment, size_t size)
{
    if (size >= kLargeBlock)
        g_largeBlocks.fetch_add(1, std::memory_order_relaxed);
    return __libc_memalign(alignment, size);
}
}

namespace {

using tyx::TyxEqnParser;
using tyx::TyxEqnTile;
using tyx::bench::band;

const TyxEqnTile &bandA()
{
    static const TyxEqnTile tile = band(1);
    return tile;
}

const TyxEqnTile &bandB()
{
    static const TyxEqnTile tile = band(2);
    return tile;
}

const uint16_t *samples(const TyxEqnTile &tile) { return tile.samples<uint16_t>().data(); }

void BM_ParserBandMath(benchmark::State &state)
{
    TyxEqnParser parser;
    parser.parse(L"(a - b) / (a + b)");
    parser.setValue(L"a", bandA());
    parser.setValue(L"b", bandB());
    parser.evaluate();
    const uint64_t before = g_largeBlocks.load();
    for (auto _ : state) {
        parser.setValue(L"a", bandA());
        parser.setValue(L"b", bandB());
        const tyx::TyxVariant &result = parser.evaluate();
        benchmark::DoNotOptimize(&result);
    }
    state.counters["buffers/eval"] =
        benchmark::Counter(double(g_largeBlocks.load() - before) / double(state.iterations()));
}
BENCHMARK(BM_ParserBandMath)->Unit(benchmark::kMillisecond);

// Subtract, add and divide in three passes into double arrays made once.
void BM_ThreePassLoopReusedBuffers(benchmark::State &state)
{
    const uint16_t *a = samples(bandA());
    const uint16_t *b = samples(bandB());
    std::unique_ptr<double[]> diff(new double[kSamples]);
    std::unique_ptr<double[]> total(new double[kSamples]);
    std::unique_ptr<double[]> ratio(new double[kSamples]);
    for (auto _ : state) {
        for (uint64_t i = 0; i < kSamples; ++i)
            diff[i] = double(a[i]) - double(b[i]);
        for (uint64_t i = 0; i < kSamples; ++i)
            total[i] = double(a[i]) + double(b[i]);
        for (uint64_t i = 0; i < kSamples; ++i)
            ratio[i] = diff[i] / total[i];
        benchmark::DoNotOptimize(ratio.get());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ThreePassLoopReusedBuffers)->Unit(benchmark::kMillisecond);

// The same with arrays allocated in every round, as a fresh evaluation does.
void BM_ThreePassLoopFreshBuffers(benchmark::State &state)
{
    const uint16_t *a = samples(bandA());
    const uint16_t *b = samples(bandB());
    for (auto _ : state) {
        std::vector<double> diff(kSamples);
        std::vector<double> total(kSamples);
        std::vector<double> ratio(kSamples);
        for (uint64_t i = 0; i < kSamples; ++i)
            diff[i] = double(a[i]) - double(b[i]);
        for (uint64_t i = 0; i < kSamples; ++i)
            total[i] = double(a[i]) + double(b[i]);
        for (uint64_t i = 0; i < kSamples; ++i)
            ratio[i] = diff[i] / total[i];
        benchmark::DoNotOptimize(ratio.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ThreePassLoopFreshBuffers)->Unit(benchmark::kMillisecond);

void BM_FusedLoop(benchmark::State &state)
{
    const uint16_t *a = samples(bandA());
    const uint16_t *b = samples(bandB());
    std::unique_ptr<double[]> ratio(new double[kSamples]);
    for (auto _ : state) {
        for (uint64_t i = 0; i < kSamples; ++i)
            ratio[i] = (double(a[i]) - double(b[i])) / (double(a[i]) + double(b[i]));
        benchmark::DoNotOptimize(ratio.get());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_FusedLoop)->Unit(benchmark::kMillisecond);

// a*b+c over Doubles with all three variables set before each evaluation.
void BM_ParserScalar(benchmark::State &state)
{
    TyxEqnParser parser;
    parser.parse(L"a*b+c");
    const tyx::TyxVariant a(1.5);
    const tyx::TyxVariant b(2.5);
    const tyx::TyxVariant c(0.25);
    parser.setValue(L"a", a);
    parser.setValue(L"b", b);
    parser.setValue(L"c", c);
    parser.evaluate();
    for (auto _ : state) {
        parser.setValue(L"a", a);
        parser.setValue(L"b", b);
        parser.setValue(L"c", c);
        benchmark::DoNotOptimize(&parser.evaluate());
    }
}
BENCHMARK(BM_ParserScalar);

// foreach over 100000 rounds of a small expression of the counter, against
// the same values computed by a loop into a vector.
constexpr uint64_t kRounds = 100000;

void BM_ParserForeach(benchmark::State &state)
{
    TyxEqnParser parser;
    // The count is a variable, so that the call is not folded into a constant.
    parser.parse(L"foreach(\"i\", n, i * 0.5 + 1)");
    const tyx::TyxVariant count{static_cast<double>(kRounds)};
    parser.setValue(L"n", count);
    parser.evaluate();
    for (auto _ : state) {
        parser.setValue(L"n", count);
        benchmark::DoNotOptimize(&parser.evaluate());
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kRounds));
}
BENCHMARK(BM_ParserForeach)->Unit(benchmark::kMillisecond);

void BM_ForeachLoop(benchmark::State &state)
{
    std::vector<double> values(kRounds);
    for (auto _ : state) {
        for (uint64_t i = 0; i < kRounds; ++i)
            values[i] = double(i) * 0.5 + 1;
        benchmark::DoNotOptimize(values.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kRounds));
}
BENCHMARK(BM_ForeachLoop)->Unit(benchmark::kMillisecond);

} // namespace
