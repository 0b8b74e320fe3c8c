// Named temporary file on a C stream, kept or deleted when it closes.
#pragma once

#include <cstddef>
#include <cstdio>
#include <iosfwd>

#include <tyx/TyxString.h>

namespace tyx {

/// A file on a C stream that may remove itself when it closes. Not copyable;
/// for one thread at a time.
class TYX_EXPORT TyxTempFile {
public:
    TyxTempFile() = default;
    TyxTempFile(const TyxTempFile &) = delete;
    TyxTempFile &operator=(const TyxTempFile &) = delete;
    /// close().
    ~TyxTempFile();

    /// Closes anything open, then opens the file \p name with the fopen(3)
    /// \p mode; with \p deleteOnClose, close() removes the file. Returns 0, or
    /// 1 after posting an Error: "The passed mode for file open cannot be
    /// null or empty." for a missing mode, "Unable to fopen(<mode>) temporary
    /// file '<name>'" when the file does not open.
    int open(const wchar_t *name, const wchar_t *mode, bool deleteOnClose);
    /// Opens a new file of a generated name, "tyx_" and eight letters and
    /// ".tmp", in $TMPDIR or else /tmp. The name is created exclusively, so an
    /// existing file is never opened; while a drawn name is taken another is
    /// drawn. Results and failures as above.
    int open(const wchar_t *mode, bool deleteOnClose);
    /// Closes the stream if it is open and, when asked at open, removes the
    /// file.
    void close();

    bool isOpen() const { return m_file != nullptr; }
    /// The stream; null when closed.
    std::FILE *filePtr() const { return m_file; }
    /// The name of the file last opened.
    const TyxString &fileName() const { return m_fileName; }

    /// fread(3) of \p size bytes: the number read; 0 when closed.
    size_t read(void *buffer, size_t size) const;
    /// fwrite(3) of \p size bytes: the number written; 0 when closed.
    size_t write(const void *buffer, size_t size) const;
    /// fseek(3): 0, or -1 on failure or when closed.
    int seek(long offset, int whence) const;
    /// Flushes the stream and writes the whole file, decoded from UTF-8, to
    /// \p os. The stream's position does not move; nothing is written when
    /// the file is closed or cannot be read.
    void fileToStream(std::wostream &os) const;

private:
    bool m_deleteOnClose = false;
    std::FILE *m_file = nullptr;
    TyxString m_fileName;
};

/// Removes the file \p fileName with remove(3): 0, or -1 with errno set.
TYX_EXPORT int remove(const TyxString &fileName);

namespace internal {
/// \p directory, a "/" when it does not end in one, \p prefix, eight random
/// letters and \p suffix. The letters come from rand(3), seeded with the time
/// on the first call in the process. The name may exist already.
TYX_EXPORT TyxString tempnam(const TyxString &prefix, const TyxString &suffix, const TyxString &directory);
} // namespace internal

} // namespace tyx
