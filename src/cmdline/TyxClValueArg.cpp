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
    TyxString valueText;
    if (!internal::takeValue(
            *index, args, [this](const TyxString &text) { return argMatches(text); },
            [this] { checkNotSet(); }, messageId(), valueText))
        return false;
    setValue(valueText);
    return true;
}

} // namespace tyx
