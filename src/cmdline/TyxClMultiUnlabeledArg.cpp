// Positional argument with a list of values.
#include <tyx/TyxClMultiUnlabeledArg.h>

namespace tyx {

TyxClMultiUnlabeledArg::TyxClMultiUnlabeledArg(const TyxMetaProperty &properties,
                                               const TyxVariant &defaultValue,
                                               const TyxClArgVisitorIFConstPtr &visitor)
    : TyxClArg(properties, defaultValue, visitor)
{
}

TyxClMultiUnlabeledArg::~TyxClMultiUnlabeledArg() = default;

TyxString TyxClMultiUnlabeledArg::className() const { return L"TyxClMultiUnlabeledArg"; }

TyxString TyxClMultiUnlabeledArg::shortID(const TyxString &valueId) const
{
    return L"<" + valueName(valueId) + L"> ...";
}

TyxString TyxClMultiUnlabeledArg::longID(const TyxString &valueId) const
{
    return L"<" + valueName(valueId) + L"> (accepted multiple times)";
}

bool TyxClMultiUnlabeledArg::processArg(int *index, std::vector<TyxString> &args)
{
    if (ignoreRest())
        return false;
    const TyxString &text = args[static_cast<size_t>(*index)];
    if (hasBlanks(text))
        return false;
    appendValue(text);
    return true;
}

} // namespace tyx
