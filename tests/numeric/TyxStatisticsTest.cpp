#include <tyx/TyxEqnTile.h>
#include <tyx/TyxHistogram.h>
#include <tyx/TyxImageTile.h>
#include <tyx/TyxStatistics.h>
#include <tyx/TyxTextMsg.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <type_traits>
#include <vector>

namespace {

using namespace tyx;
using L = TyxDataLayout;
using N = TyxNumericType;

TEST(TyxStatisticsTest, KnownSetsRefusalsAndMerge)
{
    const struct {
        uint64_t n;
        double sum, squares;
        double mean, variance, rms;
    } cases[] = {
        {4, 10.0, 30.0, 2.5, 1.25, std::sqrt(7.5)}, // 1, 2, 3, 4
        {1, 7.0, 49.0, 7.0, 0.0, 7.0},              // one value
        {3, -6.0, 12.0, -2.0, 0.0, 2.0},            // constant -2
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.n);
        TyxStatistics stats;
        EXPECT_EQ(stats.initialize(c.n, -1.0, 1.0, c.sum, c.squares), 0);
        EXPECT_EQ(stats.mean(), c.mean);
        EXPECT_EQ(stats.variance(), c.variance);
        EXPECT_EQ(stats.rms(), c.rms);
        EXPECT_EQ(stats, TyxStatistics(c.n, -1.0, 1.0, c.sum, c.squares));
    }
    // Empty sets and impossible sums are refused.
    TyxStatistics stats(4, 1.0, 4.0, 10.0, 30.0);
    EXPECT_EQ(stats.initialize(0, 1.0, 4.0, 10.0, 30.0), 1);
    EXPECT_TRUE(stats.isEmpty());
    EXPECT_EQ(stats.initialize(4, 1.0, 4.0, 10.0, -1.0), 1);
    EXPECT_TRUE(stats.isEmpty());
    EXPECT_EQ(stats.initialize(4, 1.0, 4.0, 10.0, std::nan("")), 1);
    EXPECT_TRUE(stats.isEmpty());
    EXPECT_EQ(stats.initialize(4, 1.0, 4.0, 10.0, 0.0), 0);

    // Merging adds the sums and widens the extremes; an empty side adds nothing.
    TyxStatistics low(2, 1.0, 2.0, 3.0, 5.0);
    low.merge(TyxStatistics(2, 3.0, 4.0, 7.0, 25.0));
    low.merge(TyxStatistics());
    EXPECT_EQ(low, TyxStatistics(4, 1.0, 4.0, 10.0, 30.0));
    TyxStatistics empty;
    empty.merge(low);
    EXPECT_EQ(empty, low);
}

TEST(TyxStatisticsTest, FillSumsSmallIntegersExactlyAndLeavesNaNOut)
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
    // keeping only the sums; the clamp keeps the rounding noise from going
    // negative.
    std::vector<int32_t> large = {1000000000, 1000000001, 1000000002, 1000000003};
    ASSERT_EQ(stats.fill(TyxEqnTile::wrap(std::span<int32_t>(large))), 0);
    EXPECT_EQ(stats.mean(), 1000000001.5);
    EXPECT_EQ(stats.variance(), 0.0);

    // NaN samples are left out.
    std::vector<float> values = {1.0f, std::nanf(""), 3.0f, std::nanf(""), 2.0f};
    ASSERT_EQ(stats.fill(TyxEqnTile::wrap(std::span<float>(values))), 0);
    EXPECT_EQ(stats, TyxStatistics(3, 1.0, 3.0, 6.0, 14.0));

    std::vector<double> nans(5, std::nan(""));
    TyxTextMsg msg;
    EXPECT_EQ(stats.fill(TyxEqnTile::wrap(std::span<double>(nans)), &msg), 1);
    EXPECT_EQ(msg.text(), L"The tile holds no samples that are numbers.");
    EXPECT_TRUE(stats.isEmpty());

    TyxImageTile tile(
        TyxImageTileDesc(TyxImageROI(TyxImageSize(3, 2, 1)), L::BandInterleaved, TyxDataType(N::Float)));
    std::fill_n(tile.ptrAt<float>(0, 0, 0), 6, std::nanf(""));
    EXPECT_EQ(stats.fill(tile, 0, &msg), 1);
    EXPECT_EQ(msg.text(), L"The band holds no samples that are numbers.");
    EXPECT_TRUE(stats.empty());
}

TEST(TyxStatisticsTest, FillRefusesTilesItCannotRead)
{
    TyxBufferPtr buffer(new TyxBuffer(64, true));
    const struct {
        TyxEqnTile tile;
        const wchar_t *text;
    } cases[] = {
        {TyxEqnTile(), L"The tile's samples are not real numbers ()."},
        {TyxEqnTile(TyxDataType(N::ComplexFloat), 4),
         L"The tile's samples are not real numbers (ComplexFloat)."},
        {TyxEqnTile(TyxDataType(N::Double), 0), L"The tile holds no samples."},
        {TyxEqnTile(buffer, TyxDataType(N::U16), 4, 2), L"The tile's step is 2; only step 1 is counted."},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        TyxStatistics stats(4, 1.0, 4.0, 10.0, 30.0);
        TyxTextMsg msg;
        EXPECT_EQ(stats.fill(c.tile, &msg), 1);
        EXPECT_EQ(msg.text(), c.text);
        EXPECT_TRUE(stats.isEmpty());
    }
}

TyxBufferPtr countsOf(const std::vector<uint64_t> &counts)
{
    TyxBufferPtr buffer(new TyxBuffer(counts.size() * sizeof(uint64_t), true));
    std::memcpy(buffer->data(), counts.data(), counts.size() * sizeof(uint64_t));
    return buffer;
}

TyxHistogram histogramOf(const std::vector<uint64_t> &counts, int first)
{
    TyxHistogram histogram;
    histogram.initialize(countsOf(counts), first, first + static_cast<int>(counts.size()) - 1);
    return histogram;
}

TEST(TyxHistogramTest, TwoEqualBinsInTheMiddle)
{
    const TyxHistogram h = histogramOf({0, 2, 2, 0}, 10);
    EXPECT_EQ(h.firstBin(), 1);
    EXPECT_EQ(h.lastBin(), 2);
    EXPECT_EQ(h.peakPercent(), 50.0);
    EXPECT_EQ(static_cast<const TyxStatistics &>(h),
              TyxStatistics(4, 11.0, 12.0, 46.0, 2.0 * 121 + 2.0 * 144));
    EXPECT_EQ(h.mean(), 11.5);
    EXPECT_EQ(h.variance(), 0.25);
    EXPECT_EQ(h.percentile(0.5, false), 11);
    EXPECT_EQ(h.entropy(), 1.0);
    const double *cumulative = h.cumulativeHistogram();
    ASSERT_NE(cumulative, nullptr);
    EXPECT_EQ(std::vector<double>(cumulative, cumulative + 4), (std::vector<double>{0.0, 0.5, 1.0, 1.0}));
}

TEST(TyxHistogramTest, PercentilesAtBinEdgesAndWithoutTheBackground)
{
    const TyxHistogram h = histogramOf({1, 1, 1, 1}, 0);
    // A share reaching p exactly at a bin's end gives that bin; the last bin
    // is where a walk that never reaches p stops.
    const struct {
        double p;
        int value;
    } cases[] = {{0.0, 0}, {0.25, 0}, {0.2500001, 1}, {0.5, 1},      {0.75, 2}, {0.76, 3},
                 {1.0, 3}, {25.0, 0}, {100.0, 3},     {20000.0, -1}, {-0.1, -1}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.p);
        EXPECT_EQ(h.percentile(c.p, false), c.value);
    }
    // Skipping the first bin, the background.
    const TyxHistogram background = histogramOf({10, 1, 1, 2}, 0);
    EXPECT_EQ(background.percentile(0.5, false), 0);
    EXPECT_EQ(background.percentile(0.5, true), 2);
    // With only one non-empty bin the walk has nowhere to go.
    EXPECT_EQ(histogramOf({0, 4, 0}, 7).percentile(0.5, true), 8);
}

TEST(TyxHistogramTest, ModeAndMedianRules)
{
    const struct {
        std::vector<uint64_t> counts;
        int first;
        int mode;
        double median;
    } cases[] = {
        {{1, 5, 1}, 0, 1, 1.0},         // passes the half inside a bin
        {{2, 0, 0, 2}, 5, 5, 1.5},      // even count: mean with the next non-empty bin
        {{0, 3, 0}, 100, 101, 1.0},     // an index, without the first value
        {{1, 2}, 0, 1, 0.0},            // odd count meeting the half exactly stays on that bin
        {{1, 3, 0, 3, 2}, -2, -1, 1.0}, // the mode is the first of a tie
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.median);
        const TyxHistogram h = histogramOf(c.counts, c.first);
        EXPECT_EQ(h.mode(), c.mode);
        EXPECT_EQ(h.median(), c.median);
    }
}

TEST(TyxHistogramTest, EmptyHistograms)
{
    TyxHistogram h;
    h.initialize(TyxBufferPtr(), 0, 9);
    EXPECT_TRUE(h.isEmpty());
    EXPECT_EQ(h.percentile(0.5, false), -1);
    EXPECT_EQ(h.median(), 0.0);

    // Only empty bins: no division by the count of 0.
    const TyxHistogram zeros = histogramOf({0, 0, 0}, 4);
    EXPECT_TRUE(zeros.isEmpty());
    EXPECT_EQ(zeros.mean(), 0.0);
    EXPECT_EQ(zeros.peakPercent(), 0.0);
    EXPECT_EQ(zeros.cumulativeHistogram(), nullptr);

    // A buffer too small for the bins is not read.
    TyxHistogram small;
    small.initialize(countsOf({1, 2}), 0, 2);
    EXPECT_TRUE(small.isEmpty());
    EXPECT_EQ(small.histogram(), nullptr);
    small.initialize(TyxBufferPtr(new TyxBuffer(24, false)), 0, 2);
    EXPECT_EQ(small.histogram(), nullptr);
}

TEST(TyxHistogramTest, CopiesShareAndClearDrops)
{
    TyxHistogram a = histogramOf({3, 1}, 0);
    const double *cumulative = a.cumulativeHistogram();
    const TyxHistogram b = a;
    EXPECT_EQ(b.histogram(), a.histogram());
    EXPECT_EQ(b.cumulativeHistogram(), cumulative);
    EXPECT_EQ(a, b);

    a.clear();
    EXPECT_TRUE(a.isEmpty());
    EXPECT_EQ(a.histogram(), nullptr);
    EXPECT_EQ(b.histogram()[0], 3u); // the copy keeps the counts alive
}

TEST(TyxHistogramTest, FillRefusesWideIntegerRanges)
{
    std::vector<int32_t> wide = {0, 1 << 25};
    std::vector<uint32_t> high = {1, 3000000000u};
    std::vector<int64_t> low = {-3000000000LL, -2999999999LL};
    std::vector<uint64_t> huge = {std::numeric_limits<uint64_t>::max()};
    for (const TyxEqnTile &tile :
         {TyxEqnTile::wrap(std::span<int32_t>(wide)), TyxEqnTile::wrap(std::span<uint32_t>(high)),
          TyxEqnTile::wrap(std::span<int64_t>(low)), TyxEqnTile::wrap(std::span<uint64_t>(huge))}) {
        TyxHistogram h = histogramOf({1}, 0);
        TyxTextMsg msg;
        EXPECT_EQ(h.fill(tile, &msg), 1);
        EXPECT_EQ(msg.text(),
                  L"The samples reach beyond the values a histogram can count; count them through a "
                  L"bin width and a range.");
        EXPECT_TRUE(h.isEmpty());
    }
}

TEST(TyxHistogramTest, FillThroughBins)
{
    std::vector<double> values = {0.0, 0.5, 1.0, 2.5, std::nan(""), -1.0, 3.0, 3.0000001, 0.9999};
    TyxHistogram h;
    ASSERT_EQ(h.fill(TyxEqnTile::wrap(std::span<double>(values)), 1.0, 0.0, 3.0), 0);
    ASSERT_EQ(h.numBins(), 3);
    EXPECT_EQ(h.minDataTypeValue(), 0);
    EXPECT_EQ(std::vector<uint64_t>(h.histogram(), h.histogram() + 3), (std::vector<uint64_t>{3, 1, 2}));
    EXPECT_EQ(h.numSamples(), 6u);

    // A range of one point is one bin.
    std::vector<uint16_t> shorts = {10, 11, 19, 20, 29, 30, 31, 7};
    ASSERT_EQ(h.fill(TyxEqnTile::wrap(std::span<uint16_t>(shorts)), 0.5, 20.0, 20.0), 0);
    EXPECT_EQ(h.numBins(), 1);
    EXPECT_EQ(h.numSamples(), 1u);

    // Nothing in range: an empty histogram, and no NaN anywhere.
    ASSERT_EQ(h.fill(TyxEqnTile::wrap(std::span<uint16_t>(shorts)), 1.0, 100.0, 200.0), 0);
    EXPECT_TRUE(h.isEmpty());
    EXPECT_EQ(h.mean(), 0.0);
}

TEST(TyxHistogramTest, FillRefusesBadBins)
{
    std::vector<float> values = {1.0f, 2.0f};
    const TyxEqnTile tile = TyxEqnTile::wrap(std::span<float>(values));
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        double width, min, max;
        const wchar_t *text;
    } cases[] = {
        {0.0, 0.0, 1.0, L"The bin width must be above 0 and finite, not 0.000000."},
        {inf, 0.0, 1.0, L"The bin width must be above 0 and finite, not inf."},
        {1.0, 2.0, 1.0, L"The range from 2.000000 to 1.000000 is not a range of numbers from low to high."},
        {1.0, 0.0, inf, L"The range from 0.000000 to inf is not a range of numbers from low to high."},
        {1e-9, 0.0, 1.0, L"The range holds more than 16777216 bins of that width."},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        TyxHistogram h = histogramOf({1}, 0);
        TyxTextMsg msg;
        EXPECT_EQ(h.fill(tile, c.width, c.min, c.max, &msg), 1);
        EXPECT_EQ(msg.text(), c.text);
        EXPECT_TRUE(h.isEmpty());
    }
}

const L kLayouts[] = {L::PixelInterleaved, L::BandInterleaved, L::LineInterleaved, L::BlockInterleaved};

constexpr unsigned kWidth = 7;
constexpr unsigned kHeight = 3;
constexpr unsigned kBands = 3;

/// A 7 x 3 tile of three bands whose sample at (x, y, b) is
/// (x * y + 3 * b) % 11, plus 40 in band 0, so that each band has its own
/// values and repeats some of them.
template <class T>
TyxImageTile filledTile(L layout)
{
    TyxImageTile tile(TyxImageTileDesc(TyxImageROI(TyxImageSize(kWidth, kHeight, kBands)), layout,
                                       TyxDataType(N::codeOf<T>())));
    EXPECT_EQ(tile.allocate(), 0);
    for (unsigned b = 0; b < kBands; ++b)
        for (unsigned y = 0; y < kHeight; ++y)
            for (unsigned x = 0; x < kWidth; ++x)
                *tile.ptrAt<T>(x, y, b) = static_cast<T>((x * y + 3 * b) % 11 + (b == 0 ? 40 : 0));
    return tile;
}

template <class T>
class TyxBandCountTest : public testing::Test {
};
using RealTypes = testing::Types<int8_t, uint16_t, int32_t, uint64_t, float, double>;
TYPED_TEST_SUITE(TyxBandCountTest, RealTypes);

TYPED_TEST(TyxBandCountTest, EachBandInEachLayout)
{
    for (const L layout : kLayouts) {
        const TyxImageTile tile = filledTile<TypeParam>(layout);
        for (unsigned b = 0; b < kBands; ++b) {
            SCOPED_TRACE(testing::Message() << layout.toString() << " band " << b);
            double sum = 0, squares = 0, lo = 1e300, hi = -1e300;
            std::map<int, uint64_t> counts;
            for (unsigned y = 0; y < kHeight; ++y) {
                for (unsigned x = 0; x < kWidth; ++x) {
                    const double v = static_cast<double>(*tile.ptrAt<TypeParam>(x, y, b));
                    sum += v;
                    squares += v * v;
                    lo = std::min(lo, v);
                    hi = std::max(hi, v);
                    ++counts[static_cast<int>(v)];
                }
            }
            TyxStatistics stats;
            TyxTextMsg msg;
            ASSERT_EQ(stats.fill(tile, b, &msg), 0);
            EXPECT_TRUE(msg.empty());
            EXPECT_EQ(stats, TyxStatistics(kWidth * kHeight, lo, hi, sum, squares));

            TyxHistogram histogram;
            if constexpr (std::is_integral_v<TypeParam>) {
                ASSERT_EQ(histogram.fill(tile, b, &msg), 0);
                // Bins span the type up to 16 bits, the samples' own range beyond.
                if constexpr (sizeof(TypeParam) <= 2) {
                    EXPECT_EQ(histogram.minDataTypeValue(), int(std::numeric_limits<TypeParam>::min()));
                    EXPECT_EQ(histogram.maxDataTypeValue(), int(std::numeric_limits<TypeParam>::max()));
                } else {
                    EXPECT_EQ(histogram.minDataTypeValue(), lo);
                    EXPECT_EQ(histogram.maxDataTypeValue(), hi);
                }
            } else {
                // Bins of width 1 from 0: the bin index is the value.
                ASSERT_EQ(histogram.fill(tile, b, 1.0, 0.0, 60.0, &msg), 0);
            }
            EXPECT_TRUE(msg.empty());
            EXPECT_EQ(static_cast<const TyxStatistics &>(histogram), stats);
            for (const auto &[value, count] : counts)
                EXPECT_EQ(histogram.histogram()[value - histogram.minDataTypeValue()], count) << value;
        }
    }
}

TEST(TyxBandCountTest, BadTilesAndBandsGiveMessages)
{
    const TyxImageTile u8 = filledTile<uint8_t>(L::PixelInterleaved);
    const TyxImageTile unallocated(
        TyxImageTileDesc(TyxImageROI(TyxImageSize(2, 2, 1)), L::PixelInterleaved, TyxDataType(N::U8)));
    TyxImageTile complex(TyxImageTileDesc(TyxImageROI(TyxImageSize(2, 2, 1)), L::PixelInterleaved,
                                          TyxDataType(N::ComplexFloat)));
    complex.allocate();
    const TyxImageTile floats = filledTile<float>(L::BandInterleaved);
    const TyxImageTile none;

    const struct {
        const TyxImageTile *tile;
        unsigned band;
        const wchar_t *text;
    } cases[] = {
        {&u8, 3, L"The tile has 3 bands; band 3 does not exist."},
        {&unallocated, 0, L"The tile's buffer is too small for its samples."},
        {&complex, 0, L"The tile's samples are not real numbers (ComplexFloat)."},
        {&floats, 0, L"Samples of type Float are counted through a bin width and a range."},
        {&none, 0, L"The tile holds no samples."},
    };
    for (const auto &c : cases) {
        const TyxImageTile &tile = *c.tile;
        TyxHistogram histogram = histogramOf({1}, 0);
        TyxTextMsg msg;
        EXPECT_EQ(histogram.fill(tile, c.band, &msg), 1);
        EXPECT_EQ(msg.text(), c.text);
        EXPECT_TRUE(histogram.empty());
        if (c.tile != &floats) {
            TyxStatistics stats(1, 1, 1, 1, 1);
            TyxTextMsg statsMsg;
            EXPECT_EQ(stats.fill(tile, c.band, &statsMsg), 1);
            EXPECT_EQ(statsMsg.text(), c.text);
            EXPECT_TRUE(stats.empty());
            TyxTextMsg binsMsg;
            EXPECT_EQ(histogram.fill(tile, c.band, 1.0, 0.0, 1.0, &binsMsg), 1);
            EXPECT_EQ(binsMsg.text(), c.text);
        }
    }
}

} // namespace
