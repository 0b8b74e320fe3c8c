// Wide strings: UTF-8 codec, text functions, splitter, C-style functions;
// string lists.
#include <gtest/gtest.h>

#include <tyx/TyxLexigraphicalNoCase.h>
#include <tyx/TyxStrList.h>
#include <tyx/TyxString.h>

#include <clocale>
#include <sstream>
#include <utility>

#include "TyxStreamText.h"

namespace {

using namespace tyx;
using namespace tyx::test;
using Parts = std::vector<TyxString>;

TEST(TyxStringTest, Utf8RoundTripsAndMalformedBytesWidenWithTheirSign)
{
    const std::string utf8 = "Gr\xC3\xBC\xC3\x9F"
                             "e \xE5\x9C\xB0\xE5\x9B\xB3 \xF0\x9D\x95\x8F";
    const TyxString wide(utf8);
    EXPECT_EQ(wide, L"Grüße 地図 \U0001D54F");
    EXPECT_EQ(wide.size(), 10u); // one unit per code point
    EXPECT_EQ(static_cast<std::string>(wide), utf8);
    std::istringstream lines(utf8 + "\nnext");
    TyxString line(L"x");
    tyx::getline(lines, line);
    EXPECT_EQ(line, wide);
    line = static_cast<const char *>(nullptr);
    EXPECT_TRUE(line.empty());

    // Malformed UTF-8 widens each byte with its sign.
    const struct {
        const char *name;
        std::string bytes;
    } cases[] = {
        {"lone continuation", "a\x80"},         {"truncated sequence", "\xE5\x9C"},
        {"overlong slash", "\xC0\xAF"},         {"encoded surrogate", "\xED\xA0\x80"},
        {"above U+10FFFF", "\xF4\x90\x80\x80"}, {"invalid lead", "\xFF"},
    };
    for (const auto &c : cases) {
        const TyxString wide(c.bytes);
        ASSERT_EQ(wide.size(), c.bytes.size()) << c.name;
        for (size_t i = 0; i < c.bytes.size(); ++i)
            EXPECT_EQ(wide[i], static_cast<wchar_t>(static_cast<signed char>(c.bytes[i]))) << c.name;
    }
}

// A unit that is not a Unicode scalar value sends the whole text to the
// low-byte fallback; encoding stops at an embedded terminator.
TEST(TyxStringTest, Utf8AndMultibyteEncodingAndTerminatedConversions)
{
    const struct {
        std::wstring wide;
        std::string utf8;
    } cases[] = {
        {std::wstring(L"ab\xD800", 3), std::string("ab\x00", 3)},
        {std::wstring(L"\u00E9\x110041", 2), "\xE9\x41"},
        {std::wstring(L"a\0b", 3), "a"},
        {std::wstring(L"\u00E9\0\xD800", 3), "\xC3\xA9"},
        {std::wstring(L"a\xD841\0\u00E9", 4), "aA"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(toUTF8(c.wide), c.utf8);

    // Terminated conversions report sizes and clear on failure.
    EXPECT_EQ(wcstoutf(nullptr, L"\u00E9a", 0), 4u);
    char narrow[8];
    EXPECT_EQ(wcstoutf(narrow, L"\u00E9a", sizeof narrow), 4u);
    EXPECT_STREQ(narrow, "\xC3\xA9"
                         "a");
    EXPECT_EQ(wcstoutf(narrow, L"too long for it", sizeof narrow), 0u);
    EXPECT_STREQ(narrow, "");

    wchar_t wide[4];
    EXPECT_EQ(utftowcs(wide, "\xF0\x9D\x95\x8F", 4), 2u);
    EXPECT_EQ(wide[0], L'\U0001D54F');
    EXPECT_EQ(utftowcs(wide, "\xC3", 4), 0u);
    EXPECT_EQ(wide[0], L'\0');
    EXPECT_EQ(utftowcs(nullptr, "abc", 0), 4u);

    // The multibyte forms follow the locale. "C" is ASCII only: anything
    // beyond fails and gives empty text.
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(toMultibyte(L"\u00E9"), "");
    EXPECT_EQ(tyx::mbstowcs(wide, "ab", 4), 3u);
    EXPECT_EQ(std::wstring(wide), L"ab");
}

TEST(TyxStringTest, SplitterCases)
{
    const struct {
        const wchar_t *text;
        const wchar_t *delimiters;
        bool keepEmpty;
        Parts expected;
    } cases[] = {
        {L"", L",", true, {}},
        {L",a,,b,", L",", false, {L"a", L"b"}},
        {L",a,,b,", L",", true, {L"", L"a", L"", L"b", L""}},
        {L"abc", L"", false, {L"abc"}},
        {L"((a,b))", L",", false, {L"a", L"b"}},
        {L"(a),(b)", L",", false, {L"a)", L"(b"}},
        // A delimiter at or above 256 moves the splitter off its table.
        {L"a\u2192b,,c\u2192", L",\u2192", false, {L"a", L"b", L"c"}},
        {L"a\u2192b,,c\u2192", L",\u2192", true, {L"a", L"b", L"", L"c", L""}},
        // Units above 255 never match a table of small delimiters.
        {L"a\u012Cb", L",", false, {L"a\u012Cb"}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(splitStr(c.text, c.delimiters, c.keepEmpty), c.expected) << std::wstring(c.text);
}

TEST(TyxStringTest, TrimCaseRulesAndComparisons)
{
    EXPECT_EQ(trim(L"   "), L"   ");
    EXPECT_EQ(trim(L"\t\r\n a b \n"), L"a b");
    EXPECT_EQ(trim(L"\u3000a\u3000"), L"\u3000a\u3000"); // only the four blanks count
    EXPECT_EQ(toLower(TyxString(L"ABC\u00C9")), L"abc\u00C9");
    EXPECT_TRUE(isEqual(L"abc", L"ABC"));
    EXPECT_FALSE(isEqual(L"abc", L"abcd"));
    EXPECT_TRUE(containsSubstring(L"ABC", L"b", false));
    EXPECT_FALSE(containsSubstring(L"ABC", L"b", true));
    EXPECT_TRUE(containsSubstring(L"", L"", true));
    EXPECT_EQ(tyx::strcmp("a", "z"), -1);
    const wchar_t high[] = {static_cast<wchar_t>(0x80000000), 0};
    EXPECT_EQ(tyx::strcmp(high, L"a"), 1); // unsigned comparison
}

TEST(TyxStringTest, NoCaseOrderLowersOnlyTheUnitsThatDiffer)
{
    const TyxLexigraphicalNoCase less;
    // Each pair in order: the first orders before the second.
    const std::pair<const wchar_t *, const wchar_t *> ordered[] = {
        {L"abc", L"ABD"},
        {L"a", L"B"},
        {L"ab", L"AbC"},
        {L"", L"a"},
        // 'A' orders as 'a' (97), after '_' (95), not as itself (65).
        {L"_", L"A"},
        {L"x_", L"XA"},
        // Units outside the byte range keep their value.
        {L"z", L"\u0100"}};
    for (const auto &[first, second] : ordered) {
        EXPECT_TRUE(less(first, second)) << "'" << first << "' before '" << second << "'";
        EXPECT_FALSE(less(second, first)) << "'" << second << "' before '" << first << "'";
    }
    EXPECT_FALSE(less(L"abc", L"ABC"));
    EXPECT_FALSE(less(L"ABC", L"abc"));
}

TEST(TyxStringTest, ApproximateByContinuedFractions)
{
    const struct {
        double value;
        int64_t limit;
        int64_t numerator;
        int64_t denominator;
    } cases[] = {
        {0.75, 100, 3, 4}, {-0.5, 100, -1, 2}, {2.9, 1, 2, 1}, {3.14159265358979, 1000, 355, 113},
        {0.333, 10, 1, 3}, {5.0, 100, 5, 1},
    };
    for (const auto &c : cases) {
        int64_t n = 0;
        int64_t d = 0;
        approximate(c.value, c.limit, &n, &d);
        EXPECT_EQ(n, c.numerator) << c.value;
        EXPECT_EQ(d, c.denominator) << c.value;
    }
}

TEST(TyxStringTest, WideSprintfStopsAtItsWorkArea)
{
    std::vector<wchar_t> target(2000, L'?');
    const std::wstring longText(1000, L'w');
    EXPECT_EQ(tyx::sprintf(target.data(), L"%ls", longText.c_str()), -1);
    EXPECT_EQ(std::wcslen(target.data()), 511u);
    EXPECT_EQ(target[512], L'?'); // nothing written past the work area
    EXPECT_EQ(tyx::sprintf(target.data(), L"%d|%ls", 7, L"\u00E9"), 3);
    EXPECT_STREQ(target.data(), L"7|\u00E9");
}

TEST(TyxStrListTest, FindReturnsLastMatchInsertAppendsOutOfRangeRemoveTakesEveryMatch)
{
    const TyxStrList list{L"a", L"B", L"a"};
    EXPECT_EQ(list.find(L"a", false), 2u);
    EXPECT_EQ(list.find(L"b", false), TyxStrList::INVALID_INDEX());
    EXPECT_EQ(list.find(L"b", true), 1u);
    EXPECT_TRUE(list.contains(L"A", true));
    EXPECT_FALSE(list.contains(L"A", false));

    TyxStrList grown;
    grown.insert(5, L"b");
    EXPECT_EQ(grown.capacity(), 10u);
    grown.insert(0, L"a");
    grown.insert(2, L"c");
    EXPECT_EQ(grown, (TyxStrList{L"a", L"b", L"c"}));
    grown.insert(0, L"b");
    grown.insert(0, L"B");
    grown.remove(L"b");
    EXPECT_EQ(grown, (TyxStrList{L"B", L"a", L"c"}));
}

TEST(TyxStrListTest, SortByUnitOrLoweredTextJoinAndTextFormsRoundTrip)
{
    TyxStrList list{L"b", L"C", L"a"};
    list.sort(false, false);
    EXPECT_EQ(list, (TyxStrList{L"C", L"a", L"b"}));
    list.sort(false, true);
    EXPECT_EQ(list, (TyxStrList{L"a", L"b", L"C"}));
    list.sort(true, true);
    EXPECT_EQ(list, (TyxStrList{L"C", L"b", L"a"}));

    EXPECT_EQ(list.toString(L" + "), L"C + b + a");
    EXPECT_EQ(TyxStrList().toString(L","), L"");
    EXPECT_EQ(static_cast<TyxString>(TyxStrList()), L"");

    // The stream forms round trip.
    const TyxStrList texts{L"été", L"", L"x y"};
    EXPECT_EQ(streamed(texts), L"(été,,x y)");
    TyxStrList back;
    EXPECT_FALSE(readFails(streamed(texts) + L"\n", back));
    EXPECT_EQ(back, texts);
    EXPECT_EQ(streamed<char>(texts), "(\xC3\xA9t\xC3\xA9,,x y)");

    readFails(L"\n", back);
    EXPECT_TRUE(back.isEmpty());
}

} // namespace
