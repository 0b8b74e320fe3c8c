// Counting switch argument.
#include <tyx/TyxClMultiSwitchArg.h>

#include "core/TyxPost.h"

namespace tyx {

TyxClMultiSwitchArg::TyxClMultiSwitchArg(const TyxMetaProperty &properties, unsigned int defaultValue,
                                         const TyxClArgVisitorIFConstPtr &visitor)
    : TyxClArg(properties, TyxVariant(defaultValue), visitor)
{
}

TyxClMultiSwitchArg::~TyxClMultiSwitchArg() = default;

TyxString TyxClMultiSwitchArg::className() const { return L"TyxClMultiSwitchArg"; }

TyxString TyxClMultiSwitchArg::shortID(const TyxString &) const
{
    return (hasFlag() ? flagStartString() + flag() : nameStartString() + name()) + L" ... ";
}

TyxString TyxClMultiSwitchArg::longID(const TyxString &) const
{
    return (hasFlag() ? flagStartString() + flag() + L",  " : TyxString()) + nameStartString() + name() +
           L" (accepted multiple times)";
}

bool TyxClMultiSwitchArg::processArg(int *index, std::vector<TyxString> &args)
{
    if (ignoreRest())
        return false;
    TyxString &text = args[static_cast<size_t>(*index)];
    if (combinedSwitchesMatch(text)) {
        commonProcessing();
        // The same letter may stand more than once in one group.
        while (combinedSwitchesMatch(text))
            commonProcessing();
        return lastCombined(text);
    }
    if (argMatches(text)) {
        commonProcessing();
        return true;
    }
    return false;
}

void TyxClMultiSwitchArg::commonProcessing()
{
    if (isXorSet())
        TYX_THROW_ERROR(L"Mutually exclusive argument already set: " + messageId());
    setTypedValue(TyxVariant(variant().value<unsigned int>() + 1U));
}

} // namespace tyx
