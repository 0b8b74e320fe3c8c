// Private helpers for scanning wide text unit by unit.
#pragma once

#include <array>
#include <cctype>
#include <string_view>

namespace tyx::internal {

/// Whether \p unit is white space of the C locale: space, tab, line feed,
/// carriage return, vertical tab or form feed. The text readers share it so
/// that they agree whatever locale the program has set.
inline bool isBlankUnit(wchar_t unit)
{
    return unit == L' ' || unit == L'\t' || unit == L'\n' || unit == L'\r' || unit == L'\v' || unit == L'\f';
}

/// One unit through C tolower; units outside the byte range stay as they are.
inline wchar_t lowerUnit(wchar_t unit)
{
    return (unit >= 0 && unit < 256) ? static_cast<wchar_t>(std::tolower(static_cast<int>(unit))) : unit;
}

/// A set of delimiter units. When all are below 256 a 256-entry table answers
/// membership; any unit at or above 256 makes it search the set instead.
class TyxDelimiterSet {
public:
    explicit TyxDelimiterSet(std::wstring_view delimiters) : m_delimiters(delimiters)
    {
        for (wchar_t unit : delimiters) {
            if (unit < 0 || unit >= 256) {
                m_useTable = false;
                return;
            }
        }
        for (wchar_t unit : delimiters)
            m_table[static_cast<unsigned char>(unit)] = true;
    }

    bool contains(wchar_t unit) const
    {
        if (m_useTable)
            return unit >= 0 && unit < 256 && m_table[static_cast<unsigned char>(unit)];
        return m_delimiters.find(unit) != std::wstring_view::npos;
    }

    size_t findFirstOf(std::wstring_view text, size_t from) const
    {
        for (size_t i = from; i < text.size(); ++i) {
            if (contains(text[i]))
                return i;
        }
        return std::wstring_view::npos;
    }

    size_t findFirstNotOf(std::wstring_view text, size_t from) const
    {
        for (size_t i = from; i < text.size(); ++i) {
            if (!contains(text[i]))
                return i;
        }
        return std::wstring_view::npos;
    }

    size_t findLastNotOf(std::wstring_view text) const
    {
        for (size_t i = text.size(); i > 0; --i) {
            if (!contains(text[i - 1]))
                return i - 1;
        }
        return std::wstring_view::npos;
    }

private:
    std::wstring_view m_delimiters;
    std::array<bool, 256> m_table{};
    bool m_useTable = true;
};

} // namespace tyx::internal
