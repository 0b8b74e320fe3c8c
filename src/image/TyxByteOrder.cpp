// Byte order codes, their keys and stream forms.
#include <tyx/TyxByteOrder.h>

#include "image/TyxCodeKeys.h"

namespace tyx {

namespace {

// Joins the variant (code 30) and the conversion matrix at library load.
[[maybe_unused]] const bool joinedVariant = internal::joinCodeVariant<TyxByteOrder>();

} // namespace

TyxByteOrder::TyxByteOrder(Code code) : m_code(static_cast<unsigned>(code) > Invalid ? Invalid : code) {}

TyxByteOrder::TyxByteOrder(const TyxString &key) : m_code(fromString(key)) {}

const TyxString &TyxByteOrder::toString() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[m_code] : empty;
}

const TyxEnum &TyxByteOrder::enumerator()
{
    static const TyxEnum &table =
        internal::buildCodeEnumerator<TyxByteOrder>({{0, L"LittleEndian"}, {1, L"BigEndian"}});
    return table;
}

const std::vector<TyxString> &TyxByteOrder::allKeys() { return enumerator().allKeys(); }

TyxByteOrder::Code TyxByteOrder::fromString(const TyxString &key)
{
    return internal::codeOfKey(enumerator(), key, Invalid);
}

bool TyxByteOrder::isValid(const TyxString &key) { return fromString(key) != Invalid; }

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
