// Numeric sample codes, the depth rule and the type-choosing functions.
#include <tyx/TyxDataType.h>

#include <array>
#include <cmath>
#include <istream>
#include <ostream>
#include <sstream>

#include "image/TyxCodeKeys.h"
#include <tyx/TyxDataTypeInfo.h>

namespace tyx {

namespace {

constexpr int kCodeCount = TyxNumericType::Invalid;

// Joins the variant (code 27) and the conversion matrix at library load, with
// the variant of the table's rows under its registered name.
[[maybe_unused]] const bool joinedVariant = internal::joinCodeVariant<TyxDataType>();
[[maybe_unused]] const bool joinedInfo = internal::TyxVariantRegistrar::join<TyxDataTypeInfo>();

// The rows of the data-type table. size() and the limits read this table
// directly rather than through the enumerator's variants: the enumerator is
// built from the same rows, and reading them stays a load instead of a map
// search and a conversion per call.
constexpr std::array<TyxDataTypeInfo, kCodeCount + 1> kInfo = {{
    {1, -128.0, 127.0},
    {1, 0.0, 255.0},
    {2, -32768.0, 32767.0},
    {2, 0.0, 65535.0},
    {4, -2147483648.0, 2147483647.0},
    {4, 0.0, 4294967295.0},
    {8, -9.223372036854776e18, 9.223372036854776e18},
    {8, 0.0, 1.8446744073709552e19},
    {4, -3.4028234663852886e38, 3.4028234663852886e38},
    {8, -1.7976931348623157e308, 1.7976931348623157e308},
    {8, -3.4028234663852886e38, 3.4028234663852886e38},
    {16, -1.7976931348623157e308, 1.7976931348623157e308},
    {0, 0.0, 0.0},
}};

const TyxDataTypeInfo &info(TyxNumericType::Code code)
{
    return kInfo[code < kCodeCount ? code : kCodeCount];
}

TyxNumericType::Code toCode(int code)
{
    return code >= 0 && code < kCodeCount ? static_cast<TyxNumericType::Code>(code) : TyxNumericType::Invalid;
}

template <class Char>
std::basic_ostream<Char> &writeType(std::basic_ostream<Char> &os, const TyxDataType &type)
{
    std::basic_ostringstream<Char> text;
    text << Char('(');
    if constexpr (sizeof(Char) == 1)
        text << toUTF8(type.toString());
    else
        text << type.toString();
    text << Char(',') << type.logicalBitDepth() << Char(')');
    return os << text.str();
}

template <class Char>
std::basic_istream<Char> &readType(std::basic_istream<Char> &is, TyxDataType &type)
{
    is.get();
    std::basic_string<Char> key;
    std::getline(is, key, Char(','));
    unsigned depth = 0;
    is >> depth;
    is.get();
    if (is.good()) {
        TyxString wideKey;
        if constexpr (sizeof(Char) == 1)
            wideKey = fromUTF8(key);
        else
            wideKey = key;
        type = TyxDataType(TyxDataType::fromString(wideKey), depth);
    }
    return is;
}

} // namespace

TyxDataType::TyxDataType(const TyxString &key) : m_code(fromString(key)) { normalise(); }

TyxDataType::TyxDataType(TyxNumericType::Code code, unsigned depth) : m_code(toCode(code)), m_depth(depth)
{
    normalise();
}

void TyxDataType::normalise()
{
    if (m_code == TyxNumericType::Invalid) {
        m_depth = 0;
        return;
    }
    const unsigned physical = physicalBitDepth();
    if (m_depth == 0 || m_depth > physical || !isInteger())
        m_depth = physical;
}

const TyxString &TyxDataType::toString() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[m_code] : empty;
}

bool TyxDataType::isSigned() const
{
    return m_code != TyxNumericType::U8 && m_code != TyxNumericType::U16 && m_code != TyxNumericType::U32 &&
           m_code != TyxNumericType::U64;
}

unsigned TyxDataType::size() const { return info(m_code).size; }

void TyxDataType::setLogicalBitDepth(unsigned depth)
{
    m_depth = depth;
    normalise();
}

double TyxDataType::physicalMinValue() const { return info(m_code).minimum; }

double TyxDataType::physicalMaxValue() const { return info(m_code).maximum; }

double TyxDataType::logicalMinValue() const
{
    if (!isInteger())
        return physicalMinValue();
    if (!isSigned())
        return 0.0;
    const unsigned d = m_depth == 0 ? 1 : (m_depth > 64 ? 64 : m_depth);
    // -(2^(d-1)) is exact in double for every d up to 64.
    return -std::ldexp(1.0, static_cast<int>(d) - 1);
}

double TyxDataType::logicalMaxValue() const
{
    if (!isInteger())
        return physicalMaxValue();
    const unsigned d = m_depth == 0 ? 1 : (m_depth > 64 ? 64 : m_depth);
    // Computed in 64-bit integers first, so that d = 64 gives 2^64 - 1
    // rounded to double.
    if (!isSigned())
        return static_cast<double>(d == 64 ? ~uint64_t(0) : (uint64_t(1) << d) - 1);
    return static_cast<double>((uint64_t(1) << (d - 1)) - 1);
}

TyxDataType TyxDataType::fromBitDepth(unsigned depth, bool isSigned)
{
    TyxNumericType::Code code;
    if (depth <= 8)
        code = isSigned ? TyxNumericType::I8 : TyxNumericType::U8;
    else if (depth <= 16)
        code = isSigned ? TyxNumericType::I16 : TyxNumericType::U16;
    else if (depth <= 32)
        code = isSigned ? TyxNumericType::I32 : TyxNumericType::U32;
    else
        code = isSigned ? TyxNumericType::I64 : TyxNumericType::U64;
    return TyxDataType(code, depth);
}

TyxDataType TyxDataType::fromMinMax(double min, double max)
{
    // Every test has the form limit >= value, so a NaN fails all of them.
    if (min >= 0.0) {
        TyxNumericType::Code code = TyxNumericType::Invalid;
        if (255.0 >= max)
            code = TyxNumericType::U8;
        else if (65535.0 >= max)
            code = TyxNumericType::U16;
        else if (4294967295.0 >= max)
            code = TyxNumericType::U32;
        else if (1.7976931348623157e308 >= max)
            code = TyxNumericType::U64;
        if (code != TyxNumericType::Invalid) {
            // ceil(log2(max)), not of max + 1: a power of two gets one bit
            // too few, and max of 0 or 1 falls back to the physical depth.
            const double bits = std::ceil(std::log(max) / std::log(2.0));
            const unsigned depth = bits > 0.0 ? static_cast<unsigned>(bits) : 0;
            return TyxDataType(code, depth);
        }
        return TyxDataType(3.4028234663852886e38 >= max ? TyxNumericType::Float : TyxNumericType::Double, 0);
    }
    TyxNumericType::Code code = TyxNumericType::Double;
    if (min >= -128.0 && 127.0 >= max)
        code = TyxNumericType::I8;
    else if (min >= -32768.0 && 32767.0 >= max)
        code = TyxNumericType::I16;
    else if (min >= -2147483648.0 && 2147483647.0 >= max)
        code = TyxNumericType::I32;
    else if (min >= -9.223372036854776e18 && 9.223372036854776e18 >= max)
        code = TyxNumericType::I64;
    else if (min >= -3.4028234663852886e38 && 3.4028234663852886e38 >= max)
        code = TyxNumericType::Float;
    return TyxDataType(code, 0);
}

TyxDataType TyxDataType::leastCommon(const TyxDataType &a, const TyxDataType &b)
{
    using N = TyxNumericType;
    const unsigned depth = a.m_depth > b.m_depth ? a.m_depth : b.m_depth;
    if (a.m_code == b.m_code)
        return TyxDataType(a.m_code, depth);
    const N::Code high = a.m_code > b.m_code ? a.m_code : b.m_code;
    const N::Code low = a.m_code > b.m_code ? b.m_code : a.m_code;
    const bool lowSigned = TyxDataType(low).isSigned();
    // The gaps are deliberate: U64 with a signed type stays U64, Float with
    // I64 or U64 stays Float, ComplexFloat with I64, U64 or Float stays
    // ComplexFloat, I64 with U32 stays I64.
    N::Code result = high;
    if (high == N::U8 && lowSigned)
        result = N::I16;
    else if (high == N::U16 && lowSigned)
        result = N::I32;
    else if (high == N::U32 && lowSigned)
        result = N::Double;
    else if (high == N::Float && (low == N::I32 || low == N::U32))
        result = N::Double;
    else if (high == N::ComplexFloat && (low == N::I32 || low == N::U32 || low == N::Double))
        result = N::ComplexDouble;
    return TyxDataType(result, depth);
}

const TyxEnum &TyxDataType::enumerator()
{
    static const TyxEnum &table = []() -> const TyxEnum & {
        const wchar_t *const keys[kCodeCount] = {L"I8",    L"U8",     L"I16",          L"U16",
                                                 L"I32",   L"U32",    L"I64",          L"U64",
                                                 L"Float", L"Double", L"ComplexFloat", L"ComplexDouble"};
        std::vector<TyxEnum::Item> items;
        for (int code = 0; code < kCodeCount; ++code)
            items.emplace_back(code, keys[code], TyxVariant(kInfo[code]));
        return internal::buildCodeEnumerator<TyxDataType>(items);
    }();
    return table;
}

const std::vector<TyxString> &TyxDataType::allKeys() { return enumerator().allKeys(); }

TyxNumericType::Code TyxDataType::fromString(const TyxString &key)
{
    return internal::codeOfKey(enumerator(), key, TyxNumericType::Invalid);
}

bool TyxDataType::isValid(const TyxString &key) { return fromString(key) != TyxNumericType::Invalid; }

std::wostream &operator<<(std::wostream &os, const TyxDataType &type) { return writeType(os, type); }

std::ostream &operator<<(std::ostream &os, const TyxDataType &type) { return writeType(os, type); }

std::wistream &operator>>(std::wistream &is, TyxDataType &type) { return readType(is, type); }

std::istream &operator>>(std::istream &is, TyxDataType &type) { return readType(is, type); }

} // namespace tyx
