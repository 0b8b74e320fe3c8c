// Cutting metadata paths into segments, and the names of repeating elements.
#include <tyx/internal/TyxMetaDataSegmentedPath.h>

#include <algorithm>
#include <array>
#include <cwchar>
#include <string_view>

namespace tyx::internal {

namespace {

// Spaces and tabs removed from both ends; all blank gives an empty view.
std::wstring_view strip(std::wstring_view text)
{
    const size_t first = text.find_first_not_of(L" \t\r\n");
    if (first == std::wstring_view::npos)
        return {};
    const size_t last = text.find_last_not_of(L" \t\r\n");
    return text.substr(first, last - first + 1);
}

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

} // namespace

size_t TyxMetaDataSegmentedPath::split(std::wstring_view path, SegmentView *out, size_t capacity,
                                       bool &namesSubset, bool &isRoot)
{
    const std::wstring_view trimmed = strip(path);
    isRoot = trimmed == L"/";
    namesSubset = !trimmed.empty() && trimmed.back() == L'/';
    size_t count = 0;
    size_t start = 0;
    while (start <= trimmed.size()) {
        size_t end = trimmed.find(L'/', start);
        if (end == std::wstring_view::npos)
            end = trimmed.size();
        const std::wstring_view text = strip(trimmed.substr(start, end - start));
        start = end + 1;
        if (text.empty())
            continue;
        if (count++ >= capacity)
            continue;
        SegmentView &segment = out[count - 1];
        segment.fullName = text;
        segment.name = text;
        segment.index = NO_INDEX;
        const size_t open = text.rfind(L'[');
        // A well-formed index only: "[" followed by digits and the final "]".
        bool indexed = text.back() == L']' && open != std::wstring_view::npos && open + 2 < text.size();
        uint64_t index = 0;
        for (size_t i = open + 1; indexed && i + 1 < text.size(); ++i) {
            if (!isDigit(text[i]))
                indexed = false;
            else
                index = index * 10 + static_cast<uint64_t>(text[i] - L'0');
        }
        if (indexed) {
            segment.index = index;
            segment.name = strip(text.substr(0, open));
        }
    }
    return count;
}

TyxMetaDataSegmentedPath::TyxMetaDataSegmentedPath(const TyxString &path)
{
    std::vector<SegmentView> views(static_cast<size_t>(std::count(path.begin(), path.end(), L'/')) + 1);
    const size_t count = split(path, views.data(), views.size(), m_namesSubset, m_isRoot);
    m_segments.resize(count);
    for (size_t i = 0; i < count; ++i) {
        m_segments[i].index = views[i].index;
        m_segments[i].name.assign(views[i].name.data(), views[i].name.size());
        m_segments[i].fullName.assign(views[i].fullName.data(), views[i].fullName.size());
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
