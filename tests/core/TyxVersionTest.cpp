// Version numbers: reading, comparing and the text form.
#include <gtest/gtest.h>

#include <tyx/TyxVersion.h>

#include <sstream>

namespace {

using namespace tyx;

TEST(TyxVersionTest, TextReadsOneLineOrderAndTextForms)
{
    const struct {
        const wchar_t *text;
        TyxVersion expected;
    } cases[] = {
        {L"4.1", TyxVersion(4, 1, 0)},      {L"2", TyxVersion(2, 0, 0)},
        {L"", TyxVersion(1, 0, 0)},         {L"4.1\n5.6", TyxVersion(4, 1, 0)},
        {L"4.1.2\n5", TyxVersion(4, 1, 2)}, {L"\n5.6.7", TyxVersion(1, 0, 0)},
        {L"3\n", TyxVersion(3, 0, 0)},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(TyxVersion(c.text), c.expected) << toUTF8(c.text);
        std::wistringstream in(c.text);
        TyxVersion read;
        in >> read;
        EXPECT_EQ(read, c.expected) << toUTF8(c.text);
    }

    EXPECT_GT(TyxVersion(4, 1, 0), TyxVersion(4, 0, 9));
    EXPECT_LT(TyxVersion(3, 9, 9), TyxVersion(4, 0, 0));
    EXPECT_LE(TyxVersion(4, 1, 0), TyxVersion(4, 1, 0));
    EXPECT_TRUE(TyxVersion(4, 1, 0) == TyxString(L"4.1\n9"));
    EXPECT_TRUE(TyxVersion(4, 1, 0) != TyxString(L"4.1.1"));

    const TyxVersion version(4, 1, 0);
    EXPECT_EQ(static_cast<TyxString>(version), L"4.1.0");
    EXPECT_EQ(version.toString(L"_"), L"4_1_0");
    EXPECT_EQ(version.toString(L".", false), L"4.1");
    std::ostringstream narrow;
    narrow << version;
    EXPECT_EQ(narrow.str(), "4.1.0");
}

} // namespace
