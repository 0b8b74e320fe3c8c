#include <tyx/TyxImageTile.h>
#include <tyx/TyxPixel.h>
#include <tyx/TyxPixelIterator.h>

#include <gtest/gtest.h>

#include <complex>
#include <cstdint>
#include <limits>
#include <sstream>
#include <vector>

#include "TyxTilePattern.h"

namespace {

using namespace tyx;
using namespace tyx::test;
using N = TyxNumericType;
using L = TyxDataLayout;
using Sample = TyxPixel::Sample;

TEST(TyxPixelSampleTest, PlainCastsAndComparisonInCommonType)
{
    EXPECT_EQ(static_cast<unsigned char>(Sample(300.7)), 44);
    EXPECT_EQ(static_cast<int>(Sample(3.9, 2.0)), 3);
    EXPECT_EQ(static_cast<std::complex<float>>(Sample(1.5, -2.0)), std::complex<float>(1.5f, -2.0f));
    EXPECT_EQ(static_cast<int>(Sample()), 0);

    // Comparison is in the common type.
    EXPECT_TRUE(Sample(int(3)) == Sample(3.0));
    EXPECT_FALSE(Sample() == Sample());
    EXPECT_FALSE(Sample(static_cast<unsigned char>(200)) == Sample(static_cast<signed char>(-56)));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(Sample(nan) == Sample(nan));
    EXPECT_FALSE(Sample(2.0, 1.0) == Sample(2.0));
    // U64 with a signed type compares as U64.
    EXPECT_TRUE(Sample(uint64_t(UINT64_MAX)) == Sample(int64_t(-1)));
}

TEST(TyxPixelTest, TextForms)
{
    std::wostringstream out;
    out.precision(3);
    out << TyxPixel(2, Sample(1.5));
    EXPECT_EQ(out.str(), L"2:  1.5 1.5");
    EXPECT_EQ(out.precision(), 3);

    std::ostringstream narrow;
    narrow << TyxPixel(std::vector<Sample>{Sample(static_cast<signed char>(-3)),
                                           Sample(static_cast<unsigned char>(250)), Sample(0.1),
                                           Sample(1.0, -2.0), Sample()});
    EXPECT_EQ(narrow.str(), "5:  -3 250 0.10000000000000001 (1,-2) ");

    std::wistringstream in(L"3: 1.5 (2,0) (1,-2)");
    TyxPixel read;
    in >> read;
    ASSERT_EQ(read.numBands(), 3u);
    EXPECT_EQ(read[2].type(), TyxDataType(N::ComplexDouble));
    EXPECT_EQ(read.imag(2), -2.0);

    std::wistringstream back(L"2:  1.5 1.5");
    back >> read;
    EXPECT_EQ(read, TyxPixel(2, Sample(1.5)));

    for (const wchar_t *bad : {L"2 1.5 1.5", L"0: 1", L"-4: 1", L"x"}) {
        std::wistringstream text(bad);
        read = TyxPixel(1, Sample(1));
        text >> read;
        EXPECT_TRUE(read.isEmpty()) << bad;
    }
}

std::vector<std::vector<double>> walk(TyxPixelIterator &&it)
{
    std::vector<std::vector<double>> seen;
    for (; !(*it).isEmpty(); ++it) {
        std::vector<double> values;
        for (unsigned b = 0; b < (*it).numBands(); ++b)
            values.push_back((*it).real(b));
        seen.push_back(values);
    }
    return seen;
}

template <class T>
class TyxPixelIteratorTypedTest : public ::testing::Test {
};
template <class T, N::Code C>
struct Case {
    using type = T;
    static constexpr N::Code code = C;
};
using AllTypes = ::testing::Types<Case<int8_t, N::I8>, Case<uint64_t, N::U64>, Case<float, N::Float>,
                                  Case<std::complex<double>, N::ComplexDouble>>;
TYPED_TEST_SUITE(TyxPixelIteratorTypedTest, AllTypes);

TYPED_TEST(TyxPixelIteratorTypedTest, SameOrderInEveryLayout)
{
    using T = typename TypeParam::type;
    std::vector<std::vector<double>> expected;
    for (unsigned y = 0; y < 3; ++y)
        for (unsigned x = 0; x < 4; ++x)
            expected.push_back({x + 10.0 * y, x + 10.0 * y + 30, x + 10.0 * y + 60});
    for (L layout : {L::PixelInterleaved, L::BandInterleaved, L::LineInterleaved, L::BlockInterleaved}) {
        // Band steps of 30 keep every value inside I8.
        const TyxImageTile tile = patterned<T>(4, 3, 3, layout, TypeParam::code, {}, 30);
        TyxPixelIterator it(tile);
        EXPECT_EQ((*it)[0].type(), TyxDataType(TypeParam::code));
        EXPECT_EQ(walk(std::move(it)), expected);
        // The pixel at a position gives the same samples.
        EXPECT_EQ(tile(3, 2).real(2), 83.0);
        const TyxImageROI region(TyxCoord3D<int>(1, 1, 1), TyxImageSize(2, 2, 2));
        const std::vector<std::vector<double>> inner = walk(TyxPixelIterator(tile, region));
        EXPECT_EQ(inner, (std::vector<std::vector<double>>{{41, 71}, {42, 72}, {51, 81}, {52, 82}}));
    }
}

TEST(TyxPixelIteratorTest, RegionsEndsAndEmptyTiles)
{
    const TyxImageTile tile = patterned<uint16_t>(3, 3, 3, L::PixelInterleaved, N::U16);
    const struct {
        TyxImageROI roi;
        std::vector<std::vector<double>> walked;
    } cases[] = {
        // Width 1: a new row at each step.
        {TyxImageROI(2, 0, 1, 3, {0}), {{2}, {12}, {22}}},
        // Bands 0 and 2 walk the contiguous bands 0 and 1.
        {TyxImageROI(0, 0, 1, 1, {0, 2}), {{0, 100}}},
        {TyxImageROI(0, 0, 2, 2, {}), {}},
        // Regions reaching outside the tile.
        {TyxImageROI(2, 0, 2, 1, {0}), {}},
        {TyxImageROI(-1, 0, 1, 1, {0}), {}},
        {TyxImageROI(0, 0, 1, 1, {2, 3}), {}},
        {TyxImageROI(0, 2, 1, 2, {0}), {}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(walk(TyxPixelIterator(tile, c.roi)), c.walked) << "case " << &c - cases;

    // Past the end the iterator stays there.
    TyxPixelIterator it(tile, TyxImageROI(1, 1, 1, 1, {1}));
    EXPECT_EQ((*it).real(0), 111.0);
    ++it;
    ++it;
    ++it;
    EXPECT_TRUE((*it).isEmpty());
    EXPECT_EQ(it.begin().real(0), 111.0);

    // No bands, no memory, an invalid type.
    EXPECT_TRUE((*TyxPixelIterator(TyxImageTile(descOf(3, 3, 0, L::PixelInterleaved, N::U8)))).isEmpty());
    EXPECT_TRUE((*TyxPixelIterator(TyxImageTile(descOf(3, 3, 1, L::PixelInterleaved, N::U8)))).isEmpty());
    const TyxImageTile invalid(descOf(3, 3, 1, L::PixelInterleaved, N::Invalid));
    TyxPixelIterator none(invalid);
    EXPECT_TRUE((*none).isEmpty());
    EXPECT_TRUE(none.begin().isEmpty());
    ++none;
}

} // namespace
