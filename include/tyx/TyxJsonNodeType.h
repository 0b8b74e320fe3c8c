// The kind of value a JSON node holds.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxString.h>

namespace tyx {

class TyxEnum;

/// Null, String, Number, Bool, Array or Node. The default value is Null.
class TYX_EXPORT TyxJsonNodeType : public TyxObject {
public:
    enum Code : int32_t { Null = 0, String = 1, Number = 2, Bool = 3, Array = 4, Node = 5, Invalid = 6 };

    TyxJsonNodeType() = default;
    /// Any value outside 0 to 5 becomes Invalid.
    TyxJsonNodeType(Code code);
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    explicit TyxJsonNodeType(const TyxString &key);

    TyxString className() const override;

    operator Code() const { return m_code; }
    /// The key, "Array" for instance; empty for Invalid.
    const TyxString &toString() const;
    operator const TyxString &() const { return toString(); }
    bool isValid() const { return m_code != Invalid; }

    bool operator==(const TyxJsonNodeType &other) const { return m_code == other.m_code; }
    bool operator!=(const TyxJsonNodeType &other) const { return m_code != other.m_code; }
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
    Code m_code = Null;
};

/// Writes the bare key.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxJsonNodeType &type);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxJsonNodeType &type);
/// Reads one word; an unknown word gives Invalid without a stream error.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxJsonNodeType &type);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxJsonNodeType &type);

} // namespace tyx
