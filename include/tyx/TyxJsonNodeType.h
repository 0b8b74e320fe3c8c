// The kind of value a JSON node holds.
#pragma once

#include <cstdint>
#include <vector>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>

namespace tyx {

/// Null, String, Number, Bool, Array or Node. The default value is Null.
class TYX_EXPORT TyxJsonNodeType {
public:
    enum Code : int32_t { Null = 0, String = 1, Number = 2, Bool = 3, Array = 4, Node = 5, Invalid = 6 };

    TyxJsonNodeType() = default;
    /// Any value outside 0 to 5 becomes Invalid.
    TyxJsonNodeType(Code code);
    /// The code of \p key, matched ignoring case; Invalid when unknown.
    explicit TyxJsonNodeType(const TyxString &key);

    operator Code() const { return m_code; }
    /// The key, "Array" for instance; empty for Invalid.
    const TyxString &toString() const;
    bool isValid() const { return m_code != Invalid; }

    bool operator==(const TyxJsonNodeType &other) const { return m_code == other.m_code; }
    bool operator!=(const TyxJsonNodeType &other) const { return m_code != other.m_code; }
    bool operator==(Code code) const { return m_code == code; }
    bool operator!=(Code code) const { return m_code != code; }

    /// The keys in code order.
    static const std::vector<TyxString> &allKeys();

private:
    Code m_code = Null;
};

} // namespace tyx
