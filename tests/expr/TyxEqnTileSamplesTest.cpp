// Typed sample views of tiles: samples<T>() with its checks, and wrap().
#include <gtest/gtest.h>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>

#include <complex>
#include <cstdint>
#include <vector>

#include "TyxRecordingHandler.h"

namespace {

using namespace tyx;
using tyx::test::HandlerScope;

template <class T>
class TyxEqnTileSamplesTest : public ::testing::Test {
};

using SampleTypes = ::testing::Types<int8_t, uint8_t, int16_t, uint16_t, int32_t, uint32_t, int64_t, uint64_t,
                                     float, double, std::complex<float>, std::complex<double>>;
TYPED_TEST_SUITE(TyxEqnTileSamplesTest, SampleTypes);

TYPED_TEST(TyxEqnTileSamplesTest, SpanCoversOnlyTheSamplesOfItsOwnType)
{
    constexpr TyxNumericType::Code code = TyxNumericType::codeOf<TypeParam>();
    TyxEqnTile tile(TyxDataType(code), 5);
    const std::span<TypeParam> view = tile.samples<TypeParam>();
    ASSERT_EQ(view.size(), 5u);
    EXPECT_EQ(static_cast<const void *>(view.data()), tile.buffer()->data());
    view[4] = TypeParam(7);

    const TyxEqnTile &constTile = tile;
    const std::span<const TypeParam> constView = constTile.samples<TypeParam>();
    ASSERT_EQ(constView.size(), 5u);
    EXPECT_EQ(constView[4], TypeParam(7));

    // Another type is refused with both names. A type of the same size where there is one, so the check
    // cannot be by size.
    const TyxNumericType::Code other =
        code == TyxNumericType::Float ? TyxNumericType::I32 : TyxNumericType::Float;
    const TyxEqnTile otherTile(TyxDataType(other), 3);
    HandlerScope scope;
    EXPECT_TRUE(otherTile.samples<TypeParam>().empty());
    EXPECT_EQ(scope.onlyText(), L"TyxEqnTile::samples: asked for " + TyxDataType(code).toString() +
                                    L" samples, but the tile holds " + TyxDataType(other).toString());
}

TEST(TyxEqnTileSamplesTest, RefusalsThrowOrPostTheirTexts)
{
    // The default handler throws the refusal.
    TyxEqnTile tile(TyxDataType(TyxNumericType::U16), 4);
    EXPECT_THROW(tile.samples<uint8_t>(), TyxTextMsg);

    HandlerScope scope;
    const TyxEqnTile strided(tile.buffer(), TyxDataType(TyxNumericType::U16), 2, 2);
    EXPECT_TRUE(strided.samples<uint16_t>().empty());

    // A buffer of 4 U16 samples cannot hold a tile of 5.
    const TyxEqnTile tooLong(tile.buffer(), TyxDataType(TyxNumericType::U16), 5, 1);
    EXPECT_TRUE(tooLong.samples<uint16_t>().empty());

    const std::vector<TyxString> expected = {
        L"TyxEqnTile::samples: the step is 2, not 1",
        L"TyxEqnTile::samples: the buffer holds fewer than 5 samples",
    };
    EXPECT_EQ(scope.texts(), expected);

    // Empty tiles give empty spans silently.
    EXPECT_TRUE(TyxEqnTile().samples<double>().empty());
    EXPECT_TRUE(TyxEqnTile(TyxDataType(TyxNumericType::U8), 0).samples<uint8_t>().empty());
    EXPECT_EQ(scope.texts().size(), 2u);
}

TEST(TyxEqnTileSamplesTest, WrappedMemoryIsSharedNotCopied)
{
    const TyxEqnTile nothing = TyxEqnTile::wrap(std::span<float>());
    EXPECT_TRUE(nothing.empty());
    EXPECT_EQ(nothing.dataType().code(), TyxNumericType::Float);

    std::vector<uint16_t> a = {10, 11, 12}, b = {2, 1, 4};
    const TyxEqnTile ta = TyxEqnTile::wrap(std::span<uint16_t>(a));
    EXPECT_EQ(ta.dataType().code(), TyxNumericType::U16);
    EXPECT_EQ(ta.size(), 3u);
    EXPECT_EQ(ta.step(), 1u);
    EXPECT_FALSE(ta.buffer()->ownsData());
    EXPECT_EQ(ta.samples<uint16_t>().data(), a.data());

    TyxEqnParser parser;
    ASSERT_EQ(parser.parse(L"(a - b) / (a + b)"), 0);
    parser.setValue(L"a", TyxVariant(ta));
    parser.setValue(L"b", TyxVariant(TyxEqnTile::wrap(std::span<uint16_t>(b))));
    EXPECT_EQ(parser.evaluate().value<TyxEqnTile>().samples<double>()[2], 0.5);

    // A change to the caller's memory is seen by the next evaluation.
    a[0] = 30;
    parser.setValue(L"a", TyxVariant(ta));
    EXPECT_EQ(parser.evaluate().value<TyxEqnTile>().samples<double>()[0], (30.0 - 2.0) / (30.0 + 2.0));
}

} // namespace
