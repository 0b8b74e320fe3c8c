// Switch argument.
#include <tyx/TyxClSwitchArg.h>

namespace tyx {

TyxClSwitchArg::TyxClSwitchArg(const TyxMetaProperty &properties, bool defaultValue,
                               const TyxClArgVisitorIFConstPtr &visitor)
    : TyxClArg(properties, TyxVariant(defaultValue), visitor)
{
}

TyxClSwitchArg::~TyxClSwitchArg() = default;

TyxString TyxClSwitchArg::className() const { return L"TyxClSwitchArg"; }

TyxString TyxClSwitchArg::shortID(const TyxString &) const
{
    return hasFlag() ? flagStartString() + flag() : nameStartString() + name();
}

TyxString TyxClSwitchArg::longID(const TyxString &) const
{
    return (hasFlag() ? flagStartString() + flag() + L",  " : TyxString()) + nameStartString() + name();
}

bool TyxClSwitchArg::processArg(int *index, std::vector<TyxString> &args)
{
    if (ignoreRest())
        return false;
    TyxString &text = args[static_cast<size_t>(*index)];
    if (combinedSwitchesMatch(text)) {
        commonProcessing();
        return lastCombined(text);
    }
    if (argMatches(text)) {
        commonProcessing();
        return true;
    }
    return false;
}

void TyxClSwitchArg::commonProcessing()
{
    checkNotSet();
    setTypedValue(TyxVariant(!defaultValue().value<bool>()));
}

} // namespace tyx
