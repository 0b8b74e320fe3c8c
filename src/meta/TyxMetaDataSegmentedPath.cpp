// Cutting metadata paths into segments, and the names of repeating elements.
#include <tyx/internal/TyxMetaDataSegmentedPath.h>

#include <array>
#include <cwchar>
#include <cwctype>

namespace tyx::internal {

namespace {

// Spaces and tabs removed from both ends; all blank gives an empty text.
TyxString strip(const TyxString &text)
{
    const size_t first = text.find_first_not_of(L" \t\r\n");
    if (first == TyxString::npos)
        return TyxString();
    const size_t last = text.find_last_not_of(L" \t\r\n");
    return TyxString(text.substr(first, last - first + 1));
}

} // namespace

TyxMetaDataSegmentedPath::TyxMetaDataSegmentedPath(const TyxString &path)
{
    const TyxString trimmed = strip(path);
    m_isRoot = trimmed == L"/";
    m_namesSubset = !trimmed.empty() && trimmed.back() == L'/';
    size_t start = 0;
    while (start <= trimmed.size()) {
        size_t end = trimmed.find(L'/', start);
        if (end == TyxString::npos)
            end = trimmed.size();
        const TyxString text = strip(trimmed.substr(start, end - start));
        start = end + 1;
        if (text.empty())
            continue;
        Segment segment;
        segment.fullName = text;
        segment.name = text;
        const size_t open = text.rfind(L'[');
        // A well-formed index only: "[" followed by digits and the final "]".
        if (text.back() == L']' && open != TyxString::npos && open + 2 < text.size() &&
            std::iswdigit(text[open + 1])) {
            uint64_t index = 0;
            bool digits = true;
            for (size_t i = open + 1; i + 1 < text.size(); ++i) {
                if (!std::iswdigit(text[i])) {
                    digits = false;
                    break;
                }
                index = index * 10 + static_cast<uint64_t>(text[i] - L'0');
            }
            if (digits) {
                segment.index = index;
                segment.name = strip(text.substr(0, open));
            }
        }
        m_segments.push_back(std::move(segment));
    }
}

TyxString TyxMetaDataSegmentedPath::indexName(const TyxString &name, uint64_t index)
{
    static const std::array<TyxString, 100> table = [] {
        std::array<TyxString, 100> names;
        for (size_t i = 0; i < names.size(); ++i)
            names[i] = L"[" + std::to_wstring(i) + L"]";
        return names;
    }();
    if (index < table.size())
        return name + table[index];
    wchar_t buffer[32];
    std::swprintf(buffer, sizeof buffer / sizeof buffer[0], L"[%zu]", static_cast<size_t>(index));
    return name + buffer;
}

} // namespace tyx::internal
