// Tests of tiles: sharing, steps, element-wise operations, reductions and their text.
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <vector>

#include "TyxEqnTestSupport.h"

namespace {

using namespace tyx;
using namespace tyx::testing;
using N = TyxNumericType;
using Cplx = std::complex<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TyxEqnTile doubles(const std::vector<double> &values) { return tileOf(N::Double, values); }

// The samples of a result, which must be of type T.
template <class T = double>
std::vector<T> resultOf(const TyxEqnTile &tile)
{
    EXPECT_EQ(tile.dataType(), TyxDataType(N::codeOf<T>()));
    return valuesOf<T>(tile);
}

// An empty result: the default tile.
void expectDefault(const TyxEqnTile &tile)
{
    EXPECT_TRUE(tile.isEmpty());
    EXPECT_FALSE(tile.dataType().isValid());
    EXPECT_FALSE(tile.buffer());
    EXPECT_EQ(tile.step(), 1u);
}

TEST(TyxEqnTileTest, ConstructionSharingAndText)
{
    expectDefault(TyxEqnTile());
    TyxEqnTile tile(TyxDataType(N::U16, 12), 5);
    ASSERT_TRUE(tile.buffer());
    EXPECT_EQ(tile.buffer()->size(), 10u);

    TyxEqnTile shared = tile;
    EXPECT_EQ(shared.buffer().get(), tile.buffer().get());
    const TyxEqnTile deep = tile.clone();
    EXPECT_NE(deep.buffer().get(), tile.buffer().get());
    EXPECT_TRUE(*deep.buffer() == *tile.buffer());
    expectDefault(TyxEqnTile().clone());

    tile.initialize(TyxDataType(N::Double), 0);
    EXPECT_FALSE(tile.buffer());
    EXPECT_EQ(tile.dataType(), TyxDataType(N::Double));
    tile.initialize(TyxDataType(), 4);
    EXPECT_FALSE(tile.buffer());
    EXPECT_EQ(tile.size(), 4u);
    // The shared copy still holds the first buffer.
    EXPECT_EQ(shared.buffer()->size(), 10u);

    // A variant shares the tile.
    const tyx::TyxVariant v(shared);
    EXPECT_EQ(v.type(), tyx::TyxMetaType::EqnTile);
    EXPECT_EQ(v.value<TyxEqnTile>().buffer().get(), shared.buffer().get());
    expectDefault(tyx::TyxVariant(1.0).value<TyxEqnTile>());

    // The stream form shows eight samples; shorter forms show in the expression results.
    std::wostringstream text;
    text << doubles({0.5, 1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(text.str(), L"(Double,64)[9]{0.5,1,2,3,4,5,6,7,...}");
}

TEST(TyxEqnTileTest, StepsAndSizes)
{
    // Step 0 reads its one sample for every element.
    TyxBufferPtr one(new TyxBuffer(sizeof(double), true));
    *static_cast<double *>(one->data()) = 5.0;
    const TyxEqnTile repeated(one, TyxDataType(N::Double), 4, 0);
    EXPECT_EQ(resultOf(repeated + doubles({1, 2, 3, 4})), (std::vector<double>{6, 7, 8, 9}));
    EXPECT_EQ(repeated.sum(), 20.0);

    // A tile of one element is not broadcast.
    EXPECT_EQ(resultOf(doubles({1}) + doubles({1, 2, 3})), (std::vector<double>{2}));

    // A buffer too small for its elements is never read.
    const TyxEqnTile tooLong(one, TyxDataType(N::Double), 2, 1);
    expectDefault(tooLong + 1.0);
    EXPECT_EQ(tooLong.max(), 2.2250738585072014e-308);

    // Tiles of size 0 give results of size 0.
    const TyxEqnTile none = doubles({}) + doubles({1});
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(none.dataType(), TyxDataType(N::Double));
}

TEST(TyxEqnTileTest, ComparisonsAndTruth)
{
    // Above 1 a unit in the last place is the epsilon.
    const double ulp = std::numeric_limits<double>::epsilon();
    const double tiny = std::numeric_limits<double>::denorm_min();
    const TyxEqnTile left = doubles({1, 1, 1, 0.0, kNaN, tiny, -1});
    const TyxEqnTile right = doubles({1 + ulp, 1 + 4 * ulp, 1 + 5 * ulp, -0.0, kNaN, -tiny, -1 - ulp});
    EXPECT_EQ(resultOf(left == right), (std::vector<double>{1, 1, 0, 1, 0, 1, 1}));

    const TyxEqnTile z = tileOf<Cplx>(N::ComplexDouble, {{1, 0}, {1, 1}});
    EXPECT_EQ(resultOf(z == 1.0), (std::vector<double>{1, 0}));

    TyxEqnTile a = tileOf<uint16_t>(N::U16, {1, 5, 9});
    const TyxEqnTile b = tileOf<uint16_t>(N::U16, {5, 5, 5});
    EXPECT_EQ(resultOf(a < b), (std::vector<double>{1, 0, 0}));

    expectDefault(a == tileOf<uint16_t>(N::U16, {1, 5}));
    expectDefault(a == tileOf<int16_t>(N::I16, {1, 5, 9}));
    TyxEqnTile twelveBit(a.buffer(), TyxDataType(N::U16, 12), 3, 1);
    expectDefault(a == twelveBit);
    expectDefault(z < z);

    // The truth of a tile: false for any samples, even NaN; size 0 with a
    // buffer is true, without a buffer false.
    EXPECT_FALSE(static_cast<bool>(tileOf<uint8_t>(N::U8, {1, 1})));
    EXPECT_FALSE(static_cast<bool>(doubles({kNaN})));
    const TyxEqnTile none(TyxBufferPtr(new TyxBuffer(8, true)), TyxDataType(N::Double), 0, 1);
    EXPECT_TRUE(static_cast<bool>(none));
    EXPECT_FALSE(static_cast<bool>(doubles({})));
}

TEST(TyxEqnTileTest, UnaryFunctions)
{
    EXPECT_EQ(resultOf(doubles({2.5, -2.5, 1.7, -1.7}).round()), (std::vector<double>{3, -3, 2, -2}));

    const TyxEqnTile z = tileOf<std::complex<float>>(N::ComplexFloat, {{3, 4}});
    EXPECT_EQ(resultOf(z.abs()), (std::vector<double>{5}));
    for (const TyxEqnTile &t : {z.ceil(), z.floor(), z.trunc(), z.round(), z.j0(), z.jn(2), z.factorial()})
        expectDefault(t);

    // sinc is sin(x) / x, not normalised, and 1 below the double epsilon.
    const std::vector<double> sinc = resultOf(doubles({0.0, 0.5, std::numbers::pi, -1e-300, kNaN}).sinc());
    EXPECT_EQ(sinc[0], 1.0);
    EXPECT_EQ(sinc[3], 1.0);
    EXPECT_TRUE(std::isnan(sinc[4]));

    const std::vector<double> f = resultOf(doubles({0, 5, 3.7, 170, 171, -1, kNaN}).factorial());
    EXPECT_EQ(f[0], 1.0);
    EXPECT_EQ(f[2], 6.0);
    EXPECT_DOUBLE_EQ(f[3], 7.257415615307994e306);
    EXPECT_TRUE(std::isnan(f[4]));
    EXPECT_TRUE(std::isnan(f[5]));
}

TEST(TyxEqnTileTest, PowersPairsAndLimits)
{
    const TyxEqnTile d = tileOf<int32_t>(N::I32, {2, 3});
    EXPECT_EQ(resultOf(TyxEqnTile::pow(2.0, d)), (std::vector<double>{4, 8}));
    const std::vector<double> lb = resultOf(tileOf<uint32_t>(N::U32, {8, 1024}).logb(2.0));
    EXPECT_DOUBLE_EQ(lb[0], 3.0);
    expectDefault(d.ldexp(2.0));

    const TyxEqnTile y = doubles({1.0, -1.0, 5.0});
    const TyxEqnTile x = tileOf<int8_t>(N::I8, {0, 0});
    EXPECT_EQ(resultOf<Cplx>(TyxEqnTile::cmplx(y, x)), (std::vector<Cplx>{{1, 0}, {-1, 0}}));
    const TyxEqnTile z = tileOf<Cplx>(N::ComplexDouble, {{1, 1}});
    expectDefault(TyxEqnTile::atan2(z, y));
    expectDefault(TyxEqnTile::cmplx(z, 1.0));

    const TyxEqnTile a = doubles({1, 5, -2});
    const TyxEqnTile b = tileOf<int16_t>(N::I16, {3, 3});
    EXPECT_EQ(resultOf(a.max(b)), (std::vector<double>{3, 5}));
    EXPECT_EQ(resultOf(a.clip(0.0, 4.0)), (std::vector<double>{1, 4, 0}));
    // The test for lo comes first.
    EXPECT_EQ(resultOf(a.clip(3.0, 2.0)), (std::vector<double>{3, 2, 3}));
    expectDefault(tileOf<Cplx>(N::ComplexDouble, {{1, 1}}).clip(0, 1));
}

TEST(TyxEqnTileTest, ReductionsKeepTheirStartValues)
{
    const TyxEqnTile negative = doubles({-3, -1});
    EXPECT_EQ(negative.max(), 2.2250738585072014e-308);
    EXPECT_EQ(TyxEqnTile().max(), 2.2250738585072014e-308);
    EXPECT_EQ(TyxEqnTile().min(), 1.7976931348623157e308);
    EXPECT_TRUE(std::isnan(TyxEqnTile().median()));

    const TyxEqnTile withNaN = doubles({kNaN, 4, kNaN, 2});
    EXPECT_EQ(withNaN.max(), 4.0);
    EXPECT_TRUE(std::isnan(withNaN.sum()));
    EXPECT_EQ(tileOf<uint16_t>(N::U16, {65535, 65535}).sum(), 131070.0);

    // The median takes the lower middle.
    EXPECT_EQ(tileOf<uint16_t>(N::U16, {4, 1, 3, 2}).median(), 2.0);
    EXPECT_EQ(doubles({7.5}).median(), 7.5);
    EXPECT_EQ(doubles({2, kNaN, 1}).median(), 2.0);
}

TEST(TyxEqnTileTest, RoundclipRoundsHalfAwayFromZero)
{
    const TyxEqnTile d = doubles({2.5, 300, -1, 0.49, 254.5});
    const TyxEqnTile u8 = d.roundclip(TyxDataType(N::U8), 0, 255);
    EXPECT_EQ(u8.dataType(), TyxDataType(N::U8));
    EXPECT_EQ(valuesOf<uint8_t>(u8), (std::vector<uint8_t>{3, 255, 0, 0, 255}));

    const TyxEqnTile i8 = doubles({-2.5, -2.4, 2.5}).roundclip(TyxDataType(N::I8), -128, 127);
    EXPECT_EQ(valuesOf<int8_t>(i8), (std::vector<int8_t>{-3, -2, 3}));

    // Floating targets are clipped only.
    const TyxEqnTile f = doubles({2.5, 9}).roundclip(TyxDataType(N::Float), 0, 5);
    EXPECT_EQ(valuesOf<float>(f), (std::vector<float>{2.5f, 5.0f}));

    // The given depth is kept.
    const TyxEqnTile u16 = tileOf<int32_t>(N::I32, {5000}).roundclip(TyxDataType(N::U16, 12), 0, 4095);
    EXPECT_EQ(u16.dataType(), TyxDataType(N::U16, 12));
    EXPECT_EQ(valuesOf<uint16_t>(u16), (std::vector<uint16_t>{4095}));

    // Bounds that do not clip: NaN gives 0, and values beyond the signed
    // intermediate (32 bits, 64 for U32) saturate there before the low bits
    // are kept.
    const TyxEqnTile wide = doubles({kNaN, 1e12, -1e12, 70000}).roundclip(TyxDataType(N::I32), kNaN, kNaN);
    EXPECT_EQ(valuesOf<int32_t>(wide), (std::vector<int32_t>{0, INT32_MAX, INT32_MIN, 70000}));
    const TyxEqnTile u32 = doubles({kNaN, 1e30}).roundclip(TyxDataType(N::U32), -1e300, 1e300);
    EXPECT_EQ(valuesOf<uint32_t>(u32), (std::vector<uint32_t>{0, 0xFFFFFC00u}));

    expectDefault(d.roundclip(TyxDataType(N::I64), 0, 1));
    expectDefault(tileOf<Cplx>(N::ComplexDouble, {{1, 1}}).roundclip(TyxDataType(N::U8), 0, 1));
}

TEST(TyxEqnTileTest, TernarySelectsBySample)
{
    TyxEqnTile cond = tileOf<uint8_t>(N::U8, {1, 0, 2, 0});
    TyxEqnTile a = doubles({10, 11, 12, 13});
    const TyxEqnTile b = tileOf<int16_t>(N::I16, {-1, -2, -3});
    EXPECT_EQ(resultOf(cond.ternary(a, b)), (std::vector<double>{10, -2, 12}));
    EXPECT_EQ(resultOf(cond.ternary(a, 0.0)), (std::vector<double>{10, 0, 12, 0}));
    const TyxEqnTile z = tileOf<std::complex<float>>(N::ComplexFloat, {{1, 1}, {2, 2}});
    EXPECT_EQ(resultOf<Cplx>(cond.ternary(a, z)), (std::vector<Cplx>{{10, 0}, {2, 2}}));

    // A condition with a step other than 1.
    const TyxEqnTile everyOther(cond.buffer(), TyxDataType(N::U8), 2, 2);
    EXPECT_EQ(resultOf(everyOther.ternary(a, b)), (std::vector<double>{10, 11}));

    // A NaN condition is not zero; complex conditions are not served.
    EXPECT_EQ(resultOf(doubles({kNaN}).ternary(1.0, 2.0)), (std::vector<double>{1}));
    expectDefault(z.ternary(1.0, 2.0));
    expectDefault(cond.ternary(tileOf<int64_t>(N::I64, {1}), 2.0));
}

// ---- One arithmetic path for every served sample type ------------------------------------

// Samples that reach the ends of each type's range and include 0, so that
// division by zero and overflow in double are part of the comparison.
template <class T>
std::vector<T> samplesOf()
{
    if constexpr (!std::is_arithmetic_v<T>)
        return {T(1, 2), T(0, -1), T(3.5, 0), T(-2, 4), T(0, 0), T(-1e30f, 7)};
    else
        return {std::numeric_limits<T>::lowest(), T(0), T(1), T(7), std::numeric_limits<T>::max(), T(3)};
}

template <class T>
auto widened(const T &v)
{
    if constexpr (std::is_arithmetic_v<T>)
        return static_cast<double>(v);
    else
        return Cplx(v);
}

// Equal values, or NaN in the same parts.
bool sameValue(double x, double y) { return (std::isnan(x) && std::isnan(y)) || x == y; }
bool sameValue(const Cplx &x, const Cplx &y)
{
    return sameValue(x.real(), y.real()) && sameValue(x.imag(), y.imag());
}

// Checks a result against op applied in double (or complex double) to the
// elements of the operands read by their own steps.
template <class R, class Expected>
void expectElements(const TyxEqnTile &result, uint64_t n, Expected expected)
{
    constexpr N::Code code = std::is_same_v<R, Cplx> ? N::ComplexDouble : N::Double;
    ASSERT_EQ(result.dataType(), TyxDataType(code));
    ASSERT_EQ(result.size(), n);
    EXPECT_EQ(result.step(), 1u);
    const std::vector<R> got = valuesOf<R>(result);
    for (uint64_t i = 0; i < n; ++i)
        EXPECT_TRUE(sameValue(got[i], expected(i))) << "element " << i;
}

template <class T>
class TyxEqnTileTypedTest : public ::testing::Test {
protected:
    TyxEqnTile m_tile = tileOf<T>(N::codeOf<T>(), samplesOf<T>());
    // Every other sample of the same buffer.
    const TyxEqnTile m_strided{m_tile.buffer(), TyxDataType(N::codeOf<T>()), 3, 2};
};

using ServedTypes = ::testing::Types<int8_t, uint8_t, int16_t, uint16_t, int32_t, uint32_t, float, double,
                                     std::complex<float>, Cplx>;
TYPED_TEST_SUITE(TyxEqnTileTypedTest, ServedTypes);

// The four operations with a tile of each served type on the right, the
// longer operand's tail ignored.
template <class A, class B>
void expectAllOperations(const TyxEqnTile &a, const TyxEqnTile &b)
{
    const A *pa = static_cast<const A *>(a.buffer()->data());
    const B *pb = static_cast<const B *>(b.buffer()->data());
    const auto expectOp = [&](const TyxEqnTile &result, auto op) {
        using R = decltype(op(widened(A()), widened(B())));
        expectElements<R>(result, std::min(a.size(), b.size()), [&](uint64_t i) {
            return op(widened(pa[i * a.step()]), widened(pb[i * b.step()]));
        });
    };
    expectOp(a + b, std::plus<>());
    expectOp(a - b, std::minus<>());
    expectOp(a * b, std::multiplies<>());
    expectOp(a / b, std::divides<>());
}

template <class A, class... B>
void expectWithEveryType(const TyxEqnTile &a, std::tuple<B...> *)
{
    (expectAllOperations<A, B>(a, tileOf<B>(N::codeOf<B>(), samplesOf<B>())), ...);
}

TYPED_TEST(TyxEqnTileTypedTest, TileWithTileOfEveryServedType)
{
    using Every = std::tuple<int8_t, uint8_t, int16_t, uint16_t, int32_t, uint32_t, float, double,
                             std::complex<float>, Cplx>;
    expectWithEveryType<TypeParam>(this->m_tile, static_cast<Every *>(nullptr));
    // A strided left operand, shorter than the right one.
    expectAllOperations<TypeParam, TypeParam>(this->m_strided, this->m_tile);
}

TYPED_TEST(TyxEqnTileTypedTest, TileWithScalarOnEitherSide)
{
    const TyxEqnTile &a = this->m_tile;
    const auto *p = static_cast<const TypeParam *>(a.buffer()->data());
    const uint64_t n = a.size();
    if constexpr (std::is_same_v<TypeParam, std::complex<float>>) {
        // ComplexFloat is served with tiles only.
        for (const TyxEqnTile &t : {a + 2.0, a - 2.0, a * 2.0, a / 2.0, a + Cplx(1, 1), a / Cplx(1, 1),
                                    2.0 - a, 2.0 / a, Cplx(1, 1) - a, Cplx(1, 1) / a})
            expectDefault(t);
    } else {
        using R = decltype(widened(TypeParam()) + 0.0);
        const auto at = [&](uint64_t i) { return widened(p[i]); };
        expectElements<R>(a + 2.5, n, [&](uint64_t i) { return at(i) + 2.5; });
        expectElements<R>(a / 0.0, n, [&](uint64_t i) { return at(i) / 0.0; });
        expectElements<R>(2.5 / a, n, [&](uint64_t i) { return 2.5 / at(i); });
        const Cplx c(0.5, -2);
        expectElements<Cplx>(a + c, n, [&](uint64_t i) { return at(i) + c; });
        expectElements<Cplx>(a / c, n, [&](uint64_t i) { return at(i) / c; });
        expectElements<Cplx>(c / a, n, [&](uint64_t i) { return c / at(i); });
        expectElements<R>(this->m_strided * 3.0, 3, [&](uint64_t i) { return at(2 * i) * 3.0; });
    }
}

} // namespace
