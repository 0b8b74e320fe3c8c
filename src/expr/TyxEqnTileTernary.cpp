// Tile selection: the ternary family.
#include <tyx/TyxEqnTile.h>

#include <algorithm>
#include <limits>

#include "expr/TyxEqnTileLoops.h"

namespace tyx {

using namespace internal;

namespace {

using Cplx = TileComplex;

// ---- Selection ---------------------------------------------------------------

// Element sources of ternary: a tile read by step, or a scalar. at reads
// the element i of a source whose step is known to be 1.
template <class T>
struct TileSource {
    using Value = decltype(widen(T()));
    const T *data;
    uint64_t step;
    bool unitStep() const { return step == 1; }
    Value operator()(uint64_t i) const { return widen(data[i * step]); }
    Value at(uint64_t i) const { return widen(data[i]); }
};
template <class S>
struct ScalarSource {
    using Value = S;
    S value;
    bool unitStep() const { return true; }
    S operator()(uint64_t) const { return value; }
    S at(uint64_t) const { return value; }
};

// The unit step of the condition and of every tile source gets a loop of
// its own, with no multiplication in the index, so that it vectorises.
template <class C, class SA, class SB>
TyxEqnTile selectLoop(const C *cond, uint64_t condStep, uint64_t n, SA a, SB b)
{
    constexpr bool complex =
        TileIsComplex<typename SA::Value>::value || TileIsComplex<typename SB::Value>::value;
    using R = std::conditional_t<complex, Cplx, double>;
    return produce<R>(n, [&](R *__restrict out) {
        if (condStep == 1 && a.unitStep() && b.unitStep()) {
            for (uint64_t i = 0; i < n; ++i)
                out[i] = widen(cond[i]) != 0.0 ? R(a.at(i)) : R(b.at(i));
        } else {
            for (uint64_t i = 0; i < n; ++i)
                out[i] = widen(cond[i * condStep]) != 0.0 ? R(a(i)) : R(b(i));
        }
    });
}

// The condition is a real tile (a complex condition gives the empty tile);
// the result has the size of the shortest tile among the operands.
template <class F>
TyxEqnTile withCondition(const TyxEqnTile &cond, uint64_t n, F f)
{
    if (!readable(cond))
        return TyxEqnTile();
    return visitRealCode(codeOf(cond), TyxEqnTile(), [&](auto tc) {
        using C = typename decltype(tc)::type;
        return f(samples<C>(cond), std::min(n, cond.size()));
    });
}

template <class F>
TyxEqnTile withTileSource(const TyxEqnTile &t, F f)
{
    if (!readable(t))
        return TyxEqnTile();
    return visitServedCode(codeOf(t), TyxEqnTile(), [&](auto tt) {
        using T = typename decltype(tt)::type;
        return f(TileSource<T>{samples<T>(t), t.step()});
    });
}

constexpr uint64_t kAll = std::numeric_limits<uint64_t>::max();

} // namespace

// ---- ternary -----------------------------------------------------------------------------

TyxEqnTile TyxEqnTile::ternary(const TyxEqnTile &a, const TyxEqnTile &b) const
{
    return withCondition(*this, std::min(a.size(), b.size()), [&](const auto *cond, uint64_t n) {
        return withTileSource(a, [&](auto sa) {
            return withTileSource(b, [&](auto sb) { return selectLoop(cond, m_step, n, sa, sb); });
        });
    });
}

TyxEqnTile TyxEqnTile::ternary(const TyxEqnTile &a, double b) const
{
    return withCondition(*this, a.size(), [&](const auto *cond, uint64_t n) {
        return withTileSource(
            a, [&](auto sa) { return selectLoop(cond, m_step, n, sa, ScalarSource<double>{b}); });
    });
}

TyxEqnTile TyxEqnTile::ternary(const TyxEqnTile &a, const Complex &b) const
{
    return withCondition(*this, a.size(), [&](const auto *cond, uint64_t n) {
        return withTileSource(
            a, [&](auto sa) { return selectLoop(cond, m_step, n, sa, ScalarSource<Cplx>{b}); });
    });
}

TyxEqnTile TyxEqnTile::ternary(double a, const TyxEqnTile &b) const
{
    return withCondition(*this, b.size(), [&](const auto *cond, uint64_t n) {
        return withTileSource(
            b, [&](auto sb) { return selectLoop(cond, m_step, n, ScalarSource<double>{a}, sb); });
    });
}

TyxEqnTile TyxEqnTile::ternary(double a, double b) const
{
    return withCondition(*this, kAll, [&](const auto *cond, uint64_t n) {
        return selectLoop(cond, m_step, n, ScalarSource<double>{a}, ScalarSource<double>{b});
    });
}

TyxEqnTile TyxEqnTile::ternary(const Complex &a, const TyxEqnTile &b) const
{
    return withCondition(*this, b.size(), [&](const auto *cond, uint64_t n) {
        return withTileSource(
            b, [&](auto sb) { return selectLoop(cond, m_step, n, ScalarSource<Cplx>{a}, sb); });
    });
}

TyxEqnTile TyxEqnTile::ternary(const Complex &a, const Complex &b) const
{
    return withCondition(*this, kAll, [&](const auto *cond, uint64_t n) {
        return selectLoop(cond, m_step, n, ScalarSource<Cplx>{a}, ScalarSource<Cplx>{b});
    });
}

} // namespace tyx
