// The byte order in which a value is stored.
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

/// Little or big endian. The default value is LittleEndian.
class TYX_EXPORT TyxByteOrder {
public:
    enum Code : int32_t { LittleEndian = 0, BigEndian = 1, Invalid = 2 };

    TyxByteOrder() = default;
    /// Any value above 2 becomes Invalid.
    TyxByteOrder(Code code);
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    explicit TyxByteOrder(const TyxString &key);

    operator Code() const { return m_code; }
    /// The key, "LittleEndian" for instance; empty for Invalid.
    const TyxString &toString() const;
    operator const TyxString &() const { return toString(); }
    bool isValid() const { return m_code != Invalid; }

    bool operator==(const TyxByteOrder &other) const { return m_code == other.m_code; }
    bool operator!=(const TyxByteOrder &other) const { return m_code != other.m_code; }
    bool operator==(Code code) const { return m_code == code; }
    bool operator!=(Code code) const { return m_code != code; }

    /// The order of this machine's samples: LittleEndian.
    static TyxByteOrder nativeOrder() { return TyxByteOrder(LittleEndian); }

    /// The table of codes and keys, built once on first use.
    static const TyxEnum &enumerator();
    /// The keys in code order.
    static const std::vector<TyxString> &allKeys();
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    static Code fromString(const TyxString &key);
    /// Whether \p key is known.
    static bool isValid(const TyxString &key);

private:
    Code m_code = LittleEndian;
};

/// Writes the bare key.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxByteOrder &order);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxByteOrder &order);
/// Reads one word; an unknown word gives Invalid without a stream error.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxByteOrder &order);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxByteOrder &order);

namespace internal {

template <>
struct TyxCodeClass<TyxByteOrder> : std::true_type {
    using Code = TyxByteOrder::Code;
};
template <>
struct TyxDefaultCasts<TyxByteOrder> : TyxCodeDefaultCasts<TyxByteOrder> {
};
template <>
struct TyxVariantTraits<TyxByteOrder> : TyxBuiltinVariantTraits<TyxByteOrder, TyxMetaType::ByteOrder> {
};

} // namespace internal

} // namespace tyx
