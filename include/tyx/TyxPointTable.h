// A table of points whose first three attributes are x, y and z, found and sorted by them.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxCoord3D.h>
#include <tyx/TyxDataTable.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxPointAttributeVal.h>
#include <tyx/TyxROIRect.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

class TyxMetaProperty;
class TyxVariant;

TYX_DECLARE_SMART_PTR(TyxPointTable);

/// Points in three dimensions with further attributes. Every property
/// carries its position in the table as its data (an unsigned 64-bit
/// variant), which indexOf() answers. A point lacking a coordinate (fewer
/// than three values) reads NaN there, so that it follows each filter's
/// rule for NaN.
class TYX_EXPORT TyxPointTable : public TyxRefCounted, public TyxDataTable<TyxPoint> {
public:
    /// Coordinate \p index of \p point as double: NaN when the point has no
    /// such value, a string converted as TyxPointAttributeVal::toDouble().
    static double coordinate(const TyxPoint &point, uint64_t index)
    {
        if (index >= point.size())
            return std::numeric_limits<double>::quiet_NaN();
        return point[index].toDouble();
    }

    /// low <= coordinate <= high, closed at both ends.
    template <int Index>
    struct CoordinateFilter {
        double low = 0.0;
        double high = 0.0;
        bool operator()(const TyxPoint &point) const
        {
            const double c = coordinate(point, Index);
            return low <= c && c <= high;
        }
    };
    /// coordinate < low or coordinate > high; a NaN coordinate is neither.
    template <int Index>
    struct CoordinateFilterNegate {
        double low = 0.0;
        double high = 0.0;
        bool operator()(const TyxPoint &point) const
        {
            const double c = coordinate(point, Index);
            return c < low || c > high;
        }
    };
    using CoordinateFilter_X = CoordinateFilter<0>;
    using CoordinateFilter_Y = CoordinateFilter<1>;
    using CoordinateFilter_Z = CoordinateFilter<2>;
    using CoordinateFilterNegate_X = CoordinateFilterNegate<0>;
    using CoordinateFilterNegate_Y = CoordinateFilterNegate<1>;
    using CoordinateFilterNegate_Z = CoordinateFilterNegate<2>;

    /// The box's contains(x, y): half open, NaN never inside.
    struct RoiFilter2D {
        TyxROIRect<double> roi;
        bool operator()(const TyxPoint &point) const
        {
            return roi.contains(coordinate(point, 0), coordinate(point, 1));
        }
    };
    struct RoiFilter2DNegate {
        TyxROIRect<double> roi;
        bool operator()(const TyxPoint &point) const { return !RoiFilter2D{roi}(point); }
    };
    /// The box's contains(x, y, z).
    struct RoiFilter3D {
        TyxROIRect<double> roi;
        bool operator()(const TyxPoint &point) const
        {
            return roi.contains(coordinate(point, 0), coordinate(point, 1), coordinate(point, 2));
        }
    };
    struct RoiFilter3DNegate {
        TyxROIRect<double> roi;
        bool operator()(const TyxPoint &point) const { return !RoiFilter3D{roi}(point); }
    };

    /// Attribute \p index equals \p value, the point's value on the left; a
    /// point without that attribute matches nothing.
    struct MatchAttributeFilter {
        uint64_t index = 0;
        TyxPointAttributeVal value;
        bool operator()(const TyxPoint &point) const { return index < point.size() && point[index] == value; }
    };
    struct MatchAttributeFilterNegate {
        uint64_t index = 0;
        TyxPointAttributeVal value;
        bool operator()(const TyxPoint &point) const { return !MatchAttributeFilter{index, value}(point); }
    };

    using IndexList = TyxAutoPtr<std::vector<uint64_t>>;

    /// No points; the properties x, y and z of defaultProperties().
    TyxPointTable();
    TyxPointTable(const TyxPointTable &other);
    /// Takes \p properties and stores each one's position on it.
    explicit TyxPointTable(const TyxMetaProperties &properties);
    TyxPointTable(uint64_t count, const TyxPoint &fill);
    TyxPointTable(const TyxMetaProperties &properties, uint64_t count, const TyxPoint &fill);
    ~TyxPointTable() override;

    TyxPointTable &operator=(const TyxPointTable &other);
    /// Takes \p properties and stores each one's position on it; the points stay.
    TyxPointTable &operator=(const TyxMetaProperties &properties);

    /// Built once: "attributes" with the double properties x, y and z (labels
    /// "X", "Y", "Z"), carrying the indices 0, 1 and 2.
    static const TyxMetaProperties &defaultProperties();
    static constexpr uint64_t INVALID_INDEX() { return TyxMetaProperties::INVALID_INDEX(); }

    /// The index stored on the property \p name, or INVALID_INDEX().
    uint64_t indexOf(const TyxString &name) const;
    /// The index of the property of that name; a new name is added as a copy
    /// carrying the next index. Points already in the table keep their size.
    uint64_t registerProperty(const TyxMetaProperty &property);
    /// One value per property, each equal to \p fill, and at least three.
    TyxPoint createPoint(const TyxPointAttributeVal &fill = TyxPointAttributeVal()) const;

    /// Points with low <= coordinate \p index <= high (x, y, z for 0, 1, 2),
    /// or with the coordinate outside with \p negate. An index above 2 finds
    /// nothing.
    IndexList findByCoordinate(uint64_t index, double low, double high, bool negate) const;
    /// Points inside the half-open box, in x and y or in all three.
    IndexList findByROI(const TyxROIRect<double> &roi, bool twoDimensional, bool negate) const;
    /// Points whose attribute \p index equals \p value (a TyxString variant
    /// compares as a string, any other as its double).
    IndexList findByAttribute(uint64_t index, const TyxVariant &value, bool negate) const;
    /// The same by property name; an unknown name is an index no point has.
    IndexList findByAttribute(const TyxString &name, const TyxVariant &value, bool negate) const;

    /// Reorders the points by coordinate \p index (0 x, 1 y, anything else
    /// z), from the smallest up or from the largest down. Not stable. NaN
    /// coordinates, missing ones included, go last in both directions.
    void sortByCoordinate(uint64_t index, bool ascending);

    /// The smallest and largest coordinates. The minimum starts at
    /// 1.7976931348623157e308 and the maximum at 2.2250738585072014e-308:
    /// an empty table answers those, and a coordinate that is negative in
    /// every point leaves its maximum at the small positive start. NaN
    /// coordinates are skipped.
    void coordinateExtents(TyxCoord3D<double> &minimum, TyxCoord3D<double> &maximum) const;

private:
    void setIndexes();
    template <int Index, bool Ascending>
    void sortBy();
};

} // namespace tyx
