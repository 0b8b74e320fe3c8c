// Columns, rows and bands of an image or a piece of one.
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxCast.h>
#include <tyx/TyxSize3D.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// A TyxSize3D<unsigned int> whose depth is the number of bands. A default
/// size is all zero.
class TYX_EXPORT TyxImageSize : public TyxSize3D<unsigned int> {
public:
    TyxImageSize() = default;
    TyxImageSize(unsigned int width, unsigned int height, unsigned int numBands)
        : TyxSize3D<unsigned int>(width, height, numBands)
    {
    }
    TyxImageSize(const TyxSize3D<unsigned int> &size) : TyxSize3D<unsigned int>(size) {}

    unsigned int numBands() const { return depth(); }
    unsigned int &rnumBands() { return rdepth(); }
    void setNumBands(unsigned int numBands) { setDepth(numBands); }

    /// Width times height times bands, in 64 bits.
    uint64_t numSamples() const { return volume(); }
};

/// Writes "(width,height,bands)".
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxImageSize &size);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxImageSize &size);
/// Reads the form of TyxSize3D; a failed read leaves all fields 0.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxImageSize &size);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxImageSize &size);

namespace internal {

template <>
struct TyxDefaultCasts<TyxImageSize> {
    /// "(width,height,bands)".
    static bool toString(const TyxImageSize &value, TyxString &text)
    {
        text = static_cast<TyxString>(value);
        return true;
    }
    static bool fromString(const TyxString &text, TyxImageSize &value)
    {
        return parseText(text, static_cast<TyxSize3D<unsigned int> &>(value));
    }
    static void getDefault(TyxImageSize &value) { value = TyxImageSize(); }
};

/// True when any field is not zero.
template <>
struct TyxCast<TyxImageSize, bool> {
    static bool cast(const TyxImageSize &from, bool &to)
    {
        to = from.width() != 0 || from.height() != 0 || from.depth() != 0;
        return true;
    }
};

/// The three fields, both ways.
template <>
struct TyxCast<TyxImageSize, TyxSize3D<unsigned int>> {
    static bool cast(const TyxImageSize &from, TyxSize3D<unsigned int> &to)
    {
        to = from;
        return true;
    }
};
template <>
struct TyxCast<TyxSize3D<unsigned int>, TyxImageSize> {
    static bool cast(const TyxSize3D<unsigned int> &from, TyxImageSize &to)
    {
        to = TyxImageSize(from);
        return true;
    }
};

template <>
struct TyxVariantTraits<TyxImageSize> : TyxBuiltinVariantTraits<TyxImageSize, TyxMetaType::ImageSize> {
};

} // namespace internal

} // namespace tyx
