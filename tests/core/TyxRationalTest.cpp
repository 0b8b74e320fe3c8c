#include <tyx/TyxRational.h>

#include <sstream>

#include <gtest/gtest.h>

#include <tyx/TyxVariant.h>

namespace {

using tyx::TyxRational;

TEST(TyxRationalTest, TextFormsOfTheFourWidths)
{
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxRational<int>(-3, 4)), L"(-3,4)");
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxRational<int64_t>(INT64_MIN, -1)), L"(-9223372036854775808,-1)");
    std::ostringstream narrow;
    narrow << TyxRational<uint64_t>(UINT64_MAX, 2);
    EXPECT_EQ(narrow.str(), "(18446744073709551615,2)");
    // Kept as given: not reduced, a zero denominator allowed.
    EXPECT_EQ(TyxRational<int>(), TyxRational<int>(0, 1));
    EXPECT_NE(TyxRational<int>(1, 2), TyxRational<int>(2, 4));
    EXPECT_EQ(TyxRational<int>(3, 0).denominator(), 0);
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

TEST(TyxRationalTest, JoinsTheVariantAsCodes12And13)
{
    using I64 = TyxRational<int64_t>;
    using U64 = TyxRational<uint64_t>;
    const tyx::TyxVariant quarter(I64(1, 4));
    EXPECT_EQ(quarter.type().toEnum(), 12);
    EXPECT_EQ(tyx::TyxVariant(U64(1, 4)).type().toEnum(), 13);
    EXPECT_TRUE(quarter.isNumeric());
    std::wostringstream form;
    form << quarter << L' ' << tyx::TyxVariant(U64(3, 0));
    EXPECT_EQ(form.str(), L"TyxI64Rational,(1,4) TyxU64Rational,(3,0)");

    EXPECT_EQ(quarter.value<double>(), 0.25);
    EXPECT_EQ(tyx::TyxVariant(I64(7, 2)).value<int>(), 3);
    EXPECT_EQ(tyx::TyxVariant(I64(-7, 2)).value<unsigned char>(), 253);
    EXPECT_EQ(tyx::TyxVariant(I64(1, 0)).value<double>(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(quarter.value<std::complex<double>>(), std::complex<double>(0.25, 0.0));
    // Between the two rationals each part converts as the language does.
    EXPECT_EQ(tyx::TyxVariant(I64(-1, 2)).value<U64>(), U64(UINT64_MAX, 2));
}

TEST(TyxRationalTest, NumbersAndTextCastToRationals)
{
    using I64 = TyxRational<int64_t>;
    using U64 = TyxRational<uint64_t>;
    EXPECT_EQ(tyx::TyxVariant(42).value<I64>(), I64(42, 1));
    EXPECT_EQ(tyx::TyxVariant(-3).value<U64>(), U64(UINT64_MAX - 2, 1));
    EXPECT_EQ(tyx::TyxVariant(0.75).value<I64>(), I64(3, 4));
    EXPECT_EQ(tyx::TyxVariant(std::complex<double>(-0.5, 9.0)).value<I64>(), I64(-1, 2));
    const I64 tenth = tyx::TyxVariant(0.1).value<I64>();
    EXPECT_LT(tenth.denominator(), 65535);
    EXPECT_NEAR(static_cast<double>(tenth.numerator()) / static_cast<double>(tenth.denominator()), 0.1, 1e-9);

    EXPECT_EQ(tyx::TyxVariant("(3,4)").value<U64>(), U64(3, 4));
    I64 failed(9, 9);
    EXPECT_FALSE(tyx::TyxVariant("3/4").value(tyx::TyxVariant(I64()).type(), &failed));
    EXPECT_EQ(tyx::TyxVariant(I64(2, 3)), tyx::TyxVariant("(2,3)"));

    tyx::TyxVariant read;
    std::wistringstream in(L"TyxU64Rational,(5,6)");
    in >> read;
    EXPECT_EQ(read.value<U64>(), U64(5, 6));
}

} // namespace
