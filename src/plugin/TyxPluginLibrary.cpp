// The loaded plug-ins, explicit loads and directory scans.
#include <tyx/TyxPluginLibrary.h>

#include <tyx/TyxDir.h>
#include <tyx/TyxFileInfo.h>

#include "plugin/TyxPluginBody.h"

namespace tyx {

namespace internal {

/// Takes a plug-in whose protocol dies out of its library.
struct PluginDestroyCallback2 {
    TyxPluginLibrary *library;
    TyxString name;
    void operator()() const { library->clear(name); }
};

} // namespace internal

TyxPluginLibrary::TyxPluginLibrary() = default;

TyxPluginLibrary::~TyxPluginLibrary() { clear(); }

TyxString TyxPluginLibrary::className() const { return L"TyxPluginLibrary"; }

void TyxPluginLibrary::detach(const TyxPluginPtr &plugin) const
{
    if (plugin && plugin->protocol())
        plugin->protocol()->unRegisterCallback(this);
}

void TyxPluginLibrary::clear()
{
    // The map is emptied before the plug-ins go, so that nothing unloading
    // can reach an entry half removed.
    PluginMap plugins;
    plugins.swap(m_plugins);
    for (const auto &entry : plugins)
        detach(entry.second);
}

std::vector<TyxString> TyxPluginLibrary::allKeys() const
{
    std::vector<TyxString> keys;
    keys.reserve(m_plugins.size());
    for (const auto &entry : m_plugins)
        keys.push_back(entry.first);
    return keys;
}

bool TyxPluginLibrary::contains(const TyxString &path) const
{
    return m_plugins.count(canonicalizePath(path)) != 0;
}

TyxPluginPtr TyxPluginLibrary::entry(const TyxString &path) const
{
    auto it = m_plugins.find(canonicalizePath(path));
    return it == m_plugins.end() ? TyxPluginPtr() : it->second;
}

int TyxPluginLibrary::insert(const TyxPluginPtr &plugin)
{
    if (!plugin)
        return 1;
    const TyxString name = plugin->fileName().text();
    if (contains(name))
        return 1;
    m_plugins.emplace(name, plugin);
    if (plugin->protocol())
        plugin->protocol()->registerCallback(this, internal::PluginDestroyCallback2{this, name});
    return 0;
}

int TyxPluginLibrary::remove(const TyxString &path)
{
    auto it = m_plugins.find(canonicalizePath(path));
    if (it == m_plugins.end())
        return 1;
    TyxPluginPtr plugin = it->second;
    m_plugins.erase(it);
    detach(plugin);
    return 0;
}

TyxPluginPtr TyxPluginLibrary::loadPlugin(const TyxString &path, TyxTextMsg &msg)
{
    return loadPlugin_aux(path, msg, internal::TyxPluginValidatorImpl<TyxDefaultPluginValidator>());
}

int TyxPluginLibrary::discoverPlugins(const TyxString &paths)
{
    return discoverPlugins_aux(paths, internal::TyxPluginValidatorImpl<TyxDefaultPluginValidator>());
}

TyxPluginPtr TyxPluginLibrary::loadPlugin_aux(const TyxString &path, TyxTextMsg &msg,
                                              const internal::TyxPluginValidatorIF &validator)
{
    // A file already in the library is refused before it is opened again:
    // a second handshake would share, and then terminate, the protocol the
    // loaded plug-in uses.
    if (contains(path)) {
        msg = TyxTextMsg(L"Dynamic shared object is already loaded as a plugin: " + canonicalizePath(path),
                         __FILE__, __LINE__, TyxTextMsg::Error);
    } else {
        TyxPluginPtr plugin(new TyxPlugin);
        msg = plugin->load_aux(TyxURI(path), validator);
        if (msg.empty() || msg.type() != TyxTextMsg::Error) {
            if (insert(plugin) == 0)
                return plugin;
            msg = TyxTextMsg(L"Dynamic shared object is already loaded as a plugin: " +
                                 plugin->fileName().text(),
                             __FILE__, __LINE__, TyxTextMsg::Error);
        }
    }
    m_loadErrors[canonicalizePath(path)] = msg;
    return TyxPluginPtr();
}

int TyxPluginLibrary::discoverPlugins_aux(const TyxString &paths,
                                          const internal::TyxPluginValidatorIF &validator)
{
    int count = 0;
    for (const TyxString &part : splitStr(paths, L";", false)) {
        if (part.empty())
            continue;
        const TyxString folder = canonicalizePath(part);
        const TyxDir dir(folder);
        for (auto it = dir.begin(L"*.so"); it != dir.end(); ++it) {
            TyxTextMsg msg;
            if (loadPlugin_aux(folder + L"/" + *it, msg, validator))
                ++count;
        }
    }
    return count;
}

void TyxPluginLibrary::clear(const TyxString &name)
{
    auto it = m_plugins.find(name);
    if (it == m_plugins.end())
        return;
    TyxPluginPtr plugin = it->second;
    m_plugins.erase(it);
    plugin->clear();
}

} // namespace tyx
