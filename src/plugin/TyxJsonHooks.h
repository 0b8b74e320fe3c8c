// The three named entry points between JSON nodes and their implementation.
#pragma once

#include <tyx/TyxJsonNodeType.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariant.h>
#include <tyx/internal/TyxJsonNodeIF.h>

namespace tyx::internal {

/// "alloc_node": a new implementation holding the empty value of \p type
/// when \p name and \p value are null, otherwise holding \p name and \p value.
using TyxJsonAllocNodeFn = TyxJsonNodeIF *(*)(const TyxJsonNodeType &type, const TyxString *name,
                                              const TyxVariant *value);
/// "parse_json": a new implementation with an empty name holding the value of
/// the JSON \p text, or null when the text is not JSON.
using TyxJsonParseFn = TyxJsonNodeIF *(*)(const TyxString &text);
/// "strip_whitespace": the compact form of the JSON \p text.
using TyxJsonStripFn = TyxString (*)(const TyxString &text);

struct TyxJsonHooks {
    TyxJsonAllocNodeFn allocNode;
    TyxJsonParseFn parseJson;
    TyxJsonStripFn stripWhiteSpace;
};

/// The entry points, looked up once by name in the module of the process-wide
/// hook handle; each one missing there is the built-in function.
const TyxJsonHooks &jsonHooks();

/// The path of the hook module: this library's path, "/" and ".so". Built
/// once under a mutex.
const TyxString &jsonHookModulePath();

} // namespace tyx::internal
