// Tests of the function registry and its bodies, through the expression parser.
#include "expr/TyxEqnFunctions.h"

#include <gtest/gtest.h>

#include <complex>
#include <cstdint>
#include <vector>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>

#include "TyxEqnTestSupport.h"

namespace {

using namespace tyx;
using namespace tyx::testing;
using N = tyx::TyxNumericType;

TEST(TyxEqnFunctionsTest, MessagesAndResults)
{
    const TyxVariant t = tileOf<uint8_t>(N::U8, {1, 2, 3, 4});
    const Bindings metres = {{L"a", TyxScalar(1.5, TyxUnits(L"m"))}, {L"b", TyxScalar(1.0, TyxUnits(L"m"))}};
    struct Case {
        const wchar_t *text;
        const wchar_t *expected;
        Bindings bindings = {};
    };
    const Case cases[] = {
        {L"sin()", L"Incorrect number of arguments passed to 'sin'. Got 0, but expected 1."},
        {L"sin(\"x\")", L"Invalid argument type (TyxString) passed to 'sin'."},
        {L"sin(sqrt(4))", L"Invalid argument type (ComplexDouble) passed to 'sin'."},
        {L"\"ab\" + \"c\"", L"TyxString,abc"},
        {L"\"ab\" * 0", L"TyxString,"},
        {L"\"ab\" - \"a\"", L"Invalid argument type combination (TyxString,TyxString) passed to 'subtract'."},
        {L"2 m + 3 m", L"TyxString,2 m3 m"},
        {L"(1 < 2) + 1", L"Invalid argument type combination (Bool,Double) passed to 'add'."},
        {L"1 > 2 && undefined", L"Bool,false"},
        {L"1 ? 5 : undefined", L"Double,5"},
        {L"select(5, 1, 2)", L"Invalid argument type (Double) passed to 'select'."},
        {L"select(2, undefined, 7)", L"Double,7"},
        {L"-7 % 3", L"Int,-1"},
        {L"7 % 0", L"Division by zero in 'mod'."},
        {L"mod(-2147483647 - 1, -1)", L"Integer overflow in 'mod'."},
        {L"median(4, 1, 3, 2)", L"Double,2"},
        {L"a[1:2, 3]", L"Incorrect number of arguments passed to 'subscript'. Got 7, but expected 2."},
        {L"sqrt(-1)", L"ComplexDouble,(0,1)"},
        {L"real(x) * 2 + cmplx(1, 2)", L"ComplexDouble,(7,2)", {{L"x", 3.0}}},
        {L"-x", L"Double,-0", {{L"x", 0.0}}},
        // round goes through the scalar function (x + 0.5 in double, then
        // truncation) and gives a complex value.
        {L"round(x)", L"ComplexDouble,(4503599627370498,0)", {{L"x", 4503599627370497.0}}},
        {L"a * 2 + b", L"TyxScalar,4 m", metres},
        {L"t[2] + sum(t) + max(t) * 10 + mean(t) * 100", L"Double,1053", {{L"t", t}}},
        {L"t[4]", L"Index 4 is outside the tile of 4 elements in 'subscript'.", {{L"t", t}}},
        {L"t > 2 ? t : -1", L"TyxEqnTile,(Double,64)[4]{-1,-1,3,4}", {{L"t", t}}},
        {L"roundclip(t * 100, \"U8\", 0, 255)",
         L"TyxEqnTile,(U8,8)[4]{50,150,255,0}",
         {{L"t", tileOf<double>(N::Double, {0.5, 1.5, 2.555, -3})}}},
        {L"foreach(\"i\", 4, i * 2 + 1)", L"TyxEqnTile,(Double,64)[4]{1,3,5,7}"},
        // The first value decides the element type: sqrt of -1 is complex,
        // and so are the rounds after it.
        {L"foreach(\"k\", 3, sqrt(k - 1))", L"TyxEqnTile,(ComplexDouble,128)[3]{(0,1),(0,0),(1,0)}"},
        {L"foreach(\"k\", 2.9, k * 10)", L"TyxEqnTile,(Double,64)[2]{0,10}"},
        {L"foreach(\"k\", 0, k)", L"TyxEqnTile,(,0)[0]"},
        {L"foreach(\"k\", -3, k)", L"TyxEqnTile,(,0)[0]"},
        {L"foreach(\"k\", 2, \"x\")", L"Invalid argument type (TyxString) passed to 'foreach'."},
    };
    for (const Case &c : cases)
        EXPECT_EQ(resultText(c.text, c.bindings), c.expected) << c.text;
}

TEST(TyxEqnFunctionsTest, ForeachFoldsAndFillsItsResultRoundByRound)
{
    // The part that does not depend on the counter is folded on the first
    // evaluation: a later value of n is not seen.
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"foreach(\"i\", 3, i + n * 2)"), 0);
    EXPECT_EQ(resultText(parser, {{L"n", 1.0}}), L"TyxEqnTile,(Double,64)[3]{2,3,4}");
    EXPECT_EQ(resultText(parser, {{L"n", 5.0}}), L"TyxEqnTile,(Double,64)[3]{2,3,4}");

    // The expression hands on the counter's own variant. The count is a
    // variable, so that each setValue asks for a new evaluation.
    ASSERT_EQ(parser.parse(L"foreach(\"i\", n, i)"), 0);
    parser.setValue(L"n", 3.0);
    const void *first = parser.evaluate().value<TyxEqnTile>().buffer()->data();
    parser.setValue(L"n", 2.0);
    const TyxEqnTile held = parser.evaluate().value<TyxEqnTile>();
    EXPECT_EQ(held.buffer()->data(), first);
    EXPECT_EQ(valuesOf<double>(held), (std::vector<double>{0, 1}));

    // A held result keeps its values; the next goes into a new buffer.
    parser.setValue(L"n", 4.0);
    const TyxEqnTile next = parser.evaluate().value<TyxEqnTile>();
    EXPECT_NE(next.buffer()->data(), held.buffer()->data());
    EXPECT_EQ(valuesOf<double>(held), (std::vector<double>{0, 1}));
    EXPECT_EQ(valuesOf<double>(next), (std::vector<double>{0, 1, 2, 3}));
}

TEST(TyxEqnFunctionsTest, SincOfANumberEqualsSincOfATileOfOneSample)
{
    TyxEqnParser number;
    TyxEqnParser tile;
    ASSERT_EQ(number.parse(L"sinc(x)"), 0);
    ASSERT_EQ(tile.parse(L"sinc(x)"), 0);
    for (const double x : {0.0, 0.5, -2.0, 3.0, 1e-20, 100.0}) {
        number.setValue(L"x", x);
        tile.setValue(L"x", tileOf<double>(N::Double, {x}));
        EXPECT_EQ(number.evaluate().value<std::complex<double>>(),
                  std::complex<double>(valuesOf<double>(tile.evaluate().value<TyxEqnTile>()).at(0)))
            << x;
    }
}

TEST(TyxEqnFunctionsTest, ChosenValuesKeepTheirType)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"(c ? 1 : \"x\") + 1"), 0);
    EXPECT_EQ(resultText(parser, {{L"c", 1.0}}), L"Double,2");
    EXPECT_EQ(resultText(parser, {{L"c", 0.0}}),
              L"Invalid argument type combination (Double,TyxString) passed to 'ternary'.");

    // A definition that changes its type: the entries that use it decide again.
    ASSERT_EQ(parser.parse(L"a + a; a = b; b = c"), 0);
    EXPECT_EQ(resultText(parser, {{L"c", 1.0}}), L"Double,2");
    EXPECT_EQ(resultText(parser, {{L"c", TyxString(L"x")}}), L"TyxString,xx");
}

} // namespace
