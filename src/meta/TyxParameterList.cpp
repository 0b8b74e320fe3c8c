// Lists of parameters and the resolution of their cross references.
#include <tyx/TyxParameterList.h>

#include <algorithm>

namespace tyx {

TyxParameterPtr TyxParameterList::Iterator_p::operator*() const
{
    if (!m_list || m_position >= m_list->m_parmNames.size())
        return {};
    return m_list->m_table.at(m_list->m_parmNames[m_position]);
}

TyxParameterList::TyxParameterList(const TyxString &name) : TyxKeyedObject(name) {}

TyxParameterList::TyxParameterList(const TyxParameterList &other) : TyxKeyedObject(other) { copyFrom(other); }

TyxParameterList &TyxParameterList::operator=(const TyxParameterList &other)
{
    if (this != &other) {
        TyxKeyedObject::operator=(other);
        clear();
        copyFrom(other);
    }
    return *this;
}

TyxParameterList::~TyxParameterList()
{
    for (auto &entry : m_table)
        entry.second->m_parent = nullptr;
}

void TyxParameterList::copyFrom(const TyxParameterList &other)
{
    for (const TyxString &name : other.m_parmNames) {
        TyxParameterPtr copy(new TyxParameter(*other.m_table.at(name)));
        copy->m_parent = this;
        m_table.emplace(name, copy);
        m_parmNames.push_back(name);
    }
}

int TyxParameterList::insertParm(const TyxParameterPtr &parameter, int index)
{
    if (!parameter || m_table.count(parameter->name()) || parameter->m_parent)
        return 1;
    if (index >= 0 && static_cast<size_t>(index) < m_parmNames.size())
        m_parmNames.insert(static_cast<size_t>(index), parameter->name());
    else
        m_parmNames.push_back(parameter->name());
    m_table.emplace(parameter->name(), parameter);
    parameter->m_parent = this;
    return 0;
}

TyxParameterConstPtr TyxParameterList::parameter(const TyxString &name) const
{
    const auto it = m_table.find(name);
    return it == m_table.end() ? TyxParameterConstPtr() : TyxParameterConstPtr(it->second.get());
}

TyxParameterPtr TyxParameterList::parameter(const TyxString &name)
{
    const auto it = m_table.find(name);
    return it == m_table.end() ? TyxParameterPtr() : it->second;
}

TyxParameterPtr TyxParameterList::removeParm(const TyxString &name)
{
    const auto it = m_table.find(name);
    if (it == m_table.end())
        return {};
    TyxParameterPtr removed = it->second;
    removed->m_parent = nullptr;
    m_table.erase(it);
    m_parmNames.remove(name);
    return removed;
}

int TyxParameterList::renameParm(const TyxString &oldName, const TyxString &newName)
{
    if (m_table.count(newName))
        return 1;
    const size_t position = m_parmNames.find(oldName, false);
    TyxParameterPtr parameter = removeParm(oldName);
    if (!parameter)
        return 1;
    parameter->setName(newName);
    return insertParm(parameter, static_cast<int>(position));
}

void TyxParameterList::clear()
{
    for (auto &entry : m_table)
        entry.second->m_parent = nullptr;
    m_table.clear();
    m_parmNames.clear();
}

TyxVariant TyxParameterList::parmValue(const TyxString &name,
                                       const std::vector<TyxParameterListConstPtr> &scope) const
{
    Visited visited;
    return parmValue(name, scope, visited);
}

bool TyxParameterList::isVisited(const Visited &visited, const TyxString &name) const
{
    return std::find(visited.begin(), visited.end(), std::make_pair(this, name)) != visited.end();
}

TyxVariant TyxParameterList::parmValue(const TyxString &name,
                                       const std::vector<TyxParameterListConstPtr> &scope,
                                       Visited &visited) const
{
    const auto it = m_table.find(name);
    if (!isVisited(visited, name) && it != m_table.end()) {
        const TyxParameter &parameter = *it->second;
        visited.emplace_back(this, name);
        TyxVariant result;
        if (!parameter.crossRef().empty())
            result = solveCrossRef(parameter, scope, visited);
        else if (parameter.isExpression())
            result = solveExp(parameter);
        else
            result = parameter.value();
        visited.pop_back();
        return result;
    }
    if (scope.empty() || !scope.front())
        return TyxVariant();
    const std::vector<TyxParameterListConstPtr> rest(scope.begin() + 1, scope.end());
    return scope.front()->parmValue(name, rest, visited);
}

TyxVariant TyxParameterList::solveCrossRef(const TyxParameter &parameter,
                                           const std::vector<TyxParameterListConstPtr> &scope,
                                           Visited &visited) const
{
    const TyxString &target = parameter.crossRef();
    if (m_table.count(target) && !isVisited(visited, target))
        return parmValue(target, scope, visited);
    if (scope.empty() || !scope.front())
        return TyxVariant();
    const std::vector<TyxParameterListConstPtr> rest(scope.begin() + 1, scope.end());
    return scope.front()->parmValue(target, rest, visited);
}

TyxVariant TyxParameterList::solveExp(const TyxParameter &) const
{
    // Expressions are not evaluated in a parameter list.
    return TyxVariant();
}

bool TyxParameterList::operator==(TyxParameterList other) const
{
    if (!TyxKeyedObject::operator==(other) || m_parmNames != other.m_parmNames)
        return false;
    for (const TyxString &name : m_parmNames) {
        if (!(*m_table.at(name) == *other.m_table.at(name)))
            return false;
    }
    return true;
}

TyxString TyxParameterList::className() const { return L"TyxParameterList"; }

} // namespace tyx
