// Band arrangement codes, their keys and stream forms.
#include <tyx/TyxDataLayout.h>

#include "image/TyxCodeKeys.h"

namespace tyx {

namespace {

// Joins the variant (code 28) and the conversion matrix at library load.
[[maybe_unused]] const bool joinedVariant = internal::joinCodeVariant<TyxDataLayout>();

} // namespace

TyxDataLayout::TyxDataLayout(Code code) : m_code(static_cast<unsigned>(code) > Invalid ? Invalid : code) {}

TyxDataLayout::TyxDataLayout(const TyxString &key) : m_code(fromString(key)) {}

const TyxString &TyxDataLayout::toString() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[m_code] : empty;
}

const TyxEnum &TyxDataLayout::enumerator()
{
    static const TyxEnum &table = internal::buildCodeEnumerator<TyxDataLayout>({{0, L"PixelInterleaved"},
                                                                                {1, L"BandInterleaved"},
                                                                                {2, L"LineInterleaved"},
                                                                                {3, L"BlockInterleaved"}});
    return table;
}

const std::vector<TyxString> &TyxDataLayout::allKeys() { return enumerator().allKeys(); }

TyxDataLayout::Code TyxDataLayout::fromString(const TyxString &key)
{
    return internal::codeOfKey(enumerator(), key, Invalid);
}

bool TyxDataLayout::isValid(const TyxString &key) { return fromString(key) != Invalid; }

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
