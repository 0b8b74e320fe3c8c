// A plug-in offering two factories, "Counter" and "Echo"; built also for a
// newer minor version of the library.
#include <tyx/TyxFactoryRegistry.h>
#include <tyx/TyxPluginProtocol.h>

namespace {

using namespace tyx;

class Counter : public TyxObject {
public:
    TyxString className() const override { return L"Counter"; }
};

class Echo : public TyxObject {
public:
    TyxString className() const override { return L"Echo"; }
};

template <class T>
class Factory : public TyxFactory {
public:
    Factory(const TyxPluginProtocolPtr &protocol, const wchar_t *key) : TyxFactory(protocol), m_key(key) {}
    std::unique_ptr<TyxObject> create() const override { return std::make_unique<T>(); }
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
        factories().insert(new Factory<Counter>(selfPtr(), L"Counter"));
        factories().insert(new Factory<Echo>(selfPtr(), L"Echo"));
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
