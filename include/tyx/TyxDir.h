// Walk over the names in a directory.
#pragma once

#include <memory>

#include <tyx/TyxString.h>

namespace tyx {

namespace internal {
class TyxDirState;
}

/// The entries of one directory whose names match a pattern. A walk lists
/// files and subdirectories alike, never "." or "..", and in ascending byte
/// order of the UTF-8 names, so every walk over the same directory is the
/// same. A directory that cannot be read gives an empty walk.
class TYX_EXPORT TyxDir {
public:
    /// A position in one walk. Copies are independent positions in the same
    /// walk; the entry names are read when the walk begins.
    class TYX_EXPORT iterator {
    public:
        /// The end of every walk.
        iterator();
        iterator(const iterator &other);
        iterator &operator=(const iterator &other);
        virtual ~iterator();

        /// The name of the current entry, without the directory; empty at
        /// the end.
        const TyxString &operator*() const;
        const TyxString *operator->() const { return &**this; }
        /// Moves to the next entry; after the last one it equals end().
        iterator &operator++();
        iterator operator++(int);

        /// Two positions are equal when both are at an end, or when they are
        /// at the same entry of the same walk.
        bool operator==(const iterator &other) const;
        bool operator!=(const iterator &other) const { return !(*this == other); }

    private:
        friend class TyxDir;
        explicit iterator(std::shared_ptr<const internal::TyxDirState> state);
        bool atEnd() const;

        std::shared_ptr<const internal::TyxDirState> m_state;
        size_t m_index = 0;
    };

    TyxDir() = default;
    explicit TyxDir(const TyxString &path) : m_path(path) {}

    /// The directory to walk; the empty path walks the current directory.
    void setPath(const TyxString &path) { m_path = path; }
    const TyxString &path() const { return m_path; }

    /// Starts a walk over the names that match \p pattern, a shell wildcard
    /// pattern as fnmatch(3) takes it ("*" matches names that begin with "."
    /// too). The iterator stands on the first entry, or at the end.
    iterator begin(const TyxString &pattern = L"*") const;
    /// The end iterator.
    iterator end() const { return {}; }

private:
    TyxString m_path;
};

} // namespace tyx
