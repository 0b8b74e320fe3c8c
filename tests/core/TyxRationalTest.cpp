#include <tyx/TyxRational.h>

#include <sstream>

#include <gtest/gtest.h>

namespace {

using tyx::TyxRational;

TEST(TyxRationalTest, DefaultsToZeroOverOneAndIsNotReduced)
{
    const TyxRational<int> zero;
    EXPECT_EQ(zero.numerator(), 0);
    EXPECT_EQ(zero.denominator(), 1);
    EXPECT_NE(TyxRational<int>(1, 2), TyxRational<int>(2, 4));
    EXPECT_EQ(TyxRational<int>(3, 0).denominator(), 0);
    TyxRational<uint64_t> value;
    value.setNumerator(7);
    value.setDenominator(9);
    EXPECT_EQ(value, TyxRational<uint64_t>(7, 9));
}

TEST(TyxRationalTest, TextFormsOfTheFourWidths)
{
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxRational<int>(-3, 4)), L"(-3,4)");
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxRational<unsigned int>(4294967295u, 1)), L"(4294967295,1)");
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxRational<int64_t>(INT64_MIN, -1)), L"(-9223372036854775808,-1)");
    std::ostringstream narrow;
    narrow << TyxRational<uint64_t>(UINT64_MAX, 2);
    EXPECT_EQ(narrow.str(), "(18446744073709551615,2)");
}

TEST(TyxRationalTest, ReadsWithoutExaminingTheSeparators)
{
    TyxRational<int64_t> value;
    std::wistringstream wide(L"[10;-20]");
    wide >> value;
    EXPECT_EQ(value, TyxRational<int64_t>(10, -20));
    std::istringstream narrow(" ( 5 , 6 ) ");
    TyxRational<unsigned int> unsignedValue;
    narrow >> unsignedValue;
    EXPECT_EQ(unsignedValue, TyxRational<unsigned int>(5, 6));

    std::wistringstream broken(L"(1,x)");
    broken >> value;
    EXPECT_TRUE(broken.fail());
    EXPECT_EQ(value, TyxRational<int64_t>(0, 0));
}

} // namespace
