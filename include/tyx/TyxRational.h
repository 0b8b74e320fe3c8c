// Fraction of two integers, "(numerator,denominator)".
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxString.h>

namespace tyx {

/// A numerator over a denominator, both of type T; 0 over 1 by default. The
/// fraction is kept as given: it is not reduced and the denominator is not
/// checked. It has no arithmetic of its own; conversions to and from numbers
/// go through the conversion matrix. Instantiated for int, unsigned int,
/// int64_t and uint64_t.
template <class T>
class TYX_EXPORT TyxRational {
public:
    using value_type = T;

    TyxRational() = default;
    TyxRational(T numerator, T denominator) : m_numerator(numerator), m_denominator(denominator) {}

    T numerator() const { return m_numerator; }
    T denominator() const { return m_denominator; }
    void setNumerator(T numerator) { m_numerator = numerator; }
    void setDenominator(T denominator) { m_denominator = denominator; }

    /// Field by field: 1/2 and 2/4 differ.
    bool operator==(const TyxRational &other) const
    {
        return m_numerator == other.m_numerator && m_denominator == other.m_denominator;
    }
    bool operator!=(const TyxRational &other) const { return !(*this == other); }

    /// "(numerator,denominator)".
    operator TyxString() const;

private:
    T m_numerator = 0;
    T m_denominator = 1;
};

/// Writes "(numerator,denominator)".
template <class T>
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxRational<T> &value);
/// Writes the same text in UTF-8.
template <class T>
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxRational<T> &value);
/// Reads one character, the numerator, one character, the denominator and one
/// character; the characters are not examined. A failed read leaves 0 over 0.
template <class T>
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxRational<T> &value);
/// The same from narrow text.
template <class T>
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxRational<T> &value);

extern template class TyxRational<int>;
extern template class TyxRational<unsigned int>;
extern template class TyxRational<int64_t>;
extern template class TyxRational<uint64_t>;

} // namespace tyx
