// Loading a plug-in and the handshake with its protocol.
#include <tyx/TyxPlugin.h>

#include <tyx/TyxCoreLibMgr.h>

#include "plugin/TyxPluginBody.h"

namespace tyx {

namespace internal {

TyxPluginValidatorIF::~TyxPluginValidatorIF() = default;

} // namespace internal

namespace {

TyxTextMsg refusal(const wchar_t *text, const TyxURI &file)
{
    return TyxTextMsg(TyxString(text) + file.text(), __FILE__, __LINE__, TyxTextMsg::Error);
}

// Whether this library was built with assertions; a plug-in must match it.
constexpr bool libraryIsDebug()
{
#ifdef NDEBUG
    return false;
#else
    return true;
#endif
}

} // namespace

TyxPlugin::TyxPlugin() : m_body(std::make_shared<internal::TyxPluginBody>()) {}

TyxPlugin::~TyxPlugin() { unload(); }

TyxString TyxPlugin::className() const { return L"TyxPlugin"; }

TyxTextMsg TyxPlugin::load(const TyxURI &uri)
{
    return load_aux(uri, internal::TyxPluginValidatorImpl<TyxDefaultPluginValidator>());
}

TyxTextMsg TyxPlugin::load_aux(const TyxURI &uri, const internal::TyxPluginValidatorIF &validator)
{
    if (m_body->dso.isLoaded()) {
        if (m_body->protocol) {
            m_body->protocol->unRegisterCallback(this);
            m_body->protocol->terminate();
            m_body->protocol = TyxPluginProtocolPtr();
        }
        m_body->dso.unload();
    }
    TyxTextMsg msg = m_body->dso.load(uri);
    if (msg.empty())
        msg = initialize(validator);
    if (!msg.empty() && msg.type() == TyxTextMsg::Error)
        unload();
    return msg;
}

TyxTextMsg TyxPlugin::initialize(const internal::TyxPluginValidatorIF &validator)
{
    internal::TyxPluginBody &body = *m_body;
    const TyxURI file = body.dso.fileName();
    using Entry = TyxPluginProtocol *(*)();
    auto entry = reinterpret_cast<Entry>(body.dso.addressOf(L"getProtocol"));
    if (!entry)
        return refusal(L"Dynamic shared object is not a plugin: ", file);
    TyxPluginProtocol *raw = entry();
    if (!raw)
        return refusal(L"Protocol is NULL for the plugin: ", file);
    // The protocol belongs to the shared object and is never deleted here.
    body.protocol = TyxPluginProtocolPtr(raw, TyxNoDelete());
    if (raw->isDebug() != libraryIsDebug()) {
        body.protocol = TyxPluginProtocolPtr();
        return refusal(L"Incompatible debug vs release build for plugin: ", file);
    }
    if (!raw->isWideChar()) {
        body.protocol = TyxPluginProtocolPtr();
        return refusal(L"Incompatible TyxString definitions for plugin: ", file);
    }
    const TyxVersion &mine = TyxCoreLibMgr::instance().version();
    const TyxVersion &theirs = raw->version();
    if (theirs.major() != mine.major() || theirs.minor() > mine.minor()) {
        body.protocol = TyxPluginProtocolPtr();
        return refusal(L"Incompatible TYX version for plugin: ", file);
    }
    TyxTextMsg msg = raw->initialize();
    if (!msg.empty() && msg.type() == TyxTextMsg::Error) {
        body.protocol = TyxPluginProtocolPtr();
        return msg;
    }
    msg = validator.isValid(raw);
    if (!msg.empty() && msg.type() == TyxTextMsg::Error) {
        body.protocol = TyxPluginProtocolPtr();
        return msg;
    }
    raw->registerCallback(this, internal::PluginDestroyCallback{m_body});
    return msg;
}

void TyxPlugin::unload()
{
    if (!m_body->dso.isLoaded())
        return;
    if (m_body->protocol) {
        TyxPluginProtocolPtr protocol = m_body->protocol;
        protocol->unRegisterCallback(this);
        protocol->terminate();
        m_body->protocol = TyxPluginProtocolPtr();
    }
    m_body->dso.unload();
}

bool TyxPlugin::isLoaded() const { return m_body->dso.isLoaded(); }

const TyxURI &TyxPlugin::fileName() const { return m_body->dso.fileName(); }

TyxPluginProtocolPtr TyxPlugin::protocol() const { return m_body->protocol; }

void TyxPlugin::clear()
{
    m_body->protocol = TyxPluginProtocolPtr();
    m_body->dso.clear();
}

} // namespace tyx
