// Rectangular piece of an image in memory: a description and a shared buffer.
#pragma once

#include <cstdint>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxImageTileDesc.h>
#include <tyx/TyxKeyedObject.h>
#include <tyx/TyxPixel.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

TYX_DECLARE_SMART_PTR(TyxImageTile);

/// A tile: a TyxImageTileDesc and the TyxBuffer holding its samples. Copies
/// share the buffer; clone() and crop() make memory of their own. Memory comes
/// with the first allocate() or buffer(). Coordinates of the sample
/// operations are tile-relative: x, y and band start at 0 whatever the origin
/// and the band list say.
class TYX_EXPORT TyxImageTile : public TyxKeyedObject {
public:
    /// Sample counts under which an operation runs on the calling thread
    /// when loops are not timed.
    static constexpr uint32_t kRealToRealSamples = 27648;
    static constexpr uint32_t kToComplexSamples = 49152;
    static constexpr uint32_t kComplexToRealSamples = 110592;
    /// Byte counts under which a layout change, an insert or a fill runs on
    /// the calling thread when loops are not timed.
    static constexpr uint64_t kLayoutCopyBytes = 884736;
    static constexpr uint64_t kInsertBytes = 3145728;
    static constexpr uint64_t kFillBytes = 6291456;

    /// No buffer, the default description.
    TyxImageTile();
    /// Takes \p desc; the memory is not yet allocated.
    explicit TyxImageTile(const TyxImageTileDesc &desc);
    /// Shares \p buffer without checking its size; operations that touch
    /// samples treat a buffer smaller than numBytes() as no memory at all.
    TyxImageTile(const TyxImageTileDesc &desc, const TyxBufferPtr &buffer);
    /// Shallow: the same buffer.
    TyxImageTile(const TyxImageTile &other) = default;
    TyxImageTile &operator=(const TyxImageTile &other) = default;
    ~TyxImageTile() override;

    /// "TyxImageTile".
    TyxString className() const override;

    /// Makes sure the tile has memory: 0 if it has afterwards, 1 if not (an
    /// empty tile, or a failure that the buffer posted).
    int allocate();
    /// A buffer exists and holds a block.
    bool isAllocated() const;
    /// The buffer, allocated on demand; null when that fails.
    TyxBufferPtr buffer();
    /// The buffer as it stands; never allocates.
    TyxBufferConstPtr buffer() const;

    /// Takes \p desc. A present buffer at least as large as the new size is
    /// kept (even a larger one); otherwise an unallocated buffer of the new
    /// size replaces it, or none for a size of 0.
    void setTileDesc(const TyxImageTileDesc &desc);
    const TyxImageTileDesc &tileDesc() const { return m_tileDesc; }
    /// Moves the region; size and buffer stay.
    void setOrigin(const TyxCoord3D<int> &origin) { m_tileDesc.setOrigin(origin); }

    unsigned int width() const { return m_tileDesc.width(); }
    unsigned int height() const { return m_tileDesc.height(); }
    unsigned int numBands() const { return m_tileDesc.numBands(); }
    const TyxCoord3D<int> &origin() const { return m_tileDesc.origin(); }
    uint32_t numSamples() const { return m_tileDesc.numSamples(); }
    uint64_t numBytes() const { return m_tileDesc.numBytes(); }
    const TyxDataType &dataType() const { return m_tileDesc.dataType(); }
    const TyxDataLayout &layout() const { return m_tileDesc.layout(); }

    /// Distances between neighbours, in samples, 32 bits: pixel, line, band.
    /// All 0 for the invalid layout.
    uint32_t pixelStrideSamples() const;
    uint32_t lineStrideSamples() const;
    uint32_t bandStrideSamples() const;
    /// The same in bytes.
    uint32_t pixelStrideBytes() const { return pixelStrideSamples() * dataType().size(); }
    uint32_t lineStrideBytes() const { return lineStrideSamples() * dataType().size(); }
    uint32_t bandStrideBytes() const { return bandStrideSamples() * dataType().size(); }

    /// pixel * x + line * y + band stride * band, in 32 bits (it wraps).
    uint32_t sampleOffset(unsigned int x, unsigned int y, unsigned int band) const;
    /// The same from the byte strides, summed in 64 bits.
    uint64_t byteOffset(unsigned int x, unsigned int y, unsigned int band) const;
    /// The address of a sample; allocates on demand, null without memory.
    void *ptrAt(unsigned int x, unsigned int y, unsigned int band);
    /// The address of a sample; null without memory, never allocates.
    const void *ptrAt(unsigned int x, unsigned int y, unsigned int band) const;

    /// The address of a sample as a \p T, the C++ type of the tile's data
    /// type (int8_t to uint64_t, float, double, std::complex<float>,
    /// std::complex<double>); allocates on demand. Another \p T, or a
    /// position outside the tile, posts an error saying why and gives null
    /// when the handler returns; so does a tile without memory, or whose
    /// shared buffer is smaller than its description, silently.
    /// Typed access is the library's addition beside the untyped ptrAt().
    template <class T>
    T *ptrAt(unsigned int x, unsigned int y, unsigned int band)
    {
        static_assert(TyxNumericType::codeOf<T>() != TyxNumericType::Invalid, "T is not a sample type");
        if (!typedAccessAllowed(TyxNumericType::codeOf<T>(), x, y, band))
            return nullptr;
        return static_cast<T *>(samplePtr(x, y, band));
    }
    /// As the typed ptrAt(), read-only; never allocates.
    template <class T>
    const T *ptrAt(unsigned int x, unsigned int y, unsigned int band) const
    {
        static_assert(TyxNumericType::codeOf<T>() != TyxNumericType::Invalid, "T is not a sample type");
        if (!typedAccessAllowed(TyxNumericType::codeOf<T>(), x, y, band))
            return nullptr;
        return static_cast<const T *>(samplePtr(x, y, band));
    }

    /// All bands at x, y as samples of the tile's type. Outside the tile,
    /// without memory or with an invalid type the pixel is empty.
    TyxPixel operator()(unsigned int x, unsigned int y) const;

    /// A deep copy; without memory in the source, a tile without memory.
    TyxImageTilePtr clone() const;
    /// A copy in another layout; null without memory or on failure.
    TyxImageTilePtr clone(const TyxDataLayout &layout) const;
    /// A copy with samples cast to \p type (plain casts, no saturation); null
    /// without memory or on failure. The same type gives clone().
    TyxImageTilePtr clone(const TyxDataType &type) const;
    /// The part of the tile in \p roi, whose origin is tile-relative and whose
    /// bands are the contiguous run from its z; null when nothing is left.
    TyxImageTilePtr crop(const TyxImageROI &roi) const;

    /// Copies the overlap of \p source, by image coordinates, converting type
    /// and layout first when they differ. 1 when the source has no memory or
    /// this tile cannot get any, 0 otherwise, also without overlap.
    int insert(const TyxImageTile &source);
    /// Sets every pixel to \p pixel, clamped to the type's logical range and
    /// rounded for integers. A pixel shorter than the bands is padded with its
    /// one sample, or with 0. 1 when the tile cannot get memory.
    int fill(const TyxPixel &pixel);

    /// Same size, and the same buffer or byte-equal blocks in compatible
    /// layouts and equal types. A positive tolerance never compares samples
    /// and answers false for two distinct blocks.
    bool isEqual(const TyxImageTile &other, double tolerance) const;
    /// The keyed bases and isEqual with tolerance 0.
    bool operator==(const TyxImageTile &other) const;
    bool operator!=(const TyxImageTile &other) const { return !(*this == other); }

private:
    // Whether a typed pointer of \p asked may be handed out at x, y, band;
    // posts the reason when the type or the position is wrong.
    bool typedAccessAllowed(TyxNumericType::Code asked, unsigned int x, unsigned int y,
                            unsigned int band) const;
    // The block when the tile has one that covers numBytes(), else null.
    const unsigned char *block() const;
    unsigned char *block();
    // A sample of the block, allocating on demand in the non-const form;
    // null when there is no block that covers the description.
    void *samplePtr(unsigned int x, unsigned int y, unsigned int band);
    const void *samplePtr(unsigned int x, unsigned int y, unsigned int band) const;

    TyxImageTileDesc m_tileDesc;
    TyxBufferPtr m_buffer;
};

} // namespace tyx
