#include <tyx/TyxDirControl.h>

#include <filesystem>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "TyxTestDir.h"

namespace {

using tyx::TyxDirControl;
using tyx::TyxString;
using tyx::test::TyxTestDir;

TEST(TyxDirControlTest, ChangesAndReadsTheCurrentDirectory)
{
    TyxTestDir dir;
    const std::filesystem::path previous = std::filesystem::current_path();
    const TyxString target = tyx::fromUTF8(std::filesystem::canonical(dir.path()).string());
    ASSERT_EQ(TyxDirControl::chdir(target), 0);
    EXPECT_EQ(TyxDirControl::getcwd(), target);
    EXPECT_EQ(TyxDirControl::chdir(target + L"/missing"), -1);
    std::filesystem::current_path(previous);
}

TEST(TyxDirControlTest, GetcwdHasNoLengthLimit)
{
    TyxTestDir dir;
    std::filesystem::path deep = dir.path();
    const std::string segment(100, 'd');
    for (int i = 0; i < 8; ++i)
        deep /= segment;
    std::filesystem::create_directories(deep);
    const tyx::test::TyxCurrentDir inside(deep);
    const TyxString current = TyxDirControl::getcwd();
    EXPECT_GT(current.size(), static_cast<size_t>(TyxDirControl::s_pathMax));
    EXPECT_EQ(current, tyx::fromUTF8(std::filesystem::current_path().string()));
}

TEST(TyxDirControlTest, MakesDirectoriesWithTheirModeAndRemovesThem)
{
    TyxTestDir dir;
    const TyxString made = tyx::fromUTF8(dir.file("made \xc3\xa9"));
    ASSERT_EQ(TyxDirControl::mkdir(made, 0700), 0);
    struct stat status {};
    ASSERT_EQ(::stat(dir.file("made \xc3\xa9").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_EQ(TyxDirControl::mkdir(made, 0700), -1);

    dir.write("made \xc3\xa9/file", "");
    EXPECT_EQ(TyxDirControl::rmdir(made), -1);
    std::filesystem::remove(dir.path() / "made \xc3\xa9/file");
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
