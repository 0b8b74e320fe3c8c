// tyx example: loads the plug-ins of a list file, makes an object by its
// factory key, sets a property by name and runs the object.
#include <iostream>
#include <map>

#include <tyx/TyxConfigFile.h>
#include <tyx/TyxFactoryRegistry.h>
#include <tyx/TyxMetaObject.h>
#include <tyx/TyxPluginLibrary.h>
#include <tyx/TyxSystem.h>

#include "ExampleFilter.h"

using namespace tyx;

int main(int argc, char **argv)
{
    // The list file sits next to the program unless one is named.
    const TyxString folder = exePath();
    const TyxString listFile = argc > 1 ? TyxString(argv[1]) : folder + L"/example-plugins.json";

    TyxConfigFile config(listFile, folder);
    TyxTextMsg msg = config.read();
    std::map<TyxString, TyxString> listed;
    if (msg.empty())
        msg = config.plugins(listed);
    if (!msg.empty()) {
        std::cerr << msg.what() << "\n";
        return 1;
    }

    TyxPluginLibrary library;
    for (const auto &[name, path] : listed) {
        TyxTextMsg loadMsg;
        const bool loaded = static_cast<bool>(library.loadPlugin(path, loadMsg));
        std::cout << "plug-in " << toUTF8(name) << (loaded ? ": loaded" : ": refused") << "\n";
        if (!loaded)
            std::cerr << loadMsg.what() << "\n";
    }

    // The program's own registry of every factory the plug-ins offer.
    TyxFactoryRegistry registry;
    for (const auto &[path, plugin] : library) {
        const TyxFactoryRegistry &offered = plugin->protocol()->factories();
        for (const TyxString &key : offered.allKeys())
            registry.insert(offered.factory(key));
    }
    for (const TyxString &key : registry.allKeys())
        std::cout << "factory " << toUTF8(key) << ": " << toUTF8(registry.factory(key)->description())
                  << "\n";

    int status = 1;
    if (const TyxFactoryPtr factory = registry.factory(L"scaler")) {
        std::unique_ptr<TyxObject> object = factory->create();
        std::cout << "made " << toUTF8(object->className()) << "\n";
        const int set = object->metaObject()->setProperty(L"factor", TyxVariant(L"2.5"));
        std::cout << "set factor = 2.5" << (set == 0 ? "" : " (refused)") << "\n";
        if (object->className() == L"Scaler") {
            const auto &filter = static_cast<const ExampleFilter &>(*object);
            std::cout << "run:";
            for (double value : filter.run({1.0, -2.0, 4.0}))
                std::cout << " " << value;
            std::cout << "\n";
            status = 0;
        }
    }
    // The objects and factories of a plug-in go before the plug-in unloads.
    registry.clear();
    library.clear();
    return status;
}
