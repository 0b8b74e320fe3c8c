#include <tyx/TyxMetaType.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using tyx::TyxMetaType;
using tyx::TyxString;

// Building the table from two threads at first use: see the threads tests.
TEST(TyxMetaTypeTest, CodesAndNames)
{
    const std::vector<TyxString> names = tyx::splitStr(
        L"Bool Int8 UInt8 Int16 UInt16 Int UInt Int64 UInt64 Float Double ComplexDouble TyxI64Rational "
        L"TyxU64Rational TyxChar TyxString TyxStrList TyxEqnTile TyxBufferPtr TyxI32Coord TyxDblCoord "
        L"TyxDblCoord2D TyxU32Size TyxImageSize TyxUnits TyxScalar TyxImageROI TyxDataType TyxDataLayout "
        L"TyxColorModel TyxByteOrder TyxKeyValuePair TyxVariantList TyxVariantMap",
        L" ", false);
    ASSERT_EQ(names.size(), 34u);
    for (int code = 0; code < 34; ++code) {
        const TyxMetaType type(code);
        EXPECT_EQ(type.toEnum(), code);
        EXPECT_EQ(type.toString(), names[code]);
        EXPECT_EQ(TyxMetaType::fromString(names[code]).toEnum(), code);
        EXPECT_EQ(type.isNumeric(), code < 15 || code == 25) << code;
        EXPECT_NE(type.typeID(), 0u);
        EXPECT_EQ(TyxMetaType::fromTypeID(type.typeID()), type);
    }
    EXPECT_EQ(TyxMetaType().toEnum(), TyxMetaType::Invalid);
    EXPECT_EQ(TyxMetaType().typeID(), 0u);
    const tyx::TyxStrList keys = TyxMetaType::allKeys();
    EXPECT_EQ(std::vector<TyxString>(keys.begin(), keys.begin() + 34), names);
}

TEST(TyxMetaTypeTest, ConstructionChecksTheCode)
{
    EXPECT_FALSE(TyxMetaType(-1).isValid());
    EXPECT_FALSE(TyxMetaType(35).isValid());
    EXPECT_EQ(TyxMetaType(TyxString(L"double")), TyxMetaType::Double);
    EXPECT_EQ(TyxMetaType(TyxString(L"no such type")), TyxMetaType::Invalid);
    EXPECT_TRUE(TyxMetaType::isValid(L"tyxstring"));
    EXPECT_FALSE(TyxMetaType::isValid(L""));
    const TyxString &name = TyxMetaType(TyxMetaType::Float);
    EXPECT_EQ(name, L"Float");
    EXPECT_EQ(TyxMetaType::fromTypeID(tyx::internal::typeIdOf(L"int")), TyxMetaType::Int);
    EXPECT_EQ(TyxMetaType::fromTypeID(tyx::internal::typeIdOf(L"TyxI64")), TyxMetaType::Int64);
    EXPECT_EQ(TyxMetaType::fromTypeID(12345), TyxMetaType::Invalid);
}

TEST(TyxMetaTypeTest, RegisteredCodesStartAt1024)
{
    using Registrar = tyx::internal::TyxVariantRegistrar;
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
}

TEST(TyxMetaTypeTest, Streams)
{
    std::ostringstream narrow;
    narrow << TyxMetaType(TyxMetaType::UInt16);
    EXPECT_EQ(narrow.str(), "UInt16");
    std::wistringstream in(L"  tyxstring double nonsense");
    TyxMetaType a, b, c(TyxMetaType::Int);
    in >> a >> b >> c;
    EXPECT_EQ(a, TyxMetaType::String);
    EXPECT_EQ(b, TyxMetaType::Double);
    EXPECT_EQ(c, TyxMetaType::Invalid);
}

} // namespace
