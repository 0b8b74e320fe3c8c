// Factories held by key.
#include <tyx/TyxFactoryRegistry.h>

namespace tyx {

TyxFactoryRegistry::TyxFactoryRegistry() = default;

TyxFactoryRegistry::TyxFactoryRegistry(const TyxFactoryRegistry &other) = default;

TyxFactoryRegistry &TyxFactoryRegistry::operator=(const TyxFactoryRegistry &other) = default;

TyxFactoryRegistry::~TyxFactoryRegistry() = default;

int TyxFactoryRegistry::insert(const TyxFactoryPtr &factory)
{
    if (!factory)
        return 1;
    return m_factories.emplace(factory->key(), factory).second ? 0 : 1;
}

int TyxFactoryRegistry::insert(TyxFactory *factory) { return insert(TyxFactoryPtr(factory)); }

int TyxFactoryRegistry::remove(const TyxString &key) { return m_factories.erase(key) ? 0 : 1; }

bool TyxFactoryRegistry::contains(const TyxString &key) const { return m_factories.count(key) != 0; }

void TyxFactoryRegistry::clear() { m_factories.clear(); }

std::vector<TyxString> TyxFactoryRegistry::allKeys() const
{
    std::vector<TyxString> keys;
    keys.reserve(m_factories.size());
    for (const auto &entry : m_factories)
        keys.push_back(entry.first);
    return keys;
}

TyxFactoryPtr TyxFactoryRegistry::factory(const TyxString &key) const
{
    auto it = m_factories.find(key);
    return it == m_factories.end() ? TyxFactoryPtr() : it->second;
}

bool TyxFactoryRegistry::operator==(const TyxFactoryRegistry &other) const
{
    if (m_factories.size() != other.m_factories.size())
        return false;
    for (const auto &[key, factory] : m_factories) {
        auto it = other.m_factories.find(key);
        if (it == other.m_factories.end() || it->second.get() != factory.get())
            return false;
    }
    return true;
}

} // namespace tyx
