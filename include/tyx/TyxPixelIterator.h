// Pixel-by-pixel walk over a tile or a region of one.
#pragma once

#include <cstdint>
#include <memory>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxImageROI.h>
#include <tyx/TyxImageTile.h>
#include <tyx/TyxPixel.h>

namespace tyx {

/// A walker: the current pixel and how to reach the next one. The library
/// has one per walking strategy and sample type.
class TYX_EXPORT TyxPixelIteratorBase {
public:
    explicit TyxPixelIteratorBase(const TyxImageTile &tile);
    virtual ~TyxPixelIteratorBase();
    TyxPixelIteratorBase(const TyxPixelIteratorBase &) = delete;
    TyxPixelIteratorBase &operator=(const TyxPixelIteratorBase &) = delete;

    /// Stands on the first pixel and returns it; empty when there is none.
    virtual const TyxPixel &begin() = 0;
    /// Moves to the next pixel; past the last one the pixel is empty.
    virtual void next() = 0;

    const TyxPixel &pixel() const { return m_pixel; }

protected:
    const TyxImageTile *m_tile;
    uint32_t m_pixelStride;
    /// Pixels still to come, the current one included.
    int64_t m_remaining = 0;
    TyxPixel m_pixel;
};

/// Walks a tile, or a region of it, in row order and gives each pixel with one
/// sample per band. The tile must stay allocated and unchanged in size while
/// the iterator lives. A new iterator stands on the first pixel; the walk ends
/// when the pixel is empty:
///
///     for (TyxPixelIterator it(tile); !(*it).isEmpty(); ++it) ...
///
/// A region walks the contiguous bands from its z, tile-relative. A region
/// that does not lie inside the tile, a tile without memory, and a tile of
/// invalid data type or layout give the empty pixel at once.
class TYX_EXPORT TyxPixelIterator {
public:
    explicit TyxPixelIterator(const TyxImageTile &tile);
    TyxPixelIterator(const TyxImageTile &tile, const TyxImageROI &roi);
    TyxPixelIterator(TyxPixelIterator &&) noexcept;
    TyxPixelIterator &operator=(TyxPixelIterator &&) noexcept;
    ~TyxPixelIterator();

    /// Back to the first pixel.
    const TyxPixel &begin();
    /// The current pixel; empty after the end.
    const TyxPixel &operator*() const { return m_walker ? m_walker->pixel() : emptyPixel(); }
    /// Moves on.
    TyxPixelIterator &operator++()
    {
        if (m_walker)
            m_walker->next();
        return *this;
    }

private:
    static const TyxPixel &emptyPixel();

    std::unique_ptr<TyxPixelIteratorBase> m_walker;
};

} // namespace tyx
