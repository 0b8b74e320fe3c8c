// Argument that takes a value each time it is given and keeps them in a list.
#pragma once

#include <tyx/TyxClArg.h>

namespace tyx {

/// The value is a TyxVariantList of values of the property's type.
class TYX_EXPORT TyxClMultiValueArg : public TyxClArg {
public:
    TyxClMultiValueArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue = TyxVariant(),
                       const TyxClArgVisitorIFConstPtr &visitor = nullptr);
    ~TyxClMultiValueArg() override;
    /// "TyxClMultiValueArg".
    TyxString className() const override;
    /// "-f <val> ... ".
    TyxString shortID(const TyxString &valueId = L"val") const override;
    /// "-f <val>,  --name <val> (accepted multiple times)".
    TyxString longID(const TyxString &valueId = L"val") const override;
    /// True while "Required" is set and no value was given yet.
    bool isRequired() const override;
    bool allowMore() override { return welcomeMoreValues(); }
    bool processArg(int *index, std::vector<TyxString> &args) override;

    /// The values given, in order.
    TyxVariantList values() const { return valueList(); }

private:
};

} // namespace tyx
