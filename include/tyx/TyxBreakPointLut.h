// Sparse look-up table of break points, building and caching its dense table.
#pragma once

#include <vector>

#include <tyx/TyxBreakPoint.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxLutDesc.h>
#include <tyx/TyxRefCounted.h>

namespace tyx {

/// Break points per band between which output values are interpolated
/// linearly. lut() turns them into a dense TyxLutDesc for one input type and
/// keeps it until the points, the output type or the input type change.
///
/// No locks: lut() changes the object, so it must not be shared between
/// threads while it can build. A returned table is shared and stays valid.
class TYX_EXPORT TyxBreakPointLut : public TyxRefCounted {
public:
    /// No points; the output type is invalid.
    TyxBreakPointLut() = default;
    explicit TyxBreakPointLut(const TyxDataType &outputDataType);
    /// Copies the output type and the points; the copy has no table and an
    /// invalid input type.
    TyxBreakPointLut(const TyxBreakPointLut &other);
    TyxBreakPointLut operator=(const TyxBreakPointLut &other);
    ~TyxBreakPointLut() override;

    /// Appends \p point and drops the table.
    void add(const TyxBreakPoint &point);
    /// Removes all points, drops the table and makes the input type invalid.
    void clear();
    /// Fills \p result with the points of \p band sorted by operator<. Without
    /// points but with a table, gives the two points from the input type's
    /// logical minimum to the output type's and from maximum to maximum.
    void get(std::vector<TyxBreakPoint> &result, unsigned band) const;
    /// All points in the order of adding.
    const std::vector<TyxBreakPoint> &points() const { return m_points; }

    /// Takes \p type and drops the table; an invalid type, or one equal to the
    /// current one in code and depth, is ignored.
    void setOutputDataType(const TyxDataType &type);
    const TyxDataType &inputDataType() const { return m_inputDataType; }
    const TyxDataType &outputDataType() const { return m_outputDataType; }
    unsigned inputBitDepth() const { return m_inputDataType.logicalBitDepth(); }
    unsigned outputBitDepth() const { return m_outputDataType.logicalBitDepth(); }

    /// The table's band count if there is a table; otherwise 0 without points
    /// and else largest band minus smallest band plus 1.
    unsigned numBands() const;

    /// The dense table for \p input, built on demand and cached. It spans the
    /// whole logical range of \p input (-32768 to 32767 for float types) in
    /// every band; entries are rounded half away from zero for integer output
    /// types. Without points it is the mapping from the input type's range to
    /// the output type's. Returns the member, null after a failure, which is
    /// posted as an error.
    const TyxLutDescPtr &lut(const TyxDataType &input);

private:
    TyxLutDescPtr m_lut;
    TyxDataType m_inputDataType;
    TyxDataType m_outputDataType;
    std::vector<TyxBreakPoint> m_points;
};

} // namespace tyx
