// Tests of the function registry and its bodies, through the expression parser.
#include "expr/TyxEqnFunctions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <sstream>
#include <vector>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>

namespace {

using tyx::TyxDataType;
using tyx::TyxEqnParser;
using tyx::TyxEqnTile;
using tyx::TyxMetaType;
using tyx::TyxScalar;
using tyx::TyxString;
using tyx::TyxTextMsg;
using tyx::TyxVariant;
using tyx::internal::TyxEqnFunctions;
using N = tyx::TyxNumericType;

// The result as "type,value" in the variant's text form, or the message.
TyxString run(const TyxString &text)
{
    TyxEqnParser parser;
    TyxTextMsg msg;
    if (parser.parse(text, &msg) != 0)
        return L"parse: " + msg.text();
    const TyxVariant &result = parser.evaluate(&msg);
    if (!msg.empty())
        return msg.text();
    std::wostringstream out;
    out << result; // "type,value"
    return out.str();
}

template <class T>
TyxEqnTile tileOf(N::Code code, const std::vector<T> &values)
{
    TyxEqnTile tile(TyxDataType(code), values.size());
    std::copy(values.begin(), values.end(), tile.samples<T>().begin());
    return tile;
}

template <class T>
std::vector<T> valuesOf(const TyxEqnTile &tile)
{
    const std::span<const T> samples = tile.samples<T>();
    return std::vector<T>(samples.begin(), samples.end());
}

TEST(TyxEqnFunctionsTest, MessagesAndResults)
{
    struct Case {
        const wchar_t *text;
        const wchar_t *expected;
    };
    const Case cases[] = {
        {L"sin()", L"Incorrect number of arguments passed to 'sin'. Got 0, but expected 1."},
        {L"sin(\"x\")", L"Invalid argument type (TyxString) passed to 'sin'."},
        {L"sin(sqrt(4))", L"Invalid argument type (ComplexDouble) passed to 'sin'."},
        {L"\"ab\" + \"c\"", L"TyxString,abc"},
        {L"\"ab\" * 2", L"TyxString,abab"},
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
        {L"max(1, \"a\")", L"Invalid argument type (TyxString) passed to 'max'."},
        {L"roundclip(2.5, \"U8\", 0, 255)", L"Double,3"},
        {L"roundclip(300, \"U8\", 0, 255)", L"Double,255"},
        {L"cmplx(1, 2) < 1",
         L"Invalid argument type combination (ComplexDouble,Double) passed to 'lessthan'."},
        {L"a[1:2, 3]", L"Incorrect number of arguments passed to 'subscript'. Got 7, but expected 2."},
        {L"undefined + 1", L"Invalid argument type combination (,Double) passed to 'add'."},
    };
    for (const Case &c : cases)
        EXPECT_EQ(run(c.text), c.expected) << c.text;
}

TEST(TyxEqnFunctionsTest, RoundOfANumberAddsOneHalfAndTruncates)
{
    constexpr double twoTo52 = 4503599627370496.0;
    const struct {
        double x;
        double rounded;
    } cases[] = {
        {0.49999999999999994, 1.0},
        {twoTo52 + 1.0, twoTo52 + 2.0},
    };
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"round(x)"), 0);
    for (const auto &c : cases) {
        parser.setValue(L"x", c.x);
        const TyxVariant &result = parser.evaluate();
        // round goes through the scalar function and gives a complex value.
        EXPECT_EQ(result.type(), TyxMetaType::ComplexDouble) << c.x;
        EXPECT_EQ(result.value<std::complex<double>>(), std::complex<double>(c.rounded, 0.0)) << c.x;
    }
}

TEST(TyxEqnFunctionsTest, ComplexResults)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"sqrt(x)"), 0);
    parser.setValue(L"x", -1.0);
    const TyxVariant &root = parser.evaluate();
    ASSERT_EQ(root.type(), TyxMetaType::ComplexDouble);
    EXPECT_EQ(root.value<std::complex<double>>(), std::complex<double>(0.0, 1.0));

    ASSERT_EQ(parser.parse(L"real(x) * 2 + cmplx(1, 2)"), 0);
    parser.setValue(L"x", 3.0);
    EXPECT_EQ(parser.evaluate().value<std::complex<double>>(), std::complex<double>(7.0, 2.0));

    ASSERT_EQ(parser.parse(L"-x"), 0);
    parser.setValue(L"x", 0.0);
    EXPECT_TRUE(std::signbit(parser.evaluate().value<double>()));
}

TEST(TyxEqnFunctionsTest, ScalarsKeepUnits)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a * 2 + b"), 0);
    parser.setValue(L"a", TyxScalar(1.5, tyx::TyxUnits(L"m")));
    parser.setValue(L"b", TyxScalar(1.0, tyx::TyxUnits(L"m")));
    const TyxVariant &result = parser.evaluate();
    ASSERT_EQ(result.type(), TyxMetaType::Scalar);
    EXPECT_EQ(result.value<TyxScalar>().real(), 4.0);
    EXPECT_EQ(result.value<TyxScalar>().units(), tyx::TyxUnits(L"m"));
}

TEST(TyxEqnFunctionsTest, RegistryAndAliases)
{
    EXPECT_FALSE(TyxEqnFunctions::contains(L"transpose"));
    EXPECT_EQ(TyxEqnFunctions::createAlias(L"sin", L"sine"), 0);
    EXPECT_EQ(TyxEqnFunctions::createAlias(L"sin", L"sine"), 1);
    EXPECT_EQ(run(L"sine(0)"), L"Double,0");
    // An alias reports under the name of the function it copies.
    EXPECT_EQ(run(L"sine(\"x\")"), L"Invalid argument type (TyxString) passed to 'sin'.");
}

TEST(TyxEqnFunctionsTest, ForeachBuildsATile)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"foreach(\"i\", 4, i * 2 + 1)"), 0);
    const TyxVariant &result = parser.evaluate();
    ASSERT_EQ(result.type(), TyxMetaType::EqnTile);
    const TyxEqnTile tile = result.value<TyxEqnTile>();
    EXPECT_EQ(valuesOf<double>(tile), (std::vector<double>{1, 3, 5, 7}));

    // The part that does not depend on the counter is folded on the first
    // evaluation: a later value of n is not seen.
    ASSERT_EQ(parser.parse(L"foreach(\"i\", 3, i + n * 2)"), 0);
    parser.setValue(L"n", 1.0);
    EXPECT_EQ(valuesOf<double>(parser.evaluate().value<TyxEqnTile>()), (std::vector<double>{2, 3, 4}));
    parser.setValue(L"n", 5.0);
    EXPECT_EQ(valuesOf<double>(parser.evaluate().value<TyxEqnTile>()), (std::vector<double>{2, 3, 4}));
}

TEST(TyxEqnFunctionsTest, ForeachFillsItsResultRoundByRound)
{
    TyxEqnParser parser;
    // The expression hands on the counter's own variant. The count is a
    // variable, so that each setValue asks for a new evaluation.
    ASSERT_EQ(parser.parse(L"foreach(\"i\", n, i)"), 0);
    parser.setValue(L"n", 3.0);
    const TyxVariant *result = &parser.evaluate();
    EXPECT_EQ(valuesOf<double>(result->value<TyxEqnTile>()), (std::vector<double>{0, 1, 2}));
    const void *first = result->value<TyxEqnTile>().buffer()->data();
    parser.setValue(L"n", 2.0);
    result = &parser.evaluate();
    EXPECT_EQ(result->value<TyxEqnTile>().buffer()->data(), first);
    EXPECT_EQ(valuesOf<double>(result->value<TyxEqnTile>()), (std::vector<double>{0, 1}));

    // A held result keeps its values; the next goes into a new buffer.
    const TyxEqnTile held = result->value<TyxEqnTile>();
    parser.setValue(L"n", 4.0);
    const TyxEqnTile next = parser.evaluate().value<TyxEqnTile>();
    EXPECT_NE(next.buffer()->data(), held.buffer()->data());
    EXPECT_EQ(valuesOf<double>(held), (std::vector<double>{0, 1}));
    EXPECT_EQ(valuesOf<double>(next), (std::vector<double>{0, 1, 2, 3}));

    // The first value decides the element type: sqrt of -1 is complex, and
    // so are the rounds after it.
    ASSERT_EQ(parser.parse(L"foreach(\"k\", 3, sqrt(k - 1))"), 0);
    const TyxEqnTile roots = parser.evaluate().value<TyxEqnTile>();
    EXPECT_EQ(roots.dataType().code(), N::ComplexDouble);
    EXPECT_EQ(valuesOf<std::complex<double>>(roots),
              (std::vector<std::complex<double>>{{0, 1}, {0, 0}, {1, 0}}));
    ASSERT_EQ(parser.parse(L"foreach(\"k\", 2.9, k * 10)"), 0);
    EXPECT_EQ(valuesOf<double>(parser.evaluate().value<TyxEqnTile>()), (std::vector<double>{0, 10}));

    for (const wchar_t *none : {L"foreach(\"k\", 0, k)", L"foreach(\"k\", -3, k)"}) {
        ASSERT_EQ(parser.parse(none), 0);
        const TyxEqnTile empty = parser.evaluate().value<TyxEqnTile>();
        EXPECT_TRUE(empty.isEmpty());
    }
    EXPECT_EQ(run(L"foreach(\"k\", 2, \"x\")"), L"Invalid argument type (TyxString) passed to 'foreach'.");
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
        const std::complex<double> fromNumber = number.evaluate().value<std::complex<double>>();
        const std::vector<double> fromTile = valuesOf<double>(tile.evaluate().value<TyxEqnTile>());
        ASSERT_EQ(fromTile.size(), 1u);
        EXPECT_EQ(fromNumber.real(), fromTile[0]) << x;
        EXPECT_EQ(fromNumber.imag(), 0.0);
    }
}

TEST(TyxEqnFunctionsTest, TileFunctionsAndReductions)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"t[2] + sum(t) + max(t) * 10 + mean(t) * 100"), 0);
    parser.setValue(L"t", tileOf<uint8_t>(N::U8, {1, 2, 3, 4}));
    EXPECT_EQ(parser.evaluate().value<double>(), 3 + 10 + 40 + 1000);

    ASSERT_EQ(parser.parse(L"t[4]"), 0);
    parser.setValue(L"t", tileOf<uint8_t>(N::U8, {1, 2, 3, 4}));
    TyxTextMsg msg;
    EXPECT_FALSE(parser.evaluate(&msg).isValid());
    EXPECT_EQ(msg.text(), L"Index 4 is outside the tile of 4 elements in 'subscript'.");

    ASSERT_EQ(parser.parse(L"t > 2 ? t : -1"), 0);
    parser.setValue(L"t", tileOf<uint8_t>(N::U8, {1, 2, 3, 4}));
    EXPECT_EQ(valuesOf<double>(parser.evaluate().value<TyxEqnTile>()), (std::vector<double>{-1, -1, 3, 4}));

    ASSERT_EQ(parser.parse(L"roundclip(t * 100, \"U8\", 0, 255)"), 0);
    parser.setValue(L"t", tileOf<double>(N::Double, {0.5, 1.5, 2.555, -3}));
    const TyxEqnTile clipped = parser.evaluate().value<TyxEqnTile>();
    EXPECT_EQ(clipped.dataType().code(), N::U8);
    EXPECT_EQ(valuesOf<uint8_t>(clipped), (std::vector<uint8_t>{50, 150, 255, 0}));
}

TEST(TyxEqnFunctionsTest, RepeatedTileEvaluationReusesResultBuffers)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"(a - b) / (a + b)"), 0);
    parser.setValue(L"a", tileOf<uint16_t>(N::U16, {3, 4}));
    parser.setValue(L"b", tileOf<uint16_t>(N::U16, {1, 2}));
    const TyxVariant *root = &parser.evaluate();
    const void *first = root->value<TyxEqnTile>().buffer()->data();

    parser.setValue(L"a", tileOf<uint16_t>(N::U16, {5, 6}));
    parser.setValue(L"b", tileOf<uint16_t>(N::U16, {5, 2}));
    const TyxEqnTile second = parser.evaluate().value<TyxEqnTile>();
    EXPECT_EQ(second.buffer()->data(), first);
    EXPECT_EQ(valuesOf<double>(second), (std::vector<double>{0.0, 0.5}));

    // The caller still holds the tile of the last result: the next result
    // goes into a new buffer and the held one keeps its values.
    parser.setValue(L"a", tileOf<uint16_t>(N::U16, {1, 1}));
    const TyxEqnTile third = parser.evaluate().value<TyxEqnTile>();
    EXPECT_NE(third.buffer()->data(), second.buffer()->data());
    EXPECT_EQ(valuesOf<double>(second), (std::vector<double>{0.0, 0.5}));
    EXPECT_EQ(valuesOf<double>(third), (std::vector<double>{-4.0 / 6.0, -1.0 / 3.0}));
}

TEST(TyxEqnFunctionsTest, ChosenValuesKeepTheirType)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"(c ? 1 : \"x\") + 1"), 0);
    parser.setValue(L"c", 1.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 2.0);
    parser.setValue(L"c", 0.0);
    TyxTextMsg msg;
    EXPECT_FALSE(parser.evaluate(&msg).isValid());
    EXPECT_EQ(msg.text(), L"Invalid argument type combination (Double,TyxString) passed to 'ternary'.");

    // A definition that changes its type: the entries that use it decide again.
    ASSERT_EQ(parser.parse(L"a + a; a = c ? 1 : \"x\""), 0);
    parser.setValue(L"c", 1.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 2.0);
    ASSERT_EQ(parser.parse(L"a + a; a = b; b = c"), 0);
    parser.setValue(L"c", 1.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 2.0);
    parser.setValue(L"c", TyxString(L"x"));
    EXPECT_EQ(parser.evaluate().value<TyxString>(), L"xx");
}

} // namespace
