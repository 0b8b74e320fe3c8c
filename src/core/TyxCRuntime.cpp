// Forwarders to the C runtime: number parsing, C-style string functions,
// formatted input and output, and the console streams.
#include <tyx/TyxString.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iostream>
#include <strings.h>

namespace tyx {

namespace {

int sign(int difference) { return (difference > 0) - (difference < 0); }

} // namespace

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

// References to objects of static storage are constant-initialised, so other
// start-up code may use these in any order.
std::wostream &cout = std::wcout;
std::wostream &cerr = std::wcerr;
std::wistream &cin = std::wcin;

} // namespace tyx
