// Positional argument with one value.
#include <tyx/TyxClUnlabeledArg.h>

namespace tyx {

TyxClUnlabeledArg::TyxClUnlabeledArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue,
                                     const TyxClArgVisitorIFConstPtr &visitor)
    : TyxClArg(properties, defaultValue, visitor)
{
}

TyxClUnlabeledArg::~TyxClUnlabeledArg() = default;

TyxString TyxClUnlabeledArg::className() const { return L"TyxClUnlabeledArg"; }

TyxString TyxClUnlabeledArg::shortID(const TyxString &valueId) const
{
    return L"<" + valueName(valueId) + L">";
}

TyxString TyxClUnlabeledArg::longID(const TyxString &valueId) const
{
    return L"<" + valueName(valueId) + L">";
}

bool TyxClUnlabeledArg::processArg(int *index, std::vector<TyxString> &args)
{
    if (ignoreRest() || isValueSet())
        return false;
    const TyxString &text = args[static_cast<size_t>(*index)];
    if (hasBlanks(text))
        return false;
    setValue(text);
    return true;
}

} // namespace tyx
