#include <tyx/TyxDirControl.h>

#include <filesystem>

#include <gtest/gtest.h>

#include "TyxTestDir.h"

namespace {

using tyx::TyxDirControl;
using tyx::TyxString;
using tyx::test::TyxTestDir;

TEST(TyxDirControlTest, ChdirAndGetcwdHaveNoLengthLimit)
{
    TyxTestDir dir;
    std::filesystem::path deep = std::filesystem::canonical(dir.path());
    for (int i = 0; i < 8; ++i)
        deep /= std::string(100, 'd');
    std::filesystem::create_directories(deep);
    // Restores the current directory when the test ends.
    const tyx::test::TyxCurrentDir restore(dir.path());
    const TyxString target = tyx::fromUTF8(deep.string());
    ASSERT_EQ(TyxDirControl::chdir(target), 0);
    EXPECT_EQ(TyxDirControl::getcwd(), target);
    EXPECT_GT(target.size(), static_cast<size_t>(TyxDirControl::s_pathMax));
    EXPECT_EQ(TyxDirControl::chdir(target + L"/missing"), -1);
}

TEST(TyxDirControlTest, MakesAndRemovesDirectoriesByUtf8Name)
{
    TyxTestDir dir;
    const TyxString made = tyx::fromUTF8(dir.file("made \xc3\xa9"));
    ASSERT_EQ(TyxDirControl::mkdir(made, 0700), 0);
    EXPECT_TRUE(std::filesystem::is_directory(dir.path() / "made \xc3\xa9"));
    EXPECT_EQ(TyxDirControl::mkdir(made, 0700), -1);
    EXPECT_EQ(TyxDirControl::rmdir(made), 0);
    EXPECT_EQ(TyxDirControl::rmdir(made), -1);
    EXPECT_EQ(TyxDirControl::mkdir(TyxString(L"x\0y", 3), 0700), -1);
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
