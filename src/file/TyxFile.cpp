// Low-level file on a POSIX descriptor.
#include <tyx/TyxFile.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "file/TyxNativePath.h"

namespace tyx {

namespace {

size_t transferResult(ssize_t result)
{
    return result < 0 ? TyxFile::ERROR_CODE : static_cast<size_t>(result);
}

} // namespace

TyxFile::~TyxFile() { close(); }

int TyxFile::open(const TyxURI &name, int flags, int mode)
{
    close();
    m_name = name;
    std::string native;
    if (!internal::nativePath(name.text(), native))
        return -1;
    do {
        m_fd = ::open(native.c_str(), flags | O_CLOEXEC, static_cast<mode_t>(mode));
    } while (m_fd < 0 && errno == EINTR);
    return m_fd < 0 ? -1 : 0;
}

void TyxFile::close()
{
    if (m_fd < 0)
        return;
    // The descriptor is released even when close(2) reports EINTR, so it is
    // never closed twice.
    ::close(m_fd);
    m_fd = -1;
}

size_t TyxFile::read(void *buffer, size_t size) const
{
    ssize_t result;
    do {
        result = ::read(m_fd, buffer, size);
    } while (result < 0 && errno == EINTR);
    return transferResult(result);
}

size_t TyxFile::write(const void *buffer, size_t size) const
{
    ssize_t result;
    do {
        result = ::write(m_fd, buffer, size);
    } while (result < 0 && errno == EINTR);
    return transferResult(result);
}

size_t TyxFile::read(int64_t offset, void *buffer, size_t size) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (lseek(offset, SEEK_SET) < 0)
        return ERROR_CODE;
    return read(buffer, size);
}

size_t TyxFile::write(int64_t offset, const void *buffer, size_t size) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (lseek(offset, SEEK_SET) < 0)
        return ERROR_CODE;
    return write(buffer, size);
}

int64_t TyxFile::lseek(int64_t offset, int whence) const
{
    return ::lseek(m_fd, static_cast<off_t>(offset), whence);
}

int64_t TyxFile::offset() const { return lseek(0, SEEK_CUR); }

int TyxFile::stat(struct ::stat &buffer) const { return ::fstat(m_fd, &buffer); }

} // namespace tyx
