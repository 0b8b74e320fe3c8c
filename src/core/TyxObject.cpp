// Root of the class tree and its description hooks.
#include <tyx/TyxObject.h>

#include <tyx/TyxMetaObject.h>

namespace tyx {

TyxObject::~TyxObject() = default;

TyxMetaObjectConstPtr TyxObject::metaObject() const { return {}; }

TyxMetaObjectPtr TyxObject::metaObject()
{
    const TyxMetaObjectConstPtr description = static_cast<const TyxObject *>(this)->metaObject();
    return TyxMetaObjectPtr(const_cast<TyxMetaObject *>(description.get()));
}

TyxString TyxObject::className() const { return L"TyxObject"; }

bool TyxObject::isMetaObject() const { return static_cast<bool>(metaObject()); }

} // namespace tyx
