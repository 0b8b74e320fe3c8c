// Case-insensitive ordering of wide strings.
#include <tyx/TyxLexigraphicalNoCase.h>

#include <algorithm>

#include "core/TyxTextScan.h"

namespace tyx {

bool TyxLexigraphicalNoCase::operator()(const TyxString &a, const TyxString &b) const
{
    // Equal units need no lowering, which spares C tolower on shared prefixes.
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        if (a[i] == b[i])
            continue;
        const wchar_t x = internal::lowerUnit(a[i]);
        const wchar_t y = internal::lowerUnit(b[i]);
        if (x != y)
            return x < y;
    }
    return a.size() < b.size();
}

} // namespace tyx
