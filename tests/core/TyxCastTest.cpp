#include <tyx/TyxCast.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <bit>
#include <limits>

namespace {

using namespace tyx;
using namespace tyx::internal;

static_assert(TyxCastExists<tyx::TyxVariantMap, bool>);
static_assert(!TyxCastExists<tyx::TyxStrList, int>);
static_assert(!TyxCastExists<tyx::TyxVariantList, tyx::TyxVariantMap>);

template <class From, class To>
To castTo(const From &from, bool *ok = nullptr)
{
    To to{};
    const bool result = TyxCast<From, To>::cast(from, to);
    if (ok)
        *ok = result;
    return to;
}

// Casts and checks both the result and the success flag.
template <class From, class To>
void expectCast(const From &from, const To &expected, bool expectedOk = true)
{
    bool ok = !expectedOk;
    EXPECT_EQ((castTo<From, To>(from, &ok)), expected) << ::testing::PrintToString(from);
    EXPECT_EQ(ok, expectedOk) << ::testing::PrintToString(from);
}

TEST(TyxCastTest, TextOfNumbers)
{
    struct Case {
        double value;
        const wchar_t *text;
    };
    const Case cases[] = {
        {3.0, L"3.0"},
        {0.1, L"0.100000000000000006"},
        {1e20, L"100000000000000000000"},
        {-0.0, L"-0.0"},
        {std::numeric_limits<double>::quiet_NaN(), L"nan"},
        {std::numeric_limits<double>::infinity(), L"inf"},
    };
    for (const Case &c : cases)
        EXPECT_EQ((castTo<double, TyxString>(c.value)), c.text) << c.value;
    EXPECT_EQ((castTo<int64_t, TyxString>(INT64_MIN)), L"-9223372036854775808");
    EXPECT_EQ((castTo<uint64_t, TyxString>(UINT64_MAX)), L"18446744073709551615");
    EXPECT_EQ((castTo<wchar_t, TyxString>(L'\u00e9')), L"\u00e9");
}

TEST(TyxCastTest, TextAndRealsToIntegers)
{
    struct Case {
        const wchar_t *text;
        int value;
        bool ok;
    };
    const Case cases[] = {
        {L"42", 42, true},   {L"", 0, false},           {L"   ", 0, false},       {L"5.7", 5, true},
        {L"-5.7", -5, true}, {L"abc", 0, false},        {L"12abc", 12, false},    {L"1e3", 1000, true},
        {L"-", 0, false},    {L"nan", INT32_MIN, true}, {L"4294967297", 1, true},
    };
    for (const Case &c : cases)
        expectCast<TyxString, int>(c.text, c.value, c.ok);
    expectCast<TyxString, uint64_t>(L"18446744073709551615", UINT64_MAX);
    expectCast<TyxString, unsigned char>(L"300", 44);
    expectCast<TyxString, wchar_t>(L"xyz", L'x');
    expectCast<TyxString, char>(L"", 0, false);

    // Reals out of an integer's range get defined results.
    EXPECT_EQ((castTo<double, unsigned char>(300.7)), 44);
    EXPECT_EQ((castTo<double, int>(1e10)), INT32_MIN);
    const double twoTo63 = 9223372036854775808.0;
    EXPECT_EQ((castTo<double, uint64_t>(12.9)), 12u);
    EXPECT_EQ((castTo<double, uint64_t>(twoTo63)), UINT64_C(1) << 63);
    EXPECT_EQ((castTo<double, uint64_t>(1.5 * twoTo63)), (UINT64_C(1) << 63) + (UINT64_C(1) << 62));
    EXPECT_EQ((castTo<double, uint64_t>(-1.0)), UINT64_MAX);
    // The rest is itself at least 2^63: nothing is added.
    EXPECT_EQ((castTo<double, uint64_t>(4.0 * twoTo63)), UINT64_C(1) << 63);
}

TEST(TyxCastTest, TextToRealsAndBools)
{
    expectCast<TyxString, double>(L" 2.5 ", 2.5);
    expectCast<TyxString, double>(L"", 0.0, false);
    expectCast<TyxString, double>(L"1.5kg", 1.5, false);
    bool ok = false;
    for (const wchar_t *text : {L"NaN", L"nan", L" nan"}) {
        const double value = castTo<TyxString, double>(text, &ok);
        EXPECT_TRUE(ok);
        EXPECT_EQ(std::bit_cast<uint64_t>(value), UINT64_C(0x7FF8000000000000));
    }
    const float value = castTo<TyxString, float>(L"NaN", &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(std::bit_cast<uint32_t>(value), 0x7FC00000u);

    for (const wchar_t *word : {L"1", L"t", L"yes", L"on", L"True"})
        expectCast<TyxString, bool>(word, true);
    for (const wchar_t *word : {L"no", L"", L" yes", L"2"})
        expectCast<TyxString, bool>(word, false);
    EXPECT_EQ((castTo<bool, TyxString>(false)), L"false");
}

TEST(TyxCastTest, ComplexValuesAndContainers)
{
    EXPECT_EQ((castTo<std::complex<double>, double>({0.0, 2.0})), 0.0);
    EXPECT_TRUE((castTo<std::complex<double>, bool>({0.0, 2.0})));
    using Complex = std::complex<double>;
    expectCast<TyxString, Complex>(L"(3)", {3.0, 0.0});
    expectCast<TyxString, Complex>(L"4", {4.0, 0.0});
    bool ok = true;
    castTo<TyxString, Complex>(L"(1,", &ok);
    EXPECT_FALSE(ok);

    // The text forms of the containers, of complex numbers and of true are those
    // of their stream forms (see the variant tests); here what reads back or tests
    // as bool.
    EXPECT_FALSE((castTo<TyxStrList, bool>(TyxStrList())));
    EXPECT_EQ((castTo<TyxString, TyxStrList>(L"(a,b)")), (TyxStrList{L"a", L"b"}));
    EXPECT_FALSE((castTo<TyxVariantPair, bool>(TyxVariantPair())));
    const TyxVariantList fromText = castTo<TyxString, TyxVariantList>(L"a,b");
    ASSERT_EQ(fromText.size(), 1u);
    EXPECT_EQ(fromText[0].value<TyxString>(), L"a,b");
    expectCast<TyxString, TyxVariantMap>(L"{a:Int,1}", TyxVariantMap());
}

} // namespace
