// How the samples of several bands are arranged in memory.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include <tyx/internal/TyxCodeCasts.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

class TyxEnum;

/// The arrangement of bands in a block of samples. The default value is the
/// invalid code.
class TYX_EXPORT TyxDataLayout {
public:
    enum Code : int32_t {
        PixelInterleaved = 0,
        BandInterleaved = 1,
        LineInterleaved = 2,
        BlockInterleaved = 3,
        Invalid = 4
    };

    TyxDataLayout() = default;
    /// Any value above 4 becomes Invalid.
    TyxDataLayout(Code code);
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    explicit TyxDataLayout(const TyxString &key);

    operator Code() const { return m_code; }
    /// The key, "BandInterleaved" for instance; empty for Invalid.
    const TyxString &toString() const;
    operator const TyxString &() const { return toString(); }
    bool isValid() const { return m_code != Invalid; }
    /// True for the layouts that keep each band in a plane of its own:
    /// BandInterleaved and BlockInterleaved, which addresses like it.
    bool isBand() const { return m_code == BandInterleaved || m_code == BlockInterleaved; }

    bool operator==(const TyxDataLayout &other) const { return m_code == other.m_code; }
    bool operator!=(const TyxDataLayout &other) const { return m_code != other.m_code; }
    bool operator==(Code code) const { return m_code == code; }
    bool operator!=(Code code) const { return m_code != code; }

    /// The table of codes and keys, built once on first use.
    static const TyxEnum &enumerator();
    /// The keys in code order.
    static const std::vector<TyxString> &allKeys();
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    static Code fromString(const TyxString &key);
    /// Whether \p key is known.
    static bool isValid(const TyxString &key);

private:
    Code m_code = Invalid;
};

/// Writes the bare key.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxDataLayout &layout);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxDataLayout &layout);
/// Reads one word; an unknown word gives Invalid without a stream error.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxDataLayout &layout);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxDataLayout &layout);

namespace internal {

template <>
struct TyxCodeClass<TyxDataLayout> : std::true_type {
    using Code = TyxDataLayout::Code;
};
template <>
struct TyxDefaultCasts<TyxDataLayout> : TyxCodeDefaultCasts<TyxDataLayout> {
};
template <>
struct TyxVariantTraits<TyxDataLayout> : TyxBuiltinVariantTraits<TyxDataLayout, TyxMetaType::DataLayout> {
};

} // namespace internal

} // namespace tyx
