#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxPointAttributeVal.h>
#include <tyx/TyxPointTable.h>
#include <tyx/TyxROIRect.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <utility>
#include <vector>

namespace {

using namespace tyx;
using Indices = std::vector<uint64_t>;

const double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Points with x = 0.5, 1, 1.5, 2, 2.5 and NaN; y = 10 * x, z = -x.
TyxPointTable edgeTable()
{
    TyxPointTable table;
    for (double x : {0.5, 1.0, 1.5, 2.0, 2.5, kNaN})
        table.push_back(TyxPoint{x, 10 * x, -x});
    return table;
}

TEST(TyxPointAttributeValTest, CopiesOwnTheirOwnStringAndMovesTakeIt)
{
    TyxPointAttributeVal a(L"abc");
    TyxPointAttributeVal b(a);
    ASSERT_NE(a.string(), b.string());
    b.setString(L"xyz");
    EXPECT_EQ(*a.string(), L"abc");
    TyxPointAttributeVal c;
    c = a;
    EXPECT_EQ(c, a);
    c = c;
    EXPECT_EQ(*c.string(), L"abc");
    c = b;
    EXPECT_EQ(*c.string(), L"xyz");
    // Moves take the string and leave zero behind.
    const TyxString *held = c.string();
    TyxPointAttributeVal d(std::move(c));
    EXPECT_EQ(d.string(), held);
    EXPECT_FALSE(c.isString());
    EXPECT_EQ(c.toDouble(), 0.0);
    a = std::move(d);
    EXPECT_EQ(a.string(), held);
    EXPECT_FALSE(d.isString());
}

TEST(TyxPointAttributeValTest, ComparesByTheLeftFormAndTakesVariantsAndText)
{
    EXPECT_EQ(TyxPointAttributeVal(1.5), TyxPointAttributeVal(1.5));
    EXPECT_NE(TyxPointAttributeVal(kNaN), TyxPointAttributeVal(kNaN));
    EXPECT_EQ(TyxPointAttributeVal(L"Ab"), TyxPointAttributeVal(L"Ab"));
    EXPECT_NE(TyxPointAttributeVal(L"Ab"), TyxPointAttributeVal(L"ab"));
    EXPECT_NE(TyxPointAttributeVal(L"2"), TyxPointAttributeVal(2.0));
    EXPECT_NE(TyxPointAttributeVal(2.0), TyxPointAttributeVal(L"2"));
    EXPECT_EQ(TyxPointAttributeVal(TyxVariant(TyxString(L"t"))), TyxPointAttributeVal(L"t"));
    EXPECT_EQ(TyxPointAttributeVal(TyxVariant(3)), TyxPointAttributeVal(3.0));

    std::wostringstream text;
    text << TyxPointAttributeVal(L"name");
    EXPECT_EQ(text.str(), L"TyxString,name");
    std::wistringstream in(text.str());
    TyxPointAttributeVal back;
    in >> back;
    EXPECT_EQ(back, TyxPointAttributeVal(L"name"));
}

TEST(TyxPointTableTest, PropertiesStartAsXYZAndRegisterOnce)
{
    const TyxMetaProperties &properties = TyxPointTable::defaultProperties();
    EXPECT_EQ(properties.metaClassName(), L"attributes");
    ASSERT_EQ(properties.size(), 3u);
    for (uint64_t i = 0; i < 3; ++i) {
        const auto property = properties.property(i);
        const TyxString axis(1, L"XYZ"[i]);
        EXPECT_EQ(property->name(), TyxString(1, L"xyz"[i]));
        EXPECT_EQ(property->label(), axis);
        EXPECT_EQ(property->description(), L"The " + axis + L" coordinate of the 3D position");
        EXPECT_EQ(property->type(), TyxMetaType::Double);
    }
    TyxPointTable table;
    EXPECT_EQ(table.indexOf(L"z"), 2u);
    EXPECT_EQ(table.indexOf(L"w"), TyxPointTable::INVALID_INDEX());
    // A name registered twice keeps its first index.
    EXPECT_EQ(table.registerProperty(TyxMetaProperty(L"class")), 3u);
    EXPECT_EQ(table.registerProperty(TyxMetaProperty(L"class", TyxMetaType::Double)), 3u);
    EXPECT_EQ(table.registerProperty(TyxMetaProperty(L"height", TyxMetaType::Double)), 4u);
    EXPECT_EQ(table.registerProperty(TyxMetaProperty(L"y")), 1u);
    EXPECT_EQ(table.indexOf(L"height"), 4u);
    EXPECT_EQ(table.createPoint().size(), 5u);
    EXPECT_EQ(TyxPointTable().createPoint(TyxPointAttributeVal(7.0)), (TyxPoint{7.0, 7.0, 7.0}));
}

TEST(TyxPointTableTest, CoordinateFiltersAreClosedAndBoxesHalfOpen)
{
    const TyxPointTable table = edgeTable();
    EXPECT_EQ(*table.findByCoordinate(0, 1.0, 2.0, false), (Indices{1, 2, 3}));
    EXPECT_EQ(*table.findByCoordinate(0, 1.0, 2.0, true), (Indices{0, 4}));
    EXPECT_EQ(*table.findByCoordinate(2, -2.0, -1.0, true), (Indices{0, 4}));
    EXPECT_TRUE(table.findByCoordinate(3, -1e9, 1e9, false)->empty());
    EXPECT_TRUE(table.findByCoordinate(3, -1e9, 1e9, true)->empty());
    // Boxes are half open.
    const TyxROIRect<double> box(1.0, 10.0, -100.0, 2.0, 20.0, 100.0);
    EXPECT_EQ(*table.findByROI(box, true, false), (Indices{1, 2}));
    EXPECT_EQ(*table.findByROI(box, true, true), (Indices{0, 3, 4, 5}));
    const TyxROIRect<double> thin(0.0, 0.0, -3.0, 10.0, 100.0, 0.0);
    EXPECT_EQ(*table.findByROI(thin, true, false), (Indices{0, 1, 2, 3, 4}));
    const TyxROIRect<double> lowZ(0.0, 0.0, -1.0, 10.0, 100.0, -0.5);
    // z = -1 is inside, z = -0.5 is on the open upper edge.
    EXPECT_EQ(*table.findByROI(lowZ, false, false), (Indices{1}));
    EXPECT_EQ(*table.findByROI(lowZ, false, true), (Indices{0, 2, 3, 4, 5}));
    EXPECT_TRUE(table.findByROI(TyxROIRect<double>(), true, false)->empty());
}

TEST(TyxPointTableTest, PointsWithoutCoordinates)
{
    TyxPointTable table;
    table.push_back(TyxPoint());
    table.push_back(TyxPoint{1.0});
    table.push_back(TyxPoint{1.0, 1.0, 1.0});
    const TyxROIRect<double> everything(-1e300, -1e300, -1e300, 1e300, 1e300, 1e300);
    EXPECT_EQ(*table.findByCoordinate(0, 0.0, 2.0, false), (Indices{1, 2}));
    EXPECT_EQ(*table.findByCoordinate(1, 0.0, 2.0, false), (Indices{2}));
    EXPECT_EQ(*table.findByCoordinate(1, 0.0, 2.0, true), Indices{});
    EXPECT_EQ(*table.findByROI(everything, true, false), (Indices{2}));
    EXPECT_EQ(*table.findByROI(everything, false, true), (Indices{0, 1}));
    EXPECT_EQ(*table.findByAttribute(1, TyxVariant(1.0), false), (Indices{2}));
    EXPECT_EQ(*table.findByAttribute(1, TyxVariant(1.0), true), (Indices{0, 1}));
    table.sortByCoordinate(1, true);
    EXPECT_EQ(table[0].size(), 3u);
}

TEST(TyxPointTableTest, FindByAttribute)
{
    TyxPointTable table;
    const uint64_t kind = table.registerProperty(TyxMetaProperty(L"kind"));
    for (const wchar_t *name : {L"tree", L"Tree", L"house", L"tree"}) {
        TyxPoint point = table.createPoint();
        point[kind] = TyxPointAttributeVal(name);
        table.push_back(point);
    }
    EXPECT_EQ(*table.findByAttribute(L"kind", TyxVariant(TyxString(L"tree")), false), (Indices{0, 3}));
    EXPECT_EQ(*table.findByAttribute(kind, TyxVariant(TyxString(L"tree")), true), (Indices{1, 2}));
    EXPECT_TRUE(table.findByAttribute(kind, TyxVariant(0.0), false)->empty());
    EXPECT_EQ(*table.findByAttribute(L"x", TyxVariant(0.0), false), (Indices{0, 1, 2, 3}));
    EXPECT_TRUE(table.findByAttribute(L"colour", TyxVariant(TyxString(L"tree")), false)->empty());
    EXPECT_EQ(*table.findByAttribute(L"colour", TyxVariant(TyxString(L"tree")), true), (Indices{0, 1, 2, 3}));
}

TEST(TyxPointTableTest, SortsEachCoordinateBothWaysWithNaNLast)
{
    const struct {
        uint64_t index;
        bool ascending;
        uint64_t column;
        std::vector<double> expected;
    } cases[] = {
        {0, true, 0, {0.5, 1.0, 1.5, 2.0, 2.5}},
        {1, false, 1, {25.0, 20.0, 15.0, 10.0, 5.0}},
        {7, false, 2, {-0.5, -1.0, -1.5, -2.0, -2.5}},
    };
    for (const auto &c : cases) {
        TyxPointTable table = edgeTable();
        std::swap(table[0], table[5]);
        table.sortByCoordinate(c.index, c.ascending);
        std::vector<double> got;
        for (const TyxPoint &point : table)
            got.push_back(TyxPointTable::coordinate(point, c.column));
        ASSERT_EQ(got.size(), 6u);
        EXPECT_TRUE(std::isnan(got.back())) << c.index;
        got.pop_back();
        EXPECT_EQ(got, c.expected) << c.index << " " << c.ascending;
    }
}

TEST(TyxPointTableTest, CoordinateExtents)
{
    TyxCoord3D<double> lo, hi;
    // Points without coordinates leave the starting values.
    TyxPointTable table;
    table.push_back(TyxPoint());
    table.coordinateExtents(lo, hi);
    EXPECT_EQ(lo, TyxCoord3D<double>(1.7976931348623157e308, 1.7976931348623157e308, 1.7976931348623157e308));
    EXPECT_EQ(hi,
              TyxCoord3D<double>(2.2250738585072014e-308, 2.2250738585072014e-308, 2.2250738585072014e-308));

    table = edgeTable();
    table.coordinateExtents(lo, hi);
    EXPECT_EQ(lo, TyxCoord3D<double>(0.5, 5, -2.5));
    // Every z is negative: the maximum keeps its small positive start.
    EXPECT_EQ(hi, TyxCoord3D<double>(2.5, 25, DBL_MIN));
}

} // namespace
