// Wide strings: UTF-8 and multibyte conversions and the free text functions.
#include <tyx/TyxString.h>

#include <cctype>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <iostream>
#include <optional>
#include <strings.h>

#include "core/TyxTextScan.h"

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

int sign(int difference) { return (difference > 0) - (difference < 0); }

} // namespace

// ---- TyxString ---------------------------------------------------------------

void TyxString::assignUtf8(const char *utf8)
{
    assignUtf8(utf8 ? std::string_view(utf8) : std::string_view());
}

void TyxString::assignUtf8(std::string_view utf8) { std::wstring::operator=(fromUTF8(utf8)); }

TyxString &TyxString::toLower()
{
    for (auto it = rbegin(); it != rend(); ++it)
        *it = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(*it)));
    return *this;
}

TyxString &TyxString::toUpper()
{
    for (auto it = rbegin(); it != rend(); ++it)
        *it = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(*it)));
    return *this;
}

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

// ---- Text functions --------------------------------------------------------

TyxString toLower(const TyxString &text)
{
    TyxString lowered(text);
    const int size = static_cast<int>(lowered.size());
    for (int i = 0; i < size; ++i) {
        if (lowered[i] >= L'A' && lowered[i] <= L'Z')
            lowered[i] = static_cast<wchar_t>(lowered[i] + 32);
    }
    return lowered;
}

TyxString trim(const TyxString &text)
{
    static const internal::TyxDelimiterSet blanks(L"\n\t\r ");
    const size_t first = blanks.findFirstNotOf(text, 0);
    if (first == TyxString::npos)
        return text;
    const size_t last = blanks.findLastNotOf(text);
    return TyxString(text.substr(first, last - first + 1));
}

bool isEqual(const TyxString &a, const TyxString &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = static_cast<int>(a.size()) - 1; i >= 0; --i) {
        if (internal::lowerUnit(a[i]) != internal::lowerUnit(b[i]))
            return false;
    }
    return true;
}

bool containsSubstring(const TyxString &text, const TyxString &part, bool caseSensitive)
{
    if (caseSensitive)
        return text.find(part) != TyxString::npos;
    return toLower(text).find(toLower(part)) != TyxString::npos;
}

std::vector<TyxString> splitStr(const TyxString &text, const TyxString &delimiters, bool keepEmpty)
{
    std::vector<TyxString> parts;
    std::wstring_view rest(text);
    while (rest.size() >= 2 && rest.front() == L'(' && rest.back() == L')')
        rest = rest.substr(1, rest.size() - 2);
    if (rest.empty())
        return parts;
    if (delimiters.empty()) {
        parts.emplace_back(std::wstring(rest));
        return parts;
    }
    const internal::TyxDelimiterSet set(delimiters);
    if (keepEmpty) {
        size_t start = 0;
        for (;;) {
            const size_t end = set.findFirstOf(rest, start);
            parts.emplace_back(std::wstring(rest.substr(start, end - start)));
            if (end == std::wstring_view::npos)
                break;
            start = end + 1;
        }
        return parts;
    }
    size_t start = set.findFirstNotOf(rest, 0);
    while (start != std::wstring_view::npos) {
        const size_t end = set.findFirstOf(rest, start);
        parts.emplace_back(std::wstring(rest.substr(start, end - start)));
        if (end == std::wstring_view::npos)
            break;
        start = set.findFirstNotOf(rest, end);
    }
    return parts;
}

std::istream &getline(std::istream &is, TyxString &text) { return getline(is, text, is.widen('\n')); }

std::istream &getline(std::istream &is, TyxString &text, char delimiter)
{
    std::string line;
    std::getline(is, line, delimiter);
    text = fromUTF8(line);
    return is;
}

std::wistream &getline(std::wistream &is, TyxString &text)
{
    return std::getline(is, static_cast<std::wstring &>(text));
}

std::wistream &getline(std::wistream &is, TyxString &text, wchar_t delimiter)
{
    return std::getline(is, static_cast<std::wstring &>(text), delimiter);
}

std::ostream &operator<<(std::ostream &os, const TyxString &text) { return os << toUTF8(text); }

void approximate(double value, int64_t limit, int64_t *numerator, int64_t *denominator)
{
    if (limit < 2) {
        *numerator = static_cast<int64_t>(value);
        *denominator = 1;
        return;
    }
    const bool negative = value < 0;
    double magnitude = negative ? -value : value;
    int64_t d = 1;
    // The doubling stops before the denominator overflows; what is left of
    // the fraction then no longer matters to any reachable limit.
    while (std::floor(magnitude) != magnitude && d < (INT64_C(1) << 62)) {
        magnitude *= 2;
        d *= 2;
    }
    int64_t n = magnitude < 9.2e18 ? static_cast<int64_t>(magnitude) : INT64_MAX;
    int64_t h0 = 0, h1 = 1, k0 = 1, k1 = 0;
    for (int i = 0; i < 64; ++i) {
        const int64_t a = d ? n / d : 0;
        if (i != 0 && a == 0)
            break;
        const int64_t remainder = d ? n % d : 0;
        n = d;
        d = remainder;
        int64_t x = a;
        bool last = false;
        if (a * k1 + k0 >= limit) {
            x = k1 ? (limit - k0) / k1 : 0;
            if (2 * x < a && k1 < limit)
                break;
            last = true;
        }
        const int64_t h2 = x * h1 + h0;
        h0 = h1;
        h1 = h2;
        const int64_t k2 = x * k1 + k0;
        k0 = k1;
        k1 = k2;
        if (last)
            break;
    }
    *numerator = negative ? -h1 : h1;
    *denominator = k1;
}

// ---- Number parsing --------------------------------------------------------

double atof(const char *s) { return std::atof(s); }
double atof(const std::string &s) { return std::atof(s.c_str()); }
double atof(const wchar_t *s) { return std::wcstod(s, nullptr); }
double atof(const std::wstring &s) { return std::wcstod(s.c_str(), nullptr); }
int atoi(const char *s) { return std::atoi(s); }
int atoi(const std::string &s) { return std::atoi(s.c_str()); }
int atoi(const wchar_t *s) { return static_cast<int>(std::wcstol(s, nullptr, 10)); }
int atoi(const std::wstring &s) { return atoi(s.c_str()); }
long atol(const char *s) { return std::atol(s); }
long atol(const std::string &s) { return std::atol(s.c_str()); }
long atol(const wchar_t *s) { return std::wcstol(s, nullptr, 10); }
long atol(const std::wstring &s) { return std::wcstol(s.c_str(), nullptr, 10); }

double strtod(const char *s, char **end) { return std::strtod(s, end); }
double strtod(const std::string &s)
{
    char *end = nullptr;
    return std::strtod(s.c_str(), &end);
}
double strtod(const wchar_t *s, wchar_t **end) { return std::wcstod(s, end); }
double strtod(const std::wstring &s)
{
    wchar_t *end = nullptr;
    return std::wcstod(s.c_str(), &end);
}
long strtol(const char *s, char **end, int base) { return std::strtol(s, end, base); }
long strtol(const std::string &s, int base)
{
    char *end = nullptr;
    return std::strtol(s.c_str(), &end, base);
}
long strtol(const wchar_t *s, wchar_t **end, int base) { return std::wcstol(s, end, base); }
long strtol(const std::wstring &s, int base)
{
    wchar_t *end = nullptr;
    return std::wcstol(s.c_str(), &end, base);
}
unsigned long strtoul(const char *s, char **end, int base) { return std::strtoul(s, end, base); }
unsigned long strtoul(const std::string &s, int base)
{
    char *end = nullptr;
    return std::strtoul(s.c_str(), &end, base);
}
unsigned long strtoul(const wchar_t *s, wchar_t **end, int base) { return std::wcstoul(s, end, base); }
unsigned long strtoul(const std::wstring &s, int base)
{
    wchar_t *end = nullptr;
    return std::wcstoul(s.c_str(), &end, base);
}

// ---- C-style functions ------------------------------------------------------

char *strcat(char *dest, const char *src) { return std::strcat(dest, src); }
wchar_t *strcat(wchar_t *dest, const wchar_t *src) { return std::wcscat(dest, src); }

int strcmp(const char *a, const char *b) { return sign(std::strcmp(a, b)); }

int strcmp(const wchar_t *a, const wchar_t *b)
{
    // Compared as unsigned units, so a unit with the top bit set sorts last.
    while (*a && *a == *b)
        ++a, ++b;
    const auto ua = static_cast<uint32_t>(*a);
    const auto ub = static_cast<uint32_t>(*b);
    return (ua > ub) - (ua < ub);
}

int stricmp(const char *a, const char *b) { return ::strcasecmp(a, b); }
int stricmp(const wchar_t *a, const wchar_t *b) { return ::wcscasecmp(a, b); }

int sprintf(char *dest, const char *format, ...)
{
    va_list args;
    va_start(args, format);
    const int result = vsprintf(dest, format, args);
    va_end(args);
    return result;
}

int vsprintf(char *dest, const char *format, va_list args) { return std::vsprintf(dest, format, args); }

int sprintf(wchar_t *dest, const wchar_t *format, ...)
{
    va_list args;
    va_start(args, format);
    const int result = vsprintf(dest, format, args);
    va_end(args);
    return result;
}

int vsprintf(wchar_t *dest, const wchar_t *format, va_list args)
{
    constexpr size_t workSize = 512;
    wchar_t work[workSize] = {};
    const int result = std::vswprintf(work, workSize, format, args);
    work[workSize - 1] = 0;
    std::wcscpy(dest, work);
    return result;
}

int scanf(const char *format, ...)
{
    va_list args;
    va_start(args, format);
    const int result = std::vscanf(format, args);
    va_end(args);
    return result;
}

int scanf(const wchar_t *format, ...)
{
    va_list args;
    va_start(args, format);
    const int result = std::vwscanf(format, args);
    va_end(args);
    return result;
}

int vscanf(const char *format, va_list args) { return std::vscanf(format, args); }
int vscanf(const wchar_t *format, va_list args) { return std::vwscanf(format, args); }

// ---- Console streams ----------------------------------------------------------

namespace internal {
std::wostream &cout() { return std::wcout; }
std::wostream &cerr() { return std::wcerr; }
std::wistream &cin() { return std::wcin; }
} // namespace internal

} // namespace tyx
