// Positional argument that takes every element left to it.
#pragma once

#include <tyx/TyxClArg.h>

namespace tyx {

/// The value is a TyxVariantList of values of the property's type.
class TYX_EXPORT TyxClMultiUnlabeledArg : public TyxClArg {
public:
    TyxClMultiUnlabeledArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue = TyxVariant(),
                           const TyxClArgVisitorIFConstPtr &visitor = nullptr);
    ~TyxClMultiUnlabeledArg() override;
    /// "TyxClMultiUnlabeledArg".
    TyxString className() const override;
    /// "<val> ...".
    TyxString shortID(const TyxString &valueId = L"val") const override;
    /// "<val> (accepted multiple times)".
    TyxString longID(const TyxString &valueId = L"val") const override;
    bool isUnlabeled() const override { return true; }
    bool allowMore() override { return welcomeMoreValues(); }
    bool processArg(int *index, std::vector<TyxString> &args) override;

    /// The values given, in order.
    TyxVariantList values() const { return valueList(); }

private:
};

} // namespace tyx
