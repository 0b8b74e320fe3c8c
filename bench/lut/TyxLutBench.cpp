// Look-up tables against hand-written loops: building from break points,
// mapping samples through a table, and the text file's reader and writer.
#include <benchmark/benchmark.h>

#include <tyx/TyxBreakPointLut.h>
#include <tyx/TyxBuffer.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxLutDesc.h>
#include <tyx/TyxLutIO.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <sstream>
#include <vector>

namespace {

using tyx::TyxBreakPoint;
using tyx::TyxBreakPointLut;
using tyx::TyxBuffer;
using tyx::TyxBufferPtr;
using tyx::TyxDataType;
using tyx::TyxEqnTile;
using tyx::TyxLutDesc;
using tyx::TyxLutDescPtr;
using N = tyx::TyxNumericType;

constexpr int kBands = 4;
constexpr int kPointsPerBand = 12;
constexpr uint64_t kEntries = 65536;
constexpr uint64_t kSamples = 16777216;

// Twelve points per band from 0 to 65535 with outputs within 0 to 255.
const TyxBreakPointLut &breakPoints()
{
    static const TyxBreakPointLut table = [] {
        TyxBreakPointLut bpl(TyxDataType(N::U8));
        std::mt19937 random(7);
        std::uniform_real_distribution<double> out(0.0, 255.0);
        for (int band = 0; band < kBands; ++band)
            for (int k = 0; k < kPointsPerBand; ++k)
                bpl.add(TyxBreakPoint(k * 65535 / (kPointsPerBand - 1), out(random), uint32_t(band)));
        return bpl;
    }();
    return table;
}

void BM_BuildTable(benchmark::State &state)
{
    for (auto _ : state) {
        TyxBreakPointLut bpl(breakPoints()); // a copy holds no table
        benchmark::DoNotOptimize(bpl.lut(TyxDataType(N::U16)).get());
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kBands * kEntries));
}
BENCHMARK(BM_BuildTable)->Unit(benchmark::kMicrosecond);

// The same interpolation written by hand: sort, then per segment a slope and
// an intercept, rounding by adding one half.
void BM_BuildTableHandLoop(benchmark::State &state)
{
    for (auto _ : state) {
        std::vector<TyxBreakPoint> points = breakPoints().points();
        std::sort(points.begin(), points.end());
        TyxBufferPtr buffer(new TyxBuffer(kBands * kEntries, true));
        uint8_t *dst = static_cast<uint8_t *>(buffer->data());
        for (int band = 0; band < kBands; ++band) {
            const TyxBreakPoint *p = points.data() + band * kPointsPerBand;
            uint8_t *out = dst + band * kEntries;
            for (int k = 1; k < kPointsPerBand; ++k) {
                const double slope = (p[k].out() - p[k - 1].out()) / double(p[k].in() - p[k - 1].in());
                const double intercept = p[k - 1].out() - p[k - 1].in() * slope;
                for (int x = p[k - 1].in(); x < p[k].in(); ++x)
                    out[x] = uint8_t(int64_t(double(x) * slope + intercept + 0.5));
            }
            out[65535] = uint8_t(int64_t(p[kPointsPerBand - 1].out() + 0.5));
        }
        benchmark::DoNotOptimize(dst);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kBands * kEntries));
}
BENCHMARK(BM_BuildTableHandLoop)->Unit(benchmark::kMicrosecond);

const TyxLutDescPtr &builtTable()
{
    static TyxBreakPointLut bpl(breakPoints());
    static const TyxLutDescPtr table = bpl.lut(TyxDataType(N::U16));
    return table;
}

const TyxEqnTile &u16Samples()
{
    static const TyxEqnTile tile = [] {
        TyxEqnTile t(TyxDataType(N::U16), kSamples);
        const std::span<uint16_t> p = t.samples<uint16_t>();
        std::mt19937 random(11);
        for (uint64_t i = 0; i < kSamples; ++i)
            p[i] = uint16_t(random());
        return t;
    }();
    return tile;
}

void BM_ApplyTable(benchmark::State &state)
{
    const TyxLutDesc &lut = *builtTable();
    const TyxEqnTile &samples = u16Samples();
    for (auto _ : state) {
        TyxEqnTile result = lut.apply(samples, 2);
        benchmark::DoNotOptimize(result.buffer()->data());
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kSamples));
}
BENCHMARK(BM_ApplyTable)->Unit(benchmark::kMillisecond);

void BM_ApplyTableHandLoop(benchmark::State &state)
{
    const TyxLutDesc &lut = *builtTable();
    const uint16_t *src = static_cast<const uint16_t *>(u16Samples().buffer()->data());
    const uint8_t *table = static_cast<const uint8_t *>(lut.buffer()->data()) + 2 * kEntries;
    for (auto _ : state) {
        TyxBufferPtr buffer(new TyxBuffer(kSamples, true));
        uint8_t *dst = static_cast<uint8_t *>(buffer->data());
        for (uint64_t i = 0; i < kSamples; ++i)
            dst[i] = table[src[i]];
        benchmark::DoNotOptimize(dst);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kSamples));
}
BENCHMARK(BM_ApplyTableHandLoop)->Unit(benchmark::kMillisecond);

// A four-band U16 table of 65,536 entries per band.
const TyxLutDesc &fileTable()
{
    static const TyxLutDesc table = [] {
        TyxBufferPtr buffer(new TyxBuffer(kBands * kEntries * 2, true));
        uint16_t *p = static_cast<uint16_t *>(buffer->data());
        std::mt19937 random(3);
        for (uint64_t i = 0; i < kBands * kEntries; ++i)
            p[i] = uint16_t(random());
        return TyxLutDesc(buffer, TyxDataType(N::U16), kEntries, 0, kBands, false);
    }();
    return table;
}

const std::wstring &fileText()
{
    static const std::wstring text = [] {
        std::wostringstream os;
        tyx::TyxLutIO::writeCommon(fileTable(), os);
        return os.str();
    }();
    return text;
}

void BM_WriteFile(benchmark::State &state)
{
    for (auto _ : state) {
        std::wostringstream os;
        tyx::TyxLutIO::writeCommon(fileTable(), os);
        benchmark::DoNotOptimize(os.str().size());
    }
    state.SetBytesProcessed(int64_t(state.iterations() * fileText().size()));
}
BENCHMARK(BM_WriteFile)->Unit(benchmark::kMillisecond);

// The entries alone, one per line, through the same kind of stream.
void BM_WriteFileHandLoop(benchmark::State &state)
{
    const uint16_t *p = static_cast<const uint16_t *>(fileTable().buffer()->data());
    for (auto _ : state) {
        std::wostringstream os;
        for (uint64_t i = 0; i < kBands * kEntries; ++i)
            os << p[i] << L'\n';
        benchmark::DoNotOptimize(os.str().size());
    }
    state.SetBytesProcessed(int64_t(state.iterations() * fileText().size()));
}
BENCHMARK(BM_WriteFileHandLoop)->Unit(benchmark::kMillisecond);

void BM_ReadFile(benchmark::State &state)
{
    for (auto _ : state) {
        std::wistringstream is(fileText());
        std::unique_ptr<TyxLutDesc> lut(tyx::TyxLutIO::readCommon(is));
        benchmark::DoNotOptimize(lut.get());
    }
    state.SetBytesProcessed(int64_t(state.iterations() * fileText().size()));
}
BENCHMARK(BM_ReadFile)->Unit(benchmark::kMillisecond);

// The entries parsed by the stream's own number reading, skipping the
// header and the section ends.
void BM_ReadFileHandLoop(benchmark::State &state)
{
    const std::wstring &text = fileText();
    const size_t body = text.find(L"}\n") + 2;
    for (auto _ : state) {
        std::wistringstream is(text.substr(body));
        std::vector<uint16_t> values;
        values.reserve(kBands * kEntries);
        unsigned v = 0;
        for (int band = 0; band < kBands; ++band) {
            for (uint64_t i = 0; i < kEntries && is >> v; ++i)
                values.push_back(uint16_t(v));
            wchar_t dollar = 0;
            is >> dollar;
        }
        benchmark::DoNotOptimize(values.data());
    }
    state.SetBytesProcessed(int64_t(state.iterations() * fileText().size()));
}
BENCHMARK(BM_ReadFileHandLoop)->Unit(benchmark::kMillisecond);

} // namespace
