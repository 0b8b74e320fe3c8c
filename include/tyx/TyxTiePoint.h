// Tie point relating an image position to a map position, "((u,v),(x,y))".
#pragma once

#include <iosfwd>

#include <tyx/TyxCoord2D.h>
#include <tyx/TyxString.h>

namespace tyx {

/// An image position uv and the map position xy it stands for; all zero by
/// default.
class TYX_EXPORT TyxTiePoint {
public:
    TyxTiePoint() = default;
    TyxTiePoint(const TyxCoord2D<double> &uv, const TyxCoord2D<double> &xy) : m_uv(uv), m_xy(xy) {}
    TyxTiePoint(double u, double v, double x, double y) : m_uv(u, v), m_xy(x, y) {}

    const TyxCoord2D<double> &uv() const { return m_uv; }
    const TyxCoord2D<double> &xy() const { return m_xy; }
    TyxCoord2D<double> &ruv() { return m_uv; }
    TyxCoord2D<double> &rxy() { return m_xy; }
    double u() const { return m_uv.x(); }
    double v() const { return m_uv.y(); }
    double x() const { return m_xy.x(); }
    double y() const { return m_xy.y(); }
    double &ru() { return m_uv.rx(); }
    double &rv() { return m_uv.ry(); }
    double &rx() { return m_xy.rx(); }
    double &ry() { return m_xy.ry(); }
    void setU(double u) { m_uv.setX(u); }
    void setV(double v) { m_uv.setY(v); }
    void setX(double x) { m_xy.setX(x); }
    void setY(double y) { m_xy.setY(y); }
    void setAll(double u, double v, double x, double y)
    {
        m_uv = TyxCoord2D<double>(u, v);
        m_xy = TyxCoord2D<double>(x, y);
    }

    /// Field by field, the product of two tie points too.
    TyxTiePoint operator+(const TyxTiePoint &other) const;
    TyxTiePoint operator-(const TyxTiePoint &other) const;
    TyxTiePoint operator*(const TyxTiePoint &other) const;
    TyxTiePoint &operator+=(const TyxTiePoint &other) { return *this = *this + other; }
    TyxTiePoint &operator-=(const TyxTiePoint &other) { return *this = *this - other; }
    TyxTiePoint &operator*=(const TyxTiePoint &other) { return *this = *this * other; }
    /// Applies the value to each of the four fields.
    TyxTiePoint operator+(double s) const { return {m_uv + s, m_xy + s}; }
    TyxTiePoint operator-(double s) const { return {m_uv - s, m_xy - s}; }
    TyxTiePoint operator*(double s) const { return {m_uv * s, m_xy * s}; }
    TyxTiePoint &operator+=(double s) { return *this = *this + s; }
    TyxTiePoint &operator-=(double s) { return *this = *this - s; }
    TyxTiePoint &operator*=(double s) { return *this = *this * s; }

    /// Orders by u, then v, then x, then y: the first field that differs
    /// decides.
    bool operator<(const TyxTiePoint &other) const;
    /// Both positions are at the origin.
    bool isNull() const { return m_uv.isNull() && m_xy.isNull(); }

    /// Field by field, exact.
    bool operator==(const TyxTiePoint &other) const { return m_uv == other.m_uv && m_xy == other.m_xy; }
    bool operator!=(const TyxTiePoint &other) const { return !(*this == other); }

    /// The stream form "((u,v),(x,y))".
    operator TyxString() const;

private:
    TyxCoord2D<double> m_uv;
    TyxCoord2D<double> m_xy;
};

/// Writes "((u,v),(x,y))", each field in the stream's number format.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxTiePoint &point);
/// Writes the same text in UTF-8.
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxTiePoint &point);
/// Reads one character, a coordinate as TyxCoord2D reads it, one character,
/// a second coordinate and one character, without examining the characters.
/// A failed read leaves all four fields 0.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxTiePoint &point);
/// The same from narrow text.
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxTiePoint &point);

} // namespace tyx
