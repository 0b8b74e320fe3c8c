// Three-dimensional extent: text forms of the instantiations.
#include <tyx/TyxSize3D.h>

#include <sstream>

#include <tyx/TyxVariant.h>

#include "core/TyxTupleStream.h"

namespace tyx {

template <class T>
TyxSize3D<T>::operator TyxString() const
{
    return internal::streamText(*this);
}

template <class T>
std::wostream &operator<<(std::wostream &os, const TyxSize3D<T> &size)
{
    return internal::writeTuple(os, size.width(), size.height(), size.depth());
}

template <class T>
std::ostream &operator<<(std::ostream &os, const TyxSize3D<T> &size)
{
    return internal::writeTuple(os, size.width(), size.height(), size.depth());
}

template <class T>
std::wistream &operator>>(std::wistream &is, TyxSize3D<T> &size)
{
    return internal::readCoordinates(is, std::array<T *, 3>{&size.rwidth(), &size.rheight(), &size.rdepth()});
}

template <class T>
std::istream &operator>>(std::istream &is, TyxSize3D<T> &size)
{
    return internal::readCoordinates(is, std::array<T *, 3>{&size.rwidth(), &size.rheight(), &size.rdepth()});
}

template <class T>
bool internal::parseText(const TyxString &text, TyxSize3D<T> &value)
{
    std::wistringstream is(text);
    is >> value;
    return !is.fail();
}

#define TYX_INSTANTIATE_SIZE3D(T)                                                                            \
    template class TyxSize3D<T>;                                                                             \
    template std::wostream &operator<<(std::wostream &, const TyxSize3D<T> &);                               \
    template std::ostream &operator<<(std::ostream &, const TyxSize3D<T> &);                                 \
    template std::wistream &operator>>(std::wistream &, TyxSize3D<T> &);                                     \
    template std::istream &operator>>(std::istream &, TyxSize3D<T> &);                                       \
    template bool internal::parseText(const TyxString &, TyxSize3D<T> &)

TYX_INSTANTIATE_SIZE3D(unsigned int);
TYX_INSTANTIATE_SIZE3D(double);

#undef TYX_INSTANTIATE_SIZE3D

namespace {

// Code 22 joins the variant with its casts to the core types.
[[maybe_unused]] const bool joined = [] {
    internal::TyxVariantRegistrar::join<TyxSize3D<unsigned int>>();
    return true;
}();

} // namespace

} // namespace tyx
