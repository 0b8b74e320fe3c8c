#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxTokenizer.h>

#include "TyxTestDir.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>
#include <vector>

#include "TyxRecordingHandler.h"

namespace {

using tyx::test::HandlerScope;

using tyx::TyxString;
using tyx::TyxTextMsg;
using tyx::TyxTokenizer;

using Token = std::pair<TyxString, TyxTokenizer::TokenType>;

// All tokens of \p text with the LUT reader's sets and "/*" "*/" blocks.
std::vector<Token> tokensOf(const TyxString &text, const TyxString &blockBegin = L"/*",
                            const TyxString &blockEnd = L"*/")
{
    std::wistringstream stream(text);
    TyxTokenizer tokenizer(stream, L"{}=$", L"#", blockBegin, blockEnd, L" \t");
    std::vector<Token> tokens;
    TyxString token;
    TyxTokenizer::TokenType type = TyxTokenizer::Word;
    while (tokenizer.nextToken(token, type))
        tokens.emplace_back(token, type);
    return tokens;
}

TEST(TyxTokenizerTest, QuotesBackslashesAndCommentsSplitTheText)
{
    const Token a{L"a", TyxTokenizer::Word};
    const Token brace{L"{", TyxTokenizer::Delimiter};
    const Token b{L"b", TyxTokenizer::Word};
    const struct {
        const wchar_t *text;
        const wchar_t *blockBegin;
        const wchar_t *blockEnd;
        std::vector<Token> tokens;
    } cases[] = {
        // A quote ends a word and opens a literal.
        {L"ab\"cd\"", L"/*", L"*/", {{L"ab", TyxTokenizer::Word}, {L"cd", TyxTokenizer::Literal}}},
        {L"\"x = # y\"", L"/*", L"*/", {{L"x = # y", TyxTokenizer::Literal}}},
        // A backslash makes the next character plain.
        {L"\"a\\\"b\"", L"/*", L"*/", {{L"a\"b", TyxTokenizer::Literal}}},
        {L"\"a\\\\\" z", L"/*", L"*/", {{L"a\\", TyxTokenizer::Literal}, {L"z", TyxTokenizer::Word}}},
        {L"\"\\n\"", L"/*", L"*/", {{L"n", TyxTokenizer::Literal}}},
        // Comments are skipped anywhere between tokens; a line comment on the
        // last line needs no newline, and a block end must match both characters.
        {L"# first\na# tail\n/* block\n */{b", L"/*", L"*/", {a, brace, b}},
        {L"a { b # end", L"/*", L"*/", {a, brace, b}},
        {L"a/* * / **/{/***/b", L"/*", L"*/", {a, brace, b}},
        {L"a<skip>{b", L"<", L">", {a, brace, b}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(tokensOf(c.text, c.blockBegin, c.blockEnd), c.tokens) << tyx::toUTF8(c.text);
}

TEST(TyxTokenizerTest, EmptyLiteralAnswersFalse)
{
    std::wistringstream stream(L"\"\" next");
    TyxTokenizer tokenizer(stream, L"", L"", L"", L"", L" ");
    TyxString token = L"old";
    TyxTokenizer::TokenType type = TyxTokenizer::Word;
    EXPECT_FALSE(tokenizer.nextToken(token, type));
    EXPECT_EQ(type, TyxTokenizer::Literal);
    EXPECT_TRUE(token.empty());
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"next");
}

TEST(TyxTokenizerTest, TwoCharacterLineMarkerNeedsBothCharacters)
{
    std::wistringstream stream(L"a/b c//d\ne");
    TyxTokenizer tokenizer(stream, L"", L"//", L"", L"", L" ");
    std::vector<TyxString> tokens;
    TyxString token;
    while (tokenizer.nextToken(token))
        tokens.push_back(token);
    EXPECT_EQ(tokens, (std::vector<TyxString>{L"a/b", L"c", L"e"}));
    EXPECT_EQ(tokenizer.lineNumber(), 2);
}

TEST(TyxTokenizerTest, CountsLinesInWhiteSpaceCommentsAndLiterals)
{
    std::wistringstream stream(L"a\n\nb # c\n/* \n */ \"x\ny\" d\r\n");
    TyxTokenizer tokenizer(stream, L"", L"#", L"/*", L"*/", L" ");
    TyxString token;
    ASSERT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(tokenizer.lineNumber(), 1);
    ASSERT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"b");
    EXPECT_EQ(tokenizer.lineNumber(), 3);
    ASSERT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"x\ny");
    EXPECT_EQ(tokenizer.lineNumber(), 6);
    ASSERT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"d");
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(tokenizer.lineNumber(), 7);
}

TEST(TyxTokenizerTest, UnclosedLiteralReportsItsFirstLine)
{
    HandlerScope scope;
    std::wistringstream stream(L"a\nb\n\"open\n\n\n");
    TyxTokenizer tokenizer(stream, L"", L"", L"", L"", L" ");
    TyxString token;
    ASSERT_TRUE(tokenizer.nextToken(token));
    ASSERT_TRUE(tokenizer.nextToken(token));
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_TRUE(token.empty());
    ASSERT_EQ(scope.handler->messages.size(), 1u);
    EXPECT_EQ(scope.handler->messages[0].text(), L"Failed to find closing literal delimiter (\") at line 3.");
    EXPECT_EQ(scope.handler->messages[0].type(), TyxTextMsg::Error);
    // The failure stays: every later call posts it again.
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(scope.handler->messages.size(), 2u);
    EXPECT_EQ(tokenizer.status().text(), scope.handler->messages[0].text());
}

TEST(TyxTokenizerTest, UnclosedBlockCommentReportsItsFirstLine)
{
    HandlerScope scope;
    std::wistringstream stream(L"a\n/* never\nclosed *");
    TyxTokenizer tokenizer(stream, L"", L"", L"/*", L"*/", L" ");
    TyxString token;
    ASSERT_TRUE(tokenizer.nextToken(token));
    EXPECT_FALSE(tokenizer.nextToken(token));
    ASSERT_EQ(scope.handler->messages.size(), 1u);
    EXPECT_EQ(scope.handler->messages[0].text(),
              L"Failed to find closing block comment delimiter at line 2.");
}

TEST(TyxTokenizerTest, DefaultHandlerThrowsTheFailure)
{
    std::wistringstream stream(L"\"open");
    TyxTokenizer tokenizer(stream, L"", L"", L"", L"", L" ");
    TyxString token;
    EXPECT_THROW(tokenizer.nextToken(token), TyxTextMsg);
}

TEST(TyxTokenizerTest, NextDataReadsRawTextToTerminator)
{
    std::wistringstream stream(L"key = a # b\nc;tail");
    TyxTokenizer tokenizer(stream, L"=", L"#", L"", L"", L" ");
    TyxString text;
    ASSERT_TRUE(tokenizer.nextToken(text));
    ASSERT_TRUE(tokenizer.nextToken(text));
    EXPECT_EQ(text, L"=");
    EXPECT_TRUE(tokenizer.nextData(text, L';'));
    EXPECT_EQ(text, L" a # b\nc");
    EXPECT_EQ(tokenizer.lineNumber(), 2);
    EXPECT_FALSE(tokenizer.nextData(text, L';'));
    EXPECT_EQ(text, L"tail");
}

struct ValidationCase {
    const wchar_t *delimiters;
    const wchar_t *lineComment;
    const wchar_t *blockBegin;
    const wchar_t *blockEnd;
    const wchar_t *whitespace;
    const wchar_t *message;
};

TEST(TyxTokenizerTest, InvalidCharacterSetsLeaveTheirStatus)
{
    const std::vector<ValidationCase> cases = {
        {L"", L"###", L"", L"", L" ", L"Line comment identifier, '###', exceeds maximum length of 2"},
        {L"", L"#\"", L"", L"", L" ",
         L"Line comment identifier, '#\"' may not include literal token identifier '\"'"},
        {L"", L"# ", L"", L"", L" ", L"Line comment identifier may not include whitespace TyxCharacters"},
        {L"", L"#", L"", L"*/", L" ",
         L"Block comment begin, '', and block comment end, '*/', failed length test"},
        {L"", L"#", L"/**", L"*/", L" ",
         L"Block comment begin, '/**', and block comment end, '*/', failed length test"},
        {L"", L"#", L"/\"", L"*/", L" ", L"Invalid character, '\"', in block comment begin identifier"},
        {L"", L"#", L"/*", L"\"/", L" ", L"Invalid  TyxCharacter, '\"', in block comment end identifier"},
        {L"", L"#", L"/\n", L"*/", L" ", L"White space found in block comment begin identifier"},
        {L"", L"#", L"/*", L"*\t", L"\t", L"White  space found in block comment end identifier"},
        {L"", L"*", L"/*", L"*/", L" ",
         L"The line comment TyxCharacter '*' must differ from each TyxCharacter in the block comment begin "
         L"identifier '/*'"},
        {L"", L"//", L"/", L"\\", L" ",
         L"The block comment begin TyxCharacter '/' must differ from each TyxCharacter in the line comment "
         L"identifier '//'"},
        {L"", L"/*", L"/*", L"*/", L" ", L"Block begin comment and line comment  identifiers must differ"},
        {L"=;", L"#", L"", L"", L" ;", L"';' cannot be listed as both whitespace and as a delimiter"},
        {L"=", L"#", L"", L"", L" \"", L"Literal TyxCharacter, '\"', cannot be listed as a whitespace"},
        {L"=\"", L"#", L"", L"", L" ", L"Literal TyxCharacter, '\"', cannot be listed as a delimiter"},
    };
    for (const ValidationCase &c : cases) {
        std::wistringstream stream(L"a");
        TyxTokenizer tokenizer(stream, c.delimiters, c.lineComment, c.blockBegin, c.blockEnd, c.whitespace);
        EXPECT_EQ(tokenizer.status().text(), c.message);
        EXPECT_EQ(tokenizer.status().type(), TyxTextMsg::Error);
        HandlerScope scope;
        TyxString token = L"x";
        EXPECT_FALSE(tokenizer.nextToken(token));
        EXPECT_TRUE(token.empty());
        ASSERT_EQ(scope.handler->messages.size(), 1u);
        EXPECT_EQ(scope.handler->messages[0].text(), c.message);
    }
}

TEST(TyxTokenizerTest, FailedStreamAndFactoryPost)
{
    HandlerScope scope;
    std::wistringstream stream(L"a");
    stream.setstate(std::ios_base::failbit);
    auto tokenizer = TyxTokenizer::create(stream, L"", L"", L"", L"", L" ");
    ASSERT_TRUE(tokenizer);
    ASSERT_EQ(scope.handler->messages.size(), 1u);
    EXPECT_EQ(scope.handler->messages[0].text(), L"Invalid input stream for the tokenizer.");
}

TEST(TyxTokenizerTest, FindTokenReadsTheStartOfAFileAndPostsWhenItIsMissing)
{
    tyx::test::TyxTestDir dir;
    dir.write("head.txt", "  # comment\n{ type = l }");
    TyxString token;
    TyxTokenizer::TokenType type = TyxTokenizer::Word;
    const TyxString path = dir.file("head.txt");
    EXPECT_TRUE(TyxTokenizer::findToken(token, type, path, 100, L"{}=$", L"#", L"", L"", L" "));
    EXPECT_EQ(token, L"{");
    EXPECT_EQ(type, TyxTokenizer::Delimiter);
    // Cut inside the comment: only newlines follow, so no token.
    EXPECT_FALSE(TyxTokenizer::findToken(token, type, path, 6, L"{}=$", L"#", L"", L"", L" "));
    dir.write("word.txt", "abc");
    EXPECT_TRUE(TyxTokenizer::findToken(token, type, dir.file("word.txt"), 2, L"", L"", L"", L"", L" "));
    EXPECT_EQ(token, L"ab");

    HandlerScope scope;
    const TyxString missing = dir.file("missing.txt");
    EXPECT_FALSE(TyxTokenizer::findToken(token, type, missing, 10, L"", L"", L"", L"", L" "));
    ASSERT_EQ(scope.handler->messages.size(), 1u);
    EXPECT_EQ(scope.handler->messages[0].text(), L"Cannot open file for read-only access: " + missing);
}

} // namespace
