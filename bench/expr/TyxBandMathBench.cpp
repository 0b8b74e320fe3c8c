// Band math through the expression parser, evaluated in blocks, against a
// fused hand-written loop and the three-pass style (one loop per operation
// into buffers made once), with parallel loops off (argument 0) and on (1).
// The hand loops run on oneTBB when on, as the library's loops do; their
// buffers are made and touched once, before the timing.
//
// Expressions over U16 bands of 4096 x 4096 samples:
//   ndvi     (a - b) / (a + b), result Double
//   long     (a * 0.5 + b * 0.3 - c) / sqrt(a * a + b * b + 1), result Double
//   clip     roundclip((a - b) / (a + b) * 10000, I16, -10000, 10000), result I16
#include <benchmark/benchmark.h>

#include "TyxBandMathData.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxSystem.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <span>

namespace {

using tyx::TyxEqnParser;
using tyx::TyxEqnTile;

using tyx::bench::band;
using tyx::bench::kSamples;

const TyxEqnTile &bandOf(int which)
{
    static const TyxEqnTile a = band(1);
    static const TyxEqnTile b = band(2);
    static const TyxEqnTile c = band(3);
    return which == 0 ? a : which == 1 ? b : c;
}

const uint16_t *samples(int which) { return bandOf(which).samples<uint16_t>().data(); }

// Calls op(i) for every sample index: in one loop, or in pieces over
// oneTBB's threads.
template <class Op>
void eachSample(bool parallel, Op op)
{
    const auto loop = [&](uint64_t begin, uint64_t end) {
        for (uint64_t i = begin; i < end; ++i)
            op(i);
    };
    if (!parallel) {
        loop(0, kSamples);
        return;
    }
    tbb::parallel_for(tbb::blocked_range<uint64_t>(0, kSamples, 65536),
                      [&](const tbb::blocked_range<uint64_t> &r) { loop(r.begin(), r.end()); });
}

// Keeps the optimiser from dropping the stores into \p result.
void keep(const void *result)
{
    benchmark::DoNotOptimize(result);
    benchmark::ClobberMemory();
}

void finish(benchmark::State &state)
{
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kSamples));
}

// The parser with parallel loops as the argument says; two evaluations
// outside the timing let the tree specialise and make its block copies.
void parserRun(benchmark::State &state, const wchar_t *text, int bands)
{
    const bool before = tyx::enableParallelLoops(state.range(0) != 0);
    TyxEqnParser parser;
    parser.parse(text);
    const wchar_t *names[] = {L"a", L"b", L"c"};
    for (int i = 0; i < bands; ++i)
        parser.setValue(names[i], bandOf(i));
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < bands; ++i)
            parser.setValue(names[i], bandOf(i));
        parser.evaluate();
    }
    for (auto _ : state) {
        for (int i = 0; i < bands; ++i)
            parser.setValue(names[i], bandOf(i));
        const tyx::TyxVariant &result = parser.evaluate();
        benchmark::DoNotOptimize(&result);
    }
    tyx::enableParallelLoops(before);
    finish(state);
}

double roundClip(double v, double lo, double hi)
{
    return lo >= v ? lo : (v >= hi ? hi : (v >= 0.0 ? v + 0.5 : v - 0.5));
}

// ---- ndvi ----------------------------------------------------------------------

// (a - b) / (a + b) as the parser without fusion runs it: one loop for each
// operation, into \p out (which may be \p diff).
void ndviPasses(bool parallel, const uint16_t *a, const uint16_t *b, double *diff, double *total, double *out)
{
    eachSample(parallel, [&](uint64_t i) { diff[i] = double(a[i]) - double(b[i]); });
    eachSample(parallel, [&](uint64_t i) { total[i] = double(a[i]) + double(b[i]); });
    eachSample(parallel, [&](uint64_t i) { out[i] = diff[i] / total[i]; });
}

void BM_NdviParser(benchmark::State &state) { parserRun(state, L"(a - b) / (a + b)", 2); }

void BM_NdviFused(benchmark::State &state)
{
    const uint16_t *a = samples(0);
    const uint16_t *b = samples(1);
    std::unique_ptr<double[]> r(new double[kSamples]());
    for (auto _ : state) {
        eachSample(state.range(0) != 0,
                   [&](uint64_t i) { r[i] = (double(a[i]) - double(b[i])) / (double(a[i]) + double(b[i])); });
        keep(r.get());
    }
    finish(state);
}

void BM_NdviThreePass(benchmark::State &state)
{
    const uint16_t *a = samples(0);
    const uint16_t *b = samples(1);
    std::unique_ptr<double[]> diff(new double[kSamples]());
    std::unique_ptr<double[]> total(new double[kSamples]());
    std::unique_ptr<double[]> r(new double[kSamples]());
    for (auto _ : state) {
        ndviPasses(state.range(0) != 0, a, b, diff.get(), total.get(), r.get());
        keep(r.get());
    }
    finish(state);
}

// ---- long ----------------------------------------------------------------------

void BM_LongParser(benchmark::State &state)
{
    parserRun(state, L"(a * 0.5 + b * 0.3 - c) / sqrt(a * a + b * b + 1)", 3);
}

void BM_LongFused(benchmark::State &state)
{
    const uint16_t *a = samples(0);
    const uint16_t *b = samples(1);
    const uint16_t *c = samples(2);
    std::unique_ptr<double[]> r(new double[kSamples]());
    for (auto _ : state) {
        eachSample(state.range(0) != 0, [&](uint64_t i) {
            const double x = a[i];
            const double y = b[i];
            r[i] = (x * 0.5 + y * 0.3 - double(c[i])) / std::sqrt(x * x + y * y + 1);
        });
        keep(r.get());
    }
    finish(state);
}

void BM_LongThreePass(benchmark::State &state)
{
    const uint16_t *a = samples(0);
    const uint16_t *b = samples(1);
    const uint16_t *c = samples(2);
    // Ten operations, each one loop; six buffers made once are enough.
    std::unique_ptr<double[]> t[6];
    for (auto &p : t)
        p.reset(new double[kSamples]());
    double *t0 = t[0].get(), *t1 = t[1].get(), *t2 = t[2].get(), *t3 = t[3].get(), *t4 = t[4].get(),
           *r = t[5].get();
    const bool parallel = state.range(0) != 0;
    for (auto _ : state) {
        eachSample(parallel, [&](uint64_t i) { t0[i] = double(a[i]) * 0.5; });
        eachSample(parallel, [&](uint64_t i) { t1[i] = double(b[i]) * 0.3; });
        eachSample(parallel, [&](uint64_t i) { t0[i] = t0[i] + t1[i]; });
        eachSample(parallel, [&](uint64_t i) { t2[i] = t0[i] - double(c[i]); });
        eachSample(parallel, [&](uint64_t i) { t3[i] = double(a[i]) * double(a[i]); });
        eachSample(parallel, [&](uint64_t i) { t4[i] = double(b[i]) * double(b[i]); });
        eachSample(parallel, [&](uint64_t i) { t3[i] = t3[i] + t4[i]; });
        eachSample(parallel, [&](uint64_t i) { t4[i] = t3[i] + 1; });
        eachSample(parallel, [&](uint64_t i) { t3[i] = std::sqrt(t4[i]); });
        eachSample(parallel, [&](uint64_t i) { r[i] = t2[i] / t3[i]; });
        keep(r);
    }
    finish(state);
}

// ---- clip ----------------------------------------------------------------------

void BM_ClipParser(benchmark::State &state)
{
    parserRun(state, L"roundclip((a - b) / (a + b) * 10000, \"I16\", -10000, 10000)", 2);
}

void BM_ClipFused(benchmark::State &state)
{
    const uint16_t *a = samples(0);
    const uint16_t *b = samples(1);
    std::unique_ptr<int16_t[]> r(new int16_t[kSamples]());
    for (auto _ : state) {
        eachSample(state.range(0) != 0, [&](uint64_t i) {
            const double v = (double(a[i]) - double(b[i])) / (double(a[i]) + double(b[i])) * 10000;
            r[i] = static_cast<int16_t>(roundClip(v, -10000, 10000));
        });
        keep(r.get());
    }
    finish(state);
}

void BM_ClipThreePass(benchmark::State &state)
{
    const uint16_t *a = samples(0);
    const uint16_t *b = samples(1);
    std::unique_ptr<double[]> diff(new double[kSamples]());
    std::unique_ptr<double[]> total(new double[kSamples]());
    std::unique_ptr<int16_t[]> r(new int16_t[kSamples]());
    const bool parallel = state.range(0) != 0;
    for (auto _ : state) {
        ndviPasses(parallel, a, b, diff.get(), total.get(), diff.get());
        eachSample(parallel, [&](uint64_t i) { diff[i] = diff[i] * 10000; });
        eachSample(parallel,
                   [&](uint64_t i) { r[i] = static_cast<int16_t>(roundClip(diff[i], -10000, 10000)); });
        keep(r.get());
    }
    finish(state);
}

} // namespace

BENCHMARK(BM_NdviParser)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_NdviFused)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_NdviThreePass)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LongParser)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LongFused)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LongThreePass)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ClipParser)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ClipFused)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ClipThreePass)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
