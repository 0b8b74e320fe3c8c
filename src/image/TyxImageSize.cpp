// Image size: text forms and its place in the variant.
#include <tyx/TyxImageSize.h>

#include <istream>
#include <ostream>

#include <tyx/TyxVariant.h>

namespace tyx {

namespace {

// Code 23 joins the variant with its casts to the core types and to code 22.
[[maybe_unused]] const bool joinedVariant = [] {
    internal::TyxVariantRegistrar::join<TyxImageSize>();
    internal::TyxVariantRegistrar::joinCasts<TyxImageSize, TyxSize3D<unsigned int>>();
    return true;
}();

} // namespace

std::wostream &operator<<(std::wostream &os, const TyxImageSize &size)
{
    return os << static_cast<const TyxSize3D<unsigned int> &>(size);
}

std::ostream &operator<<(std::ostream &os, const TyxImageSize &size)
{
    return os << static_cast<const TyxSize3D<unsigned int> &>(size);
}

std::wistream &operator>>(std::wistream &is, TyxImageSize &size)
{
    return is >> static_cast<TyxSize3D<unsigned int> &>(size);
}

std::istream &operator>>(std::istream &is, TyxImageSize &size)
{
    return is >> static_cast<TyxSize3D<unsigned int> &>(size);
}

} // namespace tyx
