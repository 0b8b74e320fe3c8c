// Abstract base of the object factories keyed by class name, and their
// process-wide registry.
#pragma once

#include <tyx/TyxCast.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>
#include <tyx/TyxStrList.h>

namespace tyx {

class TyxTextMsg;

/// Makes objects of one class from a map of named arguments. The class name
/// of what it makes (productName()) is its key in the registry.
///
/// The registry is process-wide and guarded by one mutex. It starts with the
/// library's own factories (TyxNumValidator, TyxMetaProperty) and takes more
/// through registerFactory(); a name is taken once, and a second factory for
/// it is refused rather than replacing the first, so a plug-in cannot take
/// over a class another module makes. Objects are made with
/// createObject(className, arguments), which is what TyxObjectProxy uses to
/// turn a document back into an object: the arguments are the document's
/// properties, and the factory takes what it needs to choose and build the
/// object (the rest is set afterwards through the meta object).
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

    /// Enters \p factory under its productName(). Returns 0, or 1 when the
    /// factory is null, its name is empty or the name is taken already (the
    /// first one stays). Names match exactly, case-sensitive.
    static int registerFactory(const TyxSmartPtr<TyxObjectFactory> &factory);
    /// Removes the factory of \p className; 1 when there is none.
    static int unregisterFactory(const TyxString &className);
    /// The factory of \p className, or null.
    static TyxSmartPtr<TyxObjectFactory> factory(const TyxString &className);
    /// Whether a factory of \p className is registered.
    static bool isRegistered(const TyxString &className);
    /// The registered class names in ascending order.
    static TyxStrList registeredNames();
    /// A new object of \p className made from \p arguments, the caller's to
    /// delete. Null when no factory has that name ("No factory is registered
    /// for class '<name>'.") or the factory makes nothing from the arguments
    /// ("The factory of class '<name>' made no object from the given
    /// arguments."); \p msg, when not null, then receives the reason.
    static TyxObject *createObject(const TyxString &className, const TyxVariantMap &arguments,
                                   TyxTextMsg *msg = nullptr);

protected:
    TyxObjectFactory() = default;
};

TYX_DECLARE_SMART_PTR_ONLY(TyxObjectFactory);

/// The factory of a default-constructible class \p T that ignores its
/// arguments: everything arrives through the meta object afterwards.
template <class T>
class TyxObjectFactoryImpl : public TyxObjectFactory {
public:
    explicit TyxObjectFactoryImpl(const TyxString &productName) : m_productName(productName) {}

    TyxString productName() const override { return m_productName; }
    TyxObject *create(const TyxVariantMap &) const override { return new T(); }

private:
    TyxString m_productName;
};

} // namespace tyx
