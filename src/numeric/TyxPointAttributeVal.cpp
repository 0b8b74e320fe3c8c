#include <tyx/TyxPointAttributeVal.h>

#include <istream>
#include <ostream>
#include <utility>

#include <tyx/TyxVariant.h>

namespace tyx {

TyxPointAttributeVal::TyxPointAttributeVal(const TyxString &text) : m_isString(true)
{
    m_u.string = new TyxString(text);
}

TyxPointAttributeVal::TyxPointAttributeVal(const wchar_t *text) : TyxPointAttributeVal(TyxString(text)) {}

TyxPointAttributeVal::TyxPointAttributeVal(const TyxVariant &value)
{
    if (value.type() == TyxMetaType::String) {
        m_u.string = new TyxString(value.value<TyxString>());
        m_isString = true;
    } else {
        m_u.value = value.value<double>();
    }
}

TyxPointAttributeVal::TyxPointAttributeVal(const TyxPointAttributeVal &other) : m_isString(other.m_isString)
{
    if (m_isString)
        m_u.string = new TyxString(*other.m_u.string);
    else
        m_u.value = other.m_u.value;
}

TyxPointAttributeVal::TyxPointAttributeVal(TyxPointAttributeVal &&other) noexcept
    : m_isString(other.m_isString), m_u(other.m_u)
{
    // The other side is left the double 0, so it no longer owns the string.
    other.m_isString = false;
    other.m_u.value = 0.0;
}

TyxPointAttributeVal &TyxPointAttributeVal::operator=(const TyxPointAttributeVal &other)
{
    if (this == &other)
        return *this;
    if (other.m_isString)
        setString(*other.m_u.string);
    else
        setValue(other.m_u.value);
    return *this;
}

TyxPointAttributeVal &TyxPointAttributeVal::operator=(TyxPointAttributeVal &&other) noexcept
{
    if (this == &other)
        return *this;
    release();
    m_isString = other.m_isString;
    m_u = other.m_u;
    other.m_isString = false;
    other.m_u.value = 0.0;
    return *this;
}

TyxPointAttributeVal::~TyxPointAttributeVal() { release(); }

void TyxPointAttributeVal::release() noexcept
{
    if (m_isString) {
        delete m_u.string;
        m_isString = false;
        m_u.value = 0.0;
    }
}

double TyxPointAttributeVal::stringToDouble() const
{
    double value = 0.0;
    if (!internal::TyxDefaultCasts<double>::fromString(*m_u.string, value))
        value = 0.0;
    return value;
}

TyxVariant TyxPointAttributeVal::toVariant() const
{
    if (m_isString)
        return TyxVariant(*m_u.string);
    return TyxVariant(m_u.value);
}

TyxPointAttributeVal::operator TyxVariant() const { return toVariant(); }

void TyxPointAttributeVal::setValue(double value)
{
    release();
    m_u.value = value;
}

void TyxPointAttributeVal::setString(const TyxString &text)
{
    if (m_isString) {
        *m_u.string = text;
        return;
    }
    m_u.string = new TyxString(text);
    m_isString = true;
}

bool TyxPointAttributeVal::operator==(const TyxPointAttributeVal &other) const
{
    // Reading the other side's union in the wrong form would reinterpret a
    // pointer as a double or the reverse: values of different forms differ.
    if (m_isString != other.m_isString)
        return false;
    if (!m_isString)
        return m_u.value == other.m_u.value;
    return *m_u.string == *other.m_u.string;
}

std::ostream &operator<<(std::ostream &os, const TyxPointAttributeVal &value)
{
    return os << value.toVariant();
}

std::wostream &operator<<(std::wostream &os, const TyxPointAttributeVal &value)
{
    return os << value.toVariant();
}

std::istream &operator>>(std::istream &is, TyxPointAttributeVal &value)
{
    TyxVariant variant;
    if (is >> variant)
        value = TyxPointAttributeVal(variant);
    return is;
}

std::wistream &operator>>(std::wistream &is, TyxPointAttributeVal &value)
{
    TyxVariant variant;
    if (is >> variant)
        value = TyxPointAttributeVal(variant);
    return is;
}

} // namespace tyx
