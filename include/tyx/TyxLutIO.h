// Reading and writing look-up tables in their text file form.
#pragma once

#include <iosfwd>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxLutDesc.h>

namespace tyx {

/// The LUT text file: a header in braces of `keyword = value` assignments
/// (type, channels or tables, length, zeroOffset, dataType), then one data
/// section per band closed by "$". Type "l" holds the dense entries, type
/// "b" pairs of input and output values between which the table is
/// interpolated. "#" starts a comment to the end of the line; keywords are
/// matched ignoring case.
///
/// The class has no state; several threads may read and write through
/// different streams. Opening and decoding the file is the caller's.
class TYX_EXPORT TyxLutIO {
public:
    /// Reads a table from \p stream. Returns a new descriptor owned by the
    /// caller, or null after posting an error; no partial table is returned.
    /// The stream is left at the failing token. When \p lineNumber is given
    /// it receives the line of the text where reading stopped: after a
    /// failure, the line of the failing token (the messages themselves carry
    /// no line of the file).
    static TyxLutDesc *readCommon(std::wistream &stream, int *lineNumber = nullptr);
    /// Writes \p lut as a dense table, one entry per line. False, after
    /// posting an error, for entry types other than I8 to U32, Float and
    /// Double and for a buffer that does not hold the entries the descriptor
    /// names; the header has been written by then.
    static bool writeCommon(const TyxLutDesc &lut, std::wostream &stream);

protected:
    TyxLutIO() = default;
};

} // namespace tyx
