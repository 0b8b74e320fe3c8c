#include <tyx/TyxURL.h>

#include <sstream>

#include <gtest/gtest.h>

namespace {

using tyx::TyxString;
using tyx::TyxURI;
using tyx::TyxURL;

// The components scheme|username|password|host|port|path|query|fragment,
// an absent one written "-" so that the table tells absent from empty, and
// the file name behind them.
std::string componentsOf(const TyxURL &url)
{
    const std::pair<bool, TyxString> parts[] = {
        {url.hasScheme(), url.scheme()},     {url.hasUsername(), url.username()},
        {url.hasPassword(), url.password()}, {url.hasHost(), url.host()},
        {url.hasPort(), url.port()},         {url.hasPath(), url.path()},
        {url.hasQuery(), url.query()},       {url.hasFragment(), url.fragment()}};
    std::string joined;
    for (const auto &[present, value] : parts) {
        EXPECT_TRUE(present || value.empty()) << tyx::toUTF8(value);
        joined += '|';
        joined += present ? tyx::toUTF8(value) : std::string("-");
    }
    return joined.substr(1) + "|" + tyx::toUTF8(url.filename());
}

TEST(TyxURLTest, SplitsIntoComponents)
{
    const struct {
        const wchar_t *text;
        const char *components;
    } cases[] = {
        {L"a://u:p@h:8080/a/b.txt;v=1?q=1#top", "a|u|p|h|8080|/a/b.txt;v=1|q=1|top|b.txt"},
        {L"c:\\dir\\file.txt", "c|-|-|dir|-|\\file.txt|-|-|file.txt"},
        {L"//host/p", "-|-|-|host|-|/p|-|-|p"},
        {L"  \t s://h/p \n", "s|-|-|h|-|/p|-|-|p"},
        {L"s://user@h", "s|user|-|h|-|-|-|-|"},
        {L"s://a@b:c@h:1", "s|a@b|c|h|1|-|-|-|"},
        {L"s://:@:", "s||||-|-|-|-|"},
        {L"s://h/p?#", "s|-|-|h|-|/p|||p"},
        {L"s://h/p#f?notquery", "s|-|-|h|-|/p|-|f?notquery|p"},
        {L"s://h?q", "s|-|-|h|-|-|q|-|"},
        {L"s://", "s|-|-|-|-|-|-|-|"},
        {L"", "-|-|-|-|-|-|-|-|"},
        {L":x", "|-|-|x|-|-|-|-|"},
        {L"s://[::1]:80/x", "s|-|-|[::1]|80|/x|-|-|x"},
        {L"s://[::1", "s|-|-|[::1|-|-|-|-|"},
        {L"s://h:65535", "s|-|-|h|65535|-|-|-|"},
        {L"s://h:65536", "s|-|-|h|-|-|-|-|"},
        {L"s://h:123456", "s|-|-|h|-|-|-|-|"},
        {L"s://h:8a", "s|-|-|h|-|-|-|-|"},
        // The file name ends at the last semicolon and after the last slash of either kind.
        {L"s://h/d\\sub\\name.ext", "s|-|-|h|-|/d\\sub\\name.ext|-|-|name.ext"},
        {L"s://h/a;b/c;d", "s|-|-|h|-|/a;b/c;d|-|-|c"},
        {L"s://h;only", "s|-|-|h|-|;only|-|-|;only"},
        {L"s://h/dir/", "s|-|-|h|-|/dir/|-|-|"},
        {L"sch\u00e9ma://\u00fcser@h\u00f6st/\u65e5\u672c?\u00e4#\u00df",
         "sch\xc3\xa9ma|\xc3\xbcser|-|h\xc3\xb6st|-|/"
         "\xe6\x97\xa5\xe6\x9c\xac|\xc3\xa4|\xc3\x9f|\xe6\x97\xa5\xe6\x9c\xac"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(componentsOf(TyxURL(TyxString(c.text))), c.components) << tyx::toUTF8(c.text);
}

TEST(TyxURLTest, ParsedPathCutsAtSlashesAndIndexesTheWideTextAtUtf8Positions)
{
    // The path's begin and length count UTF-8 bytes and are applied to the
    // wide text: every multibyte character before the path shifts the cut,
    // and one inside it stretches the end.
    const struct {
        const wchar_t *text;
        tyx::TyxStrList segments;
    } cases[] = {
        {L"http://\u00FC\u00FC/abc/def", {L"c", L"def"}},
        {L"s://h/\u00E9/x?q=1", {L"\u00E9", L"x?"}},
        {L"http://\u00FC\u00FC\u00FC\u00FC/a", {}},
        {L"s://h/a//b/c.txt", {L"a", L"b", L"c.txt"}},
        {L"s://h/a\\b/c/", {L"a\\b", L"c"}},
        {L"s://h/", {}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(TyxURL(TyxString(c.text)).parsedPath(), c.segments) << tyx::toUTF8(c.text);
}

TEST(TyxURLTest, ReparsesOnAssignmentAndOddTextsDoNoHarm)
{
    TyxURL url(TyxString(L"s://h1:1/p"));
    url = TyxString(L"t://h2");
    EXPECT_EQ(componentsOf(url), "t|-|-|h2|-|-|-|-|");
    url.clear();
    EXPECT_TRUE(url.isEmpty());

    // Text set through the base is stale for the parts, but never overread.
    url = TyxString(L"s://host/a/long/path");
    static_cast<TyxURI &>(url) = TyxString(L"x");
    EXPECT_EQ(url.path(), L"");
    EXPECT_EQ(url.filename(), L"");
}

TEST(TyxURITest, StreamsInQuotes)
{
    std::wostringstream wide;
    wide << TyxURI(TyxString(L"d\u00e9j\u00e0"));
    EXPECT_EQ(wide.str(), L"\"d\u00e9j\u00e0\"");
    std::ostringstream narrow;
    narrow << TyxURI(TyxString(L"d\u00e9j\u00e0"));
    EXPECT_EQ(narrow.str(), "\"d\xc3\xa9j\xc3\xa0\"");

    TyxURI read;
    std::wistringstream wideIn(L"  'x y\" rest");
    wideIn >> read;
    EXPECT_EQ(read, TyxString(L"x y"));
    std::istringstream narrowIn("\"\xc3\xa9t\xc3\xa9\"");
    narrowIn >> read;
    EXPECT_EQ(read, TyxString(L"\u00e9t\u00e9"));

    TyxURL url;
    std::wistringstream urlIn(L"\"s://h:1/p\"");
    urlIn >> url;
    EXPECT_EQ(url.port(), L"1");
}

} // namespace
