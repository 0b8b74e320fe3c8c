// Tests of the expression grammar: trees, precedence, subscript layouts and error texts.
#include "TyxBisonParser.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <tyx/TyxTextMsg.h>

#include "expr/TyxEqnTreeText.h"
#include "expr/TyxFcnNode.h"
#include "expr/TyxFlexScanner.h"

namespace {

using namespace tyx;
using namespace tyx::internal;
using namespace std::string_literals;

struct Parsed {
    int status = -1;
    TyxEqnEntries entries;
    std::string errorText;
};

// Runs scanner and parser over \p text as the front end does. A failure must
// come as a thrown message equal to the error text, with no entries left.
Parsed run(const std::string &text)
{
    Parsed parsed;
    std::istringstream in(text);
    TyxFlexScanner scanner(in);
    TyxBisonParser parser(scanner, parsed.entries, parsed.errorText);
    try {
        parsed.status = parser.parse();
    } catch (const TyxTextMsg &msg) {
        EXPECT_EQ(tyx::toUTF8(msg.text()), parsed.errorText);
        EXPECT_TRUE(parsed.entries.empty());
        parsed.status = 1;
    }
    return parsed;
}

// The entries as "tree; name = tree; ...", or the error text.
std::string parse(const std::string &text)
{
    const Parsed parsed = run(text);
    if (parsed.status != 0) {
        EXPECT_TRUE(parsed.entries.empty()) << text;
        return parsed.errorText;
    }
    EXPECT_TRUE(parsed.errorText.empty());
    std::string out;
    for (const auto &[name, root] : parsed.entries) {
        if (!out.empty())
            out += "; ";
        if (!name.empty())
            out += name + " = ";
        out += eqnTreeText(root.get());
    }
    return out;
}

struct ParseCase {
    std::string text;
    std::string result;
};

void expectAll(const std::vector<ParseCase> &cases)
{
    for (const ParseCase &c : cases)
        EXPECT_EQ(parse(c.text), c.result) << c.text;
}

TEST(TyxBisonParserTest, TreesOfEachForm)
{
    expectAll({
        {"a?b:c?d:e", "ternary(a, b, ternary(c, d, e))"},
        {"a||b&&c", "logicalor(a, logicaland(b, c))"},
        {"a&&b|c", "logicaland(a, bitor(b, c))"},
        {"a&b==c", "bitand(a, equals(b, c))"},
        {"a<b>>c", "lessthan(a, shiftright(b, c))"},
        {"a+b*c", "add(a, multiply(b, c))"},
        {"a-b-c", "subtract(subtract(a, b), c)"},
        {"a/b%c", "mod(divide(a, b), c)"},
        {"-a!", "unaryminus(factorial(a))"},
        {"a^b^c", "pow(pow(a, b), c)"},
        {"a.^b^c", "pow(matrixpow(a, b), c)"},
        {"-a^b", "unaryminus(pow(a, b))"},
        {"~a*b", "multiply(bittoggle(a), b)"},
        {"-a[1]", "unaryminus(subscript(a, 1))"},
        {"a[1][2]", "subscript(subscript(a, 1), 2)"},
        {"a^-b", "pow(a, unaryminus(b))"},
        // Atoms, calls and entries.
        {"1.5e-3", "0.0015"},
        {"0x1F", "31"},
        {"1e400", "inf"},
        {"2 m", "\"2 m\""},
        {"2m*x", "\"2m*x\""},
        {"\"caf\xc3\xa9\"", "\"caf\xc3\xa9\""},
        {"f(x, y+1)", "f(x, add(y, 1))"},
        {"f(,x)", "f(x)"},
        {"[1,2;3,4]", "array(1, 2, <null>, 3, 4)"},
        {"[p:q]", "vector(p, 1, q)"},
        {"[p:s:q]", "vector(p, s, q)"},
        {"", ""},
        {"a + b; a = 2*b; b = 3", "add(a, b); a = multiply(2, b); b = 3"},
        {";x=1", "x = 1"},
        {"a;a=1", "a; a = 1"},
        // Subscript layouts.
        {"a[i,j]", "subscript(a, i, j)"},
        {"a[:,:]", "subscript(a, <null>, <null>)"},
        {"a[i,:]", "subscript(a, i, <null>)"},
        {"a[p:q,:]", "subscript(a, p, 1, q, <null>)"},
        {"a[p:s:q,u:v]", "subscript(a, p, s, q, u, 1, v)"},
        {"a[p:q,j]", "subscript(a, p, 1, q, j, 1, j)"},
        {"a[i,p:q]", "subscript(a, i, 1, i, p, 1, q)"},
        {"a[b?1:2,c]", "subscript(a, ternary(b, 1, 2), c)"},
    });
}

TEST(TyxBisonParserTest, WidenedIndexIsAnIndependentCopy)
{
    // The widened index appears twice: once as parsed, once as a clone.
    const Parsed parsed = run("a[p:q,j+1]");
    ASSERT_EQ(parsed.entries.size(), 1u);
    const auto *subscript = parsed.entries[0].second->toFcnNode();
    ASSERT_NE(subscript, nullptr);
    ASSERT_EQ(subscript->args().size(), 7u);
    EXPECT_NE(subscript->args()[4].get(), subscript->args()[6].get());
    EXPECT_EQ(eqnTreeText(subscript->args()[4].get()), eqnTreeText(subscript->args()[6].get()));
}

TEST(TyxBisonParserTest, ErrorTextsAndStrayBytes)
{
    expectAll({
        {"x = 1", "Parsing error at column #3 : syntax error, unexpected '=', expecting end of file or ';'"},
        {"a;", "Parsing error at column #2 : syntax error, unexpected end of file, expecting TKN_ID"},
        {"a;b", "Parsing error at column #3 : syntax error, unexpected end of file, expecting '='"},
        {"a[1:2]", "Parsing error at column #6 : syntax error, unexpected ']', expecting ','"},
        {"\"abc", "Parsing error at column #1 : syntax error token"},
        {"a}",
         "Parsing error at column #2 : syntax error, unexpected $undefined, expecting end of file or ';'"},
        {"f(x,)", "Parsing error at column #5 : syntax error, unexpected ')'"},
        {"f(1 2)", "Parsing error at column #5 : syntax error, unexpected TKN_IVAL, expecting ',' or ')'"},
        {"a?b", "Parsing error at column #3 : syntax error, unexpected end of file"},
        {"[]", "Parsing error at column #2 : syntax error, unexpected ']'"},
        // An error discards the entries before it.
        {"a + 1; b = 2; c = ", "Parsing error at column #18 : syntax error, unexpected end of file"},
        {"a\0b"s, "Parsing error at column #2 : syntax error, unexpected TKN_SYNTAX_ERROR, expecting end of "
                  "file or ';'"},
        {"\"\xff\xfe\"", "\"\xff\xfe\""},
        // The tree text goes through toUTF8, which ends at the null.
        {"\"\0\""s, "\"\""},
    });
    // The constant itself keeps its null.
    const Parsed parsed = run("\"\0\""s);
    ASSERT_EQ(parsed.entries.size(), 1u);
    EXPECT_EQ(parsed.entries[0].second->evaluate().value<tyx::TyxString>(), tyx::TyxString(L"\0", 1));
}

TEST(TyxBisonParserTest, DeepAndLongTexts)
{
    const int depth = 1000;
    std::string nested;
    for (int i = 0; i < depth; ++i)
        nested += "-(";
    nested += 'x';
    nested += std::string(depth, ')');
    std::string expected;
    for (int i = 0; i < depth; ++i)
        expected += "unaryminus(";
    expected += 'x' + std::string(depth, ')');
    EXPECT_EQ(parse(nested), expected);

    EXPECT_EQ(parse(std::string(depth, '(') + "x" + std::string(depth, ')')), "x");
    EXPECT_EQ(parse(std::string(depth, '(') + "x"),
              "Parsing error at column #1001 : syntax error, unexpected end of file");

    // A sum is a left-leaning chain as deep as it is long.
    const int terms = 10000;
    std::string sum = "t";
    for (int i = 1; i < terms; ++i)
        sum += "+t";
    const std::string tree = parse(sum);
    EXPECT_EQ(tree.size(), (terms - 1) * std::string("add(, t)").size() + 1);
    EXPECT_EQ(tree.substr(0, 12), "add(add(add(");
}

} // namespace
