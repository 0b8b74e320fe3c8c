// URL parsing: component positions on the UTF-8 form of the text.
#include <tyx/TyxURL.h>

#include <algorithm>
#include <istream>
#include <limits>
#include <string>
#include <string_view>

namespace tyx {

namespace {

bool isSlash(char c) { return c == '/' || c == '\\'; }

/// A port is at most five digits behind any leading zeros, and at most 65535.
bool isValidPort(std::string_view port)
{
    if (port.empty())
        return false;
    size_t i = 0;
    while (i < port.size() && port[i] == '0')
        ++i;
    if (port.size() - i > 5)
        return false;
    unsigned int value = 0;
    for (; i < port.size(); ++i) {
        if (port[i] < '0' || port[i] > '9')
            return false;
        value = value * 10 + static_cast<unsigned int>(port[i] - '0');
    }
    return value <= 65535;
}

} // namespace

TyxURL::~TyxURL() = default;

TyxString TyxURL::className() const { return L"TyxURL"; }

TyxURL &TyxURL::operator=(const TyxString &text)
{
    m_text = text;
    parse();
    return *this;
}

void TyxURL::clear()
{
    m_text.clear();
    m_parts = {};
}

void TyxURL::parse()
{
    m_parts = {};
    const std::string utf8 = toUTF8(m_text);
    // Positions are 32-bit; a longer text has no components.
    if (utf8.empty() || utf8.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max()))
        return;

    const auto set = [this](Part part, size_t begin, size_t end) {
        m_parts[part] = {static_cast<int32_t>(begin), static_cast<int32_t>(end - begin)};
    };
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= 32; };

    size_t spanBegin = 0;
    size_t spanEnd = utf8.size();
    while (spanBegin < spanEnd && isBlank(utf8[spanBegin]))
        ++spanBegin;
    while (spanEnd > spanBegin && isBlank(utf8[spanEnd - 1]))
        --spanEnd;
    if (spanBegin == spanEnd)
        return;
    const std::string_view text(utf8.data(), spanEnd);

    size_t rest = spanBegin;
    const size_t colon = text.find(':', spanBegin);
    if (colon != std::string_view::npos) {
        set(Scheme, spanBegin, colon);
        rest = colon + 1;
    }
    while (rest < spanEnd && isSlash(text[rest]))
        ++rest;

    size_t authorityEnd = text.find_first_of("#/;?\\", rest);
    if (authorityEnd == std::string_view::npos)
        authorityEnd = spanEnd;

    if (authorityEnd > rest) {
        size_t hostBegin = rest;
        const size_t at = text.substr(0, authorityEnd).rfind('@');
        if (at != std::string_view::npos && at >= rest) {
            const size_t divider = text.substr(0, at).find(':', rest);
            if (divider != std::string_view::npos) {
                set(Username, rest, divider);
                set(Password, divider + 1, at);
            } else {
                set(Username, rest, at);
            }
            hostBegin = at + 1;
        }
        // A bracketed host (an IPv6 address) keeps its colons; without a
        // closing bracket the whole text is the host.
        size_t searchFrom = hostBegin;
        bool unclosed = false;
        if (hostBegin < authorityEnd && text[hostBegin] == '[') {
            const size_t close = text.substr(0, authorityEnd).find(']', hostBegin);
            if (close == std::string_view::npos)
                unclosed = true;
            else
                searchFrom = close + 1;
        }
        size_t divider = std::string_view::npos;
        if (!unclosed) {
            divider = text.substr(0, authorityEnd).rfind(':');
            if (divider != std::string_view::npos && divider < searchFrom)
                divider = std::string_view::npos;
        }
        if (divider == std::string_view::npos) {
            set(Host, hostBegin, authorityEnd);
        } else {
            set(Host, hostBegin, divider);
            if (isValidPort(text.substr(divider + 1, authorityEnd - divider - 1)))
                set(Port, divider + 1, authorityEnd);
        }
    }

    if (authorityEnd == spanEnd)
        return;
    const size_t hash = text.find('#', authorityEnd);
    const size_t pathRest = hash == std::string_view::npos ? spanEnd : hash;
    const size_t question = text.substr(0, pathRest).find('?', authorityEnd);
    const size_t pathEnd = question == std::string_view::npos ? pathRest : question;
    if (pathEnd > authorityEnd)
        set(Path, authorityEnd, pathEnd);
    if (question != std::string_view::npos)
        set(Query, question + 1, pathRest);
    if (hash != std::string_view::npos)
        set(Fragment, hash + 1, spanEnd);
}

TyxString TyxURL::component(Part part) const
{
    const Range range = m_parts[part];
    if (range.length <= 0)
        return {};
    const std::string utf8 = toUTF8(m_text);
    const auto begin = static_cast<size_t>(range.begin);
    const auto length = static_cast<size_t>(range.length);
    // The text may have changed under the positions through the base class;
    // never read beyond it.
    if (begin > utf8.size() || length > utf8.size() - begin)
        return {};
    return fromUTF8(std::string_view(utf8).substr(begin, length));
}

TyxString TyxURL::filename() const
{
    const std::string utf8 = toUTF8(path());
    if (utf8.empty())
        return {};
    size_t end = utf8.rfind(';');
    if (end == std::string::npos || end == 0)
        end = utf8.size();
    size_t begin = utf8.find_last_of("/\\", end == 0 ? 0 : end - 1);
    begin = begin == std::string::npos ? 0 : begin + 1;
    if (begin > end)
        begin = end;
    return fromUTF8(std::string_view(utf8).substr(begin, end - begin));
}

// The path's positions count bytes of the UTF-8 form but index the wide text
// here, so non-ASCII text before the path shifts the cut and non-ASCII text
// inside it moves the end. The range is kept inside the wide text.
TyxStrList TyxURL::parsedPath() const
{
    TyxStrList segments;
    const Range range = m_parts[Path];
    if (range.length < 2)
        return segments;
    const size_t last =
        std::min(static_cast<size_t>(range.begin) + static_cast<size_t>(range.length), m_text.size());
    size_t begin = static_cast<size_t>(range.begin) + 1;
    while (begin < last) {
        size_t end = m_text.find(L'/', begin);
        if (end == TyxString::npos || end > last)
            end = last;
        if (end > begin)
            segments.push_back(m_text.substr(begin, end - begin));
        begin = end + 1;
    }
    return segments;
}

std::wistream &operator>>(std::wistream &is, TyxURL &url)
{
    TyxURI uri;
    is >> uri;
    url = uri.text();
    return is;
}

std::istream &operator>>(std::istream &is, TyxURL &url)
{
    TyxURI uri;
    is >> uri;
    url = uri.text();
    return is;
}

} // namespace tyx
