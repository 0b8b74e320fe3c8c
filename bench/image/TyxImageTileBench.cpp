// Tile operations against hand-written typed loops doing the same work on the
// same 4096 x 4096 x 4 tile; both sides allocate their result as a TyxBuffer.
#include <benchmark/benchmark.h>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxImageTile.h>
#include <tyx/TyxPixelIterator.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

using tyx::TyxBuffer;
using tyx::TyxBufferPtr;
using tyx::TyxCoord3D;
using tyx::TyxDataLayout;
using tyx::TyxDataType;
using tyx::TyxImageROI;
using tyx::TyxImageSize;
using tyx::TyxImageTile;
using tyx::TyxImageTileDesc;
using tyx::TyxImageTilePtr;
using tyx::TyxPixel;
using tyx::TyxPixelIterator;
using N = tyx::TyxNumericType;

constexpr unsigned kW = 4096;
constexpr unsigned kH = 4096;
constexpr unsigned kB = 4;

template <class T>
TyxImageTile makeTile(N::Code code, unsigned w, unsigned h, TyxCoord3D<int> at = {})
{
    TyxImageTile tile(TyxImageTileDesc(TyxImageROI(at, TyxImageSize(w, h, kB)),
                                       TyxDataLayout::PixelInterleaved, TyxDataType(code)));
    T *p = tile.ptrAt<T>(0, 0, 0);
    const uint64_t n = uint64_t(w) * h * kB;
    for (uint64_t i = 0; i < n; ++i)
        p[i] = static_cast<T>(i * 2654435761u >> 7);
    return tile;
}

const TyxImageTile &u8Tile()
{
    static const TyxImageTile tile = makeTile<uint8_t>(N::U8, kW, kH);
    return tile;
}

const TyxImageTile &u16Tile()
{
    static const TyxImageTile tile = makeTile<uint16_t>(N::U16, kW, kH);
    return tile;
}

template <class T>
const T *samples(const TyxImageTile &tile)
{
    return tile.ptrAt<T>(0, 0, 0);
}

template <class R>
R *newBlock(TyxBufferPtr &holder, uint64_t count)
{
    holder = new TyxBuffer(count * sizeof(R), true);
    return static_cast<R *>(holder->data());
}

void finish(benchmark::State &state, uint64_t items)
{
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * items));
}

constexpr uint64_t kSamples = uint64_t(kW) * kH * kB;

void BM_CloneU16ToFloat_Tile(benchmark::State &state)
{
    const TyxImageTile &src = u16Tile();
    for (auto _ : state) {
        TyxImageTilePtr out = src.clone(TyxDataType(N::Float));
        benchmark::DoNotOptimize(out.get());
    }
    finish(state, kSamples);
}

void BM_CloneU16ToFloat_Hand(benchmark::State &state)
{
    const uint16_t *s = samples<uint16_t>(u16Tile());
    for (auto _ : state) {
        TyxBufferPtr holder;
        float *d = newBlock<float>(holder, kSamples);
        for (uint64_t i = 0; i < kSamples; ++i)
            d[i] = static_cast<float>(s[i]);
        benchmark::DoNotOptimize(d);
    }
    finish(state, kSamples);
}

template <class T>
void layoutTile(benchmark::State &state, const TyxImageTile &src)
{
    for (auto _ : state) {
        TyxImageTilePtr out = src.clone(TyxDataLayout(TyxDataLayout::BandInterleaved));
        benchmark::DoNotOptimize(out.get());
    }
    finish(state, kSamples);
}

template <class T>
void layoutHand(benchmark::State &state, const TyxImageTile &tile)
{
    const T *s = samples<T>(tile);
    const uint64_t plane = uint64_t(kW) * kH;
    for (auto _ : state) {
        TyxBufferPtr holder;
        T *d = newBlock<T>(holder, kSamples);
        for (uint64_t i = 0; i < plane; ++i)
            for (unsigned b = 0; b < kB; ++b)
                d[b * plane + i] = s[i * kB + b];
        benchmark::DoNotOptimize(d);
    }
    finish(state, kSamples);
}

void BM_LayoutU8_Tile(benchmark::State &state) { layoutTile<uint8_t>(state, u8Tile()); }
void BM_LayoutU8_Hand(benchmark::State &state) { layoutHand<uint8_t>(state, u8Tile()); }
void BM_LayoutU16_Tile(benchmark::State &state) { layoutTile<uint16_t>(state, u16Tile()); }
void BM_LayoutU16_Hand(benchmark::State &state) { layoutHand<uint16_t>(state, u16Tile()); }

constexpr unsigned kCrop = 2048;

void BM_Crop_Tile(benchmark::State &state)
{
    const TyxImageTile &src = u16Tile();
    const TyxImageROI roi(TyxCoord3D<int>(1024, 1024, 0), TyxImageSize(kCrop, kCrop, kB));
    for (auto _ : state) {
        TyxImageTilePtr out = src.crop(roi);
        benchmark::DoNotOptimize(out.get());
    }
    finish(state, uint64_t(kCrop) * kCrop * kB);
}

void BM_Crop_Hand(benchmark::State &state)
{
    const uint16_t *s = samples<uint16_t>(u16Tile());
    for (auto _ : state) {
        TyxBufferPtr holder;
        uint16_t *d = newBlock<uint16_t>(holder, uint64_t(kCrop) * kCrop * kB);
        for (unsigned y = 0; y < kCrop; ++y)
            std::memcpy(d + uint64_t(y) * kCrop * kB, s + (uint64_t(y + 1024) * kW + 1024) * kB,
                        kCrop * kB * sizeof(uint16_t));
        benchmark::DoNotOptimize(d);
    }
    finish(state, uint64_t(kCrop) * kCrop * kB);
}

constexpr unsigned kPart = 1024;

const TyxImageTile &partTile()
{
    static const TyxImageTile tile = makeTile<uint16_t>(N::U16, kPart, kPart, {1000, 1000, 0});
    return tile;
}

void BM_Insert_Tile(benchmark::State &state)
{
    TyxImageTile target = *u16Tile().clone();
    const TyxImageTile &part = partTile();
    for (auto _ : state) {
        benchmark::DoNotOptimize(target.insert(part));
        benchmark::ClobberMemory();
    }
    finish(state, uint64_t(kPart) * kPart * kB);
}

void BM_Insert_Hand(benchmark::State &state)
{
    TyxImageTilePtr target = u16Tile().clone();
    uint16_t *d = target->ptrAt<uint16_t>(0, 0, 0);
    const uint16_t *s = samples<uint16_t>(partTile());
    for (auto _ : state) {
        for (unsigned y = 0; y < kPart; ++y)
            std::memcpy(d + (uint64_t(y + 1000) * kW + 1000) * kB, s + uint64_t(y) * kPart * kB,
                        kPart * kB * sizeof(uint16_t));
        benchmark::ClobberMemory();
    }
    finish(state, uint64_t(kPart) * kPart * kB);
}

void BM_Fill_Tile(benchmark::State &state)
{
    TyxImageTilePtr target = u16Tile().clone();
    const TyxPixel pixel(std::vector<TyxPixel::Sample>{TyxPixel::Sample(1.0), TyxPixel::Sample(2.0),
                                                       TyxPixel::Sample(3.0), TyxPixel::Sample(4.0)});
    for (auto _ : state) {
        benchmark::DoNotOptimize(target->fill(pixel));
        benchmark::ClobberMemory();
    }
    finish(state, kSamples);
}

void BM_Fill_Hand(benchmark::State &state)
{
    TyxImageTilePtr target = u16Tile().clone();
    uint16_t *d = target->ptrAt<uint16_t>(0, 0, 0);
    const uint16_t values[kB] = {1, 2, 3, 4};
    for (auto _ : state) {
        for (uint64_t i = 0; i < uint64_t(kW) * kH; ++i)
            for (unsigned b = 0; b < kB; ++b)
                d[i * kB + b] = values[b];
        benchmark::ClobberMemory();
    }
    finish(state, kSamples);
}

void BM_IteratorSum_Tile(benchmark::State &state)
{
    const TyxImageTile &tile = u16Tile();
    for (auto _ : state) {
        double sum = 0.0;
        for (TyxPixelIterator it(tile); !(*it).isEmpty(); ++it)
            sum += (*it)[0].real();
        benchmark::DoNotOptimize(sum);
    }
    finish(state, uint64_t(kW) * kH);
}

void BM_IteratorSum_Hand(benchmark::State &state)
{
    const uint16_t *s = samples<uint16_t>(u16Tile());
    for (auto _ : state) {
        double sum = 0.0;
        for (uint64_t i = 0; i < uint64_t(kW) * kH; ++i)
            sum += s[i * kB];
        benchmark::DoNotOptimize(sum);
    }
    finish(state, uint64_t(kW) * kH);
}

BENCHMARK(BM_CloneU16ToFloat_Tile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CloneU16ToFloat_Hand)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LayoutU8_Tile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LayoutU8_Hand)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LayoutU16_Tile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LayoutU16_Hand)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Crop_Tile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Crop_Hand)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert_Tile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert_Hand)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fill_Tile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fill_Hand)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IteratorSum_Tile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IteratorSum_Hand)->Unit(benchmark::kMillisecond);

} // namespace
