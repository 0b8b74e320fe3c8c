// Tiles whose samples tell position and band apart, shared by the tile and pixel tests.
#pragma once

#include <tyx/TyxImageTile.h>

namespace tyx::test {

inline TyxImageTileDesc descOf(unsigned w, unsigned h, unsigned b, TyxDataLayout layout,
                               TyxNumericType::Code code, TyxCoord3D<int> at = {})
{
    return TyxImageTileDesc(TyxImageROI(at, TyxImageSize(w, h, b)), layout, TyxDataType(code));
}

// A sample by reference; a const tile reads through the const view.
template <class T, class Tile>
decltype(auto) at(Tile &tile, unsigned x, unsigned y, unsigned b)
{
    return *tile.template ptrAt<T>(x, y, b);
}

inline double pattern(unsigned x, unsigned y, unsigned b, unsigned bandStep = 100)
{
    return x + 10.0 * y + bandStep * double(b);
}

template <class T>
TyxImageTile patterned(unsigned w, unsigned h, unsigned bands, TyxDataLayout layout,
                       TyxNumericType::Code code, TyxCoord3D<int> origin = {}, unsigned bandStep = 100)
{
    TyxImageTile tile(descOf(w, h, bands, layout, code, origin));
    for (unsigned y = 0; y < h; ++y)
        for (unsigned x = 0; x < w; ++x)
            for (unsigned b = 0; b < bands; ++b)
                at<T>(tile, x, y, b) = static_cast<T>(pattern(x, y, b, bandStep));
    return tile;
}

} // namespace tyx::test
