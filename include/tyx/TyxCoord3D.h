// Three-dimensional coordinate "(x,y,z)".
#pragma once

#include <concepts>
#include <iosfwd>

#include <tyx/TyxCast.h>
#include <tyx/TyxCoord2D.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// A point or offset of three fields, 0 by default. Instantiated for double
/// and int.
template <class T>
class TYX_EXPORT TyxCoord3D {
public:
    using value_type = T;

    /// The same fields as a plain structure, for code that wants an aggregate.
    struct Coord3D {
        T x;
        T y;
        T z;
    };

    TyxCoord3D() = default;
    TyxCoord3D(T x, T y, T z) : m_x(x), m_y(y), m_z(z) {}
    TyxCoord3D(const Coord3D &plain) : m_x(plain.x), m_y(plain.y), m_z(plain.z) {}

    T x() const { return m_x; }
    T y() const { return m_y; }
    T z() const { return m_z; }
    T &rx() { return m_x; }
    T &ry() { return m_y; }
    T &rz() { return m_z; }
    void setX(T x) { m_x = x; }
    void setY(T y) { m_y = y; }
    void setZ(T z) { m_z = z; }

    operator Coord3D() const { return {m_x, m_y, m_z}; }
    /// The x and y fields.
    operator TyxCoord2D<T>() const { return {m_x, m_y}; }

    TyxCoord3D operator+(const TyxCoord3D &o) const { return {m_x + o.m_x, m_y + o.m_y, m_z + o.m_z}; }
    TyxCoord3D operator-(const TyxCoord3D &o) const { return {m_x - o.m_x, m_y - o.m_y, m_z - o.m_z}; }
    TyxCoord3D &operator+=(const TyxCoord3D &other) { return *this = *this + other; }
    TyxCoord3D &operator-=(const TyxCoord3D &other) { return *this = *this - other; }

    /// Applies the scalar to each field; division does not check for zero.
    TyxCoord3D operator+(T s) const { return {m_x + s, m_y + s, m_z + s}; }
    TyxCoord3D operator-(T s) const { return {m_x - s, m_y - s, m_z - s}; }
    TyxCoord3D operator*(T s) const { return {m_x * s, m_y * s, m_z * s}; }
    TyxCoord3D operator/(T s) const { return {m_x / s, m_y / s, m_z / s}; }
    TyxCoord3D &operator+=(T s) { return *this = *this + s; }
    TyxCoord3D &operator-=(T s) { return *this = *this - s; }
    TyxCoord3D &operator*=(T s) { return *this = *this * s; }
    TyxCoord3D &operator/=(T s) { return *this = *this / s; }

    /// Every field is zero.
    bool isNull() const { return *this == TyxCoord3D(); }

    /// Field by field, exact.
    bool operator==(const TyxCoord3D &o) const { return m_x == o.m_x && m_y == o.m_y && m_z == o.m_z; }
    bool operator!=(const TyxCoord3D &other) const { return !(*this == other); }

    /// The stream form "(x,y,z)".
    operator TyxString() const;

private:
    T m_x = 0;
    T m_y = 0;
    T m_z = 0;
};

/// Writes "(x,y,z)", each field in the stream's number format.
template <class T>
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxCoord3D<T> &coord);
/// Writes the same text in UTF-8.
template <class T>
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxCoord3D<T> &coord);
/// Reads one character and a number three times, then one character; the
/// numbers are read as doubles and an integer coordinate truncates them. A
/// failed read, or a value the field cannot hold, leaves all fields 0 and
/// fails the stream.
template <class T>
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxCoord3D<T> &coord);
/// The same from narrow text.
template <class T>
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxCoord3D<T> &coord);

extern template class TyxCoord3D<double>;
extern template class TyxCoord3D<int>;

namespace internal {

/// Reads \p value from \p text as operator>> does; false when that fails.
template <class T>
TYX_EXPORT bool parseText(const TyxString &text, TyxCoord3D<T> &value);

/// The three-dimensional coordinates of the conversion matrix.
template <class T>
concept TyxMatrixCoord3D = std::same_as<T, TyxCoord3D<int>> || std::same_as<T, TyxCoord3D<double>>;

template <TyxMatrixCoord3D T>
struct TyxDefaultCasts<T> {
    /// "(x,y,z)", each field in the default stream form.
    static bool toString(const T &value, TyxString &text)
    {
        text = static_cast<TyxString>(value);
        return true;
    }
    static bool fromString(const TyxString &text, T &value) { return parseText(text, value); }
    static void getDefault(T &value) { value = T(); }
};

/// True when any field is not zero.
template <TyxMatrixCoord3D T>
struct TyxCast<T, bool> {
    static bool cast(const T &from, bool &to)
    {
        to = !from.isNull();
        return true;
    }
};

template <>
struct TyxVariantTraits<TyxCoord3D<int>> : TyxBuiltinVariantTraits<TyxCoord3D<int>, TyxMetaType::I32Coord> {
};
template <>
struct TyxVariantTraits<TyxCoord3D<double>>
    : TyxBuiltinVariantTraits<TyxCoord3D<double>, TyxMetaType::DblCoord> {
};

} // namespace internal

} // namespace tyx
