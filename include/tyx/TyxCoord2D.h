// Two-dimensional coordinate "(x,y)".
#pragma once

#include <iosfwd>
#include <utility>

#include <tyx/TyxCast.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// A point or offset of two fields, 0 by default. Instantiated for double and
/// int.
template <class T>
class TYX_EXPORT TyxCoord2D {
public:
    using value_type = T;

    TyxCoord2D() = default;
    TyxCoord2D(T x, T y) : m_x(x), m_y(y) {}

    T x() const { return m_x; }
    T y() const { return m_y; }
    T &rx() { return m_x; }
    T &ry() { return m_y; }
    void setX(T x) { m_x = x; }
    void setY(T y) { m_y = y; }

    TyxCoord2D operator+(const TyxCoord2D &other) const { return {m_x + other.m_x, m_y + other.m_y}; }
    TyxCoord2D operator-(const TyxCoord2D &other) const { return {m_x - other.m_x, m_y - other.m_y}; }
    TyxCoord2D &operator+=(const TyxCoord2D &other) { return *this = *this + other; }
    TyxCoord2D &operator-=(const TyxCoord2D &other) { return *this = *this - other; }

    /// Applies the scalar to each field; division does not check for zero.
    TyxCoord2D operator+(T s) const { return {m_x + s, m_y + s}; }
    TyxCoord2D operator-(T s) const { return {m_x - s, m_y - s}; }
    TyxCoord2D operator*(T s) const { return {m_x * s, m_y * s}; }
    TyxCoord2D operator/(T s) const { return {m_x / s, m_y / s}; }
    TyxCoord2D &operator+=(T s) { return *this = *this + s; }
    TyxCoord2D &operator-=(T s) { return *this = *this - s; }
    TyxCoord2D &operator*=(T s) { return *this = *this * s; }
    TyxCoord2D &operator/=(T s) { return *this = *this / s; }

    /// Every field is zero.
    bool isNull() const { return *this == TyxCoord2D(); }

    /// Field by field, exact.
    bool operator==(const TyxCoord2D &other) const { return m_x == other.m_x && m_y == other.m_y; }
    bool operator!=(const TyxCoord2D &other) const { return !(*this == other); }

    operator std::pair<T, T>() const { return {m_x, m_y}; }
    TyxCoord2D &operator=(const std::pair<T, T> &pair)
    {
        m_x = pair.first;
        m_y = pair.second;
        return *this;
    }

    /// The stream form "(x,y)".
    operator TyxString() const;

private:
    T m_x = 0;
    T m_y = 0;
};

/// Writes "(x,y)", each field in the stream's number format.
template <class T>
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxCoord2D<T> &coord);
/// Writes the same text in UTF-8.
template <class T>
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxCoord2D<T> &coord);
/// Reads one character, x, one character, y and one character as doubles,
/// without examining the characters; an integer coordinate truncates. A
/// failed read, or a value the field cannot hold, leaves both fields 0 and
/// fails the stream.
template <class T>
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxCoord2D<T> &coord);
/// The same from narrow text.
template <class T>
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxCoord2D<T> &coord);

extern template class TyxCoord2D<double>;
extern template class TyxCoord2D<int>;

namespace internal {

/// Reads \p value from \p text as operator>> does; false when that fails.
template <class T>
TYX_EXPORT bool parseText(const TyxString &text, TyxCoord2D<T> &value);

template <>
struct TyxDefaultCasts<TyxCoord2D<double>> {
    /// "(x,y)", each field in the default stream form.
    static bool toString(const TyxCoord2D<double> &value, TyxString &text)
    {
        text = static_cast<TyxString>(value);
        return true;
    }
    static bool fromString(const TyxString &text, TyxCoord2D<double> &value)
    {
        return parseText(text, value);
    }
    static void getDefault(TyxCoord2D<double> &value) { value = TyxCoord2D<double>(); }
};

/// True when either field is not zero.
template <>
struct TyxCast<TyxCoord2D<double>, bool> {
    static bool cast(const TyxCoord2D<double> &from, bool &to)
    {
        to = !from.isNull();
        return true;
    }
};

template <>
struct TyxVariantTraits<TyxCoord2D<double>>
    : TyxBuiltinVariantTraits<TyxCoord2D<double>, TyxMetaType::DblCoord2D> {
};

} // namespace internal

} // namespace tyx
