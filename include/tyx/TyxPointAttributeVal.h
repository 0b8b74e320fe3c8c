// One attribute value of a point, a double or an owned string, and the point itself.
#pragma once

#include <iosfwd>
#include <vector>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxMetaType.h>
#include <tyx/TyxString.h>

namespace tyx {

class TyxVariant;

/// One attribute of a point: a double or a string. A default value is the
/// double 0. The string is owned; copies copy it and moves take it over.
class TYX_EXPORT TyxPointAttributeVal {
public:
    TyxPointAttributeVal() noexcept { m_u.value = 0.0; }
    TyxPointAttributeVal(double value) noexcept { m_u.value = value; }
    explicit TyxPointAttributeVal(const TyxString &text);
    explicit TyxPointAttributeVal(const wchar_t *text);
    /// A TyxString variant becomes a string, any other its value as double
    /// (0 when it has none).
    explicit TyxPointAttributeVal(const TyxVariant &value);
    TyxPointAttributeVal(const TyxPointAttributeVal &other);
    TyxPointAttributeVal(TyxPointAttributeVal &&other) noexcept;
    TyxPointAttributeVal &operator=(const TyxPointAttributeVal &other);
    TyxPointAttributeVal &operator=(TyxPointAttributeVal &&other) noexcept;
    ~TyxPointAttributeVal();

    bool isString() const { return m_isString; }
    /// TyxMetaType::String (15) for a string, TyxMetaType::Double (10) otherwise.
    TyxMetaType type() const { return m_isString ? TyxMetaType::String : TyxMetaType::Double; }
    /// The value as double; a string is converted by the library's
    /// conversion of text to double, and text that is no number gives 0.
    double toDouble() const { return m_isString ? stringToDouble() : m_u.value; }
    /// The string, or null when the value is a double.
    const TyxString *string() const { return m_isString ? m_u.string : nullptr; }
    /// The value as a variant of type Double or TyxString.
    TyxVariant toVariant() const;
    operator TyxVariant() const;

    void setValue(double value);
    void setString(const TyxString &text);

    /// The left value decides which form is read: doubles compare with ==
    /// (a NaN equals nothing), strings by length and then each character,
    /// with regard to case. A value of the other form is never equal.
    bool operator==(const TyxPointAttributeVal &other) const;
    bool operator!=(const TyxPointAttributeVal &other) const { return !(*this == other); }

private:
    void release() noexcept;
    double stringToDouble() const;

    bool m_isString = false;
    union {
        double value;
        TyxString *string;
    } m_u;
};

/// The attributes of one point: 0 is x, 1 is y, 2 is z, the others follow in
/// the order of the table's properties.
using TyxPoint = std::vector<TyxPointAttributeVal>;

/// The variant's text form of the value ("Double,3", "TyxString,abc").
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxPointAttributeVal &value);
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxPointAttributeVal &value);
/// Reads the variant's text form; on failure the value is left as it was.
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxPointAttributeVal &value);
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxPointAttributeVal &value);

} // namespace tyx
