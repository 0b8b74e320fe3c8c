#include <tyx/TyxEqnTile.h>
#include <tyx/TyxStatistics.h>
#include <tyx/TyxTextMsg.h>

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <limits>
#include <sstream>
#include <vector>

namespace {

using namespace tyx;
using N = TyxNumericType;

TEST(TyxStatisticsTest, KnownSets)
{
    struct Case {
        uint64_t n;
        double sum, squares;
        double mean, variance, rms;
    };
    const Case cases[] = {
        {4, 10.0, 30.0, 2.5, 1.25, std::sqrt(7.5)}, // 1, 2, 3, 4
        {1, 7.0, 49.0, 7.0, 0.0, 7.0},              // one value
        {3, -6.0, 12.0, -2.0, 0.0, 2.0},            // constant -2
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.n);
        TyxStatistics stats;
        EXPECT_EQ(stats.initialize(c.n, -1.0, 1.0, c.sum, c.squares), 0);
        EXPECT_EQ(stats.mean(), c.mean);
        EXPECT_EQ(stats.variance(), c.variance);
        EXPECT_EQ(stats.rms(), c.rms);
        EXPECT_EQ(stats, TyxStatistics(c.n, -1.0, 1.0, c.sum, c.squares));
    }
}

TEST(TyxStatisticsTest, RoundingNoiseInTheVarianceBecomesZero)
{
    // Three times 0.1: the two sums round so that the variance would come
    // out a hair below or above 0.
    const double x = 0.1;
    const TyxStatistics stats(3, x, x, x + x + x, x * x + x * x + x * x);
    EXPECT_GE(stats.variance(), 0.0);
    EXPECT_LT(stats.variance(), 1e-17);
}

TEST(TyxStatisticsTest, RejectsEmptySetsAndBadSums)
{
    TyxStatistics stats(4, 1.0, 4.0, 10.0, 30.0);
    EXPECT_EQ(stats.initialize(0, 1.0, 4.0, 10.0, 30.0), 1);
    EXPECT_TRUE(stats.isEmpty());
    EXPECT_EQ(stats.mean(), 0.0);

    EXPECT_EQ(stats.initialize(4, 1.0, 4.0, 10.0, -1.0), 1);
    EXPECT_TRUE(stats.isEmpty());
    EXPECT_EQ(stats.initialize(4, 1.0, 4.0, 10.0, std::nan("")), 1);
    EXPECT_TRUE(stats.isEmpty());
    EXPECT_EQ(stats.initialize(4, 1.0, 4.0, 10.0, 0.0), 0);
}

TEST(TyxStatisticsTest, Merge)
{
    TyxStatistics low(2, 1.0, 2.0, 3.0, 5.0);
    low.merge(TyxStatistics(2, 3.0, 4.0, 7.0, 25.0));
    EXPECT_EQ(low, TyxStatistics(4, 1.0, 4.0, 10.0, 30.0));
    EXPECT_EQ(low.variance(), 1.25);

    low.merge(TyxStatistics());
    EXPECT_EQ(low.numSamples(), 4u);
    TyxStatistics empty;
    empty.merge(low);
    EXPECT_EQ(empty, low);
}

TEST(TyxStatisticsTest, StreamsRefuse)
{
    const TyxStatistics stats(4, 1.0, 4.0, 10.0, 30.0);
    std::ostringstream out;
    out << stats;
    EXPECT_TRUE(out.fail());
    std::wistringstream in(L"4 1 4 10 30");
    TyxStatistics read;
    in >> read;
    EXPECT_TRUE(in.fail());
}

template <class T>
class TyxStatisticsFillTest : public testing::Test {
};
using RealTypes = testing::Types<int8_t, uint16_t, int32_t, uint64_t, float, double>;
TYPED_TEST_SUITE(TyxStatisticsFillTest, RealTypes);

TYPED_TEST(TyxStatisticsFillTest, CountsEverySample)
{
    // Seven samples, so that the four-lane sums have a remainder.
    std::vector<TypeParam> values = {4, 1, 3, 2, 4, 100, 1};
    const TyxEqnTile tile = TyxEqnTile::wrap(std::span<TypeParam>(values));
    TyxStatistics stats;
    TyxTextMsg msg;
    EXPECT_EQ(stats.fill(tile, &msg), 0);
    EXPECT_TRUE(msg.empty());
    EXPECT_EQ(stats, TyxStatistics(7, 1.0, 100.0, 115.0, 10047.0));
    EXPECT_EQ(stats.mean(), 115.0 / 7.0);
}

TEST(TyxStatisticsTest, FillSumsSmallIntegersExactly)
{
    // With 16-bit samples the sums are exact, and the variance of four
    // values 30000 to 30003 comes out exactly.
    std::vector<int16_t> small = {30000, 30001, 30002, 30003};
    TyxStatistics stats;
    ASSERT_EQ(stats.fill(TyxEqnTile::wrap(std::span<int16_t>(small))), 0);
    EXPECT_EQ(stats.sumOfSquares(), 3600360014.0);
    EXPECT_EQ(stats.variance(), 1.25);

    // Near 1e9 the squares need more digits than a double has: the variance
    // from the two sums loses the spread completely. That is the cost of
    // keeping only the sums; the clamp keeps it from going negative.
    std::vector<int32_t> large = {1000000000, 1000000001, 1000000002, 1000000003};
    ASSERT_EQ(stats.fill(TyxEqnTile::wrap(std::span<int32_t>(large))), 0);
    EXPECT_EQ(stats.mean(), 1000000001.5);
    EXPECT_EQ(stats.variance(), 0.0);
}

TEST(TyxStatisticsTest, FillLeavesNaNOut)
{
    std::vector<float> values = {1.0f, std::nanf(""), 3.0f, std::nanf(""), 2.0f};
    TyxStatistics stats;
    ASSERT_EQ(stats.fill(TyxEqnTile::wrap(std::span<float>(values))), 0);
    EXPECT_EQ(stats, TyxStatistics(3, 1.0, 3.0, 6.0, 14.0));

    std::vector<double> nans(5, std::nan(""));
    TyxTextMsg msg;
    EXPECT_EQ(stats.fill(TyxEqnTile::wrap(std::span<double>(nans)), &msg), 1);
    EXPECT_EQ(msg.text(), L"The tile holds no samples that are numbers.");
    EXPECT_TRUE(stats.isEmpty());
}

TEST(TyxStatisticsTest, FillRefusesTilesItCannotRead)
{
    TyxBufferPtr buffer(new TyxBuffer(64, true));
    struct Case {
        TyxEqnTile tile;
        const wchar_t *text;
    };
    const Case cases[] = {
        {TyxEqnTile(), L"The tile's samples are not real numbers ()."},
        {TyxEqnTile(TyxDataType(N::ComplexFloat), 4),
         L"The tile's samples are not real numbers (ComplexFloat)."},
        {TyxEqnTile(TyxDataType(N::Double), 0), L"The tile holds no samples."},
        {TyxEqnTile(buffer, TyxDataType(N::U8), 0, 1), L"The tile holds no samples."},
        {TyxEqnTile(buffer, TyxDataType(N::U16), 4, 2), L"The tile's step is 2; only step 1 is counted."},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.text);
        TyxStatistics stats(4, 1.0, 4.0, 10.0, 30.0);
        TyxTextMsg msg;
        EXPECT_EQ(stats.fill(c.tile, &msg), 1);
        EXPECT_EQ(msg.text(), c.text);
        EXPECT_TRUE(stats.isEmpty());
    }
}

} // namespace
