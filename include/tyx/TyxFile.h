// Low-level file on a descriptor, with positioned reads and writes that are
// safe to share between threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>

#include <tyx/TyxURI.h>

struct stat;

namespace tyx {

/// A file opened with open(2). The positioned read() and write() hold a lock
/// across the seek and the transfer, so threads sharing one TyxFile never
/// interleave them; every other operation takes no lock and is for one
/// thread at a time. The operations are const: the descriptor is not part of
/// the object's value.
class TYX_EXPORT TyxFile {
public:
    /// The failure result of read() and write().
    static constexpr size_t ERROR_CODE = static_cast<size_t>(-1);

    TyxFile() = default;
    TyxFile(const TyxFile &) = delete;
    TyxFile &operator=(const TyxFile &) = delete;
    /// Closes the descriptor if it is open.
    ~TyxFile();

    /// Closes any open descriptor, stores \p name and opens it with \p flags
    /// (O_RDONLY, O_RDWR | O_CREAT and so on; close-on-exec is added) and,
    /// for a new file, the permission bits \p mode. Returns 0, or -1 with the
    /// descriptor left at -1 and errno set.
    int open(const TyxURI &name, int flags, int mode = 0666);
    /// Closes the descriptor if it is open; a closed file is left alone.
    void close();
    bool isOpen() const { return m_fd >= 0; }
    /// The descriptor, -1 when closed.
    int fileDescriptor() const { return m_fd; }
    /// The name given to the last open().
    const TyxURI &fileName() const { return m_name; }

    /// Reads up to \p size bytes at the current position: the number read,
    /// or ERROR_CODE.
    size_t read(void *buffer, size_t size) const;
    /// Writes up to \p size bytes at the current position: the number
    /// written, or ERROR_CODE.
    size_t write(const void *buffer, size_t size) const;
    /// Under the lock, seeks to \p offset and reads there; ERROR_CODE when the
    /// seek or the read fails. The file position ends behind the bytes read.
    size_t read(int64_t offset, void *buffer, size_t size) const;
    /// Under the lock, seeks to \p offset and writes there; ERROR_CODE when
    /// the seek or the write fails.
    size_t write(int64_t offset, const void *buffer, size_t size) const;
    /// lseek(2) with \p whence (SEEK_SET, SEEK_CUR, SEEK_END): the new
    /// position, or -1.
    int64_t lseek(int64_t offset, int whence) const;
    /// The current position, or -1.
    int64_t offset() const;
    /// fstat(2) on the descriptor into \p buffer: 0 or -1.
    int stat(struct ::stat &buffer) const;

private:
    mutable std::mutex m_mutex;
    int m_fd = -1;
    TyxURI m_name;
};

} // namespace tyx
