// tyx example: the metadata tree of a raster, filled by path and read back.
#include <iostream>

#include <tyx/TyxMetaData.h>

using namespace tyx;

namespace {

std::string text(const TyxString &wide) { return toUTF8(wide); }

} // namespace

int main()
{
    TyxMetaData md;
    md.setValue(L"raster/size/width", TyxVariant(1024), L"columns");
    md.setValue(L"raster/size/height", TyxVariant(768), L"rows");
    md.setValue(L"raster/crs/name", TyxVariant(L"WGS 84 / UTM zone 32N"));

    // One repeating group per band; each push adds "band[n]".
    const wchar_t *names[] = {L"red", L"green", L"blue"};
    for (int i = 0; i < 3; ++i) {
        TyxMetaData band{TyxMetaDataSet(L"band")};
        band.setValue(L"name", TyxVariant(names[i]));
        band.setValue(L"minimum", TyxVariant(0));
        band.setValue(L"maximum", TyxVariant(255 - 10 * i));
        md.pushBack(L"raster/bands/band", TyxVariant(band.root()));
    }
    // A repeating field: several values under one name.
    md.pushBack(L"raster/history", TyxVariant(L"created"));
    md.pushBack(L"raster/history", TyxVariant(L"resampled"));

    std::cout << "size: " << md.value(L"raster/size/width").value<int>() << " x "
              << md.value(L"Raster/Size/Height").value<int>() << "\n";
    std::cout << "bands: " << md.size(L"raster/bands/band") << "\n";
    std::cout << "second band: " << text(md.value(L"raster/bands/band[1]/name").value<TyxString>()) << "\n";
    std::cout << "crs: " << text(md.value(L"raster/crs/name").value<TyxString>()) << "\n";
    std::cout << "last step: " << text(md.value(L"raster/history[1]").value<TyxString>()) << "\n";
    std::cout << "missing: " << (md.value(L"raster/size/depth").isValid() ? "found" : "none") << "\n";

    std::cout << "\nall fields:\n";
    for (auto it = md.begin(); it != md.end(); ++it) {
        const TyxMetaDataField &field = md.field(*it);
        std::cout << "  " << text(*it) << " =";
        for (const TyxVariant &value : field.values())
            std::cout << " " << text(value.value<TyxString>());
        if (!field.description().empty())
            std::cout << " (" << text(field.description()) << ")";
        std::cout << "\n";
    }
    return 0;
}
