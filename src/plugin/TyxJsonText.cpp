// The JSON reader and writer between text and variants, over RapidJSON.
#include "plugin/TyxJsonText.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <istream>
#include <iterator>
#include <ostream>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include <rapidjson/encodings.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <tyx/TyxJsonNode.h>

namespace tyx::internal {

namespace {

using WideEncoding = rapidjson::UTF32<wchar_t>;

// Numbers take RapidJSON's normal precision: its full-precision path shifts by
// the leading zeros of a zero significand ("0.0e-30"), which is undefined.
constexpr unsigned parseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

template <class T>
const T &heldValue(const TyxVariant &value)
{
    return static_cast<const TyxVariantImpl<T> &>(value.impl()).get();
}

// ---- Reading -----------------------------------------------------------------

// The text of a string the reader has validated: ASCII is widened unit by
// unit, anything else goes through the library's UTF-8 decoder.
TyxString textOf(const char *text, size_t length)
{
    unsigned char high = 0;
    for (size_t i = 0; i < length; ++i)
        high |= static_cast<unsigned char>(text[i]);
    if (high >= 0x80)
        return fromUTF8(std::string_view(text, length));
    TyxString out;
    out.resize(length);
    wchar_t *dest = out.data();
    for (size_t i = 0; i < length; ++i)
        dest[i] = static_cast<wchar_t>(static_cast<unsigned char>(text[i]));
    return out;
}

TyxString textOf(const wchar_t *text, size_t length) { return TyxString(std::wstring(text, length)); }

// Repeated scalars of one document share one value object: a number or a
// short text met again takes the variant made the first time, which saves an
// allocation and a release per repeat. Variant values are never changed once
// shared, so the sharing cannot be seen. Direct-mapped tables bound the cost
// when nothing repeats: a slot compares its key before it touches the value,
// and gives way to a newcomer only after some misses, so that a stream of
// unique values neither evicts a frequent one nor pays a release per value.
class ScalarCache {
public:
    ScalarCache() : m_slots(2 * slotCount) {}

    /// The shared variant of \p value, or null when its slot holds another.
    template <class T>
    const TyxVariant *number(T value)
    {
        uint64_t bits = 0;
        if constexpr (std::is_floating_point_v<T>)
            std::memcpy(&bits, &value, sizeof bits);
        else
            bits = static_cast<uint64_t>(value);
        // unsigned int 1, uint64 2, int 3, int64 4, double 5.
        constexpr uint32_t kind = std::is_floating_point_v<T> ? 5 : sizeof(T) / 4 + 2 * std::is_signed_v<T>;
        Slot &slot = m_slots[slotOf(bits ^ (bits >> 29))];
        if (slot.key == bits && slot.tag == kind)
            return &slot.value;
        if (!claim(slot))
            return nullptr;
        slot.key = bits;
        slot.tag = kind;
        slot.value = TyxVariant(value);
        return &slot.value;
    }

    /// The shared variant of a short text; null for a text not kept (long,
    /// or narrow and not ASCII) or when its slot holds another.
    template <class Ch>
    const TyxVariant *text(const Ch *text, size_t length)
    {
        if (length > maxTextLength)
            return nullptr;
        uint64_t hash = 14695981039346656037ull;
        for (size_t i = 0; i < length; ++i) {
            const auto unit = static_cast<uint32_t>(static_cast<std::make_unsigned_t<Ch>>(text[i]));
            if (sizeof(Ch) == 1 && unit >= 0x80)
                return nullptr;
            hash = (hash ^ unit) * 1099511628211ull;
        }
        // Texts take the upper half of the table; their tag is the length
        // above the number kinds.
        Slot &slot = m_slots[slotCount + slotOf(hash)];
        const uint32_t tag = static_cast<uint32_t>(length) + 8;
        if (slot.key == hash && slot.tag == tag) {
            const TyxString &held = heldValue<TyxString>(slot.value);
            if (std::equal(held.begin(), held.end(), text, [](wchar_t a, Ch b) {
                    return static_cast<uint32_t>(a) ==
                           static_cast<uint32_t>(static_cast<std::make_unsigned_t<Ch>>(b));
                }))
                return &slot.value;
        }
        if (!claim(slot))
            return nullptr;
        slot.key = hash;
        slot.tag = tag;
        slot.value = TyxVariant(textOf(text, length));
        return &slot.value;
    }

private:
    static constexpr size_t slotBits = 10;
    static constexpr size_t slotCount = size_t(1) << slotBits;
    static constexpr size_t maxTextLength = 24;
    static constexpr uint32_t missesToYield = 4;

    struct Slot {
        uint64_t key = 0;
        uint32_t tag = 0;
        uint32_t misses = 0;
        TyxVariant value;
    };

    // Whether an empty slot, or one missed often enough, takes a new value.
    static bool claim(Slot &slot)
    {
        if (slot.tag != 0 && ++slot.misses < missesToYield)
            return false;
        slot.misses = 0;
        return true;
    }

    static size_t slotOf(uint64_t hash)
    {
        return static_cast<size_t>((hash * 0x9E3779B97F4A7C15ull) >> (64 - slotBits));
    }

    std::vector<Slot> m_slots;
};

// Builds variants while the reader runs. Finished values wait on one stack
// and member names on another until their container closes; then the
// container is made at its final size from the top of the stacks. Neither
// reading nor building recurses, and the nesting is limited.
template <class Ch>
class VariantBuilder {
public:
    VariantBuilder() { m_values.reserve(1024); }

    bool Null()
    {
        m_values.emplace_back();
        return true;
    }
    bool Bool(bool b)
    {
        m_values.push_back(b ? m_true : m_false);
        return true;
    }
    // Numbers take the narrowest of int, unsigned int, int64 and uint64
    // that holds them, in that order, as a RapidJSON value answers IsInt()
    // first.
    bool Int(int i) { return number(i); }
    bool Uint(unsigned u) { return u <= INT_MAX ? number(static_cast<int>(u)) : number(u); }
    bool Int64(int64_t i) { return number(i); }
    bool Uint64(uint64_t u)
    {
        return u <= static_cast<uint64_t>(INT64_MAX) ? number(static_cast<int64_t>(u)) : number(u);
    }
    bool Double(double d) { return number(d); }
    bool RawNumber(const Ch *, rapidjson::SizeType, bool) { return false; }
    bool String(const Ch *text, rapidjson::SizeType length, bool)
    {
        if (const TyxVariant *shared = m_cache.text(text, length))
            m_values.push_back(*shared);
        else
            m_values.emplace_back(textOf(text, length));
        return true;
    }
    bool Key(const Ch *text, rapidjson::SizeType length, bool)
    {
        m_keys.push_back(textOf(text, length));
        return true;
    }
    bool StartObject() { return enter(); }
    bool StartArray() { return enter(); }
    bool EndArray(rapidjson::SizeType count)
    {
        --m_depth;
        const auto first = m_values.end() - static_cast<std::ptrdiff_t>(count);
        TyxVariantList list(std::make_move_iterator(first), std::make_move_iterator(m_values.end()));
        m_values.erase(first, m_values.end());
        m_values.emplace_back(std::move(list));
        return true;
    }
    bool EndObject(rapidjson::SizeType count)
    {
        --m_depth;
        const auto firstValue = m_values.end() - static_cast<std::ptrdiff_t>(count);
        const auto firstKey = m_keys.end() - static_cast<std::ptrdiff_t>(count);
        TyxVariantMap map;
        for (size_t i = 0; i < count; ++i) {
            // Members arriving in key order go in at the end without a
            // search; a repeated name keeps its first value, as a lookup in a
            // RapidJSON object finds the first.
            map.emplace_hint(map.end(), std::move(firstKey[static_cast<std::ptrdiff_t>(i)]),
                             std::move(firstValue[static_cast<std::ptrdiff_t>(i)]));
        }
        m_values.erase(firstValue, m_values.end());
        m_keys.erase(firstKey, m_keys.end());
        m_values.emplace_back(std::move(map));
        return true;
    }

    bool tooDeep() const { return m_tooDeep; }
    /// The value of the whole text, after a successful parse.
    const TyxVariant &result() const { return m_values.front(); }

private:
    template <class T>
    bool number(T value)
    {
        if (const TyxVariant *shared = m_cache.number(value))
            m_values.push_back(*shared);
        else
            m_values.emplace_back(value);
        return true;
    }

    bool enter()
    {
        if (m_depth >= TyxJsonMaxDepth) {
            m_tooDeep = true;
            return false;
        }
        ++m_depth;
        return true;
    }

    std::vector<TyxVariant> m_values;
    std::vector<TyxString> m_keys;
    unsigned int m_depth = 0;
    bool m_tooDeep = false;
    // The two booleans are shared by every place that holds one.
    const TyxVariant m_false = TyxVariant(false);
    const TyxVariant m_true = TyxVariant(true);
    ScalarCache m_cache;
};

template <class Text>
uint64_t lineAt(const Text &text, size_t offset)
{
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(offset, text.size()));
    return 1 + static_cast<uint64_t>(std::count(text.begin(), end, '\n'));
}

// The failure at \p offset of \p text: \p message with the line and offset.
template <class Text>
TyxJsonParseResult failureAt(const Text &text, uint64_t offset, TyxString message)
{
    TyxJsonParseResult outcome;
    outcome.offset = offset;
    outcome.line = lineAt(text, offset);
    message += L" (Line: " + std::to_wstring(outcome.line) + L" Offset: " + std::to_wstring(offset) + L")";
    outcome.msg = TyxTextMsg(std::move(message), __FILE__, __LINE__, TyxTextMsg::Error);
    return outcome;
}

template <class Encoding, class Text, class Stream>
TyxJsonParseResult parseWith(const Text &text, Stream &stream, TyxVariant &value)
{
    rapidjson::GenericReader<Encoding, Encoding> reader;
    VariantBuilder<typename Encoding::Ch> builder;
    const bool tooDeep = [&] {
        if (!reader.template Parse<parseFlags>(stream, builder).IsError()) {
            value = builder.result();
            return false;
        }
        return builder.tooDeep();
    }();
    if (!reader.HasParseError())
        return TyxJsonParseResult();
    if (tooDeep)
        return failureAt(text, reader.GetErrorOffset(),
                         L"The document nests arrays and objects deeper than " +
                             std::to_wstring(TyxJsonMaxDepth) + L" levels.");
    return failureAt(text, reader.GetErrorOffset(),
                     fromUTF8(rapidjson::GetParseError_En(reader.GetParseErrorCode())));
}

template <class Char>
std::basic_string<Char> readAllFrom(std::basic_istream<Char> &is)
{
    std::basic_string<Char> text;
    std::basic_streambuf<Char> *buffer = is.rdbuf();
    if (!buffer)
        return text;
    // A string stream has all of its text at hand: one read takes it.
    const std::streamsize ready = buffer->in_avail();
    std::streamsize step = std::max<std::streamsize>(ready, 1 << 16);
    for (;;) {
        const size_t before = text.size();
        text.resize(before + static_cast<size_t>(step));
        const std::streamsize got = buffer->sgetn(text.data() + before, step);
        text.resize(before + static_cast<size_t>(std::max<std::streamsize>(got, 0)));
        if (got < step)
            break;
        step = std::max<std::streamsize>(step, static_cast<std::streamsize>(text.size()));
    }
    return text;
}

// ---- Writing -----------------------------------------------------------------

bool isScalarValue(wchar_t unit)
{
    const auto cp = static_cast<uint32_t>(unit);
    return cp < 0xD800 || (cp > 0xDFFF && cp <= 0x10FFFF);
}

// Whether every unit is a Unicode scalar value; one pass without branches.
bool isClean(const TyxString &text)
{
    uint32_t bad = 0;
    for (wchar_t unit : text) {
        const auto cp = static_cast<uint32_t>(unit);
        bad |= static_cast<uint32_t>(cp - 0xD800 < 0x800) | static_cast<uint32_t>(cp > 0x10FFFF);
    }
    return bad == 0;
}

// Writes wide text; the writer encodes it. A unit that is no Unicode scalar
// value (a lone surrogate, or above 0x10FFFF) cannot be encoded and is written
// as U+FFFD, so the output stays valid JSON.
template <class Writer>
void writeText(Writer &writer, const TyxString &text, bool key)
{
    if (isClean(text)) {
        if (key)
            writer.Key(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        else
            writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        return;
    }
    TyxString repaired = text;
    std::replace_if(
        repaired.begin(), repaired.end(), [](wchar_t unit) { return !isScalarValue(unit); }, L'\uFFFD');
    writeText(writer, repaired, key);
}

template <class Writer>
void writeVariant(Writer &writer, const TyxVariant &value, unsigned int depth)
{
    // The built-in code stored in the value object answers without a virtual
    // call; other types answer -1 and take the general way at the end.
    switch (value.impl().fastCode()) {
    case TyxMetaType::Invalid: writer.Null(); return;
    case TyxMetaType::Bool: writer.Bool(heldValue<bool>(value)); return;
    case TyxMetaType::String: writeText(writer, heldValue<TyxString>(value), false); return;
    case TyxMetaType::Int: writer.Int(heldValue<int>(value)); return;
    case TyxMetaType::UInt: writer.Uint(heldValue<unsigned int>(value)); return;
    case TyxMetaType::Int64: writer.Int64(heldValue<int64_t>(value)); return;
    case TyxMetaType::UInt64: writer.Uint64(heldValue<uint64_t>(value)); return;
    case TyxMetaType::Double: {
        const double number = heldValue<double>(value);
        if (std::isfinite(number))
            writer.Double(number);
        else
            writer.Null();
        return;
    }
    case TyxMetaType::VariantList:
        // Deeper containers than the reader accepts are written as null.
        if (depth >= TyxJsonMaxDepth) {
            writer.Null();
            return;
        }
        writer.StartArray();
        for (const TyxVariant &element : heldValue<TyxVariantList>(value))
            writeVariant(writer, element, depth + 1);
        writer.EndArray();
        return;
    case TyxMetaType::VariantMap:
        if (depth >= TyxJsonMaxDepth) {
            writer.Null();
            return;
        }
        writer.StartObject();
        for (const auto &[key, member] : heldValue<TyxVariantMap>(value)) {
            writeText(writer, key, true);
            writeVariant(writer, member, depth + 1);
        }
        writer.EndObject();
        return;
    case TyxMetaType::Int8:
    case TyxMetaType::Int16:
    case TyxMetaType::Char: writer.Int64(value.value<int64_t>()); return;
    case TyxMetaType::UInt8:
    case TyxMetaType::UInt16: writer.Uint64(value.value<uint64_t>()); return;
    default: break;
    }
    if (value.isNumeric()) {
        const double number = value.value<double>();
        if (std::isfinite(number))
            writer.Double(number);
        else
            writer.Null();
        return;
    }
    writeText(writer, value.value<TyxString>(), false);
}

// Hands the writer's output to a stream in chunks, so that no buffer of the
// whole text is grown and copied.
template <class Char>
class StreamChunks {
public:
    using Ch = Char;

    explicit StreamChunks(std::basic_ostream<Char> &os) : m_os(os) {}

    void Put(Ch unit)
    {
        if (m_used == chunkSize)
            Flush();
        m_chunk[m_used++] = unit;
    }
    void Flush()
    {
        m_os.write(m_chunk, static_cast<std::streamsize>(m_used));
        m_used = 0;
    }

private:
    static constexpr size_t chunkSize = 4096;

    std::basic_ostream<Char> &m_os;
    size_t m_used = 0;
    Ch m_chunk[chunkSize];
};

// The writer's encoders find these by argument-dependent lookup.
template <class Char>
void PutReserve(StreamChunks<Char> &, size_t)
{
}

template <class Char>
void PutUnsafe(StreamChunks<Char> &stream, Char unit)
{
    stream.Put(unit);
}

// The JSON text of \p value in the buffer's encoding, from wide text.
template <class Buffer>
void writeInto(Buffer &buffer, const TyxVariant &value, const TyxString &indent, bool pretty)
{
    using Target = typename Buffer::Ch;
    using TargetEncoding = std::conditional_t<sizeof(Target) == 1, rapidjson::UTF8<>, WideEncoding>;
    if (pretty) {
        rapidjson::PrettyWriter<Buffer, WideEncoding, TargetEncoding> writer(buffer);
        if (!indent.empty() && indent.find_first_not_of(indent[0]) == TyxString::npos &&
            (indent[0] == L' ' || indent[0] == L'\t' || indent[0] == L'\n' || indent[0] == L'\r'))
            writer.SetIndent(static_cast<typename WideEncoding::Ch>(indent[0]),
                             static_cast<unsigned>(indent.size()));
        writeVariant(writer, value, 0);
    } else {
        rapidjson::Writer<Buffer, WideEncoding, TargetEncoding> writer(buffer);
        writeVariant(writer, value, 0);
    }
}

} // namespace

TyxJsonParseResult parseJsonText(const std::string &text, TyxVariant &value)
{
    // RapidJSON takes the continuation bytes of a multi-byte sequence
    // without looking for the end, so a text that stops inside one would be
    // read past its terminator. A memory stream knows its end and gives a
    // zero there, which fails the sequence.
    rapidjson::MemoryStream stream(text.data(), text.size());
    return parseWith<rapidjson::UTF8<>>(text, stream, value);
}

TyxJsonParseResult parseJsonText(const std::wstring &text, TyxVariant &value)
{
    // RapidJSON reads a wide unit as signed, so a unit past U+10FFFF (or a
    // negative one) passes its check. Such text fails here with the message
    // RapidJSON gives for a bad encoding.
    const auto bad = std::find_if(text.begin(), text.end(),
                                  [](wchar_t unit) { return static_cast<uint32_t>(unit) > 0x10FFFF; });
    if (bad == text.end()) {
        rapidjson::GenericStringStream<WideEncoding> stream(text.c_str());
        return parseWith<WideEncoding>(text, stream, value);
    }
    return failureAt(text, static_cast<uint64_t>(bad - text.begin()),
                     fromUTF8(rapidjson::GetParseError_En(rapidjson::kParseErrorStringInvalidEncoding)));
}

std::string readAllText(std::istream &is) { return readAllFrom(is); }

std::wstring readAllText(std::wistream &is) { return readAllFrom(is); }

void writeJsonText(std::ostream &os, const TyxVariant &value, const TyxString &indent, bool pretty)
{
    StreamChunks<char> chunks(os);
    writeInto(chunks, value, indent, pretty);
    chunks.Flush();
}

void writeJsonText(std::wostream &os, const TyxVariant &value, const TyxString &indent, bool pretty)
{
    StreamChunks<wchar_t> chunks(os);
    writeInto(chunks, value, indent, pretty);
    chunks.Flush();
}

// The length in units: GetSize counts bytes.
template <class Buffer>
TyxString textOfBuffer(const Buffer &buffer)
{
    return TyxString(std::wstring(buffer.GetString(), buffer.GetSize() / sizeof(wchar_t)));
}

TyxString jsonText(const TyxVariant &value, bool pretty)
{
    rapidjson::GenericStringBuffer<WideEncoding> buffer;
    writeInto(buffer, value, TyxString(), pretty);
    return textOfBuffer(buffer);
}

TyxString stripJsonWhiteSpace(const TyxString &text)
{
    rapidjson::GenericReader<WideEncoding, WideEncoding> reader;
    rapidjson::GenericStringStream<WideEncoding> stream(text.c_str());
    rapidjson::GenericStringBuffer<WideEncoding> buffer;
    rapidjson::Writer<decltype(buffer), WideEncoding, WideEncoding> writer(buffer);
    if (reader.Parse<parseFlags>(stream, writer).IsError())
        return text;
    return textOfBuffer(buffer);
}

} // namespace tyx::internal
