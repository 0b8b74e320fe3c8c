// The loaded plug-ins, by canonical path.
#pragma once

#include <map>
#include <vector>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxLexigraphicalNoCase.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxPlugin.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>

namespace tyx {

namespace internal {
struct PluginDestroyCallback2;
}

/// Plug-ins loaded one by one or found by scanning directories for "*.so".
/// Paths are made canonical and match ignoring case. A failed load is kept
/// in loadErrors() under its canonical path until clearLoadErrors().
class TYX_EXPORT TyxPluginLibrary : public TyxObject {
public:
    using PluginMap = std::map<TyxString, TyxPluginPtr, TyxLexigraphicalNoCase>;
    using ErrorMap = std::map<TyxString, TyxTextMsg, TyxLexigraphicalNoCase>;

    TyxPluginLibrary();
    TyxPluginLibrary(const TyxPluginLibrary &) = delete;
    TyxPluginLibrary &operator=(const TyxPluginLibrary &) = delete;
    /// Drops every plug-in; each unloads with its last reference.
    ~TyxPluginLibrary() override;

    /// "TyxPluginLibrary".
    TyxString className() const override;

    /// Drops every plug-in.
    void clear();
    std::vector<TyxString> allKeys() const;
    bool empty() const { return m_plugins.empty(); }
    size_t size() const { return m_plugins.size(); }
    bool contains(const TyxString &path) const;
    /// The plug-in of \p path, or null.
    TyxPluginPtr entry(const TyxString &path) const;

    /// Adds a loaded plug-in under its file name: 0, or 1 when the name is
    /// there already (or the plug-in is null).
    int insert(const TyxPluginPtr &plugin);
    /// 0 after dropping the plug-in of \p path, 1 when there was none.
    int remove(const TyxString &path);

    /// Loads \p path and adds it. On failure returns null, fills \p msg and
    /// records it in loadErrors().
    TyxPluginPtr loadPlugin(const TyxString &path, TyxTextMsg &msg);
    /// Loads every "*.so" in the directories of \p paths (separated by ";");
    /// a file that fails is recorded and the scan goes on. The number loaded.
    int discoverPlugins(const TyxString &paths);

    void clearLoadErrors() { m_loadErrors.clear(); }
    const ErrorMap &loadErrors() const { return m_loadErrors; }

    PluginMap::const_iterator begin() const { return m_plugins.begin(); }
    PluginMap::const_iterator end() const { return m_plugins.end(); }

private:
    friend struct internal::PluginDestroyCallback2;

    TyxPluginPtr loadPlugin_aux(const TyxString &path, TyxTextMsg &msg,
                                const internal::TyxPluginValidatorIF &validator);
    int discoverPlugins_aux(const TyxString &paths, const internal::TyxPluginValidatorIF &validator);
    /// Forgets the plug-in of \p name without releasing its object: its
    /// protocol is dying.
    void clear(const TyxString &name);
    /// Takes the library's callback off the protocol of \p plugin.
    void detach(const TyxPluginPtr &plugin) const;

    PluginMap m_plugins;
    ErrorMap m_loadErrors;
};

} // namespace tyx
