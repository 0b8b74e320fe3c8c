// The JSON file that lists the plug-ins of an application.
#pragma once

#include <map>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariant.h>

namespace tyx {

/// Reads a plug-in list such as
///     { "plugins_home": "plugins",
///       "plugins": [ { "name": "alpha", "linux": "alpha.so" },
///                    { "name": ["beta", "gamma"], "linux": { "release": "sub/beta.so" } } ] }
/// Keys match ignoring case. Relative paths are taken against
/// "plugins_home", itself taken against the default home when relative.
class TYX_EXPORT TyxConfigFile {
public:
    /// \p defaultHome is the folder relative homes and paths start from,
    /// usually the folder of \p filename.
    TyxConfigFile(const TyxString &filename, const TyxString &defaultHome);
    TyxConfigFile(const TyxConfigFile &other);
    TyxConfigFile &operator=(const TyxConfigFile &other);
    ~TyxConfigFile();

    const TyxString &filename() const { return m_filename; }
    /// The canonical folder of relative plug-in paths, once read.
    const TyxString &pluginsHome() const { return m_pluginsHome; }

    /// Reads and parses the file. Errors: "Unable to open config file:
    /// <filename>", or the parser's message.
    TyxTextMsg read();
    /// Adds name and absolute path of each plug-in listed for this platform
    /// to \p out; a name already there keeps its path. The first error ends
    /// the call and \p out keeps what was added before it.
    TyxTextMsg plugins(std::map<TyxString, TyxString> &out) const;

private:
    TyxTextMsg platformPath(const TyxVariantMap &entry, const TyxString &name, TyxString &path) const;

    TyxString m_filename;
    TyxString m_defaultHome;
    TyxString m_pluginsHome;
    TyxVariant m_data;
};

} // namespace tyx
