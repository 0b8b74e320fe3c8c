// Temporary files: generated names, exclusive creation and removal on close.
#include <tyx/TyxTempFile.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <ostream>
#include <unistd.h>

#include "core/TyxPost.h"
#include "file/TyxNativePath.h"

namespace tyx {

namespace {

// Tries before a generated name is given up on. Only names that are taken
// make another try, so reaching this means the directory is flooded.
constexpr int maxNameDraws = 10000;

TyxString textOrEmpty(const wchar_t *text) { return text ? TyxString(text) : TyxString(); }

TyxString defaultDirectory()
{
    const char *directory = std::getenv("TMPDIR");
    return directory && *directory ? fromUTF8(directory) : TyxString(L"/tmp");
}

/// The mode for the C library, with "e" (close-on-exec) added.
std::string nativeMode(const wchar_t *mode) { return toUTF8(mode) + "e"; }

void postOpenFailure(const TyxString &mode, const TyxString &name)
{
    TYX_POST_ERROR(L"Unable to fopen(" + mode + L") temporary file '" + name + L"'");
}

bool postIfNoMode(const wchar_t *mode)
{
    if (mode && *mode)
        return false;
    TYX_POST_ERROR(L"The passed mode for file open cannot be null or empty.");
    return true;
}

} // namespace

TyxTempFile::~TyxTempFile() { close(); }

int TyxTempFile::open(const wchar_t *name, const wchar_t *mode, bool deleteOnClose)
{
    close();
    m_deleteOnClose = deleteOnClose;
    if (postIfNoMode(mode))
        return 1;
    m_fileName = textOrEmpty(name);
    std::string nativeName;
    if (internal::nativePath(m_fileName, nativeName))
        m_file = std::fopen(nativeName.c_str(), nativeMode(mode).c_str());
    if (!m_file) {
        postOpenFailure(mode, m_fileName);
        return 1;
    }
    return 0;
}

int TyxTempFile::open(const wchar_t *mode, bool deleteOnClose)
{
    close();
    m_deleteOnClose = deleteOnClose;
    if (postIfNoMode(mode))
        return 1;
    const TyxString directory = defaultDirectory();
    int fd = -1;
    std::string nativeName;
    for (int draw = 0; draw < maxNameDraws && fd < 0; ++draw) {
        m_fileName = internal::tempnam(L"tyx_", L".tmp", directory);
        if (!internal::nativePath(m_fileName, nativeName))
            break;
        fd = ::open(nativeName.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (fd < 0 && errno != EEXIST && errno != EINTR)
            break;
    }
    if (fd >= 0) {
        m_file = ::fdopen(fd, nativeMode(mode).c_str());
        if (!m_file) {
            // The file is ours, made a moment ago: it goes again.
            ::close(fd);
            ::unlink(nativeName.c_str());
        }
    }
    if (!m_file) {
        postOpenFailure(mode, m_fileName);
        return 1;
    }
    return 0;
}

void TyxTempFile::close()
{
    if (!m_file)
        return;
    std::fclose(m_file);
    m_file = nullptr;
    if (m_deleteOnClose)
        remove(m_fileName);
}

size_t TyxTempFile::read(void *buffer, size_t size) const
{
    return m_file ? std::fread(buffer, 1, size, m_file) : 0;
}

size_t TyxTempFile::write(const void *buffer, size_t size) const
{
    return m_file ? std::fwrite(buffer, 1, size, m_file) : 0;
}

int TyxTempFile::seek(long offset, int whence) const
{
    return m_file ? std::fseek(m_file, offset, whence) : -1;
}

void TyxTempFile::fileToStream(std::wostream &os) const
{
    if (!m_file)
        return;
    std::fflush(m_file);
    // A second stream reads the file, so that a stream opened for writing
    // only can be copied too and its own position stays where it is.
    std::string nativeName;
    if (!internal::nativePath(m_fileName, nativeName))
        return;
    std::FILE *in = std::fopen(nativeName.c_str(), "rbe");
    if (!in)
        return;
    std::string contents;
    char chunk[4096];
    size_t count;
    while ((count = std::fread(chunk, 1, sizeof chunk, in)) > 0)
        contents.append(chunk, count);
    std::fclose(in);
    os << fromUTF8(contents);
}

int remove(const TyxString &fileName)
{
    std::string native;
    if (!internal::nativePath(fileName, native))
        return -1;
    return std::remove(native.c_str());
}

namespace internal {

TyxString tempnam(const TyxString &prefix, const TyxString &suffix, const TyxString &directory)
{
    static std::once_flag seeded;
    std::call_once(seeded, [] { std::srand(static_cast<unsigned int>(std::time(nullptr))); });
    TyxString letters(8, L'a');
    for (wchar_t &letter : letters) {
        const wchar_t base = (std::rand() % 2) ? L'a' : L'A';
        letter = static_cast<wchar_t>(base + std::rand() % 26);
    }
    TyxString name = directory;
    if (!name.empty() && name.back() != L'/')
        name += L'/';
    return name + prefix + letters + suffix;
}

} // namespace internal

} // namespace tyx
