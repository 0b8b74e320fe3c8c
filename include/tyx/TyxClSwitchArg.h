// Switch argument: a bool that becomes the opposite of its default when given.
#pragma once

#include <tyx/TyxClArg.h>

namespace tyx {

/// Given once, alone ("-f", "--name") or in a group of letters ("-abc").
class TYX_EXPORT TyxClSwitchArg : public TyxClArg {
public:
    TyxClSwitchArg(const TyxMetaProperty &properties, bool defaultValue = false,
                   const TyxClArgVisitorIFConstPtr &visitor = nullptr);
    ~TyxClSwitchArg() override;
    /// "TyxClSwitchArg".
    TyxString className() const override;
    /// "-f".
    TyxString shortID(const TyxString &valueId = L"val") const override;
    /// "-f,  --name".
    TyxString longID(const TyxString &valueId = L"val") const override;
    /// A switch takes no value.
    bool acceptsValue() const override { return false; }
    bool processArg(int *index, std::vector<TyxString> &args) override;

    bool switchValue() const { return variant().value<bool>(); }

private:
    void commonProcessing();
};

} // namespace tyx
