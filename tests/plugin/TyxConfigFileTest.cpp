#include <tyx/TyxConfigFile.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace {

using namespace tyx;
namespace fs = std::filesystem;

class ConfigDir {
public:
    ConfigDir()
    {
        std::string pattern = (fs::temp_directory_path() / "tyx-config-XXXXXX").string();
        const char *made = mkdtemp(pattern.data());
        m_path = made ? fs::canonical(made) : fs::path();
    }
    ~ConfigDir()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    TyxString home() const { return TyxString(m_path.string()); }
    TyxString write(const std::string &text) const
    {
        std::ofstream(m_path / "plugins.json") << text;
        return TyxString((m_path / "plugins.json").string());
    }

private:
    fs::path m_path;
};

struct Listed {
    TyxTextMsg msg;
    std::map<TyxString, TyxString> plugins;
};

Listed listOf(const ConfigDir &dir, const std::string &text)
{
    TyxConfigFile file(dir.write(text), dir.home());
    Listed listed;
    listed.msg = file.read();
    if (listed.msg.empty())
        listed.msg = file.plugins(listed.plugins);
    return listed;
}

TEST(TyxConfigFileTest, PlatformKeyAndRelativePaths)
{
    ConfigDir dir;
    const Listed listed = listOf(dir, R"({ "Plugins_Home": "x",
        "plugins": [ { "name": "alpha", "linux": "alpha.so", "windows": "alpha.dll" },
                     { "name": ["beta", "gamma", 3, null], "LINUX": { "release": "sub/beta.so" } },
                     { "name": "abs", "linux": "/opt/abs.so" },
                     { "name": "winonly", "windows": "w.dll" },
                     { "name": "nobuild", "linux": { "debug": "d.so" } },
                     { "linux": "nameless.so" },
                     7,
                     { "name": "alpha", "linux": "second.so" } ] })");
    ASSERT_TRUE(listed.msg.empty()) << listed.msg.what();
    const TyxString home = dir.home() + L"/x/";
    const std::map<TyxString, TyxString> expected{{L"alpha", home + L"alpha.so"},
                                                  {L"beta", home + L"sub/beta.so"},
                                                  {L"gamma", home + L"sub/beta.so"},
                                                  {L"3", home + L"sub/beta.so"},
                                                  {L"abs", L"/opt/abs.so"}};
    EXPECT_EQ(listed.plugins, expected);
}

TEST(TyxConfigFileTest, HomeDefaultsToTheGivenFolder)
{
    ConfigDir dir;
    TyxConfigFile file(dir.write(R"({"plugins":[{"name":"a","linux":"a.so"}]})"), dir.home());
    ASSERT_TRUE(file.read().empty());
    EXPECT_EQ(file.pluginsHome(), dir.home());
    TyxConfigFile absolute(dir.write(R"({"plugins_home":"/opt/../srv","plugins":[]})"), dir.home());
    ASSERT_TRUE(absolute.read().empty());
    EXPECT_EQ(absolute.pluginsHome(), L"/srv");
    std::map<TyxString, TyxString> out;
    EXPECT_TRUE(absolute.plugins(out).empty());
    EXPECT_TRUE(out.empty());
}

TEST(TyxConfigFileTest, BadFilesGiveTheirMessages)
{
    ConfigDir dir;
    struct Case {
        std::string text;
        std::wstring message;
    };
    const Case cases[] = {
        {R"({"other":1})", L"Plugins array not found"},
        {R"({"plugins":3})", L"Plugins entry must be an array"},
        {R"({"plugins":[{"name":"a","linux":3}]})",
         L"Invalid value type for plugin: a platform: linux - value must be a string or an object."},
        {R"({"plugins":[{"name":"b","linux":{"release":3}}]})",
         L"Invalid value type for plugin: b platform: linux build: release - value may only be a string."},
        {R"({"plugins":[1)", L"Missing a comma or ']' after an array element. (Line: 1 Offset: 13)"},
    };
    for (const Case &c : cases) {
        const Listed listed = listOf(dir, c.text);
        EXPECT_EQ(listed.msg.text(), c.message) << c.text;
    }
}

TEST(TyxConfigFileTest, FirstErrorKeepsWhatWasListed)
{
    ConfigDir dir;
    const Listed listed = listOf(
        dir,
        R"({"plugins":[{"name":"a","linux":"a.so"},{"name":"b","linux":[]},{"name":"c","linux":"c.so"}]})");
    EXPECT_FALSE(listed.msg.empty());
    EXPECT_EQ(listed.plugins.size(), 1u);
    EXPECT_EQ(listed.plugins.count(L"a"), 1u);
}

TEST(TyxConfigFileTest, UnreadOrMissingFile)
{
    ConfigDir dir;
    TyxConfigFile file(dir.home() + L"/none.json", dir.home());
    std::map<TyxString, TyxString> out;
    EXPECT_EQ(file.plugins(out).text(), L"read() must be called successfully before accessing plugins");
    EXPECT_EQ(file.read().text(), L"Unable to open config file: " + dir.home() + L"/none.json");
    EXPECT_EQ(file.plugins(out).text(), L"read() must be called successfully before accessing plugins");
}

} // namespace
