// Enumerators and stream forms shared by the image code classes.
#pragma once

#include <initializer_list>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include <tyx/TyxEnum.h>
#include <tyx/TyxRational.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariant.h>

#include "core/TyxBuildOnce.h"

namespace tyx::internal {

/// Joins the code class \p Class to the variant with its casts: those with
/// the core types, and those to the two rationals a variant holds, which are
/// not among the core types.
template <class Class>
bool joinCodeVariant()
{
    TyxVariantRegistrar::join<Class>();
    TyxVariantRegistrar::joinCasts<Class, TyxRational<int64_t>, TyxRational<uint64_t>>();
    return true;
}

/// The enumerator of the code class \p Class, filled with \p items on the
/// first call; later calls read it without a lock.
template <class Class, class Items = std::initializer_list<TyxEnum::Item>>
const TyxEnum &buildCodeEnumerator(const Items &items)
{
    return buildOnce([&items] {
        TyxEnum built;
        for (const TyxEnum::Item &item : items)
            built.insert(item);
        return built;
    });
}

/// The code of \p key in \p table, or \p invalid when the key is unknown.
template <class Code>
Code codeOfKey(const TyxEnum &table, const TyxString &key, Code invalid)
{
    const int value = table.fromString(key);
    return value == TyxEnum::INVALID_ENUM() ? invalid : static_cast<Code>(value);
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
