#include <tyx/TyxConfigFile.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>

#include "../file/TyxTestDir.h"

namespace {

using namespace tyx;
namespace fs = std::filesystem;
using tyx::test::TyxTestDir;

// The folder of the test directory and the path of its config file.
TyxString homeOf(const TyxTestDir &dir) { return TyxString(fs::canonical(dir.path()).string()); }
TyxString configIn(const TyxTestDir &dir, const std::string &text)
{
    dir.write("plugins.json", text);
    return homeOf(dir) + L"/plugins.json";
}

// The message of reading the config file \p text and what it lists.
std::pair<TyxTextMsg, std::map<TyxString, TyxString>> listOf(const TyxTestDir &dir, const std::string &text)
{
    TyxConfigFile file(configIn(dir, text), homeOf(dir));
    std::pair<TyxTextMsg, std::map<TyxString, TyxString>> listed{file.read(), {}};
    if (listed.first.empty())
        listed.first = file.plugins(listed.second);
    return listed;
}

TEST(TyxConfigFileTest, PlatformKeyAndRelativePaths)
{
    TyxTestDir dir;
    const auto [msg, plugins] = listOf(dir, R"({ "Plugins_Home": "x",
        "plugins": [ { "name": "alpha", "linux": "alpha.so", "windows": "alpha.dll" },
                     { "name": ["beta", "gamma", 3, null], "LINUX": { "release": "sub/beta.so" } },
                     { "name": "abs", "linux": "/opt/abs.so" },
                     { "name": "winonly", "windows": "w.dll" },
                     { "name": "nobuild", "linux": { "debug": "d.so" } },
                     7,
                     { "name": "alpha", "linux": "second.so" } ] })");
    ASSERT_TRUE(msg.empty()) << msg.what();
    const TyxString home = homeOf(dir) + L"/x/";
    const std::map<TyxString, TyxString> expected{{L"alpha", home + L"alpha.so"},
                                                  {L"beta", home + L"sub/beta.so"},
                                                  {L"gamma", home + L"sub/beta.so"},
                                                  {L"3", home + L"sub/beta.so"},
                                                  {L"abs", L"/opt/abs.so"}};
    EXPECT_EQ(plugins, expected);
}

TEST(TyxConfigFileTest, HomeDefaultsToTheGivenFolderAndUnreadOrMissingFileSaySo)
{
    TyxTestDir dir;
    TyxConfigFile file(configIn(dir, R"({"plugins":[{"name":"a","linux":"a.so"}]})"), homeOf(dir));
    ASSERT_TRUE(file.read().empty());
    EXPECT_EQ(file.pluginsHome(), homeOf(dir));
    TyxConfigFile absolute(configIn(dir, R"({"plugins_home":"/opt/../srv","plugins":[]})"), homeOf(dir));
    ASSERT_TRUE(absolute.read().empty());
    EXPECT_EQ(absolute.pluginsHome(), L"/srv");
    std::map<TyxString, TyxString> out;
    EXPECT_TRUE(absolute.plugins(out).empty());
    EXPECT_TRUE(out.empty());

    TyxConfigFile missing(homeOf(dir) + L"/none.json", homeOf(dir));
    EXPECT_EQ(missing.read().text(), L"Unable to open config file: " + homeOf(dir) + L"/none.json");
    EXPECT_EQ(missing.plugins(out).text(), L"read() must be called successfully before accessing plugins");
}

TEST(TyxConfigFileTest, BadFilesGiveTheirMessagesAndKeepWhatWasListed)
{
    TyxTestDir dir;
    struct Case {
        std::string text;
        std::wstring message;
        size_t listed;
    };
    const Case cases[] = {
        {R"({"other":1})", L"Plugins array not found", 0},
        {R"({"plugins":3})", L"Plugins entry must be an array", 0},
        {R"({"plugins":[{"name":"a","linux":3}]})",
         L"Invalid value type for plugin: a platform: linux - value must be a string or an object.", 0},
        {R"({"plugins":[{"name":"b","linux":{"release":3}}]})",
         L"Invalid value type for plugin: b platform: linux build: release - value may only be a string.", 0},
        {R"({"plugins":[1)", L"Missing a comma or ']' after an array element. (Line: 1 Offset: 13)", 0},
        // The first error stops the listing; what came before it stays.
        {R"({"plugins":[{"name":"a","linux":"a.so"},{"name":"b","linux":[]},{"name":"c","linux":"c.so"}]})",
         L"Invalid value type for plugin: b platform: linux - value must be a string or an object.", 1},
    };
    for (const Case &c : cases) {
        const auto [msg, plugins] = listOf(dir, c.text);
        EXPECT_EQ(msg.text(), c.message) << c.text;
        EXPECT_EQ(plugins.size(), c.listed) << c.text;
        EXPECT_EQ(plugins.count(L"a"), c.listed) << c.text;
    }
}

} // namespace
