// Tests of the expression scanner: token boundaries, token text, values and the column.
#include "expr/TyxFlexScanner.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace tyx::internal;
using Token = TyxBisonParser::token;
using namespace std::string_literals;

bool carriesText(int code) { return code >= Token::TKN_ID && code <= Token::TKN_SVAL; }

// The tokens of \p text, blank-separated: a character token as itself, a
// named one by its name, with its text in parentheses where it has one.
// With \p columns every token is followed by "@" and the column after it.
std::string scan(const std::string &text, bool columns = false)
{
    std::istringstream in(text);
    TyxFlexScanner scanner(in);
    std::string out;
    for (;;) {
        TyxBisonParser::value_type value;
        const int code = scanner.lex(&value);
        if (code == 0)
            break;
        if (!out.empty())
            out += ' ';
        if (code < 256)
            out += static_cast<char>(code);
        else
            out += TyxBisonParser::symbol_name(
                TyxBisonParser::by_kind(static_cast<Token::token_kind_type>(code)).kind());
        if (carriesText(code)) {
            out += '(' + value.as<std::string>() + ')';
            value.destroy<std::string>();
        }
        if (columns)
            out += '@' + std::to_string(scanner.column());
    }
    return out;
}

struct ScanCase {
    std::string text;
    std::string tokens;
};

TEST(TyxFlexScannerTest, TokensOfEachKind)
{
    const ScanCase cases[] = {
        {">> << && || <= >= == != .* ./ .^ .'",
         "TKN_RIGHT TKN_LEFT TKN_AND TKN_OR TKN_LE TKN_GE TKN_EQ TKN_NE "
         "TKN_ALT_MULT TKN_ALT_DIV TKN_ALT_EXP TKN_ALT_TRANS"},
        {". { } ( ) [ ] < > - + * / % ? : ; , ' & ~ ^ | ! =",
         ". { } ( ) [ ] < > - + * / % ? : ; , ' & ~ ^ | ! ="},
        // Longest match: three characters split into a pair and a single.
        {">>>", "TKN_RIGHT >"},
        {"a.'", "TKN_ID(a) TKN_ALT_TRANS"},
        {"1.5 1. .5", "TKN_FVAL(1.5) TKN_FVAL(1.) TKN_FVAL(.5)"},
        {"1e5 1.5E-3 .5e+2 1.e2", "TKN_EVAL(1e5) TKN_EVAL(1.5E-3) TKN_EVAL(.5e+2) TKN_EVAL(1.e2)"},
        {"0x1F 0XaB 0x1e5", "TKN_HVAL(0x1F) TKN_HVAL(0XaB) TKN_HVAL(0x1e5)"},
        {"_a1 e5 x_2 A", "TKN_ID(_a1) TKN_ID(e5) TKN_ID(x_2) TKN_ID(A)"},
        {"\"a b\nc\"", "TKN_SVAL(\"a b\nc\")"},
        {"\"abc", "TKN_SYNTAX_ERROR TKN_ID(abc)"},
        {" \t\v\f\r\n", ""},
        {"1..2", "TKN_FVAL(1.) TKN_FVAL(.2)"},
        // Control characters, NUL and the bytes of UTF-8 are single error
        // tokens, while a string passes them through.
        {"a\0b"s, "TKN_ID(a) TKN_SYNTAX_ERROR TKN_ID(b)"},
        {"\xc3\xa9", "TKN_SYNTAX_ERROR TKN_SYNTAX_ERROR"},
        {"\"\xc3\xa9\"", "TKN_SVAL(\"\xc3\xa9\")"},
        {"\"\0\""s, "TKN_SVAL(\"\0\")"s},
        // Unit tokens are greedy and back up.
        {"2 m", "TKN_UVAL(2 m)"},
        {"2m/3", "TKN_UVAL(2m) / TKN_IVAL(3)"},
        {"2m^2^0.5", "TKN_UVAL(2m^2^0.5)"},
        {"2m^1e3 2m^0x1F 2m^.5", "TKN_UVAL(2m^1e3) TKN_UVAL(2m^0x1F) TKN_UVAL(2m^.5)"},
        {"2m^-1", "TKN_UVAL(2m) ^ - TKN_IVAL(1)"},
        {"2m3", "TKN_UVAL(2m) TKN_IVAL(3)"},
        {"1e", "TKN_UVAL(1e)"},
        {"1e+", "TKN_UVAL(1e) +"},
        {"0x1Fm", "TKN_UVAL(0x1Fm)"},
        {"2 (m)", "TKN_UVAL(2 (m))"},
        {"2 (a+b)", "TKN_IVAL(2) ( TKN_ID(a) + TKN_ID(b) )"},
        {"2(m)^2", "TKN_UVAL(2(m)) ^ TKN_IVAL(2)"},
        {"2(m/s)x", "TKN_UVAL(2(m/s)) TKN_ID(x)"},
        {"2 \"m\"", "TKN_IVAL(2) TKN_SVAL(\"m\")"},
        {"2\tm", "TKN_IVAL(2) TKN_ID(m)"},
    };
    for (const ScanCase &c : cases)
        EXPECT_EQ(scan(c.text), c.tokens) << c.text;
}

TEST(TyxFlexScannerTest, ColumnsAndLongTokens)
{
    EXPECT_EQ(scan("a + bc", true), "TKN_ID(a)@1 +@3 TKN_ID(bc)@6");
    EXPECT_EQ(scan("\t\t#", true), "TKN_SYNTAX_ERROR@17");
    EXPECT_EQ(scan("1234567\tx", true), "TKN_IVAL(1234567)@7 TKN_ID(x)@9");
    EXPECT_EQ(scan("12345678\tx", true), "TKN_IVAL(12345678)@8 TKN_ID(x)@17");
    EXPECT_EQ(scan("a\nbc", true), "TKN_ID(a)@1 TKN_ID(bc)@2");
    EXPECT_EQ(scan("\"a\nbc\" x", true), "TKN_SVAL(\"a\nbc\")@3 TKN_ID(x)@5");

    // Longer than the 16384-byte buffer: the buffer grows or backs up correctly.
    const std::string digits(40000, '7');
    EXPECT_EQ(scan(digits + "+1"), "TKN_IVAL(" + digits + ") + TKN_IVAL(1)");
    const std::string body(40000, 'x');
    EXPECT_EQ(scan("\"" + body), "TKN_SYNTAX_ERROR TKN_ID(" + body + ")");
    EXPECT_EQ(scan("\"" + body + "\""), "TKN_SVAL(\"" + body + "\")");
}

TEST(TyxFlexScannerTest, IntegerValuesSaturateAt32Bits)
{
    EXPECT_EQ(TyxFlexScanner::decimalValue("010"), 10.0);
    EXPECT_EQ(TyxFlexScanner::decimalValue("2147483647"), 2147483647.0);
    EXPECT_EQ(TyxFlexScanner::decimalValue("2147483648"), 2147483647.0);
    EXPECT_EQ(TyxFlexScanner::decimalValue(std::string(400, '9')), 2147483647.0);
    EXPECT_EQ(TyxFlexScanner::hexValue("0X7fffffff"), 2147483647.0);
    EXPECT_EQ(TyxFlexScanner::hexValue("0xFFFFFFFF"), 2147483647.0);
    EXPECT_EQ(TyxFlexScanner::hexValue("0x" + std::string(40, 'F')), 2147483647.0);
}

} // namespace
