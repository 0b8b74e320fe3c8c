// Stream forms for the core tests: what a value writes and how a text reads.
#pragma once

#include <sstream>
#include <string>
#include <type_traits>

namespace tyx::test {

/// What \p value writes to a stream of Char.
template <class Char = wchar_t, class T>
std::basic_string<Char> streamed(const T &value)
{
    std::basic_ostringstream<Char> os;
    os << value;
    return os.str();
}

/// Reads \p text into \p value through a stream as wide as the text; true
/// when the stream failed.
template <class Text, class T>
bool readFails(const Text &text, T &value)
{
    using Char = std::remove_cvref_t<decltype(text[0])>;
    std::basic_istringstream<Char> is{std::basic_string<Char>(text)};
    is >> value;
    return is.fail();
}

} // namespace tyx::test
