// Locations held as text: canonical form and quoted stream forms.
#include <tyx/TyxURI.h>

#include <istream>
#include <ostream>
#include <string>

#include <tyx/TyxFileInfo.h>

namespace tyx {

TyxURI::~TyxURI() = default;

TyxString TyxURI::className() const { return L"TyxURI"; }

TyxURI TyxURI::canonicalize() const { return TyxURI(canonicalizePath(m_text)); }

std::wostream &operator<<(std::wostream &os, const TyxURI &uri) { return os << L'"' << uri.text() << L'"'; }

std::ostream &operator<<(std::ostream &os, const TyxURI &uri)
{
    return os << '"' << toUTF8(uri.text()) << '"';
}

std::wistream &operator>>(std::wistream &is, TyxURI &uri)
{
    wchar_t opening;
    TyxString text;
    if (is >> opening)
        std::getline(is, static_cast<std::wstring &>(text), L'"');
    uri = text;
    return is;
}

std::istream &operator>>(std::istream &is, TyxURI &uri)
{
    char opening;
    std::string text;
    if (is >> opening)
        std::getline(is, text, '"');
    uri = fromUTF8(text);
    return is;
}

} // namespace tyx
