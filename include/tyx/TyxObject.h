// Root of the library's class tree.
#pragma once

#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>

namespace tyx {

class TyxMetaObjectPtr;
class TyxMetaObjectConstPtr;

/// Gives a class a name and, optionally, a description of itself. It holds
/// no data; include TyxMetaObject.h to call metaObject().
class TYX_EXPORT TyxObject {
public:
    TyxObject(const TyxObject &) = default;
    TyxObject &operator=(const TyxObject &) = default;
    virtual ~TyxObject();

    /// The object's description; null at the root.
    virtual TyxMetaObjectConstPtr metaObject() const;
    /// The same object as metaObject() const, so a subclass overrides one.
    virtual TyxMetaObjectPtr metaObject();
    /// The bare class name, "TyxObject" at the root.
    virtual TyxString className() const;

    /// Whether metaObject() const gives a description.
    bool isMetaObject() const;

protected:
    TyxObject() = default;

    /// Always true: there is no state to compare; derived comparisons chain here.
    bool operator==(const TyxObject &) const { return true; }
    /// Always false.
    bool operator!=(const TyxObject &) const { return false; }
};

} // namespace tyx
