// Results of expressions as text, shared by the tests of the expression front end and its functions.
#pragma once

#include <tyx/TyxEqnParser.h>

#include <sstream>
#include <utility>
#include <vector>

namespace tyx::testing {

using Bindings = std::vector<std::pair<const wchar_t *, TyxVariant>>;

/// Sets \p bindings, evaluates \p parser and gives "type,value" in the
/// variant's stream form with every digit, or the text of the failure.
inline TyxString resultText(TyxEqnParser &parser, const Bindings &bindings = {})
{
    for (const auto &[name, value] : bindings)
        parser.setValue(name, value);
    TyxTextMsg msg;
    const TyxVariant &result = parser.evaluate(&msg);
    if (!msg.empty())
        return msg.text();
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
