#include <tyx/TyxBreakPoint.h>
#include <tyx/TyxBreakPointLut.h>

#include "TyxLutTestData.h"
#include "TyxRecordingHandler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

using namespace tyx;
using N = TyxNumericType;
using namespace test;

const TyxDataType U8(N::U8);
const TyxDataType I8(N::I8);
const TyxDataType I16(N::I16);
const TyxDataType U16(N::U16);
const TyxDataType FloatType(N::Float);

TEST(TyxBreakPointTest, OrderByBandThenInThenOut)
{
    std::vector<TyxBreakPoint> points = {{5, 1.0, 1}, {7, 0.0, 0}, {5, 0.5, 1}, {2, 9.0, 1}, {7, -1.0, 0}};
    std::sort(points.begin(), points.end());
    const std::vector<TyxBreakPoint> expected = {
        {7, -1.0, 0}, {7, 0.0, 0}, {2, 9.0, 1}, {5, 0.5, 1}, {5, 1.0, 1}};
    EXPECT_EQ(points, expected);
}

TEST(TyxBreakPointTest, TextFormsAndTheEndOfTheParse)
{
    EXPECT_EQ(TyxBreakPoint(0, 12.5, 1).toString(), L"(0,12.5,1)");
    TyxBreakPoint p;
    EXPECT_EQ(p.fromString(L"(1,2.5,3)"), 9u);
    EXPECT_EQ(p, TyxBreakPoint(1, 2.5, 3));
    // Any character stands between the numbers.
    EXPECT_EQ(p.fromString(L"[4;5;6] rest"), 7u);
    EXPECT_EQ(p, TyxBreakPoint(4, 5.0, 6));
    // A failed parse leaves the target alone.
    for (const wchar_t *text : {L"", L"(1,2.5)", L"(x,2,3)", L"(1,2,-)", L"(1,2,3"}) {
        EXPECT_EQ(p.fromString(text), 0u) << text;
        EXPECT_EQ(p, TyxBreakPoint(4, 5.0, 6)) << text;
    }
}

TEST(TyxBreakPointLutTest, NoPointsSpanTheInputRangeInOneReusedBand)
{
    TyxBreakPointLut bpl(U8);
    std::vector<TyxBreakPoint> result = {TyxBreakPoint(1, 1.0, 1)};
    bpl.get(result, 0); // no input type yet
    EXPECT_TRUE(result.empty());
    const TyxLutDescPtr &lut = bpl.lut(U8);
    ASSERT_TRUE(lut);
    EXPECT_EQ(lut->numBands(), 1u);
    EXPECT_TRUE(lut->reuseLutDataForAllBands());
    EXPECT_EQ(lut->numEntriesPerBand(), 256u);
    const auto values = entriesOf<uint8_t>(*lut);
    for (int v = 0; v < 256; ++v)
        ASSERT_EQ(values[v], v);
    int64_t lo = 0, hi = 0;
    bpl.lut(TyxDataType(N::U16, 12))->indexRange(lo, hi);
    EXPECT_EQ(lo, 0);
    EXPECT_EQ(hi, 4095);
    EXPECT_EQ(bpl.lut(I8)->minIndex(), -128);
    // The points it stands for span the input type onto the output type.
    bpl.get(result, 2);
    EXPECT_EQ(result, (std::vector<TyxBreakPoint>{{-128, 0.0, 2}, {127, 255.0, 2}}));
    EXPECT_EQ(bpl.lut(FloatType)->minIndex(), -32768);
    EXPECT_EQ(bpl.lut(FloatType)->numEntriesPerBand(), 65536u);
}

TEST(TyxBreakPointLutTest, InterpolationRoundingAndLimits)
{
    const struct {
        TyxDataType output;
        std::vector<TyxBreakPoint> points;
        std::vector<std::pair<size_t, double>> expected;
        TyxDataType input = U8;
    } cases[] = {
        // 0.5 rounds up; the last entry is the last point's own value, 127.5 rounded.
        {U8, {{0, 0.0, 0}, {255, 127.5, 0}}, {{0, 0}, {1, 1}, {127, 64}, {254, 127}, {255, 128}}},
        // Out of order on purpose: building sorts them. Flat outside the points;
        // the later of two equal inputs starts the next segment.
        {I16,
         {{20, 50.0, 0}, {10, -10.0, 0}, {15, 0.0, 0}, {15, 100.0, 0}},
         {{0, -10}, {10, -10}, {12, -6}, {15, 100}, {17, 80}, {255, 50}}},
        // -127.5 rounds away from zero.
        {I8,
         {{0, -128.0, 0}, {2, -127.0, 0}, {255, 127.0, 0}},
         {{0, -128}, {1, -128}, {2, -127}, {255, 127}}},
        {I16, {{0, -32768.0, 0}, {65535, 32767.0, 0}}, {{0, -32768}, {32768, 0}, {65535, 32767}}, U16},
        {FloatType, {{0, -32768.0, 0}, {255, 32767.0, 0}}, {{0, -32768}, {1, -32511}, {255, 32767}}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.output << " from " << c.input);
        TyxBreakPointLut bpl = pointLut(c.output, c.points);
        const TyxLutDescPtr &lut = bpl.lut(c.input);
        ASSERT_TRUE(lut);
        for (const auto &[index, value] : c.expected)
            EXPECT_EQ(entriesAsDoubles(*lut).at(index), value) << index;
    }
}

TEST(TyxBreakPointLutTest, SeveralBandsEachGetTheirOwnEntries)
{
    TyxBreakPointLut bpl = pointLut(U8, {{255, 0.0, 1}, {0, 0.0, 0}, {0, 255.0, 1}, {255, 255.0, 0}});
    std::vector<TyxBreakPoint> result;
    bpl.get(result, 1); // one band, sorted
    EXPECT_EQ(result, (std::vector<TyxBreakPoint>{{0, 255.0, 1}, {255, 0.0, 1}}));
    const TyxLutDescPtr &lut = bpl.lut(U8);
    ASSERT_TRUE(lut);
    EXPECT_FALSE(lut->reuseLutDataForAllBands());
    const auto values = entriesOf<uint8_t>(*lut);
    EXPECT_EQ(values[10], 10);
    EXPECT_EQ(values[256 + 10], 245);
    // The band count is the span of the band numbers.
    EXPECT_EQ(pointLut(U8, {{0, 0.0, 3}, {0, 0.0, 5}}).numBands(), 3u);
}

TEST(TyxBreakPointLutTest, TableIsCachedUntilSomethingChanges)
{
    TyxBreakPointLut bpl(U8);
    const TyxLutDescPtr first = bpl.lut(U8);
    EXPECT_EQ(bpl.lut(U8).get(), first.get());
    bpl.add(TyxBreakPoint(0, 3.0, 0));
    bpl.add(TyxBreakPoint(255, 3.0, 0));
    const TyxLutDescPtr second = bpl.lut(U8);
    EXPECT_NE(second.get(), first.get());
    EXPECT_EQ(entriesOf<uint8_t>(*first)[7], 7); // the dropped table lives on while shared
    bpl.setOutputDataType(U8);                   // same type: ignored
    EXPECT_EQ(bpl.lut(U8).get(), second.get());
    bpl.setOutputDataType(TyxDataType()); // invalid: ignored
    EXPECT_EQ(bpl.lut(U8).get(), second.get());
    EXPECT_NE(bpl.lut(U16).get(), second.get());
    bpl.setOutputDataType(I16);
    EXPECT_EQ(bpl.lut(U8)->dataType(), I16);
}

TEST(TyxBreakPointLutTest, FailuresPostTheirMessageAndGiveNull)
{
    const struct {
        std::vector<TyxBreakPoint> points;
        const wchar_t *message;
        TyxDataType input = U8, output = U8;
    } cases[] = {
        {{}, L"Input data type ((,0)) is not valid.", TyxDataType()},
        {{}, L"Output data type ((,0)) is not valid.", U8, TyxDataType()},
        {{{-1, 0.0, 0}, {255, 0.0, 0}},
         L"Minimum input value (-1) for all bands is smaller than minimum (0) for bit depth."},
        {{{0, 0.0, 0}, {300, 0.0, 0}},
         L"Maximum input value (300) for all bands is larger than maximum (255) for bit depth."},
        {{{0, -0.5, 0}, {255, 0.0, 0}},
         L"Minimum output value (-0.5) for all bands is smaller than minimum (0) for bit depth."},
        {{{0, 0.0, 0}, {255, 40000.0, 0}},
         L"Maximum output value (40000) for all bands is larger than maximum (32767) for bit depth.",
         U8,
         FloatType},
        {{{0, 0.0, 0}, {255, 0.0, 0}, {0, 0.0, 2}, {255, 0.0, 2}},
         L"Band 1 does not have at least two break points."},
        {{{0, 0.0, 1}, {255, 0.0, 1}}, L"Band numbers must start at zero and cannot be negative."},
        {{{0, std::nan(""), 0}, {255, 1.0, 0}},
         L"Minimum output value (nan) for all bands is smaller than minimum (0) for bit depth."},
        {{}, L"Invalid data type", U8, TyxDataType(N::I64)},
        {{}, L"Could not allocate 4294967296 for LUT data.", TyxDataType(N::U32)},
    };
    for (const auto &c : cases) {
        HandlerScope scope;
        EXPECT_FALSE(pointLut(c.output, c.points).lut(c.input)) << c.message;
        EXPECT_EQ(scope.onlyText(), c.message);
    }
}

TEST(TyxBreakPointLutTest, FailedBuildKeepsInputTypeAndCopiesTakePointsButNoTable)
{
    HandlerScope scope;
    TyxBreakPointLut bpl = pointLut(U8, {{0, 0.0, 0}, {300, 0.0, 0}});
    EXPECT_FALSE(bpl.lut(U8));
    EXPECT_EQ(bpl.inputDataType(), U8);
    ASSERT_TRUE(bpl.lut(U16));
    TyxBreakPointLut copy(bpl);
    EXPECT_EQ(copy.points(), bpl.points());
    EXPECT_FALSE(copy.inputDataType().isValid());
    TyxBreakPointLut assigned;
    assigned = bpl;
    EXPECT_FALSE(assigned.inputDataType().isValid());
}

} // namespace
