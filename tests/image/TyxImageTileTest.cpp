#include <tyx/TyxImageTile.h>
#include <tyx/TyxImageTileDesc.h>

#include <gtest/gtest.h>

#include <complex>
#include <cstdint>
#include <utility>
#include <vector>

#include "TyxRecordingHandler.h"
#include "TyxTilePattern.h"

namespace {

using namespace tyx;
using namespace tyx::test;
using N = TyxNumericType;
using L = TyxDataLayout;
using Sample = TyxPixel::Sample;

const L kLayouts[] = {L::PixelInterleaved, L::BandInterleaved, L::LineInterleaved, L::BlockInterleaved};

template <class T>
void expectPattern(const TyxImageTile &tile, unsigned dx = 0, unsigned dy = 0, unsigned db = 0)
{
    for (unsigned y = 0; y < tile.height(); ++y)
        for (unsigned x = 0; x < tile.width(); ++x)
            for (unsigned b = 0; b < tile.numBands(); ++b)
                ASSERT_EQ(at<T>(tile, x, y, b), static_cast<T>(pattern(x + dx, y + dy, b + db)))
                    << x << "," << y << "," << b << " in " << tile.layout().toString().size();
}

TEST(TyxImageTileDescTest, ValidateMessagesInOrder)
{
    struct Case {
        TyxImageTileDesc desc;
        std::wstring text;
    };
    const Case cases[] = {
        {TyxImageTileDesc(), L"Invalid ROI size [(0,0,0)]."},
        {descOf(2, 0x80000000u, 1, L::PixelInterleaved, N::U8), L"Invalid ROI size [(2,2147483648,1)]."},
        {descOf(2, 2, 1, L::PixelInterleaved, N::Invalid), L"Invalid image data type [(,0)]."},
        {descOf(2, 2, 1, L::Invalid, N::U16), L"Invalid image data layout []."},
        {descOf(2, 2, 1, L::BandInterleaved, N::Float), L""},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(c.desc.validate().text(), c.text);
        EXPECT_EQ(c.desc.isValid(), c.text.empty());
    }
    EXPECT_EQ(TyxImageTileDesc().validate().type(), TyxTextMsg::Error);
}

TEST(TyxImageTileDescTest, SampleCountWrapsAndStrides)
{
    // The sample count is 32-bit and wraps before the byte count is formed.
    const TyxImageTileDesc desc = descOf(65536, 65536, 1, L::PixelInterleaved, N::U8);
    EXPECT_EQ(desc.numSamples(), 0u);
    EXPECT_EQ(desc.numBytes(), 0u);

    // The strides of a worked 3 x 2 x 2 tile.
    struct Case {
        L layout;
        uint32_t pixel, line, band, offset;
    };
    const Case cases[] = {{L::PixelInterleaved, 2, 6, 1, 9},
                          {L::LineInterleaved, 1, 6, 3, 10},
                          {L::BandInterleaved, 1, 3, 6, 10},
                          {L::Invalid, 0, 0, 0, 0}};
    for (const Case &c : cases) {
        const TyxImageTile tile(descOf(3, 2, 2, c.layout, N::U16));
        EXPECT_EQ(tile.pixelStrideSamples(), c.pixel);
        EXPECT_EQ(tile.lineStrideSamples(), c.line);
        EXPECT_EQ(tile.bandStrideSamples(), c.band);
        EXPECT_EQ(tile.sampleOffset(1, 1, 1), c.offset);
        EXPECT_EQ(tile.byteOffset(1, 1, 1), 2u * c.offset);
    }
}

TEST(TyxImageTileTest, TypedPointersCheckTypeAndPosition)
{
    TyxImageTile tile(descOf(3, 2, 2, L::BandInterleaved, N::U16));
    // The writable view allocates on first use.
    ASSERT_NE(tile.ptrAt<uint16_t>(1, 1, 1), nullptr);

    tyx::test::HandlerScope scope;
    EXPECT_EQ(tile.ptrAt<int16_t>(0, 0, 0), nullptr);
    EXPECT_EQ(std::as_const(tile).ptrAt<uint16_t>(3, 0, 0), nullptr);
    EXPECT_EQ(std::as_const(tile).ptrAt<uint16_t>(0, 0, 2), nullptr);
    const std::vector<TyxString> expected = {
        L"TyxImageTile::ptrAt: asked for I16 samples, but the tile holds U16",
        L"TyxImageTile::ptrAt: (3,0) band 0 lies outside the tile of 3 x 2 x 2",
        L"TyxImageTile::ptrAt: (0,0) band 2 lies outside the tile of 3 x 2 x 2",
    };
    EXPECT_EQ(scope.texts(), expected);
}

TEST(TyxImageTileTest, AllocationSharingAndClones)
{
    TyxImageTile empty;
    EXPECT_EQ(empty.allocate(), 1);
    EXPECT_FALSE(empty.buffer());

    TyxImageTile tile(descOf(3, 2, 2, L::PixelInterleaved, N::U16));
    EXPECT_FALSE(tile.isAllocated());
    EXPECT_TRUE(std::as_const(tile).buffer());
    EXPECT_EQ(std::as_const(tile).ptrAt(0, 0, 0), nullptr);
    // Without memory a clone has none either, and converting clones fail.
    EXPECT_FALSE(tile.clone()->isAllocated());
    EXPECT_FALSE(tile.clone(TyxDataType(N::U8)));
    EXPECT_FALSE(tile.clone(L::BandInterleaved));
    EXPECT_EQ(tile.allocate(), 0);
    EXPECT_TRUE(tile.isAllocated());

    TyxImageTile shared = tile;
    at<uint16_t>(tile, 2, 1, 1) = 77;
    EXPECT_EQ(at<uint16_t>(std::as_const(shared), 2, 1, 1), 77);
    // A clone owns a copy.
    const TyxImageTilePtr deep = tile.clone();
    at<uint16_t>(tile, 2, 1, 1) = 5;
    EXPECT_EQ(at<uint16_t>(std::as_const(*deep), 2, 1, 1), 77);

    // A smaller description keeps the buffer; a larger one replaces it.
    const TyxBufferPtr before = tile.buffer();
    tile.setTileDesc(descOf(2, 2, 1, L::PixelInterleaved, N::U16));
    EXPECT_EQ(tile.numBytes(), 8u);
    EXPECT_EQ(tile.buffer()->size(), 24u);
    EXPECT_EQ(tile.buffer().get(), before.get());
    tile.setTileDesc(descOf(20, 2, 1, L::PixelInterleaved, N::U16));
    EXPECT_NE(std::as_const(tile).buffer().get(), before.get());
    EXPECT_FALSE(tile.isAllocated());
    // Even an empty description keeps a present buffer.
    tile.setTileDesc(TyxImageTileDesc());
    EXPECT_TRUE(std::as_const(tile).buffer());
    EXPECT_FALSE(TyxImageTile(TyxImageTileDesc()).buffer());
}

TEST(TyxImageTileTest, ConversionsArePlainCasts)
{
    // The values sit in the bands of one pixel.
    const struct {
        N::Code from;
        std::vector<Sample> values;
        N::Code to;
        std::vector<Sample> expected;
        unsigned depth = 0;
    } cases[] = {
        {N::Double, {300.7, -1.5, 1e300}, N::U8, {44.0, 255.0, 0.0}},
        {N::Double, {1e300}, N::I32, {INT32_MIN}},
        {N::I8, {static_cast<signed char>(-1)}, N::U16, {65535.0}},
        {N::U32, {0xFFFFFFFFu}, N::I8, {-1.0}},
        // The depth alone differs: a conversion that keeps the bits.
        {N::U32, {0xFFFFFFFFu}, N::U32, {4294967295.0}, 12},
    };
    for (const auto &c : cases) {
        TyxImageTile source(descOf(1, 1, unsigned(c.values.size()), L::PixelInterleaved, c.from));
        ASSERT_EQ(source.fill(TyxPixel(c.values)), 0);
        const TyxImageTilePtr converted = source.clone(TyxDataType(c.to, c.depth));
        ASSERT_TRUE(converted);
        EXPECT_EQ(converted->dataType(), TyxDataType(c.to, c.depth));
        EXPECT_EQ((*converted)(0, 0), TyxPixel(c.expected)) << "case " << &c - cases;
        EXPECT_FALSE(source.clone(TyxDataType()));
    }
}

// Every pair of layouts, for several band counts and sample widths.
template <class T>
class TyxImageTileLayoutTest : public ::testing::Test {
};
struct U16Case {
    using type = uint16_t;
    static constexpr N::Code code = N::U16;
};
struct ComplexCase {
    using type = std::complex<double>;
    static constexpr N::Code code = N::ComplexDouble;
};
using Widths = ::testing::Types<U16Case, ComplexCase>;
TYPED_TEST_SUITE(TyxImageTileLayoutTest, Widths);

TYPED_TEST(TyxImageTileLayoutTest, EveryLayoutPairRoundTripsCropsAndInserts)
{
    using T = typename TypeParam::type;
    for (L from : kLayouts) {
        // One band copies the block; four take the sample loops.
        const TyxImageTile one = patterned<T>(7, 4, 1, from, TypeParam::code);
        const TyxImageTile source = patterned<T>(9, 7, 4, from, TypeParam::code, {100, 200, 3});
        const TyxImageTilePtr inner =
            source.crop(TyxImageROI(TyxCoord3D<int>(2, 3, 1), TyxImageSize(4, 4, 2)));
        ASSERT_TRUE(inner);
        EXPECT_EQ(inner->origin(), TyxCoord3D<int>(102, 203, 4));
        expectPattern<T>(*inner, 2, 3, 1);
        // The whole tile is a plain copy.
        EXPECT_TRUE(source.crop(TyxImageROI(TyxImageSize(9, 7, 4)))->isEqual(source, 0.0));
        for (L to : kLayouts) {
            for (const TyxImageTile *tile : {&one, &source}) {
                const TyxImageTilePtr moved = tile->clone(to);
                ASSERT_TRUE(moved);
                EXPECT_EQ(moved->layout(), to);
                expectPattern<T>(*moved);
                EXPECT_TRUE(moved->clone(from)->isEqual(*tile, 0.0));
            }
            // The cut part covers columns 102..105, rows 203..206 and bands 4..5
            // of the image; the target columns 98..103, rows 205..209, bands 3..5.
            TyxImageTile target(descOf(6, 5, 3, to, TypeParam::code, {98, 205, 3}));
            ASSERT_EQ(target.fill(TyxPixel(1, Sample(7.0))), 0);
            ASSERT_EQ(target.insert(*inner), 0);
            for (unsigned y = 0; y < 5; ++y)
                for (unsigned x = 0; x < 6; ++x)
                    for (unsigned b = 0; b < 3; ++b) {
                        const bool inside = x >= 4 && y <= 1 && b >= 1;
                        const T expected = inside ? static_cast<T>(pattern(x - 2, y + 5, b)) : T(7);
                        ASSERT_EQ(at<T>(std::as_const(target), x, y, b), expected) << x << y << b;
                    }
        }
    }
}

TEST(TyxImageTileTest, CropAndInsertEdgeCases)
{
    const TyxImageTile source = patterned<uint8_t>(4, 4, 2, L::PixelInterleaved, N::U8, {50, 50, 0});
    EXPECT_FALSE(source.crop(TyxImageROI(TyxCoord3D<int>(4, 0, 0), TyxImageSize(2, 2, 1))));
    EXPECT_FALSE(source.crop(TyxImageROI(TyxCoord3D<int>(-3, 0, 0), TyxImageSize(3, 2, 1))));
    EXPECT_FALSE(source.crop(TyxImageROI(TyxCoord3D<int>(0, 0, 2), TyxImageSize(2, 2, 1))));
    EXPECT_FALSE(source.crop(TyxImageROI()));
    const TyxImageTilePtr part = source.crop(TyxImageROI(TyxCoord3D<int>(-1, 2, 1), TyxImageSize(3, 10, 5)));
    ASSERT_TRUE(part);
    EXPECT_EQ(part->tileDesc().roi().size(), TyxImageSize(2, 2, 1));
    EXPECT_EQ(part->origin(), TyxCoord3D<int>(50, 52, 1));
    expectPattern<uint8_t>(*part, 0, 2, 1);
    EXPECT_FALSE(
        TyxImageTile(descOf(4, 4, 1, L::PixelInterleaved, N::U8)).crop(TyxImageROI(TyxImageSize(1, 1, 1))));

    // Inserting a tile outside, one without memory, or into one without memory.
    TyxImageTile target = patterned<uint16_t>(4, 4, 1, L::PixelInterleaved, N::U16);
    const TyxImageTilePtr before = target.clone();
    const TyxImageTile far = patterned<uint16_t>(2, 2, 1, L::PixelInterleaved, N::U16, {4, 0, 0});
    EXPECT_EQ(target.insert(far), 0);
    EXPECT_TRUE(target.isEqual(*before, 0.0));
    EXPECT_EQ(target.insert(TyxImageTile(descOf(2, 2, 1, L::PixelInterleaved, N::U16))), 1);
    EXPECT_EQ(TyxImageTile().insert(far), 1);

    // Another type is converted first; the same geometry copies the block.
    TyxImageTile doubles(descOf(4, 4, 1, L::PixelInterleaved, N::Double));
    doubles.fill(TyxPixel(1, Sample(1000.9)));
    EXPECT_EQ(target.insert(doubles), 0);
    EXPECT_EQ(at<uint16_t>(std::as_const(target), 3, 3, 0), 1000);

    // Bands outside the target are left out.
    TyxImageTile twoBands(descOf(4, 4, 2, L::LineInterleaved, N::U16, {0, 0, 0}));
    twoBands.fill(TyxPixel(std::vector<Sample>{Sample(5.0), Sample(6.0)}));
    TyxImageTile bandOne(descOf(4, 4, 1, L::PixelInterleaved, N::U16, {0, 0, 1}));
    bandOne.fill(TyxPixel(1, Sample(0.0)));
    EXPECT_EQ(bandOne.insert(twoBands), 0);
    EXPECT_EQ(at<uint16_t>(std::as_const(bandOne), 2, 2, 0), 6);
}

TEST(TyxImageTileTest, FillClampsAndRounds)
{
    const TyxImageTileDesc twelve(TyxImageROI(TyxImageSize(2, 2, 3)), L::LineInterleaved,
                                  TyxDataType(N::U16, 12));
    const struct {
        TyxImageTileDesc desc;
        std::vector<Sample> fill, expected;
    } cases[] = {
        {descOf(3, 2, 2, L::PixelInterleaved, N::U8), {300.7, 2.5}, {255.0, 3.0}},
        // One value in every band takes the byte path: truncation, no clamp.
        {descOf(3, 2, 2, L::PixelInterleaved, N::U8), {300.7, 300.7}, {44.0, 44.0}},
        {descOf(3, 2, 2, L::PixelInterleaved, N::U8), {}, {0.0, 0.0}},
        {descOf(2, 2, 2, L::BandInterleaved, N::I8), {-2.5, -300.0}, {-3.0, -128.0}},
        // The logical depth clamps; bands past the values are zero.
        {twelve, {70000.0, 4094.4}, {4095.0, 4094.0, 0.0}},
        {descOf(1, 1, 2, L::PixelInterleaved, N::I64), {1e30, -1e30}, {INT64_MAX, INT64_MIN}},
    };
    for (const auto &c : cases) {
        TyxImageTile tile(c.desc);
        ASSERT_EQ(tile.fill(TyxPixel(c.fill)), 0);
        EXPECT_EQ(tile(tile.width() - 1, tile.height() - 1), TyxPixel(c.expected)) << "case " << &c - cases;
    }
    TyxImageTile empty;
    EXPECT_EQ(empty.fill(TyxPixel(1, Sample(1.0))), 1);
}

TEST(TyxImageTileTest, TooSmallSharedBufferIsNeverTouched)
{
    const TyxBufferPtr small(new TyxBuffer(4, true));
    TyxImageTile tile(descOf(4, 4, 1, L::PixelInterleaved, N::U8), small);
    EXPECT_TRUE(tile.isAllocated());
    EXPECT_TRUE(tile(3, 3).isEmpty());
    EXPECT_EQ(tile.ptrAt<uint8_t>(3, 3, 0), nullptr);
    EXPECT_EQ(std::as_const(tile).ptrAt<uint8_t>(0, 0, 0), nullptr);
    EXPECT_FALSE(tile.clone()->isAllocated());
    EXPECT_FALSE(tile.crop(TyxImageROI(TyxImageSize(2, 2, 1))));
    EXPECT_EQ(tile.fill(TyxPixel(1, Sample(3.0))), 1);
    EXPECT_EQ(tile.insert(patterned<uint8_t>(4, 4, 1, L::PixelInterleaved, N::U8)), 1);
}

} // namespace
