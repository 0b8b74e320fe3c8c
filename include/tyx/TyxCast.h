// The conversion matrix: casts between the value types a variant can hold.
//
// TyxCast<From, To> exists for each allowed pair and for no other; its one
// operation cast() answers whether the target got a value. TyxDefaultCasts<T>
// gives a type's text conversions and its default. Rules are written once per
// family of types (integers, reals, complex...), so pairs with the same rule
// share one body. A later value type adds its rows in its own header by
// specialising TyxDefaultCasts for itself and TyxCast for its pairs.
#pragma once

#include <complex>
#include <concepts>
#include <cstdint>
#include <limits>
#include <map>
#include <type_traits>
#include <utility>
#include <vector>

#include <tyx/TyxLexigraphicalNoCase.h>
#include <tyx/TyxStrList.h>
#include <tyx/TyxString.h>

namespace tyx {

class TyxVariant;

/// The key-value pair a variant holds (code 31).
using TyxVariantPair = std::pair<TyxString, TyxVariant>;
/// The list a variant holds (code 32).
using TyxVariantList = std::vector<TyxVariant>;
/// The map a variant holds (code 33), keys ordered without regard to case.
using TyxVariantMap = std::map<TyxString, TyxVariant, TyxLexigraphicalNoCase>;

namespace internal {

/// A compile-time list of types, as registration helpers take them.
template <class... T>
struct TyxTypeList {
};

// ---- Families ----------------------------------------------------------------

template <class T>
concept TyxMatrixInteger =
    std::same_as<T, signed char> || std::same_as<T, char> || std::same_as<T, unsigned char> ||
    std::same_as<T, short> || std::same_as<T, unsigned short> || std::same_as<T, wchar_t> ||
    std::same_as<T, int> || std::same_as<T, unsigned int> || std::same_as<T, long> ||
    std::same_as<T, unsigned long> || std::same_as<T, long long> || std::same_as<T, unsigned long long>;

template <class T>
concept TyxMatrixReal = std::same_as<T, float> || std::same_as<T, double>;

template <class T>
concept TyxMatrixComplex = std::same_as<T, std::complex<float>> || std::same_as<T, std::complex<double>>;

template <class T>
concept TyxMatrixNumber =
    TyxMatrixInteger<T> || TyxMatrixReal<T> || TyxMatrixComplex<T> || std::same_as<T, bool>;

// ---- The two templates -------------------------------------------------------

/// One cast between two value types: static bool cast(const From &, To &).
/// Only the specialisations below and those of later types exist.
template <class From, class To>
struct TyxCast;

/// Text conversions and the default of one value type: toString(const T &,
/// TyxString &) and fromString(const TyxString &, T &) answer whether they
/// succeeded; getDefault(T &) writes the default.
template <class T>
struct TyxDefaultCasts;

/// Holds when TyxDefaultCasts<T> is specialised.
template <class T>
concept TyxHasDefaultCasts = requires(const T &value, T &target, const TyxString &in, TyxString &out)
{
    {
        TyxDefaultCasts<T>::toString(value, out)
        } -> std::same_as<bool>;
    {
        TyxDefaultCasts<T>::fromString(in, target)
        } -> std::same_as<bool>;
    TyxDefaultCasts<T>::getDefault(target);
};

/// Holds when TyxCast<From, To> exists.
template <class From, class To>
concept TyxCastExists = requires(const From &from, To &to)
{
    {
        TyxCast<From, To>::cast(from, to)
        } -> std::same_as<bool>;
};

// ---- Numbers -----------------------------------------------------------------

/// Truncation toward zero as the processor does it: a value out of range,
/// or NaN, gives the smallest integer of the width.
inline int32_t truncToInt32(double value)
{
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int32_t>(value) : INT32_MIN;
}

inline int64_t truncToInt64(double value)
{
    return value >= -9223372036854775808.0 && value < 9223372036854775808.0 ? static_cast<int64_t>(value)
                                                                            : INT64_MIN;
}

/// Values below 2^63 convert directly; above, 2^63 is taken off, the rest
/// converted and 2^63 added back unless the rest still reaches 2^63.
inline uint64_t truncToUInt64(double value)
{
    constexpr double twoTo63 = 9223372036854775808.0;
    if (value < twoTo63)
        return static_cast<uint64_t>(truncToInt64(value));
    const double rest = value - twoTo63;
    const auto low = static_cast<uint64_t>(truncToInt64(rest));
    return rest >= twoTo63 ? low : low + (UINT64_C(1) << 63);
}

/// A real to an integer type: targets below 32 bits keep the low bits of a
/// 32-bit conversion.
template <class To>
To realToInteger(double value)
{
    if constexpr (sizeof(To) < 4)
        return static_cast<To>(truncToInt32(value));
    else if constexpr (sizeof(To) == 8 && std::is_unsigned_v<To>)
        return static_cast<To>(truncToUInt64(value));
    else if constexpr (sizeof(To) == 8 || std::is_unsigned_v<To>)
        return static_cast<To>(truncToInt64(value));
    else
        return static_cast<To>(truncToInt32(value));
}

/// The rules between integers, bool, reals and complex numbers.
template <class To, class From>
To numberCast(const From &from)
{
    if constexpr (std::is_same_v<To, bool>) {
        if constexpr (TyxMatrixComplex<From>)
            return from.real() != 0 || from.imag() != 0;
        else
            return from != 0;
    } else if constexpr (TyxMatrixComplex<To>) {
        using Part = typename To::value_type;
        if constexpr (TyxMatrixComplex<From>)
            return To(static_cast<Part>(from.real()), static_cast<Part>(from.imag()));
        else
            return To(numberCast<Part>(from), Part(0));
    } else if constexpr (TyxMatrixComplex<From>) {
        return numberCast<To>(from.real());
    } else if constexpr (TyxMatrixInteger<To> && TyxMatrixReal<From>) {
        return realToInteger<To>(static_cast<double>(from));
    } else {
        return static_cast<To>(from);
    }
}

/// Every pair of numbers; these casts always succeed, however lossy.
template <class From, class To>
requires(TyxMatrixNumber<From> &&TyxMatrixNumber<To>) struct TyxCast<From, To> {
    static bool cast(const From &from, To &to)
    {
        to = numberCast<To>(from);
        return true;
    }
};

// ---- Text --------------------------------------------------------------------

/// Decimal text of an integer, built by hand.
TYX_EXPORT TyxString integerToString(int64_t value);
TYX_EXPORT TyxString unsignedToString(uint64_t value);
/// The text of a double: "nan"; "%1.1lf" for whole values ("3.0"); otherwise
/// the stream form with 17 digits more than the integer part has.
TYX_EXPORT TyxString realToString(double value);

/// What the integer parse found.
struct TyxParsedInteger {
    enum Kind {
        Integer, ///< \c bits holds the value, wrapped to 64 bits
        Blank,   ///< the text is empty or blank: 0 and failure
        Real     ///< the text parsed as a double into \c real; \c realOk is the result
    };
    Kind kind = Blank;
    uint64_t bits = 0;
    double real = 0.0;
    bool realOk = false;
};

/// Parses decimal text: leading blanks and zeros skipped, a "-" taken for a
/// signed type, then the digits; failing that the C library's parse with
/// trailing blanks allowed, and failing that the double parse.
TYX_EXPORT TyxParsedInteger parseInteger(const TyxString &text, bool isSigned);
/// Parses with wcstod, allowing trailing blanks and "NaN" in any case. Empty
/// or blank text gives 0 and false; other failures keep what was parsed.
TYX_EXPORT bool parseReal(const TyxString &text, double &value);
/// "1", "t", "y", "true", "yes", "on" in any case are true.
TYX_EXPORT bool parseBool(const TyxString &text);
TYX_EXPORT TyxString complexToString(const std::complex<double> &value);
TYX_EXPORT bool parseComplex(const TyxString &text, std::complex<double> &value);

template <TyxMatrixInteger T>
struct TyxDefaultCasts<T> {
    /// Decimal, except that the character types give the character itself.
    static bool toString(const T &value, TyxString &text)
    {
        if constexpr (std::is_same_v<T, char> || std::is_same_v<T, wchar_t>)
            text.assign(1, static_cast<wchar_t>(value));
        else if constexpr (std::is_signed_v<T>)
            text = integerToString(static_cast<int64_t>(value));
        else
            text = unsignedToString(static_cast<uint64_t>(value));
        return true;
    }

    static bool fromString(const TyxString &text, T &value)
    {
        if constexpr (std::is_same_v<T, char> || std::is_same_v<T, wchar_t>) {
            value = text.empty() ? T(0) : static_cast<T>(text[0]);
            return !text.empty();
        } else {
            const TyxParsedInteger parsed = parseInteger(text, std::is_signed_v<T>);
            switch (parsed.kind) {
            case TyxParsedInteger::Integer: value = static_cast<T>(parsed.bits); return true;
            case TyxParsedInteger::Blank: value = 0; return false;
            case TyxParsedInteger::Real: break;
            }
            value = realToInteger<T>(parsed.real);
            return parsed.realOk;
        }
    }

    static void getDefault(T &value) { value = 0; }
};

template <>
struct TyxDefaultCasts<bool> {
    static bool toString(const bool &value, TyxString &text)
    {
        text = value ? L"true" : L"false";
        return true;
    }
    /// Any text gives a value, so the result is always true.
    static bool fromString(const TyxString &text, bool &value)
    {
        value = parseBool(text);
        return true;
    }
    static void getDefault(bool &value) { value = false; }
};

template <TyxMatrixReal T>
struct TyxDefaultCasts<T> {
    static bool toString(const T &value, TyxString &text)
    {
        text = realToString(static_cast<double>(value));
        return true;
    }
    static bool fromString(const TyxString &text, T &value)
    {
        double parsed = 0.0;
        const bool ok = parseReal(text, parsed);
        value = static_cast<T>(parsed);
        return ok;
    }
    static void getDefault(T &value) { value = 0; }
};

template <TyxMatrixComplex T>
struct TyxDefaultCasts<T> {
    /// The standard stream form "(re,im)".
    static bool toString(const T &value, TyxString &text)
    {
        text = complexToString(std::complex<double>(value));
        return true;
    }
    /// Reads "(re,im)", "(re)" or "re".
    static bool fromString(const TyxString &text, T &value)
    {
        std::complex<double> parsed;
        if (!parseComplex(text, parsed))
            return false;
        value = T(parsed);
        return true;
    }
    static void getDefault(T &value) { value = T(); }
};

template <>
struct TyxDefaultCasts<TyxString> {
    static bool toString(const TyxString &value, TyxString &text)
    {
        text = value;
        return true;
    }
    static bool fromString(const TyxString &text, TyxString &value)
    {
        value = text;
        return true;
    }
    static void getDefault(TyxString &value) { value.clear(); }
};

// ---- Containers --------------------------------------------------------------

template <>
struct TYX_EXPORT TyxDefaultCasts<TyxStrList> {
    /// "(a,b)"; an empty list gives an empty text.
    static bool toString(const TyxStrList &value, TyxString &text);
    /// The list's stream form; false when the stream failed.
    static bool fromString(const TyxString &text, TyxStrList &value);
    static void getDefault(TyxStrList &value) { value.clear(); }
};

template <>
struct TYX_EXPORT TyxDefaultCasts<TyxVariantPair> {
    /// "key,type,value".
    static bool toString(const TyxVariantPair &value, TyxString &text);
    /// Text does not parse into a pair: the default pair, and true.
    static bool fromString(const TyxString &text, TyxVariantPair &value);
    /// An empty key and an invalid variant.
    static void getDefault(TyxVariantPair &value);
};

template <>
struct TYX_EXPORT TyxDefaultCasts<TyxVariantList> {
    /// The full stream form of a variant holding the list.
    static bool toString(const TyxVariantList &value, TyxString &text);
    /// A list of one string variant holding \p text, and true.
    static bool fromString(const TyxString &text, TyxVariantList &value);
    static void getDefault(TyxVariantList &value);
};

template <>
struct TYX_EXPORT TyxDefaultCasts<TyxVariantMap> {
    /// The full stream form of a variant holding the map.
    static bool toString(const TyxVariantMap &value, TyxString &text);
    /// Text does not parse into a map: an empty map, and true.
    static bool fromString(const TyxString &text, TyxVariantMap &value);
    static void getDefault(TyxVariantMap &value);
};

/// Containers are true when not empty; the pair when it differs from the
/// default pair.
template <>
struct TYX_EXPORT TyxCast<TyxStrList, bool> {
    static bool cast(const TyxStrList &from, bool &to);
};
template <>
struct TYX_EXPORT TyxCast<TyxVariantPair, bool> {
    static bool cast(const TyxVariantPair &from, bool &to);
};
template <>
struct TYX_EXPORT TyxCast<TyxVariantList, bool> {
    static bool cast(const TyxVariantList &from, bool &to);
};
// Not named among the container rules; a map is true when not empty, as the
// list is.
template <>
struct TYX_EXPORT TyxCast<TyxVariantMap, bool> {
    static bool cast(const TyxVariantMap &from, bool &to);
};

// ---- Through text, and to the type itself ----------------------------------

/// Every type with text conversions casts to TyxString by toString...
template <class T>
requires(TyxHasDefaultCasts<T> && !std::same_as<T, TyxString>) struct TyxCast<T, TyxString> {
    static bool cast(const T &from, TyxString &to) { return TyxDefaultCasts<T>::toString(from, to); }
};

/// ... and from TyxString by fromString.
template <class T>
requires(TyxHasDefaultCasts<T> && !std::same_as<T, TyxString>) struct TyxCast<TyxString, T> {
    static bool cast(const TyxString &from, T &to) { return TyxDefaultCasts<T>::fromString(from, to); }
};

template <>
struct TyxCast<TyxString, TyxString> {
    static bool cast(const TyxString &from, TyxString &to)
    {
        to = from;
        return true;
    }
};

/// A value type other than a number casts to itself by copying.
template <class T>
requires(TyxHasDefaultCasts<T> && !TyxMatrixNumber<T> && !std::same_as<T, TyxString>) struct TyxCast<T, T> {
    static bool cast(const T &from, T &to)
    {
        to = from;
        return true;
    }
};

} // namespace internal
} // namespace tyx
