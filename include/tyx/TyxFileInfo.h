// A file path in normal form and the questions asked about it.
#pragma once

#include <tyx/TyxString.h>

struct stat;

namespace tyx {

/// One path, stored in a normal form: every "\" becomes "/", "/./" becomes
/// "/", doubled "/" become one, a leading "./" goes and a trailing "/" goes
/// unless the path is "/", so "./" becomes the empty path. The empty path is
/// the default. Copies, comparisons and ordering are those of the stored path.
class TYX_EXPORT TyxFileInfo {
public:
    TyxFileInfo() = default;
    explicit TyxFileInfo(const TyxString &filePath) { setFile(filePath); }
    explicit TyxFileInfo(TyxString &&filePath) { setFile(std::move(filePath)); }

    /// Stores \p filePath in normal form.
    void setFile(const TyxString &filePath);
    void setFile(TyxString &&filePath);

    /// The stored path.
    const TyxString &filePath() const { return m_filePath; }
    /// The part before the last "/": "." when there is none, "/" for a file
    /// in the root.
    TyxString path() const;
    /// The file name, the part after the last "/", up to its last ".".
    TyxString baseName() const;
    /// What follows the last "." of the file name; empty when there is none.
    TyxString suffix() const;
    /// path() of absoluteFilePath().
    TyxString absolutePath() const;
    /// The stored path when it is absolute, otherwise the current directory
    /// joined with it; an empty path stays empty. When the current directory
    /// cannot be read the stored path comes back as it is.
    TyxString absoluteFilePath() const;
    /// The path begins with "/".
    bool isAbsolute() const { return !m_filePath.empty() && m_filePath.front() == L'/'; }
    /// The path names a directory; false when it cannot be examined.
    bool isDir() const;
    /// The path names a regular file; false when it cannot be examined.
    bool isFile() const;
    /// access(2) on the path with \p mode (F_OK, R_OK, W_OK, X_OK): 0 or -1.
    int access(int mode) const;
    /// stat(2) on the path into \p buffer: 0 or -1.
    int stat(struct ::stat &buffer) const;
    /// The fullest physical form of the path: realpath(3) when it succeeds.
    /// Otherwise the absolute path with "." and ".." resolved by text, whose
    /// longest existing prefix goes through realpath(3), so links and the
    /// names that do exist are resolved. An empty path stays empty.
    TyxString canonicalize() const;

    bool operator==(const TyxFileInfo &other) const { return m_filePath == other.m_filePath; }
    bool operator!=(const TyxFileInfo &other) const { return m_filePath != other.m_filePath; }
    bool operator<(const TyxFileInfo &other) const { return m_filePath < other.m_filePath; }

private:
    void normalize();

    TyxString m_filePath;
};

/// TyxFileInfo(path).canonicalize().
TYX_EXPORT TyxString canonicalizePath(const TyxString &path);

} // namespace tyx
