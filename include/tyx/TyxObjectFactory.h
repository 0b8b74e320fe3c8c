// Abstract base of the object factories keyed by class name.
#pragma once

#include <tyx/TyxCast.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

/// Makes objects of one class from a map of named arguments. The class name
/// of what it makes is its key in a registry of factories. This base holds
/// what the library's own factories need; registries build on it.
class TYX_EXPORT TyxObjectFactory : public TyxObject, public TyxRefCounted {
public:
    ~TyxObjectFactory() override;

    /// "TyxObjectFactory".
    TyxString className() const override;
    /// The bare class name of the objects made: the factory's key.
    virtual TyxString productName() const = 0;
    /// A new object made from \p arguments, the caller's to delete; null
    /// when the arguments do not describe an object this factory makes.
    virtual TyxObject *create(const TyxVariantMap &arguments) const = 0;

protected:
    TyxObjectFactory() = default;
};

TYX_DECLARE_SMART_PTR_ONLY(TyxObjectFactory);

} // namespace tyx
