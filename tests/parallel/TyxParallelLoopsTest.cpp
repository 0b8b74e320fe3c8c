// Loops that run on several threads: the same results as on one, and one
// posted failure. The ThreadSanitizer build runs this program.
#include "TyxBandMathCases.h"

#include <gtest/gtest.h>

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxForLoopBase.h>
#include <tyx/TyxImageTile.h>
#include <tyx/TyxPixel.h>
#include <tyx/TyxSystem.h>
#include <tyx/TyxTextHandler.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "TyxRecordingHandler.h"

namespace {

using namespace tyx;
using N = TyxNumericType;

// Runs \p f with parallel loops off and then on; returns both results.
template <class F>
auto offAndOn(F f)
{
    const bool before = enableParallelLoops(false);
    auto serial = f();
    enableParallelLoops(true);
    auto parallel = f();
    enableParallelLoops(before);
    return std::make_pair(serial, parallel);
}

// Ten blocks, above the parallel threshold: several pieces for the workers.
TEST(TyxParallelLoopsTest, BandMathOnThreadsGivesTheSerialBits)
{
    for (const uint64_t n : {uint64_t(40003)}) {
        for (const wchar_t *text : tyx::testing::kBandMath) {
            SCOPED_TRACE(::testing::Message() << "n=" << n << " expression: " << toUTF8(text));
            TyxEqnParser whole;
            ASSERT_EQ(whole.parse(text), 0);
            tyx::testing::setBands(whole, n);
            const TyxEqnTile expected = tyx::testing::ownResult(whole);
            ASSERT_EQ(expected.size(), n);
            const auto [serial, parallel] = offAndOn([&] {
                TyxEqnParser parser;
                parser.parse(text);
                tyx::testing::setBands(parser, n);
                parser.evaluate();
                tyx::testing::setBands(parser, n);
                return tyx::testing::ownResult(parser);
            });
            EXPECT_TRUE(tyx::testing::sameBits(serial, expected));
            EXPECT_TRUE(tyx::testing::sameBits(parallel, expected));
        }
    }
}

TyxImageTile doubleTile(unsigned w, unsigned h, unsigned bands, TyxDataLayout::Code layout, int x = 0)
{
    TyxImageTile tile(TyxImageTileDesc(TyxImageROI(TyxCoord3D<int>(x, 0, 0), TyxImageSize(w, h, bands)),
                                       TyxDataLayout(layout), TyxDataType(N::Double)));
    tile.allocate();
    double *p = tile.ptrAt<double>(0, 0, 0);
    for (uint64_t i = 0; i < uint64_t(w) * h * bands; ++i)
        p[i] = double((i * 7 + i / 1000 * 13) % 997) - 300.25;
    return tile;
}

// Every image tile loop above its threshold: a 448 x 448 x 4 Double tile is
// 6.1 MiB, above all byte thresholds.
TEST(TyxParallelLoopsTest, ImageTileLoopsOnThreadsGiveTheSerialTiles)
{
    const TyxImageTile source = doubleTile(448, 448, 4, TyxDataLayout::PixelInterleaved);
    const auto same = [](const TyxImageTilePtr &x, const TyxImageTilePtr &y) {
        return x && y && x->isEqual(*y, 0.0);
    };

    auto converted = offAndOn([&] { return source.clone(TyxDataType(N::I16)); });
    EXPECT_TRUE(same(converted.first, converted.second));
    auto relaid = offAndOn([&] { return source.clone(TyxDataLayout(TyxDataLayout::BandInterleaved)); });
    EXPECT_TRUE(same(relaid.first, relaid.second));
    auto cropped = offAndOn([&] { return source.crop(TyxImageROI(3, 5, 400, 300, {1, 2})); });
    EXPECT_TRUE(same(cropped.first, cropped.second));
    auto inserted = offAndOn([&] {
        TyxImageTilePtr target(new TyxImageTile(doubleTile(448, 448, 4, TyxDataLayout::BandInterleaved, 40)));
        target->insert(source);
        return target;
    });
    EXPECT_TRUE(same(inserted.first, inserted.second));
    auto filled = offAndOn([&] {
        TyxImageTilePtr target(new TyxImageTile(doubleTile(448, 448, 4, TyxDataLayout::PixelInterleaved)));
        target->fill(TyxPixel(std::vector<TyxPixel::Sample>{1.5, -2.0, 3.25, 7.0}));
        return target;
    });
    EXPECT_TRUE(same(filled.first, filled.second));
}

// Workers fail at several indices: the failure at the first of them is
// posted, once, after the range; every index before it ran.
TEST(TyxParallelLoopsTest, FailureOfAWorkerIsPostedOnce)
{
    test::HandlerScope scope;
    std::vector<std::atomic<int>> ran(20000);
    TyxLoopRange range;
    range.end = 20000;
    const bool failed = TyxForLoopBase::run(range, true, false, [&](int64_t i) {
        if (i % 4000 == 3999)
            throw std::runtime_error("failed at " + std::to_string(i));
        ++ran[size_t(i)];
    });
    EXPECT_TRUE(failed);
    EXPECT_EQ(scope.onlyText(), L"failed at 3999");
    for (size_t i = 0; i < 3999; ++i)
        ASSERT_EQ(ran[i].load(), 1) << i;
}

// With the switch off a loop that asks for workers runs on the caller.
TEST(TyxParallelLoopsTest, SwitchOffStartsNoThread)
{
    const bool before = enableParallelLoops(false);
    std::vector<std::thread::id> ids(5000);
    TyxLoopRange range;
    range.end = 5000;
    TyxForLoopBase::run(range, true, false, [&](int64_t i) { ids[size_t(i)] = std::this_thread::get_id(); });
    enableParallelLoops(before);
    for (const std::thread::id &id : ids)
        ASSERT_EQ(id, std::this_thread::get_id());
}

} // namespace
