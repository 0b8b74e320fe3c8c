// Byte order codes, their keys and stream forms.
#include <tyx/TyxByteOrder.h>

#include "image/TyxCodeKeys.h"

namespace tyx {

TyxByteOrder::TyxByteOrder(Code code) : m_code(static_cast<unsigned>(code) > Invalid ? Invalid : code) {}

TyxByteOrder::TyxByteOrder(const TyxString &key) : m_code(fromString(key)) {}

const TyxString &TyxByteOrder::toString() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[m_code] : empty;
}

const std::vector<TyxString> &TyxByteOrder::allKeys()
{
    static const std::vector<TyxString> keys = {L"LittleEndian", L"BigEndian"};
    return keys;
}

TyxByteOrder::Code TyxByteOrder::fromString(const TyxString &key)
{
    return static_cast<Code>(internal::findCodeKey(allKeys(), key));
}

bool TyxByteOrder::isValid(const TyxString &key)
{
    return fromString(key) != Invalid;
}

std::wostream &operator<<(std::wostream &os, const TyxByteOrder &order)
{
    return internal::writeCodeKey(os, order.toString());
}

std::ostream &operator<<(std::ostream &os, const TyxByteOrder &order)
{
    return internal::writeCodeKey(os, order.toString());
}

std::wistream &operator>>(std::wistream &is, TyxByteOrder &order)
{
    order = TyxByteOrder(internal::readCodeKey(is));
    return is;
}

std::istream &operator>>(std::istream &is, TyxByteOrder &order)
{
    order = TyxByteOrder(internal::readCodeKey(is));
    return is;
}

} // namespace tyx
