#include <tyx/TyxBuffer.h>
#include <tyx/TyxByteOrder.h>
#include <tyx/TyxDataLayout.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxRational.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace tyx;
using N = TyxNumericType;

// Every code of a code class, the invalid one included, becomes that code
// over 1 through a variant; one cast template serves every kind of rational.
template <class Code>
void expectCodesBecomeRationals(int invalidCode)
{
    for (int code = 0; code <= invalidCode; ++code) {
        const TyxVariant held(Code(static_cast<typename internal::TyxCodeClass<Code>::Code>(code)));
        EXPECT_EQ(held.value<TyxRational<int64_t>>(), TyxRational<int64_t>(code, 1)) << code;
    }
}

// The variant text round trip of every image type is in the XML tests.
TEST(TyxImageVariantTest, CodeClassesJoin)
{
    const TyxVariant v(TyxDataType(N::U16, 12));
    EXPECT_EQ(v.value<int>(), 3);

    // Integers give the bare code with its physical depth; text the stream form.
    EXPECT_EQ(TyxVariant(9).value<TyxDataType>(), TyxDataType(N::Double));
    EXPECT_EQ(TyxVariant(L"(I16,9)").value<TyxDataType>(), TyxDataType(N::I16, 9));
    TyxDataType parsed(N::U8);
    EXPECT_FALSE(TyxVariant(L"U16").value(TyxMetaType(TyxMetaType::DataType), &parsed));

    // Layouts and byte orders from numbers and keys.
    EXPECT_EQ(TyxVariant(1).value<TyxDataLayout>(), TyxDataLayout::BandInterleaved);
    EXPECT_EQ(TyxVariant(L"pixelinterleaved").value<TyxDataLayout>(), TyxDataLayout::PixelInterleaved);

    const TyxVariant order{TyxByteOrder(TyxByteOrder::BigEndian)};
    EXPECT_EQ(order.value<TyxString>(), L"BigEndian");
    EXPECT_EQ(TyxVariant(7).value<TyxByteOrder>(), TyxByteOrder::Invalid);
    EXPECT_TRUE(TyxVariant(TyxByteOrder()) == TyxVariant(0));

    expectCodesBecomeRationals<TyxByteOrder>(TyxByteOrder::Invalid);
    expectCodesBecomeRationals<TyxDataLayout>(TyxDataLayout::Invalid);
    expectCodesBecomeRationals<TyxDataType>(N::Invalid);
}

TEST(TyxImageVariantTest, BufferPointerJoinsWithCode18)
{
    TyxBufferPtr a(new TyxBuffer(3, true));
    std::memcpy(a->data(), "abc", 3);
    const TyxBufferPtr b = a->clone();
    const TyxVariant va(a), vb(b);
    EXPECT_TRUE(va == vb);
    static_cast<char *>(b->data())[0] = 'x';
    EXPECT_FALSE(va == vb);
    EXPECT_FALSE(va == TyxVariant(TyxBufferPtr()));
    EXPECT_EQ(va.value<TyxBufferPtr>().get(), a.get());

    EXPECT_EQ(va.value<TyxString>().substr(0, 2), L"0x");
    EXPECT_EQ(TyxVariant(TyxBufferPtr()).value<TyxString>(), L"0x0");

    TyxBufferPtr target = a;
    EXPECT_FALSE(TyxVariant(L"0x1234").value(TyxMetaType(TyxMetaType::BufferPtr), &target));
    EXPECT_FALSE(target);
}

} // namespace
