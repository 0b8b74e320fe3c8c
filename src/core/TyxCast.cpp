// The conversion matrix: text rules and the container casts.
#include <tyx/TyxCast.h>

#include <cmath>
#include <cwchar>
#include <limits>
#include <sstream>

#include <tyx/TyxVariant.h>

#include "core/TyxTextScan.h"

namespace tyx::internal {

namespace {

bool isBlankText(const TyxString &text)
{
    for (wchar_t unit : text) {
        if (!isBlankUnit(unit))
            return false;
    }
    return true;
}

// Whether a parse that stopped at \p end consumed something and left only
// blanks behind.
bool onlyBlanksAfter(const wchar_t *start, const wchar_t *end, const wchar_t *last)
{
    if (end == start)
        return false;
    while (end < last && isBlankUnit(*end))
        ++end;
    return end == last;
}

template <class Value>
TyxString streamText(const Value &value)
{
    std::wostringstream os;
    os << value;
    return os.str();
}

} // namespace

TyxString integerToString(int64_t value)
{
    // Built from the magnitude as unsigned, so the most negative value works.
    const bool negative = value < 0;
    uint64_t magnitude = negative ? UINT64_C(0) - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    TyxString text = unsignedToString(magnitude);
    if (negative)
        text.insert(text.begin(), L'-');
    return text;
}

TyxString unsignedToString(uint64_t value)
{
    wchar_t digits[24];
    wchar_t *p = digits + 24;
    do {
        *--p = static_cast<wchar_t>(L'0' + value % 10);
        value /= 10;
    } while (value != 0);
    return TyxString(p, static_cast<size_t>(digits + 24 - p));
}

TyxString realToString(double value)
{
    if (std::isnan(value))
        return L"nan";
    const int64_t whole = truncToInt64(value);
    wchar_t buffer[512];
    if (static_cast<double>(whole) == value) {
        std::swprintf(buffer, 512, L"%1.1lf", value);
        return buffer;
    }
    // As many significant digits as the integer part has, plus 17, in the
    // stream's default float format, which is printf's "%g".
    const int length = std::swprintf(buffer, 512, L"%lld", static_cast<long long>(whole));
    const int digits = length - (value < 0 ? 1 : 0);
    std::swprintf(buffer, 512, L"%.*g", digits + 17, value);
    return buffer;
}

TyxParsedInteger parseInteger(const TyxString &text, bool isSigned)
{
    TyxParsedInteger result;
    const wchar_t *start = text.c_str();
    const wchar_t *last = start + text.size();

    // The quick path: blanks and zeros, a sign, then nothing but digits.
    const wchar_t *p = start;
    bool zeros = false;
    while (p < last && (*p == L' ' || *p == L'0')) {
        zeros = zeros || *p == L'0';
        ++p;
    }
    bool negative = false;
    if (isSigned && p < last && *p == L'-') {
        negative = true;
        ++p;
    }
    const wchar_t *digits = p;
    uint64_t magnitude = 0;
    while (p < last && *p >= L'0' && *p <= L'9')
        magnitude = magnitude * 10 + static_cast<uint64_t>(*p++ - L'0');
    if (p == last && (p > digits || (zeros && !negative))) {
        result.kind = TyxParsedInteger::Integer;
        result.bits = negative ? UINT64_C(0) - magnitude : magnitude;
        return result;
    }

    // Base 10 always: leading zeros never make an octal number.
    wchar_t *end = nullptr;
    const uint64_t parsed = isSigned ? static_cast<uint64_t>(std::wcstoll(start, &end, 10))
                                     : static_cast<uint64_t>(std::wcstoull(start, &end, 10));
    if (end == last && end != start) {
        result.kind = TyxParsedInteger::Integer;
        result.bits = parsed;
        return result;
    }
    if (isBlankText(text))
        return result; // Blank
    if (onlyBlanksAfter(start, end, last)) {
        result.kind = TyxParsedInteger::Integer;
        result.bits = parsed;
        return result;
    }
    result.kind = TyxParsedInteger::Real;
    result.realOk = parseReal(text, result.real);
    return result;
}

bool parseReal(const TyxString &text, double &value)
{
    const wchar_t *start = text.c_str();
    const wchar_t *last = start + text.size();
    wchar_t *end = nullptr;
    value = std::wcstod(start, &end);
    if (end == last && end != start)
        return true;
    if (isBlankText(text)) {
        value = 0.0;
        return false;
    }
    if (onlyBlanksAfter(start, end, last))
        return true;
    if (isEqual(text, L"NaN")) {
        value = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    return false;
}

bool parseBool(const TyxString &text)
{
    const TyxString word = toLower(text);
    return word == L"1" || word == L"t" || word == L"y" || word == L"true" || word == L"yes" || word == L"on";
}

TyxString complexToString(const std::complex<double> &value) { return streamText(value); }

bool parseComplex(const TyxString &text, std::complex<double> &value)
{
    std::wistringstream is(text);
    std::complex<double> parsed;
    if (!(is >> parsed))
        return false;
    value = parsed;
    return true;
}

// ---- Containers ----------------------------------------------------------------

bool TyxDefaultCasts<TyxStrList>::toString(const TyxStrList &value, TyxString &text)
{
    text = value;
    return true;
}

bool TyxDefaultCasts<TyxStrList>::fromString(const TyxString &text, TyxStrList &value)
{
    std::wistringstream is(text);
    is >> value;
    return !is.fail();
}

bool TyxDefaultCasts<TyxVariantPair>::toString(const TyxVariantPair &value, TyxString &text)
{
    text = streamText(value);
    return true;
}

bool TyxDefaultCasts<TyxVariantPair>::fromString(const TyxString &, TyxVariantPair &value)
{
    getDefault(value);
    return true;
}

void TyxDefaultCasts<TyxVariantPair>::getDefault(TyxVariantPair &value) { value = TyxVariantPair(); }

bool TyxDefaultCasts<TyxVariantList>::toString(const TyxVariantList &value, TyxString &text)
{
    text = streamText(TyxVariant(value));
    return true;
}

bool TyxDefaultCasts<TyxVariantList>::fromString(const TyxString &text, TyxVariantList &value)
{
    value.assign(1, TyxVariant(text));
    return true;
}

void TyxDefaultCasts<TyxVariantList>::getDefault(TyxVariantList &value) { value.clear(); }

bool TyxDefaultCasts<TyxVariantMap>::toString(const TyxVariantMap &value, TyxString &text)
{
    text = streamText(TyxVariant(value));
    return true;
}

bool TyxDefaultCasts<TyxVariantMap>::fromString(const TyxString &, TyxVariantMap &value)
{
    value.clear();
    return true;
}

void TyxDefaultCasts<TyxVariantMap>::getDefault(TyxVariantMap &value) { value.clear(); }

bool TyxCast<TyxStrList, bool>::cast(const TyxStrList &from, bool &to)
{
    to = !from.empty();
    return true;
}

bool TyxCast<TyxVariantPair, bool>::cast(const TyxVariantPair &from, bool &to)
{
    to = !from.first.empty() || from.second.isValid();
    return true;
}

bool TyxCast<TyxVariantList, bool>::cast(const TyxVariantList &from, bool &to)
{
    to = !from.empty();
    return true;
}

bool TyxCast<TyxVariantMap, bool>::cast(const TyxVariantMap &from, bool &to)
{
    to = !from.empty();
    return true;
}

} // namespace tyx::internal
