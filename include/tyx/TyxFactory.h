// Base of the object factories that plug-ins offer.
#pragma once

#include <memory>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxPluginProtocol.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariant.h>

namespace tyx {

/// Makes objects of one kind, found by its key. It remembers the protocol of
/// the plug-in it comes from.
class TYX_EXPORT TyxFactory : public TyxObject {
public:
    ~TyxFactory() override;
    TyxFactory(const TyxFactory &other);
    TyxFactory &operator=(const TyxFactory &other);

    /// "TyxFactory".
    TyxString className() const override;
    /// A new object with default settings.
    virtual std::unique_ptr<TyxObject> create() const = 0;
    /// The key the factory is found by.
    virtual const TyxString &key() const = 0;
    /// A new object set up from \p arguments.
    virtual std::unique_ptr<TyxObject> create(const TyxVariantMap &arguments) const = 0;
    /// What the objects are for.
    virtual TyxString description() const = 0;

    /// The protocol of the plug-in the factory comes from; null for a
    /// factory of the program itself.
    const TyxPluginProtocolPtr &protocol() const { return m_protocol; }

protected:
    explicit TyxFactory(const TyxPluginProtocolPtr &protocol = TyxPluginProtocolPtr());

private:
    TyxPluginProtocolPtr m_protocol;
};

using TyxFactoryPtr = TyxAutoPtr<TyxFactory>;

} // namespace tyx
