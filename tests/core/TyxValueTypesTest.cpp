// Small value types: coordinates, sizes, tie points, rationals, keys, keyed
// objects, versions and enumerations; their text forms, order and place in
// the variant.
#include <tyx/TyxCoord2D.h>
#include <tyx/TyxCoord3D.h>
#include <tyx/TyxEnum.h>
#include <tyx/TyxKey.h>
#include <tyx/TyxKeyedObject.h>
#include <tyx/TyxRational.h>
#include <tyx/TyxSize3D.h>
#include <tyx/TyxTiePoint.h>
#include <tyx/TyxVariant.h>
#include <tyx/TyxVersion.h>

#include <gtest/gtest.h>

#include <limits>

#include "TyxStreamText.h"

namespace {

using namespace tyx;
using namespace tyx::test;
using I64 = TyxRational<int64_t>;
using U64 = TyxRational<uint64_t>;

TEST(TyxCoordTest, StreamForms)
{
    EXPECT_EQ(streamed<char>(TyxCoord2D<double>(1.0 / 3.0, 1e20)), "(0.333333,1e+20)");

    TyxCoord2D<int> truncated;
    EXPECT_FALSE(readFails(L"(2.9,-3.9)", truncated));
    EXPECT_EQ(truncated, TyxCoord2D<int>(2, -3));

    TyxCoord2D<double> read(5.0, 5.0);
    EXPECT_TRUE(readFails("(1.0;", read));
    EXPECT_TRUE(read.isNull());

    TyxCoord2D<int> tooLarge(5, 5);
    EXPECT_TRUE(readFails(L"(1e30,1)", tooLarge));
    EXPECT_TRUE(tooLarge.isNull());
}

// As a bool a coordinate or size asks whether any field is set (an empty size
// can be true), a rational whether its numerator is.
TEST(TyxCoordTest, JoinTheVariantWithTheirCodesAndForms)
{
    const struct {
        TyxVariant value;
        int code;
        const wchar_t *form;
        bool asBool;
    } cases[] = {
        {TyxVariant(TyxCoord2D<double>(0.5, 0)), 21, L"TyxDblCoord2D,(0.5,0)", true},
        {TyxVariant(TyxCoord2D<double>()), 21, L"TyxDblCoord2D,(0,0)", false},
        {TyxVariant(TyxCoord3D<int>(0, 0, 0)), 19, L"TyxI32Coord,(0,0,0)", false},
        {TyxVariant(TyxCoord3D<int>(0, 0, -1)), 19, L"TyxI32Coord,(0,0,-1)", true},
        {TyxVariant(TyxCoord3D<double>(0.5, 1, -2)), 20, L"TyxDblCoord,(0.5,1,-2)", true},
        {TyxVariant(TyxSize3D<unsigned int>(0, 5, 5)), 22, L"TyxU32Size,(0,5,5)", true},
        {TyxVariant(TyxSize3D<unsigned int>()), 22, L"TyxU32Size,(0,0,0)", false},
        {TyxVariant(I64(1, 4)), 12, L"TyxI64Rational,(1,4)", true},
        {TyxVariant(I64(0, 5)), 12, L"TyxI64Rational,(0,5)", false},
        {TyxVariant(U64(3, 0)), 13, L"TyxU64Rational,(3,0)", true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(toUTF8(c.form));
        EXPECT_EQ(c.value.type().toEnum(), c.code);
        EXPECT_EQ(streamed(c.value), c.form);
        EXPECT_EQ(c.value.value<bool>(), c.asBool);
        TyxVariant read;
        EXPECT_FALSE(readFails(c.form, read));
        EXPECT_EQ(read.type(), c.value.type());
        EXPECT_EQ(read, c.value);
    }
    // Text may have blanks around it; a rational needs its parentheses.
    EXPECT_EQ(TyxVariant(" (3,4) ").value<TyxCoord2D<double>>(), TyxCoord2D<double>(3, 4));
    EXPECT_EQ(TyxVariant("(3,4)").value<U64>(), U64(3, 4));
    I64 failed(9, 9);
    EXPECT_FALSE(TyxVariant("3/4").value(TyxVariant(I64()).type(), &failed));
}

TEST(TyxSize3DTest, VolumeAndStreamForms)
{
    const TyxSize3D<unsigned int> empty(0, 5, 5);
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.volume(), 0u);
    // The product is formed in 64 bits.
    EXPECT_EQ(TyxSize3D<unsigned int>(100000, 100000, 3).volume(), 30000000000u);
    EXPECT_EQ(TyxSize3D<double>(0.5, 4.0, 2.0).volume(), 4u);
    EXPECT_EQ(TyxSize3D<double>(-1.0, 4.0, 2.0).volume(), 0u);
    EXPECT_EQ(TyxSize3D<double>(1e10, 1e10, 1e10).volume(), UINT64_MAX);

    // Below the range of the fields, as 1e30 above it for coordinates.
    TyxSize3D<unsigned int> read(1, 1, 1);
    EXPECT_TRUE(readFails("(-1,2,3)", read));
    EXPECT_EQ(read, TyxSize3D<unsigned int>());
}

TEST(TyxTiePointTest, OrderAndStreamFormsRoundTrip)
{
    // By u, then v, then x, then y.
    EXPECT_LT(TyxTiePoint(1, 2, 3, 4), TyxTiePoint(1, 2, 3, 5));
    EXPECT_LT(TyxTiePoint(1, 2, 9, 9), TyxTiePoint(1, 3, 0, 0));
    EXPECT_LT(TyxTiePoint(0, 9, 9, 9), TyxTiePoint(1, 0, 0, 0));
    EXPECT_FALSE(TyxTiePoint(1, 2, 3, 4) < TyxTiePoint(1, 2, 3, 4));

    const TyxTiePoint point(1.5, 2, -3, 4.25);
    EXPECT_EQ(streamed<char>(point), "((1.5,2),(-3,4.25))");
    TyxTiePoint read;
    EXPECT_FALSE(readFails(streamed<char>(point), read));
    EXPECT_EQ(read, point);

    EXPECT_TRUE(readFails(L"((1,2),(3", read));
    EXPECT_TRUE(read.isNull());
    EXPECT_FALSE(TyxTiePoint(0, 0, 1, 0).isNull());
}

TEST(TyxRationalTest, TextFormsAndCasts)
{
    EXPECT_EQ(static_cast<TyxString>(I64(INT64_MIN, -1)), L"(-9223372036854775808,-1)");
    EXPECT_EQ(streamed<char>(U64(UINT64_MAX, 2)), "(18446744073709551615,2)");
    // Kept as given: not reduced, a zero denominator allowed.
    EXPECT_NE(TyxRational<int>(1, 2), TyxRational<int>(2, 4));
    // Reading does not examine the separators.
    I64 value;
    EXPECT_FALSE(readFails(L"[10;-20]", value));
    EXPECT_EQ(value, I64(10, -20));
    EXPECT_TRUE(readFails(L"(1,x)", value));
    EXPECT_EQ(value, I64(0, 0));

    const TyxVariant quarter(I64(1, 4));
    EXPECT_EQ(quarter.value<double>(), 0.25);
    EXPECT_EQ(TyxVariant(I64(1, 0)).value<double>(), std::numeric_limits<double>::infinity());

    EXPECT_EQ(TyxVariant(42).value<I64>(), I64(42, 1));
    EXPECT_EQ(TyxVariant(std::complex<double>(-0.5, 9.0)).value<I64>(), I64(-1, 2));
    const I64 tenth = TyxVariant(0.1).value<I64>();
    EXPECT_LT(tenth.denominator(), 65535);
    EXPECT_NEAR(static_cast<double>(tenth.numerator()) / static_cast<double>(tenth.denominator()), 0.1, 1e-9);
}

TEST(TyxKeyTest, CountingTextFormsAndKeyedObjectNames)
{
    TyxKey key(0xFFFFFFFEu);
    ++key;
    EXPECT_EQ(key, 0u);

    TyxKey invalid;
    EXPECT_EQ(++invalid, TyxKey(0));

    TyxKey read;
    EXPECT_FALSE(readFails("123", read));
    EXPECT_EQ(read, 123u);
    EXPECT_TRUE(readFails("x", read));
    EXPECT_FALSE(read.isValid());

    // Keyed objects: equal names compare equal whatever the keys; empty names take the key.
    EXPECT_EQ(TyxKeyedObject(TyxKey(1), L"name"), TyxKeyedObject(TyxKey(2), L"name"));
    EXPECT_NE(TyxKeyedObject(TyxKey(1), L"name"), TyxKeyedObject(TyxKey(1), L"Name"));

    EXPECT_EQ(TyxKeyedObject(TyxKey(17), L"").name(), L"17");
    EXPECT_EQ(TyxKeyedObject(TyxKey(), L"").name(), L"4294967295");
    // The counter counts on for each object made without a key.
    const TyxKeyedObject first(L"");
    const TyxKeyedObject second(L"second");
    EXPECT_TRUE(first.key().isValid());
    EXPECT_EQ(first.name(), static_cast<TyxString>(first.key()));
    EXPECT_EQ(second.key().value(), first.key().value() + 1);
}

TEST(TyxVersionTest, TextReadsOneLineOrderAndTextForms)
{
    const struct {
        const wchar_t *text;
        TyxVersion expected;
    } cases[] = {
        {L"4.1", TyxVersion(4, 1, 0)},   {L"2", TyxVersion(2, 0, 0)},
        {L"", TyxVersion(1, 0, 0)},      {L"4.1\n5.6", TyxVersion(4, 1, 0)},
        {L"4.1.2", TyxVersion(4, 1, 2)}, {L"\n5.6.7", TyxVersion(1, 0, 0)},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(TyxVersion(c.text), c.expected) << toUTF8(c.text);
        TyxVersion read;
        readFails(c.text, read);
        EXPECT_EQ(read, c.expected) << toUTF8(c.text);
    }

    EXPECT_GT(TyxVersion(4, 1, 0), TyxVersion(4, 0, 9));
    EXPECT_TRUE(TyxVersion(4, 1, 0) == TyxString(L"4.1\n9"));

    const TyxVersion version(4, 1, 0);
    EXPECT_EQ(static_cast<TyxString>(version), L"4.1.0");
    EXPECT_EQ(version.toString(L"_"), L"4_1_0");
    EXPECT_EQ(version.toString(L".", false), L"4.1");
}

TyxEnum colours()
{
    static const TyxEnum::Item items[] = {
        {2, L"Green"},
        {1, L"Red", TyxVariant(0.5)},
        {3, L"Blue"},
    };
    return TyxEnum(items, 3);
}

TEST(TyxEnumTest, InsertDropsTakenValuesAndNamesLookUpsIgnoreCaseAndDataIsCopied)
{
    TyxEnum e = colours();
    e.insert({1, L"Crimson"});
    e.insert({9, L"RED"});
    e.insert({4, L"Cyan"});
    EXPECT_EQ(e.size(), 4u);
    EXPECT_EQ(e.toString(1), L"Red");
    EXPECT_FALSE(e.isValid(9));
    EXPECT_EQ(e.allKeys(), (std::vector<TyxString>{L"Green", L"Red", L"Blue", L"Cyan"}));
    EXPECT_EQ(e.fromString(L"red"), 1);
    EXPECT_EQ(e.fromString(L"Purple"), TyxEnum::INVALID_ENUM());
    EXPECT_EQ(e.toString(7), L"");
    EXPECT_TRUE(e.isValid(L"green"));
    EXPECT_FALSE(TyxEnum().isValid(0));

    EXPECT_EQ(e.data(1).value<double>(), 0.5);
    EXPECT_FALSE(e.data(42).isValid());
    e.setData(2, TyxVariant(L"leaf"));
    e.setData(42, TyxVariant(1));
    EXPECT_FALSE(e.isValid(42));

    // A copy owns its own data.
    TyxEnum copy = e;
    copy.setData(2, TyxVariant(L"grass"));
    EXPECT_EQ(e.data(2).value<TyxString>(), L"leaf");
    EXPECT_EQ(copy.data(2).value<TyxString>(), L"grass");

    // Same values under other names; one value more; one value other.
    const auto numbered = [](std::initializer_list<int> values) {
        TyxEnum made;
        for (int value : values)
            made.insert({value, L"N" + std::to_wstring(value)});
        return made;
    };
    EXPECT_TRUE(colours() == numbered({1, 2, 3}));
    EXPECT_TRUE(colours() != numbered({1, 2, 3, 4}));
    EXPECT_TRUE(colours() != numbered({1, 2, 5}));
}

} // namespace
