// Tests of scalars with units: arithmetic, functions, failures and text.
#include <tyx/TyxScalar.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <numbers>
#include <sstream>

#include <tyx/TyxVariant.h>

using namespace tyx;

namespace {

TyxUnits units(const wchar_t *text) { return TyxUnits(TyxString(text)); }

TyxString thrownText(const std::function<void()> &operation)
{
    try {
        operation();
    } catch (const TyxTextMsg &msg) {
        EXPECT_EQ(msg.type(), TyxTextMsg::Error);
        EXPECT_EQ(msg.srcFname(), L"TyxScalar.cpp");
        return msg.text();
    }
    return L"<no failure>";
}

// Exact unless a tolerance is given; kUlps allows four units in the last place.
constexpr double kUlps = -1.0;

TEST(TyxScalarTest, ResultsCarryTheirUnits)
{
    const TyxScalar i(0.0, 1.0, TyxUnits());
    const TyxScalar speed = TyxScalar(3.0, units(L"km")) / TyxScalar(2.0, units(L"hr"));
    const TyxScalar velocity(-3.0, 4.0, units(L"m / s"));
    struct Case {
        const char *what;
        TyxScalar got;
        double re, im;
        const wchar_t *units;
        double tolerance;
    };
    // Sums and bounds convert into the left units; products combine them.
    const Case cases[] = {
        {"km + m", TyxScalar(1.0, units(L"km")) + TyxScalar(1.0, units(L"m")), 1.001, 0.0, L"km", kUlps},
        {"unitless factor", TyxScalar(2.0) * TyxScalar(1.5, units(L"s")), 3.0, 0.0, L"s", 0.0},
        {"m * cm", TyxScalar(1.0, units(L"m")) * TyxScalar(1.0, units(L"cm")), 0.01, 0.0, L"m^2", kUlps},
        {"cancelled", speed * TyxScalar(30.0, units(L"min")), 0.75, 0.0, L"km", kUlps},
        {"i^2", i.pow(TyxScalar(2.0)), -1.0, 0.0, L"", 1e-15},
        {"sqrt", TyxScalar(4.0, units(L"m^2")).sqrt(), 2.0, 0.0, L"m", 0.0},
        {"sin deg", TyxScalar(90.0, units(L"deg")).sin(), 1.0, 0.0, L"", 0.0},
        // asin(2) leaves the real domain only for a complex argument.
        {"asin", TyxScalar(2.0, 1e-300, TyxUnits()).asin(), std::numbers::pi / 2.0,
         std::log(2.0 + std::sqrt(3.0)), L"rad", kUlps},
        {"atan2", TyxScalar().atan2(TyxScalar(1.0, units(L"m")), TyxScalar(100.0, units(L"cm"))),
         std::numbers::pi / 4.0, 0.0, L"rad", kUlps},
        {"fromPolar", TyxScalar::fromPolar(TyxScalar(2.0, units(L"m")), TyxScalar(90.0, units(L"deg"))), 0.0,
         2.0, L"m", 1e-15},
        {"triang",
         TyxScalar(150.0, units(L"cm")).triang(TyxScalar(1.0, units(L"m")), TyxScalar(3.0, units(L"m"))), 0.5,
         0.0, L"", kUlps},
        {"jn", TyxScalar(1.5).jn(TyxScalar(2.9)), ::jn(2, 1.5), 0.0, L"", kUlps},
        {"norm", velocity.norm(), 25.0, 0.0, L"m^2 / s^2", 0.0},
        {"sinc", TyxScalar(0.0, units(L"s")).sinc(), 1.0, 0.0, L"s^-1", 0.0},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        if (c.tolerance == kUlps) {
            EXPECT_DOUBLE_EQ(c.got.real(), c.re);
            EXPECT_DOUBLE_EQ(c.got.imaginary(), c.im);
        } else {
            EXPECT_NEAR(c.got.real(), c.re, c.tolerance);
            EXPECT_NEAR(c.got.imaginary(), c.im, c.tolerance);
        }
        EXPECT_EQ(c.got.units(), units(c.units));
    }
    // A real argument stays real: a root of a negative, log(-1) and asin(2) are NaN.
    for (const TyxScalar &nan :
         {TyxScalar(-8.0).pow(TyxScalar(1.0 / 3.0)), TyxScalar(-1.0).log(), TyxScalar(2.0).asin()})
        EXPECT_TRUE(std::isnan(nan.real()));
}

TEST(TyxScalarTest, FailureTextsKeepTheirArgumentOrder)
{
    const TyxScalar metre(1.0, units(L"m"));
    const TyxScalar second(1.0, units(L"s"));
    const TyxScalar complexValue(1.0, 2.0, TyxUnits());
    struct Case {
        std::function<void()> operation;
        const wchar_t *message;
    };
    const Case cases[] = {
        {[&] { (void)(metre + second); }, L"Cannot convert physical units from 'm' to 's'"},
        {[&] { (void)metre.convertUnits(units(L"s")); }, L"Cannot convert physical units from 's' to 'm'"},
        {[&] { (void)metre.sin(); }, L"Cannot convert physical units from 'rad' to 'm'"},
        {[&] { (void)metre.acos(); }, L"Values must be unit-less for 'acos'"},
        {[&] { (void)TyxScalar(2.0).pow(metre); }, L"Values must be unit-less for 'pow'"},
        {[&] { (void)(complexValue % TyxScalar(2.0)); }, L"Complex values are not valid for '%='"},
        {[&] { (void)(complexValue < metre); }, L"Complex values are not valid for '<'"},
        {[&] { (void)TyxScalar(1.0).clip(TyxScalar(2.0), TyxScalar(1.0)); }, L"Invalid argument for 'clip'"},
        {[&] { (void)TyxScalar(1.0).triang(TyxScalar(2.0), TyxScalar(1.0)); },
         L"Invalid argument for 'rect'"},
        {[&] { (void)(metre / TyxScalar(0.0, units(L"s"))); }, L"Cannot divide by zero"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(thrownText(c.operation), c.message);
}

TEST(TyxScalarTest, OnlyMemberFormsThatSucceedChangeTheirObject)
{
    TyxScalar value(1.0, units(L"m"));
    EXPECT_THROW(value += TyxScalar(1.0, units(L"s")), TyxTextMsg);
    EXPECT_THROW(value /= TyxScalar(), TyxTextMsg);
    EXPECT_THROW(value.log(), TyxTextMsg);
    EXPECT_EQ(value.real(), 1.0);
    EXPECT_EQ(value.units(), units(L"m"));

    // clipmin converts before it compares, and keeps the conversion.
    TyxScalar length(150.0, units(L"cm"));
    EXPECT_THROW(length.clipmin(TyxScalar(1.0, 1.0, units(L"m"))), TyxTextMsg);
    EXPECT_DOUBLE_EQ(length.real(), 1.5);
    EXPECT_EQ(length.units(), units(L"m"));

    // A const object gives a new value; the other form changes itself.
    const TyxScalar four(4.0);
    EXPECT_EQ(four.sqrt().real(), 2.0);
    EXPECT_EQ(four.real(), 4.0);
    TyxScalar changed(4.0);
    EXPECT_EQ(&changed.sqrt(), &changed);
    EXPECT_EQ(changed.real(), 2.0);
}

TEST(TyxScalarTest, RemainderAndFactorialTruncateAndWrap)
{
    EXPECT_EQ((TyxScalar(7.9) % TyxScalar(3.2)).real(), 1.0);
    EXPECT_EQ((TyxScalar(-7.0) % TyxScalar(3.0)).real(), -1.0);
    // A divisor that truncates to 0 and INT64_MIN % -1 would fault.
    EXPECT_EQ(thrownText([] { (void)(TyxScalar(5.0, 0.0, TyxUnits()) % TyxScalar(0.0, 0.0, TyxUnits())); }),
              L"Cannot divide by zero");
    EXPECT_EQ(thrownText([] { (void)(TyxScalar(5.0) % TyxScalar(0.9)); }), L"Cannot divide by zero");
    EXPECT_EQ(thrownText([] { (void)(TyxScalar(-9223372036854775808.0) % TyxScalar(-1.0)); }),
              L"Invalid argument for '%='");
    // NaN and values out of range truncate as the processor does, to INT64_MIN.
    EXPECT_EQ((TyxScalar(std::nan("")) % TyxScalar(10.0)).real(), -8.0);
    EXPECT_EQ((TyxScalar(1e300) % TyxScalar(1000.0)).real(), -808.0);

    // The factorial wraps in sixty-four bits.
    // 20! = 2432902008176640000; 21! = 51090942171709440000, which less
    // 2 * 2^64 is 14197454024290336768; 170! holds 2 to the power 166 and so
    // is 0 modulo 2^64.
    EXPECT_EQ(TyxScalar(21.0).factorial().real(), static_cast<double>(UINT64_C(14197454024290336768)));
    EXPECT_EQ(TyxScalar(170.0).factorial().real(), 0.0);
    EXPECT_EQ(TyxScalar(5.7).factorial().real(), 120.0);
    for (const TyxScalar &bad : {TyxScalar(171.0), TyxScalar(170.5), TyxScalar(-1.0), TyxScalar(std::nan("")),
                                 TyxScalar(3.0, units(L"s")), TyxScalar(3.0, 1.0, TyxUnits())})
        EXPECT_EQ(thrownText([&] { (void)bad.factorial(); }), L"Invalid argument for 'factorial'");
}

TEST(TyxScalarTest, SquareRootTakesThePrincipalBranch)
{
    struct Case {
        double re, im, rootRe, rootIm;
    };
    const Case cases[] = {
        {3.0, 4.0, 2.0, 1.0},
        {-1e308, 0.0, 0.0, 1e154},
        // Subnormal parts, and parts whose modulus would overflow.
        {0x3p-1070, 0x4p-1070, 0x2p-535, 0x1p-535},
        {-1.5e308, 1.5e308, std::sqrt(1.5e308) * std::sqrt(std::complex<double>(-1.0, 1.0)).real(),
         std::sqrt(1.5e308) * std::sqrt(std::complex<double>(-1.0, 1.0)).imag()},
    };
    for (const Case &c : cases) {
        const TyxScalar root = TyxScalar(c.re, c.im, TyxUnits()).sqrt();
        EXPECT_NEAR(root.real(), c.rootRe, std::fabs(c.rootRe) * 1e-14) << c.re << "," << c.im;
        EXPECT_NEAR(root.imaginary(), c.rootIm, std::fabs(c.rootIm) * 1e-14) << c.re << "," << c.im;
    }
}

TEST(TyxScalarTest, StepRectAndTriangShapes)
{
    struct Case {
        double x;
        double step, rect, triang;
    };
    // step at 1; rect and triang over [1, 3].
    const Case cases[] = {
        {0.0, 0.0, 0.0, 0.0}, {1.0, 0.5, 0.5, 0.0}, {1.5, 1.0, 1.0, 0.5},
        {2.0, 1.0, 1.0, 1.0}, {3.0, 1.0, 0.5, 0.0}, {4.0, 1.0, 0.0, 0.0},
    };
    const TyxScalar a(1.0);
    const TyxScalar b(3.0);
    for (const Case &c : cases) {
        const TyxScalar x(c.x);
        EXPECT_EQ(x.step(a).real(), c.step) << c.x;
        EXPECT_EQ(x.rect(a, b).real(), c.rect) << c.x;
        EXPECT_DOUBLE_EQ(x.triang(a, b).real(), c.triang) << c.x;
    }
}

TEST(TyxScalarTest, EqualityAllowsFourUnitsInTheLastPlace)
{
    // Above 1 a unit in the last place is the epsilon.
    constexpr double ulp = std::numeric_limits<double>::epsilon();
    EXPECT_TRUE(TyxScalar(1.0) == TyxScalar(1.0 + 4 * ulp));
    EXPECT_FALSE(TyxScalar(1.0) == TyxScalar(1.0 + 5 * ulp));
    EXPECT_FALSE(TyxScalar(std::nan("")) == TyxScalar(std::nan("")));
    EXPECT_TRUE(TyxScalar(1.0, units(L"km")) == TyxScalar(1000.0, units(L"m")));
    EXPECT_FALSE(TyxScalar(1.0, units(L"m")) == TyxScalar(1.0, units(L"s")));
    EXPECT_FALSE(TyxScalar(1.0, 1.0, TyxUnits()) == TyxScalar(1.0));
    EXPECT_TRUE(TyxScalar(1.0, units(L"km")) > TyxScalar(999.0, units(L"m")));
}

TEST(TyxScalarTest, RoundAddsOneHalfAwayFromZeroAndTruncates)
{
    // x + 0.5 (or x - 0.5) in double, then truncation: the sum itself rounds
    // just below one half and above 2^52.
    constexpr double twoTo52 = 4503599627370496.0;
    const struct {
        double value;
        double rounded;
    } cases[] = {
        {0.49999999999999994, 1.0},     {-0.49999999999999994, -1.0},   {0.5, 1.0}, {0.0, 0.0},
        {twoTo52 + 1.0, twoTo52 + 2.0}, {twoTo52 + 2.0, twoTo52 + 2.0},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(TyxScalar(c.value).round().real(), c.rounded) << c.value;
        const TyxScalar both = TyxScalar(c.value, -c.value, units(L"m")).round();
        EXPECT_EQ(both.real(), c.rounded) << c.value;
        EXPECT_EQ(both.imaginary(), -c.rounded) << c.value;
        EXPECT_EQ(both.units(), units(L"m"));
    }
}

TEST(TyxScalarTest, TextFormReadsBack)
{
    // Every text reads back exactly; one in the printed form prints as it was.
    struct Case {
        const wchar_t *text;
        double re, im;
        const wchar_t *units;
        bool printed;
    };
    const Case cases[] = {
        {L"1.5 m / s", 1.5, 0.0, L"m / s", true},
        {L"(1,-2) kg", 1.0, -2.0, L"kg", true},
        {L"-1e-300 m^0.5", -1e-300, 0.0, L"m^0.5", true},
        {L"2 mJ", 0.002, 0.0, L"J", false},
        {L"2m", 2.0, 0.0, L"m", false},
        {L"  3 (m / s) ", 3.0, 0.0, L"m / s", false},
        {L"1e3 m*s", 1000.0, 0.0, L"m s", false},
        {L"5", 5.0, 0.0, L"unitless", false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(toUTF8(c.text));
        TyxScalar value;
        ASSERT_TRUE(TyxScalar::fromString(c.text, value));
        EXPECT_EQ(value.real(), c.re);
        if (c.printed) {
            EXPECT_EQ(value.toString(), c.text);
        }
        EXPECT_EQ(value.imaginary(), c.im);
        EXPECT_EQ(value.units(), units(c.units));
    }
    TyxScalar kept(7.0);
    for (const wchar_t *bad : {L"", L"   ", L"m", L"2 foo", L"(1,2", L"(a,b) m", L"2 (m"})
        EXPECT_FALSE(TyxScalar::fromString(bad, kept)) << toUTF8(bad);
    EXPECT_EQ(kept.real(), 7.0);
}

TEST(TyxScalarTest, VariantsAndStreamsHoldTheTextForm)
{
    const TyxVariant held(TyxScalar(2.75, -1.0, units(L"m / s")));
    EXPECT_EQ(held.type(), TyxMetaType::Scalar);
    EXPECT_EQ(held.value<TyxString>(), L"(2.75,-1) m / s");

    EXPECT_EQ(TyxVariant(std::complex<double>(1.0, 2.0)).value<TyxScalar>(), TyxScalar(1.0, 2.0, TyxUnits()));
    EXPECT_EQ(TyxVariant(L"2 km").value<TyxScalar>(), TyxScalar(2000.0, units(L"m")));

    EXPECT_EQ(TyxVariant(TyxRational<int64_t>(3, 4)).value<TyxScalar>(), TyxScalar(0.75));
    EXPECT_EQ(TyxVariant(TyxScalar(-0.5, units(L"m"))).value<TyxRational<int64_t>>(),
              TyxRational<int64_t>(-1, 2));

    // The value as a double, then as that double: the imaginary part plays
    // no part, whatever the target.
    EXPECT_FALSE(TyxVariant(TyxScalar(0.0, 2.0, TyxUnits())).value<bool>());
    EXPECT_EQ(TyxVariant(TyxScalar(1.0, 2.0, units(L"m"))).value<std::complex<double>>(),
              std::complex<double>(1.0, 0.0));
    EXPECT_EQ(TyxVariant(TyxScalar(300.7, 1.0, TyxUnits())).value<unsigned char>(), 44);

    TyxScalar target(9.0);
    EXPECT_FALSE(TyxVariant(L"2 furlongs").value(TyxMetaType::Scalar, &target));
    EXPECT_FALSE(TyxVariant(TyxUnits()).value(TyxMetaType::Scalar, &target));

    // Equality is in the left side's type, here a scalar with units.
    EXPECT_TRUE(TyxVariant(TyxScalar(1.0, units(L"km"))) == TyxVariant(TyxScalar(1000.0, units(L"m"))));

    std::wostringstream wide;
    wide << TyxScalar(2.0, units(L"km / hr")) << L'|' << TyxVariant(TyxScalar(-0.5, units(L"kg m^2 / s^2")));
    EXPECT_EQ(wide.str(), L"2 km / hr|TyxScalar,-0.5 m^2 kg / s^2");
    TyxScalar read;
    std::wistringstream wideIn(L"2.5 s^-1\nnext");
    wideIn >> read;
    EXPECT_FALSE(wideIn.fail());
    EXPECT_EQ(read, TyxScalar(2.5, units(L"Hz")));
    std::istringstream narrowIn("nonsense");
    narrowIn >> read;
    EXPECT_TRUE(narrowIn.fail());
    EXPECT_EQ(read, TyxScalar(2.5, units(L"Hz")));
}

} // namespace
