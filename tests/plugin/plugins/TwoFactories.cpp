// A plug-in offering two factories, "Counter" and "Echo", whose objects answer
// the factory's key as their class name; built also for a newer minor version
// of the library.
#include <tyx/TyxFactoryRegistry.h>
#include <tyx/TyxPluginProtocol.h>

namespace {

using namespace tyx;

class Made : public TyxObject {
public:
    explicit Made(const TyxString &name) : m_name(name) {}
    TyxString className() const override { return m_name; }

private:
    TyxString m_name;
};

class Factory : public TyxFactory {
public:
    Factory(const TyxPluginProtocolPtr &protocol, const wchar_t *key) : TyxFactory(protocol), m_key(key) {}
    std::unique_ptr<TyxObject> create() const override { return std::make_unique<Made>(m_key); }
    const TyxString &key() const override { return m_key; }
    std::unique_ptr<TyxObject> create(const TyxVariantMap &) const override { return create(); }
    TyxString description() const override { return L"test"; }

private:
    TyxString m_key;
};

class Protocol : public TyxPluginProtocol {
public:
    TyxTextMsg initialize() override
    {
        factories().insert(new Factory(selfPtr(), L"Counter"));
        factories().insert(new Factory(selfPtr(), L"Echo"));
        return TyxTextMsg();
    }
    void terminate() override { factories().clear(); }
    TyxString name() const override { return L"two"; }
    const TyxVersion &version() const override
    {
#ifdef TYX_TEST_NEWER_VERSION
        static const TyxVersion built(4, 99, 0); // a newer minor: refused
#else
        // An older minor and any patch number are accepted.
        static const TyxVersion built(4, 0, 99);
#endif
        return built;
    }
    TyxString description() const override { return L"two factories"; }
    TyxString vendor() const override { return L"tests"; }
};

} // namespace

TYX_PLUGIN_ENTRY_POINT
{
    static Protocol protocol;
    return &protocol;
}
