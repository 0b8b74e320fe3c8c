// Private helper of the units area: the shortest text of a double.
#pragma once

#include <charconv>
#include <string>

namespace tyx::internal {

/// The shortest decimal text that reads back as exactly \p value ("0.1",
/// "2", "1e-300", "inf", "nan").
inline std::wstring shortestText(double value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::wstring(buffer, result.ptr);
}

} // namespace tyx::internal
