// Pixel and sample: conversions, comparison in the common type, text forms.
#include <tyx/TyxPixel.h>

#include <istream>
#include <ostream>

#include <tyx/TyxCast.h>

#include "image/TyxPixelAccess.h"
#include "image/TyxSampleTypes.h"

namespace tyx {

using internal::TyxPixelAccess;

TyxPixel::Sample::operator signed char() const { return TyxPixelAccess::as<signed char>(*this); }
TyxPixel::Sample::operator unsigned char() const { return TyxPixelAccess::as<unsigned char>(*this); }
TyxPixel::Sample::operator short() const { return TyxPixelAccess::as<short>(*this); }
TyxPixel::Sample::operator unsigned short() const { return TyxPixelAccess::as<unsigned short>(*this); }
TyxPixel::Sample::operator int() const { return TyxPixelAccess::as<int>(*this); }
TyxPixel::Sample::operator unsigned int() const { return TyxPixelAccess::as<unsigned int>(*this); }
TyxPixel::Sample::operator int64_t() const { return TyxPixelAccess::as<int64_t>(*this); }
TyxPixel::Sample::operator uint64_t() const { return TyxPixelAccess::as<uint64_t>(*this); }
TyxPixel::Sample::operator float() const { return TyxPixelAccess::as<float>(*this); }
TyxPixel::Sample::operator double() const { return TyxPixelAccess::as<double>(*this); }
TyxPixel::Sample::operator std::complex<float>() const
{
    return TyxPixelAccess::as<std::complex<float>>(*this);
}
TyxPixel::Sample::operator std::complex<double>() const
{
    return TyxPixelAccess::as<std::complex<double>>(*this);
}

double TyxPixel::Sample::imag() const
{
    if (m_type.isComplex())
        return TyxPixelAccess::as<std::complex<double>>(*this).imag();
    return 0.0;
}

bool TyxPixel::Sample::operator==(const Sample &other) const
{
    const TyxDataType common = TyxDataType::leastCommon(m_type, other.m_type);
    if (!m_type.isValid() || !other.m_type.isValid())
        return false;
    switch (common.code()) {
    // Bytes and 16-bit values compare by their bit pattern at that width.
    case TyxNumericType::I8:
    case TyxNumericType::U8: return TyxPixelAccess::as<uint8_t>(*this) == TyxPixelAccess::as<uint8_t>(other);
    case TyxNumericType::I16:
    case TyxNumericType::U16:
        return TyxPixelAccess::as<uint16_t>(*this) == TyxPixelAccess::as<uint16_t>(other);
    default:
        return internal::visitSampleCode(common.code(), false, [this, &other](auto tag) {
            using T = typename decltype(tag)::type;
            return TyxPixelAccess::as<T>(*this) == TyxPixelAccess::as<T>(other);
        });
    }
}

namespace {

template <class Char>
std::basic_ostream<Char> &writeSample(std::basic_ostream<Char> &os, const TyxPixel::Sample &s)
{
    switch (s.type().code()) {
    case TyxNumericType::I8:
    case TyxNumericType::I16:
    case TyxNumericType::I32: return os << static_cast<int>(s);
    case TyxNumericType::U8:
    case TyxNumericType::U16:
    case TyxNumericType::U32: return os << static_cast<unsigned int>(s);
    case TyxNumericType::I64: return os << static_cast<int64_t>(s);
    case TyxNumericType::U64: return os << static_cast<uint64_t>(s);
    case TyxNumericType::Float:
    case TyxNumericType::Double: return os << static_cast<double>(s);
    case TyxNumericType::ComplexFloat:
    case TyxNumericType::ComplexDouble: return os << static_cast<std::complex<double>>(s);
    default: return os;
    }
}

template <class Char>
std::basic_istream<Char> &readSample(std::basic_istream<Char> &is, TyxPixel::Sample &s)
{
    std::complex<double> value;
    if (is >> value)
        s = value.imag() == 0.0 ? TyxPixel::Sample(value.real()) : TyxPixel::Sample(value);
    return is;
}

template <class Char>
std::basic_ostream<Char> &writePixel(std::basic_ostream<Char> &os, const TyxPixel &pixel)
{
    const std::streamsize precision = os.precision(17);
    os << pixel.numBands() << Char(':') << Char(' ');
    for (unsigned int i = 0; i < pixel.numBands(); ++i) {
        os << Char(' ');
        writeSample(os, pixel[i]);
    }
    os.precision(precision);
    return os;
}

template <class Char>
std::basic_istream<Char> &readPixel(std::basic_istream<Char> &is, TyxPixel &pixel)
{
    pixel.clear();
    int64_t count = 0;
    Char colon = 0;
    is >> count >> colon;
    if (is.fail() || colon != Char(':') || count < 1)
        return is;
    // The count is not trusted for a reservation: samples are read until
    // the count is reached or the stream fails.
    for (int64_t i = 0; i < count; ++i) {
        TyxPixel::Sample s;
        if (!readSample(is, s))
            break;
        pixel.samples().push_back(s);
    }
    return is;
}

} // namespace

std::wostream &operator<<(std::wostream &os, const TyxPixel::Sample &sample)
{
    return writeSample(os, sample);
}
std::ostream &operator<<(std::ostream &os, const TyxPixel::Sample &sample) { return writeSample(os, sample); }
std::wistream &operator>>(std::wistream &is, TyxPixel::Sample &sample) { return readSample(is, sample); }
std::istream &operator>>(std::istream &is, TyxPixel::Sample &sample) { return readSample(is, sample); }
std::wostream &operator<<(std::wostream &os, const TyxPixel &pixel) { return writePixel(os, pixel); }
std::ostream &operator<<(std::ostream &os, const TyxPixel &pixel) { return writePixel(os, pixel); }
std::wistream &operator>>(std::wistream &is, TyxPixel &pixel) { return readPixel(is, pixel); }
std::istream &operator>>(std::istream &is, TyxPixel &pixel) { return readPixel(is, pixel); }

} // namespace tyx
