#include <tyx/TyxImageROI.h>
#include <tyx/TyxImageSize.h>
#include <tyx/TyxROIRect.h>
#include <tyx/TyxTileGrid.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <sstream>
#include <vector>

namespace {

using namespace tyx;
using Bands = std::vector<unsigned int>;

TyxString textOf(const TyxImageROI &roi) { return static_cast<TyxString>(roi); }

TyxImageROI scattered() { return TyxImageROI(0, 0, 10, 10, {2, 0, 5}); }

TEST(TyxImageSizeTest, JoinsTheVariant)
{
    EXPECT_TRUE(TyxVariant(TyxImageSize(3, 4, 5)).value<bool>());
    EXPECT_FALSE(TyxVariant(TyxImageSize()).value<bool>());
    EXPECT_EQ(TyxVariant(TyxSize3D<unsigned int>(7, 8, 9)).value<TyxImageSize>(), TyxImageSize(7, 8, 9));
    EXPECT_EQ(TyxVariant(L"(1.9,2,3)").value<TyxImageSize>(), TyxImageSize(1, 2, 3));
}

TEST(TyxImageROITest, ContiguousOrScatteredBandLists)
{
    EXPECT_EQ(TyxImageROI(TyxCoord3D<int>(5, 6, 4), TyxImageSize(2, 3, 2)).bands(), (Bands{4, 5}));
    EXPECT_TRUE(TyxImageROI().bands().empty());
    // A scattered list is kept as given.
    const TyxImageROI roi = scattered();
    EXPECT_EQ(roi.bands(), (Bands{2, 0, 5}));
    EXPECT_TRUE(roi.contains({0, 0, 5}));
    EXPECT_FALSE(roi.contains({0, 0, 1}));
    EXPECT_FALSE(roi.contains({10, 0, 0}));
    EXPECT_FALSE(roi.contains({0, 0, -1}));
    EXPECT_EQ(roi.lowerRight(), TyxCoord3D<int>(9, 9, 5));
    EXPECT_EQ(TyxImageROI().lowerRight().z(), -1);

    // A new origin replaces the list; a new list moves the origin's band.
    TyxImageROI moved = scattered();
    moved.setOrigin({1, 2, 0});
    EXPECT_EQ(moved.bands(), (Bands{0, 1, 2}));
    moved.setBands({7, 3});
    EXPECT_EQ(moved.origin().z(), 3);
    moved.setBands({});
    EXPECT_EQ(moved.origin().z(), 0);
}

TEST(TyxImageROITest, IntersectionAndBoundingROI)
{
    // The scattered list meets a range as the range of its bands.
    const TyxImageROI other(TyxCoord3D<int>(0, 0, 1), TyxImageSize(10, 10, 3));
    EXPECT_EQ(scattered().intersection(other), TyxImageROI(0, 0, 10, 10, {1, 2, 3}));

    const TyxImageROI a(TyxCoord3D<int>(2, 3, 0), TyxImageSize(10, 10, 1));
    const TyxImageROI b(TyxCoord3D<int>(-5, 8, 0), TyxImageSize(10, 10, 1));
    EXPECT_EQ(a.intersection(b), TyxImageROI(2, 8, 3, 5, {0}));

    // Disjoint regions give an empty one at the other's origin.
    const TyxImageROI apart(TyxCoord3D<int>(30, 20, 3), TyxImageSize(4, 4, 1));
    EXPECT_EQ(a.intersection(apart), TyxImageROI(TyxCoord3D<int>(30, 20, 3), TyxImageSize()));
    // An empty band list counts as last band -1.
    EXPECT_EQ(a.intersection(TyxImageROI(0, 0, 4, 4, {})).numBands(), 0u);

    // The bounding region ignores an empty one.
    const TyxImageROI empty(TyxCoord3D<int>(3, 3, 0), TyxImageSize(0, 5, 1));
    EXPECT_EQ(empty.boundingROI(scattered()), scattered());
    EXPECT_EQ(scattered().boundingROI(empty), scattered());
    const TyxImageROI far(TyxCoord3D<int>(-2, 4, 7), TyxImageSize(3, 20, 1));
    EXPECT_EQ(scattered().boundingROI(far), TyxImageROI(TyxCoord3D<int>(-2, 0, 0), TyxImageSize(12, 24, 8)));
    // A height that is negative as a signed number counts as empty.
    const TyxImageROI huge(TyxCoord3D<int>(0, 0, 0), TyxImageSize(1, 0x80000000u, 1));
    EXPECT_EQ(huge.boundingROI(scattered()), scattered());
}

TEST(TyxImageROITest, TextFormsRoundTrip)
{
    EXPECT_EQ(textOf(scattered()), L"((0,0,0),(10,10,3),(2,0,5))");
    EXPECT_EQ(textOf(TyxImageROI()), L"((0,0,0),(0,0,0),())");
    EXPECT_EQ(textOf(TyxImageROI(-1, 2, 3, 4, {6})), L"((-1,2,6),(3,4,1),(6))");

    std::wistringstream in(L"((4.7,-3,99),(5,6,77),(9,1,4))");
    TyxImageROI read;
    in >> read;
    EXPECT_EQ(read, TyxImageROI(4, -3, 5, 6, {9, 1, 4}));

    std::istringstream narrowIn("((0,0,0),(2,2,0),())");
    narrowIn >> read;
    EXPECT_EQ(read, TyxImageROI(0, 0, 2, 2, {}));

    std::wistringstream bad(L"((1,2");
    read = scattered();
    bad >> read;
    EXPECT_TRUE(bad.fail());
    EXPECT_EQ(read, TyxImageROI());

    // The variant reads the same text and gives no number.
    const TyxVariant v(scattered());
    EXPECT_EQ(TyxVariant(L"((0,0,0),(10,10,3),(2,0,5))").value<TyxImageROI>(), scattered());
    double d = 7.0;
    EXPECT_FALSE(v.value(TyxMetaType::Double, &d));
    EXPECT_EQ(d, 0.0);
}

TEST(TyxTileGridTest, HundredByHundredInSixtyFourCells)
{
    const TyxTileGrid grid(TyxImageSize(100, 100, 1), TyxImageSize(64, 64, 1));
    EXPECT_EQ(grid.numCells(), 4u);
    EXPECT_EQ(grid[3], TyxImageROI(TyxCoord3D<int>(64, 64, 0), TyxImageSize(36, 36, 1)));
    EXPECT_EQ(grid[1].size(), TyxImageSize(36, 64, 1));
    EXPECT_EQ(grid.imageToCell(99, 99, 0), 3u);
    EXPECT_EQ(grid.imageToCell(100, 0, 0), 0xFFFFFFFFu);
    EXPECT_EQ(grid.imageToCell(0, 0, 1), 0xFFFFFFFFu);

    unsigned walked = 0;
    for (const TyxImageROI &each : grid)
        EXPECT_EQ(each, grid[walked++]);
    EXPECT_EQ(walked, 4u);
    EXPECT_EQ(grid[2].origin(), TyxCoord3D<int>(0, 64, 0));
    // Bands are clipped like columns.
    EXPECT_EQ(TyxTileGrid(TyxImageSize(10, 10, 3), TyxImageSize(4, 4, 2))(0, 0, 2).size(),
              TyxImageSize(4, 4, 1));
}

TEST(TyxTileGridTest, IntersectedCellsAndZeroCells)
{
    const TyxTileGrid grid(TyxImageSize(100, 100, 1), TyxImageSize(30, 30, 1));
    const TyxImageROI roi(TyxCoord3D<int>(25, 35, 0), TyxImageSize(40, 40, 1));
    EXPECT_EQ(grid.intersectedCells(roi), (std::set<unsigned int>{4, 5, 6, 8, 9, 10}));
    const TyxImageROI overhang(TyxCoord3D<int>(-10, 95, 0), TyxImageSize(500, 50, 1));
    EXPECT_EQ(grid.intersectedCells(overhang), (std::set<unsigned int>{12, 13, 14, 15}));
    const TyxImageROI outside(TyxCoord3D<int>(200, 0, 0), TyxImageSize(5, 5, 1));
    EXPECT_TRUE(grid.intersectedCells(outside).empty());

    // A zero cell size gives an empty grid.
    const TyxTileGrid empty(TyxImageSize(100, 100, 1), TyxImageSize(0, 64, 1));
    EXPECT_TRUE(empty.empty());
    EXPECT_TRUE(empty.begin() == empty.end());
    EXPECT_EQ(empty.imageToCell(5, 5, 0), 0xFFFFFFFFu);
}

TEST(TyxROIRectTest, HalfOpenBoxNaNAndNormalized)
{
    const TyxROIRect<double> box(0, 0, 0, 1, 2, 3);
    EXPECT_TRUE(box.contains(0.0, 0.0));
    EXPECT_FALSE(box.contains(1.0, 0.0));
    EXPECT_TRUE(box.contains(0.5, 1.5, 2.5));
    EXPECT_FALSE(box.contains(0.5, 1.5, 3.0));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(box.contains(nan, 0.5));
    EXPECT_FALSE(box.contains(TyxCoord3D<double>(0.5, 0.5, nan)));
    const std::vector<bool> flags = box.contains(std::vector<TyxCoord2D<double>>{{0, 0}, {1, 0}, {0.9, 1.9}});
    EXPECT_EQ(flags, (std::vector<bool>{true, false, true}));
    const std::vector<bool> flags3 =
        box.contains(std::vector<TyxCoord3D<double>>{{0, 0, 3}, {0, 0, 0}, {nan, 0, 0}});
    EXPECT_EQ(flags3, (std::vector<bool>{false, true, false}));

    // A flat box is not empty; normalising orders each pair of bounds.
    EXPECT_TRUE(TyxROIRect<double>().isEmpty());
    EXPECT_FALSE(TyxROIRect<double>(1, 0, 0, 1, 2, 0).isEmpty());
    const TyxROIRect<double> flipped(3, 0, 5, 1, 2, 4);
    const TyxROI_IF &asInterface = flipped;
    EXPECT_EQ(asInterface.normalized(), TyxROIRect<double>(1, 0, 4, 3, 2, 5));
}

} // namespace
