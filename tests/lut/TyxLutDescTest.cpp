#include <tyx/TyxEqnTile.h>
#include <tyx/TyxImageTile.h>
#include <tyx/TyxLutDesc.h>

#include <gtest/gtest.h>

#include "TyxLutTestData.h"

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace {

using namespace tyx;
using N = TyxNumericType;
using namespace test;

template <class T>
TyxEqnTile tileOf(N::Code code, const std::vector<T> &values)
{
    return TyxEqnTile(bufferOf(values), TyxDataType(code), values.size(), 1);
}

template <class T>
std::vector<T> valuesOf(const TyxEqnTile &tile)
{
    const std::span<const T> samples = tile.samples<T>();
    return std::vector<T>(samples.begin(), samples.end());
}

/// A 3 x 2 tile of U8 samples whose sample at (x, y, b) is x + y + b.
TyxImageTile rampTile(unsigned bands, TyxDataLayout layout = TyxDataLayout::BandInterleaved)
{
    TyxImageTile tile(
        TyxImageTileDesc(TyxImageROI({}, TyxImageSize(3, 2, bands)), layout, TyxDataType(N::U8)));
    for (unsigned y = 0; y < 2; ++y)
        for (unsigned x = 0; x < 3; ++x)
            for (unsigned b = 0; b < bands; ++b)
                *tile.ptrAt<uint8_t>(x, y, b) = static_cast<uint8_t>(x + y + b);
    return tile;
}

TEST(TyxLutDescTest, CopiesShareClonesCopyAndEqualityLooksAtEveryField)
{
    const TyxDataType u8(N::U8);
    TyxLutDesc lut(bufferOf<uint8_t>({1, 2, 3}), u8, 3, -1, 1, false);
    TyxLutDesc copy(lut);
    EXPECT_EQ(copy.buffer().get(), lut.buffer().get());
    TyxLutDesc assigned;
    assigned = lut;
    EXPECT_EQ(assigned.buffer().get(), lut.buffer().get());

    const TyxLutDescPtr clone = lut.clone();
    EXPECT_NE(clone->buffer().get(), lut.buffer().get());
    EXPECT_EQ(*clone, lut);
    static_cast<uint8_t *>(clone->buffer()->data())[0] = 9;
    EXPECT_NE(*clone, lut);
    EXPECT_FALSE(TyxLutDesc().clone()->buffer());

    const TyxBufferPtr &b = lut.buffer();
    EXPECT_NE(lut, TyxLutDesc(b, TyxDataType(N::U8, 7), 3, -1, 1, false));
    EXPECT_NE(lut, TyxLutDesc(b, u8, 2, -1, 1, false));
    EXPECT_NE(lut, TyxLutDesc(b, u8, 3, 0, 1, false));
    EXPECT_NE(lut, TyxLutDesc(b, u8, 3, -1, 2, false));
    EXPECT_NE(lut, TyxLutDesc(b, u8, 3, -1, 1, true));
    EXPECT_NE(lut, TyxLutDesc(nullptr, u8, 3, -1, 1, false));
}

TEST(TyxLutDescTest, ApplyClampsToTheTableAndPicksTheBand)
{
    // Entries for the inputs 10, 11, 12.
    const TyxLutDesc lut(bufferOf<int16_t>({-5, 0, 5}), TyxDataType(N::I16), 3, 10, 1, true);
    const TyxEqnTile result = lut.apply(tileOf<uint8_t>(N::U8, {0, 9, 10, 11, 12, 13, 255}));
    EXPECT_EQ(result.dataType(), TyxDataType(N::I16));
    EXPECT_EQ(valuesOf<int16_t>(result), (std::vector<int16_t>{-5, -5, -5, 0, 5, 5, 5}));

    const TyxEqnTile wide = lut.apply(tileOf<uint64_t>(N::U64, {std::numeric_limits<uint64_t>::max(), 11}));
    EXPECT_EQ(valuesOf<int16_t>(wide), (std::vector<int16_t>{5, 0}));
    const TyxEqnTile wideSigned =
        lut.apply(tileOf<int64_t>(N::I64, {std::numeric_limits<int64_t>::min(), 12}));
    EXPECT_EQ(valuesOf<int16_t>(wideSigned), (std::vector<int16_t>{-5, 5}));
    // A step of 2 reads every other sample.
    const TyxEqnTile strided(bufferOf<uint16_t>({10, 99, 11, 99, 12}), TyxDataType(N::U16), 3, 2);
    EXPECT_EQ(valuesOf<int16_t>(lut.apply(strided)), (std::vector<int16_t>{-5, 0, 5}));

    // Each band has its own entries unless they are shared.
    const TyxBufferPtr two = bufferOf<float>({1.5f, 2.5f, 10.5f, 20.5f});
    const TyxLutDesc perBand(two, TyxDataType(N::Float), 2, -1, 2, false);
    const TyxEqnTile samples = tileOf<int8_t>(N::I8, {-1, 0});
    EXPECT_EQ(valuesOf<float>(perBand.apply(samples, 0)), (std::vector<float>{1.5f, 2.5f}));
    EXPECT_EQ(valuesOf<float>(perBand.apply(samples, 1)), (std::vector<float>{10.5f, 20.5f}));
    EXPECT_TRUE(perBand.apply(samples, 2).empty());

    const TyxLutDesc shared(two, TyxDataType(N::Float), 2, -1, 2, true);
    EXPECT_EQ(valuesOf<float>(shared.apply(samples, 1)), (std::vector<float>{1.5f, 2.5f}));
}

TEST(TyxLutDescTest, ApplyRefusesWhatItCannotServe)
{
    const TyxDataType u8(N::U8);
    const TyxLutDesc lut(bufferOf<uint8_t>({1, 2, 3, 4}), u8, 4, 0, 1, true);
    EXPECT_TRUE(lut.apply(tileOf<float>(N::Float, {1.0f})).empty());
    // A tile that claims more samples than its buffer holds.
    EXPECT_TRUE(lut.apply(TyxEqnTile(bufferOf<uint8_t>({1, 2}), u8, 3, 1)).empty());
    // A descriptor that claims more entries than its buffer holds.
    const TyxLutDesc tooShort(bufferOf<uint8_t>({1, 2}), u8, 4, 0, 1, true);
    EXPECT_TRUE(tooShort.apply(tileOf<uint8_t>(N::U8, {1})).empty());
    const TyxLutDesc complex(bufferOf<double>({1, 2, 3, 4}), TyxDataType(N::ComplexFloat), 2, 0, 1, true);
    EXPECT_TRUE(complex.apply(tileOf<uint8_t>(N::U8, {1})).empty());
    EXPECT_TRUE(TyxLutDesc().apply(tileOf<uint8_t>(N::U8, {1})).empty());
}

// An image tile goes band by band through the band's own table, in any layout.
TEST(TyxLutDescTest, ImageTileBandsGoThroughTheirOwnTables)
{
    // Band 0 doubles, band 1 negates; indices 0 to 3.
    const TyxLutDesc lut(bufferOf<int16_t>({0, 2, 4, 6, 0, -1, -2, -3}), TyxDataType(N::I16), 4, 0, 2, false);
    for (const auto layout :
         {TyxDataLayout::PixelInterleaved, TyxDataLayout::BandInterleaved, TyxDataLayout::LineInterleaved}) {
        // Samples 0 to 4: 4 is clamped.
        const TyxImageTilePtr mapped = lut.apply(rampTile(2, layout));
        ASSERT_TRUE(mapped) << layout;
        EXPECT_EQ(mapped->dataType(), TyxDataType(N::I16));
        EXPECT_EQ(mapped->layout(), TyxDataLayout(layout));
        for (unsigned y = 0; y < 2; ++y) {
            for (unsigned x = 0; x < 3; ++x) {
                const int index0 = std::min<int>(x + y, 3);
                const int index1 = std::min<int>(x + y + 1, 3);
                EXPECT_EQ(*mapped->ptrAt<int16_t>(x, y, 0), 2 * index0);
                EXPECT_EQ(*mapped->ptrAt<int16_t>(x, y, 1), -index1);
            }
        }
    }
}

TEST(TyxLutDescTest, ImageTileRefusals)
{
    const TyxLutDesc oneBand(bufferOf<uint8_t>({5, 6}), TyxDataType(N::U8), 2, 0, 1, false);
    EXPECT_FALSE(oneBand.apply(TyxImageTile(TyxImageTileDesc(
        TyxImageROI({}, TyxImageSize(2, 2, 1)), TyxDataLayout::BandInterleaved, TyxDataType(N::Float)))));
    EXPECT_FALSE(oneBand.apply(rampTile(2)));
    // Not allocated.
    EXPECT_FALSE(oneBand.apply(TyxImageTile(TyxImageTileDesc(
        TyxImageROI({}, TyxImageSize(2, 2, 1)), TyxDataLayout::BandInterleaved, TyxDataType(N::U8)))));
    // Shared table data serves every band.
    const TyxLutDesc shared(bufferOf<uint8_t>({5, 6}), TyxDataType(N::U8), 2, 0, 1, true);
    const TyxImageTilePtr mapped = shared.apply(rampTile(3));
    ASSERT_TRUE(mapped);
    EXPECT_EQ(*mapped->ptrAt<uint8_t>(0, 0, 2), 6);
    EXPECT_EQ(*mapped->ptrAt<uint8_t>(0, 0, 0), 5);
}

} // namespace
