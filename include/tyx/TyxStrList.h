// List of wide strings with splitting, joining, searching and sorting.
#pragma once

#include <iosfwd>
#include <vector>

#include <tyx/TyxString.h>

namespace tyx {

/// A vector of TyxString. Its text form is "(a,b,c)"; an empty list has none.
class TYX_EXPORT TyxStrList {
public:
    using iterator = std::vector<TyxString>::iterator;
    using const_iterator = std::vector<TyxString>::const_iterator;

    TyxStrList() = default;
    /// A list of \p size empty strings.
    explicit TyxStrList(size_t size) : m_items(size) {}
    TyxStrList(const std::vector<TyxString> &items) : m_items(items) {}
    TyxStrList(std::vector<TyxString> &&items) noexcept : m_items(std::move(items)) {}
    TyxStrList(std::initializer_list<TyxString> items) : m_items(items) {}
    /// The list that split() makes of \p text.
    TyxStrList(const TyxString &text, const TyxString &delimiters, bool keepEmpty);

    TyxStrList &operator=(const std::vector<TyxString> &items)
    {
        m_items = items;
        return *this;
    }
    TyxStrList &operator=(std::vector<TyxString> &&items) noexcept
    {
        m_items = std::move(items);
        return *this;
    }

    operator std::vector<TyxString> &() { return m_items; }
    operator const std::vector<TyxString> &() const { return m_items; }

    /// The index returned by find() when nothing matches.
    static constexpr size_t INVALID_INDEX() { return static_cast<size_t>(-1); }

    /// Replaces the contents by the pieces of \p text, as splitStr() cuts it.
    void split(const TyxString &text, const TyxString &delimiters, bool keepEmpty);

    size_t size() const { return m_items.size(); }
    size_t capacity() const { return m_items.capacity(); }
    bool empty() const { return m_items.empty(); }
    bool isEmpty() const { return m_items.empty(); }
    void clear() { m_items.clear(); }
    void reserve(size_t n) { m_items.reserve(n); }
    void resize(size_t n) { m_items.resize(n); }
    iterator begin() { return m_items.begin(); }
    iterator end() { return m_items.end(); }
    const_iterator begin() const { return m_items.begin(); }
    const_iterator end() const { return m_items.end(); }
    void push_back(const TyxString &text) { m_items.push_back(text); }
    void push_back(TyxString &&text) { m_items.push_back(std::move(text)); }
    /// Unchecked access.
    TyxString &operator[](size_t index) { return m_items[index]; }
    const TyxString &operator[](size_t index) const { return m_items[index]; }

    /// Inserts before the element at \p index, or appends when \p index is
    /// not below the size. Storage grows to 10, then doubles.
    void insert(size_t index, const TyxString &text);
    /// The index of the last element equal to \p text (ASCII case ignored
    /// with \p ignoreCase), or INVALID_INDEX().
    size_t find(const TyxString &text, bool ignoreCase) const;
    /// Whether find() finds \p text.
    bool contains(const TyxString &text, bool ignoreCase) const;
    /// Removes every element exactly equal to \p text.
    void remove(const TyxString &text);
    /// Orders by code unit (or ASCII-lower-cased text), descending if asked.
    void sort(bool descending, bool ignoreCase);
    /// The elements joined by \p delimiter.
    TyxString toString(const TyxString &delimiter) const;
    /// The text form.
    operator TyxString() const;

    bool operator==(const TyxStrList &other) const { return m_items == other.m_items; }
    bool operator!=(const TyxStrList &other) const { return m_items != other.m_items; }

private:
    std::vector<TyxString> m_items;
};

/// Writes "(a,b)"; an empty list writes nothing.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxStrList &list);
/// Writes the same text in UTF-8.
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxStrList &list);
/// Reads one line and splits it at "," keeping empty elements; enclosing
/// parentheses go.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxStrList &list);
/// The same from UTF-8 text.
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxStrList &list);

} // namespace tyx
