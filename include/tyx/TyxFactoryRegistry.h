// Factories held by key.
#pragma once

#include <map>
#include <vector>

#include <tyx/TyxFactory.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxLexigraphicalNoCase.h>
#include <tyx/TyxString.h>

namespace tyx {

/// Factories by key; keys match ignoring case. Copies share the factories.
class TYX_EXPORT TyxFactoryRegistry {
public:
    TyxFactoryRegistry();
    TyxFactoryRegistry(const TyxFactoryRegistry &other);
    TyxFactoryRegistry &operator=(const TyxFactoryRegistry &other);
    ~TyxFactoryRegistry();

    /// Stores \p factory under its key: 0, or 1 (and no change) when the key
    /// is taken or the factory is null.
    int insert(const TyxFactoryPtr &factory);
    /// Takes \p factory and stores it as insert(TyxFactoryPtr) does; a refused
    /// factory is deleted. Plug-ins use this form: the counted pointer is then
    /// made inside the library and leaves nothing behind when they unload.
    int insert(TyxFactory *factory);
    /// 0 after erasing \p key, 1 when it was missing.
    int remove(const TyxString &key);
    bool contains(const TyxString &key) const;
    void clear();
    bool empty() const { return m_factories.empty(); }
    size_t size() const { return m_factories.size(); }
    std::vector<TyxString> allKeys() const;
    /// The factory of \p key, or null.
    TyxFactoryPtr factory(const TyxString &key) const;
    /// The factory of \p key as \p T, or null when missing or of another class.
    template <class T>
    T *find(const TyxString &key) const
    {
        auto it = m_factories.find(key);
        return it == m_factories.end() ? nullptr : dynamic_cast<T *>(it->second.get());
    }

    /// Same keys, each with the same factory object.
    bool operator==(const TyxFactoryRegistry &other) const;
    bool operator!=(const TyxFactoryRegistry &other) const { return !(*this == other); }

private:
    std::map<TyxString, TyxFactoryPtr, TyxLexigraphicalNoCase> m_factories;
};

} // namespace tyx
