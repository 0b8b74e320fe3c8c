// Two-dimensional coordinate: text forms of the instantiations.
#include <tyx/TyxCoord2D.h>

#include <sstream>

#include <tyx/TyxVariant.h>

#include "core/TyxTupleStream.h"

namespace tyx {

template <class T>
TyxCoord2D<T>::operator TyxString() const
{
    return internal::streamText(*this);
}

template <class T>
std::wostream &operator<<(std::wostream &os, const TyxCoord2D<T> &coord)
{
    return internal::writeTuple(os, coord.x(), coord.y());
}

template <class T>
std::ostream &operator<<(std::ostream &os, const TyxCoord2D<T> &coord)
{
    return internal::writeTuple(os, coord.x(), coord.y());
}

template <class T>
std::wistream &operator>>(std::wistream &is, TyxCoord2D<T> &coord)
{
    return internal::readCoordinates(is, std::array<T *, 2>{&coord.rx(), &coord.ry()});
}

template <class T>
std::istream &operator>>(std::istream &is, TyxCoord2D<T> &coord)
{
    return internal::readCoordinates(is, std::array<T *, 2>{&coord.rx(), &coord.ry()});
}

template <class T>
bool internal::parseText(const TyxString &text, TyxCoord2D<T> &value)
{
    std::wistringstream is(text);
    is >> value;
    return !is.fail();
}

#define TYX_INSTANTIATE_COORD2D(T)                                                                           \
    template class TyxCoord2D<T>;                                                                            \
    template std::wostream &operator<<(std::wostream &, const TyxCoord2D<T> &);                              \
    template std::ostream &operator<<(std::ostream &, const TyxCoord2D<T> &);                                \
    template std::wistream &operator>>(std::wistream &, TyxCoord2D<T> &);                                    \
    template std::istream &operator>>(std::istream &, TyxCoord2D<T> &);                                      \
    template bool internal::parseText(const TyxString &, TyxCoord2D<T> &)

TYX_INSTANTIATE_COORD2D(double);
TYX_INSTANTIATE_COORD2D(int);

#undef TYX_INSTANTIATE_COORD2D

namespace {

// Code 21 joins the variant with its casts to the core types.
[[maybe_unused]] const bool joined = [] {
    internal::TyxVariantRegistrar::join<TyxCoord2D<double>>();
    return true;
}();

} // namespace

} // namespace tyx
