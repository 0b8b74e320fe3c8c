// Fraction of two integers, "(numerator,denominator)".
#pragma once

#include <concepts>
#include <cstdint>
#include <iosfwd>

#include <tyx/TyxCast.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

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

namespace internal {

/// The rationals of the conversion matrix.
template <class T>
concept TyxMatrixRational = std::same_as<T, TyxRational<int>> || std::same_as<T, TyxRational<unsigned int>> ||
    std::same_as<T, TyxRational<int64_t>> || std::same_as<T, TyxRational<uint64_t>>;

/// Reads \p value from \p text as operator>> does; false when that fails.
template <class T>
TYX_EXPORT bool parseText(const TyxString &text, TyxRational<T> &value);

template <TyxMatrixRational T>
struct TyxDefaultCasts<T> {
    /// "(numerator,denominator)".
    static bool toString(const T &value, TyxString &text)
    {
        text = static_cast<TyxString>(value);
        return true;
    }
    static bool fromString(const TyxString &text, T &value) { return parseText(text, value); }
    static void getDefault(T &value) { value = T(); }
};

/// A number to a rational: an integer or bool over 1; a real, or the real
/// part of a complex number, by approximate() with a limit of 65535. Each
/// part is then stored in the target's type, wrapping as the language does.
template <class From, class To>
requires(TyxMatrixNumber<From> &&TyxMatrixRational<To>) struct TyxCast<From, To> {
    static bool cast(const From &from, To &to)
    {
        using Part = typename To::value_type;
        if constexpr (TyxMatrixComplex<From>) {
            return TyxCast<double, To>::cast(static_cast<double>(from.real()), to);
        } else if constexpr (TyxMatrixReal<From>) {
            int64_t numerator = 0;
            int64_t denominator = 1;
            approximate(static_cast<double>(from), 65535, &numerator, &denominator);
            to = To(static_cast<Part>(numerator), static_cast<Part>(denominator));
        } else {
            to = To(static_cast<Part>(from), Part(1));
        }
        return true;
    }
};

/// A rational to a number: the numerator divided by the denominator in
/// double, then as that double converts; a zero denominator gives what the
/// division gives. To bool: whether the numerator is not zero, which
/// reducing the fraction first would not change.
template <class From, class To>
requires(TyxMatrixRational<From> &&TyxMatrixNumber<To>) struct TyxCast<From, To> {
    static bool cast(const From &from, To &to)
    {
        if constexpr (std::is_same_v<To, bool>)
            to = from.numerator() != 0;
        else
            to = numberCast<To>(static_cast<double>(from.numerator()) /
                                static_cast<double>(from.denominator()));
        return true;
    }
};

/// Between two kinds of rational: each part as the language converts it.
template <class From, class To>
requires(TyxMatrixRational<From> &&TyxMatrixRational<To> &&
         !std::same_as<From, To>) struct TyxCast<From, To> {
    static bool cast(const From &from, To &to)
    {
        using Part = typename To::value_type;
        to = To(static_cast<Part>(from.numerator()), static_cast<Part>(from.denominator()));
        return true;
    }
};

template <>
struct TyxVariantTraits<TyxRational<int64_t>>
    : TyxBuiltinVariantTraits<TyxRational<int64_t>, TyxMetaType::I64Rational> {
};
template <>
struct TyxVariantTraits<TyxRational<uint64_t>>
    : TyxBuiltinVariantTraits<TyxRational<uint64_t>, TyxMetaType::U64Rational> {
};

} // namespace internal

} // namespace tyx
