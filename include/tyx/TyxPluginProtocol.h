// The contract a plug-in hands to the library, and the entry point macro.
#pragma once

#include <map>
#include <memory>
#include <utility>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxMetaObject.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariant.h>
#include <tyx/TyxVersion.h>

namespace tyx {

class TyxFactoryRegistry;
class TyxPluginProtocol;
/// Shares a protocol without ever deleting it.
using TyxPluginProtocolPtr = TyxAutoPtr<TyxPluginProtocol>;

namespace internal {

/// Root of the callbacks a protocol runs as it dies.
class TYX_EXPORT BodyBase {
public:
    virtual ~BodyBase();
    virtual void invoke() = 0;
};

/// Holds a callable by value and calls it.
template <class T>
class BodyLeaf final : public BodyBase {
public:
    explicit BodyLeaf(T callback) : m_callback(std::move(callback)) {}
    void invoke() override { m_callback(); }

private:
    T m_callback;
};

} // namespace internal

/// What a plug-in hands out through getProtocol(). A plug-in subclasses it,
/// keeps one instance (a static of the shared object, usually) and returns
/// its address. The library never deletes it. On its destruction the
/// protocol tells every registered plug-in and library that it is gone.
///
/// The protocol also holds the factories the plug-in offers: initialize()
/// inserts them into factories(), terminate() removes them. A factory and
/// every object it made must be gone before the plug-in unloads, since their
/// code lives in the shared object.
class TYX_EXPORT TyxPluginProtocol : public TyxObject {
public:
    ~TyxPluginProtocol() override;

    /// The description of the protocol class: the properties "name",
    /// "description" and "version", whose values are fixed ("", "", "1.0.0")
    /// and unrelated to the plug-in's own answers.
    TyxMetaObjectConstPtr metaObject() const override;
    TyxMetaObjectPtr metaObject() override;
    /// "TyxPluginProtocol".
    TyxString className() const override;
    /// Runs once the handshake has passed; an Error refuses the plug-in.
    virtual TyxTextMsg initialize() = 0;
    /// Runs before the plug-in unloads.
    virtual void terminate() = 0;
    /// Whether the code was built without NDEBUG. Defined here so that a
    /// plug-in answers for its own build; the library requires the answer of
    /// its own build.
    virtual bool isDebug() const
    {
#ifdef NDEBUG
        return false;
#else
        return true;
#endif
    }
    /// Whether TyxString is the wide string of this library, as defined here
    /// so that a plug-in answers for the definition it was built against.
    virtual bool isWideChar() const { return sizeof(TyxString::value_type) == sizeof(wchar_t); }
    /// The plug-in's name; the library never calls it.
    virtual TyxString name() const = 0;
    /// The library version the plug-in was built against: the handshake
    /// requires the same major number and a minor not above the library's.
    virtual const TyxVersion &version() const = 0;
    /// What the plug-in offers; the library never calls it.
    virtual TyxString description() const = 0;
    /// Who made the plug-in; the library never calls it.
    virtual TyxString vendor() const = 0;

    /// The collection of the meta object.
    TyxMetaPropertiesConstPtr properties() const;
    /// The value of the property \p name; invalid when there is none.
    TyxVariant propertyValue(const TyxString &name) const;

    /// A pointer to this protocol that never deletes it, for the plug-in's
    /// factories. It is made inside the library: a pointer made in the
    /// plug-in's own code would leave its deleter behind when it unloads.
    TyxPluginProtocolPtr selfPtr();

    /// The factories this plug-in offers.
    TyxFactoryRegistry &factories();
    const TyxFactoryRegistry &factories() const;

    /// Runs \p callback when the protocol dies; a second registration under
    /// one key replaces the first.
    template <class T>
    void registerCallback(const void *key, T callback)
    {
        m_callbacks[key] = std::make_unique<internal::BodyLeaf<T>>(std::move(callback));
    }
    /// Forgets the callback of \p key, if any.
    void unRegisterCallback(const void *key);

protected:
    TyxPluginProtocol();

private:
    std::map<const void *, std::unique_ptr<internal::BodyBase>> m_callbacks;
    std::unique_ptr<TyxFactoryRegistry> m_factories;
};

} // namespace tyx

/// Declares the entry point of a plug-in with default visibility; follow it
/// with the body, which returns the plug-in's protocol:
///     TYX_PLUGIN_ENTRY_POINT { static MyProtocol protocol; return &protocol; }
#define TYX_PLUGIN_ENTRY_POINT                                                                               \
    extern "C" __attribute__((visibility("default"))) tyx::TyxPluginProtocol *getProtocol()
