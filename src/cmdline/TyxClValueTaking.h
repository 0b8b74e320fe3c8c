// Finding the value of a labelled argument: the next element, or the text
// after the delimiter.
#pragma once

#include <vector>

#include <tyx/TyxClArg.h>

#include "core/TyxPost.h"

namespace tyx::internal {

/// Answers false when args[index] is not the argument's flag or name. Else
/// runs \p beforeTaking (which may throw), finds the value text and moves
/// \p index on when the value was the next element.
template <class Matches, class BeforeTaking>
bool takeValue(int &index, const std::vector<TyxString> &args, Matches matches, BeforeTaking beforeTaking,
               const TyxString &id, TyxString &valueText)
{
    const TyxString &text = args[static_cast<size_t>(index)];
    const wchar_t delimiter = TyxClArg::delimiter();
    TyxString flagPart;
    TyxString valuePart;
    if (delimiter == L' ') {
        flagPart = text;
    } else {
        const size_t at = text.find(delimiter);
        flagPart = text.substr(0, at);
        if (at != TyxString::npos)
            valuePart = text.substr(at + 1);
    }
    if (!matches(flagPart))
        return false;
    beforeTaking();
    if (delimiter == L' ') {
        if (static_cast<size_t>(index) + 1 >= args.size())
            TYX_THROW_ERROR(L"Missing a value for this argument: " + id);
        ++index;
        valueText = args[static_cast<size_t>(index)];
        return true;
    }
    if (valuePart.empty())
        TYX_THROW_ERROR(L"Couldn't find delimiter for this argument: " + id);
    valueText = valuePart;
    return true;
}

} // namespace tyx::internal
