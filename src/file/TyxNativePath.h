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
    // Checked on the wide text: the UTF-8 form ends at the first null.
    if (path.find(L'\0') != TyxString::npos) {
        native.clear();
        errno = EINVAL;
        return false;
    }
    native = toUTF8(path);
    return true;
}

} // namespace tyx::internal
