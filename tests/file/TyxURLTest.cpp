#include <tyx/TyxURL.h>

#include <sstream>

#include <gtest/gtest.h>

namespace {

using tyx::TyxString;
using tyx::TyxURI;
using tyx::TyxURL;

// A component that is absent is written "-", so the table tells absent from
// empty.
constexpr const wchar_t *absent = nullptr;

struct UrlCase {
    const wchar_t *text;
    const wchar_t *scheme;
    const wchar_t *username;
    const wchar_t *password;
    const wchar_t *host;
    const wchar_t *port;
    const wchar_t *path;
    const wchar_t *query;
    const wchar_t *fragment;
};

void expectComponent(bool present, const TyxString &value, const wchar_t *expected, const char *name,
                     const wchar_t *text)
{
    if (expected == absent) {
        EXPECT_FALSE(present) << name << " of \"" << tyx::toUTF8(text) << "\" is " << tyx::toUTF8(value);
        EXPECT_EQ(value, L"");
    } else {
        EXPECT_TRUE(present) << name << " of \"" << tyx::toUTF8(text) << "\"";
        EXPECT_EQ(value, expected) << name << " of \"" << tyx::toUTF8(text) << "\"";
    }
}

TEST(TyxURLTest, SplitsIntoComponents)
{
    const UrlCase cases[] = {
        {L"a://u:p@h:8080/a/b.txt;v=1?q=1#top", L"a", L"u", L"p", L"h", L"8080", L"/a/b.txt;v=1", L"q=1",
         L"top"},
        {L"http://example.com", L"http", absent, absent, L"example.com", absent, absent, absent, absent},
        {L"c:\\dir\\file.txt", L"c", absent, absent, L"dir", absent, L"\\file.txt", absent, absent},
        {L"file:///tmp/x", L"file", absent, absent, L"tmp", absent, L"/x", absent, absent},
        {L"//host/p", absent, absent, absent, L"host", absent, L"/p", absent, absent},
        {L"plain", absent, absent, absent, L"plain", absent, absent, absent, absent},
        {L"  \t s://h/p \n", L"s", absent, absent, L"h", absent, L"/p", absent, absent},
        {L"s://user@h", L"s", L"user", absent, L"h", absent, absent, absent, absent},
        {L"s://a@b:c@h:1", L"s", L"a@b", L"c", L"h", L"1", absent, absent, absent},
        {L"s://:@:", L"s", L"", L"", L"", absent, absent, absent, absent},
        {L"s://h/p?#", L"s", absent, absent, L"h", absent, L"/p", L"", L""},
        {L"s://h/p#f?notquery", L"s", absent, absent, L"h", absent, L"/p", absent, L"f?notquery"},
        {L"s://h?q", L"s", absent, absent, L"h", absent, absent, L"q", absent},
        {L"s://h;params", L"s", absent, absent, L"h", absent, L";params", absent, absent},
        {L"s://", L"s", absent, absent, absent, absent, absent, absent, absent},
        {L"s:///p", L"s", absent, absent, L"p", absent, absent, absent, absent},
        {L":x", L"", absent, absent, L"x", absent, absent, absent, absent},
        {L"s://[::1]:80/x", L"s", absent, absent, L"[::1]", L"80", L"/x", absent, absent},
        {L"s://[fe80::1%25eth0]", L"s", absent, absent, L"[fe80::1%25eth0]", absent, absent, absent, absent},
        {L"s://[::1", L"s", absent, absent, L"[::1", absent, absent, absent, absent},
        {L"s://h:65535", L"s", absent, absent, L"h", L"65535", absent, absent, absent},
        {L"s://h:65536", L"s", absent, absent, L"h", absent, absent, absent, absent},
        {L"s://h:123456", L"s", absent, absent, L"h", absent, absent, absent, absent},
        {L"s://h:8a", L"s", absent, absent, L"h", absent, absent, absent, absent},
        {L"sch\u00e9ma://\u00fcser@h\u00f6st/\u65e5\u672c?\u00e4#\u00df", L"sch\u00e9ma", L"\u00fcser",
         absent, L"h\u00f6st", absent, L"/\u65e5\u672c", L"\u00e4", L"\u00df"},
    };
    for (const UrlCase &c : cases) {
        const TyxURL url{TyxString(c.text)};
        expectComponent(url.hasScheme(), url.scheme(), c.scheme, "scheme", c.text);
        expectComponent(url.hasUsername(), url.username(), c.username, "username", c.text);
        expectComponent(url.hasPassword(), url.password(), c.password, "password", c.text);
        expectComponent(url.hasHost(), url.host(), c.host, "host", c.text);
        expectComponent(url.hasPort(), url.port(), c.port, "port", c.text);
        expectComponent(url.hasPath(), url.path(), c.path, "path", c.text);
        expectComponent(url.hasQuery(), url.query(), c.query, "query", c.text);
        expectComponent(url.hasFragment(), url.fragment(), c.fragment, "fragment", c.text);
    }
}

TEST(TyxURLTest, FilenameEndsAtTheLastSemicolon)
{
    const struct {
        const wchar_t *text;
        const wchar_t *filename;
    } cases[] = {
        {L"a://u:p@h:8080/a/b.txt;v=1?q=1#top", L"b.txt"},
        {L"s://h/dir\\sub\\name.ext", L"name.ext"},
        {L"s://h/a;b/c;d", L"c"},
        {L"s://h;only", L";only"},
        {L"s://h/dir/", L""},
        {L"", L""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(TyxURL(TyxString(c.text)).filename(), c.filename) << tyx::toUTF8(c.text);
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
        {L"http://\u00FC/a/b", {L"b"}},
        {L"http://\u00FC\u00FC/abc/def", {L"c", L"def"}},
        {L"s://h/\u00E9/x?q=1", {L"\u00E9", L"x?"}},
        {L"http://\u00FC\u00FC\u00FC\u00FC/a", {}},
        {L"http://h/a/b", {L"a", L"b"}},
        {L"s://h/a//b/c.txt", {L"a", L"b", L"c.txt"}},
        {L"s://h/a\\b/c/", {L"a\\b", L"c"}},
        {L"s://h/", {}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(TyxURL(TyxString(c.text)).parsedPath(), c.segments) << tyx::toUTF8(c.text);
    EXPECT_EQ(TyxURL(TyxString(L"http://\u00FC/a/b")).path(), L"/a/b");
}

TEST(TyxURLTest, AssignmentReparsesAndClearEmpties)
{
    TyxURL url(TyxString(L"s://h1:1/p"));
    url = TyxString(L"t://h2");
    EXPECT_EQ(url.scheme(), L"t");
    EXPECT_EQ(url.host(), L"h2");
    EXPECT_FALSE(url.hasPort());
    EXPECT_FALSE(url.hasPath());
    EXPECT_EQ(url.length(), 6u);

    url.clear();
    EXPECT_TRUE(url.isEmpty());
}

TEST(TyxURLTest, StaleTextThroughTheBaseNeverOverreads)
{
    TyxURL url(TyxString(L"s://host/a/long/path"));
    static_cast<TyxURI &>(url) = TyxString(L"x");
    EXPECT_EQ(url.path(), L"");
    EXPECT_EQ(url.filename(), L"");
}

TEST(TyxURLTest, OddTextsParseWithoutHarm)
{
    // Text that is not Unicode goes byte by byte.
    TyxString bad = L"s://h/";
    bad += static_cast<wchar_t>(0xDFFF);
    EXPECT_EQ(TyxURL(bad).scheme(), L"s");

    TyxString longText = L"s://" + TyxString(200000, L'h') + L":80/" + TyxString(200000, L'p');
    const TyxURL longUrl(longText);
    EXPECT_EQ(longUrl.host().size(), 200000u);
    EXPECT_EQ(longUrl.port(), L"80");
    EXPECT_EQ(longUrl.path().size(), 200001u);
    EXPECT_EQ(longUrl.filename().size(), 200000u);
}

TEST(TyxURITest, ComparesAndStreamsInQuotes)
{
    const TyxURI a(TyxString(L"/tmp/a b"));
    EXPECT_EQ(a, TyxString(L"/tmp/a b"));
    EXPECT_NE(a, TyxURI(TyxString(L"/tmp/b")));
    EXPECT_LT(a, TyxURI(TyxString(L"/tmp/b")));

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
