// Case-insensitive ordering of wide strings.
#include <tyx/TyxLexigraphicalNoCase.h>

#include <algorithm>

#include "core/TyxTextScan.h"

namespace tyx {

bool TyxLexigraphicalNoCase::operator()(const TyxString &a, const TyxString &b) const
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) {
        return internal::lowerUnit(x) < internal::lowerUnit(y);
    });
}

} // namespace tyx
