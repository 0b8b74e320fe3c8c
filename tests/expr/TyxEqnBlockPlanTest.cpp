// Evaluation of element-wise subtrees in blocks against whole-tile evaluation.
#include "TyxBandMathCases.h"

#include <gtest/gtest.h>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxSystem.h>

#include "expr/TyxEqnBlockPlan.h"

namespace {

using namespace tyx;
using tyx::internal::TyxEqnBlockPlan;
using tyx::testing::kBandMath;
using tyx::testing::ownResult;
using tyx::testing::sameBits;
using tyx::testing::setBands;

constexpr uint64_t kB = TyxEqnBlockPlan::kBlockSamples;

// The first evaluation of a parser runs the tree whole; the ones after it in
// blocks. Lengths around the block size and several blocks, below the
// parallel threshold; serial loops in any case.
TEST(TyxEqnBlockPlanTest, BlocksGiveTheBitsOfTheWholeTile)
{
    const bool before = enableParallelLoops(false);
    for (const uint64_t n : {uint64_t(0), uint64_t(1), kB - 1, kB, kB + 1, 3 * kB + 5}) {
        for (const wchar_t *text : kBandMath) {
            SCOPED_TRACE(::testing::Message() << "n=" << n << " expression: " << toUTF8(text));
            TyxEqnParser parser;
            ASSERT_EQ(parser.parse(text), 0);
            setBands(parser, n);
            const TyxEqnTile whole = ownResult(parser);
            // d[0] of an empty tile fails; then every evaluation fails alike.
            ASSERT_TRUE(whole.size() == n || n == 0);
            for (int round = 0; round < 2; ++round) {
                setBands(parser, n);
                EXPECT_TRUE(sameBits(ownResult(parser), whole));
            }
            // A scalar condition that picks the other branch.
            parser.setValue(L"k", 0.0);
            const TyxEqnTile other = ownResult(parser);
            TyxEqnParser fresh;
            ASSERT_EQ(fresh.parse(text), 0);
            setBands(fresh, n);
            fresh.setValue(L"k", 0.0);
            EXPECT_TRUE(sameBits(other, ownResult(fresh)));
        }
    }
    enableParallelLoops(before);
}

// A result of more than 4 MiB is written past the cache, with the same bits.
TEST(TyxEqnBlockPlanTest, LargeResultsGiveTheBitsOfTheWholeTile)
{
    const uint64_t n = (uint64_t(4) << 20) / sizeof(double) + 3;
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"(a - b) / (a + b)"), 0);
    setBands(parser, n);
    const TyxEqnTile whole = ownResult(parser);
    ASSERT_EQ(whole.size(), n);
    setBands(parser, n);
    EXPECT_TRUE(sameBits(ownResult(parser), whole));
}

// Operands of differing lengths run whole every time.
TEST(TyxEqnBlockPlanTest, UnevenOperandsRunWhole)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a * 2 + b"), 0);
    for (int round = 0; round < 3; ++round) {
        parser.setValue(L"a", tyx::testing::bandOf<uint16_t>(TyxNumericType::U16, kB + 7, 1, 1));
        parser.setValue(L"b", tyx::testing::bandOf<float>(TyxNumericType::Float, kB + 3 + round, 2, 2));
        const TyxEqnTile t = ownResult(parser);
        EXPECT_EQ(t.size(), kB + 3 + round);
    }
}

// A failure is reported once and leaves the parser usable; the result
// buffer is reused from one blocked evaluation to the next.
TEST(TyxEqnBlockPlanTest, FailuresAndReuse)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"(a - b) / e"), 0);
    setBands(parser, 2 * kB + 1);
    TyxTextMsg msg;
    EXPECT_FALSE(parser.evaluate(&msg).isValid());
    EXPECT_EQ(msg.text(), L"Invalid argument type combination (TyxEqnTile,) passed to 'divide'.");
    parser.setValue(L"e", tyx::testing::bandOf<uint8_t>(TyxNumericType::U8, 2 * kB + 1, 1, 5));
    const TyxEqnTile whole = ownResult(parser);
    parser.setValue(L"e", tyx::testing::bandOf<uint8_t>(TyxNumericType::U8, 2 * kB + 1, 1, 5));
    const void *first = parser.evaluate().value<TyxEqnTile>().buffer()->data();
    EXPECT_TRUE(sameBits(parser.evaluate().value<TyxEqnTile>(), whole));
    parser.setValue(L"e", tyx::testing::bandOf<uint8_t>(TyxNumericType::U8, 2 * kB + 1, 1, 5));
    const TyxEqnTile held = parser.evaluate().value<TyxEqnTile>();
    EXPECT_EQ(held.buffer()->data(), first);
    // While the caller holds that result, the next goes into a new buffer.
    parser.setValue(L"e", tyx::testing::bandOf<uint8_t>(TyxNumericType::U8, 2 * kB + 1, 1, 6));
    EXPECT_NE(parser.evaluate().value<TyxEqnTile>().buffer()->data(), first);
    EXPECT_TRUE(sameBits(held, whole));

    // A variable that changes its type makes the tree decide afresh.
    parser.setValue(L"e", 2.0);
    const TyxEqnTile halved = ownResult(parser);
    parser.setValue(L"e", 2.0);
    EXPECT_TRUE(sameBits(ownResult(parser), halved));
}

} // namespace
