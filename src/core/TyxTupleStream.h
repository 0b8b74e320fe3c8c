// Private helpers that write and read the parenthesised forms "(a,b,c)" of
// the small value types.
#pragma once

#include <array>
#include <cmath>
#include <istream>
#include <limits>
#include <ostream>
#include <sstream>
#include <type_traits>

#include <tyx/TyxString.h>

namespace tyx::internal {

/// Writes "(first,rest...)", each number in the stream's own format.
template <class Char, class First, class... Rest>
std::basic_ostream<Char> &writeTuple(std::basic_ostream<Char> &os, const First &first, const Rest &...rest)
{
    os << Char('(') << first;
    ((os << Char(',') << rest), ...);
    return os << Char(')');
}

/// Reads one character, a number, one character and so on, ending with one
/// character; the characters are not examined. False when the stream failed.
template <class Char, class Number, size_t N>
bool readTuple(std::basic_istream<Char> &is, std::array<Number, N> &values)
{
    Char separator;
    for (Number &value : values)
        is >> separator >> value;
    is >> separator;
    return !is.fail();
}

/// Truncates \p value toward zero into \p target. A value the target cannot
/// hold (NaN, infinite or out of range) answers false instead of giving
/// undefined behaviour.
template <class T>
bool truncateTo(double value, T &target)
{
    if constexpr (std::is_floating_point_v<T>) {
        target = static_cast<T>(value);
        return true;
    } else {
        // The range test is exact only where the limits are exact doubles.
        static_assert(sizeof(T) <= 4, "integer fields of at most 32 bits");
        const double truncated = std::trunc(value);
        if (!(truncated >= static_cast<double>(std::numeric_limits<T>::min()) &&
              truncated <= static_cast<double>(std::numeric_limits<T>::max())))
            return false;
        target = static_cast<T>(truncated);
        return true;
    }
}

/// Reads N coordinates as doubles and stores them truncated into the fields.
/// When the stream fails or a value does not fit, every field becomes 0 and
/// the stream's failure bit is set.
template <class Char, class T, size_t N>
std::basic_istream<Char> &readCoordinates(std::basic_istream<Char> &is, const std::array<T *, N> &fields)
{
    std::array<double, N> values{};
    bool ok = readTuple(is, values);
    std::array<T, N> converted{};
    for (size_t i = 0; ok && i < N; ++i)
        ok = truncateTo(values[i], converted[i]);
    if (!ok) {
        converted = {};
        is.setstate(std::ios_base::failbit);
    }
    for (size_t i = 0; i < N; ++i)
        *fields[i] = converted[i];
    return is;
}

/// The wide stream form of \p value, as the wide operator<< writes it.
template <class T>
TyxString streamText(const T &value)
{
    std::wostringstream os;
    os << value;
    return os.str();
}

} // namespace tyx::internal
