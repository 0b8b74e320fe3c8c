// The implementation of the variant that holds nothing.
#include <tyx/TyxInvalidVariant.h>

#include "core/TyxVariantRegistry.h"

namespace tyx {

std::shared_ptr<TyxVariantIF> TyxInvalidVariant::create(const void *) const
{
    return internal::invalidVariantImpl();
}

std::shared_ptr<TyxVariantIF> TyxInvalidVariant::clone() const { return internal::invalidVariantImpl(); }

bool TyxInvalidVariant::isEqual(const TyxVariantIF &other) const
{
    return other.type() == TyxMetaType::Invalid;
}

std::wostream &TyxInvalidVariant::write(std::wostream &os) const { return os; }

std::wistream &TyxInvalidVariant::read(std::wistream &is) { return is; }

bool TyxInvalidVariant::value(const TyxMetaType &target, void *dest) const
{
    if (target == TyxMetaType::Invalid)
        return true;
    internal::writeDefault(target, dest);
    return false;
}

bool TyxInvalidVariant::setValue(const TyxMetaType &source, const void *)
{
    return source == TyxMetaType::Invalid;
}

} // namespace tyx
