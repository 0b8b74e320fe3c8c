// Table of named integers behind the code classes.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include <tyx/TyxString.h>

namespace tyx {

class TyxVariant;

/// A table of named integers, optionally each with a data value. Names are
/// unique without regard to case; values are unique.
class TYX_EXPORT TyxEnum {
public:
    /// One entry: a value, its name and an optional data variant that the
    /// item owns.
    struct TYX_EXPORT Item {
        Item(int value, const TyxString &name);
        Item(int value, const TyxString &name, const TyxVariant &data);
        Item(const Item &other);
        Item &operator=(const Item &other);
        ~Item();

        /// Compares the values only.
        bool operator==(const Item &other) const { return value == other.value; }
        bool operator!=(const Item &other) const { return value != other.value; }

        int value;
        TyxString name;
        /// Null when the item has no data.
        std::unique_ptr<TyxVariant> data;
    };

    /// The value that fromString() answers for an unknown name.
    static constexpr int INVALID_ENUM() { return 0x7FFFFFFF; }

    TyxEnum() = default;
    TyxEnum(const TyxEnum &other) = default;
    TyxEnum &operator=(const TyxEnum &other) = default;
    /// Inserts the \p count items of \p items in turn, by insert().
    TyxEnum(const Item *items, size_t count);

    /// Adds \p item unless its value or, ignoring case, its name is taken;
    /// a duplicate is dropped silently.
    void insert(const Item &item);
    /// The name of \p value, or an empty string.
    TyxString toString(int value) const;
    /// The value whose name equals \p name ignoring case, searched in value
    /// order; INVALID_ENUM() when none does.
    int fromString(const TyxString &name) const;
    /// Whether \p value is in the table.
    bool isValid(int value) const { return m_items.find(value) != m_items.end(); }
    /// Whether \p name is in the table, ignoring case.
    bool isValid(const TyxString &name) const { return fromString(name) != INVALID_ENUM(); }
    /// The data of \p value; a shared invalid variant when the value is
    /// absent or has no data.
    const TyxVariant &data(int value) const;
    /// Replaces the data of \p value; an absent value is ignored.
    void setData(int value, const TyxVariant &data);
    /// The names in order of insertion.
    const std::vector<TyxString> &allKeys() const { return m_names; }
    bool empty() const { return m_items.empty(); }
    size_t size() const { return m_items.size(); }
    /// The items in value order.
    const std::map<int, Item> &items() const { return m_items; }

    /// Same size, and item by item the same values.
    bool operator==(const TyxEnum &other) const;
    bool operator!=(const TyxEnum &other) const { return !(*this == other); }

private:
    std::map<int, Item> m_items;
    std::vector<TyxString> m_names;
};

} // namespace tyx
