// Reading the plug-in list file.
#include <tyx/TyxConfigFile.h>

#include <fstream>

#include <tyx/TyxFileInfo.h>
#include <tyx/TyxJsonNode.h>

namespace tyx {

namespace {

// The key of this platform in a plug-in entry.
const wchar_t *const platformKey = L"linux";

TyxTextMsg error(const TyxString &text) { return TyxTextMsg(text, __FILE__, __LINE__, TyxTextMsg::Error); }

const TyxVariant *member(const TyxVariantMap &map, const wchar_t *key)
{
    auto it = map.find(key);
    return it == map.end() ? nullptr : &it->second;
}

} // namespace

TyxConfigFile::TyxConfigFile(const TyxString &filename, const TyxString &defaultHome)
    : m_filename(filename), m_defaultHome(defaultHome)
{
}

TyxConfigFile::TyxConfigFile(const TyxConfigFile &other) = default;

TyxConfigFile &TyxConfigFile::operator=(const TyxConfigFile &other) = default;

TyxConfigFile::~TyxConfigFile() = default;

TyxTextMsg TyxConfigFile::read()
{
    std::ifstream is(toUTF8(m_filename), std::ios::binary);
    if (!is)
        return error(L"Unable to open config file: " + m_filename);
    TyxVariant data;
    try {
        TyxTextMsg msg = fromJson(is, data);
        if (!msg.empty())
            return msg;
    } catch (...) {
        return error(L"Error thrown when deserializing JSON from file: " + m_filename);
    }
    is.close();
    const TyxVariantMap root = data.value<TyxVariantMap>();
    const TyxVariant *home = member(root, L"plugins_home");
    TyxString pluginsHome = home ? home->value<TyxString>() : m_defaultHome;
    if (!TyxFileInfo(pluginsHome).isAbsolute())
        pluginsHome = m_defaultHome + L"/" + pluginsHome;
    m_pluginsHome = canonicalizePath(pluginsHome);
    m_data = TyxVariant(root);
    return TyxTextMsg();
}

TyxTextMsg TyxConfigFile::platformPath(const TyxVariantMap &entry, const TyxString &name,
                                       TyxString &path) const
{
    path.clear();
    const TyxVariant *value = member(entry, platformKey);
    if (!value)
        return TyxTextMsg();
    if (value->type() == TyxMetaType::String) {
        path = value->value<TyxString>();
        return TyxTextMsg();
    }
    if (value->type() != TyxMetaType::VariantMap)
        return error(L"Invalid value type for plugin: " + name + L" platform: " + platformKey +
                     L" - value must be a string or an object.");
    const TyxVariantMap build = value->value<TyxVariantMap>();
    const TyxVariant *release = member(build, L"release");
    if (!release)
        return TyxTextMsg();
    if (release->type() != TyxMetaType::String)
        return error(L"Invalid value type for plugin: " + name + L" platform: " + platformKey +
                     L" build: release - value may only be a string.");
    path = release->value<TyxString>();
    return TyxTextMsg();
}

TyxTextMsg TyxConfigFile::plugins(std::map<TyxString, TyxString> &out) const
{
    if (!m_data.isValid())
        return error(L"read() must be called successfully before accessing plugins");
    const TyxVariantMap root = m_data.value<TyxVariantMap>();
    const TyxVariant *list = member(root, L"plugins");
    if (!list)
        return error(L"Plugins array not found");
    if (list->type() != TyxMetaType::VariantList)
        return error(L"Plugins entry must be an array");
    for (const TyxVariant &element : list->value<TyxVariantList>()) {
        // An element that is not an object reads as an empty one, without a name.
        const TyxVariantMap entry = element.value<TyxVariantMap>();
        const TyxVariant *nameValue = member(entry, L"name");
        if (!nameValue)
            continue;
        std::vector<TyxString> names;
        if (nameValue->type() == TyxMetaType::VariantList) {
            for (const TyxVariant &name : nameValue->value<TyxVariantList>()) {
                TyxString text;
                if (name.isValid() && name.value(TyxMetaType(TyxMetaType::String), &text))
                    names.push_back(text);
            }
        } else {
            names.push_back(nameValue->value<TyxString>());
        }
        for (const TyxString &name : names) {
            TyxString path;
            TyxTextMsg msg = platformPath(entry, name, path);
            if (!msg.empty())
                return msg;
            if (path.empty())
                continue;
            if (!TyxFileInfo(path).isAbsolute() && !m_pluginsHome.empty())
                path = m_pluginsHome + L"/" + path;
            out.emplace(name, path);
        }
    }
    return TyxTextMsg();
}

} // namespace tyx
