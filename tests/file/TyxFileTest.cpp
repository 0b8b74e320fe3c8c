// Tests of files, their names and their status.
#include <tyx/TyxFile.h>
#include <tyx/TyxFileInfo.h>

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "TyxTestDir.h"

namespace {

using tyx::TyxFile;
using tyx::TyxFileInfo;
using tyx::TyxString;
using tyx::test::TyxTestDir;

TEST(TyxFileTest, TransfersOnANonAsciiNameAndAFailedOpenClosesTheFile)
{
    TyxTestDir dir;
    TyxFile file;
    ASSERT_EQ(file.open(tyx::fromUTF8(dir.file("\xe6\x97\xa5\xe6\x9c\xac")), O_RDWR | O_CREAT, 0640), 0);
    EXPECT_NE(::fcntl(file.fileDescriptor(), F_GETFD) & FD_CLOEXEC, 0);

    EXPECT_EQ(file.write("hello world", 11), 11u);
    EXPECT_EQ(file.lseek(6, SEEK_SET), 6);
    char buffer[16] = {};
    EXPECT_EQ(file.read(buffer, sizeof buffer), 5u);
    EXPECT_STREQ(buffer, "world");

    // The positioned forms seek first and leave the position after the transfer.
    EXPECT_EQ(file.write(13, "abcd", 4), 4u);
    EXPECT_EQ(file.read(14, buffer, 2), 2u);
    EXPECT_EQ(std::string(buffer, 2), "bc");
    EXPECT_EQ(file.offset(), 16);
    EXPECT_EQ(file.read(-1, buffer, 1), TyxFile::ERROR_CODE);
    struct stat status {};
    ASSERT_EQ(file.stat(status), 0);
    EXPECT_EQ(status.st_size, 17);
    EXPECT_EQ(dir.read("\xe6\x97\xa5\xe6\x9c\xac"), std::string("hello world\0\0abcd", 17));

    // A failed open closes the old descriptor; a closed file fails the transfers.
    const int old = file.fileDescriptor();
    const TyxString missing = tyx::fromUTF8(dir.file("no/such/file"));
    EXPECT_EQ(file.open(missing, O_RDONLY), -1);
    EXPECT_EQ(file.fileDescriptor(), -1);
    EXPECT_EQ(::fcntl(old, F_GETFD), -1);
    EXPECT_EQ(file.read(buffer, 4), TyxFile::ERROR_CODE);
    EXPECT_EQ(file.write(buffer, 4), TyxFile::ERROR_CODE);

    EXPECT_EQ(file.open(TyxString(L"a\0b", 3), O_RDONLY | O_CREAT), -1);
}

TEST(TyxFileTest, TwoThreadsShareOneFileThroughPositionedForms)
{
    // Each thread owns every other block; the blocks land where they were
    // sent and read back whole only if no seek of one thread slips between
    // the seek and the transfer of the other.
    constexpr size_t blockSize = 64;
    constexpr int blocksPerThread = 2000;
    TyxTestDir dir;
    TyxFile file;
    ASSERT_EQ(file.open(tyx::fromUTF8(dir.file("shared")), O_RDWR | O_CREAT), 0);

    std::array<int, 2> failures{};
    const auto worker = [&](int which) {
        std::vector<char> block(blockSize, static_cast<char>('A' + which));
        std::vector<char> back(blockSize);
        for (int i = 0; i < blocksPerThread; ++i) {
            const int64_t offset = static_cast<int64_t>((2 * i + which) * blockSize);
            if (file.write(offset, block.data(), blockSize) != blockSize)
                ++failures[which];
            if (file.read(offset, back.data(), blockSize) != blockSize || back != block)
                ++failures[which];
        }
    };
    std::thread first(worker, 0);
    std::thread second(worker, 1);
    first.join();
    second.join();
    EXPECT_EQ(failures[0], 0);
    EXPECT_EQ(failures[1], 0);

    std::string expected;
    for (int i = 0; i < 2 * blocksPerThread; ++i)
        expected.append(blockSize, static_cast<char>('A' + i % 2));
    EXPECT_TRUE(dir.read("shared") == expected);
}

TEST(TyxFileInfoTest, StoresTheLinuxNormalFormAndSplitsIt)
{
    const struct {
        const wchar_t *given;
        const wchar_t *stored;
        const wchar_t *path;
        const wchar_t *baseName;
        const wchar_t *suffix;
        bool absolute = false;
    } cases[] = {
        {L"", L"", L".", L"", L""},
        {L"/", L"/", L"/", L"", L"", true},
        {L".\\", L"", L".", L"", L""},
        {L"./a", L"a", L".", L"a", L""},
        {L"C:\\a//b/./c/", L"C:/a/b/c", L"C:/a/b", L"c", L""},
        {L"C:./a", L"C:./a", L"C:.", L"a", L""},
        {L"/a/..//b/", L"/a/../b", L"/a/..", L"b", L"", true},
        {L"a/.", L"a/.", L"a", L"", L""},
        {L"..\\x", L"../x", L"..", L"x", L""},
        {L"\\\\server\\share", L"/server/share", L"/server", L"share", L"", true},
        {L"file.txt", L"file.txt", L".", L"file", L"txt"},
        {L"archive.tar.gz", L"archive.tar.gz", L".", L"archive.tar", L"gz"},
        {L"dir.d/name", L"dir.d/name", L"dir.d", L"name", L""},
        {L"a/.hidden", L"a/.hidden", L"a", L"", L"hidden"},
        {L"a/trailing.", L"a/trailing.", L"a", L"trailing", L""},
    };
    for (const auto &c : cases) {
        const TyxFileInfo info{TyxString(c.given)};
        EXPECT_EQ(info.filePath(), c.stored) << c.given;
        EXPECT_EQ(info.path(), c.path) << c.given;
        EXPECT_EQ(info.baseName(), c.baseName) << c.given;
        EXPECT_EQ(info.suffix(), c.suffix) << c.given;
        EXPECT_EQ(info.isAbsolute(), c.absolute) << c.given;
    }
    // setFile normalises too.
    TyxFileInfo info;
    info.setFile(TyxString(L"x\\\\y/"));
    EXPECT_EQ(info.filePath(), L"x/y");
    EXPECT_EQ(TyxFileInfo(TyxString(100000, L'/')).filePath(), L"/");
}

TEST(TyxFileInfoTest, StatusAndCanonicalFormOnDisk)
{
    // Non-ASCII names go to the system as UTF-8.
    TyxTestDir dir;
    const std::filesystem::path realPath = std::filesystem::canonical(dir.path());
    const TyxString real = tyx::fromUTF8(realPath.string());
    const TyxFileInfo file(real + L"/\u00fcber \u65e5\u672c.txt");
    dir.write("\xc3\xbc"
              "ber \xe6\x97\xa5\xe6\x9c\xac.txt",
              "12345");
    EXPECT_TRUE(file.isFile());
    EXPECT_TRUE(TyxFileInfo(real).isDir());
    struct stat buffer {};
    ASSERT_EQ(file.stat(buffer), 0);
    EXPECT_EQ(buffer.st_size, 5);
    EXPECT_EQ(file.access(R_OK | W_OK), 0);
    // A null character inside a path names nothing, instead of a shorter path.
    const TyxString withNull = real + TyxString(L"/\0x", 3);
    EXPECT_FALSE(TyxFileInfo(withNull).isDir());
    EXPECT_EQ(TyxFileInfo(withNull).access(F_OK), -1);
    EXPECT_EQ(tyx::canonicalizePath(withNull), withNull);

    // Links are resolved, even when the name behind one does not exist.
    std::filesystem::create_directory(realPath / "target");
    std::filesystem::create_directory_symlink(realPath / "target", realPath / "link");
    EXPECT_EQ(tyx::canonicalizePath(real + L"/link"), real + L"/target");
    EXPECT_EQ(tyx::canonicalizePath(real + L"/link/new/file.txt"), real + L"/target/new/file.txt");
    // Missing paths have their dots resolved by text; a long one is not handed to the system.
    EXPECT_EQ(tyx::canonicalizePath(L"/../../no_such_tyx_dir/x"), L"/no_such_tyx_dir/x");
    EXPECT_EQ(tyx::canonicalizePath(L""), L"");
    TyxString longPath;
    for (int i = 0; i < 20000; ++i)
        longPath += L"/segment";
    EXPECT_EQ(TyxFileInfo(longPath).canonicalize(), longPath);

    const tyx::test::TyxCurrentDir inside(dir.path());
    EXPECT_EQ(tyx::canonicalizePath(L"missing/../other"), real + L"/other");
    EXPECT_EQ(tyx::canonicalizePath(L"."), real);
    EXPECT_EQ(TyxFileInfo(TyxString(L"sub/f.txt")).absoluteFilePath(), real + L"/sub/f.txt");
    EXPECT_EQ(TyxFileInfo(TyxString(L"/etc/x")).absoluteFilePath(), L"/etc/x");
    EXPECT_EQ(TyxFileInfo().absoluteFilePath(), L"");
}

} // namespace
