// The plug-in protocol's callbacks and factories.
#include <tyx/TyxPluginProtocol.h>

#include <tyx/TyxFactoryRegistry.h>

namespace tyx {

namespace internal {

BodyBase::~BodyBase() = default;

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

TyxFactoryRegistry &TyxPluginProtocol::factories() { return *m_factories; }

const TyxFactoryRegistry &TyxPluginProtocol::factories() const { return *m_factories; }

void TyxPluginProtocol::unRegisterCallback(const void *key) { m_callbacks.erase(key); }

} // namespace tyx
