// Dense look-up table: entries of one data type per band over a shared buffer.
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxImageTile.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

class TyxEqnTile;

TYX_DECLARE_SMART_PTR_ONLY(TyxLutDesc);

/// A dense table: for each band, numEntriesPerBand() entries of dataType(),
/// band after band in one buffer. The entry for input value v of band b is at
/// b * numEntriesPerBand() + v - minIndex(); with reuseLutDataForAllBands()
/// band 0 serves every band.
///
/// Copies share the buffer; clone() copies it. A finished table can be read
/// from many threads.
class TYX_EXPORT TyxLutDesc : public TyxRefCounted {
public:
    /// No entries, no bands, minimum index 0, no buffer, the invalid type and
    /// the flag set.
    TyxLutDesc() = default;
    TyxLutDesc(TyxBufferPtr buffer, TyxDataType type, unsigned numEntriesPerBand, int64_t minIndex,
               unsigned numBands, bool reuseLutDataForAllBands);
    /// Shares the buffer of \p other.
    TyxLutDesc(const TyxLutDesc &other);
    TyxLutDesc &operator=(const TyxLutDesc &other);
    ~TyxLutDesc() override;

    /// A new descriptor with a copy of the buffer, if there is one.
    TyxLutDescPtr clone() const;

    TyxBufferPtr &buffer() { return m_buffer; }
    TyxBufferConstPtr buffer() const { return m_buffer; }
    const TyxDataType &dataType() const { return m_dataType; }
    /// The logical bit depth of the data type.
    unsigned bitDepth() const { return m_dataType.logicalBitDepth(); }
    unsigned numBands() const { return m_numBands; }
    unsigned numEntriesPerBand() const { return m_numEntriesPerBand; }
    int64_t minIndex() const { return m_minIndex; }
    bool reuseLutDataForAllBands() const { return m_reuseLutDataForAllBands; }

    /// The input values the table covers: \p min is minIndex(), \p max is
    /// minIndex() + numEntriesPerBand() - 1.
    void indexRange(int64_t &min, int64_t &max) const;

    /// Type, entry count, minimum index, band count and flag equal, and both
    /// buffers equal in size and bytes or both null.
    bool operator==(const TyxLutDesc &other) const;
    bool operator!=(const TyxLutDesc &other) const { return !(*this == other); }

    /// Maps the integer samples of \p samples through the table of \p band
    /// into a new tile of the table's data type, step 1, of the same size.
    /// Input values below minIndex() take the first entry of the band, values
    /// above the last index take the last entry. With reuseLutDataForAllBands()
    /// band 0 is used whatever \p band is.
    ///
    /// This operation is the library's addition to the table; it dispatches
    /// once per call to a gather loop for the pair of sample types. Input
    /// types I8 to U64; tables of I8 to Double. An input that is not integer,
    /// a band beyond the table, a table without entries or a buffer too small
    /// for what the descriptor says give an empty tile, not an error.
    TyxEqnTile apply(const TyxEqnTile &samples, unsigned band = 0) const;
    /// The same for every band of \p tile: band b goes through the table of
    /// band b (band 0 with reuseLutDataForAllBands()), into a new tile of the
    /// same region and layout and the table's data type. Null when a band has
    /// no table, the input is not integer, the tile has no memory or the
    /// table cannot be read, as for the flat form; also the library's
    /// addition.
    TyxImageTilePtr apply(const TyxImageTile &tile) const;

private:
    bool m_reuseLutDataForAllBands = true;
    uint32_t m_numEntriesPerBand = 0;
    uint32_t m_numBands = 0;
    int64_t m_minIndex = 0;
    TyxBufferPtr m_buffer;
    TyxDataType m_dataType;
};

/// A table has no stream form: these only set the stream's failbit. Tables
/// are read and written as files by TyxLutIO.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxLutDesc &lut);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxLutDesc &lut);
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxLutDesc &lut);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxLutDesc &lut);

} // namespace tyx
