// Element loops of TyxEqnTile: sample types, widening and typed loop templates.
#pragma once

#include <algorithm>
#include <complex>
#include <cstdint>
#include <type_traits>

#include <tyx/TyxBuffer.h>

#include <tyx/TyxEqnTile.h>

#include "image/TyxSampleTypes.h"

#include "core/TyxFloatCompare.h"

namespace tyx::internal {

using TileComplex = std::complex<double>;

template <class T>
struct TileIsComplex : std::false_type {
};
template <class T>
struct TileIsComplex<std::complex<T>> : std::true_type {
};

/// A sample widened to double, or to a complex double for complex samples:
/// integers widen exactly, Float by widening.
template <class T>
inline auto widen(const T &v)
{
    if constexpr (TileIsComplex<T>::value)
        return TileComplex(v.real(), v.imag());
    else
        return static_cast<double>(v);
}

/// The result type of an operation giving \p R elements.
template <class R>
inline TyxDataType tileResultType()
{
    return TyxDataType(TileIsComplex<R>::value ? TyxNumericType::ComplexDouble : TyxNumericType::Double);
}

/// Tag naming a sample type without a value.
template <class T>
using TileTag = SampleTag<T>;

/// Calls \p f with the tag of the sample type of a real code (I8 to U32,
/// Float, Double); any other code gives \p fallback.
template <class R, class F>
inline R visitRealCode(int code, R fallback, F &&f)
{
    return visitSampleCode<SampleSet::Narrow>(code, fallback, f);
}

/// As visitRealCode, with ComplexFloat and ComplexDouble as well.
template <class R, class F>
inline R visitServedCode(int code, R fallback, F &&f)
{
    return visitSampleCode<SampleSet::NarrowComplex>(code, fallback, f);
}

/// As visitServedCode, with I64 and U64 as well, for code that only reads.
template <class R, class F>
inline R visitAnyCode(int code, R fallback, F &&f)
{
    return visitSampleCode<SampleSet::All>(code, fallback, f);
}

/// r[i] = f(a[i * sa]) for i below n. The unit step gets a loop of its own
/// so that the compiler vectorises it.
template <class R, class A, class F>
inline void mapLoop(R *__restrict r, const A *__restrict a, uint64_t sa, uint64_t n, F f)
{
    if (sa == 1) {
        for (uint64_t i = 0; i < n; ++i)
            r[i] = f(a[i]);
    } else {
        for (uint64_t i = 0; i < n; ++i)
            r[i] = f(a[i * sa]);
    }
}

/// r[i] = f(a[i * sa], b[i * sb]) for i below n.
template <class R, class A, class B, class F>
inline void zipLoop(R *__restrict r, const A *__restrict a, uint64_t sa, const B *__restrict b, uint64_t sb,
                    uint64_t n, F f)
{
    if (sa == 1 && sb == 1) {
        for (uint64_t i = 0; i < n; ++i)
            r[i] = f(a[i], b[i]);
    } else {
        for (uint64_t i = 0; i < n; ++i)
            r[i] = f(a[i * sa], b[i * sb]);
    }
}

/// Equality within 4 units in the last place; a NaN equals nothing.
inline bool ulpEqual(double x, double y) { return withinFourUlps(x, y); }

inline bool ulpEqual(const TileComplex &x, const TileComplex &y)
{
    return ulpEqual(x.real(), y.real()) && ulpEqual(x.imag(), y.imag());
}

inline bool ulpEqual(const TileComplex &x, double y)
{
    return ulpEqual(x.real(), y) && ulpEqual(x.imag(), 0.0);
}

inline bool ulpEqual(double x, const TileComplex &y)
{
    return ulpEqual(x, y.real()) && ulpEqual(0.0, y.imag());
}

template <class T>
constexpr bool isComplexFloat = std::is_same_v<T, std::complex<float>>;

// Whether every element, read by step, lies inside the tile's buffer. A
// tile that fails this is treated like an unserved one: the results are
// empty and nothing is read.
inline bool readable(const TyxEqnTile &t)
{
    if (!t.dataType().isValid())
        return false;
    if (t.size() == 0)
        return true;
    const TyxBufferConstPtr buffer = t.buffer();
    if (!buffer || !buffer->data())
        return false;
    uint64_t last = 0;
    uint64_t bytes = 0;
    if (__builtin_mul_overflow(t.size() - 1, t.step(), &last) ||
        __builtin_mul_overflow(last + 1, uint64_t(t.dataType().size()), &bytes))
        return false;
    return bytes <= buffer->size();
}

template <class T>
inline const T *samples(const TyxEqnTile &t)
{
    const TyxBufferConstPtr buffer = t.buffer();
    return buffer ? static_cast<const T *>(buffer->data()) : nullptr;
}

inline TyxNumericType::Code codeOf(const TyxEqnTile &t) { return t.dataType().code(); }

// A new tile of n elements of R and \p type, filled by fill(R *). A failed
// allocation has been posted by the buffer; it gives the empty tile.
template <class R, class Fill>
inline TyxEqnTile produce(const TyxDataType &type, uint64_t n, Fill fill)
{
    TyxEqnTile result(type, n);
    if (n == 0)
        return result;
    R *out = static_cast<R *>(result.buffer()->data());
    if (!out)
        return TyxEqnTile();
    fill(out);
    return result;
}

template <class R, class Fill>
inline TyxEqnTile produce(uint64_t n, Fill fill)
{
    return produce<R>(tileResultType<R>(), n, fill);
}

// Applies op to each element. A complex tile is served when op takes a
// complex argument; otherwise it gives the empty tile.
template <class Op>
TyxEqnTile unary(const TyxEqnTile &a, Op op)
{
    if (!readable(a))
        return TyxEqnTile();
    const uint64_t n = a.size();
    return visitServedCode(codeOf(a), TyxEqnTile(), [&](auto ta) {
        using A = typename decltype(ta)::type;
        using W = decltype(widen(A()));
        if constexpr (!std::is_invocable_v<const Op &, const W &>) {
            return TyxEqnTile();
        } else {
            using R = std::decay_t<std::invoke_result_t<const Op &, const W &>>;
            return produce<R>(n, [&](R *out) {
                mapLoop(out, samples<A>(a), a.step(), n, [op](const A &x) { return op(widen(x)); });
            });
        }
    });
}

} // namespace tyx::internal
