// The process's directory state: current directory, drive letter, and the
// creation and removal of directories.
#pragma once

#include <tyx/TyxString.h>

namespace tyx {

/// Static wrappers over the process's directory calls.
class TYX_EXPORT TyxDirControl {
public:
    /// Separates the directories of a list of directories in one text.
    static constexpr wchar_t TYX_DIR_LIST_SEPARATOR = L';';
    /// The path length that callers may assume as a minimum; getcwd() has no
    /// limit of its own.
    static constexpr int s_pathMax = 260;

    TyxDirControl() = delete;

    /// Makes \p path the current directory: 0, or -1 with errno set.
    static int chdir(const TyxString &path);
    /// Creates the directory \p path with the permission bits \p mode, less
    /// the process's umask: 0, or -1 with errno set.
    static int mkdir(const TyxString &path, int mode = 0777);
    /// Removes the empty directory \p path: 0, or -1 with errno set.
    static int rmdir(const TyxString &path);
    /// The current directory, of any length; empty when it cannot be read.
    static TyxString getcwd();
    /// Linux has no drives: the letter is only remembered for the process.
    /// \p drive is taken in upper case; a letter from A to Z gives 0, anything
    /// else -1 and no change.
    static int chdrive(wchar_t drive);
    /// The letter last given to chdrive(), "C" until then.
    static wchar_t getdrive();
};

} // namespace tyx
