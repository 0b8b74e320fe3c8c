// Tests of the evaluation limits and of hostile input: folding across types, huge Bessel orders, loops and
// strings.
#include <tyx/TyxEqnParser.h>

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <span>

#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>

#include "TyxEqnTestSupport.h"

namespace {

using namespace tyx;
using Complex = std::complex<double>;

// The value of \p text, evaluated once with x = 2 m and y = 3; the message
// is filled on failure.
TyxVariant valueOf(TyxEqnParser &parser, const wchar_t *text, TyxTextMsg *msg)
{
    EXPECT_EQ(parser.parse(text), 0) << text;
    parser.setValue(L"x", TyxScalar(2.0, TyxUnits(L"m")));
    parser.setValue(L"y", TyxVariant(3.0));
    return parser.evaluate(msg);
}

TEST(TyxEqnLimitsTest, CollapseKeepsValuesWhenFoldedTypesChange)
{
    // Each folding turns a complex result into a scalar constant, or changes
    // what a call above it gives; the calls above must pick afresh.
    const wchar_t *texts[] = {
        L"2+0!",
        L"(y + 0!) * 2 - sqrt(-4)",
        L"cmplx(1, 2) * 3! + sqrt(y)",
        L"x * 2! + x",
        L"ternary(y > 1, 1! + 1, 2)",
        L"max(x, 2! * x) + y! * x",
        L"a + 1!; a = y! + sqrt(-1)",
    };
    for (const wchar_t *text : texts) {
        TyxEqnParser parser;
        TyxTextMsg msg;
        const TyxScalar before = valueOf(parser, text, &msg).value<TyxScalar>();
        ASSERT_TRUE(msg.empty()) << text << ": " << msg.text();
        EXPECT_GE(parser.collapse(), 1) << text;
        const TyxVariant &after = parser.evaluate(&msg);
        ASSERT_TRUE(after.isValid()) << text << ": " << msg.text();
        EXPECT_EQ(after.value<TyxScalar>().complex(), before.complex()) << text;
        EXPECT_EQ(after.value<TyxScalar>().units(), before.units()) << text;
        EXPECT_EQ(parser.collapse(), 0) << text;
    }
}

TEST(TyxEqnLimitsTest, HugeBesselOrdersTakeConstantTime)
{
    const double inf = std::numeric_limits<double>::infinity();
    struct Case {
        const wchar_t *text;
        double value; // NaN: the value is not known
    };
    const Case cases[] = {
        {L"jn(1, 4e9)", 0.0},
        {L"jn(-1, -4e9)", 0.0},
        {L"yn(1, 4e9)", -inf},
        {L"yn(1, -4e9)", -inf},
        {L"yn(1, -2147483647)", inf},
        {L"jn(4e9, 4e9)", NAN},
        {L"yn(-1, 4e9)", NAN},
        {L"jn(1, 10000)", ::jn(10000, 1.0)},
        {L"yn(1, -10000)", ::yn(-10000, 1.0)},
    };
    for (const Case &c : cases) {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(c.text), 0) << c.text;
        const Complex got = parser.evaluate().value<Complex>();
        if (std::isnan(c.value))
            EXPECT_TRUE(std::isnan(got.real())) << c.text;
        else
            EXPECT_EQ(got.real(), c.value) << c.text;
    }
    EXPECT_EQ(TyxScalar(5.0).yn(TyxScalar(-4e9)).real(), -inf);
    double samples[] = {0.5, 3e9};
    const TyxEqnTile tile = TyxEqnTile::wrap(std::span<double>(samples)).jn(2'000'000'000);
    const std::span<const double> values = tile.samples<double>();
    EXPECT_EQ(values[0], 0.0);
    EXPECT_TRUE(std::isnan(values[1]));
}

TEST(TyxEqnLimitsTest, BreachesFailWithTheirMessage)
{
    struct Case {
        const wchar_t *text;
        const wchar_t *message;
    };
    const Case cases[] = {
        {L"\"a\" * 2e9", L"The string built by 'multiply' would have 2000000000 characters, more than the "
                         L"limit of 16777216."},
        {L"2e9 * \"ab\"", L"The string built by 'multiply' would have 4000000000 characters, more than the "
                          L"limit of 16777216."},
        {L"s + s; s = \"abcd\" * 4194304",
         L"The string built by 'add' would have 33554432 characters, more than the limit of 16777216."},
        {L"foreach(\"i\", 1e8, i)",
         L"'foreach' would run the evaluation past the limit of 1000000 loop iterations."},
        {L"foreach(\"i\", 1e3, sum(foreach(\"j\", 2e3, i * j)))",
         L"'foreach' would run the evaluation past the limit of 1000000 loop iterations."},
    };
    for (const Case &c : cases)
        EXPECT_EQ(tyx::testing::resultText(c.text), c.message) << c.text;
}

TEST(TyxEqnLimitsTest, CallerSetsTheLimits)
{
    TyxEqnParser parser;
    // The string and loop defaults show in the messages above.
    EXPECT_EQ(parser.limits().maxElements, 1000000u);
    TyxEqnParser::Limits limits;
    limits.maxStringLength = 6;
    limits.maxLoopIterations = 12;
    limits.maxElements = 5;
    parser.setLimits(limits);
    TyxTextMsg msg;
    // At each limit the evaluation succeeds; one past it fails.
    EXPECT_EQ(valueOf(parser, L"\"ab\" * 3", &msg).value<tyx::TyxString>(), L"ababab");
    EXPECT_FALSE(valueOf(parser, L"\"ab\" * 3 + \"c\"", &msg).isValid());
    EXPECT_EQ(valueOf(parser, L"foreach(\"i\", 5, i)", &msg).value<TyxEqnTile>().size(), 5u);
    EXPECT_FALSE(valueOf(parser, L"foreach(\"i\", 6, i)", &msg).isValid());
    EXPECT_EQ(msg.text(), L"'foreach' would make the evaluation produce more than the limit of 5 elements.");
    // Three rounds of four: twelve rounds and the three tiles of four.
    limits.maxElements = 100;
    parser.setLimits(limits);
    EXPECT_EQ(
        valueOf(parser, L"foreach(\"i\", 2, sum(foreach(\"j\", 4, i + j)))", &msg).value<TyxEqnTile>().size(),
        2u);
    EXPECT_FALSE(valueOf(parser, L"foreach(\"i\", 3, sum(foreach(\"j\", 4, i + j)))", &msg).isValid());
    // Each evaluation starts from nothing used, and a copy keeps the limits.
    EXPECT_EQ(
        valueOf(parser, L"foreach(\"i\", 2, sum(foreach(\"j\", 4, i + j)))", &msg).value<TyxEqnTile>().size(),
        2u);
    parser.setValue(L"y", TyxVariant(4.0));
    EXPECT_TRUE(parser.evaluate().isValid());
    const TyxEqnParser copy(parser);
    EXPECT_EQ(copy.limits().maxLoopIterations, 12u);
}

TEST(TyxEqnLimitsTest, CollapseIsBoundedToo)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"y + size; size = sum(foreach(\"i\", 1e12, 1))"), 0);
    try {
        parser.collapse();
        FAIL() << "collapse folded a loop beyond the limit";
    } catch (const TyxTextMsg &msg) {
        EXPECT_EQ(msg.text(),
                  L"'foreach' would run the evaluation past the limit of 1000000 loop iterations.");
    }
}

} // namespace
