#include <tyx/TyxCoord3D.h>

#include <sstream>

#include <gtest/gtest.h>

#include <tyx/TyxVariant.h>

namespace {

using tyx::TyxCoord3D;

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

} // namespace
