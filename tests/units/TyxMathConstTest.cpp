// Tests of the named constants.
#include <tyx/TyxMathConst.h>

#include <gtest/gtest.h>

#include <complex>
#include <numbers>
#include <sstream>

#include <tyx/TyxVariant.h>

using namespace tyx;

namespace {

TEST(TyxMathConstTest, KeysMatchWithoutRegardToCaseInCodeOrder)
{
    for (const wchar_t *key : {L"_pi", L"_PI", L"_Pi", L"_pI"}) {
        const TyxMathConst constant{TyxString(key)};
        EXPECT_EQ(constant, TyxMathConst::Pi);
        EXPECT_EQ(constant.toString(), L"_pi");
    }
    EXPECT_EQ(TyxMathConst::fromString(L"_m_EARTH"), TyxMathConst::EarthMass);

    for (const wchar_t *unknown : {L"", L"pi", L"_pi ", L"_tau"}) {
        const TyxMathConst constant{TyxString(unknown)};
        EXPECT_EQ(constant.toEnum(), TyxMathConst::Invalid);
        EXPECT_EQ(constant.toString(), L"");
        EXPECT_EQ(constant.value().real(), 0.0);
    }
    EXPECT_EQ(TyxMathConst(static_cast<TyxMathConst::Code>(99)), TyxMathConst::Invalid);

    // All keys, in code order.
    const TyxStrList keys = TyxMathConst::allKeys();
    ASSERT_EQ(keys.size(), 36u);
    EXPECT_EQ(keys[0], L"_alpha");
    EXPECT_EQ(keys[35], L"_Vm");
    for (int code = 0; code < TyxMathConst::Invalid; ++code)
        EXPECT_EQ(TyxMathConst::fromString(keys[static_cast<size_t>(code)]).toEnum(), code);

    // Streams write and read the key.
    std::wostringstream wide;
    wide << TyxMathConst(TyxMathConst::EarthRadius);
    EXPECT_EQ(wide.str(), L"_R_earth");
    std::ostringstream narrow;
    narrow << TyxMathConst(TyxMathConst::Rydberg) << ' ' << TyxMathConst();
    EXPECT_EQ(narrow.str(), "_rydberg ");
    TyxMathConst constant;
    std::wistringstream wideIn(L"  _HBAR _tau");
    wideIn >> constant;
    EXPECT_EQ(constant, TyxMathConst::ReducedPlanck);
    wideIn >> constant;
    EXPECT_EQ(constant, TyxMathConst::Invalid);
}

TEST(TyxMathConstTest, ValuesCarryTheirUnits)
{
    EXPECT_EQ(TyxMathConst(TyxMathConst::ImaginaryUnit).value().complex(), std::complex<double>(0.0, 1.0));

    const TyxScalar c = TyxMathConst(TyxMathConst::SpeedOfLight);
    EXPECT_EQ(c.real(), 299792458.0);
    EXPECT_EQ(c.units(), TyxUnits(TyxString(L"m / s")));
    EXPECT_EQ(double(TyxMathConst(TyxMathConst::Pi)), std::numbers::pi);

    // A category that the unit text names twice takes the later entry:
    // J s is kg m^2 s, and W / m^2 K^4 is kg / m^2 s^3 K^4.
    const TyxScalar h = TyxMathConst(TyxMathConst::Planck);
    EXPECT_EQ(h.real(), 6.62606957e-34);
    EXPECT_EQ(h.units(), TyxUnits(TyxString(L"kg m^2 s")));
    EXPECT_EQ(TyxMathConst(TyxMathConst::StefanBoltzmann).value().units(),
              TyxUnits(TyxString(L"kg / m^2 s^3 K^4")));
}

} // namespace
