#include <tyx/TyxDataLayout.h>
#include <tyx/TyxDataType.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace {

using namespace tyx;
using N = TyxNumericType;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kFloatMax = 3.4028234663852886e38;

TEST(TyxDataTypeTest, TableRowsAndPredicates)
{
    struct Row {
        N::Code code;
        const wchar_t *key;
        unsigned size;
        double min;
        double max;
        bool isSigned;
    };
    const Row rows[] = {
        {N::I8, L"I8", 1, -128, 127, true},
        {N::U64, L"U64", 8, 0, 1.8446744073709552e19, false},
        {N::Float, L"Float", 4, -kFloatMax, kFloatMax, true},
        {N::ComplexDouble, L"ComplexDouble", 16, -1.7976931348623157e308, 1.7976931348623157e308, true},
        {N::Invalid, L"", 0, 0, 0, true},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.code);
        const TyxDataType type(row.code);
        EXPECT_EQ(type.toString(), TyxString(row.key));
        EXPECT_EQ(type.size(), row.size);
        EXPECT_EQ(type.physicalMinValue(), row.min);
        EXPECT_EQ(type.physicalMaxValue(), row.max);
        EXPECT_EQ(type.isSigned(), row.isSigned);
    }
    EXPECT_EQ(TyxDataType::allKeys().size(), 12u);
}

TEST(TyxDataTypeTest, DepthIsNormalisedAndLimitsTheValues)
{
    struct Case {
        N::Code code;
        unsigned depth, logical;
        double min, max;
    };
    const Case cases[] = {
        {N::U16, 12, 12, 0, 4095},     {N::U16, 1, 1, 0, 1},
        {N::U16, 17, 16, 0, 65535},    {N::Float, 12, 32, -kFloatMax, kFloatMax},
        {N::I16, 12, 12, -2048, 2047}, {N::I8, 1, 1, -1, 0},
        {N::Invalid, 8, 0, 0, 0},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.code << " " << c.depth);
        const TyxDataType type(c.code, c.depth);
        EXPECT_EQ(type.logicalBitDepth(), c.logical);
        EXPECT_EQ(type.logicalMinValue(), c.min);
        EXPECT_EQ(type.logicalMaxValue(), c.max);
    }
    // Setting depth 0 gives the physical one.
    TyxDataType type(N::U16, 12);
    type.setLogicalBitDepth(0);
    EXPECT_EQ(type.logicalBitDepth(), 16u);
    for (int code : {12, -1}) {
        const TyxDataType invalid(static_cast<N::Code>(code), 8);
        EXPECT_EQ(invalid.code(), N::Invalid);
        EXPECT_FALSE(invalid.isValid());
    }
}

TEST(TyxDataTypeTest, KeysAndStreamForm)
{
    // The string constructor takes a key in any case, not the stream form.
    EXPECT_EQ(TyxDataType(TyxString(L"complexdouble")), TyxDataType(N::ComplexDouble));
    EXPECT_FALSE(TyxDataType(TyxString(L"(U16,12)")).isValid());

    std::wostringstream wide;
    wide << TyxDataType(N::U16, 12) << TyxDataType();
    EXPECT_EQ(wide.str(), L"(U16,12)(,0)");

    // The variant tests read the wide form.
    TyxDataType read;
    std::istringstream narrowIn("(Float,7)x");
    narrowIn >> read;
    EXPECT_EQ(read, TyxDataType(N::Float, 32));

    // A stream that ends early leaves the type alone.
    read = TyxDataType(N::U8);
    std::istringstream cut("(I16,");
    cut >> read;
    EXPECT_EQ(read, TyxDataType(N::U8));
}

TEST(TyxDataTypeTest, FromBitDepth)
{
    struct Case {
        unsigned depth;
        bool isSigned;
        TyxDataType expected;
    };
    const Case cases[] = {
        {0, false, TyxDataType(N::U8, 8)},    {8, true, TyxDataType(N::I8, 8)},
        {9, false, TyxDataType(N::U16, 9)},   {16, true, TyxDataType(N::I16, 16)},
        {17, false, TyxDataType(N::U32, 17)}, {32, true, TyxDataType(N::I32, 32)},
        {33, true, TyxDataType(N::I64, 33)},  {70, false, TyxDataType(N::U64, 64)},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(TyxDataType::fromBitDepth(c.depth, c.isSigned), c.expected) << c.depth;
    }
}

TEST(TyxDataTypeTest, FromMinMax)
{
    struct Case {
        double min, max;
        N::Code code;
        unsigned depth;
    };
    const Case cases[] = {
        {0, 255, N::U8, 8},
        {0, 256, N::U16, 8}, // a power of two gets one bit too few
        {0, 0, N::U8, 8},
        {0, 65536, N::U32, 16},
        {0, 4294967296.0, N::U64, 32},
        {0, 1.7976931348623157e308, N::U64, 64},
        {0, kInf, N::Double, 64},
        {0, kNaN, N::Double, 64},
        {-1, 3e9, N::I64, 64},
        {-128, 127, N::I8, 8},
        {-129, 127, N::I16, 16},
        {-1, 1e19, N::Float, 32},
        {-1e39, 0, N::Double, 64},
        {kNaN, 5, N::Double, 64},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.min << " " << c.max);
        const TyxDataType type = TyxDataType::fromMinMax(c.min, c.max);
        EXPECT_EQ(type.code(), c.code);
        EXPECT_EQ(type.logicalBitDepth(), c.depth);
    }
}

TEST(TyxDataTypeTest, LeastCommonIncludingItsGaps)
{
    struct Case {
        N::Code a, b, expected;
    };
    const Case cases[] = {
        {N::U8, N::I8, N::I16},
        {N::U16, N::I8, N::I32},
        {N::U32, N::I16, N::Double},
        {N::U64, N::I8, N::U64},
        {N::Float, N::I32, N::Double},
        {N::Float, N::I64, N::Float},
        {N::ComplexFloat, N::Double, N::ComplexDouble},
        {N::ComplexFloat, N::I64, N::ComplexFloat},
        {N::I64, N::U32, N::I64},
        {N::Invalid, N::U8, N::Invalid},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " " << c.b);
        EXPECT_EQ(TyxDataType::leastCommon(TyxDataType(c.a), TyxDataType(c.b)).code(), c.expected);
    }
    // The larger depth, normalised in the result type.
    EXPECT_EQ(TyxDataType::leastCommon(TyxDataType(N::U16, 12), TyxDataType(N::U16, 10)),
              TyxDataType(N::U16, 12));
    EXPECT_EQ(TyxDataType::leastCommon(TyxDataType(N::U8, 5), TyxDataType(N::I8, 3)), TyxDataType(N::I16, 5));
    EXPECT_EQ(TyxDataType::leastCommon(TyxDataType(N::U8, 5), TyxDataType(N::Float)),
              TyxDataType(N::Float, 32));
}

TEST(TyxDataLayoutTest, KeysAndStreams)
{
    EXPECT_EQ(TyxDataLayout(static_cast<TyxDataLayout::Code>(9)), TyxDataLayout::Invalid);
    EXPECT_EQ(TyxDataLayout(TyxString(L"Planar")), TyxDataLayout::Invalid);

    // The variant tests take the wide forms.
    std::ostringstream out;
    out << TyxDataLayout(TyxDataLayout::BlockInterleaved) << '|' << TyxDataLayout();
    EXPECT_EQ(out.str(), "BlockInterleaved|");
    std::istringstream in("lineinterleaved Nonsense");
    TyxDataLayout layout;
    in >> layout;
    EXPECT_EQ(layout, TyxDataLayout::LineInterleaved);
    in >> layout;
    EXPECT_EQ(layout, TyxDataLayout::Invalid);
    EXPECT_FALSE(in.fail());
}

} // namespace
