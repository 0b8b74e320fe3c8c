// Registry of the functions of the expression language and their self-specialising bodies.
#pragma once

#include <cstdint>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxMetaType.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariant.h>

#include "expr/TyxEqnNode.h"

namespace tyx::internal {

/// The functions that expression trees call, by name. The registry is
/// private to the library, like the tree nodes whose argument lists its
/// bodies take; applications reach it through TyxEqnParser::createFunctionAlias.
class TyxEqnFunctions {
public:
    class TyxEqnFcnBodyIF;
    using TyxEqnFcnBodyIFPtr = TyxAutoPtr<TyxEqnFcnBodyIF>;

    /// What a function node runs. A body keeps state of its own place in a
    /// tree (the routine picked for its operand types and its result), so
    /// each node owns a private clone of the registered body.
    class TyxEqnFcnBodyIF {
    public:
        virtual ~TyxEqnFcnBodyIF();
        /// A new body of the same function that has not yet seen any types.
        virtual TyxEqnFcnBodyIFPtr clone() const = 0;
        /// The function's value for \p args; failures throw a TyxTextMsg.
        virtual const TyxVariant &evaluate(const TyxEqnNodeList &args) = 0;
    };

    template <class F>
    class TyxEqnFcnBodyImpl;

    /// Whether \p name is a registered function (or alias).
    static bool contains(const TyxString &name);
    /// The registered body of \p name; an empty pointer for an unknown name.
    static const TyxEqnFcnBodyIFPtr &function(const TyxString &name);
    /// Registers \p alias as a clone of the body of \p name. 0 on success; 1
    /// if \p name is unknown or \p alias exists. Not guarded by a lock: meant
    /// for set-up before expressions are parsed.
    static int createAlias(const TyxString &name, const TyxString &alias);

protected:
    TyxEqnFunctions() = default;
};

/// Throws "Invalid argument type (<type>) passed to '<name>'.".
[[noreturn]] void throwBadArgError(const TyxString &name, const TyxMetaType &type, const TyxString &file,
                                   unsigned long line);
/// Throws "Invalid argument type combination (<type1>,<type2>) passed to '<name>'.".
[[noreturn]] void throwBadArgError(const TyxString &name, const TyxMetaType &type1, const TyxMetaType &type2,
                                   const TyxString &file, unsigned long line);
/// Throws "Invalid argument type combination (<type1>,<type2>,<type3>) passed to '<name>'.".
[[noreturn]] void throwBadArgError(const TyxString &name, const TyxMetaType &type1, const TyxMetaType &type2,
                                   const TyxMetaType &type3, const TyxString &file, unsigned long line);
/// Throws "Incorrect number of arguments passed to '<name>'. Got <got>, but expected <expected>.".
[[noreturn]] void throwBadCountError(uint64_t got, uint64_t expected, const TyxString &name,
                                     const TyxString &file, unsigned long line);

} // namespace tyx::internal
