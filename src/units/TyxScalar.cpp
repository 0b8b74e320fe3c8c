// Complex values with physical units.
#include <tyx/TyxScalar.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <istream>
#include <limits>
#include <ostream>
#include <sstream>
#include <utility>

#include <tyx/TyxVariant.h>

#include "core/TyxFloatCompare.h"
#include "core/TyxPost.h"
#include "core/TyxSaturatingCast.h"
#include "units/TyxBessel.h"
#include "units/TyxShortestText.h"

namespace tyx {

namespace {

using Complex = std::complex<double>;

[[noreturn]] void throwComplex(const wchar_t *op)
{
    TYX_THROW_ERROR(TyxString(L"Complex values are not valid for '") + op + L"'");
}

[[noreturn]] void throwUnitLess(const wchar_t *op)
{
    TYX_THROW_ERROR(TyxString(L"Values must be unit-less for '") + op + L"'");
}

[[noreturn]] void throwInvalid(const wchar_t *op)
{
    TYX_THROW_ERROR(TyxString(L"Invalid argument for '") + op + L"'");
}

[[noreturn]] void throwUnits(const TyxUnits &from, const TyxUnits &to)
{
    TYX_THROW_ERROR(L"Cannot convert physical units from '" + from.toString() + L"' to '" + to.toString() +
                    L"'");
}

const TyxUnits &radians()
{
    static const TyxUnits rad(TyxUnits::Radian);
    return rad;
}

// Principal square root of re + i im, scaled by a power of 4 so that the
// modulus neither overflows nor loses its digits to underflow.
Complex principalRoot(double re, double im)
{
    if (!std::isfinite(re) || !std::isfinite(im))
        return std::sqrt(Complex(re, im));
    int exponent = std::max(re != 0.0 ? std::ilogb(re) : std::numeric_limits<int>::min(),
                            im != 0.0 ? std::ilogb(im) : std::numeric_limits<int>::min());
    exponent &= ~1;
    const double x = std::scalbn(re, -exponent);
    const double y = std::scalbn(im, -exponent);
    const double t = std::sqrt((std::fabs(x) + std::hypot(x, y)) * 0.5);
    const Complex root =
        x >= 0.0 ? Complex(t, y / (2.0 * t)) : Complex(std::fabs(y) / (2.0 * t), std::copysign(t, y));
    return {std::scalbn(root.real(), exponent / 2), std::scalbn(root.imag(), exponent / 2)};
}

const bool joinedVariant = [] {
    using internal::TyxVariantRegistrar;
    TyxVariantRegistrar::join<TyxScalar>();
    TyxVariantRegistrar::joinCasts<TyxScalar, TyxRational<int64_t>, TyxRational<uint64_t>>();
    return true;
}();

const std::array<uint64_t, 171> &factorials()
{
    // Unsigned arithmetic wraps: from 21 on the entries are the true
    // factorials modulo 2^64, and from 66 on they are 0.
    static const std::array<uint64_t, 171> table = [] {
        std::array<uint64_t, 171> values{};
        values[0] = 1;
        for (uint64_t i = 1; i < values.size(); ++i)
            values[i] = values[i - 1] * i;
        return values;
    }();
    return table;
}

} // namespace

TyxScalar &TyxScalar::operator=(double value)
{
    m_real = value;
    m_imaginary = 0.0;
    m_units.clear();
    return *this;
}

TyxScalar &TyxScalar::operator=(const std::complex<double> &value)
{
    m_real = value.real();
    m_imaginary = value.imag();
    m_units.clear();
    return *this;
}

void TyxScalar::requireUnitLess(const wchar_t *op) const
{
    if (!isUnitLess())
        throwUnitLess(op);
}

void TyxScalar::requireReal(const wchar_t *op) const
{
    if (!isReal())
        throwComplex(op);
}

void TyxScalar::convertTo(const TyxUnits &target)
{
    if (m_units == target)
        return;
    const double factor = TyxUnits::addFactor(target, m_units);
    if (factor == 0.0)
        throwUnits(target, m_units);
    m_real *= factor;
    m_imaginary *= factor;
    m_units = target;
}

double TyxScalar::factorFrom(const TyxScalar &other) const
{
    if (m_units == other.m_units)
        return 1.0;
    const double factor = TyxUnits::addFactor(m_units, other.m_units);
    if (factor == 0.0)
        throwUnits(m_units, other.m_units);
    return factor;
}

// ---- Arithmetic ---------------------------------------------------------------

TyxScalar &TyxScalar::operator+=(const TyxScalar &other)
{
    const double factor = factorFrom(other);
    m_real += other.m_real * factor;
    m_imaginary += other.m_imaginary * factor;
    return *this;
}

TyxScalar &TyxScalar::operator-=(const TyxScalar &other)
{
    const double factor = factorFrom(other);
    m_real -= other.m_real * factor;
    m_imaginary -= other.m_imaginary * factor;
    return *this;
}

TyxScalar &TyxScalar::operator*=(const TyxScalar &other)
{
    double re = other.m_real;
    double im = other.m_imaginary;
    TyxUnits units;
    if (!isUnitLess() || !other.isUnitLess()) {
        const double factor = TyxUnits::multFactor(m_units, other.m_units, &units);
        re *= factor;
        im *= factor;
    }
    if (isReal() && im == 0.0) {
        m_real *= re;
    } else {
        const Complex product = complex() * Complex(re, im);
        m_real = product.real();
        m_imaginary = product.imag();
    }
    m_units = units;
    return *this;
}

TyxScalar &TyxScalar::operator/=(const TyxScalar &other)
{
    if (other.m_real == 0.0 && other.m_imaginary == 0.0)
        TYX_THROW_ERROR(L"Cannot divide by zero");
    TyxUnits units;
    double factor = 1.0;
    if (m_units != other.m_units)
        factor = TyxUnits::divFactor(m_units, other.m_units, &units);
    if (isReal() && other.isReal()) {
        m_real = m_real / other.m_real * factor;
    } else {
        const Complex quotient = complex() / other.complex() * factor;
        m_real = quotient.real();
        m_imaginary = quotient.imag();
    }
    m_units = units;
    return *this;
}

TyxScalar &TyxScalar::operator%=(const TyxScalar &other)
{
    if (!isReal() || !other.isReal())
        throwComplex(L"%=");
    if (!isUnitLess() || !other.isUnitLess())
        throwUnitLess(L"%=");
    const int64_t dividend = internal::truncToInt64(m_real);
    const int64_t divisor = internal::truncToInt64(other.m_real);
    // Both cases would stop the process with a division fault; they are
    // reported like any other failure of the arithmetic instead.
    if (divisor == 0)
        TYX_THROW_ERROR(L"Cannot divide by zero");
    if (divisor == -1 && dividend == std::numeric_limits<int64_t>::min())
        throwInvalid(L"%=");
    m_real = static_cast<double>(dividend % divisor);
    return *this;
}

TyxScalar &TyxScalar::negate()
{
    m_real = -m_real;
    m_imaginary = -m_imaginary;
    return *this;
}

// Units that do not convert make the scalars unequal rather than throw: the
// variant compares values of any two types through this operator.
bool TyxScalar::operator==(const TyxScalar &other) const
{
    double re = other.m_real;
    double im = other.m_imaginary;
    if (m_units != other.m_units) {
        const double factor = TyxUnits::addFactor(m_units, other.m_units);
        if (factor == 0.0)
            return false;
        re *= factor;
        im *= factor;
    }
    if (!internal::withinFourUlps(m_real, re))
        return false;
    return (m_imaginary == 0.0 && im == 0.0) || internal::withinFourUlps(m_imaginary, im);
}

bool TyxScalar::operator<(const TyxScalar &other) const
{
    if (!isReal() || !other.isReal())
        throwComplex(L"<");
    return m_real < other.m_real * factorFrom(other);
}

bool TyxScalar::operator>(const TyxScalar &other) const
{
    if (!isReal() || !other.isReal())
        throwComplex(L">");
    return m_real > other.m_real * factorFrom(other);
}

// ---- Functions without an argument -----------------------------------------------

TyxScalar &TyxScalar::abs()
{
    m_real = isReal() ? std::fabs(m_real) : std::hypot(m_real, m_imaginary);
    m_imaginary = 0.0;
    return *this;
}

namespace {

// The inverse trigonometric functions: unit-less in, radians out.
template <typename RealFn, typename ComplexFn>
void inverseTrig(TyxScalar &x, const wchar_t *op, RealFn realFn, ComplexFn complexFn)
{
    if (!x.isUnitLess())
        throwUnitLess(op);
    if (x.isReal())
        x = TyxScalar(realFn(x.real()), radians());
    else
        x = TyxScalar(complexFn(x.complex()), radians());
}

// The trigonometric and hyperbolic functions: an angle is taken in radians,
// and the result is unit-less.
template <typename RealFn, typename ComplexFn>
void trig(TyxScalar &x, RealFn realFn, ComplexFn complexFn)
{
    if (!x.isUnitLess())
        x.convertUnits(radians());
    if (x.isReal())
        x = realFn(x.real());
    else
        x = complexFn(x.complex());
}

// exp and the logarithms: unit-less in and out.
template <typename RealFn, typename ComplexFn>
void unitLessFunction(TyxScalar &x, const wchar_t *op, RealFn realFn, ComplexFn complexFn)
{
    if (!x.isUnitLess())
        throwUnitLess(op);
    if (x.isReal())
        x = realFn(x.real());
    else
        x = complexFn(x.complex());
}

template <typename RealFn>
void bessel(TyxScalar &x, const wchar_t *op, RealFn realFn)
{
    if (!x.isUnitLess())
        throwUnitLess(op);
    if (!x.isReal())
        throwComplex(op);
    x = realFn(x.real());
}

} // namespace

TyxScalar &TyxScalar::acos()
{
    inverseTrig(
        *this, L"acos", [](double v) { return std::acos(v); }, [](Complex v) { return std::acos(v); });
    return *this;
}

TyxScalar &TyxScalar::asin()
{
    inverseTrig(
        *this, L"asin", [](double v) { return std::asin(v); }, [](Complex v) { return std::asin(v); });
    return *this;
}

TyxScalar &TyxScalar::atan()
{
    inverseTrig(
        *this, L"atan", [](double v) { return std::atan(v); }, [](Complex v) { return std::atan(v); });
    return *this;
}

TyxScalar &TyxScalar::arg()
{
    *this = TyxScalar(std::atan2(m_imaginary, m_real), radians());
    return *this;
}

TyxScalar &TyxScalar::ceil()
{
    requireReal(L"ceil");
    m_real = std::ceil(m_real);
    return *this;
}

TyxScalar &TyxScalar::floor()
{
    requireReal(L"floor");
    m_real = std::floor(m_real);
    return *this;
}

TyxScalar &TyxScalar::trunc()
{
    requireReal(L"trunc");
    m_real = std::trunc(m_real);
    return *this;
}

namespace {

// 0.5 added (or, below zero, subtracted) in double, then truncation. The sum
// is itself rounded, so 0.49999999999999994 gives 1 and an odd value above
// 2^52 goes one further out; callers rely on this formula.
double addHalfAndTruncate(double value) { return std::trunc(value >= 0.0 ? value + 0.5 : value - 0.5); }

} // namespace

TyxScalar &TyxScalar::round()
{
    m_real = addHalfAndTruncate(m_real);
    m_imaginary = addHalfAndTruncate(m_imaginary);
    return *this;
}

TyxScalar &TyxScalar::conj()
{
    m_imaginary = -m_imaginary;
    return *this;
}

TyxScalar &TyxScalar::cos()
{
    trig(
        *this, [](double v) { return std::cos(v); }, [](Complex v) { return std::cos(v); });
    return *this;
}

TyxScalar &TyxScalar::sin()
{
    trig(
        *this, [](double v) { return std::sin(v); }, [](Complex v) { return std::sin(v); });
    return *this;
}

TyxScalar &TyxScalar::tan()
{
    trig(
        *this, [](double v) { return std::tan(v); }, [](Complex v) { return std::tan(v); });
    return *this;
}

TyxScalar &TyxScalar::cosh()
{
    trig(
        *this, [](double v) { return std::cosh(v); }, [](Complex v) { return std::cosh(v); });
    return *this;
}

TyxScalar &TyxScalar::sinh()
{
    trig(
        *this, [](double v) { return std::sinh(v); }, [](Complex v) { return std::sinh(v); });
    return *this;
}

TyxScalar &TyxScalar::tanh()
{
    trig(
        *this, [](double v) { return std::tanh(v); }, [](Complex v) { return std::tanh(v); });
    return *this;
}

TyxScalar &TyxScalar::sinc()
{
    if (std::hypot(m_real, m_imaginary) < 2.220446049250313e-16) {
        m_real = 1.0;
        m_imaginary = 0.0;
        if (!isUnitLess())
            m_units.pow(-1.0);
        return *this;
    }
    TyxScalar result = std::as_const(*this).sin();
    result /= *this;
    return *this = result;
}

TyxScalar &TyxScalar::exp()
{
    unitLessFunction(
        *this, L"exp", [](double v) { return std::exp(v); }, [](Complex v) { return std::exp(v); });
    return *this;
}

TyxScalar &TyxScalar::log()
{
    unitLessFunction(
        *this, L"log", [](double v) { return std::log(v); }, [](Complex v) { return std::log(v); });
    return *this;
}

TyxScalar &TyxScalar::log10()
{
    unitLessFunction(
        *this, L"log10", [](double v) { return std::log10(v); }, [](Complex v) { return std::log10(v); });
    return *this;
}

TyxScalar &TyxScalar::norm()
{
    m_real = m_real * m_real + m_imaginary * m_imaginary;
    m_imaginary = 0.0;
    m_units.pow(2.0);
    return *this;
}

TyxScalar &TyxScalar::factorial()
{
    if (!isUnitLess() || !isReal() || !(m_real >= 0.0 && m_real <= 170.0))
        throwInvalid(L"factorial");
    m_real = static_cast<double>(factorials()[static_cast<size_t>(m_real)]);
    return *this;
}

TyxScalar &TyxScalar::j0()
{
    bessel(*this, L"j0", [](double v) { return ::j0(v); });
    return *this;
}

TyxScalar &TyxScalar::j1()
{
    bessel(*this, L"j1", [](double v) { return ::j1(v); });
    return *this;
}

TyxScalar &TyxScalar::y0()
{
    bessel(*this, L"y0", [](double v) { return ::y0(v); });
    return *this;
}

TyxScalar &TyxScalar::y1()
{
    bessel(*this, L"y1", [](double v) { return ::y1(v); });
    return *this;
}

TyxScalar &TyxScalar::sqrt()
{
    if (isReal() && m_real >= 0.0) {
        m_real = std::sqrt(m_real);
    } else {
        const Complex root = principalRoot(m_real, m_imaginary);
        m_real = root.real();
        m_imaginary = root.imag();
    }
    m_units.pow(0.5);
    return *this;
}

// ---- Functions with arguments -------------------------------------------------

TyxScalar &TyxScalar::atan2(const TyxScalar &y, const TyxScalar &x)
{
    TyxScalar divisor = x;
    divisor.convertTo(y.m_units);
    if (y.isReal() && divisor.isReal())
        return *this = TyxScalar(std::atan2(y.m_real, divisor.m_real), radians());
    // With the divisor in the units of y the quotient is unit-less.
    TyxScalar quotient = y;
    quotient /= divisor;
    return *this = quotient.atan();
}

TyxScalar &TyxScalar::hypot(const TyxScalar &a, const TyxScalar &b)
{
    if (!a.isReal() || !b.isReal())
        throwComplex(L"hypot");
    TyxScalar other = b;
    other.convertTo(a.m_units);
    return *this = TyxScalar(std::hypot(a.m_real, other.m_real), a.m_units);
}

TyxScalar &TyxScalar::clip(const TyxScalar &low, const TyxScalar &high)
{
    if (high < low)
        throwInvalid(L"clip");
    convertTo(low.m_units);
    if (*this < low)
        *this = low;
    else if (*this > high)
        *this = high;
    return *this;
}

TyxScalar &TyxScalar::clipmax(const TyxScalar &limit)
{
    convertTo(limit.m_units);
    if (*this > limit)
        *this = limit;
    return *this;
}

TyxScalar &TyxScalar::clipmin(const TyxScalar &limit)
{
    convertTo(limit.m_units);
    if (*this < limit)
        *this = limit;
    return *this;
}

TyxScalar &TyxScalar::convertUnits(const TyxUnits &units)
{
    convertTo(units);
    return *this;
}

TyxScalar &TyxScalar::jn(const TyxScalar &n)
{
    n.requireUnitLess(L"jn");
    n.requireReal(L"jn");
    const int order = internal::saturatingCast<int>(n.m_real);
    bessel(*this, L"jn", [order](double v) { return internal::boundedJn(order, v); });
    return *this;
}

TyxScalar &TyxScalar::yn(const TyxScalar &n)
{
    n.requireUnitLess(L"yn");
    n.requireReal(L"yn");
    const int order = internal::saturatingCast<int>(n.m_real);
    bessel(*this, L"yn", [order](double v) { return internal::boundedYn(order, v); });
    return *this;
}

TyxScalar &TyxScalar::ldexp(const TyxScalar &e)
{
    e.requireUnitLess(L"ldexp");
    TyxScalar scale(2.0);
    scale.pow(e);
    return *this *= scale;
}

TyxScalar &TyxScalar::logb(const TyxScalar &base)
{
    if (isReal() && isUnitLess() && base.isReal() && base.isUnitLess()) {
        m_real = std::log(m_real) / std::log(base.m_real);
        return *this;
    }
    TyxScalar quotient = std::as_const(*this).log();
    quotient /= base.log();
    return *this = quotient;
}

TyxScalar &TyxScalar::pow(const TyxScalar &e)
{
    e.requireUnitLess(L"pow");
    if (e.isReal()) {
        const double power = e.m_real;
        if (isReal()) {
            m_real = power == 2.0 ? m_real * m_real : std::pow(m_real, power);
        } else {
            const Complex result = std::pow(complex(), power);
            m_real = result.real();
            m_imaginary = result.imag();
        }
        m_units.pow(power);
        return *this;
    }
    requireUnitLess(L"pow");
    const Complex result = std::pow(complex(), e.complex());
    m_real = result.real();
    m_imaginary = result.imag();
    return *this;
}

TyxScalar &TyxScalar::step(const TyxScalar &a)
{
    const double result = *this == a ? 0.5 : (*this < a ? 0.0 : 1.0);
    return *this = TyxScalar(result);
}

TyxScalar &TyxScalar::rect(const TyxScalar &a, const TyxScalar &b)
{
    if (b < a)
        throwInvalid(L"rect");
    double result = 1.0;
    if (*this == a || *this == b)
        result = 0.5;
    else if (*this < a || *this > b)
        result = 0.0;
    return *this = TyxScalar(result);
}

TyxScalar &TyxScalar::triang(const TyxScalar &a, const TyxScalar &b)
{
    // The error names "rect": the two functions share their bounds check.
    if (b < a)
        throwInvalid(L"rect");
    if (*this == a || *this == b || *this < a || *this > b)
        return *this = TyxScalar(0.0);
    const TyxScalar half(0.5);
    const TyxScalar middle = (a + b) * half;
    TyxScalar distance = (*this - middle) / ((b - a) * half);
    return *this = TyxScalar(1.0) - distance.abs();
}

TyxScalar TyxScalar::fromPolar(const TyxScalar &magnitude, const TyxScalar &angle)
{
    if (!magnitude.isReal() || !angle.isReal())
        throwComplex(L"fromPolar");
    TyxScalar radiansAngle = angle;
    if (!radiansAngle.isUnitLess())
        radiansAngle.convertTo(radians());
    return TyxScalar(magnitude.m_real * std::cos(radiansAngle.m_real),
                     magnitude.m_real * std::sin(radiansAngle.m_real), magnitude.m_units);
}

// ---- Text -------------------------------------------------------------------------

TyxString TyxScalar::toString() const
{
    TyxString text =
        isReal() ? internal::shortestText(m_real)
                 : L"(" + internal::shortestText(m_real) + L"," + internal::shortestText(m_imaginary) + L")";
    if (!isUnitLess())
        text += L" " + m_units.toString();
    return text;
}

bool TyxScalar::fromString(const TyxString &text, TyxScalar &result)
{
    const TyxString trimmed = trim(text);
    if (trimmed.empty())
        return false;
    Complex value;
    size_t rest = 0;
    if (trimmed.front() == L'(') {
        const size_t close = trimmed.find(L')');
        if (close == TyxString::npos)
            return false;
        std::wistringstream stream(trimmed.substr(0, close + 1));
        if (!(stream >> value))
            return false;
        rest = close + 1;
    } else {
        wchar_t *end = nullptr;
        value = std::wcstod(trimmed.c_str(), &end);
        if (end == trimmed.c_str())
            return false;
        rest = static_cast<size_t>(end - trimmed.c_str());
    }
    TyxUnits units;
    double scale = 1.0;
    const TyxString unitText = trim(trimmed.substr(rest));
    if (!unitText.empty()) {
        TyxTextMsg msg;
        scale = units.fromString(unitText, msg);
        if (!msg.empty())
            return false;
    }
    result = TyxScalar(value * scale, units);
    return true;
}

std::wostream &operator<<(std::wostream &os, const TyxScalar &scalar) { return os << scalar.toString(); }

std::ostream &operator<<(std::ostream &os, const TyxScalar &scalar) { return os << scalar.toString(); }

namespace {

template <typename Stream>
Stream &readScalar(Stream &is, TyxScalar &scalar)
{
    TyxString line;
    if (getline(is, line) && !TyxScalar::fromString(line, scalar))
        is.setstate(std::ios_base::failbit);
    return is;
}

} // namespace

std::wistream &operator>>(std::wistream &is, TyxScalar &scalar) { return readScalar(is, scalar); }

std::istream &operator>>(std::istream &is, TyxScalar &scalar) { return readScalar(is, scalar); }

} // namespace tyx
