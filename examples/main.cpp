// tyx example: wide text, string lists and the message channel.
#include <iostream>

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxStrList.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxTextMsg.h>

namespace {

/// Collects posted messages instead of letting errors throw.
class PrintingHandler : public tyx::TyxTextHandler {
public:
    void handleMessage(const tyx::TyxTextMsg &message) override
    {
        std::cout << "  handler got: " << message << '\n';
    }
};

} // namespace

int main()
{
    tyx::TyxCoreLibMgr &manager = tyx::TyxCoreLibMgr::instance();
    std::cout << "tyx " << manager.version() << '\n';

    const tyx::TyxString bands = "(red, green, blue, near-infrared)";
    tyx::TyxStrList names(bands, L", ", false);
    names.sort(false, true);
    std::cout << "bands, sorted: " << names << '\n';

    const tyx::TyxString place = "Zürich 𝕏";
    std::cout << "\"" << place << "\" has " << place.size() << " code points and "
              << tyx::toUTF8(place).size() << " UTF-8 bytes\n";

    try {
        tyx::postMessage(
            tyx::TyxTextMsg(L"No band named 'thermal'", __FILE__, __LINE__, tyx::TyxTextMsg::Error));
    } catch (const tyx::TyxTextMsg &error) {
        std::cout << "default handler threw: " << error << '\n';
    }

    manager.initialize(tyx::TyxTextHandlerPtr(new PrintingHandler));
    tyx::postMessage(tyx::TyxTextMsg(L"Band 4 is empty", __FILE__, __LINE__, tyx::TyxTextMsg::Warning));
    manager.deInitialize();
    return 0;
}
