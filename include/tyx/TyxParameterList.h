// Parameters held by name, with cross references resolved through a chain
// of enclosing lists.
#pragma once

#include <map>
#include <vector>

#include <tyx/TyxParameter.h>
#include <tyx/TyxStrList.h>

namespace tyx {

class TyxParameterList;
TYX_DECLARE_PTR_CLASS(TyxParameterListConstPtr, const TyxParameterList);

/// An ordered set of parameters, by exact name. A list owns the membership
/// of its parameters: a parameter is in one list at a time.
class TYX_EXPORT TyxParameterList : public TyxKeyedObject {
public:
    /// Walks the parameters in list order.
    class TYX_EXPORT Iterator_p {
    public:
        Iterator_p(const TyxParameterList *list, size_t position) : m_list(list), m_position(position) {}
        TyxParameterPtr operator*() const;
        TyxParameterPtr operator->() const { return **this; }
        Iterator_p &operator++()
        {
            ++m_position;
            return *this;
        }
        bool operator==(const Iterator_p &other) const
        {
            return m_list == other.m_list && m_position == other.m_position;
        }
        bool operator!=(const Iterator_p &other) const { return !(*this == other); }

    private:
        const TyxParameterList *m_list;
        size_t m_position;
    };

    explicit TyxParameterList(const TyxString &name = TyxString());
    /// Deep-copies each parameter; the copies belong to the new list.
    TyxParameterList(const TyxParameterList &other);
    TyxParameterList &operator=(const TyxParameterList &other);
    ~TyxParameterList() override;

    /// Inserts \p parameter at \p index, or at the end when \p index is
    /// negative or not below the size. Returns 1 when the name is taken or
    /// the parameter is in a list already.
    int insertParm(const TyxParameterPtr &parameter, int index = -1);
    /// The parameter \p name, exact; null when absent.
    TyxParameterConstPtr parameter(const TyxString &name) const;
    TyxParameterPtr parameter(const TyxString &name);
    bool containsParm(const TyxString &name) const { return m_table.count(name) != 0; }
    /// Takes \p name out of the list and returns it; null when absent.
    TyxParameterPtr removeParm(const TyxString &name);
    /// Renames in place. Returns 1 when \p newName is taken or \p oldName absent.
    int renameParm(const TyxString &oldName, const TyxString &newName);
    void clear();
    bool empty() const { return m_parmNames.empty(); }
    bool isEmpty() const { return m_parmNames.empty(); }
    const TyxStrList &parmNames() const { return m_parmNames; }

    /// The value of \p name: its own value, or what its cross reference
    /// resolves to, here or in \p scope, the enclosing lists from the nearest
    /// outwards. Invalid for a missing name, an expression, or a reference
    /// that comes back on itself.
    TyxVariant parmValue(const TyxString &name, const std::vector<TyxParameterListConstPtr> &scope =
                                                    std::vector<TyxParameterListConstPtr>()) const;

    Iterator_p begin() const { return Iterator_p(this, 0); }
    Iterator_p end() const { return Iterator_p(this, m_parmNames.size()); }
    Iterator_p begin() { return Iterator_p(this, 0); }
    Iterator_p end() { return Iterator_p(this, m_parmNames.size()); }

    /// Name, order of names, then each parameter.
    bool operator==(TyxParameterList other) const;
    bool operator!=(TyxParameterList other) const { return !(*this == std::move(other)); }

    /// "TyxParameterList".
    TyxString className() const override;

private:
    /// Lists and names under resolution: a reference that meets one of these
    /// again has come back on itself.
    using Visited = std::vector<std::pair<const TyxParameterList *, TyxString>>;

    TyxVariant parmValue(const TyxString &name, const std::vector<TyxParameterListConstPtr> &scope,
                         Visited &visited) const;
    TyxVariant solveCrossRef(const TyxParameter &parameter,
                             const std::vector<TyxParameterListConstPtr> &scope, Visited &visited) const;
    TyxVariant solveExp(const TyxParameter &parameter) const;
    bool isVisited(const Visited &visited, const TyxString &name) const;
    void copyFrom(const TyxParameterList &other);

    TyxStrList m_parmNames;
    std::map<TyxString, TyxParameterPtr> m_table;
};

} // namespace tyx
