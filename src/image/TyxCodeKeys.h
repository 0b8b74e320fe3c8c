// Key lookup and stream forms shared by the image code classes.
#pragma once

#include <cstddef>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include <tyx/TyxString.h>

namespace tyx::internal {

/// The index of \p key in \p keys, compared ignoring case, or keys.size().
inline size_t findCodeKey(const std::vector<TyxString> &keys, const TyxString &key)
{
    for (size_t i = 0; i < keys.size(); ++i)
        if (isEqual(keys[i], key))
            return i;
    return keys.size();
}

/// Writes \p key alone, as UTF-8 on a narrow stream.
template <class Char>
std::basic_ostream<Char> &writeCodeKey(std::basic_ostream<Char> &os, const TyxString &key)
{
    if constexpr (sizeof(Char) == 1)
        return os << toUTF8(key);
    else
        return os << key;
}

/// Reads one white-space-delimited word as a key.
template <class Char>
TyxString readCodeKey(std::basic_istream<Char> &is)
{
    std::basic_string<Char> word;
    is >> word;
    if constexpr (sizeof(Char) == 1)
        return fromUTF8(word);
    else
        return TyxString(word);
}

} // namespace tyx::internal
