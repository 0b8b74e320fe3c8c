// Case-insensitive ordering of wide strings.
#pragma once

#include <tyx/TyxString.h>

namespace tyx {

/// Orders strings lexicographically by their units after C tolower; a proper
/// prefix orders first. The ordering of the keys of a variant map.
struct TYX_EXPORT TyxLexigraphicalNoCase {
    bool operator()(const TyxString &a, const TyxString &b) const;
};

} // namespace tyx
