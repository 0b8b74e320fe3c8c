// Description of an image tile: region, layout and data type.
#pragma once

#include <cstdint>

#include <tyx/TyxDataLayout.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxImageROI.h>
#include <tyx/TyxTextMsg.h>

namespace tyx {

/// What a tile holds: its region in image coordinates, the arrangement of its
/// bands and the type of its samples. The default is an empty region,
/// PixelInterleaved and U8.
class TYX_EXPORT TyxImageTileDesc {
public:
    TyxImageTileDesc() = default;
    TyxImageTileDesc(const TyxImageROI &roi, const TyxDataLayout &layout, const TyxDataType &dataType)
        : m_roi(roi), m_layout(layout), m_dataType(dataType)
    {
    }

    const TyxImageROI &roi() const { return m_roi; }
    void setRoi(const TyxImageROI &roi) { m_roi = roi; }
    const TyxCoord3D<int> &origin() const { return m_roi.origin(); }
    /// Moves the region; the band list becomes contiguous from the new z.
    void setOrigin(const TyxCoord3D<int> &origin) { m_roi.setOrigin(origin); }
    /// Re-initialises the region from its origin and \p size.
    void setSize(const TyxSize3D<unsigned int> &size)
    {
        m_roi.initialize(m_roi.origin(), TyxImageSize(size));
    }
    const TyxDataLayout &layout() const { return m_layout; }
    void setLayout(const TyxDataLayout &layout) { m_layout = layout; }
    const TyxDataType &dataType() const { return m_dataType; }
    void setDataType(const TyxDataType &dataType) { m_dataType = dataType; }

    unsigned int bitDepth() const { return m_dataType.logicalBitDepth(); }
    unsigned int width() const { return m_roi.width(); }
    unsigned int height() const { return m_roi.height(); }
    unsigned int numBands() const { return m_roi.numBands(); }

    /// Width times height times bands in 32 bits: it wraps at 2^32 samples.
    uint32_t numSamples() const { return width() * height() * numBands(); }
    /// numSamples() times the sample size, in 64 bits.
    uint64_t numBytes() const { return static_cast<uint64_t>(numSamples()) * m_dataType.size(); }

    /// An empty message for a good description; otherwise the first failed
    /// test's Error message. Nothing is posted.
    TyxTextMsg validate() const;
    /// validate() gives no text.
    bool isValid() const { return validate().isEmpty(); }

    /// Region, layout and both fields of the data type.
    bool operator==(const TyxImageTileDesc &other) const
    {
        return m_roi == other.m_roi && m_layout == other.m_layout && m_dataType == other.m_dataType;
    }
    bool operator!=(const TyxImageTileDesc &other) const { return !(*this == other); }

private:
    TyxImageROI m_roi;
    TyxDataLayout m_layout = TyxDataLayout::PixelInterleaved;
    TyxDataType m_dataType = TyxDataType(TyxNumericType::U8);
};

} // namespace tyx
