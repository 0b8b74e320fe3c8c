// Variants and their type codes: construction, conversion, sharing, text
// forms and types that join at run time.
#include <tyx/TyxMetaType.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

#include "TyxStreamText.h"

namespace {

using namespace tyx;
using namespace tyx::test;

TyxVariant readWide(const std::wstring &text)
{
    TyxVariant v;
    readFails(text, v);
    return v;
}

TEST(TyxVariantTest, ConstructorsGiveTheirCodes)
{
    struct Case {
        TyxVariant variant;
        TyxMetaType::Code code;
        const char *className;
    };
    const Case cases[] = {
        {TyxVariant(), TyxMetaType::Invalid, ""},
        {TyxVariant(static_cast<signed char>(-1)), TyxMetaType::Int8, "signed char"},
        {TyxVariant('a'), TyxMetaType::Char, "wchar_t"},
        {TyxVariant(1L), TyxMetaType::Int64, "TyxI64"},
        {TyxVariant(std::complex<double>(1, 2)), TyxMetaType::ComplexDouble, "TyxDblComplex"},
        {TyxVariant("text"), TyxMetaType::String, "TyxString"},
        {TyxVariant(TyxVariantPair(L"k", TyxVariant(1))), TyxMetaType::KeyValuePair,
         "std::pair<TyxString,TyxVariant>"},
        {TyxVariant(TyxVariantList()), TyxMetaType::VariantList, "std::vector<TyxVariant>"},
        {TyxVariant(TyxVariantMap()), TyxMetaType::VariantMap,
         "std::map<TyxString,TyxVariant,TyxLexigraphicalNoCase>"},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(c.variant.type(), c.code) << c.className;
        EXPECT_EQ(c.variant.impl().className(), fromUTF8(c.className));
    }
    EXPECT_EQ(TyxVariant::typeFromName(L"bool"), TyxMetaType::Bool);
    EXPECT_EQ(TyxVariant::typeFromName(L"Bool"), TyxMetaType::Invalid);
    // By code and a pointer to the value.
    const double value = 4.25;
    const TyxVariant made(TyxMetaType::Double, &value);
    EXPECT_EQ(made.value<double>(), 4.25);
    EXPECT_EQ(TyxVariant(TyxMetaType::Int, nullptr).value<int>(), 0);
    EXPECT_FALSE(TyxVariant(TyxMetaType::Invalid, &value).isValid());
}

TEST(TyxVariantTest, ValueConvertsOrGivesTheDefault)
{
    // A char of -1 widens with its sign: all bits set.
    EXPECT_EQ(TyxVariant(static_cast<char>(-1)).value<wchar_t>(), static_cast<wchar_t>(-1));
    EXPECT_EQ(TyxVariant(L"h\u00e9").value<std::string>(), "h\xc3\xa9");
    double d = 7.0;
    EXPECT_FALSE(TyxVariant(L"abc").value(TyxMetaType::Double, &d));
    EXPECT_EQ(d, 0.0);
    // No cast from a list to an integer: the target's default and false.
    int i = 9;
    EXPECT_FALSE(TyxVariant(TyxVariantList{TyxVariant(1)}).value(TyxMetaType::Int, &i));
    EXPECT_EQ(i, 0);
    TyxVariant copy;
    const TyxVariant original(L"abc");
    EXPECT_TRUE(original.value(TyxMetaType::fromString(L"TyxVariant"), &copy));
    EXPECT_EQ(copy.value<TyxString>(), L"abc");
    EXPECT_NE(copy.impl().constData(), original.impl().constData());
}

TEST(TyxVariantTest, EqualityInTheLeftSidesTypeAndCopiesShare)
{
    EXPECT_TRUE(TyxVariant("1") == TyxVariant(1));
    // Left side text compares text: "1.50" against the text of 1.5.
    EXPECT_FALSE(TyxVariant("1.50") == TyxVariant(1.5));
    EXPECT_TRUE(TyxVariant(1.5) == TyxVariant("1.50"));
    EXPECT_TRUE(TyxVariant(1.0) == TyxVariant(1.0 + 1e-9));
    EXPECT_FALSE(TyxVariant(1.0) == TyxVariant(1.0 + 1e-6));
    EXPECT_TRUE(TyxVariant(2) == TyxVariant(2.9));
    EXPECT_FALSE(TyxVariant(2.9) == TyxVariant(2));
    EXPECT_TRUE(TyxVariant(TyxVariantList{TyxVariant(1)}) == TyxVariant(TyxVariantList{TyxVariant("1")}));
    EXPECT_TRUE(TyxVariant(L"X") != TyxVariant(L"x"));

    // Copies share; text assignment keeps them apart.
    TyxVariant a(L"one");
    const void *before = a.impl().constData();
    a = "two"; // sole owner: in place
    EXPECT_EQ(a.impl().constData(), before);
    EXPECT_EQ(a.value<TyxString>(), L"two");

    TyxVariant b = a;
    EXPECT_EQ(b.impl().constData(), a.impl().constData());
    a = L"three"; // shared: a gets a new value, b keeps its own
    EXPECT_NE(a.impl().constData(), b.impl().constData());
    EXPECT_EQ(a.value<TyxString>(), L"three");
    EXPECT_EQ(b.value<TyxString>(), L"two");

    TyxVariant d(L'a');
    TyxVariant e = d;
    d = 'b';
    EXPECT_EQ(d.value<wchar_t>(), L'b');
    EXPECT_EQ(e.value<wchar_t>(), L'a');
}

TEST(TyxVariantTest, MovesTakeTheValueAndLeaveTheSourceInvalid)
{
    TyxVariant a(L"text");
    const TyxVariant copy = a;
    const void *data = a.impl().constData();

    TyxVariant b(std::move(a));
    EXPECT_EQ(b.impl().constData(), data);
    EXPECT_TRUE(b.isShared()); // with the copy, as before the move
    EXPECT_FALSE(a.isValid());
    a = "again"; // a moved-from variant takes a new value
    EXPECT_EQ(a.value<TyxString>(), L"again");
    EXPECT_EQ(copy.value<TyxString>(), L"text");

    TyxVariant c(7);
    c = std::move(b);
    EXPECT_EQ(c.impl().constData(), data);
    EXPECT_FALSE(b.isValid());
    TyxVariant &same = c;
    c = std::move(same);
    EXPECT_EQ(c.value<TyxString>(), L"text");

    // Every invalid variant holds the one invalid value, which no count marks
    // as shared.
    const TyxVariant none;
    const TyxVariant other = none;
    EXPECT_EQ(&none.impl(), &b.impl());
    EXPECT_FALSE(other.isShared());
    EXPECT_TRUE(none == other);
}

TEST(TyxVariantTest, StreamFormsReadBackAndTheInvalidFormReadsAsText)
{
    struct Case {
        TyxVariant variant;
        const wchar_t *text;
    };
    TyxVariantMap map;
    map[L"b"] = TyxVariant(2);
    map[L"a"] = TyxVariant(L"x");
    const Case cases[] = {
        {TyxVariant(true), L"Bool,true"},
        {TyxVariant(-3), L"Int,-3"},
        {TyxVariant(0.1234567), L"Double,0.123457"},
        {TyxVariant(std::complex<double>(1, -2)), L"ComplexDouble,(1,-2)"},
        {TyxVariant(L"a b"), L"TyxString,a b"},
        {TyxVariant(L""), L"TyxString,"},
        {TyxVariant(TyxStrList{L"a", L"b"}), L"TyxStrList,(a,b)"},
        {TyxVariant(TyxVariantList{TyxVariant(1), TyxVariant(L"x")}), L"TyxVariantList,[Int,1,TyxString,x]"},
        {TyxVariant(TyxVariantList()), L"TyxVariantList,[]"},
        {TyxVariant(map), L"TyxVariantMap,{a:TyxString,x,b:Int,2}"},
        {TyxVariant(TyxVariantPair(L"key", TyxVariant(1.5))), L"TyxKeyValuePair,key,Double,1.5"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(toUTF8(c.text));
        EXPECT_EQ(streamed(c.variant), c.text);
        TyxVariant back;
        EXPECT_FALSE(readFails(c.text, back));
        EXPECT_EQ(back.type(), c.variant.type());
        EXPECT_EQ(streamed(back), c.text);
        // The double's text keeps six digits only.
        EXPECT_TRUE(c.variant.type() == TyxMetaType::Double || back == c.variant);
    }

    EXPECT_EQ(streamed<char>(TyxVariant(L"\u00e9")), "TyxString,\xc3\xa9");
    EXPECT_EQ(streamed<char>(TyxVariantPair(L"k", TyxVariant(1))), "k,Int,1");
    TyxVariantPair pair;
    EXPECT_FALSE(readFails(L"k,Int,4", pair));
    EXPECT_EQ(pair.first, L"k");
    EXPECT_EQ(pair.second.value<int>(), 4);

    const TyxVariant a;
    EXPECT_TRUE(a == TyxVariant());
    EXPECT_FALSE(a == TyxVariant(0));
    double d = 5.0;
    EXPECT_FALSE(a.value(TyxMetaType::Double, &d));
    EXPECT_EQ(d, 0.0);
    EXPECT_TRUE(a.value(TyxMetaType::Invalid, &d));
    EXPECT_EQ(streamed(a), L", ");
    // ", " names no type with a prototype, so it reads back as a string
    // variant holding empty text.
    const struct {
        const wchar_t *text;
        const wchar_t *value;
    } invalidForms[] = {
        {L", ", L""}, {L",", L""}, {L"  ,  ", L""}, {L", abc", L"abc"}, {L"NoSuchType,abc", L"abc"},
    };
    for (const auto &c : invalidForms) {
        SCOPED_TRACE(toUTF8(c.text));
        TyxVariant read;
        EXPECT_FALSE(readFails(c.text, read));
        EXPECT_EQ(read.type(), TyxMetaType::String);
        EXPECT_EQ(read.value<TyxString>(), c.value);
    }
}

TEST(TyxVariantTest, ReadingDetailsAndMalformedInput)
{
    EXPECT_EQ(readWide(L"TyxString,  \"quoted, text\" tail").value<TyxString>(), L"quoted, text");
    EXPECT_EQ(readWide(L" Int , 42 ").value<int>(), 42);
    // A comma inside a string element does not survive a list.
    const TyxVariant list = readWide(L"TyxVariantList,[TyxString,a,Int,1]");
    const auto elements = list.value<TyxVariantList>();
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[1].value<int>(), 1);
    // Only the first line is read.
    std::wistringstream lines(L"Int,1\nInt,2\n");
    TyxVariant first;
    TyxVariant second;
    lines >> first >> second;
    EXPECT_EQ(first.value<int>(), 1);
    EXPECT_EQ(second.value<int>(), 2);

    // Malformed input fails the stream.
    struct Case {
        const wchar_t *text;
        TyxMetaType::Code code;
    };
    const Case cases[] = {
        {L"Int,abc", TyxMetaType::Int},
        {L"Double,", TyxMetaType::Double},
        {L"TyxVariantMap,{a}", TyxMetaType::VariantMap},
        {L"TyxVariantList,[Int,x,Int,2]", TyxMetaType::VariantList},
        {L"Int", TyxMetaType::Invalid},
        {L"", TyxMetaType::Invalid},
    };
    for (const Case &c : cases) {
        TyxVariant v;
        EXPECT_TRUE(readFails(c.text, v)) << toUTF8(c.text);
        EXPECT_EQ(v.type(), c.code) << toUTF8(c.text);
    }
}

// Building the table from two threads at first use: see the threads tests.
TEST(TyxMetaTypeTest, CodesAndNamesBothWaysRegisteredCodesAndStreamsInAnyCase)
{
    const std::vector<TyxString> names = splitStr(
        L"Bool Int8 UInt8 Int16 UInt16 Int UInt Int64 UInt64 Float Double ComplexDouble TyxI64Rational "
        L"TyxU64Rational TyxChar TyxString TyxStrList TyxEqnTile TyxBufferPtr TyxI32Coord TyxDblCoord "
        L"TyxDblCoord2D TyxU32Size TyxImageSize TyxUnits TyxScalar TyxImageROI TyxDataType TyxDataLayout "
        L"TyxColorModel TyxByteOrder TyxKeyValuePair TyxVariantList TyxVariantMap",
        L" ", false);
    ASSERT_EQ(names.size(), 34u);
    for (int code = 0; code < 34; ++code) {
        const TyxMetaType type(code);
        EXPECT_EQ(type.toString(), names[code]);
        EXPECT_EQ(TyxMetaType::fromString(names[code]).toEnum(), code);
        EXPECT_EQ(type.isNumeric(), code < 15 || code == 25) << code;
        EXPECT_EQ(TyxMetaType::fromTypeID(type.typeID()), type);
    }
    const TyxStrList keys = TyxMetaType::allKeys();
    EXPECT_EQ(std::vector<TyxString>(keys.begin(), keys.begin() + 34), names);
    EXPECT_FALSE(TyxMetaType(-1).isValid());
    EXPECT_FALSE(TyxMetaType(35).isValid());
    EXPECT_FALSE(TyxMetaType::isValid(L""));
    EXPECT_EQ(TyxMetaType::fromTypeID(internal::typeIdOf(L"int")), TyxMetaType::Int);
    EXPECT_EQ(TyxMetaType::fromTypeID(internal::typeIdOf(L"TyxI64")), TyxMetaType::Int64);
    EXPECT_EQ(TyxMetaType::fromTypeID(12345), TyxMetaType::Invalid);

    // Registered codes start at 1024.
    using Registrar = internal::TyxVariantRegistrar;
    const TyxMetaType first = Registrar::registerName(L"TyxMetaTypeTestFirst");
    const TyxMetaType second = Registrar::registerName(L"TyxMetaTypeTestSecond");
    EXPECT_GE(first.toEnum(), TyxMetaType::FirstRegistered);
    EXPECT_EQ(second.toEnum(), first.toEnum() + 1);
    EXPECT_EQ(Registrar::registerName(L"TyxMetaTypeTestFirst"), first);
    EXPECT_EQ(TyxMetaType(static_cast<int>(first.toEnum())), first);
    // A name or identity already known gives its existing code.
    EXPECT_EQ(Registrar::registerName(L"double"), TyxMetaType::Double);
    EXPECT_EQ(Registrar::registerName(L""), TyxMetaType::Invalid);
    // The aliases of value() hold run-time codes too.
    EXPECT_GE(TyxMetaType::fromString(L"StdString").toEnum(), TyxMetaType::FirstRegistered);

    // Streams read names in any case.
    std::wistringstream in(L"  tyxstring double nonsense");
    TyxMetaType a, b, c(TyxMetaType::Int);
    in >> a >> b >> c;
    EXPECT_EQ(a, TyxMetaType::String);
    EXPECT_EQ(b, TyxMetaType::Double);
    EXPECT_EQ(c, TyxMetaType::Invalid);
}

// A type from outside the library, given a code at run time. Casts such types
// add to core types are exercised by the later areas' own variant types.
struct Probe {
    int level = 0;
    bool operator==(const Probe &other) const { return level == other.level; }
};

} // namespace

template <>
struct tyx::internal::TyxVariantTraits<Probe> : TyxRegisteredVariantTraits<Probe> {
    static TyxString className() { return L"TyxTestProbe"; }
};

template <>
struct tyx::internal::TyxDefaultCasts<Probe> {
    static bool toString(const Probe &value, TyxString &text)
    {
        text = L"probe " + integerToString(value.level);
        return true;
    }
    static bool fromString(const TyxString &text, Probe &value)
    {
        value.level = static_cast<int>(parseInteger(text, true).bits);
        return true;
    }
    static void getDefault(Probe &value) { value = Probe(); }
};

namespace {

TEST(TyxVariantTest, LaterTypeJoinsWithoutEditingTheLibrary)
{
    ASSERT_TRUE(internal::TyxVariantRegistrar::join<Probe>());
    const TyxMetaType type = internal::TyxVariantTraits<Probe>::type();

    const TyxVariant v(Probe{3});
    EXPECT_EQ(v.type(), type);
    EXPECT_EQ(v.value<Probe>().level, 3);
    EXPECT_EQ(v.value<int>(), 0); // no cast to int
    EXPECT_EQ(streamed(v), L"TyxTestProbe,probe 3");
    EXPECT_EQ(readWide(L"TyxTestProbe,7").value<Probe>().level, 7);

    // A second registration of a code replaces the first.
    using Registrar = internal::TyxVariantRegistrar;
    const auto nine = std::make_shared<TyxVariantImpl<Probe>>(Probe{9});
    EXPECT_TRUE(Registrar::registerPrototype(type, nine));
    EXPECT_EQ(TyxVariant::prototype(type).value<Probe>().level, 9);
    EXPECT_EQ(TyxVariant(type, nullptr).value<Probe>().level, 9);
    EXPECT_FALSE(Registrar::registerPrototype(type, nullptr));
    EXPECT_FALSE(Registrar::registerPrototype(TyxMetaType(), nine));
    EXPECT_EQ(TyxVariant::prototype(type).value<Probe>().level, 9);
}

} // namespace
