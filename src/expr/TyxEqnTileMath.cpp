// Tile functions: element-wise mathematics, reductions, limits and roundclip.
#include <tyx/TyxEqnTile.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include <tyx/TyxForLoopBase.h>
#include <tyx/TyxSystem.h>

#include "expr/TyxEqnTileLoops.h"
#include "units/TyxBessel.h"

namespace tyx {

using namespace internal;

namespace {

using Cplx = TileComplex;

// Functions with a real and a complex form. A real sample goes to C's
// function, so a negative one gives NaN in sqrt and log rather than a
// complex result: a caller who wants the complex root converts first.
#define TYX_TILE_FUNCTION(Name, fn)                                                                          \
    struct Name {                                                                                            \
        double operator()(double x) const { return std::fn(x); }                                             \
        Cplx operator()(const Cplx &z) const { return std::fn(z); }                                          \
    }

TYX_TILE_FUNCTION(SinOp, sin);
TYX_TILE_FUNCTION(CosOp, cos);
TYX_TILE_FUNCTION(TanOp, tan);
TYX_TILE_FUNCTION(SinhOp, sinh);
TYX_TILE_FUNCTION(CoshOp, cosh);
TYX_TILE_FUNCTION(TanhOp, tanh);
TYX_TILE_FUNCTION(ExpOp, exp);
TYX_TILE_FUNCTION(LogOp, log);
TYX_TILE_FUNCTION(Log10Op, log10);
TYX_TILE_FUNCTION(SqrtOp, sqrt);
TYX_TILE_FUNCTION(AsinOp, asin);
TYX_TILE_FUNCTION(AcosOp, acos);
TYX_TILE_FUNCTION(AtanOp, atan);

#undef TYX_TILE_FUNCTION

struct AbsOp {
    double operator()(double x) const { return std::fabs(x); }
    // The magnitude, so that abs of any tile is a real tile.
    double operator()(const Cplx &z) const { return std::abs(z); }
};
// norm, arg, real and imag follow std::complex: the squared magnitude, the
// phase angle and the two parts; a real sample is x + 0i.
struct NormOp {
    double operator()(double x) const { return x * x; }
    double operator()(const Cplx &z) const { return std::norm(z); }
};
struct ArgOp {
    double operator()(double x) const { return std::atan2(0.0, x); }
    double operator()(const Cplx &z) const { return std::arg(z); }
};
struct RealOp {
    double operator()(double x) const { return x; }
    double operator()(const Cplx &z) const { return z.real(); }
};
struct ImagOp {
    double operator()(double) const { return 0.0; }
    double operator()(const Cplx &z) const { return z.imag(); }
};
struct ConjOp {
    Cplx operator()(double x) const { return Cplx(x, 0.0); }
    Cplx operator()(const Cplx &z) const { return std::conj(z); }
};
// Rounding, the Bessel functions and the factorial have no complex form in
// C; like ceil and floor they give the empty tile for complex samples.
struct CeilOp {
    double operator()(double x) const { return std::ceil(x); }
};
struct FloorOp {
    double operator()(double x) const { return std::floor(x); }
};
struct TruncOp {
    double operator()(double x) const { return std::trunc(x); }
};
struct RoundOp {
    // Half away from zero, as roundclip rounds.
    double operator()(double x) const { return std::round(x); }
};
struct J0Op {
    double operator()(double x) const { return ::j0(x); }
};
struct J1Op {
    double operator()(double x) const { return ::j1(x); }
};
struct Y0Op {
    double operator()(double x) const { return ::y0(x); }
};
struct Y1Op {
    double operator()(double x) const { return ::y1(x); }
};
struct JnOp {
    int order;
    double operator()(double x) const { return internal::boundedJn(order, x); }
};
struct YnOp {
    int order;
    double operator()(double x) const { return internal::boundedYn(order, x); }
};

// sinc is sin(x) / x, not normalised, as the scalar's sinc defines it, so a
// number and a tile of one sample agree; below the double epsilon in
// modulus it is 1. The complex form follows the same formula.
struct SincOp {
    static constexpr double kEpsilon = 2.220446049250313e-16;
    double operator()(double x) const { return std::fabs(x) < kEpsilon ? 1.0 : std::sin(x) / x; }
    Cplx operator()(const Cplx &z) const
    {
        return std::hypot(z.real(), z.imag()) < kEpsilon ? Cplx(1.0, 0.0) : std::sin(z) / z;
    }
};

// The factorials of 0 to 170, the range a double holds.
const std::vector<double> &factorials()
{
    static const std::vector<double> table = [] {
        std::vector<double> values(171, 1.0);
        for (size_t i = 1; i < values.size(); ++i)
            values[i] = values[i - 1] * static_cast<double>(i);
        return values;
    }();
    return table;
}

// A tile has no way to fail one element, so a sample outside 0 to 170 (or
// NaN) gives NaN there instead of failing the whole tile. Fractions are
// truncated toward zero.
struct FactorialOp {
    const double *table;
    double operator()(double x) const
    {
        return x >= 0.0 && x < 171.0 ? table[static_cast<int>(x)] : std::numeric_limits<double>::quiet_NaN();
    }
};

// pow and logb serve complex tiles through the complex pow and log.
struct PowOp {
    double exponent;
    double operator()(double x) const { return std::pow(x, exponent); }
    Cplx operator()(const Cplx &z) const { return std::pow(z, exponent); }
};
struct PowBaseOp {
    double base;
    double operator()(double x) const { return std::pow(base, x); }
    Cplx operator()(const Cplx &z) const { return std::pow(Cplx(base, 0.0), z); }
};
struct LogbOp {
    double factor;
    double operator()(double x) const { return std::log(x) * factor; }
    Cplx operator()(const Cplx &z) const { return std::log(z) * factor; }
};

// Two real tiles, combined into a Double or ComplexDouble result by op.
template <class Op>
TyxEqnTile realTiles(const TyxEqnTile &a, const TyxEqnTile &b, Op op)
{
    if (!readable(a) || !readable(b))
        return TyxEqnTile();
    const uint64_t n = std::min(a.size(), b.size());
    return visitRealCode(codeOf(a), TyxEqnTile(), [&](auto ta) {
        using A = typename decltype(ta)::type;
        return visitRealCode(codeOf(b), TyxEqnTile(), [&](auto tb) {
            using B = typename decltype(tb)::type;
            using R = decltype(op(0.0, 0.0));
            return produce<R>(n, [&](R *out) {
                zipLoop(out, samples<A>(a), a.step(), samples<B>(b), b.step(), n,
                        [op](const A &x, const B &y) { return op(widen(x), widen(y)); });
            });
        });
    });
}

// A real tile with op applied to each element; complex tiles give the
// empty tile.
template <class Op>
TyxEqnTile realUnary(const TyxEqnTile &a, Op op)
{
    if (!readable(a))
        return TyxEqnTile();
    const uint64_t n = a.size();
    return visitRealCode(codeOf(a), TyxEqnTile(), [&](auto ta) {
        using A = typename decltype(ta)::type;
        using R = decltype(op(0.0));
        return produce<R>(n, [&](R *out) {
            mapLoop(out, samples<A>(a), a.step(), n, [op](const A &x) { return op(widen(x)); });
        });
    });
}

// ---- Reductions ----------------------------------------------------------

// Folds the elements of a real tile into \p start by op, in element order;
// complex and unreadable tiles answer \p start.
template <class Op>
double reduce(const TyxEqnTile &a, double start, Op op)
{
    if (!readable(a))
        return start;
    const uint64_t n = a.size();
    const uint64_t step = a.step();
    return visitRealCode(codeOf(a), start, [&](auto ta) {
        using A = typename decltype(ta)::type;
        const A *p = samples<A>(a);
        double value = start;
        if (step == 1) {
            for (uint64_t i = 0; i < n; ++i)
                value = op(value, widen(p[i]));
        } else {
            for (uint64_t i = 0; i < n; ++i)
                value = op(value, widen(p[i * step]));
        }
        return value;
    });
}

// ---- Conversion back to image types -----------------------------------------

// roundclip asks for parallel loops from this many samples (as many as
// columns times rows times bands of a 27648-sample image tile).
constexpr uint64_t kParallelThreshold = 27648;
// Samples per sub-range of a parallel roundclip, and the most sub-ranges the
// loop base's 32-bit range can count.
constexpr uint64_t kChunkSize = 65536;
constexpr uint64_t kMaxChunks = 0x7FFFFFFF;

// Clips to lo and hi (lo tested first) and, for integer targets, adds 0.5
// away from zero so that the truncating conversion rounds half away from
// zero. Float and Double targets are only clipped: adding 0.5 there would
// shift every value. The half is chosen by selects and added to the clipped
// value (0 where a bound was taken), so that no arithmetic sits in a branch
// and the loop vectorises.
template <class T>
inline T roundClipValue(double v, double lo, double hi)
{
    const bool low = lo >= v;
    const bool high = v >= hi;
    const double clipped = low ? lo : (high ? hi : v);
    if constexpr (std::is_integral_v<T>) {
        const double half = (low || high) ? 0.0 : (v >= 0.0 ? 0.5 : -0.5);
        // Through a signed integer wide enough for T, as the conversion
        // matrix converts: a value outside T's range keeps its low bits.
        using Wide = std::conditional_t<std::is_same_v<T, uint32_t>, int64_t, int32_t>;
        // NaN and values beyond Wide itself would be undefined conversions:
        // NaN gives 0 and the rest saturate at Wide's limits (the top one as
        // the largest double below 2^63 for 64 bits). Selects, so the loop
        // still vectorises.
        constexpr double wideLow = static_cast<double>(std::numeric_limits<Wide>::min());
        constexpr double wideHigh = std::is_same_v<Wide, int32_t> ? 2147483647.0 : 9223372036854774784.0;
        const double rounded = clipped + half;
        const double bounded = rounded < wideLow ? wideLow : (rounded > wideHigh ? wideHigh : rounded);
        return static_cast<T>(static_cast<Wide>(rounded == rounded ? bounded : 0.0));
    } else {
        return static_cast<T>(clipped);
    }
}

template <class T, class A>
void roundClipRange(T *__restrict out, const A *__restrict in, uint64_t step, uint64_t begin, uint64_t end,
                    double lo, double hi)
{
    if (step == 1) {
        for (uint64_t i = begin; i < end; ++i)
            out[i] = roundClipValue<T>(widen(in[i]), lo, hi);
    } else {
        for (uint64_t i = begin; i < end; ++i)
            out[i] = roundClipValue<T>(widen(in[i * step]), lo, hi);
    }
}

} // namespace

// ---- Element-wise functions ----------------------------------------------------------

TyxEqnTile TyxEqnTile::sin() const { return unary(*this, SinOp()); }
TyxEqnTile TyxEqnTile::cos() const { return unary(*this, CosOp()); }
TyxEqnTile TyxEqnTile::tan() const { return unary(*this, TanOp()); }
TyxEqnTile TyxEqnTile::sinh() const { return unary(*this, SinhOp()); }
TyxEqnTile TyxEqnTile::cosh() const { return unary(*this, CoshOp()); }
TyxEqnTile TyxEqnTile::tanh() const { return unary(*this, TanhOp()); }
TyxEqnTile TyxEqnTile::exp() const { return unary(*this, ExpOp()); }
TyxEqnTile TyxEqnTile::log() const { return unary(*this, LogOp()); }
TyxEqnTile TyxEqnTile::log10() const { return unary(*this, Log10Op()); }
TyxEqnTile TyxEqnTile::sqrt() const { return unary(*this, SqrtOp()); }
TyxEqnTile TyxEqnTile::asin() const { return unary(*this, AsinOp()); }
TyxEqnTile TyxEqnTile::acos() const { return unary(*this, AcosOp()); }
TyxEqnTile TyxEqnTile::atan() const { return unary(*this, AtanOp()); }
TyxEqnTile TyxEqnTile::abs() const { return unary(*this, AbsOp()); }
TyxEqnTile TyxEqnTile::norm() const { return unary(*this, NormOp()); }
TyxEqnTile TyxEqnTile::arg() const { return unary(*this, ArgOp()); }
TyxEqnTile TyxEqnTile::real() const { return unary(*this, RealOp()); }
TyxEqnTile TyxEqnTile::imag() const { return unary(*this, ImagOp()); }
TyxEqnTile TyxEqnTile::conj() const { return unary(*this, ConjOp()); }
TyxEqnTile TyxEqnTile::ceil() const { return unary(*this, CeilOp()); }
TyxEqnTile TyxEqnTile::floor() const { return unary(*this, FloorOp()); }
TyxEqnTile TyxEqnTile::trunc() const { return unary(*this, TruncOp()); }
TyxEqnTile TyxEqnTile::round() const { return unary(*this, RoundOp()); }
TyxEqnTile TyxEqnTile::j0() const { return unary(*this, J0Op()); }
TyxEqnTile TyxEqnTile::j1() const { return unary(*this, J1Op()); }
TyxEqnTile TyxEqnTile::y0() const { return unary(*this, Y0Op()); }
TyxEqnTile TyxEqnTile::y1() const { return unary(*this, Y1Op()); }
TyxEqnTile TyxEqnTile::jn(int order) const { return unary(*this, JnOp{order}); }
TyxEqnTile TyxEqnTile::yn(int order) const { return unary(*this, YnOp{order}); }
TyxEqnTile TyxEqnTile::sinc() const { return unary(*this, SincOp()); }
TyxEqnTile TyxEqnTile::factorial() const { return unary(*this, FactorialOp{factorials().data()}); }
TyxEqnTile TyxEqnTile::pow(double exponent) const { return unary(*this, PowOp{exponent}); }

TyxEqnTile TyxEqnTile::pow(double base, const TyxEqnTile &exponents)
{
    return unary(exponents, PowBaseOp{base});
}

TyxEqnTile TyxEqnTile::atan2(const TyxEqnTile &y, const TyxEqnTile &x)
{
    return realTiles(y, x, [](double a, double b) { return std::atan2(a, b); });
}

TyxEqnTile TyxEqnTile::ldexp(double) const
{
    // Kept in the interface of the language, which maps ldexp here; it
    // computes nothing.
    return TyxEqnTile();
}

TyxEqnTile TyxEqnTile::logb(double base) const { return unary(*this, LogbOp{1.0 / std::log(base)}); }

TyxEqnTile TyxEqnTile::cmplx(const TyxEqnTile &re, const TyxEqnTile &im)
{
    return realTiles(re, im, [](double a, double b) { return Cplx(a, b); });
}

TyxEqnTile TyxEqnTile::cmplx(const TyxEqnTile &re, double im)
{
    return realUnary(re, [im](double a) { return Cplx(a, im); });
}

TyxEqnTile TyxEqnTile::cmplx(double re, const TyxEqnTile &im)
{
    return realUnary(im, [re](double b) { return Cplx(re, b); });
}

// ---- Reductions --------------------------------------------------------------------

double TyxEqnTile::max() const
{
    // The start value is the smallest positive normal double, kept exactly:
    // a tile of negative values answers it.
    return reduce(*this, 2.2250738585072014e-308, [](double m, double v) { return v > m ? v : m; });
}

double TyxEqnTile::min() const
{
    return reduce(*this, 1.7976931348623157e308, [](double m, double v) { return v < m ? v : m; });
}

double TyxEqnTile::sum() const
{
    return reduce(*this, 0.0, [](double s, double v) { return s + v; });
}

double TyxEqnTile::median() const
{
    // With nothing to choose from there is no median.
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    if (!readable(*this) || m_size == 0)
        return none;
    return visitRealCode(m_dataType.code(), none, [&](auto tt) {
        using T = typename decltype(tt)::type;
        const T *p = internal::samples<T>(*this);
        std::vector<T> values;
        if (m_step == 1) {
            values.assign(p, p + m_size);
        } else {
            values.resize(m_size);
            for (uint64_t i = 0; i < m_size; ++i)
                values[i] = p[i * m_step];
        }
        // The lower of the two middle values for an even count. Selecting
        // that element gives what a full sort would, in linear time; NaN
        // orders last so that the ordering stays strict.
        const uint64_t k = m_size % 2 ? m_size / 2 : m_size / 2 - 1;
        std::nth_element(values.begin(), values.begin() + k, values.end(), [](const T &x, const T &y) {
            if constexpr (std::is_floating_point_v<T>)
                return x < y || (x == x && y != y);
            else
                return x < y;
        });
        return widen(values[k]);
    });
}

// ---- Element-wise limits --------------------------------------------------------------

TyxEqnTile TyxEqnTile::max(const TyxEqnTile &other) const
{
    return realTiles(*this, other, [](double x, double y) { return x < y ? y : x; });
}

TyxEqnTile TyxEqnTile::min(const TyxEqnTile &other) const
{
    return realTiles(*this, other, [](double x, double y) { return y < x ? y : x; });
}

TyxEqnTile TyxEqnTile::max(double value) const
{
    return realUnary(*this, [value](double x) { return x < value ? value : x; });
}

TyxEqnTile TyxEqnTile::min(double value) const
{
    return realUnary(*this, [value](double x) { return value < x ? value : x; });
}

TyxEqnTile TyxEqnTile::clipmin(double limit) const
{
    return realUnary(*this, [limit](double x) { return limit > x ? limit : x; });
}

TyxEqnTile TyxEqnTile::clipmax(double limit) const
{
    return realUnary(*this, [limit](double x) { return x > limit ? limit : x; });
}

TyxEqnTile TyxEqnTile::clip(double lo, double hi) const
{
    return realUnary(*this, [lo, hi](double x) { return lo > x ? lo : (x > hi ? hi : x); });
}

// ---- roundclip -------------------------------------------------------------------------

TyxEqnTile TyxEqnTile::roundclip(const TyxDataType &type, double lo, double hi) const
{
    if (!readable(*this))
        return TyxEqnTile();
    const uint64_t n = m_size;
    const uint64_t step = m_step;
    // The index range goes to the loop base in chunks, each a sub-range for
    // one worker; without parallel loops it is one chunk.
    const bool parallel = useParallelLoops() && (isTimingLoops() || n >= kParallelThreshold);
    const uint64_t chunk = parallel ? std::max(kChunkSize, n / kMaxChunks + 1) : n + 1;
    TyxLoopRange range;
    range.begin = 0;
    range.end = static_cast<unsigned int>(n / chunk + 1);
    range.step = 1;
    return visitRealCode(m_dataType.code(), TyxEqnTile(), [&](auto ta) {
        using A = typename decltype(ta)::type;
        const A *in = internal::samples<A>(*this);
        return visitRealCode(type.code(), TyxEqnTile(), [&](auto tt) {
            using T = typename decltype(tt)::type;
            bool failed = false;
            TyxEqnTile result = produce<T>(type, n, [&](T *out) {
                failed = TyxForLoopBase::run(range, parallel, isTimingLoops(), [&](int64_t c) {
                    const uint64_t begin = static_cast<uint64_t>(c) * chunk;
                    roundClipRange(out, in, step, begin, std::min(n, begin + chunk), lo, hi);
                });
            });
            // The loop base has posted the failure of a worker; partly
            // converted samples are not handed out.
            return failed ? TyxEqnTile() : result;
        });
    });
}

} // namespace tyx
