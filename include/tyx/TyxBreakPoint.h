// One break point of a sparse look-up table: input value, output value, band.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>

namespace tyx {

/// A point of a piecewise linear mapping: input value \c in of band \c band
/// maps to \c out. The default point is all zero.
class TYX_EXPORT TyxBreakPoint {
public:
    TyxBreakPoint() = default;
    TyxBreakPoint(int32_t in, double out, uint32_t band) : m_in(in), m_out(out), m_band(band) {}

    int32_t in() const { return m_in; }
    double out() const { return m_out; }
    uint32_t band() const { return m_band; }
    int32_t &rIn() { return m_in; }
    double &rOut() { return m_out; }
    uint32_t &rBand() { return m_band; }
    void setIn(int32_t in) { m_in = in; }
    void setOut(double out) { m_out = out; }
    void setBand(uint32_t band) { m_band = band; }
    void setAll(int32_t in, double out, uint32_t band)
    {
        m_in = in;
        m_out = out;
        m_band = band;
    }

    /// Whether all three fields are zero.
    bool isNull() const { return m_in == 0 && m_out == 0.0 && m_band == 0; }

    bool operator==(const TyxBreakPoint &other) const
    {
        return m_in == other.m_in && m_out == other.m_out && m_band == other.m_band;
    }
    bool operator!=(const TyxBreakPoint &other) const { return !(*this == other); }
    /// Orders by band, then input value, then output value.
    bool operator<(const TyxBreakPoint &other) const;

    /// The text form "(in,out,band)", such as "(0,12.5,1)".
    TyxString toString() const;
    operator TyxString() const { return toString(); }
    /// Parses the text form. Returns the position after the parsed text, or
    /// 0 when parsing failed; the point is then left alone.
    size_t fromString(const TyxString &text);

private:
    int32_t m_in = 0;
    double m_out = 0.0;
    uint32_t m_band = 0;
};

/// Writes "(in,out,band)".
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxBreakPoint &point);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxBreakPoint &point);
/// Reads a character, the input value, a character, the output value, a
/// character, the band and a character; the characters are not examined.
/// The point is assigned only when the stream is still good afterwards.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxBreakPoint &point);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxBreakPoint &point);

} // namespace tyx
