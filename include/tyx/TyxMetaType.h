// Type codes: the tag of every value a variant holds.
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxEnum.h>
#include <tyx/TyxStrList.h>

namespace tyx {

namespace internal {
struct TyxVariantRegistrar;
}

/// Names a value type by a 32-bit code, with a text name and a type identity.
/// Codes 0 to 33 are the built-in value types, 34 is invalid, and codes from
/// 1024 upward are handed out at run time to registered types.
class TYX_EXPORT TyxMetaType {
public:
    enum Code : int32_t {
        Bool = 0,
        Int8 = 1,
        UInt8 = 2,
        Int16 = 3,
        UInt16 = 4,
        Int = 5,
        UInt = 6,
        Int64 = 7,
        UInt64 = 8,
        Float = 9,
        Double = 10,
        ComplexDouble = 11,
        I64Rational = 12,
        U64Rational = 13,
        Char = 14,
        String = 15,
        StrList = 16,
        EqnTile = 17,
        BufferPtr = 18,
        I32Coord = 19,
        DblCoord = 20,
        DblCoord2D = 21,
        U32Size = 22,
        ImageSize = 23,
        Units = 24,
        Scalar = 25,
        ImageROI = 26,
        DataType = 27,
        DataLayout = 28,
        ColorModel = 29,
        ByteOrder = 30,
        KeyValuePair = 31,
        VariantList = 32,
        VariantMap = 33,
        Invalid = 34,
        /// The first code handed out at run time.
        FirstRegistered = 1024
    };

    constexpr TyxMetaType() noexcept = default;
    /// A negative code, or a code above 34 that nothing registered, becomes
    /// Invalid.
    constexpr TyxMetaType(Code code) : m_code(code >= 0 && code <= Invalid ? code : checked(code)) {}
    explicit constexpr TyxMetaType(int code) : TyxMetaType(static_cast<Code>(code)) {}
    /// The type named \p name, ignoring case; Invalid when unknown.
    explicit TyxMetaType(const TyxString &name) : m_code(fromString(name).m_code) {}

    constexpr operator Code() const noexcept { return m_code; }
    constexpr Code toEnum() const noexcept { return m_code; }
    /// The text name; empty for Invalid.
    const TyxString &toString() const;
    operator const TyxString &() const { return toString(); }
    constexpr bool isValid() const noexcept { return m_code != Invalid; }
    /// True for codes below 15 (Bool up to Char) and for Scalar.
    constexpr bool isNumeric() const noexcept { return m_code < String || m_code == Scalar; }
    /// The identity stored for the code; 0 for Invalid.
    uint64_t typeID() const;

    constexpr bool operator==(const TyxMetaType &other) const noexcept { return m_code == other.m_code; }
    constexpr bool operator!=(const TyxMetaType &other) const noexcept { return m_code != other.m_code; }
    constexpr bool operator==(Code code) const noexcept { return m_code == code; }
    constexpr bool operator!=(Code code) const noexcept { return m_code != code; }

    /// The table of codes: one item per type, its data the type's identity.
    static const TyxEnum &enumerator();
    /// The names of all types in order of registration.
    static TyxStrList allKeys();
    /// The type named \p name, ignoring case; Invalid when unknown.
    static TyxMetaType fromString(const TyxString &name);
    /// The type whose stored identity is \p typeID; Invalid when none is.
    static TyxMetaType fromTypeID(uint64_t typeID);
    /// Whether \p name names a type, ignoring case.
    static bool isValid(const TyxString &name);

private:
    friend class TyxVariant;
    friend struct internal::TyxVariantRegistrar;

    /// The code of \p name or, failing that, of \p typeID when either is
    /// known; otherwise the next free code from 1024, entered under \p name.
    static TyxMetaType registerType(uint64_t typeID, const TyxString &name);
    static Code checked(int code);

    Code m_code = Invalid;
};

/// Writes the text name.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxMetaType &type);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxMetaType &type);
/// Reads one white-space-delimited word and looks it up by name.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxMetaType &type);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxMetaType &type);

namespace internal {

/// The identity of a type, taken from its class name (64-bit FNV-1a over the
/// code points). Equal names give equal identities in every module.
TYX_EXPORT uint64_t typeIdOf(const TyxString &className);

/// The class name of a built-in code 0 to 33, the key of
/// TyxVariant::typeFromName; empty for other codes.
TYX_EXPORT const TyxString &builtinClassName(int code);

} // namespace internal

} // namespace tyx
