#include <tyx/TyxBreakPoint.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

using namespace tyx;

TEST(TyxBreakPointTest, NullAndOrderByBandThenInThenOut)
{
    TyxBreakPoint p;
    EXPECT_TRUE(p.isNull());
    p.rOut() = 0.5;
    EXPECT_FALSE(p.isNull());
    std::vector<TyxBreakPoint> points = {{5, 1.0, 1}, {7, 0.0, 0}, {5, 0.5, 1}, {2, 9.0, 1}, {7, -1.0, 0}};
    std::sort(points.begin(), points.end());
    const std::vector<TyxBreakPoint> expected = {
        {7, -1.0, 0}, {7, 0.0, 0}, {2, 9.0, 1}, {5, 0.5, 1}, {5, 1.0, 1}};
    EXPECT_EQ(points, expected);
}

TEST(TyxBreakPointTest, TextFormsAndTheEndOfTheParse)
{
    EXPECT_EQ(TyxBreakPoint(0, 12.5, 1).toString(), L"(0,12.5,1)");
    std::ostringstream narrow;
    narrow << TyxBreakPoint(-7, -0.25, 3);
    EXPECT_EQ(narrow.str(), "(-7,-0.25,3)");

    TyxBreakPoint p;
    EXPECT_EQ(p.fromString(L"(1,2.5,3)"), 9u);
    EXPECT_EQ(p, TyxBreakPoint(1, 2.5, 3));
    EXPECT_EQ(p.fromString(L"(4,5,6) rest"), 7u);
    EXPECT_EQ(p, TyxBreakPoint(4, 5.0, 6));
    // A failed parse leaves the target alone.
    for (const wchar_t *text : {L"", L"(1,2.5)", L"(x,2,3)", L"(1,2,-)", L"(1,2,3"}) {
        EXPECT_EQ(p.fromString(text), 0u) << text;
        EXPECT_EQ(p, TyxBreakPoint(4, 5.0, 6)) << text;
    }
}

TEST(TyxBreakPointTest, StreamReadIgnoresSeparatorCharacters)
{
    std::wistringstream is(L"[1;2.5;3]");
    TyxBreakPoint p;
    is >> p;
    EXPECT_TRUE(is.good());
    EXPECT_EQ(p, TyxBreakPoint(1, 2.5, 3));
    std::istringstream narrow("(1,2");
    narrow >> p;
    EXPECT_FALSE(narrow.good());
    EXPECT_EQ(p, TyxBreakPoint(1, 2.5, 3));
}

} // namespace
