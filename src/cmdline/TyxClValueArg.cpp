// Argument with one value.
#include <tyx/TyxClValueArg.h>

#include "cmdline/TyxClValueTaking.h"

namespace tyx {

TyxClValueArg::TyxClValueArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue,
                             const TyxClArgVisitorIFConstPtr &visitor)
    : TyxClArg(properties, defaultValue, visitor)
{
}

TyxClValueArg::~TyxClValueArg() = default;

TyxString TyxClValueArg::className() const { return L"TyxClValueArg"; }

TyxString TyxClValueArg::shortID(const TyxString &valueId) const
{
    return hasFlag() ? flagWithValue(valueId) : nameWithValue(valueId);
}

TyxString TyxClValueArg::longID(const TyxString &valueId) const
{
    return (hasFlag() ? flagWithValue(valueId) + L",  " : TyxString()) + nameWithValue(valueId);
}

bool TyxClValueArg::processArg(int *index, std::vector<TyxString> &args)
{
    if (ignoreRest() || hasBlanks(args[static_cast<size_t>(*index)]))
        return false;
    // With a blank delimiter the value is the next element, so the whole
    // element must be the flag or the name.
    TyxString flagPart;
    TyxString valuePart;
    if (delimiter() == L' ')
        flagPart = args[static_cast<size_t>(*index)];
    else
        splitStr(args[static_cast<size_t>(*index)], flagPart, valuePart);
    TyxString valueText;
    if (!internal::takeValue(
            *index, args, flagPart, valuePart, [this](const TyxString &text) { return argMatches(text); },
            [this] { checkNotSet(); }, messageId(), valueText))
        return false;
    setValue(valueText);
    return true;
}

} // namespace tyx
