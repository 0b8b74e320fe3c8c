// Tests of the unit tables, the unit text syntax and the conversion factors.
#include <tyx/TyxUnits.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sstream>

#include <tyx/TyxVariant.h>

using namespace tyx;

namespace {

TEST(TyxUnitsTest, SyntaxPlacesFactorsByTheirSlashAndPrintsBack)
{
    // A factor whose category is already there replaces that entry, unit and
    // exponent; only multFactor adds exponents. Scales are exact unless a
    // tolerance is given. Derived units: 1 erg = 1e-7 J (CGS); 1 torr =
    // 101325 / 760 Pa and 1 lbf = 0.45359237 kg * 9.80665 m/s^2, which the
    // table holds to 7 and 12 digits; 1 cm^-1 = c in cm/s as a frequency.
    struct Case {
        const wchar_t *text;
        const wchar_t *printed;
        double scale;
        double tolerance = 0.0;
    };
    const Case cases[] = {
        {L"kg / m s^2", L"kg / m s^2", 1.0},
        {L"kg / (m s^2)", L"kg / m s^2", 1.0},
        {L"(kg / m) s", L"kg s / m", 1.0},
        {L"  m\t/ s  ", L"m / s", 1.0},
        {L"m^0.5", L"m^0.5", 1.0},
        {L"m^0", L"unitless", 1.0},
        {L"", L"unitless", 1.0},
        {L"cm m", L"m", 1.0},
        {L"m / m", L"m^-1", 1.0},
        {L"m / s / s", L"m / s", 1.0},
        {L"mJ s", L"m^2 kg s", 0.001},
        {L"km / mJ", L"s^2 / m^2 kg", 1000.0},
        {L"(m s) (cm / s)", L"cm / s", 1.0},
        {L"J / mol K", L"m^2 kg / s^2 K mol", 1.0},
        {L"cyc el ph cnt", L"cnt cyc el ph", 1.0},
        {L"arcsec^-0.25 nmi", L"nmi / arcsec^0.25", 1.0},
        {L"F", L"s^4 A^2 / m^2 kg", 1.0},
        {L"erg", L"m^2 kg / s^2", 1e-7},
        {L"torr", L"kg / m s^2", 101325.0 / 760.0, 1e-4},
        {L"wavenum", L"s^-1", 29979245800.0, 1e-4},
    };
    for (const Case &c : cases) {
        TyxUnits units;
        EXPECT_NEAR(units.fromString(c.text), c.scale, c.tolerance) << toUTF8(c.text);
        EXPECT_EQ(units.toString(), c.printed) << toUTF8(c.text);
        // The printed form parses back to equal units.
        TyxUnits back;
        EXPECT_DOUBLE_EQ(back.fromString(units.toString()), 1.0);
        EXPECT_EQ(back, units) << toUTF8(c.text);
    }

    // Very long and deeply nested texts parse.
    TyxString nested = TyxString(100000, L'(') + L"m" + TyxString(100000, L')');
    EXPECT_EQ(TyxUnits(nested), TyxUnits(TyxUnits::Meter));

    TyxString many;
    for (int i = 0; i < 20000; ++i)
        many += L"(m / s) ";
    EXPECT_EQ(TyxUnits(many), TyxUnits(TyxString(L"m / s")));
}

TEST(TyxUnitsTest, BadTextEndsInTheParseMessageEitherWay)
{
    const TyxString deepOpen(50000, L'(');
    struct Case {
        TyxString text;
        TyxString message;
    };
    const Case cases[] = {
        {L"(m", L"Unmatched open or close parentheses: (m"},
        {L"m) (s", L"Unmatched open or close parentheses: m) (s"},
        {L"m^x", L"Invalid exponent: m^x"},
        {L"m^1e999", L"Invalid exponent: m^1e999"},
        {L"foo", L"Invalid/unknown units: foo"},
        {L"M", L"Invalid/unknown units: M"},
        {L"(m)^2", L"Invalid/unknown units: ^2"},
        {L"m ^ 2", L"Invalid exponent: ^"},
        {L"\u00b5m", L"Invalid/unknown units: \u00b5m"},
        {deepOpen, L"Unmatched open or close parentheses: " + deepOpen},
    };
    for (const Case &c : cases) {
        try {
            TyxUnits().fromString(c.text);
            ADD_FAILURE() << "no failure: " << toUTF8(c.text);
        } catch (const TyxTextMsg &msg) {
            EXPECT_EQ(msg.text(), L"Error parsing physical units: " + c.message) << toUTF8(c.text);
        }
        EXPECT_FALSE(TyxUnits::isValid(c.text));
        // The message form fills the message and keeps the units.
        TyxUnits kept(TyxUnits::Meter);
        TyxTextMsg msg;
        EXPECT_EQ(kept.fromString(c.text, msg), 0.0);
        EXPECT_EQ(msg.text(), L"Error parsing physical units: " + c.message);
        EXPECT_EQ(msg.type(), TyxTextMsg::Error);
        EXPECT_EQ(kept, TyxUnits(TyxUnits::Meter));
    }
    TyxUnits units;
    TyxTextMsg untouched(L"kept", TyxTextMsg::Warning);
    EXPECT_DOUBLE_EQ(units.fromString(L"km", untouched), 1.0);
    EXPECT_EQ(untouched.text(), L"kept");
    EXPECT_EQ(units, TyxUnits(TyxUnits::Kilometer));
}

TEST(TyxUnitsTest, FactorsOfSumsProductsAndPowers)
{
    // Products of scalars reach multFactor; here the quotient that cancels.
    TyxUnits result;
    EXPECT_DOUBLE_EQ(TyxUnits::divFactor(TyxUnits(TyxUnits::Kilometer), TyxUnits(TyxUnits::Meter), &result),
                     1000.0);
    EXPECT_TRUE(result.isUnitLess());

    // Thirds that add back up to a whole exponent leave no rounding residue.
    TyxUnits third(TyxUnits::Meter, 1.0 / 3.0);
    TyxUnits sum;
    TyxUnits::multFactor(third, third, &sum);
    TyxUnits::multFactor(sum, third, &sum);
    EXPECT_EQ(sum, TyxUnits(TyxUnits::Meter));

    // pow raises every exponent.
    TyxUnits units(TyxString(L"m^2 / s"));
    units.pow(0.5);
    EXPECT_EQ(units, TyxUnits(TyxString(L"m s^-0.5")));
    units.pow(-2.0);
    EXPECT_EQ(units, TyxUnits(TyxString(L"s / m^2")));
    units.pow(0.0);
    EXPECT_TRUE(units.isUnitLess());

    // Exact by definition: the SI prefixes; the international yard and pound
    // (1959: 1 ft = 0.3048 m, 1 mi = 1609.344 m); 1 hr = 3600 s; 1 nmi =
    // 1852 m (1929 convention); 1 deg = pi / 180 rad; 1 deg = 3600 arcsec.
    struct Case {
        const wchar_t *target;
        const wchar_t *source;
        double factor;
    };
    const Case cases[] = {
        {L"m / s", L"mi / hr", 0.44704},
        {L"rad", L"deg", std::numbers::pi / 180.0},
        {L"m", L"s", 0.0},
        {L"m", L"m^2", 0.0},
        {L"m", L"unitless", 0.0},
        {L"unitless", L"unitless", 1.0},
    };
    for (const Case &c : cases) {
        const double factor =
            TyxUnits::addFactor(TyxUnits(TyxString(c.target)), TyxUnits(TyxString(c.source)));
        EXPECT_NEAR(factor, c.factor, std::fabs(c.factor) * 1e-14) << toUTF8(c.source);
    }
}

TEST(TyxUnitsTest, EntriesAndCategoriesInCodeOrder)
{
    const TyxUnits units(TyxString(L"mol A K rad s kg m"));
    ASSERT_EQ(units.numCategories(), 7u);
    EXPECT_EQ(units.toString(), L"m kg s rad K A mol");
    EXPECT_EQ(units[6].unit, TyxUnits::Mole);
    EXPECT_EQ(units[7], TyxUnits::UnitExp());
    EXPECT_EQ(units[-1], TyxUnits::UnitExp());
    EXPECT_TRUE(units.hasCategory(TyxUnits::AngleCategory));
    EXPECT_FALSE(units.hasCategory(TyxUnits::PhotonsCategory));
    EXPECT_TRUE(TyxUnits(static_cast<TyxUnits::Unit>(99)).isUnitLess());

    // The enumerator of a category lists its units in code order.
    const TyxEnum &angles = TyxUnits::enumerator(TyxUnits::AngleCategory);
    EXPECT_EQ(angles.allKeys(),
              (std::vector<TyxString>{L"rad", L"mrad", L"urad", L"nrad", L"deg", L"arcmin", L"arcsec"}));
    EXPECT_EQ(angles.fromString(L"DEG"), TyxUnits::Degree);
    EXPECT_TRUE(TyxUnits::enumerator(static_cast<TyxUnits::Category>(12)).empty());
    EXPECT_TRUE(TyxUnits::enumerator(static_cast<TyxUnits::Category>(-1)).empty());
}

TEST(TyxUnitsTest, StreamsAndVariantsHoldTheTextForm)
{
    const TyxVariant held(TyxUnits(TyxString(L"m / s")));
    EXPECT_EQ(held.type(), TyxMetaType::Units);
    EXPECT_EQ(held.value<TyxString>(), L"m / s");
    EXPECT_TRUE(held.value<bool>());
    EXPECT_FALSE(TyxVariant(TyxUnits()).value<bool>());

    // An integer is a unit code; codes outside the table give no units.
    EXPECT_EQ(TyxVariant(6).value<TyxUnits>(), TyxUnits(TyxUnits::Kilometer));
    EXPECT_TRUE(TyxVariant(37).value<TyxUnits>().isUnitLess());
    EXPECT_TRUE(TyxVariant(int64_t{1} << 32 | 1).value<TyxUnits>().isUnitLess());
    TyxUnits target(TyxUnits::Meter);
    EXPECT_FALSE(TyxVariant(2.0).value(TyxMetaType::Units, &target));

    EXPECT_EQ(TyxVariant(L"kg m^2 / s^2").value<TyxUnits>(), TyxUnits(TyxString(L"J")));
    EXPECT_FALSE(TyxVariant(L"kg m^2 / s^").value(TyxMetaType::Units, &target));

    // Streams write the text form; a line is read, and a bad one fails and leaves the units.
    std::wostringstream wide;
    wide << TyxUnits(TyxString(L"km / hr")) << L'|' << held;
    EXPECT_EQ(wide.str(), L"km / hr|TyxUnits,m / s");
    TyxUnits read;
    std::wistringstream wideIn(L"kg m / s^2\nrest");
    wideIn >> read;
    EXPECT_FALSE(wideIn.fail());
    EXPECT_EQ(read, TyxUnits(TyxString(L"N")));
    std::istringstream narrowIn("m / foo");
    narrowIn >> read;
    EXPECT_TRUE(narrowIn.fail());
    EXPECT_EQ(read, TyxUnits(TyxString(L"N")));
    std::wistringstream in(L"TyxUnits,  km^2 ");
    TyxVariant variant;
    in >> variant;
    EXPECT_FALSE(in.fail());
    EXPECT_EQ(variant.value<TyxUnits>(), TyxUnits(TyxUnits::Kilometer, 2.0));
    EXPECT_TRUE(TyxVariant(TyxUnits(TyxUnits::Meter)) == TyxVariant(L"m"));
}

} // namespace
