// A plug-in built for a newer minor version of the library.
#include <tyx/TyxPluginProtocol.h>

namespace {

class Protocol : public tyx::TyxPluginProtocol {
public:
    tyx::TyxTextMsg initialize() override { return tyx::TyxTextMsg(); }
    void terminate() override {}
    tyx::TyxString name() const override { return L"newer"; }
    const tyx::TyxVersion &version() const override
    {
        static const tyx::TyxVersion built(4, 99, 0);
        return built;
    }
    tyx::TyxString description() const override { return L""; }
    tyx::TyxString vendor() const override { return L""; }
};

} // namespace

TYX_PLUGIN_ENTRY_POINT
{
    static Protocol protocol;
    return &protocol;
}
