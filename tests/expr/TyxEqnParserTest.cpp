// Tests of the expression front end: parse, evaluate, cache, collapse, variables and copies.
#include <tyx/TyxEqnParser.h>

#include <gtest/gtest.h>

#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>

namespace {

using tyx::TyxEqnParser;
using tyx::TyxMetaType;
using tyx::TyxScalar;
using tyx::TyxString;
using tyx::TyxStrList;
using tyx::TyxTextMsg;
using tyx::TyxVariant;

TyxStrList listOf(std::initializer_list<const wchar_t *> names)
{
    TyxStrList list;
    for (const wchar_t *name : names)
        list.push_back(name);
    return list;
}

TEST(TyxEqnParserTest, EmptyTextIsSuccessWithNothing)
{
    TyxEqnParser parser;
    TyxTextMsg msg;
    EXPECT_EQ(parser.parse(L"", &msg), 0);
    EXPECT_TRUE(msg.empty());
    EXPECT_FALSE(parser.evaluate(&msg).isValid());
    EXPECT_TRUE(msg.empty());
    EXPECT_TRUE(parser.variables().empty());
}

TEST(TyxEqnParserTest, FailureTexts)
{
    struct Case {
        const wchar_t *text;
        const wchar_t *message;
    };
    const Case cases[] = {
        {L"x = 1",
         L"Parsing error at column #3 : syntax error, unexpected '=', expecting end of file or ';'"},
        {L"nosuch(1) + other(2)", L"'nosuch()' is not a valid parametric function."},
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

TEST(TyxEqnParserTest, SuccessLeavesTheMessageAlone)
{
    TyxEqnParser parser;
    TyxTextMsg msg(L"before", TyxTextMsg::Warning);
    EXPECT_EQ(parser.parse(L"1 + 2", &msg), 0);
    EXPECT_EQ(msg.text(), L"before");
    EXPECT_EQ(parser.evaluate().value<double>(), 3.0);
}

TEST(TyxEqnParserTest, DefinitionsRunLastToFirst)
{
    for (const wchar_t *text : {L"a + b; a = 2*b; b = 3", L"b + 1 + 2; b = a + 3; a = 3"}) {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(text), 0);
        EXPECT_EQ(parser.evaluate().value<double>(), 9.0) << text;
    }
    // A definition sees only what stands after it.
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a; b = 1; a = b"), 0);
    TyxTextMsg msg;
    EXPECT_FALSE(parser.evaluate(&msg).isValid()); // a = b runs while b is unset
    EXPECT_TRUE(msg.empty());
    EXPECT_EQ(parser.value(L"b").value<double>(), 1.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 1.0); // now b has its value
}

TEST(TyxEqnParserTest, VariablesListAndItsAsymmetry)
{
    struct Case {
        const wchar_t *text;
        TyxStrList names;
    };
    const Case cases[] = {
        {L"a + 1; a = 2", listOf({L"a"})},
        {L"1; a = 2; b = a", listOf({})},
        {L"x * y + x", listOf({L"x", L"y"})},
        {L"b + 1; b = c", listOf({L"b", L"c"})},
    };
    for (const Case &c : cases) {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(c.text), 0) << c.text;
        EXPECT_EQ(parser.variables(), c.names) << c.text;
    }
}

TEST(TyxEqnParserTest, UnsetVariableFillsTheMessageAndRecovers)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a + 1"), 0);
    TyxTextMsg msg;
    EXPECT_FALSE(parser.evaluate(&msg).isValid());
    EXPECT_EQ(msg.text(), L"Invalid argument type combination (,Double) passed to 'add'.");
    EXPECT_FALSE(parser.evaluate().isValid()); // no message wanted: none written
    parser.setValue(L"a", 2.0);
    TyxTextMsg second;
    EXPECT_EQ(parser.evaluate(&second).value<double>(), 3.0);
    EXPECT_TRUE(second.empty());
}

TEST(TyxEqnParserTest, CacheIsClearedBySetValueOnly)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"x * 2"), 0);
    parser.setValue(L"x", 4.0);
    const TyxVariant &first = parser.evaluate();
    EXPECT_EQ(first.value<double>(), 8.0);
    EXPECT_EQ(&parser.evaluate(), &first);
    parser.setValue(L"nosuch", 1.0); // ignored
    EXPECT_EQ(parser.evaluate().value<double>(), 8.0);
    parser.setValue(L"x", 5.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 10.0);
}

TEST(TyxEqnParserTest, SetValueOfTheSameTypeIsSeenByTheNextEvaluation)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a * b + c"), 0);
    parser.setValue(L"a", 4.0);
    parser.setValue(L"b", 2.0);
    parser.setValue(L"c", 0.5);
    EXPECT_EQ(parser.evaluate().value<double>(), 8.5);
    // A result kept by the caller is not overwritten by the next evaluation.
    const TyxVariant kept = parser.evaluate();
    parser.setValue(L"a", 100.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 200.5);
    EXPECT_EQ(kept.value<double>(), 8.5);
}

TEST(TyxEqnParserTest, ValueOfAnotherTypeSpecialisesAfresh)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a + a"), 0);
    parser.setValue(L"a", 1.5);
    EXPECT_EQ(parser.evaluate().value<double>(), 3.0);
    parser.setValue(L"a", TyxString(L"ab"));
    EXPECT_EQ(parser.evaluate().value<TyxString>(), L"abab");
    parser.setValue(L"a", 2); // an Int is stored as a Double
    EXPECT_EQ(parser.value(L"a").type(), TyxMetaType::Double);
    EXPECT_EQ(parser.evaluate().value<double>(), 4.0);
}

TEST(TyxEqnParserTest, ConstantsNeedNoValueAndCanBeOverridden)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"_DtoR * 180"), 0);
    EXPECT_EQ(parser.variables(), listOf({L"_DtoR"}));
    const TyxVariant &result = parser.evaluate();
    ASSERT_EQ(result.type(), TyxMetaType::Scalar);
    EXPECT_NEAR(result.value<TyxScalar>().real(), 3.141592653589793, 1e-15);
    parser.setValue(L"_DtoR", 2.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 360.0);
}

TEST(TyxEqnParserTest, CollapseCounts)
{
    {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(L"1 + 2"), 0);
        EXPECT_EQ(parser.collapse(), 1);
        EXPECT_EQ(parser.collapse(), 0);
        EXPECT_EQ(parser.evaluate().value<double>(), 3.0);
    }
    {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(L"x + (1 + 2)"), 0);
        EXPECT_EQ(parser.collapse(), 1);
        EXPECT_EQ(parser.variables(), listOf({L"x", L"x"}));
        parser.setValue(L"x", 1.0);
        EXPECT_EQ(parser.evaluate().value<double>(), 4.0);
    }
    {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(L"x + 1"), 0);
        parser.setValue(L"x", 1.0);
        EXPECT_EQ(parser.collapse(), 2);
        parser.setValue(L"x", 5.0);
        EXPECT_EQ(parser.evaluate().value<double>(), 2.0);
        EXPECT_FALSE(parser.value(L"x").isValid());
    }
    {
        TyxEqnParser parser;
        ASSERT_EQ(parser.parse(L"a + 1; a = 2"), 0);
        EXPECT_EQ(parser.collapse(), 0);
        EXPECT_EQ(parser.evaluate().value<double>(), 3.0);
        EXPECT_GE(parser.collapse(), 1);
    }
}

TEST(TyxEqnParserTest, CollapseThrowsForFailingConstants)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"sin(\"x\")"), 0);
    try {
        parser.collapse();
        FAIL() << "no throw";
    } catch (const TyxTextMsg &msg) {
        EXPECT_EQ(msg.text(), L"Invalid argument type (TyxString) passed to 'sin'.");
    }
}

TEST(TyxEqnParserTest, CopiesEvaluateIndependently)
{
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"a * 2 + b"), 0);
    parser.setValue(L"a", 1.0);
    parser.setValue(L"b", 1.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 3.0);

    TyxEqnParser copy(parser);
    copy.setValue(L"a", 10.0);
    EXPECT_EQ(copy.evaluate().value<double>(), 21.0);
    EXPECT_EQ(parser.evaluate().value<double>(), 3.0);

    // A fresh copy looks at the types again.
    TyxEqnParser other;
    other = parser;
    other.setValue(L"a", TyxString(L"x"));
    other.setValue(L"b", TyxString(L"y"));
    EXPECT_EQ(other.evaluate().value<TyxString>(), L"xxy");
    const TyxEqnParser &self = other;
    other = self;
    EXPECT_EQ(other.evaluate().value<TyxString>(), L"xxy");
}

TEST(TyxEqnParserTest, FailedParserCopiesTextAndMessage)
{
    TyxEqnParser parser;
    TyxTextMsg msg;
    ASSERT_EQ(parser.parse(L"a;", &msg), 1);
    const TyxEqnParser copy(parser);
    EXPECT_EQ(copy.expression(), L"a;");
    EXPECT_TRUE(copy.variables().empty());
    TyxEqnParser again;
    TyxTextMsg copied;
    EXPECT_EQ(again.parse(copy.expression(), &copied), 1);
    EXPECT_EQ(copied.text(), msg.text());
}

TEST(TyxEqnParserTest, FunctionAlias)
{
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"add", L"plus"), 0);
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"add", L"plus"), 1);
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"nosuch", L"x"), 1);
    EXPECT_EQ(TyxEqnParser::createFunctionAlias(L"multiply", L"matrixmult"), 0);
    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"plus(1, 2) + 3 .* 4"), 0);
    EXPECT_EQ(parser.evaluate().value<double>(), 15.0);
}

} // namespace
