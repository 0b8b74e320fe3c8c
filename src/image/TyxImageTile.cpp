// Image tile: memory, addressing, copies, conversions, crop, insert and fill.
#include <tyx/TyxImageTile.h>

#include <algorithm>
#include <cstring>

#include <tyx/TyxForLoopBase.h>
#include <tyx/TyxSystem.h>

#include "core/TyxPost.h"
#include "image/TyxPixelAccess.h"
#include "image/TyxTileLoops.h"

namespace tyx {

using internal::CopyBox;
using internal::TileView;

namespace {

// A loop asks for workers when the switch is on, and below its threshold only
// when loops are timed.
bool parallelFor(uint64_t count, uint64_t threshold)
{
    return useParallelLoops() && (isTimingLoops() || count >= threshold);
}

TileView viewOf(const TyxImageTile &tile, const unsigned char *data)
{
    return TileView{const_cast<unsigned char *>(data), tile.pixelStrideSamples(), tile.lineStrideSamples(),
                    tile.bandStrideSamples()};
}

// Copies \p box row by row between two views of one sample width. Whole
// contiguous rows that are contiguous in both tiles go in one memcpy.
void copyBox(const TileView &dst, const TileView &src, const CopyBox &box, unsigned size, bool parallel)
{
    const bool wholeRows = dst.band == 1 && src.band == 1 && dst.pixel == box.bands &&
                           src.pixel == box.bands && dst.line == src.line &&
                           dst.line == box.width * box.bands && box.dstBand == 0 && box.srcBand == 0 &&
                           box.dstX == 0 && box.srcX == 0;
    if (wholeRows) {
        std::memcpy(dst.data + box.dstY * dst.line * size, src.data + box.srcY * src.line * size,
                    box.height * dst.line * size);
        return;
    }
    internal::visitSampleWidth(size, false, [&](auto tag) {
        using E = typename decltype(tag)::type;
        TyxForLoopBase::run(TyxLoopRange{static_cast<unsigned int>(box.height), 0, 1}, parallel,
                            isTimingLoops(),
                            [&](int64_t row) { internal::copyBoxRow<E>(dst, src, box, uint64_t(row)); });
        return true;
    });
}

bool bothBand(const TyxDataLayout &a, const TyxDataLayout &b) { return a.isBand() && b.isBand(); }

// Samples of the tile's type, one per band, clamped and rounded.
template <class T>
std::vector<T> fillValues(const TyxPixel &pixel, unsigned int bands, const TyxDataType &type)
{
    std::vector<T> values(bands);
    for (unsigned int b = 0; b < bands; ++b) {
        if constexpr (internal::IsComplexSample<T>::value) {
            using Part = typename T::value_type;
            values[b] = T(internal::saturate<Part>(pixel.real(b), type),
                          internal::saturate<Part>(pixel.imag(b), type));
        } else {
            values[b] = internal::saturate<T>(pixel.real(b), type);
        }
    }
    return values;
}

// Writes one pixel of sizeof(E) bytes, given as bytes, over every row.
template <class E>
void fillPixelWords(unsigned char *data, uint64_t lineBytes, unsigned int height, uint64_t width,
                    const void *pixel, bool parallel)
{
    E word;
    std::memcpy(static_cast<void *>(&word), pixel, sizeof(E));
    TyxForLoopBase::run(TyxLoopRange{height, 0, 1}, parallel, isTimingLoops(), [&](int64_t y) {
        std::fill_n(reinterpret_cast<E *>(data + uint64_t(y) * lineBytes), width, word);
    });
}

template <class T>
void fillHelper(const TyxImageTile &tile, unsigned char *data, const TyxPixel &pixel, bool parallel)
{
    const unsigned int bands = tile.numBands();
    const std::vector<T> values = fillValues<T>(pixel, bands, tile.dataType());
    bool allSame = true;
    for (unsigned int b = 1; b < bands && allSame; ++b)
        allSame = std::memcmp(&values[b], &values[0], sizeof(T)) == 0;
    const uint64_t width = tile.width();
    const uint64_t pixelStride = tile.pixelStrideSamples();
    const uint64_t lineStride = tile.lineStrideSamples();
    const uint64_t bandStride = tile.bandStrideSamples();
    const bool interleaved = tile.layout() == TyxDataLayout::PixelInterleaved;
    T *base = reinterpret_cast<T *>(data);
    // Differing values in PixelInterleaved: a pixel of 2, 4 or 8 bytes is
    // written as one word where the block's alignment allows, otherwise one
    // row is built once and copied.
    if (interleaved && !allSame) {
        const unsigned pixelBytes = bands * unsigned(sizeof(T));
        const bool words = (pixelBytes == 2 || pixelBytes == 4 || pixelBytes == 8) &&
                           reinterpret_cast<uintptr_t>(data) % pixelBytes == 0;
        if (words && internal::visitSampleWidth(pixelBytes, false, [&](auto tag) {
                using E = typename decltype(tag)::type;
                fillPixelWords<E>(data, lineStride * sizeof(T), tile.height(), width, values.data(),
                                  parallel);
                return true;
            }))
            return;
    }
    std::vector<T> pattern;
    if (interleaved && !allSame) {
        pattern.resize(width * bands);
        for (uint64_t x = 0; x < width; ++x)
            std::copy(values.begin(), values.end(), pattern.begin() + x * bands);
    }
    TyxForLoopBase::run(TyxLoopRange{tile.height(), 0, 1}, parallel, isTimingLoops(), [&](int64_t y) {
        T *row = base + uint64_t(y) * lineStride;
        if (interleaved && allSame) {
            std::fill_n(row, width * bands, values[0]);
        } else if (allSame || bands == 1 || !interleaved) {
            for (unsigned int b = 0; b < bands; ++b) {
                T *p = row + b * bandStride;
                const T v = values[b];
                if (pixelStride == 1)
                    std::fill_n(p, width, v);
                else
                    for (uint64_t x = 0; x < width; ++x)
                        p[x * pixelStride] = v;
            }
        } else {
            std::memcpy(static_cast<void *>(row), pattern.data(), pattern.size() * sizeof(T));
        }
    });
}

} // namespace

TyxImageTile::TyxImageTile() : TyxKeyedObject(TyxString()) {}

TyxImageTile::TyxImageTile(const TyxImageTileDesc &desc) : TyxKeyedObject(TyxString()) { setTileDesc(desc); }

TyxImageTile::TyxImageTile(const TyxImageTileDesc &desc, const TyxBufferPtr &buffer)
    : TyxKeyedObject(TyxString()), m_tileDesc(desc), m_buffer(buffer)
{
}

TyxImageTile::~TyxImageTile() = default;

TyxString TyxImageTile::className() const { return L"TyxImageTile"; }

int TyxImageTile::allocate()
{
    if (!m_buffer) {
        const uint64_t need = numBytes();
        if (need != 0)
            m_buffer = new TyxBuffer(need, true);
    }
    if (!m_buffer)
        return 1;
    if (m_buffer->data())
        return 0;
    return m_buffer->allocate() ? 0 : 1;
}

bool TyxImageTile::isAllocated() const { return m_buffer && m_buffer->data(); }

TyxBufferPtr TyxImageTile::buffer()
{
    if (allocate() != 0)
        return TyxBufferPtr();
    return m_buffer;
}

TyxBufferConstPtr TyxImageTile::buffer() const { return TyxBufferConstPtr(m_buffer); }

void TyxImageTile::setTileDesc(const TyxImageTileDesc &desc)
{
    TyxBufferPtr old = m_buffer;
    const uint64_t oldSize = old ? old->size() : 0;
    m_buffer = TyxBufferPtr();
    m_tileDesc = desc;
    const uint64_t need = numBytes();
    if (old && oldSize >= need)
        m_buffer = old;
    else if (need != 0)
        m_buffer = new TyxBuffer(need, false);
}

uint32_t TyxImageTile::pixelStrideSamples() const
{
    switch (layout()) {
    case TyxDataLayout::PixelInterleaved: return numBands();
    case TyxDataLayout::BandInterleaved:
    case TyxDataLayout::LineInterleaved:
    case TyxDataLayout::BlockInterleaved: return 1;
    default: return 0;
    }
}

uint32_t TyxImageTile::lineStrideSamples() const
{
    switch (layout()) {
    case TyxDataLayout::PixelInterleaved:
    case TyxDataLayout::LineInterleaved: return numBands() * width();
    case TyxDataLayout::BandInterleaved:
    case TyxDataLayout::BlockInterleaved: return width();
    default: return 0;
    }
}

uint32_t TyxImageTile::bandStrideSamples() const
{
    switch (layout()) {
    case TyxDataLayout::PixelInterleaved: return 1;
    case TyxDataLayout::LineInterleaved: return width();
    case TyxDataLayout::BandInterleaved:
    case TyxDataLayout::BlockInterleaved: return width() * height();
    default: return 0;
    }
}

uint32_t TyxImageTile::sampleOffset(unsigned int x, unsigned int y, unsigned int band) const
{
    return pixelStrideSamples() * x + lineStrideSamples() * y + bandStrideSamples() * band;
}

uint64_t TyxImageTile::byteOffset(unsigned int x, unsigned int y, unsigned int band) const
{
    return uint64_t(pixelStrideBytes()) * x + uint64_t(lineStrideBytes()) * y +
           uint64_t(bandStrideBytes()) * band;
}

void *TyxImageTile::ptrAt(unsigned int x, unsigned int y, unsigned int band)
{
    const TyxBufferPtr held = buffer();
    if (!held)
        return nullptr;
    return static_cast<unsigned char *>(held->data()) + byteOffset(x, y, band);
}

const void *TyxImageTile::ptrAt(unsigned int x, unsigned int y, unsigned int band) const
{
    if (!isAllocated())
        return nullptr;
    return static_cast<const unsigned char *>(m_buffer->data()) + byteOffset(x, y, band);
}

bool TyxImageTile::typedAccessAllowed(TyxNumericType::Code asked, unsigned int x, unsigned int y,
                                      unsigned int band) const
{
    if (asked != dataType().code()) {
        TYX_POST_ERROR(L"TyxImageTile::ptrAt: asked for " + TyxDataType(asked).toString() +
                       L" samples, but the tile holds " + dataType().toString());
        return false;
    }
    if (x >= width() || y >= height() || band >= numBands()) {
        TYX_POST_ERROR(L"TyxImageTile::ptrAt: (" + std::to_wstring(x) + L"," + std::to_wstring(y) +
                       L") band " + std::to_wstring(band) + L" lies outside the tile of " +
                       std::to_wstring(width()) + L" x " + std::to_wstring(height()) + L" x " +
                       std::to_wstring(numBands()));
        return false;
    }
    return true;
}

const unsigned char *TyxImageTile::block() const
{
    // A shared buffer smaller than the description is never read or written.
    if (!m_buffer || !m_buffer->data() || m_buffer->size() < numBytes() || numBytes() == 0)
        return nullptr;
    return static_cast<const unsigned char *>(m_buffer->data());
}

unsigned char *TyxImageTile::block() { return const_cast<unsigned char *>(std::as_const(*this).block()); }

void *TyxImageTile::samplePtr(unsigned int x, unsigned int y, unsigned int band)
{
    if (!buffer())
        return nullptr;
    return const_cast<void *>(std::as_const(*this).samplePtr(x, y, band));
}

const void *TyxImageTile::samplePtr(unsigned int x, unsigned int y, unsigned int band) const
{
    const unsigned char *data = block();
    return data ? data + byteOffset(x, y, band) : nullptr;
}

TyxPixel TyxImageTile::operator()(unsigned int x, unsigned int y) const
{
    // Positions outside the tile give the empty pixel instead of a read
    // outside the block.
    const unsigned char *data = block();
    if (!data || x >= width() || y >= height() || !layout().isValid())
        return TyxPixel();
    return internal::visitSampleCode(dataType().code(), TyxPixel(), [&](auto tag) {
        using T = typename decltype(tag)::type;
        std::vector<TyxPixel::Sample> samples;
        samples.reserve(numBands());
        for (unsigned int b = 0; b < numBands(); ++b) {
            T v;
            std::memcpy(static_cast<void *>(&v), data + byteOffset(x, y, b), sizeof(T));
            samples.emplace_back(v);
        }
        return TyxPixel(samples);
    });
}

TyxImageTilePtr TyxImageTile::clone() const
{
    TyxImageTilePtr copy(new TyxImageTile(m_tileDesc));
    const unsigned char *src = block();
    if (src && copy->allocate() == 0 && copy->block())
        std::memcpy(copy->block(), src, numBytes());
    return copy;
}

TyxImageTilePtr TyxImageTile::clone(const TyxDataType &type) const
{
    if (type == dataType())
        return clone();
    const unsigned char *src = block();
    if (!src)
        return TyxImageTilePtr();
    TyxImageTileDesc desc = m_tileDesc;
    desc.setDataType(type);
    TyxImageTilePtr copy(new TyxImageTile(desc));
    if (copy->allocate() != 0 || !copy->block())
        return TyxImageTilePtr();
    uint32_t threshold = kRealToRealSamples;
    if (type.isComplex())
        threshold = kToComplexSamples;
    else if (dataType().isComplex())
        threshold = kComplexToRealSamples;
    const uint32_t n = numSamples();
    if (!internal::convertTileSamples(dataType().code(), type.code(), copy->block(), src, n,
                                      parallelFor(n, threshold), isTimingLoops()))
        return TyxImageTilePtr();
    return copy;
}

TyxImageTilePtr TyxImageTile::clone(const TyxDataLayout &target) const
{
    if (target == layout())
        return clone();
    const unsigned char *src = block();
    // Nothing can be placed by the strides of the invalid layout.
    if (!src || !target.isValid() || !layout().isValid())
        return TyxImageTilePtr();
    TyxImageTileDesc desc = m_tileDesc;
    desc.setLayout(target);
    TyxImageTilePtr copy(new TyxImageTile(desc));
    if (copy->allocate() != 0 || !copy->block())
        return TyxImageTilePtr();
    if (numBands() == 1 || bothBand(layout(), target)) {
        std::memcpy(copy->block(), src, numBytes());
        return copy;
    }
    CopyBox box;
    box.width = width();
    box.height = height();
    box.bands = numBands();
    const unsigned size = dataType().size();
    const uint64_t count = size < 4 ? numBytes() / 2 : numBytes();
    copyBox(viewOf(*copy, copy->block()), viewOf(*this, src), box, size,
            parallelFor(count, kLayoutCopyBytes));
    return copy;
}

TyxImageTilePtr TyxImageTile::crop(const TyxImageROI &roi) const
{
    const unsigned char *src = block();
    if (!src)
        return TyxImageTilePtr();
    // The origin is tile-relative; added without signed overflow.
    auto add = [](int a, int b) {
        return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
    };
    const TyxCoord3D<int> o = origin();
    const TyxImageROI wanted(TyxCoord3D<int>(add(o.x(), roi.origin().x()), add(o.y(), roi.origin().y()),
                                             add(o.z(), roi.origin().z())),
                             roi.size());
    TyxImageROI cut = m_tileDesc.roi().intersection(wanted);
    if (cut.width() == 0 || cut.height() == 0 || cut.numBands() == 0)
        return TyxImageTilePtr();
    // Bands are addressed from the tile's z; a scattered band list may give a
    // range past the tile's bands, which is cut here.
    const int64_t bandOffset = int64_t(cut.origin().z()) - o.z();
    if (bandOffset < 0 || bandOffset >= numBands())
        return TyxImageTilePtr();
    if (bandOffset + cut.numBands() > numBands())
        cut.initialize(cut.origin(), TyxImageSize(cut.width(), cut.height(),
                                                  static_cast<unsigned>(numBands() - bandOffset)));
    TyxImageTileDesc desc = m_tileDesc;
    desc.setRoi(cut);
    TyxImageTilePtr part(new TyxImageTile(desc));
    if (part->allocate() != 0 || !part->block())
        return TyxImageTilePtr();
    if (cut == m_tileDesc.roi()) {
        std::memcpy(part->block(), src, numBytes());
        return part;
    }
    CopyBox box;
    box.width = cut.width();
    box.height = cut.height();
    box.bands = cut.numBands();
    box.srcX = uint64_t(int64_t(cut.origin().x()) - o.x());
    box.srcY = uint64_t(int64_t(cut.origin().y()) - o.y());
    box.srcBand = uint64_t(bandOffset);
    copyBox(viewOf(*part, part->block()), viewOf(*this, src), box, dataType().size(),
            parallelFor(part->numBytes(), kLayoutCopyBytes));
    return part;
}

int TyxImageTile::insert(const TyxImageTile &source)
{
    if (!source.block())
        return 1;
    if (allocate() != 0 || !block())
        return 1;
    const TyxImageTile *from = &source;
    TyxImageTilePtr converted;
    if (source.dataType() != dataType()) {
        converted = source.clone(dataType());
        if (!converted)
            return 1;
        from = converted.get();
    }
    TyxImageTilePtr arranged;
    if (from->layout() != layout() && from->numBands() >= 2 && !bothBand(from->layout(), layout())) {
        arranged = from->clone(layout());
        if (!arranged)
            return 1;
        from = arranged.get();
    }
    if (!layout().isValid() || !from->layout().isValid())
        return 1;
    const TyxImageROI overlap = m_tileDesc.roi().intersection(from->tileDesc().roi());
    if (overlap.width() == 0 || overlap.height() == 0 || overlap.numBands() == 0)
        return 0;
    if (overlap.size() == m_tileDesc.roi().size() && overlap.size() == from->tileDesc().roi().size() &&
        layout() == from->layout()) {
        std::memcpy(block(), from->block(), numBytes());
        return 0;
    }
    const int64_t dstBand = int64_t(overlap.origin().z()) - origin().z();
    const int64_t srcBand = int64_t(overlap.origin().z()) - from->origin().z();
    // Scattered band lists can name ranges past either tile's bands: cut them.
    const int64_t bands = std::min<int64_t>(
        {int64_t(overlap.numBands()), int64_t(numBands()) - dstBand, int64_t(from->numBands()) - srcBand});
    if (dstBand < 0 || srcBand < 0 || bands <= 0)
        return 0;
    CopyBox box;
    box.width = overlap.width();
    box.height = overlap.height();
    box.bands = uint64_t(bands);
    box.srcX = uint64_t(int64_t(overlap.origin().x()) - from->origin().x());
    box.srcY = uint64_t(int64_t(overlap.origin().y()) - from->origin().y());
    box.srcBand = uint64_t(srcBand);
    box.dstX = uint64_t(int64_t(overlap.origin().x()) - origin().x());
    box.dstY = uint64_t(int64_t(overlap.origin().y()) - origin().y());
    box.dstBand = uint64_t(dstBand);
    copyBox(viewOf(*this, block()), viewOf(*from, from->block()), box, dataType().size(),
            parallelFor(from->numBytes(), kInsertBytes));
    return 0;
}

int TyxImageTile::fill(const TyxPixel &pixel)
{
    const int allocated = allocate();
    if (allocated != 0)
        return allocated;
    unsigned char *data = block();
    if (!data || !layout().isValid())
        return 1;
    const unsigned int bands = numBands();
    TyxPixel padded = pixel;
    if (padded.numBands() < bands) {
        const TyxPixel::Sample pad = padded.numBands() == 1 ? padded[0] : TyxPixel::Sample(0.0);
        padded.samples().resize(bands, pad);
    }
    const TyxPixel::Sample zero(0.0);
    bool allZero = true;
    bool allFirst = true;
    for (unsigned int b = 0; b < padded.numBands(); ++b) {
        allZero = allZero && padded[b] == zero;
        allFirst = allFirst && padded[b] == padded[0];
    }
    if (padded.empty() || allZero) {
        std::memset(data, 0, numBytes());
        return 0;
    }
    if (dataType().size() == 1 && allFirst) {
        // The byte is the truncated value, without clamp or rounding.
        std::memset(data, internal::truncToInt32(padded[0].real()) & 0xFF, numBytes());
        return 0;
    }
    const bool parallel = parallelFor(numBytes(), kFillBytes);
    return internal::visitSampleCode(dataType().code(), 1, [&](auto tag) {
        using T = typename decltype(tag)::type;
        fillHelper<T>(*this, data, padded, parallel);
        return 0;
    });
}

bool TyxImageTile::isEqual(const TyxImageTile &other, double tolerance) const
{
    if (width() != other.width() || height() != other.height() || numBands() != other.numBands())
        return false;
    if (m_buffer && m_buffer.get() == other.m_buffer.get())
        return true;
    const unsigned char *a = block();
    const unsigned char *b = other.block();
    if (!a || !b)
        return false;
    if (tolerance <= 0.0 && dataType() == other.dataType() &&
        (layout() == other.layout() || numBands() == 1 || bothBand(layout(), other.layout())))
        return std::memcmp(a, b, numBytes()) == 0;
    return false;
}

bool TyxImageTile::operator==(const TyxImageTile &other) const
{
    return TyxKeyedObject::operator==(other) && isEqual(other, 0.0);
}

} // namespace tyx
