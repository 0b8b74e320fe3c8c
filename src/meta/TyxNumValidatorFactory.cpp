// Factory of number validators.
#include <tyx/TyxNumValidatorFactory.h>

#include <tyx/TyxNumValidator.h>
#include <tyx/TyxVariant.h>

namespace tyx {

TyxNumValidatorFactory::~TyxNumValidatorFactory() = default;

TyxString TyxNumValidatorFactory::className() const { return L"TyxNumValidatorFactory"; }

TyxString TyxNumValidatorFactory::productName() const { return L"TyxNumValidator"; }

TyxObject *TyxNumValidatorFactory::create(const TyxVariantMap &arguments) const
{
    const auto it = arguments.find(L"template_type");
    if (it == arguments.end())
        return nullptr;
    int code = -1;
    if (!it->second.value(TyxMetaType::Int, &code))
        return nullptr;
    switch (code) {
    case 0: return new TyxNumValidator<signed char>();
    case 1: return new TyxNumValidator<unsigned char>();
    case 2: return new TyxNumValidator<short>();
    case 3: return new TyxNumValidator<unsigned short>();
    case 4: return new TyxNumValidator<int>();
    case 5: return new TyxNumValidator<unsigned int>();
    case 6: return new TyxNumValidator<int64_t>();
    case 7: return new TyxNumValidator<uint64_t>();
    case 8: return new TyxNumValidator<float>();
    case 9: return new TyxNumValidator<double>();
    default: return nullptr;
    }
}

} // namespace tyx
