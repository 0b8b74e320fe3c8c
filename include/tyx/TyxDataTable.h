// A vector of records described by a TyxMetaProperties, with filters that select records.
#pragma once

#include <cstdint>
#include <vector>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxString.h>

namespace tyx {

/// A vector of records of type \p T and the description of their
/// attributes. The properties are copied with the table; copies share the
/// property objects, as copies of TyxMetaProperties do.
template <class T>
class TyxDataTable {
public:
    using value_type = T;
    using iterator = typename std::vector<T>::iterator;
    using const_iterator = typename std::vector<T>::const_iterator;

    /// A test on one record.
    class FilterIF {
    public:
        virtual ~FilterIF() = default;
        virtual bool accept(const T &record) const = 0;
    };

    /// A filter around a plain functor \p F, called as F(record). It is
    /// final, so that a loop over a FilterImpl<F> calls the functor directly.
    template <class F>
    class FilterImpl final : public FilterIF {
    public:
        explicit FilterImpl(const F &functor) : m_functor(functor) {}
        bool accept(const T &record) const override { return m_functor(record); }
        const F &functor() const { return m_functor; }

    private:
        F m_functor;
    };

    /// No records; empty properties named "attributes".
    TyxDataTable() : m_properties(L"attributes", TyxMetaPropertiesPtr()) {}
    TyxDataTable(const TyxDataTable &other) = default;
    TyxDataTable(uint64_t count, const T &fill)
        : m_properties(L"attributes", TyxMetaPropertiesPtr()), m_records(count, fill)
    {
    }
    TyxDataTable(const TyxMetaProperties &properties, uint64_t count, const T &fill)
        : m_properties(properties), m_records(count, fill)
    {
    }
    virtual ~TyxDataTable() = default;

    TyxDataTable &operator=(const TyxDataTable &other) = default;
    /// Takes \p properties; the records stay.
    TyxDataTable &operator=(const TyxMetaProperties &properties)
    {
        m_properties = properties;
        return *this;
    }

    T &at(uint64_t i) { return m_records.at(i); }
    const T &at(uint64_t i) const { return m_records.at(i); }
    T &operator[](uint64_t i) { return m_records[i]; }
    const T &operator[](uint64_t i) const { return m_records[i]; }
    iterator begin() { return m_records.begin(); }
    iterator end() { return m_records.end(); }
    const_iterator begin() const { return m_records.begin(); }
    const_iterator end() const { return m_records.end(); }
    uint64_t size() const { return m_records.size(); }
    uint64_t capacity() const { return m_records.capacity(); }
    bool empty() const { return m_records.empty(); }
    void clear() { m_records.clear(); }
    void reserve(uint64_t count) { m_records.reserve(count); }
    void resize(uint64_t count, const T &fill = T()) { m_records.resize(count, fill); }
    void push_back(const T &record) { m_records.push_back(record); }
    void push_back(T &&record) { m_records.push_back(std::move(record)); }

    const TyxMetaProperties &properties() const { return m_properties; }
    /// Whether a property is named \p name.
    bool contains(const TyxString &name) const { return m_properties.contains(name); }

    /// Equal records and properties equal by content: the same names in the
    /// same order, each property equal by value (not by object).
    bool operator==(const TyxDataTable &other) const
    {
        if (m_records != other.m_records)
            return false;
        const TyxStrList names = m_properties.propertyNames();
        if (names != other.m_properties.propertyNames())
            return false;
        for (const TyxString &name : names) {
            const TyxMetaPropertyConstPtr a = m_properties.property(name);
            const TyxMetaPropertyConstPtr b = other.m_properties.property(name);
            if (!a || !b || !(*a == *b))
                return false;
        }
        return true;
    }
    bool operator!=(const TyxDataTable &other) const { return !(*this == other); }

protected:
    TyxMetaProperties &rProperties() { return m_properties; }
    std::vector<T> &records() { return m_records; }

    /// The indices of the records \p filter accepts, ascending.
    TyxAutoPtr<std::vector<uint64_t>> find_aux(const FilterIF &filter) const { return findWith(filter); }
    /// The same with the functor's type known, so that the loop calls it
    /// without a virtual call.
    template <class F>
    TyxAutoPtr<std::vector<uint64_t>> find_aux(const FilterImpl<F> &filter) const
    {
        return findWith(filter);
    }

private:
    template <class Filter>
    TyxAutoPtr<std::vector<uint64_t>> findWith(const Filter &filter) const
    {
        TyxAutoPtr<std::vector<uint64_t>> found(new std::vector<uint64_t>);
        const uint64_t n = m_records.size();
        for (uint64_t i = 0; i < n; ++i)
            if (filter.accept(m_records[i]))
                found->push_back(i);
        return found;
    }

    TyxMetaProperties m_properties;
    std::vector<T> m_records;
};

} // namespace tyx
