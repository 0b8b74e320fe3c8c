// Three-part version number.
#include <tyx/TyxVersion.h>

#include <istream>
#include <ostream>
#include <tuple>

namespace tyx {

// Only the first line counts, as operator>> reads one line.
TyxVersion::TyxVersion(const TyxString &text) { read(text.substr(0, text.find(L'\n'))); }

bool TyxVersion::operator<(const TyxVersion &other) const
{
    return std::tie(m_major, m_minor, m_build) < std::tie(other.m_major, other.m_minor, other.m_build);
}

TyxString TyxVersion::toString(const TyxString &delimiter, bool withBuild) const
{
    TyxString text = std::to_wstring(m_major) + delimiter + std::to_wstring(m_minor);
    if (withBuild)
        text += delimiter + std::to_wstring(m_build);
    return text;
}

void TyxVersion::read(const TyxString &text)
{
    const std::vector<TyxString> fields = splitStr(text, L".", true);
    unsigned int *const targets[] = {&m_major, &m_minor, &m_build};
    for (size_t i = 0; i < fields.size() && i < 3; ++i)
        *targets[i] = static_cast<unsigned int>(strtoul(fields[i], 10));
}

std::wostream &operator<<(std::wostream &os, const TyxVersion &version)
{
    return os << static_cast<TyxString>(version);
}

std::ostream &operator<<(std::ostream &os, const TyxVersion &version)
{
    return os << static_cast<TyxString>(version);
}

std::wistream &operator>>(std::wistream &is, TyxVersion &version)
{
    TyxString line;
    getline(is, line);
    version.read(line);
    return is;
}

std::istream &operator>>(std::istream &is, TyxVersion &version)
{
    TyxString line;
    getline(is, line);
    version.read(line);
    return is;
}

} // namespace tyx
