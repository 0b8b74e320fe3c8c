// Three-dimensional coordinate: text forms of the instantiations.
#include <tyx/TyxCoord3D.h>

#include <sstream>

#include <tyx/TyxVariant.h>

#include "core/TyxTupleStream.h"

namespace tyx {

template <class T>
TyxCoord3D<T>::operator TyxString() const
{
    return internal::streamText(*this);
}

template <class T>
std::wostream &operator<<(std::wostream &os, const TyxCoord3D<T> &coord)
{
    return internal::writeTuple(os, coord.x(), coord.y(), coord.z());
}

template <class T>
std::ostream &operator<<(std::ostream &os, const TyxCoord3D<T> &coord)
{
    return internal::writeTuple(os, coord.x(), coord.y(), coord.z());
}

template <class T>
std::wistream &operator>>(std::wistream &is, TyxCoord3D<T> &coord)
{
    return internal::readCoordinates(is, std::array<T *, 3>{&coord.rx(), &coord.ry(), &coord.rz()});
}

template <class T>
std::istream &operator>>(std::istream &is, TyxCoord3D<T> &coord)
{
    return internal::readCoordinates(is, std::array<T *, 3>{&coord.rx(), &coord.ry(), &coord.rz()});
}

template <class T>
bool internal::parseText(const TyxString &text, TyxCoord3D<T> &value)
{
    std::wistringstream is(text);
    is >> value;
    return !is.fail();
}

#define TYX_INSTANTIATE_COORD3D(T)                                                                           \
    template class TyxCoord3D<T>;                                                                            \
    template std::wostream &operator<<(std::wostream &, const TyxCoord3D<T> &);                              \
    template std::ostream &operator<<(std::ostream &, const TyxCoord3D<T> &);                                \
    template std::wistream &operator>>(std::wistream &, TyxCoord3D<T> &);                                    \
    template std::istream &operator>>(std::istream &, TyxCoord3D<T> &);                                      \
    template bool internal::parseText(const TyxString &, TyxCoord3D<T> &)

TYX_INSTANTIATE_COORD3D(double);
TYX_INSTANTIATE_COORD3D(int);

#undef TYX_INSTANTIATE_COORD3D

namespace {

// Codes 19 and 20 join the variant with their casts to the core types.
[[maybe_unused]] const bool joined = [] {
    internal::TyxVariantRegistrar::join<TyxCoord3D<int>>();
    internal::TyxVariantRegistrar::join<TyxCoord3D<double>>();
    return true;
}();

} // namespace

} // namespace tyx
