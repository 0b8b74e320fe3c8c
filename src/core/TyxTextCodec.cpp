// Text conversions: the strict UTF-8 codec, the current multibyte code page
// and the C-style conversion functions over them.
#include <tyx/TyxString.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cwchar>
#include <optional>

namespace tyx {

namespace {

bool isScalarValue(uint32_t cp) { return cp < 0xD800 || (cp > 0xDFFF && cp <= 0x10FFFF); }

/// Strict UTF-8 encoding; nothing when a unit is not a Unicode scalar value.
/// The output is sized once and written through a pointer.
std::optional<std::string> encodeUtf8(std::wstring_view text)
{
    size_t bytes = 0;
    for (wchar_t unit : text) {
        const auto cp = static_cast<uint32_t>(unit);
        if (!isScalarValue(cp))
            return std::nullopt;
        bytes += 1 + (cp >= 0x80) + (cp >= 0x800) + (cp >= 0x10000);
    }
    std::string out(bytes, '\0');
    char *p = out.data();
    for (wchar_t unit : text) {
        const auto cp = static_cast<uint32_t>(unit);
        if (cp < 0x80) {
            *p++ = static_cast<char>(cp);
        } else if (cp < 0x800) {
            *p++ = static_cast<char>(0xC0 | (cp >> 6));
            *p++ = static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            *p++ = static_cast<char>(0xE0 | (cp >> 12));
            *p++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            *p++ = static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            *p++ = static_cast<char>(0xF0 | (cp >> 18));
            *p++ = static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            *p++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            *p++ = static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

/// Strict UTF-8 decoding: overlong forms, surrogates, values above 0x10FFFF
/// and truncated sequences are malformed.
std::optional<std::wstring> decodeUtf8(std::string_view text)
{
    // At most one unit per byte: write through a pointer, shrink at the end.
    std::wstring out(text.size(), L'\0');
    wchar_t *p = out.data();
    size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            *p++ = static_cast<wchar_t>(lead);
            ++i;
            continue;
        }
        size_t length;
        uint32_t cp;
        uint32_t minimum;
        if ((lead & 0xE0) == 0xC0) {
            length = 2, cp = lead & 0x1F, minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3, cp = lead & 0x0F, minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4, cp = lead & 0x07, minimum = 0x10000;
        } else {
            return std::nullopt;
        }
        if (text.size() - i < length)
            return std::nullopt;
        for (size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80)
                return std::nullopt;
            cp = (cp << 6) | (next & 0x3F);
        }
        if (cp < minimum || !isScalarValue(cp))
            return std::nullopt;
        *p++ = static_cast<wchar_t>(cp);
        i += length;
    }
    out.resize(static_cast<size_t>(p - out.data()));
    return out;
}

/// Widens each byte with its sign: the fallback for malformed UTF-8.
std::wstring widenBytes(std::string_view text)
{
    std::wstring out(text.size(), L'\0');
    for (size_t i = 0; i < text.size(); ++i)
        out[i] = static_cast<wchar_t>(static_cast<signed char>(text[i]));
    return out;
}

/// Encodes in the C library's current LC_CTYPE locale.
std::optional<std::string> encodeMultibyte(std::wstring_view text)
{
    std::string out;
    std::mbstate_t state{};
    char buffer[MB_LEN_MAX];
    for (wchar_t unit : text) {
        const size_t n = std::wcrtomb(buffer, unit, &state);
        if (n == static_cast<size_t>(-1))
            return std::nullopt;
        out.append(buffer, n);
    }
    return out;
}

/// Decodes from the C library's current LC_CTYPE locale.
std::optional<std::wstring> decodeMultibyte(std::string_view text)
{
    std::wstring out;
    std::mbstate_t state{};
    size_t i = 0;
    while (i < text.size()) {
        wchar_t unit = 0;
        const size_t n = std::mbrtowc(&unit, text.data() + i, text.size() - i, &state);
        if (n == static_cast<size_t>(-1) || n == static_cast<size_t>(-2))
            return std::nullopt;
        out += unit;
        i += (n == 0) ? 1 : n;
    }
    return out;
}

/// Copies a converted text with its terminator into \p dest, which holds at
/// most \p n units; with a null \p dest and \p n of 0, the size needed.
template <class Char, class Text>
size_t deliver(Char *dest, size_t n, const std::optional<Text> &converted)
{
    if (!converted)
        return 0;
    const size_t needed = converted->size() + 1;
    if (!dest)
        return n == 0 ? needed : 0;
    if (needed > n)
        return 0;
    std::copy(converted->begin(), converted->end(), dest);
    dest[needed - 1] = 0;
    return needed;
}

} // namespace

// ---- Conversions -----------------------------------------------------------

std::string toUTF8(const std::wstring &whole)
{
    // The conversion works on terminated text: it ends at the first 0 unit,
    // in the fallback too.
    const std::wstring_view text = std::wstring_view(whole).substr(0, whole.find(L'\0'));
    if (text.empty())
        return {};
    if (auto encoded = encodeUtf8(text))
        return std::move(*encoded);
    std::string lowBytes(text.size(), '\0');
    for (size_t i = 0; i < text.size(); ++i)
        lowBytes[i] = static_cast<char>(text[i] & 0xFF);
    return lowBytes;
}

TyxString fromUTF8(std::string_view text)
{
    if (text.empty())
        return {};
    if (auto decoded = decodeUtf8(text))
        return TyxString(std::move(*decoded));
    return TyxString(widenBytes(text));
}

std::string toMultibyte(const std::wstring &text) { return encodeMultibyte(text).value_or(std::string()); }

TyxString toWide(const std::string &text)
{
    return TyxString(decodeMultibyte(text).value_or(std::wstring()));
}

size_t wcstoutf(char *dest, const wchar_t *src, size_t n)
{
    if (dest && n > 0)
        dest[0] = 0;
    return src ? deliver(dest, n, encodeUtf8(src)) : 0;
}

size_t utftowcs(wchar_t *dest, const char *src, size_t n)
{
    if (dest && n > 0)
        dest[0] = 0;
    return src ? deliver(dest, n, decodeUtf8(src)) : 0;
}

size_t wcstombs(char *dest, const wchar_t *src, size_t n)
{
    if (dest && n > 0)
        dest[0] = 0;
    return src ? deliver(dest, n, encodeMultibyte(src)) : 0;
}

size_t mbstowcs(wchar_t *dest, const char *src, size_t n)
{
    if (dest && n > 0)
        dest[0] = 0;
    return src ? deliver(dest, n, decodeMultibyte(src)) : 0;
}

} // namespace tyx
