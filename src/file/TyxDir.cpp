// Directory walks over opendir(3) and readdir(3).
#include <tyx/TyxDir.h>

#include <algorithm>
#include <dirent.h>
#include <fnmatch.h>
#include <string>
#include <string_view>
#include <vector>

#include "file/TyxNativePath.h"

namespace tyx {

namespace internal {

/// The names of one walk, read and sorted when it begins; the directory is
/// closed by then, so a walk holds no system handle.
class TyxDirState {
public:
    std::vector<TyxString> names;
};

} // namespace internal

namespace {

std::vector<std::string> matchingNames(const TyxString &path, const TyxString &pattern)
{
    std::vector<std::string> names;
    std::string directory;
    std::string nativePattern;
    if (!internal::nativePath(path.empty() ? TyxString(L".") : path, directory) ||
        !internal::nativePath(pattern, nativePattern))
        return names;
    DIR *handle = ::opendir(directory.c_str());
    if (!handle)
        return names;
    while (const dirent *entry = ::readdir(handle)) {
        const std::string_view name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        if (::fnmatch(nativePattern.c_str(), entry->d_name, 0) == 0)
            names.emplace_back(name);
    }
    ::closedir(handle);
    // std::string compares bytes as unsigned char.
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TyxDir::iterator::iterator() = default;
TyxDir::iterator::iterator(const iterator &other) = default;
TyxDir::iterator &TyxDir::iterator::operator=(const iterator &other) = default;
TyxDir::iterator::~iterator() = default;

TyxDir::iterator::iterator(std::shared_ptr<const internal::TyxDirState> state) : m_state(std::move(state)) {}

bool TyxDir::iterator::atEnd() const { return !m_state || m_index >= m_state->names.size(); }

const TyxString &TyxDir::iterator::operator*() const
{
    static const TyxString none;
    return atEnd() ? none : m_state->names[m_index];
}

TyxDir::iterator &TyxDir::iterator::operator++()
{
    if (!atEnd())
        ++m_index;
    return *this;
}

TyxDir::iterator TyxDir::iterator::operator++(int)
{
    const iterator before = *this;
    ++*this;
    return before;
}

bool TyxDir::iterator::operator==(const iterator &other) const
{
    const bool end = atEnd();
    if (end || other.atEnd())
        return end == other.atEnd();
    return m_state == other.m_state && m_index == other.m_index;
}

TyxDir::iterator TyxDir::begin(const TyxString &pattern) const
{
    auto state = std::make_shared<internal::TyxDirState>();
    for (const std::string &name : matchingNames(m_path, pattern))
        state->names.push_back(fromUTF8(name));
    return iterator(std::move(state));
}

} // namespace tyx
