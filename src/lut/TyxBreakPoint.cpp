// Break point comparisons and text forms.
#include <tyx/TyxBreakPoint.h>

#include <istream>
#include <ostream>
#include <sstream>

namespace tyx {

namespace {

template <class Char>
std::basic_ostream<Char> &writePoint(std::basic_ostream<Char> &os, const TyxBreakPoint &point)
{
    return os << Char('(') << point.in() << Char(',') << point.out() << Char(',') << point.band()
              << Char(')');
}

template <class Char>
std::basic_istream<Char> &readPoint(std::basic_istream<Char> &is, TyxBreakPoint &point)
{
    Char c = 0;
    int in = 0;
    double out = 0.0;
    unsigned band = 0;
    is >> c >> in >> c >> out >> c >> band >> c;
    if (is.good())
        point.setAll(in, out, band);
    return is;
}

} // namespace

bool TyxBreakPoint::operator<(const TyxBreakPoint &other) const
{
    if (m_band != other.m_band)
        return m_band < other.m_band;
    if (m_in != other.m_in)
        return m_in < other.m_in;
    return m_out < other.m_out;
}

TyxString TyxBreakPoint::toString() const
{
    std::wostringstream os;
    writePoint(os, *this);
    return os.str();
}

size_t TyxBreakPoint::fromString(const TyxString &text)
{
    std::wistringstream is(text);
    TyxBreakPoint parsed;
    readPoint(is, parsed);
    if (!is.good())
        return 0;
    *this = parsed;
    const auto pos = is.tellg();
    return pos < 0 ? text.size() : static_cast<size_t>(pos);
}

std::wostream &operator<<(std::wostream &os, const TyxBreakPoint &point) { return writePoint(os, point); }

std::ostream &operator<<(std::ostream &os, const TyxBreakPoint &point) { return writePoint(os, point); }

std::wistream &operator>>(std::wistream &is, TyxBreakPoint &point) { return readPoint(is, point); }

std::istream &operator>>(std::istream &is, TyxBreakPoint &point) { return readPoint(is, point); }

} // namespace tyx
