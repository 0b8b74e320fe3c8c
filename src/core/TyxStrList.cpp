// String list: splitting, searching, sorting and the text form.
#include <tyx/TyxStrList.h>

#include <algorithm>
#include <istream>
#include <ostream>

namespace tyx {

TyxStrList::TyxStrList(const TyxString &text, const TyxString &delimiters, bool keepEmpty)
{
    split(text, delimiters, keepEmpty);
}

void TyxStrList::split(const TyxString &text, const TyxString &delimiters, bool keepEmpty)
{
    m_items = splitStr(text, delimiters, keepEmpty);
}

void TyxStrList::insert(size_t index, const TyxString &text)
{
    if (m_items.empty() && m_items.capacity() == 0)
        m_items.reserve(10);
    else if (m_items.size() == m_items.capacity())
        m_items.reserve(2 * m_items.size());
    if (index < m_items.size())
        m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(index), text);
    else
        m_items.push_back(text);
}

size_t TyxStrList::find(const TyxString &text, bool ignoreCase) const
{
    const TyxString wanted = ignoreCase ? toLower(text) : text;
    for (size_t i = m_items.size(); i > 0; --i) {
        const TyxString &item = m_items[i - 1];
        if (ignoreCase ? toLower(item) == wanted : item == wanted)
            return i - 1;
    }
    return INVALID_INDEX();
}

bool TyxStrList::contains(const TyxString &text, bool ignoreCase) const
{
    return find(text, ignoreCase) != INVALID_INDEX();
}

void TyxStrList::remove(const TyxString &text) { std::erase(m_items, text); }

void TyxStrList::sort(bool descending, bool ignoreCase)
{
    if (ignoreCase) {
        std::stable_sort(m_items.begin(), m_items.end(),
                         [](const TyxString &a, const TyxString &b) { return toLower(a) < toLower(b); });
    } else {
        std::sort(m_items.begin(), m_items.end());
    }
    if (descending)
        std::reverse(m_items.begin(), m_items.end());
}

TyxString TyxStrList::toString(const TyxString &delimiter) const
{
    TyxString joined;
    for (size_t i = 0; i < m_items.size(); ++i) {
        if (i > 0)
            joined += delimiter;
        joined += m_items[i];
    }
    return joined;
}

TyxStrList::operator TyxString() const
{
    if (m_items.empty())
        return {};
    return TyxString(L"(" + toString(L",") + L")");
}

std::wostream &operator<<(std::wostream &os, const TyxStrList &list)
{
    return os << static_cast<TyxString>(list);
}

std::ostream &operator<<(std::ostream &os, const TyxStrList &list)
{
    return os << static_cast<TyxString>(list);
}

std::wistream &operator>>(std::wistream &is, TyxStrList &list)
{
    TyxString line;
    getline(is, line);
    list.split(line, L",", true);
    return is;
}

std::istream &operator>>(std::istream &is, TyxStrList &list)
{
    TyxString line;
    getline(is, line);
    list.split(line, L",", true);
    return is;
}

} // namespace tyx
