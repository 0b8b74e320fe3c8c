// Positional argument that takes one element.
#pragma once

#include <tyx/TyxClArg.h>

namespace tyx {

/// Takes the first element nothing before it took.
class TYX_EXPORT TyxClUnlabeledArg : public TyxClArg {
public:
    TyxClUnlabeledArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue = TyxVariant(),
                      const TyxClArgVisitorIFConstPtr &visitor = nullptr);
    ~TyxClUnlabeledArg() override;
    /// "TyxClUnlabeledArg".
    TyxString className() const override;
    /// "<val>".
    TyxString shortID(const TyxString &valueId = L"val") const override;
    /// "<val>".
    TyxString longID(const TyxString &valueId = L"val") const override;
    bool isUnlabeled() const override { return true; }
    bool processArg(int *index, std::vector<TyxString> &args) override;
};

} // namespace tyx
