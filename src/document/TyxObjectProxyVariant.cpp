// The variant of documents, registered at run time.
#include <tyx/TyxObjectProxy.h>

#include <tyx/TyxSimpleStream.h>

#include "document/TyxXmlText.h"

namespace tyx {

namespace {

[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxObjectProxy>();

} // namespace

TyxObjectProxyVariant::~TyxObjectProxyVariant() = default;

bool TyxObjectProxyVariant::isEqual(const TyxVariantIF &other) const
{
    if (other.type() != type())
        return false;
    return static_cast<const TyxVariantImpl<TyxObjectProxy> &>(other).get() == m_value;
}

namespace internal {

bool TyxDefaultCasts<TyxObjectProxy>::toString(const TyxObjectProxy &value, TyxString &text)
{
    text = fromUTF8(xmlText(value, false));
    return true;
}

bool TyxDefaultCasts<TyxObjectProxy>::fromString(const TyxString &text, TyxObjectProxy &value)
{
    return TyxSimpleStream::parse(toUTF8(text), TyxSimpleStream::Xml, value).empty();
}

} // namespace internal

} // namespace tyx
