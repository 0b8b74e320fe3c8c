// Directory state of the process on top of the POSIX directory calls.
#include <tyx/TyxDirControl.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "file/TyxNativePath.h"

namespace tyx {

namespace {

/// The drive number: 1 for A, 3 for C.
std::atomic<int> &driveNumber()
{
    static std::atomic<int> number{3};
    return number;
}

} // namespace

int TyxDirControl::chdir(const TyxString &path)
{
    std::string native;
    if (!internal::nativePath(path, native))
        return -1;
    return ::chdir(native.c_str());
}

int TyxDirControl::mkdir(const TyxString &path, int mode)
{
    std::string native;
    if (!internal::nativePath(path, native))
        return -1;
    return ::mkdir(native.c_str(), static_cast<mode_t>(mode));
}

int TyxDirControl::rmdir(const TyxString &path)
{
    std::string native;
    if (!internal::nativePath(path, native))
        return -1;
    return ::rmdir(native.c_str());
}

TyxString TyxDirControl::getcwd()
{
    // With a null buffer the C library allocates one as long as needed.
    std::unique_ptr<char, decltype(&std::free)> current(::getcwd(nullptr, 0), &std::free);
    if (!current)
        return {};
    return fromUTF8(current.get());
}

int TyxDirControl::chdrive(wchar_t drive)
{
    const wchar_t upper = (drive >= L'a' && drive <= L'z') ? static_cast<wchar_t>(drive - 32) : drive;
    if (upper < L'A' || upper > L'Z')
        return -1;
    driveNumber().store(static_cast<int>(upper) - 64);
    return 0;
}

wchar_t TyxDirControl::getdrive() { return static_cast<wchar_t>(driveNumber().load() + 64); }

} // namespace tyx
