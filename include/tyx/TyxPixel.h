// One pixel of any sample type: a sample per band, each with its own type.
#pragma once

#include <complex>
#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <vector>

#include <tyx/TyxDataType.h>
#include <tyx/TyxGlobal.h>

namespace tyx {

namespace internal {
class TyxPixelAccess;
} // namespace internal

/// The type-erased value of one pixel: one Sample per band.
class TYX_EXPORT TyxPixel {
public:
    /// One stored value in its own type, with the type at its physical depth.
    /// The default sample has the invalid type and a zero value; it equals
    /// nothing, itself included.
    class TYX_EXPORT Sample {
    public:
        Sample() = default;
        Sample(const Sample &other) = default;
        Sample &operator=(const Sample &other) = default;
        Sample(signed char v) : Sample(TyxNumericType::I8) { m_value.i8 = v; }
        Sample(unsigned char v) : Sample(TyxNumericType::U8) { m_value.u8 = v; }
        Sample(short v) : Sample(TyxNumericType::I16) { m_value.i16 = v; }
        Sample(unsigned short v) : Sample(TyxNumericType::U16) { m_value.u16 = v; }
        Sample(int v) : Sample(TyxNumericType::I32) { m_value.i32 = v; }
        Sample(unsigned int v) : Sample(TyxNumericType::U32) { m_value.u32 = v; }
        Sample(int64_t v) : Sample(TyxNumericType::I64) { m_value.i64 = v; }
        Sample(uint64_t v) : Sample(TyxNumericType::U64) { m_value.u64 = v; }
        Sample(float v) : Sample(TyxNumericType::Float) { m_value.f32 = v; }
        Sample(double v) : Sample(TyxNumericType::Double) { m_value.f64 = v; }
        Sample(const std::complex<float> &v) : Sample(TyxNumericType::ComplexFloat) { m_value.c32 = v; }
        Sample(const std::complex<double> &v) : Sample(TyxNumericType::ComplexDouble) { m_value.c64 = v; }
        /// A ComplexDouble.
        Sample(double real, double imag) : Sample(std::complex<double>(real, imag)) {}

        /// The stored type.
        const TyxDataType &type() const { return m_type; }
        /// The stored value's bytes.
        const void *data() const { return &m_value; }

        /// Plain casts of the stored value: integers keep the low bits, reals
        /// truncate toward zero, complex values give their real part, and the
        /// invalid sample gives 0.
        operator signed char() const;
        operator unsigned char() const;
        operator short() const;
        operator unsigned short() const;
        operator int() const;
        operator unsigned int() const;
        operator int64_t() const;
        operator uint64_t() const;
        operator float() const;
        operator double() const;
        operator std::complex<float>() const;
        operator std::complex<double>() const;
        /// The value as double; for a complex sample its real part; 0 for
        /// the invalid sample. Inline: pixel walks call it per sample.
        double real() const
        {
            switch (m_type.code()) {
            case TyxNumericType::I8: return m_value.i8;
            case TyxNumericType::U8: return m_value.u8;
            case TyxNumericType::I16: return m_value.i16;
            case TyxNumericType::U16: return m_value.u16;
            case TyxNumericType::I32: return m_value.i32;
            case TyxNumericType::U32: return m_value.u32;
            case TyxNumericType::I64: return static_cast<double>(m_value.i64);
            case TyxNumericType::U64: return static_cast<double>(m_value.u64);
            case TyxNumericType::Float: return m_value.f32;
            case TyxNumericType::Double: return m_value.f64;
            case TyxNumericType::ComplexFloat: return m_value.c32.real();
            case TyxNumericType::ComplexDouble: return m_value.c64.real();
            default: return 0.0;
            }
        }
        /// 0 for a real sample, the imaginary part of a complex one.
        double imag() const;

        /// Equal in the type that holds both (TyxDataType::leastCommon); an
        /// invalid common type is unequal, and NaN is unequal to itself.
        bool operator==(const Sample &other) const;
        bool operator!=(const Sample &other) const { return !(*this == other); }

    private:
        friend class internal::TyxPixelAccess;

        explicit Sample(TyxNumericType::Code code) : m_type(code) {}

        union Value {
            Value() : c64() {}
            int8_t i8;
            uint8_t u8;
            int16_t i16;
            uint16_t u16;
            int32_t i32;
            uint32_t u32;
            int64_t i64;
            uint64_t u64;
            float f32;
            double f64;
            std::complex<float> c32;
            std::complex<double> c64;
        };
        static_assert(sizeof(Value) == 16);

        /// Overwrites the value with \p v of the sample's own type; the type
        /// is left as it is.
        template <class T>
        void store(const T &v)
        {
            static_assert(sizeof(T) <= sizeof(Value));
            std::memcpy(static_cast<void *>(&m_value), &v, sizeof(T));
        }

        TyxDataType m_type;
        Value m_value;
    };

    /// No samples.
    TyxPixel() = default;
    explicit TyxPixel(const std::vector<Sample> &samples) : m_samples(samples) {}
    /// \p n copies of \p sample.
    TyxPixel(unsigned int n, const Sample &sample) : m_samples(n, sample) {}

    unsigned int numBands() const { return static_cast<unsigned int>(m_samples.size()); }
    bool empty() const { return m_samples.empty(); }
    bool isEmpty() const { return m_samples.empty(); }
    void clear() { m_samples.clear(); }
    /// The sample of \p band, unchecked.
    Sample &operator[](unsigned int band) { return m_samples[band]; }
    const Sample &operator[](unsigned int band) const { return m_samples[band]; }
    double real(unsigned int band) const { return m_samples[band].real(); }
    double imag(unsigned int band) const { return m_samples[band].imag(); }
    operator const std::vector<Sample> &() const { return m_samples; }
    std::vector<Sample> &samples() { return m_samples; }

    /// Same number of samples, each pair equal.
    bool operator==(const TyxPixel &other) const { return m_samples == other.m_samples; }
    bool operator!=(const TyxPixel &other) const { return !(*this == other); }

private:
    std::vector<Sample> m_samples;
};

/// Writes a sample by its stored type; complex values as "(re,im)", the
/// invalid sample as nothing.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxPixel::Sample &sample);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxPixel::Sample &sample);
/// Reads "re", "(re)" or "(re,im)": a Double when the imaginary part is 0,
/// else a ComplexDouble.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxPixel::Sample &sample);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxPixel::Sample &sample);
/// Writes "n: " and then a blank and each sample, with 17 digits.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxPixel &pixel);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxPixel &pixel);
/// Reads the count and ":", then that many samples; without the colon, or
/// with a count below 1, the pixel stays empty.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxPixel &pixel);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxPixel &pixel);

} // namespace tyx
