// Tile arrays: construction, arithmetic, comparisons and text form.
#include <tyx/TyxEqnTile.h>

#include <algorithm>
#include <functional>
#include <istream>
#include <limits>
#include <ostream>
#include <sstream>

#include <tyx/TyxVariant.h>

#include "core/TyxPost.h"
#include "expr/TyxEqnTileInto.h"

// ---- Arithmetic into an earlier result -------------------------------------------------------

namespace tyx::internal {

template <class Op>
void tileTileInto(TyxEqnTile &out, const TyxEqnTile &a, const TyxEqnTile &b, Op op)
{
    if (!readable(a) || !readable(b)) {
        out = TyxEqnTile();
        return;
    }
    const uint64_t n = std::min(a.size(), b.size());
    const bool served = visitServedCode(codeOf(a), false, [&](auto ta) {
        using A = typename decltype(ta)::type;
        return visitServedCode(codeOf(b), false, [&](auto tb) {
            using B = typename decltype(tb)::type;
            using R = decltype(op(widen(A()), widen(B())));
            if (R *r = prepareInto<R>(out, n))
                zipLoop(r, samples<A>(a), a.step(), samples<B>(b), b.step(), n,
                        [op](const A &x, const B &y) { return op(widen(x), widen(y)); });
            return true;
        });
    });
    if (!served)
        out = TyxEqnTile();
}

template <bool ScalarLeft, class S, class Op>
void tileScalarInto(TyxEqnTile &out, const TyxEqnTile &a, const S &s, Op op)
{
    if (!readable(a)) {
        out = TyxEqnTile();
        return;
    }
    const uint64_t n = a.size();
    const bool served = visitServedCode(codeOf(a), false, [&](auto ta) {
        using A = typename decltype(ta)::type;
        if constexpr (isComplexFloat<A>) {
            return false;
        } else {
            using R = decltype(op(widen(A()), s));
            if (R *r = prepareInto<R>(out, n)) {
                if constexpr (ScalarLeft)
                    mapLoop(r, samples<A>(a), a.step(), n, [op, s](const A &x) { return op(s, widen(x)); });
                else
                    mapLoop(r, samples<A>(a), a.step(), n, [op, s](const A &x) { return op(widen(x), s); });
            }
            return true;
        }
    });
    if (!served)
        out = TyxEqnTile();
}

void negateInto(TyxEqnTile &out, const TyxEqnTile &a)
{
    if (!readable(a)) {
        out = TyxEqnTile();
        return;
    }
    const uint64_t n = a.size();
    const bool served = visitServedCode(codeOf(a), false, [&](auto ta) {
        using A = typename decltype(ta)::type;
        using R = decltype(widen(A()));
        if (R *r = prepareInto<R>(out, n))
            mapLoop(r, samples<A>(a), a.step(), n, [](const A &x) { return -widen(x); });
        return true;
    });
    if (!served)
        out = TyxEqnTile();
}

// The one instantiation of the element loops of each operation.
#define TYX_TILE_ARITHMETIC(Op)                                                                              \
    template void tileTileInto<Op>(TyxEqnTile &, const TyxEqnTile &, const TyxEqnTile &, Op);                \
    template void tileScalarInto<false, double, Op>(TyxEqnTile &, const TyxEqnTile &, const double &, Op);   \
    template void tileScalarInto<true, double, Op>(TyxEqnTile &, const TyxEqnTile &, const double &, Op);    \
    template void tileScalarInto<false, TileComplex, Op>(TyxEqnTile &, const TyxEqnTile &,                   \
                                                         const TileComplex &, Op);                           \
    template void tileScalarInto<true, TileComplex, Op>(TyxEqnTile &, const TyxEqnTile &,                    \
                                                        const TileComplex &, Op);

TYX_TILE_ARITHMETIC(std::plus<>)
TYX_TILE_ARITHMETIC(std::minus<>)
TYX_TILE_ARITHMETIC(std::multiplies<>)
TYX_TILE_ARITHMETIC(std::divides<>)

#undef TYX_TILE_ARITHMETIC

} // namespace tyx::internal

namespace tyx {

using namespace internal;

namespace {

// Joins the variant (code 17) at library load.
[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxEqnTile>();

using Cplx = TileComplex;

// ---- Binary arithmetic ---------------------------------------------------

using AddOp = std::plus<>;
using SubOp = std::minus<>;
using MulOp = std::multiplies<>;
using DivOp = std::divides<>;

template <class Op>
TyxEqnTile tileWithTile(const TyxEqnTile &a, const TyxEqnTile &b, Op op)
{
    TyxEqnTile result;
    tileTileInto(result, a, b, op);
    return result;
}

template <bool ScalarLeft, class S, class Op>
TyxEqnTile tileWithScalar(const TyxEqnTile &a, const S &s, Op op)
{
    TyxEqnTile result;
    tileScalarInto<ScalarLeft>(result, a, s, op);
    return result;
}

// ---- Comparisons ---------------------------------------------------------

struct EqOp {
    static constexpr bool servesComplex = true;
    template <class X, class Y>
    bool operator()(const X &x, const Y &y) const
    {
        return ulpEqual(x, y);
    }
};
struct NeOp {
    static constexpr bool servesComplex = true;
    template <class X, class Y>
    bool operator()(const X &x, const Y &y) const
    {
        return !ulpEqual(x, y);
    }
};
struct LtOp {
    static constexpr bool servesComplex = false;
    bool operator()(double x, double y) const { return x < y; }
};
struct LeOp {
    static constexpr bool servesComplex = false;
    bool operator()(double x, double y) const { return x <= y; }
};
struct GtOp {
    static constexpr bool servesComplex = false;
    bool operator()(double x, double y) const { return x > y; }
};
struct GeOp {
    static constexpr bool servesComplex = false;
    bool operator()(double x, double y) const { return x >= y; }
};

// Tiles of one size and one data type only; ComplexDouble only for == and !=.
template <class Op>
TyxEqnTile compareTiles(const TyxEqnTile &a, const TyxEqnTile &b, Op op)
{
    if (!readable(a) || !readable(b) || a.size() != b.size() || a.dataType() != b.dataType())
        return TyxEqnTile();
    const uint64_t n = a.size();
    return visitServedCode(codeOf(a), TyxEqnTile(), [&](auto ta) {
        using A = typename decltype(ta)::type;
        if constexpr (isComplexFloat<A> || (TileIsComplex<A>::value && !Op::servesComplex)) {
            return TyxEqnTile();
        } else {
            return produce<double>(n, [&](double *out) {
                zipLoop(out, samples<A>(a), a.step(), samples<A>(b), b.step(), n,
                        [op](const A &x, const A &y) { return op(widen(x), widen(y)) ? 1.0 : 0.0; });
            });
        }
    });
}

template <class S, class Op>
TyxEqnTile compareScalar(const TyxEqnTile &a, const S &s, Op op)
{
    if (!readable(a))
        return TyxEqnTile();
    const uint64_t n = a.size();
    return visitServedCode(codeOf(a), TyxEqnTile(), [&](auto ta) {
        using A = typename decltype(ta)::type;
        if constexpr (isComplexFloat<A> ||
                      ((TileIsComplex<A>::value || TileIsComplex<S>::value) && !Op::servesComplex)) {
            return TyxEqnTile();
        } else {
            return produce<double>(n, [&](double *out) {
                mapLoop(out, samples<A>(a), a.step(), n,
                        [op, s](const A &x) { return op(widen(x), s) ? 1.0 : 0.0; });
            });
        }
    });
}

// ---- Text form -----------------------------------------------------------------

constexpr uint64_t kShownSamples = 8;

template <class Char>
std::basic_ostream<Char> &writeTile(std::basic_ostream<Char> &os, const TyxEqnTile &tile)
{
    std::wostringstream text;
    text << tile.dataType() << L'[' << tile.size() << L']';
    if (readable(tile) && tile.size() > 0) {
        text << L'{';
        visitAnyCode(codeOf(tile), 0, [&](auto tt) {
            using T = typename decltype(tt)::type;
            const T *p = samples<T>(tile);
            const uint64_t shown = std::min(tile.size(), kShownSamples);
            for (uint64_t i = 0; i < shown; ++i) {
                if (i > 0)
                    text << L',';
                if constexpr (std::is_integral_v<T>)
                    text << +p[i * tile.step()];
                else
                    text << p[i * tile.step()];
            }
            return 0;
        });
        if (tile.size() > kShownSamples)
            text << L",...";
        text << L'}';
    }
    if constexpr (sizeof(Char) == 1)
        return os << toUTF8(text.str());
    else
        return os << text.str();
}

} // namespace

// ---- Construction ----------------------------------------------------------------

TyxEqnTile::TyxEqnTile() = default;

TyxEqnTile::TyxEqnTile(const TyxDataType &type, uint64_t size) { initialize(type, size); }

TyxEqnTile::TyxEqnTile(const TyxBufferPtr &buffer, const TyxDataType &type, uint64_t size, uint64_t step)
    : m_step(step), m_size(size), m_dataType(type), m_buffer(buffer)
{
}

TyxEqnTile::TyxEqnTile(const TyxEqnTile &other) = default;

TyxEqnTile &TyxEqnTile::operator=(const TyxEqnTile &other) = default;

TyxEqnTile::~TyxEqnTile() = default;

TyxEqnTile TyxEqnTile::clone() const
{
    if (isEmpty())
        return TyxEqnTile();
    TyxEqnTile copy;
    copy.m_step = m_step;
    copy.m_size = m_size;
    copy.m_dataType = m_dataType;
    if (m_buffer)
        copy.m_buffer = m_buffer->clone();
    return copy;
}

void TyxEqnTile::initialize(const TyxDataType &type, uint64_t size)
{
    m_step = 1;
    m_size = size;
    m_dataType = type;
    m_buffer = nullptr;
    if (size == 0 || !type.isValid())
        return;
    uint64_t bytes = 0;
    if (__builtin_mul_overflow(size, uint64_t(type.size()), &bytes))
        bytes = std::numeric_limits<uint64_t>::max(); // fails to allocate, and says so
    m_buffer = new TyxBuffer(bytes, true);
    m_buffer->setDataType(type);
}

TyxString TyxEqnTile::className() const { return L"TyxEqnTile"; }

bool TyxEqnTile::sampleAccessAllowed(TyxNumericType::Code asked) const
{
    if (m_size == 0)
        return false;
    if (asked != m_dataType.code()) {
        TYX_POST_ERROR(L"TyxEqnTile::samples: asked for " + TyxDataType(asked).toString() +
                       L" samples, but the tile holds " + m_dataType.toString());
        return false;
    }
    if (m_step != 1) {
        TYX_POST_ERROR(L"TyxEqnTile::samples: the step is " + std::to_wstring(m_step) + L", not 1");
        return false;
    }
    if (!m_buffer || !m_buffer->data() || m_buffer->size() / m_dataType.size() < m_size) {
        TYX_POST_ERROR(L"TyxEqnTile::samples: the buffer holds fewer than " + std::to_wstring(m_size) +
                       L" samples");
        return false;
    }
    return true;
}

bool TyxEqnTile::booleanTest() const
{
    if (!m_buffer || !readable(*this))
        return false;
    if (!m_dataType.isFloat() && !m_dataType.isComplex())
        return false;
    return visitServedCode(m_dataType.code(), false, [&](auto tt) {
        using T = typename decltype(tt)::type;
        const T *p = internal::samples<T>(*this);
        for (uint64_t i = 0; i < m_size; ++i)
            if (widen(p[i * m_step]) != decltype(widen(T()))(1.0))
                return false;
        return true;
    });
}

// ---- Operators ----------------------------------------------------------------------

TyxEqnTile TyxEqnTile::operator+(const TyxEqnTile &other) const
{
    return tileWithTile(*this, other, AddOp());
}

TyxEqnTile TyxEqnTile::operator-(const TyxEqnTile &other) const
{
    return tileWithTile(*this, other, SubOp());
}

TyxEqnTile TyxEqnTile::operator*(const TyxEqnTile &other) const
{
    return tileWithTile(*this, other, MulOp());
}

TyxEqnTile TyxEqnTile::operator/(const TyxEqnTile &other) const
{
    return tileWithTile(*this, other, DivOp());
}

TyxEqnTile TyxEqnTile::operator+(double value) const { return tileWithScalar<false>(*this, value, AddOp()); }

TyxEqnTile TyxEqnTile::operator-(double value) const { return tileWithScalar<false>(*this, value, SubOp()); }

TyxEqnTile TyxEqnTile::operator*(double value) const { return tileWithScalar<false>(*this, value, MulOp()); }

TyxEqnTile TyxEqnTile::operator/(double value) const { return tileWithScalar<false>(*this, value, DivOp()); }

TyxEqnTile TyxEqnTile::operator+(const Complex &value) const
{
    return tileWithScalar<false>(*this, value, AddOp());
}

TyxEqnTile TyxEqnTile::operator-(const Complex &value) const
{
    return tileWithScalar<false>(*this, value, SubOp());
}

TyxEqnTile TyxEqnTile::operator*(const Complex &value) const
{
    return tileWithScalar<false>(*this, value, MulOp());
}

TyxEqnTile TyxEqnTile::operator/(const Complex &value) const
{
    return tileWithScalar<false>(*this, value, DivOp());
}

TyxEqnTile TyxEqnTile::operator-() const
{
    TyxEqnTile result;
    negateInto(result, *this);
    return result;
}

TyxEqnTile operator-(double value, const TyxEqnTile &tile)
{
    return tileWithScalar<true>(tile, value, SubOp());
}

TyxEqnTile operator-(const std::complex<double> &value, const TyxEqnTile &tile)
{
    return tileWithScalar<true>(tile, value, SubOp());
}

TyxEqnTile operator/(double value, const TyxEqnTile &tile)
{
    return tileWithScalar<true>(tile, value, DivOp());
}

TyxEqnTile operator/(const std::complex<double> &value, const TyxEqnTile &tile)
{
    return tileWithScalar<true>(tile, value, DivOp());
}

TyxEqnTile TyxEqnTile::operator==(const TyxEqnTile &other) const
{
    return compareTiles(*this, other, EqOp());
}

TyxEqnTile TyxEqnTile::operator!=(const TyxEqnTile &other) const
{
    return compareTiles(*this, other, NeOp());
}

TyxEqnTile TyxEqnTile::operator<(const TyxEqnTile &other) const { return compareTiles(*this, other, LtOp()); }

TyxEqnTile TyxEqnTile::operator<=(const TyxEqnTile &other) const
{
    return compareTiles(*this, other, LeOp());
}

TyxEqnTile TyxEqnTile::operator>(const TyxEqnTile &other) const { return compareTiles(*this, other, GtOp()); }

TyxEqnTile TyxEqnTile::operator>=(const TyxEqnTile &other) const
{
    return compareTiles(*this, other, GeOp());
}

TyxEqnTile TyxEqnTile::operator==(double value) const { return compareScalar(*this, value, EqOp()); }

TyxEqnTile TyxEqnTile::operator!=(double value) const { return compareScalar(*this, value, NeOp()); }

TyxEqnTile TyxEqnTile::operator<(double value) const { return compareScalar(*this, value, LtOp()); }

TyxEqnTile TyxEqnTile::operator<=(double value) const { return compareScalar(*this, value, LeOp()); }

TyxEqnTile TyxEqnTile::operator>(double value) const { return compareScalar(*this, value, GtOp()); }

TyxEqnTile TyxEqnTile::operator>=(double value) const { return compareScalar(*this, value, GeOp()); }

TyxEqnTile TyxEqnTile::operator==(const Complex &value) const { return compareScalar(*this, value, EqOp()); }

TyxEqnTile TyxEqnTile::operator!=(const Complex &value) const { return compareScalar(*this, value, NeOp()); }

// ---- Streams ---------------------------------------------------------------------------------

std::wostream &operator<<(std::wostream &os, const TyxEqnTile &tile) { return writeTile(os, tile); }

std::ostream &operator<<(std::ostream &os, const TyxEqnTile &tile) { return writeTile(os, tile); }

std::wistream &operator>>(std::wistream &is, TyxEqnTile &)
{
    is.setstate(std::ios_base::failbit);
    return is;
}

std::istream &operator>>(std::istream &is, TyxEqnTile &)
{
    is.setstate(std::ios_base::failbit);
    return is;
}

} // namespace tyx
