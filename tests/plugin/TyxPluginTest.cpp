#include <tyx/TyxDsoHandle.h>
#include <tyx/TyxFactoryRegistry.h>
#include <tyx/TyxFileInfo.h>
#include <tyx/TyxPlugin.h>
#include <tyx/TyxPluginLibrary.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "../file/TyxTestDir.h"

namespace {

using namespace tyx;
namespace fs = std::filesystem;
using tyx::test::TyxTestDir;

// The canonical path of \p name inside \p dir, as the library names it.
TyxString inDir(const TyxTestDir &dir, const std::string &name = "")
{
    return TyxString(fs::canonical(dir.path() / name).string());
}

// Copies \p source into \p dir as \p name and answers the new path.
TyxString copyIn(const TyxTestDir &dir, const char *source, const std::string &name)
{
    fs::create_directories((dir.path() / name).parent_path());
    fs::copy_file(source, dir.path() / name, fs::copy_options::overwrite_existing);
    return inDir(dir, name);
}

TEST(TyxPluginTest, GoodPluginPassesTheHandshakeAndFilesTheLoaderCannotOpenAreRefused)
{
    TyxTestDir dir;
    const TyxString path = copyIn(dir, TYX_TEST_PLUGIN_GOOD, "good.so");
    TyxPlugin plugin;
    const TyxTextMsg msg = plugin.load(TyxURI(path));
    EXPECT_TRUE(msg.empty()) << msg.what();
    ASSERT_TRUE(plugin.isLoaded());
    ASSERT_TRUE(plugin.protocol());
    EXPECT_EQ(plugin.protocol()->name(), L"two");
    EXPECT_EQ(plugin.protocol()->factories().allKeys(), (std::vector<TyxString>{L"Counter", L"Echo"}));
    plugin.unload();
    EXPECT_FALSE(plugin.isLoaded());
    EXPECT_FALSE(plugin.protocol());
    EXPECT_TRUE(plugin.fileName().empty());
    for (const TyxString &bad : {TyxString(inDir(dir) + L"/missing.so"), inDir(dir)}) {
        const TyxTextMsg refused = plugin.load(TyxURI(bad));
        EXPECT_EQ(refused.type(), TyxTextMsg::Error);
        // The loader's own text follows the path.
        EXPECT_EQ(refused.text().substr(0, bad.size() + 3), bad + L" : ") << refused.what();
        EXPECT_GT(refused.text().size(), bad.size() + 3);
        EXPECT_FALSE(plugin.isLoaded());
    }
}

TEST(TyxDsoHandleTest, SameFileLoadsOnceAndSymbolsResolve)
{
    TyxTestDir dir;
    const TyxString path = copyIn(dir, TYX_TEST_PLUGIN_NOENTRY, "noentry.so");
    TyxDsoHandle handle;
    EXPECT_EQ(handle.addressOf(L"notAPlugin"), nullptr);
    ASSERT_TRUE(handle.load(TyxURI(path)).empty());
    ASSERT_TRUE(handle.load(TyxURI(inDir(dir) + L"/./noentry.so")).empty());
    EXPECT_EQ(handle.fileName().text(), path);
    auto function = reinterpret_cast<int (*)()>(handle.addressOf(L"notAPlugin"));
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function(), 1);
    handle.unload();
    EXPECT_FALSE(handle.isLoaded());
    handle.unload();
}

TEST(TyxPluginLibraryTest, ScanOfMixedDirectoryKeepsGoingAndRefusalsLeaveNothingLoaded)
{
    TyxTestDir dir;
    const TyxString good = copyIn(dir, TYX_TEST_PLUGIN_GOOD, "good.so");
    const TyxString newer = copyIn(dir, TYX_TEST_PLUGIN_NEWER, "newer.so");
    const TyxString noEntry = copyIn(dir, TYX_TEST_PLUGIN_NOENTRY, "noentry.so");
    dir.write("text.so", "not a shared object");
    const TyxString text = inDir(dir, "text.so");
    dir.write("notes.txt", "not matched");
    fs::create_directory(dir.path() / "folder.so");
    copyIn(dir, TYX_TEST_PLUGIN_GOOD, "sub/nested.so"); // sub-directories are not entered

    TyxPluginLibrary library;
    EXPECT_EQ(library.discoverPlugins(L";" + inDir(dir) + L";;" + inDir(dir) + L"/nowhere"), 1);
    EXPECT_EQ(library.allKeys(), std::vector<TyxString>{good});
    const TyxPluginLibrary::ErrorMap &errors = library.loadErrors();
    EXPECT_EQ(errors.at(newer).text(), L"Incompatible TYX version for plugin: " + newer);
    EXPECT_EQ(errors.at(noEntry).text(), L"Dynamic shared object is not a plugin: " + noEntry);
    EXPECT_EQ(errors.at(text).text().substr(0, text.size() + 3), text + L" : ");
    EXPECT_EQ(errors.size(), 4u); // folder.so is refused by the loader too; notes.txt is not tried
    // Both plug-ins refused after opening are closed again.
    for (const TyxString &refused : {newer, noEntry}) {
        TyxPlugin plugin;
        EXPECT_EQ(plugin.load(TyxURI(refused)).type(), TyxTextMsg::Error);
        EXPECT_FALSE(plugin.isLoaded());
        EXPECT_FALSE(plugin.protocol());
    }
    library.clearLoadErrors();
    EXPECT_TRUE(library.loadErrors().empty());
}

TEST(TyxPluginLibraryTest, SecondLoadOfOnePathIsRefusedAndRemoveLeavesTheCallersPlugin)
{
    TyxTestDir dir;
    const TyxString path = copyIn(dir, TYX_TEST_PLUGIN_GOOD, "good.so");
    TyxPluginLibrary library;
    TyxTextMsg msg;
    const TyxPluginPtr first = library.loadPlugin(path, msg);
    ASSERT_TRUE(first) << msg.what();
    EXPECT_TRUE(msg.empty());
    EXPECT_FALSE(
        library.loadPlugin(inDir(dir) + L"/../" + dir.path().filename().wstring() + L"/good.so", msg));
    EXPECT_EQ(msg.text(), L"Dynamic shared object is already loaded as a plugin: " + path);
    EXPECT_EQ(library.loadErrors().at(path).text(), msg.text());
    // The first plug-in is untouched by the refused second one.
    EXPECT_TRUE(first->isLoaded());
    EXPECT_EQ(first->protocol()->factories().size(), 2u);

    EXPECT_EQ(library.remove(path), 0);
    EXPECT_EQ(library.remove(path), 1);
    EXPECT_TRUE(first->isLoaded()); // the caller's reference keeps it
}

TEST(TyxPluginLibraryTest, FactoriesGoBeforeTheirPluginAndDuplicateKeysKeepTheFirst)
{
    TyxTestDir dir;
    copyIn(dir, TYX_TEST_PLUGIN_GOOD, "a.so");
    copyIn(dir, TYX_TEST_PLUGIN_GOOD, "b.so"); // a second copy loads on its own
    TyxFactoryRegistry registry;
    {
        TyxPluginLibrary library;
        EXPECT_EQ(library.discoverPlugins(inDir(dir)), 2);
        std::vector<int> inserted;
        const TyxPluginProtocol *first = nullptr;
        for (const auto &[name, plugin] : library) {
            first = first ? first : plugin->protocol().get();
            for (const TyxString &key : plugin->protocol()->factories().allKeys())
                inserted.push_back(registry.insert(plugin->protocol()->factories().factory(key)));
        }
        // The second copy's keys are taken already.
        EXPECT_EQ(inserted, (std::vector<int>{0, 0, 1, 1}));
        EXPECT_EQ(registry.insert(TyxFactoryPtr()), 1);
        EXPECT_EQ(registry.size(), 2u);
        EXPECT_EQ(registry.factory(L"COUNTER")->protocol().get(), first);
        EXPECT_EQ(registry.factory(L"COUNTER")->create()->className(), L"Counter");
        EXPECT_NE(registry.find<TyxFactory>(L"echo"), nullptr);
        EXPECT_EQ(registry.remove(L"other"), 1);
        // The program's factories are dropped before the library unloads.
        registry.clear();
    }
    EXPECT_TRUE(registry.empty());
}

class LocalProtocol : public TyxPluginProtocol {
public:
    TyxTextMsg initialize() override { return TyxTextMsg(); }
    void terminate() override {}
    TyxString name() const override { return L""; }
    const TyxVersion &version() const override { return m_version; }
    TyxString description() const override { return L""; }
    TyxString vendor() const override { return L""; }

private:
    TyxVersion m_version;
};

TEST(TyxPluginProtocolTest, DyingProtocolRunsEachCallbackOnce)
{
    std::vector<int> calls;
    const int keys[3] = {}; // callbacks run in the order of their keys' addresses
    {
        LocalProtocol protocol;
        // The first callback removes the second one.
        protocol.registerCallback(&keys[0], [&calls, &protocol, &keys] {
            calls.push_back(1);
            protocol.unRegisterCallback(&keys[1]);
        });
        protocol.registerCallback(&keys[1], [&calls] { calls.push_back(2); });
        protocol.registerCallback(&keys[2], [&calls] { calls.push_back(3); });
        protocol.registerCallback(&keys[2], [&calls] { calls.push_back(4); });
        protocol.unRegisterCallback(nullptr);
        // The meta object's values are fixed, whatever the plug-in says.
        EXPECT_EQ(protocol.propertyValue(L"version").value<TyxString>(), L"1.0.0");
        EXPECT_EQ(protocol.metaObject()->setProperty(L"name", TyxVariant(L"x")), 1);
    }
    // 2 was removed by 1, 3 replaced by 4.
    EXPECT_EQ(calls, (std::vector<int>{1, 4}));
}

} // namespace
