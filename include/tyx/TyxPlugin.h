// One plug-in: a shared object whose protocol passed the handshake.
#pragma once

#include <memory>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxDsoHandle.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxPluginProtocol.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxURI.h>

namespace tyx {

class TyxPluginLibrary;

namespace internal {

/// A last check of a protocol after the handshake.
class TYX_EXPORT TyxPluginValidatorIF {
public:
    virtual ~TyxPluginValidatorIF();
    virtual TyxTextMsg isValid(const TyxPluginProtocol *protocol) const = 0;
};

/// Delegates the check to the policy \p T.
template <class T>
class TyxPluginValidatorImpl final : public TyxPluginValidatorIF {
public:
    TyxTextMsg isValid(const TyxPluginProtocol *protocol) const override { return T::isValid(protocol); }
};

struct TyxPluginBody;

} // namespace internal

/// The policy every protocol passes.
struct TyxDefaultPluginValidator {
    static TyxTextMsg isValid(const TyxPluginProtocol *) { return TyxTextMsg(); }
};

/// Loads a shared object and runs the handshake: the object must export
/// getProtocol, whose protocol must match this library's build (debug or
/// not), string definition and version (same major, minor not above), and
/// initialise without error. Each refusal is an Error ending with the file.
/// The protocol is held until unload.
class TYX_EXPORT TyxPlugin : public TyxObject, public TyxRefCounted {
public:
    TyxPlugin();
    TyxPlugin(const TyxPlugin &) = delete;
    TyxPlugin &operator=(const TyxPlugin &) = delete;
    /// Unloads.
    ~TyxPlugin() override;

    /// "TyxPlugin".
    TyxString className() const override;
    /// Unloads what is loaded (terminating its protocol), then loads \p uri
    /// and runs the handshake. On an Error nothing stays loaded.
    TyxTextMsg load(const TyxURI &uri);
    /// Terminates the protocol and releases the shared object; nothing when
    /// nothing is loaded.
    void unload();
    bool isLoaded() const;
    const TyxURI &fileName() const;
    /// The protocol; null when not loaded.
    TyxPluginProtocolPtr protocol() const;

private:
    friend class TyxPluginLibrary;

    TyxTextMsg load_aux(const TyxURI &uri, const internal::TyxPluginValidatorIF &validator);
    TyxTextMsg initialize(const internal::TyxPluginValidatorIF &validator);
    /// Forgets protocol and handle without releasing the object.
    void clear();

    std::shared_ptr<internal::TyxPluginBody> m_body;
};

using TyxPluginPtr = TyxAutoPtr<TyxPlugin>;

} // namespace tyx
