// Tests of the expression front end: parse, evaluate, cache, collapse, variables and copies.
#include <tyx/TyxEqnParser.h>

#include <gtest/gtest.h>

#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>

#include "TyxEqnTestSupport.h"

namespace {

using namespace tyx;
using tyx::testing::resultText;

TEST(TyxEqnParserTest, ParseSucceedsOrFailsWithItsText)
{
    // Empty text is success with nothing to evaluate; success writes no message.
    TyxEqnParser empty;
    TyxTextMsg kept(L"kept", TyxTextMsg::Warning);
    EXPECT_EQ(empty.parse(L"", &kept), 0);
    EXPECT_FALSE(empty.evaluate(&kept).isValid());
    EXPECT_EQ(kept.text(), L"kept");
    EXPECT_TRUE(empty.variables().empty());

    struct Case {
        const wchar_t *text;
        const wchar_t *message;
    };
    const Case cases[] = {
        {L"x = 1",
         L"Parsing error at column #3 : syntax error, unexpected '=', expecting end of file or ';'"},
        {L"1 + a & b", L"'bitand()' is not a valid parametric function."},
    };
    for (const Case &c : cases) {
        TyxEqnParser parser;
        TyxTextMsg msg;
        EXPECT_EQ(parser.parse(c.text, &msg), 1) << c.text;
        EXPECT_EQ(msg.text(), c.message) << c.text;
        EXPECT_EQ(msg.type(), TyxTextMsg::Error);
        EXPECT_TRUE(parser.variables().empty()) << c.text;
        EXPECT_FALSE(parser.evaluate().isValid()) << c.text;
    }
}

TEST(TyxEqnParserTest, DefinitionsRunLastToFirst)
{
    EXPECT_EQ(resultText(L"a + b; a = 2*b; b = 3"), L"Double,9");
    // A definition sees only what stands after it.
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a; b = 1; a = b"), 0);
    TyxTextMsg msg;
    EXPECT_FALSE(parser.evaluate(&msg).isValid()); // a = b runs while b is unset
    EXPECT_TRUE(msg.empty());
    EXPECT_EQ(parser.value(L"b").value<double>(), 1.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 1.0); // now b has its value
}

TEST(TyxEqnParserTest, VariablesListAndConstants)
{
    struct Case {
        const wchar_t *text;
        TyxStrList names;
    };
    const Case cases[] = {
        {L"a + 1; a = 2", {L"a"}},       {L"1; a = 2; b = a", {}},     {L"x * y + x", {L"x", L"y"}},
        {L"b + 1; b = c", {L"b", L"c"}}, {L"_DtoR * 180", {L"_DtoR"}},
    };
    for (const Case &c : cases) {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(c.text), 0) << c.text;
        EXPECT_EQ(parser.variables(), c.names) << c.text;
    }
    // A constant needs no value and can be overridden.
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"_DtoR * 180"), 0);
    EXPECT_EQ(resultText(parser), L"TyxScalar,3.141592653589794");
    EXPECT_EQ(resultText(parser, {{L"_DtoR", 2.0}}), L"Double,360");
}

TEST(TyxEqnParserTest, UnsetOrChangedValuesAreSeenByTheNextEvaluation)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"x * 2 + x"), 0);
    // An unset variable fills the message, where one is wanted.
    TyxTextMsg msg;
    EXPECT_FALSE(parser.evaluate(&msg).isValid());
    EXPECT_EQ(msg.text(), L"Invalid argument type combination (,Double) passed to 'multiply'.");
    EXPECT_FALSE(parser.evaluate().isValid());
    parser.setValue(L"x", 4.0);
    TyxTextMsg none;
    const TyxVariant &first = parser.evaluate(&none);
    EXPECT_EQ(first.value<double>(), 12.0);
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(&parser.evaluate(), &first);
    // A result kept by the caller is not overwritten by the next evaluation.
    const TyxVariant kept = first;
    parser.setValue(L"nosuch", 1.0); // ignored
    EXPECT_EQ(parser.evaluate().value<double>(), 12.0);
    parser.setValue(L"x", 5.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 15.0);
    EXPECT_EQ(kept.value<double>(), 12.0);

    parser.setValue(L"x", 2); // an Int is stored as a Double
    EXPECT_EQ(parser.value(L"x").type(), TyxMetaType::Double);
    EXPECT_EQ(parser.evaluate().value<double>(), 6.0);
}

TEST(TyxEqnParserTest, CollapseCounts)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"1 + 2"), 0);
    EXPECT_EQ(parser.collapse(), 1);
    EXPECT_EQ(parser.collapse(), 0);
    EXPECT_EQ(resultText(parser), L"Double,3");

    ASSERT_EQ(parser.parse(L"x + (1 + 2)"), 0);
    EXPECT_EQ(parser.collapse(), 1);
    EXPECT_EQ(parser.variables(), (TyxStrList{L"x", L"x"}));
    EXPECT_EQ(resultText(parser, {{L"x", 1.0}}), L"Double,4");

    // A variable with a value folds too, and is then gone.
    ASSERT_EQ(parser.parse(L"x + 1"), 0);
    parser.setValue(L"x", 1.0);
    EXPECT_EQ(parser.collapse(), 2);
    EXPECT_EQ(resultText(parser, {{L"x", 5.0}}), L"Double,2");
    EXPECT_FALSE(parser.value(L"x").isValid());

    // Definitions fold once they have been evaluated.
    ASSERT_EQ(parser.parse(L"a + 1; a = 2"), 0);
    EXPECT_EQ(parser.collapse(), 0);
    EXPECT_EQ(resultText(parser), L"Double,3");
    EXPECT_GE(parser.collapse(), 1);
}

TEST(TyxEqnParserTest, CopiesEvaluateIndependently)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a * 2 + b"), 0);
    EXPECT_EQ(resultText(parser, {{L"a", 1.0}, {L"b", 1.0}}), L"Double,3");

    TyxEqnParser copy(parser);
    EXPECT_EQ(resultText(copy, {{L"a", 10.0}}), L"Double,21");
    EXPECT_EQ(resultText(parser), L"Double,3");

    // A fresh copy looks at the types again.
    TyxEqnParser other;
    other = parser;
    EXPECT_EQ(resultText(other, {{L"a", TyxString(L"x")}, {L"b", TyxString(L"y")}}), L"TyxString,xxy");
    const TyxEqnParser &self = other;
    other = self;
    EXPECT_EQ(resultText(other), L"TyxString,xxy");

    // A failed parser copies its text, and parsing that again gives the same message.
    TyxTextMsg msg;
    ASSERT_EQ(parser.parse(L"a;", &msg), 1);
    const TyxEqnParser failed(parser);
    EXPECT_EQ(failed.expression(), L"a;");
    EXPECT_TRUE(failed.variables().empty());
    EXPECT_EQ(resultText(failed.expression()), L"parse: " + msg.text());
}

TEST(TyxEqnParserTest, FunctionAlias)
{
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"add", L"plus"), 0);
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"add", L"plus"), 1);
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"nosuch", L"x"), 1);
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"multiply", L"matrixmult"), 0);
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"sin", L"sine"), 0);
    EXPECT_EQ(resultText(L"plus(1, 2) + 3 .* 4"), L"Double,15");
    // An alias reports under the name of the function it copies.
    EXPECT_EQ(resultText(L"sine(\"x\")"), L"Invalid argument type (TyxString) passed to 'sin'.");
}

} // namespace
