#include <tyx/TyxTiePoint.h>

#include <sstream>

#include <gtest/gtest.h>

namespace {

using tyx::TyxTiePoint;

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
