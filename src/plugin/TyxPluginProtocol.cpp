// The plug-in protocol's callbacks and factories.
#include <tyx/TyxPluginProtocol.h>

#include <tyx/TyxFactoryRegistry.h>
#include <tyx/TyxMetaObjectImpl.h>

namespace tyx {

namespace internal {

BodyBase::~BodyBase() = default;

/// The protocol's description: three read-only properties of fixed value.
class TyxPluginProtocolMetaObj : public TyxMetaObjectImpl<TyxPluginProtocolMetaObj, TyxPluginProtocol> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;

    void initProperties() override
    {
        using Meta = TyxPluginProtocolMetaObj;
        beginProperties(L"TyxPluginProtocol");
        addProperty(TyxMetaProperty(L"name", TyxMetaType::String, TyxMetaFlag(), L"Name"), nullptr,
                    [](Meta &, TyxVariant &v) { return (v = TyxString()), 0; });
        addProperty(TyxMetaProperty(L"description", TyxMetaType::String, TyxMetaFlag(), L"Description"),
                    nullptr, [](Meta &, TyxVariant &v) { return (v = TyxString()), 0; });
        addProperty(TyxMetaProperty(L"version", TyxMetaType::String, TyxMetaFlag(), L"Version"), nullptr,
                    [](Meta &, TyxVariant &v) { return (v = TyxString(L"1.0.0")), 0; });
    }
};

} // namespace internal

TyxPluginProtocol::TyxPluginProtocol() : m_factories(std::make_unique<TyxFactoryRegistry>()) {}

TyxPluginProtocol::~TyxPluginProtocol()
{
    // A callback may remove others, so each round starts again at the front.
    while (!m_callbacks.empty()) {
        auto first = m_callbacks.begin();
        std::unique_ptr<internal::BodyBase> body = std::move(first->second);
        m_callbacks.erase(first);
        if (body)
            body->invoke();
    }
}

TyxString TyxPluginProtocol::className() const { return L"TyxPluginProtocol"; }

TyxMetaObjectConstPtr TyxPluginProtocol::metaObject() const
{
    return TyxMetaObjectConstPtr(
        new internal::TyxPluginProtocolMetaObj(const_cast<TyxPluginProtocol *>(this)));
}

TyxMetaObjectPtr TyxPluginProtocol::metaObject()
{
    return TyxMetaObjectPtr(new internal::TyxPluginProtocolMetaObj(this));
}

TyxMetaPropertiesConstPtr TyxPluginProtocol::properties() const
{
    return internal::TyxPluginProtocolMetaObj::classProperties();
}

TyxVariant TyxPluginProtocol::propertyValue(const TyxString &name) const
{
    TyxVariant value;
    internal::TyxPluginProtocolMetaObj(const_cast<TyxPluginProtocol *>(this)).getProperty(name, value);
    return value;
}

TyxPluginProtocolPtr TyxPluginProtocol::selfPtr() { return TyxPluginProtocolPtr(this, TyxNoDelete()); }

TyxFactoryRegistry &TyxPluginProtocol::factories() { return *m_factories; }

const TyxFactoryRegistry &TyxPluginProtocol::factories() const { return *m_factories; }

void TyxPluginProtocol::unRegisterCallback(const void *key) { m_callbacks.erase(key); }

} // namespace tyx
