#include <tyx/TyxJsonNode.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace tyx;

TyxTextMsg parseText(const std::string &text, TyxVariant &value)
{
    std::istringstream is(text);
    return fromJson(is, value);
}

std::string writeText(const TyxVariant &value)
{
    std::ostringstream os;
    toJson(os, value);
    return os.str();
}

TEST(TyxJsonNodeTest, MalformedTextsGiveTheirMessagesAndLeaveTheValue)
{
    struct Case {
        std::string text;
        std::wstring message;
    };
    const Case cases[] = {
        {"", L"The document is empty. (Line: 1 Offset: 0)"},
        {"{\"a\":1", L"Missing a comma or '}' after an object member. (Line: 1 Offset: 6)"},
        {"[1,\n2,\n", L"Invalid value. (Line: 3 Offset: 7)"},
        {"[1] x", L"The document root must not be followed by other values. (Line: 1 Offset: 4)"},
        {"\"\xff\"", L"Invalid encoding in string. (Line: 1 Offset: 1)"},
    };
    for (const Case &c : cases) {
        TyxVariant value(5);
        const TyxTextMsg msg = parseText(c.text, value);
        EXPECT_EQ(msg.text(), c.message) << c.text;
        EXPECT_EQ(msg.type(), TyxTextMsg::Error);
        EXPECT_EQ(value.value<int>(), 5);
    }
}

TEST(TyxJsonNodeTest, NestingRoundTripsAtTheLimitAndFailsPastItWithoutExhaustingTheStack)
{
    const std::string text = std::string(TyxJsonMaxDepth, '[') + std::string(TyxJsonMaxDepth, ']');
    TyxVariant value;
    ASSERT_TRUE(parseText(text, value).empty());
    EXPECT_EQ(writeText(value), text);
    EXPECT_EQ(parseText(std::string(100000, '['), value).text(),
              L"The document nests arrays and objects deeper than 512 levels. (Line: 1 Offset: " +
                  std::to_wstring(TyxJsonMaxDepth) + L")");
}

TEST(TyxJsonNodeTest, TextsRoundTripAndValuesMapToVariantKinds)
{
    const std::string texts[] = {
        "null",
        R"({"a":[1,-2,3.25,1e300],"b":{"c":"d"}})",
        R"("tab\tquote\"back\\slash\nctl\u0001")",
        "\"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\"",
        "0.1",
        R"([7,7,7.5,7.5,"x","x",-1,4294967295,-1,4294967295])",
        "[0,-1,2147483648,-2147483649,9223372036854775808,18446744073709551615,-9223372036854775808]",
        "{\"nul\":\"a\\u0000b\",\"\xc3\xa9t\xc3\xa9\":{\"\":[[],[[]]]}}",
    };
    for (const std::string &text : texts) {
        TyxVariant value;
        ASSERT_TRUE(parseText(text, value).empty()) << text;
        EXPECT_EQ(writeText(value), text);
    }

    // Integers take the smallest kind that holds them.
    TyxVariant value;
    ASSERT_TRUE(parseText("[-3,3000000000,-9000000000,18446744073709551615,null]", value).empty());
    const TyxVariantList list = value.value<TyxVariantList>();
    const TyxMetaType::Code kinds[] = {TyxMetaType::Int, TyxMetaType::UInt, TyxMetaType::Int64,
                                       TyxMetaType::UInt64, TyxMetaType::Invalid};
    ASSERT_EQ(list.size(), 5u);
    for (size_t i = 0; i < list.size(); ++i)
        EXPECT_EQ(list[i].type(), kinds[i]) << i;
    EXPECT_EQ(list[3].value<uint64_t>(), std::numeric_limits<uint64_t>::max());
}

TEST(TyxJsonNodeTest, TextEndingInsideASequenceFailsWithinItsBufferAndWideTextParsesAndWrites)
{
    // A short text lives inside the string object: a read past its end is
    // what AddressSanitizer sees.
    for (const char *text : {"[\"a\xf0", "\"\xe2\x82", "[\"\xc3"}) {
        std::istringstream is{std::string(text)};
        TyxVariant value;
        EXPECT_NE(fromJson(is, value).text().find(L"Invalid encoding in string."), TyxString::npos) << text;
    }

    std::wistringstream is(L"{\"n\\u00e9\":\"\u20ac\"}");
    TyxVariant value;
    ASSERT_TRUE(fromJson(is, value).empty());
    EXPECT_EQ(value.value<TyxVariantMap>().at(L"n\u00e9").value<TyxString>(), L"\u20ac");
    std::wostringstream os;
    toJson(os, value);
    EXPECT_EQ(os.str(), L"{\"n\u00e9\":\"\u20ac\"}");
    // Units that are no Unicode scalar value fail instead of reaching the encoder.
    for (const wchar_t unit : {wchar_t(0x110000), wchar_t(-95)}) {
        std::wistringstream strange(std::wstring(L"[\n\"a") + unit + L"\"]");
        EXPECT_EQ(fromJson(strange, value).text(), L"Invalid encoding in string. (Line: 2 Offset: 4)");
    }
}

TEST(TyxJsonNodeTest, OtherValuesAreWrittenAsNumbersOrTextAndPrettyFormUsesTheIndent)
{
    EXPECT_EQ(writeText(TyxVariant(std::numeric_limits<double>::infinity())), "null");
    EXPECT_EQ(writeText(TyxVariant(static_cast<unsigned char>(7))), "7");
    EXPECT_EQ(writeText(TyxVariant(2.5f)), "2.5");
    EXPECT_EQ(writeText(TyxVariant(TyxStrList{L"a", L"b"})).front(), '"');
    // Units that no UTF-8 can carry are written as U+FFFD.
    EXPECT_EQ(writeText(TyxVariant(TyxString(std::wstring{L'a', static_cast<wchar_t>(0xD800)}))),
              "\"a\xef\xbf\xbd\"");

    const TyxVariant list(TyxVariantList{TyxVariant(1), TyxVariant(2)});
    std::ostringstream tab;
    toJson(tab, list, L"\t", true);
    EXPECT_EQ(tab.str(), "[\n\t1,\n\t2\n]");
    std::ostringstream other; // an indent of other characters falls back to four spaces
    toJson(other, list, L"x", true);
    EXPECT_EQ(other.str(), "[\n    1,\n    2\n]");
}

TEST(TyxJsonNodeTest, MembersMatchIgnoringCaseAndIterationWalksMembersAndElements)
{
    const TyxJsonNode node = TyxJsonNode::parse(L"{\"c\":3,\"b\":[true,\"x\"],\"A\":1}");
    EXPECT_EQ(node.find(L"a")->name(), L"A");
    EXPECT_EQ(node.find(L"zz"), node.end());
    std::vector<TyxString> names;
    for (const TyxJsonNode &member : node)
        names.push_back(member.name());
    EXPECT_EQ(names, (std::vector<TyxString>{L"A", L"b", L"c"}));
    // A walk that starts at a found member goes on from there.
    auto found = node.find(L"B");
    EXPECT_EQ((++found)->name(), L"c");
    EXPECT_EQ(++found, node.end());
    TyxJsonNode array = TyxJsonNode::parse(L"[true,null]");
    auto it = array.begin();
    EXPECT_EQ(it->type(), TyxJsonNodeType::Bool);
    it->setValue(TyxVariant(5));
    EXPECT_EQ(array.toJson(), L"[true,null]");
    EXPECT_EQ((it++)->name(), L"");
    EXPECT_EQ(it->type(), TyxJsonNodeType::Null);
    EXPECT_EQ(++it, array.end());
    const TyxJsonNode scalar(L"x", TyxVariant(3));
    EXPECT_EQ(scalar.begin(), scalar.end());
    EXPECT_EQ(TyxJsonNode().begin(), TyxJsonNode().end());
}

TEST(TyxJsonNodeTest, TypeFollowsTheVariantAndConversionsKeepTheName)
{
    struct Case {
        TyxVariant value;
        TyxJsonNodeType::Code type;
    };
    const Case cases[] = {
        {TyxVariant(), TyxJsonNodeType::Null},
        {TyxVariant(L'c'), TyxJsonNodeType::Number},
        {TyxVariant(TyxStrList{L"a"}), TyxJsonNodeType::String},
        {TyxVariant(TyxVariantList()), TyxJsonNodeType::Array},
        {TyxVariant(TyxVariantMap()), TyxJsonNodeType::Node},
    };
    for (const Case &c : cases)
        EXPECT_EQ(TyxJsonNode(L"n", c.value).type(), c.type) << c.value;
    EXPECT_EQ(TyxJsonNode(TyxJsonNodeType::Number).toJson(), L"0.0");

    // Conversions keep the name; copies keep the comment.
    TyxJsonNode node(L"n", TyxVariant(TyxVariantList{TyxVariant(1)}));
    node.setComment(L"c");
    const TyxJsonNode copy = node;
    node.clear();
    EXPECT_EQ(copy.comment(), L"c");
    EXPECT_EQ(node.comment(), L"");
    EXPECT_EQ(node.name(), L"n");
    EXPECT_EQ(node.type(), TyxJsonNodeType::Null);
    EXPECT_EQ(copy.toArray().toJson(), L"[1]");
    EXPECT_EQ(copy.toNode().name(), L"n");
    EXPECT_EQ(copy.toNode().type(), TyxJsonNodeType::Node);
}

TEST(TyxJsonNodeTest, BrokenTextGivesNodeHoldingNothingFailsTheStreamAndStaysUnstripped)
{
    EXPECT_TRUE(TyxJsonNode::parse(L"{\"a\":").isNull());
    std::istringstream is("[1,\n\n x]");
    uint64_t line = 0;
    uint64_t offset = 0;
    EXPECT_FALSE(TyxJsonNode::isValid(is, line, offset));
    EXPECT_EQ(line, 3u);
    EXPECT_EQ(offset, 6u);

    std::istringstream good("{\"k\":\"v\"}");
    TyxJsonNode node;
    good >> node;
    EXPECT_FALSE(good.fail());
    std::ostringstream os;
    os << node;
    EXPECT_EQ(os.str(), "{\"k\":\"v\"}");
    std::istringstream bad("{");
    bad >> node;
    EXPECT_TRUE(bad.fail());

    EXPECT_EQ(TyxJsonNode::stripWhiteSpace(L" { \"b\" : [ 1.50 , 2 ] ,\n \"A\":\"\u00e9 \" } "),
              L"{\"b\":[1.5,2],\"A\":\"\u00e9 \"}");
    EXPECT_EQ(TyxJsonNode::stripWhiteSpace(L" [1, "), L" [1, "); // broken text stays as it is
}

TEST(TyxJsonNodeTest, PushBackAppendsValuesAsAListCopiesDoNotShareAndNodeHoldingNothingIsRefused)
{
    TyxJsonNode node(L"n", TyxVariant(1));
    node.pushBack(TyxJsonNode(L"x", TyxVariant(L"a")));
    TyxJsonNode copy = node;
    node.pushBack(TyxJsonNode::parse(L"{}"));
    EXPECT_EQ(node.toJson(), L"[1,\"a\",{}]");
    EXPECT_EQ(copy.toJson(), L"[1,\"a\"]");
    // Without a handler an Error is thrown.
    try {
        node.pushBack(TyxJsonNode());
        ADD_FAILURE() << "no message";
    } catch (const TyxTextMsg &msg) {
        EXPECT_EQ(
            msg.text(),
            L"Cannot pushBack an TyxJsonNodeIFPtr instantiated by a different TyxJsonNode implementation.");
    }
    EXPECT_EQ(node.size(), 3u);
}

} // namespace
