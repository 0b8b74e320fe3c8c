// The library's wide string and the free text functions around it.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include <tyx/TyxGlobal.h>

namespace tyx {

/// Wide string holding one Unicode code point per unit. Narrow text coming in
/// or going out is UTF-8; text in another encoding goes through toWide().
class TYX_EXPORT TyxString : public std::wstring {
public:
    using std::wstring::wstring;

    TyxString() = default;
    TyxString(const std::wstring &s) : std::wstring(s) {}
    TyxString(std::wstring &&s) noexcept : std::wstring(std::move(s)) {}
    /// Decodes UTF-8; a null pointer gives an empty string.
    TyxString(const char *utf8) { assignUtf8(utf8); }
    TyxString(const std::string &utf8) { assignUtf8(utf8); }
    TyxString(std::nullptr_t) = delete;

    TyxString &operator=(const std::wstring &s)
    {
        std::wstring::operator=(s);
        return *this;
    }
    TyxString &operator=(std::wstring &&s) noexcept
    {
        std::wstring::operator=(std::move(s));
        return *this;
    }
    TyxString &operator=(const wchar_t *s)
    {
        std::wstring::operator=(s);
        return *this;
    }
    TyxString &operator=(wchar_t c)
    {
        std::wstring::operator=(c);
        return *this;
    }
    TyxString &operator=(const char *utf8)
    {
        assignUtf8(utf8);
        return *this;
    }
    TyxString &operator=(const std::string &utf8)
    {
        assignUtf8(utf8);
        return *this;
    }

    /// The text encoded as UTF-8.
    operator std::string() const;

    /// Lower-cases every unit in place through towlower (locale-aware).
    TyxString &toLower();
    /// Upper-cases every unit in place through towupper (locale-aware).
    TyxString &toUpper();

private:
    /// The text becomes the UTF-8 decoding of \p utf8. Malformed input is
    /// widened byte by byte instead.
    void assignUtf8(const char *utf8);
    void assignUtf8(std::string_view utf8);
};

// ---- Conversions -----------------------------------------------------------

/// Encodes as UTF-8 the text up to its first 0 unit, if it holds one. A unit
/// that is not a Unicode scalar value makes the whole of that text fall back
/// to the low byte of each unit.
TYX_EXPORT std::string toUTF8(const std::wstring &text);
/// Decodes UTF-8. Malformed input falls back to widening each byte with its
/// sign, so a byte of 0xFF becomes a unit with all bits set.
TYX_EXPORT TyxString fromUTF8(std::string_view text);
/// Encodes in the current multibyte code page (the LC_CTYPE locale); empty on
/// failure.
TYX_EXPORT std::string toMultibyte(const std::wstring &text);
/// Decodes from the current multibyte code page; empty on failure.
TYX_EXPORT TyxString toWide(const std::string &text);

/// Converts \p src up to and including its terminator to UTF-8 into at most
/// \p n bytes of \p dest. Returns the bytes written, terminator included, or
/// 0 on failure, when \p dest holds an empty string. With a null \p dest and
/// \p n of 0, returns the size needed.
TYX_EXPORT size_t wcstoutf(char *dest, const wchar_t *src, size_t n);
/// The reverse of wcstoutf, counting wide characters.
TYX_EXPORT size_t utftowcs(wchar_t *dest, const char *src, size_t n);
/// As wcstoutf, in the current multibyte code page.
TYX_EXPORT size_t wcstombs(char *dest, const wchar_t *src, size_t n);
/// As utftowcs, from the current multibyte code page.
TYX_EXPORT size_t mbstowcs(wchar_t *dest, const char *src, size_t n);

// ---- Text functions --------------------------------------------------------

/// A copy in which only `A` to `Z` are lower-cased.
TYX_EXPORT TyxString toLower(const TyxString &text);
/// The text without leading and trailing newlines, tabs, carriage returns and
/// spaces. Text made only of those comes back unchanged.
TYX_EXPORT TyxString trim(const TyxString &text);
/// Equal ignoring case, unit by unit through C tolower.
TYX_EXPORT bool isEqual(const TyxString &a, const TyxString &b);
/// True when \p part occurs in \p text; without \p caseSensitive both are
/// compared ASCII-lower-cased. An empty \p part is always found.
TYX_EXPORT bool containsSubstring(const TyxString &text, const TyxString &part, bool caseSensitive);
/// Splits \p text at any of \p delimiters. Enclosing parentheses are removed
/// first, repeatedly; with \p keepEmpty every delimiter ends an element.
TYX_EXPORT std::vector<TyxString> splitStr(const TyxString &text, const TyxString &delimiters,
                                           bool keepEmpty);

/// Reads a line of UTF-8 text into \p text.
TYX_EXPORT std::istream &getline(std::istream &is, TyxString &text);
TYX_EXPORT std::istream &getline(std::istream &is, TyxString &text, char delimiter);
/// Reads a line of wide text into \p text.
TYX_EXPORT std::wistream &getline(std::wistream &is, TyxString &text);
TYX_EXPORT std::wistream &getline(std::wistream &is, TyxString &text, wchar_t delimiter);

/// Writes the text as UTF-8.
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxString &text);

/// Finds a fraction close to \p value whose denominator is below \p limit, by
/// continued fractions. With a limit below 2 the value is truncated.
TYX_EXPORT void approximate(double value, int64_t limit, int64_t *numerator, int64_t *denominator);

// ---- Number parsing: thin forwarders to the C library, no error report -----

TYX_EXPORT double atof(const char *s);
TYX_EXPORT double atof(const std::string &s);
TYX_EXPORT double atof(const wchar_t *s);
TYX_EXPORT double atof(const std::wstring &s);
TYX_EXPORT int atoi(const char *s);
TYX_EXPORT int atoi(const std::string &s);
TYX_EXPORT int atoi(const wchar_t *s);
TYX_EXPORT int atoi(const std::wstring &s);
TYX_EXPORT long atol(const char *s);
TYX_EXPORT long atol(const std::string &s);
TYX_EXPORT long atol(const wchar_t *s);
TYX_EXPORT long atol(const std::wstring &s);
TYX_EXPORT double strtod(const char *s, char **end);
TYX_EXPORT double strtod(const std::string &s);
TYX_EXPORT double strtod(const wchar_t *s, wchar_t **end);
TYX_EXPORT double strtod(const std::wstring &s);
TYX_EXPORT long strtol(const char *s, char **end, int base);
TYX_EXPORT long strtol(const std::string &s, int base);
TYX_EXPORT long strtol(const wchar_t *s, wchar_t **end, int base);
TYX_EXPORT long strtol(const std::wstring &s, int base);
TYX_EXPORT unsigned long strtoul(const char *s, char **end, int base);
TYX_EXPORT unsigned long strtoul(const std::string &s, int base);
TYX_EXPORT unsigned long strtoul(const wchar_t *s, wchar_t **end, int base);
TYX_EXPORT unsigned long strtoul(const std::wstring &s, int base);

// ---- C-style functions ------------------------------------------------------

/// Appends \p src with its terminator; returns \p dest.
TYX_EXPORT char *strcat(char *dest, const char *src);
TYX_EXPORT wchar_t *strcat(wchar_t *dest, const wchar_t *src);
/// Compares by unsigned code unit; exactly -1, 0 or 1.
TYX_EXPORT int strcmp(const char *a, const char *b);
TYX_EXPORT int strcmp(const wchar_t *a, const wchar_t *b);
/// Compares ignoring case, as strcasecmp and wcscasecmp.
TYX_EXPORT int stricmp(const char *a, const char *b);
TYX_EXPORT int stricmp(const wchar_t *a, const wchar_t *b);
/// Unbounded formatting into the caller's buffer; the length or -1.
TYX_EXPORT int sprintf(char *dest, const char *format, ...);
TYX_EXPORT int vsprintf(char *dest, const char *format, va_list args);
/// Formats into a zeroed work area of 512 wide characters and copies what it
/// holds, terminator included, to \p dest; the length or -1.
TYX_EXPORT int sprintf(wchar_t *dest, const wchar_t *format, ...);
TYX_EXPORT int vsprintf(wchar_t *dest, const wchar_t *format, va_list args);
/// Formatted read from the process's standard input.
TYX_EXPORT int scanf(const char *format, ...);
TYX_EXPORT int scanf(const wchar_t *format, ...);
TYX_EXPORT int vscanf(const char *format, va_list args);
TYX_EXPORT int vscanf(const wchar_t *format, va_list args);

// ---- Console streams ----------------------------------------------------------

namespace internal {
TYX_EXPORT std::wostream &cout();
TYX_EXPORT std::wostream &cerr();
TYX_EXPORT std::wistream &cin();
} // namespace internal

/// The wide console streams, so that all console text is wide. They are
/// defined once in the library and bound to the standard objects by constant
/// initialisation, so including this header runs nothing at start-up.
TYX_EXPORT extern std::wostream &cout;
TYX_EXPORT extern std::wostream &cerr;
TYX_EXPORT extern std::wistream &cin;

// ---- Inline members ---------------------------------------------------------------

inline TyxString::operator std::string() const { return toUTF8(*this); }

} // namespace tyx
