// Argument with a list of values.
#include <tyx/TyxClMultiValueArg.h>

#include "cmdline/TyxClValueTaking.h"

namespace tyx {

TyxClMultiValueArg::TyxClMultiValueArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue,
                                       const TyxClArgVisitorIFConstPtr &visitor)
    : TyxClArg(properties, defaultValue, visitor)
{
}

TyxClMultiValueArg::~TyxClMultiValueArg() = default;

TyxString TyxClMultiValueArg::className() const { return L"TyxClMultiValueArg"; }

TyxString TyxClMultiValueArg::shortID(const TyxString &valueId) const
{
    return (hasFlag() ? flagWithValue(valueId) : nameWithValue(valueId)) + L" ... ";
}

TyxString TyxClMultiValueArg::longID(const TyxString &valueId) const
{
    return (hasFlag() ? flagWithValue(valueId) + L",  " : TyxString()) + nameWithValue(valueId) +
           L" (accepted multiple times)";
}

bool TyxClMultiValueArg::isRequired() const { return TyxClArg::isRequired() && !isValueSet(); }

bool TyxClMultiValueArg::processArg(int *index, std::vector<TyxString> &args)
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
    const TyxString id = messageId();
    if (!internal::takeValue(
            *index, args, flagPart, valuePart, [this](const TyxString &text) { return argMatches(text); },
            [this, &id] {
                if (isXorSet())
                    TYX_THROW_ERROR(L"Mutually exclusive argument already set: " + id);
            },
            id, valueText))
        return false;
    appendValue(valueText);
    return true;
}

} // namespace tyx
