// Fraction of two integers: text forms of the four instantiations.
#include <tyx/TyxRational.h>

#include <cmath>
#include <sstream>

#include <tyx/TyxVariant.h>

#include "core/TyxTupleStream.h"

namespace tyx {

namespace {

template <class Char, class T>
std::basic_istream<Char> &readRational(std::basic_istream<Char> &is, TyxRational<T> &value)
{
    std::array<T, 2> fields{};
    if (!internal::readTuple(is, fields))
        fields = {};
    value = TyxRational<T>(fields[0], fields[1]);
    return is;
}

} // namespace

// Declared with the text functions; it lives here, beside its main user.
void approximate(double value, int64_t limit, int64_t *numerator, int64_t *denominator)
{
    if (limit < 2) {
        *numerator = static_cast<int64_t>(value);
        *denominator = 1;
        return;
    }
    const bool negative = value < 0;
    double magnitude = negative ? -value : value;
    int64_t d = 1;
    // The doubling stops before the denominator overflows; what is left of
    // the fraction then no longer matters to any reachable limit.
    while (std::floor(magnitude) != magnitude && d < (INT64_C(1) << 62)) {
        magnitude *= 2;
        d *= 2;
    }
    int64_t n = magnitude < 9.2e18 ? static_cast<int64_t>(magnitude) : INT64_MAX;
    int64_t h0 = 0, h1 = 1, k0 = 1, k1 = 0;
    for (int i = 0; i < 64; ++i) {
        const int64_t a = d ? n / d : 0;
        if (i != 0 && a == 0)
            break;
        const int64_t remainder = d ? n % d : 0;
        n = d;
        d = remainder;
        int64_t x = a;
        bool last = false;
        if (a * k1 + k0 >= limit) {
            x = k1 ? (limit - k0) / k1 : 0;
            if (2 * x < a && k1 < limit)
                break;
            last = true;
        }
        const int64_t h2 = x * h1 + h0;
        h0 = h1;
        h1 = h2;
        const int64_t k2 = x * k1 + k0;
        k0 = k1;
        k1 = k2;
        if (last)
            break;
    }
    *numerator = negative ? -h1 : h1;
    *denominator = k1;
}

template <class T>
TyxRational<T>::operator TyxString() const
{
    return internal::streamText(*this);
}

template <class T>
std::wostream &operator<<(std::wostream &os, const TyxRational<T> &value)
{
    return internal::writeTuple(os, value.numerator(), value.denominator());
}

template <class T>
std::ostream &operator<<(std::ostream &os, const TyxRational<T> &value)
{
    return internal::writeTuple(os, value.numerator(), value.denominator());
}

template <class T>
std::wistream &operator>>(std::wistream &is, TyxRational<T> &value)
{
    return readRational(is, value);
}

template <class T>
std::istream &operator>>(std::istream &is, TyxRational<T> &value)
{
    return readRational(is, value);
}

template <class T>
bool internal::parseText(const TyxString &text, TyxRational<T> &value)
{
    std::wistringstream is(text);
    is >> value;
    return !is.fail();
}

#define TYX_INSTANTIATE_RATIONAL(T)                                                                          \
    template class TyxRational<T>;                                                                           \
    template std::wostream &operator<<(std::wostream &, const TyxRational<T> &);                             \
    template std::ostream &operator<<(std::ostream &, const TyxRational<T> &);                               \
    template std::wistream &operator>>(std::wistream &, TyxRational<T> &);                                   \
    template std::istream &operator>>(std::istream &, TyxRational<T> &);                                     \
    template bool internal::parseText(const TyxString &, TyxRational<T> &)

TYX_INSTANTIATE_RATIONAL(int);
TYX_INSTANTIATE_RATIONAL(unsigned int);
TYX_INSTANTIATE_RATIONAL(int64_t);
TYX_INSTANTIATE_RATIONAL(uint64_t);

#undef TYX_INSTANTIATE_RATIONAL

namespace {

// Codes 12 and 13 join the variant, with their casts to the core types and
// between each other.
[[maybe_unused]] const bool joined = [] {
    using internal::TyxVariantRegistrar;
    TyxVariantRegistrar::join<TyxRational<int64_t>>();
    TyxVariantRegistrar::join<TyxRational<uint64_t>>();
    TyxVariantRegistrar::joinCasts<TyxRational<int64_t>, TyxRational<uint64_t>>();
    return true;
}();

} // namespace

} // namespace tyx
