// Argument that takes one value of the property's type.
#pragma once

#include <tyx/TyxClArg.h>

namespace tyx {

/// "-f value", "--name value", or with another delimiter "-f=value".
class TYX_EXPORT TyxClValueArg : public TyxClArg {
public:
    TyxClValueArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue = TyxVariant(),
                  const TyxClArgVisitorIFConstPtr &visitor = nullptr);
    ~TyxClValueArg() override;
    /// "TyxClValueArg".
    TyxString className() const override;
    /// "-f <val>".
    TyxString shortID(const TyxString &valueId = L"val") const override;
    /// "-f <val>,  --name <val>".
    TyxString longID(const TyxString &valueId = L"val") const override;
    bool processArg(int *index, std::vector<TyxString> &args) override;
};

} // namespace tyx
