// A metadata path cut into its segments.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <tyx/TyxString.h>

namespace tyx::internal {

/// A path "group/sub[2]/field" cut at "/". Spaces around segments are
/// removed and empty segments skipped. A segment ending in "]" is indexed.
class TYX_EXPORT TyxMetaDataSegmentedPath {
public:
    struct Segment {
        /// All ones when the segment has no index.
        uint64_t index = NO_INDEX;
        /// The text before the "[".
        TyxString name;
        /// The whole segment.
        TyxString fullName;
        bool hasIndex() const { return index != NO_INDEX; }
    };
    static constexpr uint64_t NO_INDEX = static_cast<uint64_t>(-1);
    /// A segment as views into the path text.
    struct SegmentView {
        uint64_t index = NO_INDEX;
        std::wstring_view name;
        std::wstring_view fullName;
    };
    /// Cuts \p path into at most \p capacity segments at \p out, without
    /// allocating. Returns the number of segments, which is above
    /// \p capacity when they did not all fit (the first \p capacity are filled).
    static size_t split(std::wstring_view path, SegmentView *out, size_t capacity, bool &namesSubset,
                        bool &isRoot);

    explicit TyxMetaDataSegmentedPath(const TyxString &path);

    const std::vector<Segment> &segments() const { return m_segments; }
    size_t size() const { return m_segments.size(); }
    bool empty() const { return m_segments.empty(); }
    const Segment &operator[](size_t i) const { return m_segments[i]; }
    const Segment &last() const { return m_segments.back(); }
    /// The path ends in "/": it names a subset, not a field.
    bool namesSubset() const { return m_namesSubset; }
    /// The path is "/" alone (after trimming).
    bool isRoot() const { return m_isRoot; }

    /// \p name followed by "[index]"; indexes below 100 come from a table
    /// built once.
    static TyxString indexName(const TyxString &name, uint64_t index);

private:
    std::vector<Segment> m_segments;
    bool m_namesSubset = false;
    bool m_isRoot = false;
};

} // namespace tyx::internal
