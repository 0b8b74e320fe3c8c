// The three named entry points between JSON nodes and their implementation.
#include "plugin/TyxJsonHooks.h"

#include <mutex>

#include <tyx/TyxDsoHandle.h>
#include <tyx/TyxSystem.h>

#include "plugin/TyxJsonNodeImpl.h"
#include "plugin/TyxJsonText.h"

namespace tyx::internal {

namespace {

TyxJsonNodeIF *builtinAllocNode(const TyxJsonNodeType &type, const TyxString *name, const TyxVariant *value)
{
    if (name && value)
        return new TyxJsonNodeImpl(*name, *value);
    return new TyxJsonNodeImpl(type);
}

TyxJsonNodeIF *builtinParseJson(const TyxString &text)
{
    TyxVariant value;
    if (!parseJsonText(text, value).msg.empty())
        return nullptr;
    return new TyxJsonNodeImpl(TyxString(), value);
}

// The handle the hooks are looked up in. It is made, but nothing loads it,
// so the built-in functions are the ones that run.
TyxDsoHandle &hookModule()
{
    static TyxDsoHandle handle;
    return handle;
}

template <class Fn>
Fn resolve(const char *symbol, Fn builtin)
{
    const TyxDsoHandle::Function found = hookModule().addressOf(fromUTF8(symbol));
    return found ? reinterpret_cast<Fn>(found) : builtin;
}

} // namespace

const TyxJsonHooks &jsonHooks()
{
    static const TyxJsonHooks hooks = [] {
        // The module's path is fixed here even though nothing loads it.
        jsonHookModulePath();
        return TyxJsonHooks{resolve("alloc_node", &builtinAllocNode),
                            resolve("parse_json", &builtinParseJson),
                            resolve("strip_whitespace", &stripJsonWhiteSpace)};
    }();
    return hooks;
}

const TyxString &jsonHookModulePath()
{
    static std::mutex mutex;
    static TyxString path;
    static const char anchor = 0;
    const std::lock_guard<std::mutex> lock(mutex);
    if (path.empty())
        path = dsoPath(&anchor) + L"/" + L".so";
    return path;
}

} // namespace tyx::internal
