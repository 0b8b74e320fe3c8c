// Coordinates, sizes and tie points: text forms, order and their place in the variant.
#include <tyx/TyxCoord2D.h>
#include <tyx/TyxCoord3D.h>
#include <tyx/TyxSize3D.h>
#include <tyx/TyxTiePoint.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using tyx::TyxCoord2D;
using tyx::TyxCoord3D;
using tyx::TyxSize3D;
using tyx::TyxTiePoint;

TEST(TyxCoord2DTest, StreamFormsRoundTrip)
{
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxCoord2D<double>(1.5, -0.25)), L"(1.5,-0.25)");
    std::ostringstream narrow;
    narrow << TyxCoord2D<double>(1.0 / 3.0, 1e20);
    EXPECT_EQ(narrow.str(), "(0.333333,1e+20)");

    TyxCoord2D<int> truncated;
    std::wistringstream wide(L"(2.9,-3.9)");
    wide >> truncated;
    EXPECT_EQ(truncated, TyxCoord2D<int>(2, -3));

    TyxCoord2D<double> read(5.0, 5.0);
    std::istringstream broken("(1.0;");
    broken >> read;
    EXPECT_TRUE(broken.fail());
    EXPECT_TRUE(read.isNull());
    EXPECT_TRUE(TyxCoord2D<double>(-0.0, 0.0).isNull());

    TyxCoord2D<int> tooLarge(5, 5);
    std::wistringstream huge(L"(1e30,1)");
    huge >> tooLarge;
    EXPECT_TRUE(huge.fail());
    EXPECT_TRUE(tooLarge.isNull());
}

TEST(TyxCoord2DTest, JoinsTheVariantAsCode21)
{
    const tyx::TyxVariant coord(TyxCoord2D<double>(0.5, 0));
    EXPECT_EQ(coord.type().toEnum(), 21);
    std::ostringstream form;
    form << coord;
    EXPECT_EQ(form.str(), "TyxDblCoord2D,(0.5,0)");
    EXPECT_TRUE(coord.value<bool>());
    EXPECT_FALSE(tyx::TyxVariant(TyxCoord2D<double>()).value<bool>());
    EXPECT_EQ(tyx::TyxVariant(" (3,4) ").value<TyxCoord2D<double>>(), TyxCoord2D<double>(3, 4));

    tyx::TyxVariant read;
    std::wistringstream in(L"TyxDblCoord2D,(-1.5,2)");
    in >> read;
    EXPECT_EQ(read.value<TyxCoord2D<double>>(), TyxCoord2D<double>(-1.5, 2));
}

TEST(TyxCoord3DTest, StreamFormsRoundTrip)
{
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxCoord3D<int>(1, -2, 3)), L"(1,-2,3)");
    std::ostringstream narrow;
    narrow << TyxCoord3D<double>(0.5, 1.0, -2.25);
    EXPECT_EQ(narrow.str(), "(0.5,1,-2.25)");

    TyxCoord3D<double> read;
    std::wistringstream wide(L"(0.5,1,-2.25)");
    wide >> read;
    EXPECT_EQ(read, TyxCoord3D<double>(0.5, 1.0, -2.25));

    TyxCoord3D<int> broken(1, 1, 1);
    std::istringstream shortText("(1,2)");
    shortText >> broken;
    EXPECT_TRUE(broken.isNull());
    EXPECT_FALSE(TyxCoord3D<int>(0, 0, 1).isNull());
}

TEST(TyxCoord3DTest, JoinsTheVariantAsCodes19And20)
{
    const tyx::TyxVariant origin(TyxCoord3D<int>(0, 0, 0));
    EXPECT_EQ(origin.type().toEnum(), 19);
    EXPECT_FALSE(origin.value<bool>());
    EXPECT_TRUE(tyx::TyxVariant(TyxCoord3D<int>(0, 0, -1)).value<bool>());

    const tyx::TyxVariant point(TyxCoord3D<double>(0.5, 1, -2));
    EXPECT_EQ(point.type().toEnum(), 20);
    std::wostringstream form;
    form << point << L' ' << origin;
    EXPECT_EQ(form.str(), L"TyxDblCoord,(0.5,1,-2) TyxI32Coord,(0,0,0)");
    EXPECT_EQ(point, tyx::TyxVariant("(0.5,1,-2)"));

    // Text reads doubles and the integer coordinate truncates them.
    EXPECT_EQ(tyx::TyxVariant("(1.9,-2.9,3)").value<TyxCoord3D<int>>(), TyxCoord3D<int>(1, -2, 3));
    EXPECT_EQ(tyx::TyxVariant("(1,2)").value<TyxCoord3D<double>>(), TyxCoord3D<double>());
    // No cast to numbers: the target gets its default.
    double number = 7.0;
    EXPECT_FALSE(point.value(tyx::TyxVariant(0.0).type(), &number));
    EXPECT_EQ(number, 0.0);
}

TEST(TyxSize3DTest, VolumeAndEmptiness)
{
    const TyxSize3D<unsigned int> empty(0, 5, 5);
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.volume(), 0u);
    // The product is formed in 64 bits.
    EXPECT_EQ(TyxSize3D<unsigned int>(100000, 100000, 3).volume(), 30000000000u);
    EXPECT_EQ(TyxSize3D<double>(0.5, 4.0, 2.0).volume(), 4u);
    EXPECT_EQ(TyxSize3D<double>(-1.0, 4.0, 2.0).volume(), 0u);
    EXPECT_EQ(TyxSize3D<double>(1e10, 1e10, 1e10).volume(), UINT64_MAX);
}

TEST(TyxSize3DTest, StreamForms)
{
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxSize3D<unsigned int>(640, 480, 3)), L"(640,480,3)");
    TyxSize3D<unsigned int> read;
    std::wistringstream wide(L"(640.7,480,3)");
    wide >> read;
    EXPECT_EQ(read, TyxSize3D<unsigned int>(640, 480, 3));
    std::istringstream negative("(-1,2,3)");
    negative >> read;
    EXPECT_TRUE(negative.fail());
    EXPECT_EQ(read, TyxSize3D<unsigned int>());
}

TEST(TyxSize3DTest, JoinsTheVariantAsCode22)
{
    const tyx::TyxVariant size(TyxSize3D<unsigned int>(0, 5, 5));
    EXPECT_EQ(size.type().toEnum(), 22);
    std::wostringstream form;
    form << size;
    EXPECT_EQ(form.str(), L"TyxU32Size,(0,5,5)");
    // As a bool a size asks whether any field is set, not whether it is empty.
    EXPECT_TRUE(size.value<bool>());
    EXPECT_FALSE(tyx::TyxVariant(TyxSize3D<unsigned int>()).value<bool>());
    EXPECT_EQ(tyx::TyxVariant("(640,480,3)").value<TyxSize3D<unsigned int>>(),
              TyxSize3D<unsigned int>(640, 480, 3));
}

TEST(TyxTiePointTest, OrdersByUThenVThenXThenY)
{
    EXPECT_LT(TyxTiePoint(1, 2, 3, 4), TyxTiePoint(1, 2, 3, 5));
    EXPECT_LT(TyxTiePoint(1, 2, 9, 9), TyxTiePoint(1, 3, 0, 0));
    EXPECT_LT(TyxTiePoint(0, 9, 9, 9), TyxTiePoint(1, 0, 0, 0));
    EXPECT_FALSE(TyxTiePoint(1, 2, 3, 4) < TyxTiePoint(1, 2, 3, 4));
}

TEST(TyxTiePointTest, StreamFormsRoundTrip)
{
    const TyxTiePoint point(1.5, 2, -3, 4.25);
    EXPECT_EQ(static_cast<tyx::TyxString>(point), L"((1.5,2),(-3,4.25))");
    std::ostringstream narrow;
    narrow << point;
    EXPECT_EQ(narrow.str(), "((1.5,2),(-3,4.25))");

    TyxTiePoint read;
    std::istringstream in(narrow.str());
    in >> read;
    EXPECT_EQ(read, point);

    std::wistringstream broken(L"((1,2),(3");
    broken >> read;
    EXPECT_TRUE(broken.fail());
    EXPECT_TRUE(read.isNull());
    EXPECT_FALSE(TyxTiePoint(0, 0, 1, 0).isNull());
}

} // namespace
