// Tiles of given values, the values of tiles and results of expressions as text, for the expression tests.
#pragma once

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <utility>
#include <vector>

namespace tyx::testing {

/// A tile of type \p code holding \p values.
template <class T>
TyxEqnTile tileOf(TyxNumericType::Code code, const std::vector<T> &values)
{
    TyxEqnTile tile(TyxDataType(code), values.size());
    if (!values.empty())
        std::memcpy(tile.buffer()->data(), values.data(), values.size() * sizeof(T));
    return tile;
}

/// The elements of \p tile, read with its step.
template <class T>
std::vector<T> valuesOf(const TyxEqnTile &tile)
{
    const T *p = tile.buffer() ? static_cast<const T *>(tile.buffer()->data()) : nullptr;
    std::vector<T> values;
    for (uint64_t i = 0; i < tile.size(); ++i)
        values.push_back(p[i * tile.step()]);
    return values;
}

using Bindings = std::vector<std::pair<const wchar_t *, TyxVariant>>;

/// Sets \p bindings, evaluates \p parser and gives "type,value" in the
/// variant's stream form with every digit, or the text of the failure,
/// which must be an error.
inline TyxString resultText(TyxEqnParser &parser, const Bindings &bindings = {})
{
    for (const auto &[name, value] : bindings)
        parser.setValue(name, value);
    TyxTextMsg msg;
    const TyxVariant &result = parser.evaluate(&msg);
    if (!msg.empty()) {
        EXPECT_EQ(msg.type(), TyxTextMsg::Error);
        return msg.text();
    }
    std::wostringstream out;
    out.precision(17);
    out << result;
    return out.str();
}

/// resultText of a new parser of \p text; a parse failure as "parse: " and its text.
inline TyxString resultText(const TyxString &text, const Bindings &bindings = {})
{
    TyxEqnParser parser;
    TyxTextMsg msg;
    if (parser.parse(text, &msg) != 0)
        return L"parse: " + msg.text();
    return resultText(parser, bindings);
}

} // namespace tyx::testing
