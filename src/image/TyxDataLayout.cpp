// Band arrangement codes, their keys and stream forms.
#include <tyx/TyxDataLayout.h>

#include "image/TyxCodeKeys.h"

namespace tyx {

TyxDataLayout::TyxDataLayout(Code code) : m_code(static_cast<unsigned>(code) > Invalid ? Invalid : code) {}

TyxDataLayout::TyxDataLayout(const TyxString &key) : m_code(fromString(key)) {}

const TyxString &TyxDataLayout::toString() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[m_code] : empty;
}

const std::vector<TyxString> &TyxDataLayout::allKeys()
{
    static const std::vector<TyxString> keys = {L"PixelInterleaved", L"BandInterleaved", L"LineInterleaved", L"BlockInterleaved"};
    return keys;
}

TyxDataLayout::Code TyxDataLayout::fromString(const TyxString &key)
{
    return static_cast<Code>(internal::findCodeKey(allKeys(), key));
}

bool TyxDataLayout::isValid(const TyxString &key)
{
    return fromString(key) != Invalid;
}

std::wostream &operator<<(std::wostream &os, const TyxDataLayout &layout)
{
    return internal::writeCodeKey(os, layout.toString());
}

std::ostream &operator<<(std::ostream &os, const TyxDataLayout &layout)
{
    return internal::writeCodeKey(os, layout.toString());
}

std::wistream &operator>>(std::wistream &is, TyxDataLayout &layout)
{
    layout = TyxDataLayout(internal::readCodeKey(is));
    return is;
}

std::istream &operator>>(std::istream &is, TyxDataLayout &layout)
{
    layout = TyxDataLayout(internal::readCodeKey(is));
    return is;
}

} // namespace tyx
