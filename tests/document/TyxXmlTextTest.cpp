// Tests of the XML text of variants.
#include <tyx/TyxSimpleStream.h>

#include <gtest/gtest.h>

#include <sstream>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxCoord3D.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxStrList.h>

namespace {

using namespace tyx;

std::string xmlOf(const TyxVariant &value)
{
    std::ostringstream os;
    toXml(os, value);
    return os.str();
}

TEST(TyxXmlTextTest, EveryKindComesBackWithItsTypeAndExactText)
{
    static uint8_t bytes[] = {0, 1, 2, 250, 255};
    TyxObjectProxy document(L"Thing");
    document.setProperty(L"size", TyxVariant(uint16_t(3)));
    // Values given with their text must also write exactly that.
    const struct {
        TyxVariant value;
        const char *xml = nullptr;
    } cases[] = {
        {TyxVariant()},
        {TyxVariant(true)},
        {TyxVariant(static_cast<signed char>(-128))},
        {TyxVariant(static_cast<unsigned char>(255))},
        {TyxVariant(static_cast<short>(-32768))},
        {TyxVariant(static_cast<unsigned short>(65535))},
        {TyxVariant(-2147483647 - 1)},
        {TyxVariant(4294967295u)},
        {TyxVariant(int64_t(-9223372036854775807LL - 1))},
        {TyxVariant(uint64_t(18446744073709551615ULL))},
        {TyxVariant(0.1f)},
        {TyxVariant(0.1), R"(<variant type="Double">0.1</variant>)"},
        {TyxVariant(-std::numeric_limits<double>::infinity())},
        {TyxVariant(std::complex<double>(1.5, -1e-300))},
        {TyxVariant(L'\u00e9')},
        {TyxVariant(L"<tag> & \"quotes\" \u00fc\U0001F600")},
        {TyxVariant(L" a"), R"(<variant type="TyxString" encoding="base64">IGE=</variant>)"},
        {TyxVariant(L"line\r\nend\x01.")},
        {TyxVariant(L"")},
        {TyxVariant(TyxStrList{L"x,y", L""})},
        {TyxVariant(TyxBufferPtr(new TyxBuffer(sizeof bytes, bytes, false))),
         R"(<variant type="TyxBufferPtr">AAEC+v8=</variant>)"},
        {TyxVariant(TyxBufferPtr()), R"(<variant type="TyxBufferPtr" null="true"/>)"},
        {TyxVariant(TyxCoord3D<double>(0.1, 1e300, -2.5))},
        {TyxVariant(TyxDataType(TyxNumericType::U16)), R"(<variant type="TyxDataType">(U16,16)</variant>)"},
        {TyxVariant(TyxVariantPair(L"k", TyxVariant(true))),
         R"(<variant type="TyxKeyValuePair" name="k"><variant type="Bool">true</variant></variant>)"},
        {TyxVariant(TyxVariantList{TyxVariant(1), TyxVariant(), TyxVariant(TyxVariantList{})}),
         R"(<variant type="TyxVariantList"><variant type="Int">1</variant><variant/>)"
         R"(<variant type="TyxVariantList"/></variant>)"},
        {TyxVariant(TyxVariantMap{{L"a", TyxVariant(1)}, {L"B", TyxVariant(L"two")}})},
        {TyxVariant(document)},
        {TyxVariant(
            TyxMetaProperty(L"width", TyxMetaType::Int, TyxMetaFlag(0x0008), L"Width", L"in pixels", L'w'))},
    };
    TyxEqnTile tile(TyxDataType(TyxNumericType::I16), 3);
    const short samples[] = {-1, 0, 300};
    std::copy(samples, samples + 3, tile.samples<short>().begin());
    for (const auto &[value, exact] : cases) {
        const std::string xml = xmlOf(value);
        if (exact) {
            EXPECT_EQ(xml, exact);
        }
        TyxVariant back(L"unchanged");
        std::istringstream is(xml);
        const TyxTextMsg msg = fromXml(is, back);
        ASSERT_TRUE(msg.empty()) << xml << "\n" << msg.what();
        EXPECT_EQ(back.type(), value.type()) << xml;
        EXPECT_TRUE(back == value) << xml;
        EXPECT_EQ(xmlOf(back), xml);
    }
    // A tile compares by identity only: its samples are compared here.
    TyxVariant back;
    ASSERT_TRUE(fromXml(std::string_view(xmlOf(TyxVariant(tile))), back).empty()) << xmlOf(TyxVariant(tile));
    ASSERT_EQ(back.type(), TyxMetaType::EqnTile);
    const TyxEqnTile read = back.value<TyxEqnTile>();
    EXPECT_TRUE(read.dataType() == tile.dataType());
    EXPECT_TRUE(std::equal(samples, samples + 3, read.samples<short>().begin(), read.samples<short>().end()));

    // A document alone is written as a top-level <object>; wide streams take the same text.
    std::ostringstream os;
    ASSERT_TRUE(TyxSimpleStream(TyxSimpleStream::Xml, false).write(os, document).empty());
    EXPECT_EQ(os.str(), R"(<object class="Thing"><variant key="size" type="UInt16">3</variant></object>)");
    std::wostringstream wide;
    toXml(wide, TyxVariant(L"\u00e9"));
    EXPECT_EQ(wide.str(), L"<variant type=\"TyxString\">\u00e9</variant>");
}

TEST(TyxXmlTextTest, TooDeepValuesAreCutSoThatTheTextReadsBack)
{
    TyxVariant deep(1);
    for (int i = 0; i < 150; ++i)
        deep = TyxVariant(TyxVariantList{deep});
    TyxVariant back;
    ASSERT_TRUE(fromXml(std::string_view(xmlOf(deep)), back).empty());
    int depth = 0;
    for (; back.type() == TyxMetaType::VariantList; ++depth)
        back = back.value<TyxVariantList>().front();
    EXPECT_EQ(depth, 98);
    EXPECT_FALSE(back.isValid());
}

TEST(TyxXmlTextTest, BadTextSaysWhatAndWhereAndLeavesTheValue)
{
    const struct {
        const char *xml;
        const wchar_t *message;
    } cases[] = {
        {"<variant type=\"Int\">12x</variant>", L"The value '12x' does not convert to Int at line 1."},
        {"<variant type=\"UInt8\">256</variant>", L"The value '256' does not convert to UInt8 at line 1."},
        {"<variant type=\"Nonsense\">1</variant>", L"Unknown type name 'Nonsense' at line 1."},
        {"<variant type=\"TyxVariantList\">\n<value/></variant>",
         L"Expected a <variant> element, found <value> at line 2."},
        {"<variant type=\"TyxVariantList\">text</variant>", L"A TyxVariantList may not hold text at line 1."},
        {"<variant type=\"Int\"><variant/></variant>",
         L"A Int value may not hold the element <variant> at line 1."},
        {"<variant type=\"TyxVariantMap\"><variant type=\"Int\">1</variant></variant>",
         L"A member of a TyxVariantMap has no key at line 1."},
        {"<variant type=\"TyxVariantMap\"><variant key=\"a\"/><variant key=\"A\"/></variant>",
         L"The key 'A' appears twice in a TyxVariantMap at line 1."},
        {"<variant type=\"TyxKeyValuePair\"><variant/></variant>",
         L"A TyxKeyValuePair has no name at line 1."},
        {"<variant type=\"TyxBufferPtr\">AQI</variant>",
         L"Truncated Base64 group: the text ends after 3 of 4 characters at line 1."},
        {"<variant type=\"TyxStrList\"><variant type=\"Int\">1</variant></variant>",
         L"A TyxStrList may hold only TyxString values at line 1."},
        {"<variant type=\"TyxObjectProxy\"><object/></variant>",
         L"An <object> element has no class at line 1."},
        {"<variant>1</variant>", L"A <variant> without a type may not hold text at line 1."},
        {"<variant/><variant/>", L"The XML text holds more than one top-level element."},
    };
    for (const auto &c : cases) {
        TyxVariant value(42);
        const TyxTextMsg msg = fromXml(std::string_view(c.xml), value);
        EXPECT_EQ(msg.text(), c.message) << c.xml;
        EXPECT_TRUE(value == TyxVariant(42)) << c.xml;
    }
    TyxVariant value(42);
    const TyxTextMsg msg = fromXml(std::string_view(""), value);
    EXPECT_NE(msg.text().find(L"XML_ERROR_EMPTY_DOCUMENT"), TyxString::npos) << msg.what();
    EXPECT_TRUE(value == TyxVariant(42));
}

} // namespace
