#include <tyx/TyxEqnTile.h>
#include <tyx/TyxHistogram.h>
#include <tyx/TyxTextMsg.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace {

using namespace tyx;
using N = TyxNumericType;

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
    EXPECT_EQ(h.mode(), 11);
    EXPECT_EQ(h.peakPercent(), 50.0);
    EXPECT_EQ(static_cast<const TyxStatistics &>(h),
              TyxStatistics(4, 11.0, 12.0, 46.0, 2.0 * 121 + 2.0 * 144));
    EXPECT_EQ(h.mean(), 11.5);
    EXPECT_EQ(h.variance(), 0.25);
    EXPECT_EQ(h.median(), 1.5); // bin indices, not values
    EXPECT_EQ(h.percentile(0.5, false), 11);
    EXPECT_EQ(h.percentile(1.5, false), 11); // 1.5 per cent
    EXPECT_EQ(h.percentile(-1, false), 10);
    EXPECT_EQ(h.entropy(), 1.0);
    const double *cumulative = h.cumulativeHistogram();
    ASSERT_NE(cumulative, nullptr);
    EXPECT_EQ(std::vector<double>(cumulative, cumulative + 4), (std::vector<double>{0.0, 0.5, 1.0, 1.0}));
}

TEST(TyxHistogramTest, PercentilesAtBinEdges)
{
    const TyxHistogram h = histogramOf({1, 1, 1, 1}, 0);
    struct Case {
        double p;
        int value;
    };
    // A share reaching p exactly at a bin's end gives that bin; the last bin
    // is where a walk that never reaches p stops.
    const Case cases[] = {{0.0, 0}, {0.25, 0}, {0.2500001, 1}, {0.5, 1},      {0.75, 2}, {0.76, 3},
                          {1.0, 3}, {25.0, 0}, {100.0, 3},     {20000.0, -1}, {-0.1, -1}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.p);
        EXPECT_EQ(h.percentile(c.p, false), c.value);
    }
}

TEST(TyxHistogramTest, PercentileSkippingTheBackground)
{
    const TyxHistogram h = histogramOf({10, 1, 1, 2}, 0);
    EXPECT_EQ(h.percentile(0.5, false), 0);
    EXPECT_EQ(h.percentile(0.5, true), 2);
    // With only one non-empty bin the walk has nowhere to go.
    EXPECT_EQ(histogramOf({0, 4, 0}, 7).percentile(0.5, true), 8);
}

TEST(TyxHistogramTest, ModeAndMedianRules)
{
    struct Case {
        std::vector<uint64_t> counts;
        int first;
        int mode;
        double median;
    };
    const Case cases[] = {
        {{1, 5, 1}, 0, 1, 1.0},         // passes the half inside a bin
        {{2, 0, 0, 2}, 5, 5, 1.5},      // even count: mean with the next non-empty bin
        {{0, 3, 0}, 100, 101, 1.0},     // an index, without the first value
        {{1, 2}, 0, 1, 0.0},            // odd count meeting the half exactly stays on that bin
        {{1, 3, 0, 3, 2}, -2, -1, 1.0}, // the mode is the first of a tie
    };
    for (const Case &c : cases) {
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
    EXPECT_EQ(a.minDataTypeValue(), 0);
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
    const double nan = std::nan("");
    const double inf = std::numeric_limits<double>::infinity();
    struct Case {
        double width, min, max;
        const wchar_t *text;
    };
    const Case cases[] = {
        {0.0, 0.0, 1.0, L"The bin width must be above 0 and finite, not 0.000000."},
        {nan, 0.0, 1.0, L"The bin width must be above 0 and finite, not nan."},
        {inf, 0.0, 1.0, L"The bin width must be above 0 and finite, not inf."},
        {1.0, 2.0, 1.0, L"The range from 2.000000 to 1.000000 is not a range of numbers from low to high."},
        {1.0, 0.0, inf, L"The range from 0.000000 to inf is not a range of numbers from low to high."},
        {1e-9, 0.0, 1.0, L"The range holds more than 16777216 bins of that width."},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.text);
        TyxHistogram h = histogramOf({1}, 0);
        TyxTextMsg msg;
        EXPECT_EQ(h.fill(tile, c.width, c.min, c.max, &msg), 1);
        EXPECT_EQ(msg.text(), c.text);
        EXPECT_TRUE(h.isEmpty());
    }
}

} // namespace
