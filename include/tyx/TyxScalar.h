// A complex number with physical units, and the arithmetic that respects them.
#pragma once

#include <complex>
#include <iosfwd>

#include <tyx/TyxRational.h>
#include <tyx/TyxString.h>
#include <tyx/TyxUnits.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// A complex value with physical units: real part, imaginary part and units.
/// Arithmetic converts between compatible units and functions check the units
/// they accept. Every failure is thrown as a TyxTextMsg of type Error, one of
/// "Complex values are not valid for '<op>'", "Values must be unit-less for
/// '<op>'", "Invalid argument for '<op>'", "Cannot convert physical units from
/// '<from>' to '<to>'" and "Cannot divide by zero". A failing call leaves the
/// value as it was, except that an operation that converts units first keeps
/// the converted value.
///
/// Each operation has an in-place form, which changes this scalar and returns
/// it, and a const form of the same name, which returns the changed copy. On
/// a non-const scalar the in-place form is the one called.
class TYX_EXPORT TyxScalar {
public:
    /// 0 without units.
    TyxScalar() = default;
    explicit TyxScalar(double value, const TyxUnits &units = TyxUnits()) : m_real(value), m_units(units) {}
    TyxScalar(double re, double im, const TyxUnits &units) : m_real(re), m_imaginary(im), m_units(units) {}
    TyxScalar(const std::complex<double> &value, const TyxUnits &units)
        : m_real(value.real()), m_imaginary(value.imag()), m_units(units)
    {
    }

    /// Replaces the value and clears the units.
    TyxScalar &operator=(double value);
    TyxScalar &operator=(const std::complex<double> &value);

    double real() const { return m_real; }
    double imaginary() const { return m_imaginary; }
    std::complex<double> complex() const { return {m_real, m_imaginary}; }
    const TyxUnits &units() const { return m_units; }
    void setReal(double re) { m_real = re; }
    void setImaginary(double im) { m_imaginary = im; }
    /// Replaces the units without converting the value.
    void setUnits(const TyxUnits &units) { m_units = units; }

    /// The imaginary part is 0.0.
    bool isReal() const { return m_imaginary == 0.0; }
    bool isUnitLess() const { return m_units.isUnitLess(); }

    // ---- Arithmetic ----------------------------------------------------------

    /// Adds \p other converted to these units; the units stay.
    TyxScalar &operator+=(const TyxScalar &other);
    TyxScalar &operator-=(const TyxScalar &other);
    /// Multiplies; the units combine, a shared category keeping this unit.
    TyxScalar &operator*=(const TyxScalar &other);
    /// Divides; equal units give a unit-less quotient. A divisor of exactly
    /// 0 throws "Cannot divide by zero".
    TyxScalar &operator/=(const TyxScalar &other);
    /// Integer remainder of the two values truncated to 64 bits; both must
    /// be real and unit-less. A divisor that truncates to 0 throws "Cannot
    /// divide by zero", and the most negative integer modulo -1 throws
    /// "Invalid argument for '%='", where the processor would fault.
    TyxScalar &operator%=(const TyxScalar &other);

    TyxScalar operator+(const TyxScalar &other) const { return TyxScalar(*this) += other; }
    TyxScalar operator-(const TyxScalar &other) const { return TyxScalar(*this) -= other; }
    TyxScalar operator*(const TyxScalar &other) const { return TyxScalar(*this) *= other; }
    TyxScalar operator/(const TyxScalar &other) const { return TyxScalar(*this) /= other; }
    TyxScalar operator%(const TyxScalar &other) const { return TyxScalar(*this) %= other; }

    /// Flips the sign of both parts. The unary minus is the const form only,
    /// so that `-x` never changes x.
    TyxScalar &negate();
    TyxScalar operator-() const { return TyxScalar(*this).negate(); }

    /// Equal within 4 units in the last place, after \p other is converted to
    /// these units; imaginary parts count when either is not 0.0. Units that
    /// do not convert and NaN compare unequal.
    bool operator==(const TyxScalar &other) const;
    bool operator!=(const TyxScalar &other) const { return !(*this == other); }
    /// Compares the real parts after \p other is converted to these units;
    /// both must be real.
    bool operator<(const TyxScalar &other) const;
    bool operator>(const TyxScalar &other) const;

    // ---- Functions without an argument ----------------------------------------

    /// Modulus; a real value loses its sign. Units stay.
    TyxScalar &abs();
    TyxScalar abs() const { return TyxScalar(*this).abs(); }
    /// Inverse cosine of a unit-less value, in "rad".
    TyxScalar &acos();
    TyxScalar acos() const { return TyxScalar(*this).acos(); }
    /// Phase angle, real, in "rad".
    TyxScalar &arg();
    TyxScalar arg() const { return TyxScalar(*this).arg(); }
    /// Inverse sine of a unit-less value, in "rad".
    TyxScalar &asin();
    TyxScalar asin() const { return TyxScalar(*this).asin(); }
    /// Inverse tangent of a unit-less value, in "rad".
    TyxScalar &atan();
    TyxScalar atan() const { return TyxScalar(*this).atan(); }
    /// Rounds a real value up; units stay.
    TyxScalar &ceil();
    TyxScalar ceil() const { return TyxScalar(*this).ceil(); }
    /// Flips the sign of the imaginary part.
    TyxScalar &conj();
    TyxScalar conj() const { return TyxScalar(*this).conj(); }
    /// Cosine of a unit-less value or of an angle; the result is unit-less.
    TyxScalar &cos();
    TyxScalar cos() const { return TyxScalar(*this).cos(); }
    /// Hyperbolic cosine, with units as cos().
    TyxScalar &cosh();
    TyxScalar cosh() const { return TyxScalar(*this).cosh(); }
    /// Exponential of a unit-less value.
    TyxScalar &exp();
    TyxScalar exp() const { return TyxScalar(*this).exp(); }
    /// Factorial of a real, unit-less value from 0 to 170, truncated; else
    /// "Invalid argument for 'factorial'". Exact up to 20; beyond, the
    /// factorial modulo 2^64, which is 0 from 66 on.
    TyxScalar &factorial();
    TyxScalar factorial() const { return TyxScalar(*this).factorial(); }
    /// Rounds a real value down; units stay.
    TyxScalar &floor();
    TyxScalar floor() const { return TyxScalar(*this).floor(); }
    /// Bessel function of the first kind, order 0, of a real unit-less value.
    TyxScalar &j0();
    TyxScalar j0() const { return TyxScalar(*this).j0(); }
    /// Bessel function of the first kind, order 1.
    TyxScalar &j1();
    TyxScalar j1() const { return TyxScalar(*this).j1(); }
    /// Natural logarithm of a unit-less value; a negative real gives NaN.
    TyxScalar &log();
    TyxScalar log() const { return TyxScalar(*this).log(); }
    /// Decimal logarithm of a unit-less value.
    TyxScalar &log10();
    TyxScalar log10() const { return TyxScalar(*this).log10(); }
    /// Squared modulus, real; the units are squared.
    TyxScalar &norm();
    TyxScalar norm() const { return TyxScalar(*this).norm(); }
    /// Rounds both parts away from zero: adds 0.5 (subtracts it below zero)
    /// and truncates, so 0.49999999999999994 rounds to 1; units stay.
    TyxScalar &round();
    TyxScalar round() const { return TyxScalar(*this).round(); }
    /// Sine, with units as cos().
    TyxScalar &sin();
    TyxScalar sin() const { return TyxScalar(*this).sin(); }
    /// sin(x) / x, and 1 (with inverted units) for a modulus below the
    /// double epsilon.
    TyxScalar &sinc();
    TyxScalar sinc() const { return TyxScalar(*this).sinc(); }
    /// Hyperbolic sine, with units as cos().
    TyxScalar &sinh();
    TyxScalar sinh() const { return TyxScalar(*this).sinh(); }
    /// Principal square root; units are raised to 0.5, and a negative real
    /// gives an imaginary root.
    TyxScalar &sqrt();
    TyxScalar sqrt() const { return TyxScalar(*this).sqrt(); }
    /// Tangent, with units as cos().
    TyxScalar &tan();
    TyxScalar tan() const { return TyxScalar(*this).tan(); }
    /// Hyperbolic tangent, with units as cos().
    TyxScalar &tanh();
    TyxScalar tanh() const { return TyxScalar(*this).tanh(); }
    /// Rounds a real value toward zero; units stay.
    TyxScalar &trunc();
    TyxScalar trunc() const { return TyxScalar(*this).trunc(); }
    /// Bessel function of the second kind, order 0, of a real unit-less value.
    TyxScalar &y0();
    TyxScalar y0() const { return TyxScalar(*this).y0(); }
    /// Bessel function of the second kind, order 1.
    TyxScalar &y1();
    TyxScalar y1() const { return TyxScalar(*this).y1(); }

    // ---- Functions with arguments ---------------------------------------------

    /// Becomes the angle of \p y over \p x in "rad", \p x converted to the
    /// units of \p y first.
    TyxScalar &atan2(const TyxScalar &y, const TyxScalar &x);
    TyxScalar atan2(const TyxScalar &y, const TyxScalar &x) const { return TyxScalar(*this).atan2(y, x); }
    /// Converts to the units of \p low, then limits to [low, high]. Throws
    /// "Invalid argument for 'clip'" when \p high is below \p low.
    TyxScalar &clip(const TyxScalar &low, const TyxScalar &high);
    TyxScalar clip(const TyxScalar &low, const TyxScalar &high) const
    {
        return TyxScalar(*this).clip(low, high);
    }
    /// Converts to the units of \p limit and becomes \p limit when above it.
    TyxScalar &clipmax(const TyxScalar &limit);
    TyxScalar clipmax(const TyxScalar &limit) const { return TyxScalar(*this).clipmax(limit); }
    /// Converts to the units of \p limit and becomes \p limit when below it.
    TyxScalar &clipmin(const TyxScalar &limit);
    TyxScalar clipmin(const TyxScalar &limit) const { return TyxScalar(*this).clipmin(limit); }
    /// Converts the value to \p units.
    TyxScalar &convertUnits(const TyxUnits &units);
    TyxScalar convertUnits(const TyxUnits &units) const { return TyxScalar(*this).convertUnits(units); }
    /// Becomes the hypotenuse of the real values \p a and \p b, in \p a's
    /// units.
    TyxScalar &hypot(const TyxScalar &a, const TyxScalar &b);
    TyxScalar hypot(const TyxScalar &a, const TyxScalar &b) const { return TyxScalar(*this).hypot(a, b); }
    /// Bessel function of the first kind of order \p n (truncated). Orders
    /// beyond 10000 in magnitude take constant time: 0 where the value is
    /// below the smallest double, else NaN.
    TyxScalar &jn(const TyxScalar &n);
    TyxScalar jn(const TyxScalar &n) const { return TyxScalar(*this).jn(n); }
    /// Multiplies by 2 to the power \p e.
    TyxScalar &ldexp(const TyxScalar &e);
    TyxScalar ldexp(const TyxScalar &e) const { return TyxScalar(*this).ldexp(e); }
    /// Logarithm to \p base.
    TyxScalar &logb(const TyxScalar &base);
    TyxScalar logb(const TyxScalar &base) const { return TyxScalar(*this).logb(base); }
    /// Raises to the unit-less power \p e; units are raised to a real \p e,
    /// and a complex \p e needs a unit-less value.
    TyxScalar &pow(const TyxScalar &e);
    TyxScalar pow(const TyxScalar &e) const { return TyxScalar(*this).pow(e); }
    /// 1 inside (a, b), 0.5 at either end, 0 outside.
    TyxScalar &rect(const TyxScalar &a, const TyxScalar &b);
    TyxScalar rect(const TyxScalar &a, const TyxScalar &b) const { return TyxScalar(*this).rect(a, b); }
    /// 0 below \p a, 0.5 at \p a, 1 above.
    TyxScalar &step(const TyxScalar &a);
    TyxScalar step(const TyxScalar &a) const { return TyxScalar(*this).step(a); }
    /// A triangle over [a, b] with its peak of 1 in the middle, 0 outside.
    /// Throws "Invalid argument for 'rect'" when \p b is below \p a.
    TyxScalar &triang(const TyxScalar &a, const TyxScalar &b);
    TyxScalar triang(const TyxScalar &a, const TyxScalar &b) const { return TyxScalar(*this).triang(a, b); }
    /// Bessel function of the second kind of order \p n (truncated). Orders
    /// beyond 10000 in magnitude take constant time: -infinity where the
    /// value is beyond the largest double, else NaN.
    TyxScalar &yn(const TyxScalar &n);
    TyxScalar yn(const TyxScalar &n) const { return TyxScalar(*this).yn(n); }

    /// The value of \p magnitude at \p angle, in the magnitude's units. An
    /// angle without units is in radians.
    static TyxScalar fromPolar(const TyxScalar &magnitude, const TyxScalar &angle);

    // ---- Text -------------------------------------------------------------------

    /// A real value as the shortest number that reads back exactly, otherwise
    /// "(re,im)"; then a blank and the units when there are any: "1.5 m / s".
    TyxString toString() const;
    operator TyxString() const { return toString(); }
    /// Reads a number or "(re,im)", then optional units, which may follow the
    /// number without a blank ("2m") and whose scale applies ("2 mJ" is 0.002
    /// in the units of "J"). Returns false, leaving \p result alone, on bad
    /// text.
    static bool fromString(const TyxString &text, TyxScalar &result);

private:
    /// Converts the value to \p target; an incompatible unit throws the
    /// message naming \p target first.
    void convertTo(const TyxUnits &target);
    /// The factor that brings \p other into these units; throws the message
    /// naming these units first.
    double factorFrom(const TyxScalar &other) const;
    void requireUnitLess(const wchar_t *op) const;
    void requireReal(const wchar_t *op) const;

    double m_real = 0.0;
    double m_imaginary = 0.0;
    TyxUnits m_units;
};

/// Writes the text form.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxScalar &scalar);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxScalar &scalar);
/// Reads the rest of the line as fromString does; bad text sets the failure
/// bit and leaves \p scalar unchanged.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxScalar &scalar);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxScalar &scalar);

namespace internal {

template <>
struct TyxVariantTraits<TyxScalar> : TyxBuiltinVariantTraits<TyxScalar, TyxMetaType::Scalar> {
};

template <>
struct TyxDefaultCasts<TyxScalar> {
    /// The text form.
    static bool toString(const TyxScalar &value, TyxString &text)
    {
        text = value.toString();
        return true;
    }
    /// As TyxScalar::fromString.
    static bool fromString(const TyxString &text, TyxScalar &value)
    {
        return TyxScalar::fromString(text, value);
    }
    /// 0 without units.
    static void getDefault(TyxScalar &value) { value = TyxScalar(); }
};

/// A number becomes a scalar without units; a complex number keeps both parts.
template <TyxMatrixNumber From>
struct TyxCast<From, TyxScalar> {
    static bool cast(const From &from, TyxScalar &to)
    {
        to = TyxScalar(numberCast<std::complex<double>>(from), TyxUnits());
        return true;
    }
};

/// A scalar converts through its value as a double, then as that double:
/// the units and the imaginary part are dropped, so (0, 2i) is false as a
/// bool and (1, 2i) is (1, 0) as a complex number.
template <TyxMatrixNumber To>
struct TyxCast<TyxScalar, To> {
    static bool cast(const TyxScalar &from, To &to)
    {
        to = numberCast<To>(from.real());
        return true;
    }
};

/// A rational becomes a scalar of its value as a double, without units.
template <TyxMatrixRational From>
struct TyxCast<From, TyxScalar> {
    static bool cast(const From &from, TyxScalar &to)
    {
        double value = 0;
        TyxCast<From, double>::cast(from, value);
        return TyxCast<double, TyxScalar>::cast(value, to);
    }
};

/// A scalar's real value, as a double, becomes a rational by the rule of reals.
template <TyxMatrixRational To>
struct TyxCast<TyxScalar, To> {
    static bool cast(const TyxScalar &from, To &to)
    {
        return TyxCast<double, To>::cast(from.complex().real(), to);
    }
};

} // namespace internal

} // namespace tyx
