// Typed flat array of samples: the array value of the expression language.
#pragma once

#include <complex>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <type_traits>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxSafeBool.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// A run of samples of one data type with a step, in a shared TyxBuffer.
///
/// Arithmetic works in double precision: every result is a Double tile, or a
/// ComplexDouble tile when an operand is complex, with step 1 and the size of
/// the shorter operand. Scalars are combined with each element. Input types
/// I64 and U64 are not served, nor ComplexFloat with a scalar on the right;
/// an unserved or invalid operand gives an empty tile, never an error.
///
/// Copies share the buffer; clone() copies the samples. A tile is for one
/// thread at a time.
class TYX_EXPORT TyxEqnTile : public TyxObject, public internal::TyxSafeBool {
public:
    using Complex = std::complex<double>;

    /// The empty tile: step 1, size 0, invalid type, no buffer.
    TyxEqnTile();
    /// A tile of \p size samples of \p type in a new buffer.
    TyxEqnTile(const TyxDataType &type, uint64_t size);
    /// Wraps \p buffer, sharing it. With \p step 0 every element reads the
    /// first sample. A buffer too small for \p size elements by \p step makes
    /// every operation give an empty result.
    TyxEqnTile(const TyxBufferPtr &buffer, const TyxDataType &type, uint64_t size, uint64_t step);
    /// Shares the buffer of \p other.
    TyxEqnTile(const TyxEqnTile &other);
    TyxEqnTile &operator=(const TyxEqnTile &other);
    ~TyxEqnTile() override;

    /// A deep copy: the samples go to a new buffer; an empty tile stays empty.
    TyxEqnTile clone() const;
    /// Becomes a tile of \p size samples of \p type in a new buffer, with
    /// step 1; size 0 or an invalid type leave it without a buffer.
    void initialize(const TyxDataType &type, uint64_t size);

    /// Whether the size is 0.
    bool empty() const { return m_size == 0; }
    bool isEmpty() const { return m_size == 0; }
    uint64_t size() const { return m_size; }
    /// Distance between neighbouring elements, in samples.
    uint64_t step() const { return m_step; }
    const TyxDataType &dataType() const { return m_dataType; }
    TyxBufferConstPtr buffer() const { return m_buffer; }
    TyxBufferPtr &buffer() { return m_buffer; }

    /// "TyxEqnTile".
    TyxString className() const override;

    // Typed access to the samples: the library's addition beside the
    // described tile, so that no caller casts the buffer's block.

    /// The samples as a span of \p T, which must be the C++ type of the
    /// tile's data type (int8_t to uint64_t, float, double,
    /// std::complex<float>, std::complex<double>). Another \p T, a step
    /// other than 1, or a buffer too small for the samples posts an error
    /// saying why, and the result is an empty span when the handler returns.
    /// An empty tile gives an empty span without a message. The span points
    /// into the shared buffer and is valid while that block lives.
    template <class T>
    std::span<T> samples()
    {
        static_assert(TyxNumericType::codeOf<T>() != TyxNumericType::Invalid, "T is not a sample type");
        if (!sampleAccessAllowed(TyxNumericType::codeOf<T>()))
            return {};
        return std::span<T>(static_cast<T *>(m_buffer->data()), static_cast<size_t>(m_size));
    }
    /// As samples(), read-only.
    template <class T>
    std::span<const T> samples() const
    {
        static_assert(TyxNumericType::codeOf<T>() != TyxNumericType::Invalid, "T is not a sample type");
        if (!sampleAccessAllowed(TyxNumericType::codeOf<T>()))
            return {};
        return std::span<const T>(static_cast<const T *>(m_buffer->data()), static_cast<size_t>(m_size));
    }

    /// A tile of step 1 over \p samples, without a copy: the caller owns
    /// the memory and keeps it alive, unmoved, for as long as the tile or
    /// any copy of it (a variant holding it, a parser's variable) is used.
    /// Operations that write in place write into it.
    template <class T>
    static TyxEqnTile wrap(std::span<T> samples)
    {
        static_assert(TyxNumericType::codeOf<T>() != TyxNumericType::Invalid && !std::is_const_v<T>,
                      "T must be a writable sample type");
        const TyxBufferPtr buffer(new TyxBuffer(samples.size_bytes(), samples.data(), false));
        return TyxEqnTile(buffer, TyxDataType(TyxNumericType::codeOf<T>()), samples.size(), 1);
    }

    // Arithmetic, element by element in double precision.
    TyxEqnTile operator+(const TyxEqnTile &other) const;
    TyxEqnTile operator-(const TyxEqnTile &other) const;
    TyxEqnTile operator*(const TyxEqnTile &other) const;
    TyxEqnTile operator/(const TyxEqnTile &other) const;
    TyxEqnTile operator+(double value) const;
    TyxEqnTile operator-(double value) const;
    TyxEqnTile operator*(double value) const;
    TyxEqnTile operator/(double value) const;
    TyxEqnTile operator+(const Complex &value) const;
    TyxEqnTile operator-(const Complex &value) const;
    TyxEqnTile operator*(const Complex &value) const;
    TyxEqnTile operator/(const Complex &value) const;
    /// Each element negated.
    TyxEqnTile operator-() const;

    // Comparisons give Double tiles of 1.0 and 0.0. Two tiles must have the
    // same size and data type. == and != count values within 4 units in the
    // last place as equal; a NaN equals nothing. Ordering comparisons do not
    // serve complex tiles.
    TyxEqnTile operator==(const TyxEqnTile &other) const;
    TyxEqnTile operator!=(const TyxEqnTile &other) const;
    TyxEqnTile operator<(const TyxEqnTile &other) const;
    TyxEqnTile operator<=(const TyxEqnTile &other) const;
    TyxEqnTile operator>(const TyxEqnTile &other) const;
    TyxEqnTile operator>=(const TyxEqnTile &other) const;
    TyxEqnTile operator==(double value) const;
    TyxEqnTile operator!=(double value) const;
    TyxEqnTile operator<(double value) const;
    TyxEqnTile operator<=(double value) const;
    TyxEqnTile operator>(double value) const;
    TyxEqnTile operator>=(double value) const;
    TyxEqnTile operator==(const Complex &value) const;
    TyxEqnTile operator!=(const Complex &value) const;

    // Element-wise functions. A complex tile gives a ComplexDouble result
    // where the function has a complex form, and an empty tile where it has
    // none; real tiles give Double tiles.
    TyxEqnTile sin() const;
    TyxEqnTile cos() const;
    TyxEqnTile tan() const;
    TyxEqnTile sinh() const;
    TyxEqnTile cosh() const;
    TyxEqnTile tanh() const;
    TyxEqnTile exp() const;
    /// Natural logarithm; a negative real sample gives NaN, as C's log does.
    TyxEqnTile log() const;
    TyxEqnTile log10() const;
    /// A negative real sample gives NaN, as C's sqrt does; take the root of
    /// a complex tile for the complex root.
    TyxEqnTile sqrt() const;
    TyxEqnTile asin() const;
    TyxEqnTile acos() const;
    TyxEqnTile atan() const;
    /// The magnitude; a Double tile for complex samples too.
    TyxEqnTile abs() const;
    /// The squared magnitude, x * x for real samples.
    TyxEqnTile norm() const;
    /// The phase angle: 0 or pi for real samples.
    TyxEqnTile arg() const;
    TyxEqnTile real() const;
    /// The imaginary part; 0.0 for real samples.
    TyxEqnTile imag() const;
    /// Always a ComplexDouble tile.
    TyxEqnTile conj() const;
    TyxEqnTile ceil() const;
    TyxEqnTile floor() const;
    /// Rounds toward zero; real samples only.
    TyxEqnTile trunc() const;
    /// Rounds half away from zero; real samples only.
    TyxEqnTile round() const;
    /// Bessel functions of the first and second kind; real samples only.
    /// Orders beyond 10000 in magnitude cost no more than smaller ones: the
    /// value is then 0 (jn) or -infinity (yn) where it is beyond the range of
    /// a double, else NaN.
    TyxEqnTile j0() const;
    TyxEqnTile j1() const;
    TyxEqnTile y0() const;
    TyxEqnTile y1() const;
    TyxEqnTile jn(int order) const;
    TyxEqnTile yn(int order) const;
    /// sin(x) / x, not normalised, as TyxScalar::sinc: 1 for a modulus
    /// below the double epsilon.
    TyxEqnTile sinc() const;
    /// The factorial of each sample truncated toward zero; samples outside
    /// 0 to 170 give NaN. Real samples only.
    TyxEqnTile factorial() const;
    /// Each sample to the power \p exponent.
    TyxEqnTile pow(double exponent) const;
    /// \p base to the power of each sample of \p exponents.
    static TyxEqnTile pow(double base, const TyxEqnTile &exponents);
    /// atan2(y, x) of real tiles.
    static TyxEqnTile atan2(const TyxEqnTile &y, const TyxEqnTile &x);
    /// Computes nothing: always the empty tile.
    TyxEqnTile ldexp(double exponent) const;
    /// The logarithm to \p base.
    TyxEqnTile logb(double base) const;
    /// ComplexDouble tiles with the real part from the first operand and the
    /// imaginary part from the second; real operands only.
    static TyxEqnTile cmplx(const TyxEqnTile &re, const TyxEqnTile &im);
    static TyxEqnTile cmplx(const TyxEqnTile &re, double im);
    static TyxEqnTile cmplx(double re, const TyxEqnTile &im);

    // Reductions over real tiles, in double. The start values are returned
    // for empty and complex tiles: max() starts from the smallest positive
    // normal double, 2.2250738585072014e-308, so that a tile of negative
    // values answers that; min() starts from 1.7976931348623157e308, sum()
    // from 0.0. NaN elements are ignored by max() and min().
    double max() const;
    double min() const;
    double sum() const;
    /// The lower middle element; NaN for an empty or complex tile.
    double median() const;

    // Element-wise limits of real tiles, giving Double tiles.
    TyxEqnTile max(const TyxEqnTile &other) const;
    TyxEqnTile min(const TyxEqnTile &other) const;
    TyxEqnTile max(double value) const;
    TyxEqnTile min(double value) const;
    /// \p limit where it is greater than the sample.
    TyxEqnTile clipmin(double limit) const;
    /// \p limit where the sample is greater.
    TyxEqnTile clipmax(double limit) const;
    /// The sample held within \p lo and \p hi, \p lo tested first.
    TyxEqnTile clip(double lo, double hi) const;

    /// Converts to \p type: each sample is clipped to \p lo and \p hi and
    /// rounded half away from zero for an integer target; a Float or Double
    /// target is only clipped. Source and target codes I8 to U32, Float and
    /// Double.
    TyxEqnTile roundclip(const TyxDataType &type, double lo, double hi) const;

    /// Takes from \p a where the sample of this tile is not zero, else from
    /// \p b. The condition is real; the result has the size of the shortest
    /// tile and is ComplexDouble when a source is complex.
    TyxEqnTile ternary(const TyxEqnTile &a, const TyxEqnTile &b) const;
    TyxEqnTile ternary(const TyxEqnTile &a, double b) const;
    TyxEqnTile ternary(const TyxEqnTile &a, const Complex &b) const;
    TyxEqnTile ternary(double a, const TyxEqnTile &b) const;
    TyxEqnTile ternary(double a, double b) const;
    TyxEqnTile ternary(const Complex &a, const TyxEqnTile &b) const;
    TyxEqnTile ternary(const Complex &a, const Complex &b) const;

private:
    /// Whether samples() of type \p asked may hand out a span; posts the
    /// reason when not (except for an empty tile).
    bool sampleAccessAllowed(TyxNumericType::Code asked) const;

    /// A buffer, and all elements by step inside it; all else is false. Then
    /// every element exactly 1 (1 + 0i) for floating and complex tiles;
    /// integer tiles are never true.
    bool booleanTest() const override;

    uint64_t m_step = 1;
    uint64_t m_size = 0;
    TyxDataType m_dataType;
    TyxBufferPtr m_buffer;
};

/// \p value minus each element.
TYX_EXPORT TyxEqnTile operator-(double value, const TyxEqnTile &tile);
TYX_EXPORT TyxEqnTile operator-(const std::complex<double> &value, const TyxEqnTile &tile);
/// \p value divided by each element.
TYX_EXPORT TyxEqnTile operator/(double value, const TyxEqnTile &tile);
TYX_EXPORT TyxEqnTile operator/(const std::complex<double> &value, const TyxEqnTile &tile);

/// Writes the type, the size and up to the first eight samples, as
/// "(U8,8)[3]{200,100,7}".
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxEqnTile &tile);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxEqnTile &tile);
/// A tile has no text to read back: reads nothing and sets the fail state.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxEqnTile &tile);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxEqnTile &tile);

namespace internal {

/// A tile is held by the variant (code 17). It has a text form but no place
/// in the conversion matrix.
template <>
struct TyxVariantTraits<TyxEqnTile> : TyxBuiltinVariantTraits<TyxEqnTile, TyxMetaType::EqnTile> {
};

} // namespace internal

} // namespace tyx
