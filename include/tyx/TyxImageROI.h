// Region of an image: origin, size and a list of bands.
#pragma once

#include <iosfwd>
#include <vector>

#include <tyx/TyxCast.h>
#include <tyx/TyxCoord3D.h>
#include <tyx/TyxImageSize.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// Columns, rows and bands of an image, in image coordinates. The number of
/// bands always equals the length of the band list, and origin().z() is its
/// smallest entry (0 for an empty list). The list keeps the order in which it
/// was given and need be neither sorted nor contiguous.
class TYX_EXPORT TyxImageROI {
public:
    /// Origin and size zero, no bands.
    TyxImageROI() = default;
    /// Origin zero, bands 0 to numBands - 1.
    explicit TyxImageROI(const TyxImageSize &size);
    /// Bands origin.z() onwards, contiguous.
    TyxImageROI(const TyxCoord3D<int> &origin, const TyxImageSize &size);
    /// The band list as given.
    TyxImageROI(int x, int y, unsigned int width, unsigned int height,
                const std::vector<unsigned int> &bands);

    /// Sets origin and size; the band list becomes origin.z() onwards.
    void initialize(const TyxCoord3D<int> &origin, const TyxImageSize &size);
    /// Sets origin x, y and size, with the band list as given.
    void initialize(int x, int y, unsigned int width, unsigned int height,
                    const std::vector<unsigned int> &bands);

    /// Takes the list; the number of bands is its length and z its smallest
    /// entry, or 0 when it is empty.
    void setBands(const std::vector<unsigned int> &bands);
    /// Moves the region, keeping its size. The band list is replaced by the
    /// contiguous list from the new z; call setBands afterwards to keep another.
    void setOrigin(const TyxCoord3D<int> &origin);

    const TyxCoord3D<int> &origin() const { return m_origin; }
    const TyxImageSize &size() const { return m_size; }
    unsigned int width() const { return m_size.width(); }
    unsigned int height() const { return m_size.height(); }
    unsigned int numBands() const { return m_size.numBands(); }
    const std::vector<unsigned int> &bands() const { return m_bands; }

    /// Any of the three sizes is 0.
    bool empty() const { return m_size.empty(); }
    bool isEmpty() const { return empty(); }

    /// x and y lie within the region and z is one of the listed bands.
    bool contains(const TyxCoord3D<int> &point) const;
    /// The last column and row, and the largest band (-1 for no bands).
    TyxCoord3D<int> lowerRight() const;
    /// The smallest region holding both, with the contiguous bands between the
    /// smallest and largest of either. An empty operand gives a copy of the
    /// other one.
    TyxImageROI boundingROI(const TyxImageROI &other) const;
    /// The common part, with contiguous bands; a disjoint pair gives a size of
    /// zero at the computed origin.
    TyxImageROI intersection(const TyxImageROI &other) const;

    bool operator==(const TyxImageROI &other) const
    {
        return m_origin == other.m_origin && m_size == other.m_size && m_bands == other.m_bands;
    }
    bool operator!=(const TyxImageROI &other) const { return !(*this == other); }

    /// The stream form "((x,y,z),(w,h,b),(b0,b1,...))".
    operator TyxString() const;

private:
    TyxCoord3D<int> m_origin;
    TyxImageSize m_size;
    std::vector<unsigned int> m_bands;
};

/// Writes "((x,y,z),(w,h,b),(b0,b1,...))" with no blanks; no bands give "()".
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxImageROI &roi);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxImageROI &roi);
/// Reads the form written by operator<<; the band list follows the size as
/// one word. A failed stream leaves a default region.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxImageROI &roi);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxImageROI &roi);

namespace internal {

template <>
struct TYX_EXPORT TyxDefaultCasts<TyxImageROI> {
    /// The stream form.
    static bool toString(const TyxImageROI &value, TyxString &text);
    /// Through operator>> on a wide string stream; the stream's good state.
    static bool fromString(const TyxString &text, TyxImageROI &value);
    static void getDefault(TyxImageROI &value) { value = TyxImageROI(); }
};

/// True when the region differs from a default one.
template <>
struct TyxCast<TyxImageROI, bool> {
    static bool cast(const TyxImageROI &from, bool &to)
    {
        to = from != TyxImageROI();
        return true;
    }
};

template <>
struct TyxVariantTraits<TyxImageROI> : TyxBuiltinVariantTraits<TyxImageROI, TyxMetaType::ImageROI> {
};

} // namespace internal

} // namespace tyx
