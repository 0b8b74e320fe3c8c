// Registry of the functions of the expression language, and the messages their bodies throw.
#include "expr/TyxEqnFunctions.h"

#include <string>

#include "expr/TyxEqnFcnDispatch.h"

namespace tyx::internal {

TyxEqnFunctions::TyxEqnFcnBodyIF::~TyxEqnFcnBodyIF() = default;

// ---- Messages ----------------------------------------------------------------

void throwBadArgError(const TyxString &name, const TyxMetaType &type, const TyxString &file,
                      unsigned long line)
{
    throw TyxTextMsg(L"Invalid argument type (" + type.toString() + L") passed to '" + name + L"'.", file,
                     static_cast<int>(line), TyxTextMsg::Error);
}

void throwBadArgError(const TyxString &name, const TyxMetaType &type1, const TyxMetaType &type2,
                      const TyxString &file, unsigned long line)
{
    throw TyxTextMsg(L"Invalid argument type combination (" + type1.toString() + L"," + type2.toString() +
                         L") passed to '" + name + L"'.",
                     file, static_cast<int>(line), TyxTextMsg::Error);
}

void throwBadArgError(const TyxString &name, const TyxMetaType &type1, const TyxMetaType &type2,
                      const TyxMetaType &type3, const TyxString &file, unsigned long line)
{
    throw TyxTextMsg(L"Invalid argument type combination (" + type1.toString() + L"," + type2.toString() +
                         L"," + type3.toString() + L") passed to '" + name + L"'.",
                     file, static_cast<int>(line), TyxTextMsg::Error);
}

void throwBadCountError(uint64_t got, uint64_t expected, const TyxString &name, const TyxString &file,
                        unsigned long line)
{
    throw TyxTextMsg(L"Incorrect number of arguments passed to '" + name + L"'. Got " + std::to_wstring(got) +
                         L", but expected " + std::to_wstring(expected) + L".",
                     file, static_cast<int>(line), TyxTextMsg::Error);
}

// ---- Registry ---------------------------------------------------------------------

namespace {

// Built on first use; the order of registration has no meaning, the map sorts.
FunctionRegistry &registry()
{
    static FunctionRegistry functions = [] {
        FunctionRegistry registry;
        addElementaryMathFunctions(registry);
        addArithmeticFunctions(registry);
        addSelectionFunctions(registry);
        addReductionFunctions(registry);
        return registry;
    }();
    return functions;
}

} // namespace

bool TyxEqnFunctions::contains(const TyxString &name) { return registry().count(name) != 0; }

const TyxEqnFunctions::TyxEqnFcnBodyIFPtr &TyxEqnFunctions::function(const TyxString &name)
{
    static const TyxEqnFcnBodyIFPtr none;
    const FunctionRegistry &functions = registry();
    const auto found = functions.find(name);
    return found == functions.end() ? none : found->second;
}

int TyxEqnFunctions::createAlias(const TyxString &name, const TyxString &alias)
{
    FunctionRegistry &functions = registry();
    const auto found = functions.find(name);
    if (found == functions.end() || functions.count(alias) != 0)
        return 1;
    functions.emplace(alias, found->second->clone());
    return 0;
}

} // namespace tyx::internal
