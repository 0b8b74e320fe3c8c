// Wide strings: the class's own members and the free text functions.
#include <tyx/TyxString.h>

#include <algorithm>
#include <cwctype>
#include <istream>
#include <ostream>

#include "core/TyxTextScan.h"

namespace tyx {

// ---- TyxString ---------------------------------------------------------------

void TyxString::assignUtf8(const char *utf8)
{
    assignUtf8(utf8 ? std::string_view(utf8) : std::string_view());
}

void TyxString::assignUtf8(std::string_view utf8) { std::wstring::operator=(fromUTF8(utf8)); }

TyxString &TyxString::toLower()
{
    for (auto it = rbegin(); it != rend(); ++it)
        *it = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(*it)));
    return *this;
}

TyxString &TyxString::toUpper()
{
    for (auto it = rbegin(); it != rend(); ++it)
        *it = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(*it)));
    return *this;
}

// ---- Text functions --------------------------------------------------------

TyxString toLower(const TyxString &text)
{
    TyxString lowered(text);
    const int size = static_cast<int>(lowered.size());
    for (int i = 0; i < size; ++i) {
        if (lowered[i] >= L'A' && lowered[i] <= L'Z')
            lowered[i] = static_cast<wchar_t>(lowered[i] + 32);
    }
    return lowered;
}

TyxString trim(const TyxString &text)
{
    static const internal::TyxDelimiterSet blanks(L"\n\t\r ");
    const size_t first = blanks.findFirstNotOf(text, 0);
    if (first == TyxString::npos)
        return text;
    const size_t last = blanks.findLastNotOf(text);
    return TyxString(text.substr(first, last - first + 1));
}

bool isEqual(const TyxString &a, const TyxString &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = static_cast<int>(a.size()) - 1; i >= 0; --i) {
        if (internal::lowerUnit(a[i]) != internal::lowerUnit(b[i]))
            return false;
    }
    return true;
}

bool containsSubstring(const TyxString &text, const TyxString &part, bool caseSensitive)
{
    if (caseSensitive)
        return text.find(part) != TyxString::npos;
    return toLower(text).find(toLower(part)) != TyxString::npos;
}

std::vector<TyxString> splitStr(const TyxString &text, const TyxString &delimiters, bool keepEmpty)
{
    std::vector<TyxString> parts;
    std::wstring_view rest(text);
    while (rest.size() >= 2 && rest.front() == L'(' && rest.back() == L')')
        rest = rest.substr(1, rest.size() - 2);
    if (rest.empty())
        return parts;
    if (delimiters.empty()) {
        parts.emplace_back(std::wstring(rest));
        return parts;
    }
    const internal::TyxDelimiterSet set(delimiters);
    if (keepEmpty) {
        size_t start = 0;
        for (;;) {
            const size_t end = set.findFirstOf(rest, start);
            parts.emplace_back(std::wstring(rest.substr(start, end - start)));
            if (end == std::wstring_view::npos)
                break;
            start = end + 1;
        }
        return parts;
    }
    size_t start = set.findFirstNotOf(rest, 0);
    while (start != std::wstring_view::npos) {
        const size_t end = set.findFirstOf(rest, start);
        parts.emplace_back(std::wstring(rest.substr(start, end - start)));
        if (end == std::wstring_view::npos)
            break;
        start = set.findFirstNotOf(rest, end);
    }
    return parts;
}

std::istream &getline(std::istream &is, TyxString &text) { return getline(is, text, is.widen('\n')); }

std::istream &getline(std::istream &is, TyxString &text, char delimiter)
{
    std::string line;
    std::getline(is, line, delimiter);
    text = fromUTF8(line);
    return is;
}

std::wistream &getline(std::wistream &is, TyxString &text)
{
    return std::getline(is, static_cast<std::wstring &>(text));
}

std::wistream &getline(std::wistream &is, TyxString &text, wchar_t delimiter)
{
    return std::getline(is, static_cast<std::wstring &>(text), delimiter);
}

std::ostream &operator<<(std::ostream &os, const TyxString &text) { return os << toUTF8(text); }

} // namespace tyx
