#include <tyx/TyxCoord2D.h>

#include <sstream>

#include <gtest/gtest.h>

#include <tyx/TyxVariant.h>

namespace {

using tyx::TyxCoord2D;

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

} // namespace
