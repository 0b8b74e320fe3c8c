// Fraction of two integers: text forms of the four instantiations.
#include <tyx/TyxRational.h>

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
