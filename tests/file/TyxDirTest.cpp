// Tests of directory walks and of the process directory state.
#include <tyx/TyxDir.h>
#include <tyx/TyxDirControl.h>

#include <filesystem>

#include <gtest/gtest.h>

#include "TyxTestDir.h"

namespace {

using tyx::TyxDir;
using tyx::TyxDirControl;
using tyx::TyxString;
using tyx::test::TyxTestDir;

std::vector<TyxString> walk(const TyxDir &dir, const TyxString &pattern)
{
    std::vector<TyxString> names;
    for (TyxDir::iterator it = dir.begin(pattern); it != dir.end(); ++it)
        names.push_back(*it);
    return names;
}

TEST(TyxDirTest, ListsMatchingNamesInByteOrderAndNothingForEmptyOrMissingDirectories)
{
    TyxTestDir dir;
    TyxDir walker(tyx::fromUTF8(dir.path().string()));
    EXPECT_EQ(walker.begin(L"*"), walker.end());
    for (const char *name : {"b.txt", "a.txt", "B.txt", "c.dat", ".hidden.txt", "\xc3\xa9.txt", "_z.txt"})
        dir.write(name, "");
    std::filesystem::create_directory(dir.path() / "sub.txt");

    EXPECT_EQ(walk(walker, L"*.txt"), (std::vector<TyxString>{L".hidden.txt", L"B.txt", L"_z.txt", L"a.txt",
                                                              L"b.txt", L"sub.txt", L"\u00e9.txt"}));
    // A copied iterator keeps its own position.
    TyxDir::iterator it = walker.begin(L"[ab].*");
    const TyxDir::iterator copy = it;
    EXPECT_EQ(*it++, L"a.txt");
    EXPECT_EQ(*it, L"b.txt");
    EXPECT_EQ(*copy, L"a.txt");
    EXPECT_NE(it, copy);
    EXPECT_EQ(++it, walker.end());
    EXPECT_EQ(++it, walker.end());

    for (const TyxString &path :
         {tyx::fromUTF8(dir.file("missing")), tyx::fromUTF8(dir.file("a.txt")), TyxString(L"a\0b", 3)}) {
        walker.setPath(path);
        EXPECT_EQ(walker.begin(), walker.end());
    }
    EXPECT_EQ(*walker.end(), L"");

    // An empty path walks the current directory.
    const tyx::test::TyxCurrentDir inside(dir.path());
    EXPECT_EQ(walk(TyxDir(), L"[ab].*"), (std::vector<TyxString>{L"a.txt", L"b.txt"}));
}

TEST(TyxDirControlTest, MakesChangesToAndRemovesDirectoriesWithoutLengthLimit)
{
    // Eight levels of a hundred characters: longer than s_pathMax.
    TyxTestDir dir;
    TyxString deep = tyx::fromUTF8(std::filesystem::canonical(dir.path()).string());
    for (int i = 0; i < 8; ++i) {
        deep += L"/" + TyxString(100, L'd');
        ASSERT_EQ(TyxDirControl::mkdir(deep, 0700), 0);
    }
    const TyxString made = deep + L"/made \u00e9";
    ASSERT_EQ(TyxDirControl::mkdir(made, 0700), 0);
    EXPECT_TRUE(std::filesystem::is_directory(tyx::toUTF8(made)));
    EXPECT_EQ(TyxDirControl::rmdir(made), 0);
    EXPECT_EQ(TyxDirControl::mkdir(TyxString(L"x\0y", 3), 0700), -1);

    // Restores the current directory when the test ends.
    const tyx::test::TyxCurrentDir restore(dir.path());
    ASSERT_EQ(TyxDirControl::chdir(deep), 0);
    EXPECT_EQ(TyxDirControl::getcwd(), deep);
    EXPECT_GT(deep.size(), static_cast<size_t>(TyxDirControl::s_pathMax));
}

TEST(TyxDirControlTest, RemembersTheDriveLetter)
{
    EXPECT_EQ(TyxDirControl::getdrive(), L'C');
    EXPECT_EQ(TyxDirControl::chdrive(L'd'), 0);
    EXPECT_EQ(TyxDirControl::getdrive(), L'D');
    EXPECT_EQ(TyxDirControl::chdrive(L'1'), -1);
    EXPECT_EQ(TyxDirControl::chdrive(L'\u00e9'), -1);
    EXPECT_EQ(TyxDirControl::getdrive(), L'D');
    EXPECT_EQ(TyxDirControl::chdrive(L'C'), 0);
}

} // namespace
