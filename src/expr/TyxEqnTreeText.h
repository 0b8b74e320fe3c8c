// Readable text of an expression tree, for tests and debugging.
#pragma once

#include <string>

namespace tyx::internal {

class TyxEqnNode;

/// The subtree under \p node as nested calls, in UTF-8: a function as
/// `name(arg, arg)`, a variable by its name, a number in its shortest exact
/// form (`2`, `0.5`, `inf`), a text in double quotes, a null argument as
/// `<null>`, an invalid value as `<invalid>` and any other value in its
/// variant form in braces (`{Int,3}`). A variable that holds a value shows it
/// after `=`. Deep trees are written without recursion.
std::string eqnTreeText(const TyxEqnNode *node);

} // namespace tyx::internal
