#include <tyx/TyxTempFile.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>

#include <gtest/gtest.h>

#include "TyxRecordingHandler.h"
#include "TyxTestDir.h"

namespace {

using tyx::TyxString;
using tyx::TyxTempFile;
using tyx::test::HandlerScope;
using tyx::test::TyxTestDir;

/// Points TMPDIR at a test directory for one scope.
class TmpDirScope {
public:
    explicit TmpDirScope(const std::string &directory)
    {
        if (const char *previous = std::getenv("TMPDIR"))
            m_previous = previous;
        ::setenv("TMPDIR", directory.c_str(), 1);
    }
    ~TmpDirScope() { m_previous ? ::setenv("TMPDIR", m_previous->c_str(), 1) : ::unsetenv("TMPDIR"); }

private:
    std::optional<std::string> m_previous;
};

/// Whether \p name is \p head, eight ASCII letters and \p tail.
bool isDrawnName(const std::string &name, const std::string &head, const std::string &tail)
{
    return name.size() == head.size() + 8 + tail.size() && name.starts_with(head) && name.ends_with(tail) &&
           std::all_of(name.begin() + static_cast<std::ptrdiff_t>(head.size()),
                       name.end() - static_cast<std::ptrdiff_t>(tail.size()),
                       [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

TEST(TyxTempFileTest, DrawnNamesNeverOverwriteAFileAndOnlyDeletedFilesGoWithTheObject)
{
    TyxTestDir dir;
    const TmpDirScope scope(dir.path().string());
    // The generator is seeded once; seeding it again replays the next name,
    // which is taken. No directory leaves the bare name.
    tyx::internal::tempnam(L"", L"", L"");
    std::srand(1234);
    const std::string taken = tyx::toUTF8(tyx::internal::tempnam(L"tyx_", L".tmp", L""));
    EXPECT_TRUE(isDrawnName(taken, "tyx_", ".tmp")) << taken;
    dir.write(taken, "precious");
    std::srand(1234);
    std::string name;
    {
        TyxTempFile temp;
        ASSERT_EQ(temp.open(L"w+", false), 0);
        const std::string kept = tyx::toUTF8(temp.fileName());
        EXPECT_TRUE(isDrawnName(kept, dir.path().string() + "/tyx_", ".tmp")) << kept;
        EXPECT_NE(kept, dir.file(taken));
        EXPECT_EQ(temp.write("kept", 4), 4u);
        temp.close();
        EXPECT_EQ(dir.read(std::filesystem::path(kept).filename().string()), "kept");
        EXPECT_EQ(dir.read(taken), "precious");

        ASSERT_EQ(temp.open(L"wb", true), 0);
        name = tyx::toUTF8(temp.fileName());
        EXPECT_TRUE(std::filesystem::exists(name));
    }
    EXPECT_FALSE(std::filesystem::exists(name));

    // A directory ending in a slash gets no second one.
    const std::string drawn = tyx::toUTF8(tyx::internal::tempnam(L"pre_", L".suf", L"/d/"));
    EXPECT_TRUE(isDrawnName(drawn, "/d/pre_", ".suf")) << drawn;
}

TEST(TyxTempFileTest, NamedFileFileToStreamAndRemove)
{
    TyxTestDir dir;
    const TyxString name = tyx::fromUTF8(dir.file("named \xc3\xa9.txt"));
    TyxTempFile temp;
    ASSERT_EQ(temp.open(name.c_str(), L"w", false), 0);
    const std::string text = "line \xe6\x97\xa5\n";
    EXPECT_EQ(temp.write(text.data(), text.size()), text.size());
    std::wostringstream copy;
    temp.fileToStream(copy);
    EXPECT_EQ(copy.str(), L"line \u65e5\n");
    // The position of the stream stays behind what was written.
    EXPECT_EQ(std::ftell(temp.filePtr()), static_cast<long>(text.size()));
    temp.close();

    std::wostringstream closed;
    temp.fileToStream(closed);
    EXPECT_EQ(closed.str(), L"");
    // remove deletes by name, once.
    EXPECT_EQ(tyx::remove(name), 0);
    EXPECT_EQ(tyx::remove(name), -1);
}

TEST(TyxTempFileTest, MissingModeAndUnopenableFilePostErrors)
{
    TyxTestDir dir;
    const TyxString name = tyx::fromUTF8(dir.file("no/such/file"));
    HandlerScope scope;
    TyxTempFile temp;
    temp.open(nullptr, false);
    temp.open(L"/tmp/x", nullptr, true);
    temp.open(name.c_str(), L"r", false);
    EXPECT_FALSE(temp.isOpen());
    const TyxString noMode = L"The passed mode for file open cannot be null or empty.";
    EXPECT_EQ(scope.texts(),
              (std::vector<TyxString>{noMode, noMode, L"Unable to fopen(r) temporary file '" + name + L"'"}));

    const TmpDirScope missing(dir.file("missing"));
    temp.open(L"w", true);
    ASSERT_EQ(scope.texts().size(), 4u);
    const std::string posted = tyx::toUTF8(scope.texts()[3]);
    EXPECT_TRUE(
        isDrawnName(posted, "Unable to fopen(w) temporary file '" + dir.file("missing") + "/tyx_", ".tmp'"))
        << posted;
}

} // namespace
