// The type of an image sample: numeric code and logical bit depth.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include <tyx/internal/TyxCodeCasts.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxNumericType.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

class TyxEnum;

/// A numeric sample code with the number of bits that carry data. Every
/// constructor normalises the depth: it is kept only for an integer code when
/// it is non-zero and fits the physical depth; otherwise it is the physical
/// depth. The default value is the invalid type (code 12, depth 0).
class TYX_EXPORT TyxDataType {
public:
    TyxDataType() = default;
    /// The type of a key such as "U16", matched ignoring case, with its
    /// physical depth; an unknown key gives the invalid type.
    explicit TyxDataType(const TyxString &key);
    /// The code with \p depth normalised; a code of 12 or above gives the
    /// invalid type.
    explicit TyxDataType(TyxNumericType::Code code, unsigned depth = 0);

    TyxNumericType::Code code() const { return m_code; }
    operator TyxNumericType::Code() const { return m_code; }

    /// The key, "U16" for instance; an empty text for the invalid type.
    const TyxString &toString() const;
    operator const TyxString &() const { return toString(); }

    bool isInteger() const { return m_code < TyxNumericType::Float; }
    bool isFloat() const { return m_code == TyxNumericType::Float || m_code == TyxNumericType::Double; }
    bool isComplex() const
    {
        return m_code == TyxNumericType::ComplexFloat || m_code == TyxNumericType::ComplexDouble;
    }
    /// False only for U8, U16, U32 and U64.
    bool isSigned() const;
    bool isValid() const { return m_code < TyxNumericType::Invalid; }

    /// Bytes per sample; 0 for the invalid type.
    unsigned size() const;
    unsigned physicalBitDepth() const { return size() * 8; }
    unsigned logicalBitDepth() const { return m_depth; }
    /// Sets the depth under the normalising rule.
    void setLogicalBitDepth(unsigned depth);

    /// The limits of the container (of one component for complex types); 0
    /// for the invalid type.
    double physicalMinValue() const;
    double physicalMaxValue() const;
    /// The limits of the logical depth for integer types, the physical limits
    /// otherwise.
    double logicalMinValue() const;
    double logicalMaxValue() const;

    /// Both fields equal: a 12-bit U16 differs from a 16-bit U16.
    bool operator==(const TyxDataType &other) const
    {
        return m_code == other.m_code && m_depth == other.m_depth;
    }
    bool operator!=(const TyxDataType &other) const { return !(*this == other); }
    /// Only the code is compared.
    bool operator==(TyxNumericType::Code code) const { return m_code == code; }
    bool operator!=(TyxNumericType::Code code) const { return m_code != code; }

    /// The integer type of \p depth bits: 8, 16, 32 or 64 bits wide, signed
    /// when asked; a depth of 0 or one that does not fit becomes the physical
    /// depth.
    static TyxDataType fromBitDepth(unsigned depth, bool isSigned);
    /// The smallest type for values from \p min to \p max.
    static TyxDataType fromMinMax(double min, double max);
    /// A type that holds the values of both \p a and \p b, with the larger
    /// depth; some pairs keep the higher code although it cannot hold every
    /// value of the other (U64 with a signed type, for instance).
    static TyxDataType leastCommon(const TyxDataType &a, const TyxDataType &b);

    /// The table of codes and keys, built once on first use.
    static const TyxEnum &enumerator();
    /// The keys in code order, "I8" to "ComplexDouble".
    static const std::vector<TyxString> &allKeys();
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    static TyxNumericType::Code fromString(const TyxString &key);
    /// Whether \p key is known.
    static bool isValid(const TyxString &key);

private:
    void normalise();

    TyxNumericType::Code m_code = TyxNumericType::Invalid;
    uint32_t m_depth = 0;
};

/// Writes the stream form "(key,depth)", such as "(U16,12)".
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxDataType &type);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxDataType &type);
/// Reads the stream form: one character, the key up to ",", the depth and one
/// more character; the characters around are not examined.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxDataType &type);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxDataType &type);

namespace internal {

template <>
struct TyxCodeClass<TyxDataType> : std::true_type {
    using Code = TyxNumericType::Code;
};
template <>
struct TyxDefaultCasts<TyxDataType> : TyxCodeDefaultCasts<TyxDataType> {
};
template <>
struct TyxVariantTraits<TyxDataType> : TyxBuiltinVariantTraits<TyxDataType, TyxMetaType::DataType> {
};

} // namespace internal

} // namespace tyx
