// How the bands of an image read as colour: colour system, colour bands and extra bands.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariantImpl.h>
#include <tyx/internal/TyxCodeCasts.h>

namespace tyx {

class TyxEnum;

/// A colour system with its number of colour bands and the extra bands that
/// stand beside them. The default value is the invalid model.
class TYX_EXPORT TyxColorModel {
public:
    /// The colour systems; the comment gives the number of colour bands.
    enum Code : int32_t {
        GrayScale = 0,           ///< 1
        MultiSpectral = 1,       ///< given by the caller
        RGB = 2,                 ///< 3
        sRGB = 3,                ///< 3
        RIMM_RGB = 4,            ///< 3
        ROMM_RGB = 5,            ///< 3
        ERIMM_RGB = 6,           ///< 3
        HSI = 7,                 ///< 3
        HSV = 8,                 ///< 3
        YCbCr = 9,               ///< 3
        CMYK = 10,               ///< 4
        YIQ = 11,                ///< 3
        YUV = 12,                ///< 3
        CIELAB = 13,             ///< 3
        CIELUV = 14,             ///< 3
        CIEXYZ = 15,             ///< 3
        Alpha = 16,              ///< 1
        PremultipliedAlpha = 17, ///< 1
        Other = 18,              ///< given by the caller
        Invalid = 19             ///< 0
    };

    /// What an extra band holds. The library stores, compares and writes
    /// these as numbers and gives them no further meaning; any 32-bit value
    /// is kept as it is.
    enum ExtraBandType : int32_t {
        Unspecified = 0,
        AssociatedAlpha = 1,
        UnassociatedAlpha = 2,
        Mask = 3,
        Depth = 4
    };

    /// The invalid model.
    TyxColorModel() = default;
    /// setType(\p code); a rejected code leaves the invalid model.
    TyxColorModel(Code code);
    /// The model of \p key, matched ignoring case, by setType().
    explicit TyxColorModel(const TyxString &key);
    /// setType(\p code), then the extra bands, which are kept even when the
    /// code is rejected.
    TyxColorModel(Code code, const std::vector<ExtraBandType> &extraBands);
    /// setType(\p code, \p numColorBands), then the extra bands, which are
    /// kept even when the type is rejected.
    TyxColorModel(Code code, unsigned numColorBands, const std::vector<ExtraBandType> &extraBands);

    /// Takes \p code with its number of colour bands. Returns an empty
    /// message on success; otherwise an Error saying why, and the model is
    /// invalid. MultiSpectral and Other need the form with a band count.
    TyxTextMsg setType(Code code);
    /// Takes \p code with \p numColorBands bands: any count of 1 or more for
    /// MultiSpectral and Other, exactly the code's own count for the rest.
    /// Returns an empty message on success; otherwise an Error saying why,
    /// and the model is invalid.
    TyxTextMsg setType(Code code, unsigned numColorBands);

    void setExtraBands(const std::vector<ExtraBandType> &extraBands) { m_extraBands = extraBands; }
    const std::vector<ExtraBandType> &extraBands() const { return m_extraBands; }
    unsigned numExtraBands() const { return static_cast<unsigned>(m_extraBands.size()); }
    unsigned numColorBands() const { return m_numColorBands; }
    /// Colour bands plus extra bands.
    unsigned numBands() const { return m_numColorBands + numExtraBands(); }

    bool isValid() const { return m_type != Invalid; }
    /// The key, "RGB" for instance; empty for the invalid model.
    const TyxString &name() const;
    const TyxString &toString() const { return name(); }
    operator const TyxString &() const { return name(); }
    Code toEnum() const { return m_type; }
    operator Code() const { return m_type; }

    /// The table of codes and keys; each item's data is its number of colour
    /// bands, 0 for MultiSpectral and Other. Built once on first use.
    static const TyxEnum &enumerator();
    /// The keys in code order.
    static const std::vector<TyxString> &allKeys();
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    static Code fromString(const TyxString &key);
    /// Whether \p key is known.
    static bool isValid(const TyxString &key);

    /// Same code, colour bands and extra bands in order.
    bool operator==(const TyxColorModel &other) const;
    bool operator!=(const TyxColorModel &other) const { return !(*this == other); }
    bool operator==(Code code) const { return m_type == code; }
    bool operator!=(Code code) const { return m_type != code; }

private:
    Code m_type = Invalid;
    unsigned m_numColorBands = 0;
    std::vector<ExtraBandType> m_extraBands;
};

/// Writes "(key,colour bands,extra bands[:e1,e2...])", "(RGB,3,1:2)" for
/// instance; the invalid model has an empty key.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxColorModel &model);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxColorModel &model);
/// Reads the form operator<< writes and applies it through setType(), whose
/// message is dropped. With no extra bands the closing parenthesis stays in
/// the stream.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxColorModel &model);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxColorModel &model);

namespace internal {

template <>
struct TyxCodeClass<TyxColorModel> : std::true_type {
    using Code = TyxColorModel::Code;
};
template <>
struct TyxDefaultCasts<TyxColorModel> : TyxCodeDefaultCasts<TyxColorModel> {
};
template <>
struct TyxVariantTraits<TyxColorModel> : TyxBuiltinVariantTraits<TyxColorModel, TyxMetaType::ColorModel> {
};

} // namespace internal

} // namespace tyx
