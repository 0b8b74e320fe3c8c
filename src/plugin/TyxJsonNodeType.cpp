// JSON node kinds, their keys and stream forms.
#include <tyx/TyxJsonNodeType.h>

#include "image/TyxCodeKeys.h"

namespace tyx {

TyxJsonNodeType::TyxJsonNodeType(Code code) : m_code(static_cast<unsigned>(code) > Invalid ? Invalid : code)
{
}

TyxJsonNodeType::TyxJsonNodeType(const TyxString &key) : m_code(fromString(key)) {}

TyxString TyxJsonNodeType::className() const { return L"TyxJsonNodeType"; }

const TyxString &TyxJsonNodeType::toString() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[m_code] : empty;
}

const TyxEnum &TyxJsonNodeType::enumerator()
{
    static const TyxEnum &table = internal::buildCodeEnumerator<TyxJsonNodeType>({{Null, L"Null"},
                                                                                  {String, L"String"},
                                                                                  {Number, L"Number"},
                                                                                  {Bool, L"Bool"},
                                                                                  {Array, L"Array"},
                                                                                  {Node, L"Node"}});
    return table;
}

const std::vector<TyxString> &TyxJsonNodeType::allKeys() { return enumerator().allKeys(); }

TyxJsonNodeType::Code TyxJsonNodeType::fromString(const TyxString &key)
{
    return internal::codeOfKey(enumerator(), key, Invalid);
}

bool TyxJsonNodeType::isValid(const TyxString &key) { return fromString(key) != Invalid; }

std::wostream &operator<<(std::wostream &os, const TyxJsonNodeType &type)
{
    return internal::writeCodeKey(os, type.toString());
}

std::ostream &operator<<(std::ostream &os, const TyxJsonNodeType &type)
{
    return internal::writeCodeKey(os, type.toString());
}

std::wistream &operator>>(std::wistream &is, TyxJsonNodeType &type)
{
    type = TyxJsonNodeType(internal::readCodeKey(is));
    return is;
}

std::istream &operator>>(std::istream &is, TyxJsonNodeType &type)
{
    type = TyxJsonNodeType(internal::readCodeKey(is));
    return is;
}

} // namespace tyx
