// File paths: the normal form, the parts of a path and its physical form.
#include <tyx/TyxFileInfo.h>

#include <climits>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <tyx/TyxDirControl.h>

#include "file/TyxNativePath.h"

namespace tyx {

namespace {

/// realpath(3) of \p path, or nothing. Paths the system would refuse as too
/// long are not handed to it.
std::optional<std::string> realPath(const std::string &path)
{
    if (path.empty() || path.size() >= PATH_MAX || path.find('\0') != std::string::npos)
        return std::nullopt;
    std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    if (!real)
        return std::nullopt;
    return std::string(real.get());
}

/// The segments of an absolute path with "." dropped and ".." taking away the
/// segment before it; ".." in the root stays in the root.
std::vector<std::string_view> resolveDots(std::string_view absolute)
{
    std::vector<std::string_view> segments;
    size_t begin = 0;
    while (begin < absolute.size()) {
        size_t end = absolute.find('/', begin);
        if (end == std::string_view::npos)
            end = absolute.size();
        const std::string_view segment = absolute.substr(begin, end - begin);
        if (segment == "..") {
            if (!segments.empty())
                segments.pop_back();
        } else if (!segment.empty() && segment != ".") {
            segments.push_back(segment);
        }
        begin = end + 1;
    }
    return segments;
}

bool statPath(const TyxString &path, struct ::stat &buffer)
{
    std::string native;
    return internal::nativePath(path, native) && ::stat(native.c_str(), &buffer) == 0;
}

} // namespace

void TyxFileInfo::setFile(const TyxString &filePath)
{
    m_filePath = filePath;
    normalize();
}

void TyxFileInfo::setFile(TyxString &&filePath)
{
    m_filePath = std::move(filePath);
    normalize();
}

void TyxFileInfo::normalize()
{
    if (m_filePath.empty())
        return;
    // One pass does all the rewriting: backslashes turn into slashes, a "."
    // between two slashes goes, and a slash after a slash is dropped. Since
    // the output never holds "/./" or "//", the result is the same as
    // repeating each rule until nothing changes, in linear time.
    TyxString out;
    out.reserve(m_filePath.size());
    for (wchar_t unit : m_filePath) {
        if (unit == L'\\')
            unit = L'/';
        if (unit == L'/') {
            const size_t n = out.size();
            if (n >= 2 && out[n - 1] == L'.' && out[n - 2] == L'/') {
                out.pop_back();
                continue;
            }
            if (n >= 1 && out[n - 1] == L'/')
                continue;
        }
        out += unit;
    }
    if (out.size() >= 2 && out[0] == L'.' && out[1] == L'/')
        out.erase(0, 2);
    if (out.size() > 1 && out.back() == L'/')
        out.pop_back();
    // "./" loses its leading "./" like any other path and is left empty.
    m_filePath = std::move(out);
}

TyxString TyxFileInfo::path() const
{
    const size_t slash = m_filePath.rfind(L'/');
    if (slash == TyxString::npos)
        return L".";
    if (slash == 0)
        return L"/";
    return m_filePath.substr(0, slash);
}

TyxString TyxFileInfo::baseName() const
{
    const size_t slash = m_filePath.rfind(L'/');
    const TyxString name = m_filePath.substr(slash == TyxString::npos ? 0 : slash + 1);
    return name.substr(0, name.rfind(L'.'));
}

TyxString TyxFileInfo::suffix() const
{
    const size_t slash = m_filePath.rfind(L'/');
    const size_t nameStart = slash == TyxString::npos ? 0 : slash + 1;
    const size_t dot = m_filePath.rfind(L'.');
    if (dot == TyxString::npos || dot < nameStart)
        return {};
    return m_filePath.substr(dot + 1);
}

TyxString TyxFileInfo::absolutePath() const { return TyxFileInfo(absoluteFilePath()).path(); }

TyxString TyxFileInfo::absoluteFilePath() const
{
    if (m_filePath.empty() || isAbsolute())
        return m_filePath;
    const TyxString current = TyxDirControl::getcwd();
    if (current.empty())
        return m_filePath;
    return TyxFileInfo(current + L"/" + m_filePath).filePath();
}

bool TyxFileInfo::isDir() const
{
    struct ::stat buffer {};
    return statPath(m_filePath, buffer) && S_ISDIR(buffer.st_mode);
}

bool TyxFileInfo::isFile() const
{
    struct ::stat buffer {};
    return statPath(m_filePath, buffer) && S_ISREG(buffer.st_mode);
}

int TyxFileInfo::access(int mode) const
{
    std::string native;
    if (!internal::nativePath(m_filePath, native))
        return -1;
    return ::access(native.c_str(), mode);
}

int TyxFileInfo::stat(struct ::stat &buffer) const { return statPath(m_filePath, buffer) ? 0 : -1; }

TyxString TyxFileInfo::canonicalize() const
{
    if (m_filePath.empty())
        return {};
    std::string native;
    if (internal::nativePath(m_filePath, native)) {
        if (const std::optional<std::string> real = realPath(native))
            return fromUTF8(*real);
    }
    const TyxString absolute = absoluteFilePath();
    // A path holding a null character names no file, and its UTF-8 form would
    // end at the null: it is not resolved.
    if (absolute.empty() || absolute.front() != L'/' || absolute.find(L'\0') != TyxString::npos)
        return absolute;

    const std::string absoluteNative = toUTF8(absolute);
    const std::vector<std::string_view> segments = resolveDots(absoluteNative);
    std::string resolved;
    std::vector<size_t> prefixEnd;
    prefixEnd.reserve(segments.size());
    for (const std::string_view segment : segments) {
        resolved += '/';
        resolved += segment;
        prefixEnd.push_back(resolved.size());
    }
    // The longest prefix that exists goes through realpath(3); the segments
    // behind it are appended as text.
    for (size_t k = segments.size(); k > 0; --k) {
        const size_t end = prefixEnd[k - 1];
        if (end >= PATH_MAX)
            continue;
        if (const std::optional<std::string> real = realPath(resolved.substr(0, end))) {
            std::string result = *real;
            if (result == "/")
                result.clear();
            result.append(resolved, end, std::string::npos);
            return fromUTF8(result);
        }
    }
    return resolved.empty() ? TyxString(L"/") : fromUTF8(resolved);
}

TyxString canonicalizePath(const TyxString &path) { return TyxFileInfo(path).canonicalize(); }

} // namespace tyx
