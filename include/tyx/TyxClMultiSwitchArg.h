// Switch argument that counts how often it is given.
#pragma once

#include <tyx/TyxClArg.h>

namespace tyx {

/// An unsigned count that rises by one each time the switch is given.
class TYX_EXPORT TyxClMultiSwitchArg : public TyxClArg {
public:
    TyxClMultiSwitchArg(const TyxMetaProperty &properties, unsigned int defaultValue = 0,
                        const TyxClArgVisitorIFConstPtr &visitor = nullptr);
    ~TyxClMultiSwitchArg() override;
    /// "TyxClMultiSwitchArg".
    TyxString className() const override;
    /// "-f ... ".
    TyxString shortID(const TyxString &valueId = L"val") const override;
    /// "-f,  --name (accepted multiple times)".
    TyxString longID(const TyxString &valueId = L"val") const override;
    bool allowMore() override { return welcomeMoreValues(); }
    /// A switch takes no value.
    bool acceptsValue() const override { return false; }
    bool processArg(int *index, std::vector<TyxString> &args) override;

    unsigned int switchValue() const { return variant().value<unsigned int>(); }

private:
    void commonProcessing();
};

} // namespace tyx
