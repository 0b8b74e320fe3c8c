#include <tyx/TyxFile.h>

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "TyxTestDir.h"

namespace {

using tyx::TyxFile;
using tyx::TyxString;
using tyx::test::TyxTestDir;

TEST(TyxFileTest, PlainAndPositionedTransfersOnANonAsciiName)
{
    TyxTestDir dir;
    TyxFile file;
    ASSERT_EQ(file.open(tyx::fromUTF8(dir.file("\xe6\x97\xa5\xe6\x9c\xac")), O_RDWR | O_CREAT, 0640), 0);
    EXPECT_NE(::fcntl(file.fileDescriptor(), F_GETFD) & FD_CLOEXEC, 0);

    EXPECT_EQ(file.write("hello world", 11), 11u);
    EXPECT_EQ(file.offset(), 11);
    EXPECT_EQ(file.lseek(6, SEEK_SET), 6);
    char buffer[16] = {};
    EXPECT_EQ(file.read(buffer, sizeof buffer), 5u);
    EXPECT_STREQ(buffer, "world");
    EXPECT_EQ(file.read(buffer, sizeof buffer), 0u);

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
}

TEST(TyxFileTest, ClosedFileFailsEveryTransferAndFailedOpenClosesTheOldDescriptor)
{
    // A closed file answers the error code of the transfers.
    TyxFile file;
    char buffer[4];
    EXPECT_EQ(file.read(buffer, 4), TyxFile::ERROR_CODE);
    EXPECT_EQ(file.write(buffer, 4), TyxFile::ERROR_CODE);
    file.close();
    EXPECT_FALSE(file.isOpen());

    TyxTestDir dir;
    ASSERT_EQ(file.open(tyx::fromUTF8(dir.file("a")), O_WRONLY | O_CREAT), 0);
    const int old = file.fileDescriptor();
    const TyxString missing = tyx::fromUTF8(dir.file("no/such/file"));
    EXPECT_EQ(file.open(missing, O_RDONLY), -1);
    EXPECT_EQ(file.fileDescriptor(), -1);
    EXPECT_EQ(file.fileName(), missing);
    EXPECT_EQ(::fcntl(old, F_GETFD), -1);

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

    const std::string contents = dir.read("shared");
    ASSERT_EQ(contents.size(), 2 * blocksPerThread * blockSize);
    for (size_t i = 0; i < contents.size(); ++i) {
        if (contents[i] != static_cast<char>('A' + (i / blockSize) % 2)) {
            ADD_FAILURE() << "byte " << i << " is " << contents[i];
            break;
        }
    }
}

} // namespace
