// Base64 encoding and decoding over whole groups, table-driven.
#include <tyx/TyxBase64.h>

#include <array>
#include <bit>
#include <cstring>
#include <sstream>

#include "core/TyxPost.h"

namespace tyx {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr uint8_t kBad = 0x80;

// The two output characters of every 12-bit half of a group, as they lie in
// memory: one load and one store per pair.
struct PairTable {
    std::array<uint16_t, 4096> units{};
    constexpr PairTable()
    {
        for (int i = 0; i < 4096; ++i) {
            const auto first = static_cast<uint16_t>(static_cast<unsigned char>(kAlphabet[i >> 6]));
            const auto second = static_cast<uint16_t>(static_cast<unsigned char>(kAlphabet[i & 63]));
            units[static_cast<size_t>(i)] = std::endian::native == std::endian::little
                                                ? static_cast<uint16_t>(first | second << 8)
                                                : static_cast<uint16_t>(first << 8 | second);
        }
    }
};

struct DecodeTable {
    std::array<uint8_t, 256> value{};
    constexpr DecodeTable()
    {
        for (auto &v : value)
            v = kBad;
        for (int i = 0; i < 64; ++i)
            value[static_cast<unsigned char>(kAlphabet[i])] = static_cast<uint8_t>(i);
    }
};

constexpr PairTable kPairs;
constexpr DecodeTable kDecode;

template <class Char>
inline uint8_t sextet(Char c)
{
    using Unit = std::make_unsigned_t<Char>;
    const auto unit = static_cast<Unit>(c);
    if constexpr (sizeof(Char) > 1) {
        if (unit > 0xFF)
            return kBad;
    }
    return kDecode.value[unit];
}

template <class Char>
bool isLineBreak(Char c)
{
    return c == Char('\n') || c == Char('\r');
}

template <class Char>
TyxString describe(Char c)
{
    const auto unit = static_cast<uint32_t>(static_cast<std::make_unsigned_t<Char>>(c));
    std::wostringstream os;
    if (unit >= 0x20 && unit < 0x7F)
        os << L'\'' << static_cast<wchar_t>(unit) << L'\'';
    else
        os << L"U+" << std::hex << std::uppercase << unit;
    return os.str();
}

TyxString atOffset(const TyxString &what, size_t offset)
{
    return what + L" at offset " + std::to_wstring(offset) + L".";
}

// The decoder proper. Whole groups without line breaks take the fast loop;
// a group broken by a line break, padding or a bad character is gathered one
// character at a time. Returns an empty message or the failure.
template <class Char>
TyxTextMsg decodeText(std::basic_string_view<Char> text, std::vector<uint8_t> &bytes)
{
    const Char *s = text.data();
    const size_t n = text.size();
    std::vector<uint8_t> out(n / 4 * 3 + 3);
    uint8_t *o = out.data();
    size_t i = 0;
    uint8_t quad[4];
    int have = 0;
    while (i < n) {
        if (have == 0) {
            while (i + 4 <= n) {
                const uint32_t a = sextet(s[i]), b = sextet(s[i + 1]), c = sextet(s[i + 2]),
                               d = sextet(s[i + 3]);
                if ((a | b | c | d) & kBad)
                    break;
                const uint32_t v = a << 18 | b << 12 | c << 6 | d;
                o[0] = static_cast<uint8_t>(v >> 16);
                o[1] = static_cast<uint8_t>(v >> 8);
                o[2] = static_cast<uint8_t>(v);
                o += 3;
                i += 4;
            }
            if (i >= n)
                break;
        }
        const Char c = s[i];
        if (isLineBreak(c)) {
            ++i;
            continue;
        }
        const uint8_t v = sextet(c);
        if (v == kBad) {
            if (c != Char('='))
                return TYX_ERROR_MSG(atOffset(L"Invalid Base64 character " + describe(c), i));
            if (have < 2)
                return TYX_ERROR_MSG(atOffset(L"Misplaced Base64 padding", i));
            // "xx==" needs a second "=", "xxx=" none; then only line breaks may follow.
            size_t j = i + 1;
            if (have == 2) {
                while (j < n && isLineBreak(s[j]))
                    ++j;
                if (j == n)
                    return TYX_ERROR_MSG(L"Truncated Base64 group: the text ends after 3 of 4 characters.");
                if (s[j] != Char('='))
                    return TYX_ERROR_MSG(atOffset(L"Misplaced Base64 padding", i));
                ++j;
            }
            while (j < n && isLineBreak(s[j]))
                ++j;
            if (j < n)
                return TYX_ERROR_MSG(atOffset(L"Base64 text continues after the padding", j));
            const uint32_t bits =
                uint32_t(quad[0]) << 18 | uint32_t(quad[1]) << 12 | (have == 3 ? uint32_t(quad[2]) << 6 : 0u);
            *o++ = static_cast<uint8_t>(bits >> 16);
            if (have == 3)
                *o++ = static_cast<uint8_t>(bits >> 8);
            have = 0;
            i = n;
            break;
        }
        quad[have++] = v;
        ++i;
        if (have == 4) {
            const uint32_t bits = uint32_t(quad[0]) << 18 | uint32_t(quad[1]) << 12 | uint32_t(quad[2]) << 6 |
                                  uint32_t(quad[3]);
            o[0] = static_cast<uint8_t>(bits >> 16);
            o[1] = static_cast<uint8_t>(bits >> 8);
            o[2] = static_cast<uint8_t>(bits);
            o += 3;
            have = 0;
        }
    }
    if (have != 0)
        return TYX_ERROR_MSG(L"Truncated Base64 group: the text ends after " + std::to_wstring(have) +
                             L" of 4 characters.");
    out.resize(static_cast<size_t>(o - out.data()));
    bytes.swap(out);
    return TyxTextMsg();
}

} // namespace

TyxTextMsg TyxBase64::encode(const void *data, uint64_t size, std::string &text, unsigned int lineLength)
{
    if (!data && size > 0)
        return TYX_ERROR_MSG(L"No data to encode: a null pointer with " + std::to_wstring(size) + L" bytes.");
    const auto *in = static_cast<const uint8_t *>(data);
    // Nothing can fail from here on, so the text is written in place and
    // keeps its storage from call to call.
    text.resize(encodedSize(size));
    char *o = text.data();
    const uint64_t whole = size / 3 * 3;
    const uint16_t *pairs = kPairs.units.data();
    for (uint64_t i = 0; i < whole; i += 3) {
        const uint32_t v = uint32_t(in[i]) << 16 | uint32_t(in[i + 1]) << 8 | uint32_t(in[i + 2]);
        const uint16_t quad[2] = {pairs[v >> 12], pairs[v & 0xFFF]};
        std::memcpy(o, quad, 4);
        o += 4;
    }
    if (const uint64_t rest = size - whole; rest > 0) {
        const uint32_t v = uint32_t(in[whole]) << 16 | (rest == 2 ? uint32_t(in[whole + 1]) << 8 : 0u);
        o[0] = kAlphabet[v >> 18];
        o[1] = kAlphabet[(v >> 12) & 63];
        o[2] = rest == 2 ? kAlphabet[(v >> 6) & 63] : '=';
        o[3] = '=';
    }
    if (lineLength > 0 && text.size() > lineLength) {
        std::string lines;
        lines.reserve(text.size() + text.size() / lineLength);
        for (size_t at = 0; at < text.size(); at += lineLength) {
            if (at > 0)
                lines += '\n';
            lines.append(text, at, lineLength);
        }
        text.swap(lines);
    }
    return TyxTextMsg();
}

TyxTextMsg TyxBase64::encode(const std::vector<uint8_t> &bytes, std::string &text, unsigned int lineLength)
{
    return encode(bytes.data(), bytes.size(), text, lineLength);
}

TyxTextMsg TyxBase64::decode(std::string_view text, std::vector<uint8_t> &bytes)
{
    return decodeText(text, bytes);
}

TyxTextMsg TyxBase64::decode(std::wstring_view text, std::vector<uint8_t> &bytes)
{
    return decodeText(text, bytes);
}

} // namespace tyx
