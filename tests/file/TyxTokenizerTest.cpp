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

// All tokens of \p text with the LUT reader's delimiters and the given comment markers.
std::vector<Token> tokensOf(const TyxString &text, const TyxString &lineComment, const TyxString &blockBegin,
                            const TyxString &blockEnd)
{
    std::wistringstream stream(text);
    TyxTokenizer tokenizer(stream, L"{}=$", lineComment, blockBegin, blockEnd, L" \t");
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
        std::vector<Token> tokens;
        const wchar_t *lineComment = L"#";
        const wchar_t *blockBegin = L"/*";
        const wchar_t *blockEnd = L"*/";
    } cases[] = {
        // A quote ends a word and opens a literal.
        {L"ab\"cd\"", {{L"ab", TyxTokenizer::Word}, {L"cd", TyxTokenizer::Literal}}},
        {L"\"x = # y\"", {{L"x = # y", TyxTokenizer::Literal}}},
        // A backslash makes the next character plain.
        {L"\"a\\\"b\"", {{L"a\"b", TyxTokenizer::Literal}}},
        {L"\"a\\\\\" z", {{L"a\\", TyxTokenizer::Literal}, {L"z", TyxTokenizer::Word}}},
        // Comments are skipped anywhere between tokens; a line comment on the
        // last line needs no newline, and a two-character marker must match
        // both characters.
        {L"# first\na/* block\n */{b# tail", {a, brace, b}},
        {L"a/* * / **/{/***/b", {a, brace, b}},
        {L"a<skip>{b", {a, brace, b}, L"#", L"<", L">"},
        {L"a/b{//d\nb", {{L"a/b", TyxTokenizer::Word}, brace, b}, L"//", L"", L""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(tokensOf(c.text, c.lineComment, c.blockBegin, c.blockEnd), c.tokens) << tyx::toUTF8(c.text);
}

TEST(TyxTokenizerTest, EmptyLiteralAnswersFalseLinesAreCountedEverywhereAndNextDataReadsRawText)
{
    std::wistringstream stream(L"\"\" a\n\nb # c\n/* \n */ \"x\ny\" d\r\n= a # b\nc;tail");
    TyxTokenizer tokenizer(stream, L"=", L"#", L"/*", L"*/", L" ");
    TyxString token = L"old";
    TyxTokenizer::TokenType type = TyxTokenizer::Word;
    EXPECT_FALSE(tokenizer.nextToken(token, type));
    EXPECT_EQ(type, TyxTokenizer::Literal);
    EXPECT_TRUE(token.empty());
    const std::pair<const wchar_t *, int> expected[] = {
        {L"a", 1}, {L"b", 3}, {L"x\ny", 6}, {L"d", 6}, {L"=", 7}};
    for (const auto &[text, line] : expected) {
        ASSERT_TRUE(tokenizer.nextToken(token));
        EXPECT_EQ(token, text);
        EXPECT_EQ(tokenizer.lineNumber(), line) << tyx::toUTF8(text);
    }
    // Raw text runs to the terminator, comments and newlines included.
    EXPECT_TRUE(tokenizer.nextData(token, L';'));
    EXPECT_EQ(token, L" a # b\nc");
    EXPECT_EQ(tokenizer.lineNumber(), 8);
    EXPECT_FALSE(tokenizer.nextData(token, L';'));
    EXPECT_EQ(token, L"tail");
}

TEST(TyxTokenizerTest, UnclosedLiteralOrBlockCommentReportsItsFirstLineOnEveryLaterCall)
{
    const struct {
        const wchar_t *text;
        const wchar_t *message;
    } cases[] = {
        {L"a\nb\n\"open\n\n\n", L"Failed to find closing literal delimiter (\") at line 3."},
        {L"a\n/* never\nclosed *", L"Failed to find closing block comment delimiter at line 2."},
    };
    for (const auto &c : cases) {
        HandlerScope scope;
        std::wistringstream stream(c.text);
        TyxTokenizer tokenizer(stream, L"", L"", L"/*", L"*/", L" ");
        TyxString token;
        while (tokenizer.nextToken(token))
            EXPECT_FALSE(token.empty());
        EXPECT_TRUE(token.empty());
        ASSERT_EQ(scope.onlyText(), c.message);
        EXPECT_EQ(scope.handler->messages[0].type(), TyxTextMsg::Error);
        EXPECT_FALSE(tokenizer.nextToken(token));
        EXPECT_EQ(scope.texts(), (std::vector<TyxString>{c.message, c.message}));
    }
}

TEST(TyxTokenizerTest, InvalidCharacterSetsLeaveTheirStatus)
{
    const struct {
        const wchar_t *lineComment;
        const wchar_t *blockBegin;
        const wchar_t *blockEnd;
        const wchar_t *message;
        const wchar_t *delimiters = L"";
        const wchar_t *whitespace = L" ";
    } cases[] = {
        {L"###", L"", L"", L"Line comment identifier, '###', exceeds maximum length of 2"},
        {L"#\"", L"", L"", L"Line comment identifier, '#\"' may not include literal token identifier '\"'"},
        {L"# ", L"", L"", L"Line comment identifier may not include whitespace TyxCharacters"},
        {L"#", L"/**", L"*/", L"Block comment begin, '/**', and block comment end, '*/', failed length test"},
        {L"#", L"/\"", L"*/", L"Invalid character, '\"', in block comment begin identifier"},
        {L"#", L"/*", L"\"/", L"Invalid  TyxCharacter, '\"', in block comment end identifier"},
        {L"#", L"/\n", L"*/", L"White space found in block comment begin identifier"},
        {L"#", L"/*", L"*\t", L"White  space found in block comment end identifier", L"", L"\t"},
        {L"*", L"/*", L"*/",
         L"The line comment TyxCharacter '*' must differ from each TyxCharacter in the block comment begin "
         L"identifier '/*'"},
        {L"//", L"/", L"\\",
         L"The block comment begin TyxCharacter '/' must differ from each TyxCharacter in the line comment "
         L"identifier '//'"},
        {L"/*", L"/*", L"*/", L"Block begin comment and line comment  identifiers must differ"},
        {L"#", L"", L"", L"';' cannot be listed as both whitespace and as a delimiter", L"=;", L" ;"},
        {L"#", L"", L"", L"Literal TyxCharacter, '\"', cannot be listed as a whitespace", L"=", L" \""},
        {L"#", L"", L"", L"Literal TyxCharacter, '\"', cannot be listed as a delimiter", L"=\""},
    };
    for (const auto &c : cases) {
        std::wistringstream stream(L"a");
        TyxTokenizer tokenizer(stream, c.delimiters, c.lineComment, c.blockBegin, c.blockEnd, c.whitespace);
        EXPECT_EQ(tokenizer.status().text(), c.message);
        EXPECT_EQ(tokenizer.status().type(), TyxTextMsg::Error);
        HandlerScope scope;
        TyxString token;
        EXPECT_FALSE(tokenizer.nextToken(token));
        EXPECT_EQ(scope.onlyText(), c.message);
    }
}

TEST(TyxTokenizerTest, FindTokenReadsTheStartOfAFileAndMissingFilesAndFailedStreamsPost)
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

    // A missing file and a failed stream are posted.
    HandlerScope scope;
    const TyxString missing = dir.file("missing.txt");
    EXPECT_FALSE(TyxTokenizer::findToken(token, type, missing, 10, L"", L"", L"", L"", L" "));
    std::wistringstream stream(L"a");
    stream.setstate(std::ios_base::failbit);
    EXPECT_TRUE(TyxTokenizer::create(stream, L"", L"", L"", L"", L" "));
    EXPECT_EQ(scope.texts(), (std::vector<TyxString>{L"Cannot open file for read-only access: " + missing,
                                                     L"Invalid input stream for the tokenizer."}));
}

} // namespace
