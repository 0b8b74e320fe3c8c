// Finding the value of a labelled argument: the next element, or the text
// after the delimiter.
#pragma once

#include <vector>

#include <tyx/TyxClArg.h>

#include "core/TyxPost.h"

namespace tyx::internal {

/// Answers false when \p flagPart is not the argument's flag or name. Else
/// runs \p beforeTaking (which may throw), finds the value text and moves
/// \p index on when the value was the next element. \p valuePart is what
/// followed the delimiter in the same element.
template <class Matches, class BeforeTaking>
bool takeValue(int &index, const std::vector<TyxString> &args, const TyxString &flagPart,
               const TyxString &valuePart, Matches matches, BeforeTaking beforeTaking, const TyxString &id,
               TyxString &valueText)
{
    if (!matches(flagPart))
        return false;
    beforeTaking();
    if (TyxClArg::delimiter() == L' ') {
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
