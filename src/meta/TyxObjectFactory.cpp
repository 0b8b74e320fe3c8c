// Base of object factories and the process-wide registry of them.
#include <tyx/TyxObjectFactory.h>

#include <map>
#include <mutex>

#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxNumValidatorFactory.h>
#include <tyx/TyxTextMsg.h>

#include "core/TyxPost.h"

namespace tyx {

namespace {

struct Registry {
    std::mutex mutex;
    std::map<TyxString, TyxObjectFactoryPtr> factories;

    Registry()
    {
        add(TyxObjectFactoryPtr(new TyxNumValidatorFactory()));
        add(TyxObjectFactoryPtr(new TyxObjectFactoryImpl<TyxMetaProperty>(L"TyxMetaProperty")));
    }
    int add(const TyxObjectFactoryPtr &factory)
    {
        if (!factory)
            return 1;
        const TyxString name = factory->productName();
        if (name.empty())
            return 1;
        return factories.emplace(name, factory).second ? 0 : 1;
    }
};

// Built on first use, so that static initialisers of other modules may register.
Registry &registry()
{
    static Registry instance;
    return instance;
}

} // namespace

TyxObjectFactory::~TyxObjectFactory() = default;

TyxString TyxObjectFactory::className() const { return L"TyxObjectFactory"; }

int TyxObjectFactory::registerFactory(const TyxSmartPtr<TyxObjectFactory> &factory)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    return r.add(factory);
}

int TyxObjectFactory::unregisterFactory(const TyxString &className)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    return r.factories.erase(className) == 1 ? 0 : 1;
}

TyxSmartPtr<TyxObjectFactory> TyxObjectFactory::factory(const TyxString &className)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    const auto it = r.factories.find(className);
    return it == r.factories.end() ? TyxObjectFactoryPtr() : it->second;
}

bool TyxObjectFactory::isRegistered(const TyxString &className)
{
    return static_cast<bool>(factory(className));
}

TyxStrList TyxObjectFactory::registeredNames()
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    TyxStrList names;
    for (const auto &entry : r.factories)
        names.push_back(entry.first);
    return names;
}

TyxObject *TyxObjectFactory::createObject(const TyxString &className, const TyxVariantMap &arguments,
                                          TyxTextMsg *msg)
{
    // The factory runs outside the lock: it may itself consult the registry.
    const TyxObjectFactoryPtr maker = factory(className);
    if (!maker) {
        TYX_FILL_ERROR(msg, L"No factory is registered for class '" + className + L"'.");
        return nullptr;
    }
    TyxObject *object = maker->create(arguments);
    if (!object)
        TYX_FILL_ERROR(msg,
                       L"The factory of class '" + className + L"' made no object from the given arguments.");
    return object;
}

} // namespace tyx
