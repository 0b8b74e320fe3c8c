// Tie point: arithmetic, ordering and text forms.
#include <tyx/TyxTiePoint.h>

#include <tuple>

#include "core/TyxTupleStream.h"

namespace tyx {

namespace {

template <class Char>
std::basic_ostream<Char> &writeTiePoint(std::basic_ostream<Char> &os, const TyxTiePoint &point)
{
    return os << Char('(') << point.uv() << Char(',') << point.xy() << Char(')');
}

template <class Char>
std::basic_istream<Char> &readTiePoint(std::basic_istream<Char> &is, TyxTiePoint &point)
{
    Char separator;
    TyxCoord2D<double> uv;
    TyxCoord2D<double> xy;
    is >> separator >> uv >> separator >> xy >> separator;
    if (is.fail())
        point = TyxTiePoint();
    else
        point = TyxTiePoint(uv, xy);
    return is;
}

} // namespace

TyxTiePoint TyxTiePoint::operator+(const TyxTiePoint &other) const
{
    return {m_uv + other.m_uv, m_xy + other.m_xy};
}

TyxTiePoint TyxTiePoint::operator-(const TyxTiePoint &other) const
{
    return {m_uv - other.m_uv, m_xy - other.m_xy};
}

TyxTiePoint TyxTiePoint::operator*(const TyxTiePoint &other) const
{
    return {u() * other.u(), v() * other.v(), x() * other.x(), y() * other.y()};
}

bool TyxTiePoint::operator<(const TyxTiePoint &other) const
{
    return std::make_tuple(u(), v(), x(), y()) < std::make_tuple(other.u(), other.v(), other.x(), other.y());
}

TyxTiePoint::operator TyxString() const { return internal::streamText(*this); }

std::wostream &operator<<(std::wostream &os, const TyxTiePoint &point) { return writeTiePoint(os, point); }

std::ostream &operator<<(std::ostream &os, const TyxTiePoint &point) { return writeTiePoint(os, point); }

std::wistream &operator>>(std::wistream &is, TyxTiePoint &point) { return readTiePoint(is, point); }

std::istream &operator>>(std::istream &is, TyxTiePoint &point) { return readTiePoint(is, point); }

} // namespace tyx
