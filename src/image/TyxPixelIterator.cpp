// Pixel iterator: the two walkers for each sample type.
#include <tyx/TyxPixelIterator.h>

#include <vector>

#include "image/TyxPixelAccess.h"
#include "image/TyxSampleTypes.h"

namespace tyx {

namespace internal {

namespace {

// The block of a tile that can be walked: memory covering the description
// and a valid layout; otherwise null.
const unsigned char *walkableBlock(const TyxImageTile &tile)
{
    const TyxBufferConstPtr buffer = tile.buffer();
    if (!buffer || !buffer->data() || buffer->size() < tile.numBytes() || !tile.layout().isValid())
        return nullptr;
    return static_cast<const unsigned char *>(buffer->data());
}

} // namespace

/// Fast walker over a whole tile whose pixels of one band follow each other
/// in one stride across row ends (every layout but LineInterleaved).
template <class T>
class TyxPixelIterator_p2 : public TyxPixelIteratorBase {
public:
    explicit TyxPixelIterator_p2(const TyxImageTile &tile)
        : TyxPixelIteratorBase(tile), m_numBands(tile.numBands()), m_bands(tile.numBands())
    {
        begin();
    }

    const TyxPixel &begin() override
    {
        const unsigned char *block = walkableBlock(*m_tile);
        m_remaining = (m_numBands == 0 || !block) ? 0 : int64_t(m_tile->width()) * m_tile->height();
        if (m_remaining <= 0) {
            m_pixel.clear();
            return m_pixel;
        }
        if (m_pixel.numBands() != m_numBands)
            m_pixel = TyxPixel(m_numBands, TyxPixel::Sample(0.0));
        const uint64_t bandStride = m_tile->bandStrideSamples();
        for (unsigned int b = m_numBands; b-- > 0;) {
            m_bands[b] = reinterpret_cast<const T *>(block) + bandStride * b;
            m_pixel[b] = TyxPixel::Sample(*m_bands[b]);
        }
        return m_pixel;
    }

    void next() override
    {
        if (--m_remaining >= 1) {
            const T **bands = m_bands.data();
            TyxPixel::Sample *samples = &m_pixel[0];
            const uint32_t stride = m_pixelStride;
            for (unsigned int b = m_numBands; b-- > 0;) {
                bands[b] += stride;
                TyxPixelAccess::store(samples[b], *bands[b]);
            }
        } else {
            m_remaining = 0;
            m_pixel.clear();
        }
    }

private:
    uint32_t m_numBands;
    std::vector<const T *> m_bands;
};

/// Walker over any region, and over LineInterleaved tiles: it keeps column
/// and row and finds every band's row start again at each new row.
template <class T>
class TyxPixelIterator_p1 : public TyxPixelIteratorBase {
public:
    TyxPixelIterator_p1(const TyxImageTile &tile, const TyxImageROI &roi)
        : TyxPixelIteratorBase(tile), m_roi(roi), m_numBands(roi.numBands()), m_bands(roi.numBands())
    {
        begin();
    }

    const TyxPixel &begin() override
    {
        m_column = m_roi.width();
        m_row = 0;
        m_block = inside() ? reinterpret_cast<const T *>(walkableBlock(*m_tile)) : nullptr;
        m_remaining = (m_numBands == 0 || !m_block) ? 0 : int64_t(m_roi.width()) * m_roi.height();
        if (m_remaining <= 0) {
            m_pixel.clear();
            return m_pixel;
        }
        if (m_pixel.numBands() != m_numBands)
            m_pixel = TyxPixel(m_numBands, TyxPixel::Sample(0.0));
        rowStart();
        for (unsigned int b = m_numBands; b-- > 0;)
            m_pixel[b] = TyxPixel::Sample(*m_bands[b]);
        return m_pixel;
    }

    void next() override
    {
        if (--m_remaining <= 0) {
            m_remaining = 0;
            m_pixel.clear();
            return;
        }
        if (--m_column <= 0) {
            m_column = m_roi.width();
            ++m_row;
            rowStart();
        } else {
            for (unsigned int b = m_numBands; b-- > 0;)
                m_bands[b] += m_pixelStride;
        }
        for (unsigned int b = m_numBands; b-- > 0;)
            TyxPixelAccess::store(m_pixel[b], *m_bands[b]);
    }

private:
    // The region lies wholly inside the tile, tile-relative. Walking outside
    // would read outside the block, so such a region walks nothing.
    bool inside() const
    {
        const TyxCoord3D<int> &o = m_roi.origin();
        return o.x() >= 0 && o.y() >= 0 && o.z() >= 0 && int64_t(o.x()) + m_roi.width() <= m_tile->width() &&
               int64_t(o.y()) + m_roi.height() <= m_tile->height() &&
               int64_t(o.z()) + m_roi.numBands() <= m_tile->numBands();
    }

    void rowStart()
    {
        const TyxCoord3D<int> &o = m_roi.origin();
        const uint64_t start = uint64_t(m_pixelStride) * uint64_t(o.x()) +
                               uint64_t(m_tile->lineStrideSamples()) * (uint64_t(o.y()) + uint64_t(m_row));
        const uint64_t bandStride = m_tile->bandStrideSamples();
        for (unsigned int b = m_numBands; b-- > 0;)
            m_bands[b] = m_block + start + bandStride * (uint64_t(o.z()) + b);
    }

    TyxImageROI m_roi;
    uint32_t m_numBands;
    int64_t m_column = 0;
    int64_t m_row = 0;
    const T *m_block = nullptr;
    std::vector<const T *> m_bands;
};

} // namespace internal

TyxPixelIteratorBase::TyxPixelIteratorBase(const TyxImageTile &tile)
    : m_tile(&tile), m_pixelStride(tile.pixelStrideSamples())
{
}

TyxPixelIteratorBase::~TyxPixelIteratorBase() = default;

TyxPixelIterator::TyxPixelIterator(const TyxImageTile &tile)
{
    const TyxImageROI whole(TyxImageSize(tile.width(), tile.height(), tile.numBands()));
    const bool lines = tile.layout() == TyxDataLayout::LineInterleaved;
    m_walker = internal::visitSampleCode(tile.dataType().code(), std::unique_ptr<TyxPixelIteratorBase>(),
                                         [&](auto tag) -> std::unique_ptr<TyxPixelIteratorBase> {
                                             using T = typename decltype(tag)::type;
                                             if (lines)
                                                 return std::make_unique<internal::TyxPixelIterator_p1<T>>(
                                                     tile, whole);
                                             return std::make_unique<internal::TyxPixelIterator_p2<T>>(tile);
                                         });
}

TyxPixelIterator::TyxPixelIterator(const TyxImageTile &tile, const TyxImageROI &roi)
{
    m_walker =
        internal::visitSampleCode(tile.dataType().code(), std::unique_ptr<TyxPixelIteratorBase>(),
                                  [&](auto tag) -> std::unique_ptr<TyxPixelIteratorBase> {
                                      using T = typename decltype(tag)::type;
                                      return std::make_unique<internal::TyxPixelIterator_p1<T>>(tile, roi);
                                  });
}

TyxPixelIterator::TyxPixelIterator(TyxPixelIterator &&) noexcept = default;
TyxPixelIterator &TyxPixelIterator::operator=(TyxPixelIterator &&) noexcept = default;
TyxPixelIterator::~TyxPixelIterator() = default;

const TyxPixel &TyxPixelIterator::begin() { return m_walker ? m_walker->begin() : emptyPixel(); }

const TyxPixel &TyxPixelIterator::emptyPixel()
{
    static const TyxPixel empty;
    return empty;
}

} // namespace tyx
