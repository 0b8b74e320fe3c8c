// Three-dimensional extent "(width,height,depth)".
#pragma once

#include <cstdint>
#include <iosfwd>
#include <type_traits>

#include <tyx/TyxCast.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// A width, height and depth, 0 by default. Instantiated for unsigned int
/// and double.
template <class T>
class TYX_EXPORT TyxSize3D {
public:
    using value_type = T;

    /// The same fields as a plain structure, for code that wants an aggregate.
    struct Size3D {
        T width;
        T height;
        T depth;
    };

    TyxSize3D() = default;
    TyxSize3D(T width, T height, T depth) : m_width(width), m_height(height), m_depth(depth) {}
    TyxSize3D(const Size3D &plain) : m_width(plain.width), m_height(plain.height), m_depth(plain.depth) {}

    operator Size3D() const { return {m_width, m_height, m_depth}; }

    T width() const { return m_width; }
    T height() const { return m_height; }
    T depth() const { return m_depth; }
    T &rwidth() { return m_width; }
    T &rheight() { return m_height; }
    T &rdepth() { return m_depth; }
    void setWidth(T width) { m_width = width; }
    void setHeight(T height) { m_height = height; }
    void setDepth(T depth) { m_depth = depth; }
    void setAll(T width, T height, T depth)
    {
        m_width = width;
        m_height = height;
        m_depth = depth;
    }

    /// The product of the three fields, computed in 64 bits so that large
    /// integer sizes do not wrap. A floating size multiplies in double and
    /// truncates; a negative or NaN product gives 0, one beyond the range of
    /// uint64_t gives its largest value.
    uint64_t volume() const
    {
        if constexpr (std::is_floating_point_v<T>) {
            const double product = static_cast<double>(m_width) * m_height * m_depth;
            if (!(product > 0.0))
                return 0;
            if (product >= 18446744073709551616.0)
                return UINT64_MAX;
            return static_cast<uint64_t>(product);
        } else {
            return static_cast<uint64_t>(m_width) * static_cast<uint64_t>(m_height) *
                   static_cast<uint64_t>(m_depth);
        }
    }
    /// Any field is zero.
    bool empty() const { return m_width == 0 || m_height == 0 || m_depth == 0; }
    bool isEmpty() const { return empty(); }

    /// Field by field, exact.
    bool operator==(const TyxSize3D &other) const
    {
        return m_width == other.m_width && m_height == other.m_height && m_depth == other.m_depth;
    }
    bool operator!=(const TyxSize3D &other) const { return !(*this == other); }

    /// The stream form "(width,height,depth)".
    operator TyxString() const;

private:
    T m_width = 0;
    T m_height = 0;
    T m_depth = 0;
};

/// Writes "(width,height,depth)", each field in the stream's number format.
template <class T>
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxSize3D<T> &size);
/// Writes the same text in UTF-8.
template <class T>
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxSize3D<T> &size);
/// Reads one character and a number three times, then one character; the
/// numbers are read as doubles and an integer size truncates them. A failed
/// read, or a value the field cannot hold (a negative width, for instance),
/// leaves all fields 0 and fails the stream.
template <class T>
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxSize3D<T> &size);
/// The same from narrow text.
template <class T>
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxSize3D<T> &size);

extern template class TyxSize3D<unsigned int>;
extern template class TyxSize3D<double>;

namespace internal {

/// Reads \p value from \p text as operator>> does; false when that fails.
template <class T>
TYX_EXPORT bool parseText(const TyxString &text, TyxSize3D<T> &value);

template <>
struct TyxDefaultCasts<TyxSize3D<unsigned int>> {
    /// "(width,height,depth)".
    static bool toString(const TyxSize3D<unsigned int> &value, TyxString &text)
    {
        text = static_cast<TyxString>(value);
        return true;
    }
    static bool fromString(const TyxString &text, TyxSize3D<unsigned int> &value)
    {
        return parseText(text, value);
    }
    static void getDefault(TyxSize3D<unsigned int> &value) { value = TyxSize3D<unsigned int>(); }
};

/// True when any field is not zero.
template <>
struct TyxCast<TyxSize3D<unsigned int>, bool> {
    static bool cast(const TyxSize3D<unsigned int> &from, bool &to)
    {
        to = from.width() != 0 || from.height() != 0 || from.depth() != 0;
        return true;
    }
};

template <>
struct TyxVariantTraits<TyxSize3D<unsigned int>>
    : TyxBuiltinVariantTraits<TyxSize3D<unsigned int>, TyxMetaType::U32Size> {
};

} // namespace internal

} // namespace tyx
