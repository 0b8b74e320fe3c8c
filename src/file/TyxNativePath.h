// Private conversion of library paths to the byte strings the system calls take.
#pragma once

#include <cerrno>
#include <string>

#include <tyx/TyxString.h>

namespace tyx::internal {

/// The UTF-8 form of \p path in \p native. A path holding a null character
/// names no file: the answer is then false and errno is EINVAL, so that the
/// system never sees a shortened name.
inline bool nativePath(const TyxString &path, std::string &native)
{
    native = toUTF8(path);
    if (native.find('\0') != std::string::npos) {
        errno = EINVAL;
        return false;
    }
    return true;
}

} // namespace tyx::internal
