// The base of plug-in factories.
#include <tyx/TyxFactory.h>

namespace tyx {

TyxFactory::TyxFactory(const TyxPluginProtocolPtr &protocol) : m_protocol(protocol) {}

TyxFactory::TyxFactory(const TyxFactory &other) : TyxObject(other), m_protocol(other.m_protocol) {}

TyxFactory &TyxFactory::operator=(const TyxFactory &other)
{
    m_protocol = other.m_protocol;
    return *this;
}

TyxFactory::~TyxFactory() = default;

TyxString TyxFactory::className() const { return L"TyxFactory"; }

} // namespace tyx
