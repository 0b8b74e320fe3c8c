// JSON nodes, and the JSON reader and writer over RapidJSON.
#include <tyx/TyxJsonNode.h>

#include <climits>
#include <cmath>
#include <istream>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string_view>
#include <vector>

#include <rapidjson/encodings.h>
#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "core/TyxPost.h"

namespace tyx {

namespace internal {

struct TyxJsonNodeImpl {
    TyxString name;
    TyxVariant value;
    TyxString comment;
};

} // namespace internal

namespace {

using internal::TyxJsonNodeImpl;

template <class T>
const T &heldValue(const TyxVariant &value)
{
    return static_cast<const TyxVariantImpl<T> &>(value.impl()).get();
}

// Builds the variant while the reader runs, one frame per open container, so
// neither reading nor building recurses.
class VariantBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, VariantBuilder> {
public:
    bool Null() { return add(TyxVariant()); }
    bool Bool(bool b) { return add(TyxVariant(b)); }
    // Numbers take the narrowest of int, unsigned int, int64 and uint64 that
    // holds them, in that order, as a RapidJSON value answers IsInt() first.
    bool Int(int i) { return add(TyxVariant(i)); }
    bool Uint(unsigned u) { return u <= INT_MAX ? add(TyxVariant(static_cast<int>(u))) : add(TyxVariant(u)); }
    bool Int64(int64_t i) { return add(TyxVariant(i)); }
    bool Uint64(uint64_t u)
    {
        return u <= static_cast<uint64_t>(INT64_MAX) ? add(TyxVariant(static_cast<int64_t>(u)))
                                                     : add(TyxVariant(u));
    }
    bool Double(double d) { return add(TyxVariant(d)); }
    bool String(const char *text, rapidjson::SizeType length, bool)
    {
        return add(TyxVariant(fromUTF8(std::string_view(text, length))));
    }
    bool Key(const char *text, rapidjson::SizeType length, bool)
    {
        m_frames.back().key = fromUTF8(std::string_view(text, length));
        return true;
    }
    bool StartObject() { return open(true); }
    bool EndObject(rapidjson::SizeType)
    {
        TyxVariantMap map = std::move(m_frames.back().map);
        m_frames.pop_back();
        return add(TyxVariant(std::move(map)));
    }
    bool StartArray() { return open(false); }
    bool EndArray(rapidjson::SizeType)
    {
        TyxVariantList list = std::move(m_frames.back().list);
        m_frames.pop_back();
        return add(TyxVariant(std::move(list)));
    }

    bool tooDeep() const { return m_tooDeep; }
    TyxVariant &result() { return m_result; }

private:
    struct Frame {
        bool isMap = false;
        TyxString key;
        TyxVariantList list;
        TyxVariantMap map;
    };

    bool open(bool isMap)
    {
        if (m_frames.size() >= TyxJsonMaxDepth) {
            m_tooDeep = true;
            return false;
        }
        m_frames.emplace_back();
        m_frames.back().isMap = isMap;
        return true;
    }
    bool add(TyxVariant &&value)
    {
        if (m_frames.empty()) {
            m_result = std::move(value);
        } else if (m_frames.back().isMap) {
            // A repeated member keeps its first value, as a lookup in a
            // RapidJSON object finds the first.
            Frame &frame = m_frames.back();
            frame.map.emplace(std::move(frame.key), std::move(value));
            frame.key.clear();
        } else {
            m_frames.back().list.push_back(std::move(value));
        }
        return true;
    }

    std::vector<Frame> m_frames;
    TyxVariant m_result;
    bool m_tooDeep = false;
};

constexpr unsigned parseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

template <class Text>
uint64_t lineAt(const Text &text, size_t offset)
{
    if (offset > text.size())
        offset = text.size();
    uint64_t line = 1;
    for (size_t i = 0; i < offset; ++i) {
        if (text[i] == '\n')
            ++line;
    }
    return line;
}

struct ParseResult {
    TyxTextMsg msg;
    uint64_t line = 0;
    uint64_t offset = 0;
};

template <class Text, class Reader, class Stream>
ParseResult parseText(const Text &text, Reader &reader, Stream &stream, TyxVariant &value)
{
    ParseResult outcome;
    VariantBuilder builder;
    if (reader.template Parse<parseFlags>(stream, builder)) {
        value = std::move(builder.result());
        return outcome;
    }
    outcome.offset = reader.GetErrorOffset();
    outcome.line = lineAt(text, outcome.offset);
    TyxString text1;
    if (builder.tooDeep()) {
        text1 = L"The document nests arrays and objects deeper than " + std::to_wstring(TyxJsonMaxDepth) +
                L" levels.";
    } else {
        text1 = fromUTF8(rapidjson::GetParseError_En(reader.GetParseErrorCode()));
    }
    text1 +=
        L" (Line: " + std::to_wstring(outcome.line) + L" Offset: " + std::to_wstring(outcome.offset) + L")";
    outcome.msg = TyxTextMsg(std::move(text1), __FILE__, __LINE__, TyxTextMsg::Error);
    return outcome;
}

ParseResult parseUtf8(const std::string &text, TyxVariant &value)
{
    // RapidJSON takes the continuation bytes of a multi-byte sequence
    // without looking for the end: a text that stops inside one would be
    // read up to three bytes past its terminator. Three more zeros keep
    // that read inside the buffer, and a zero fails the sequence.
    std::string padded;
    padded.reserve(text.size() + 4);
    padded.append(text).append(3, '\0');
    rapidjson::Reader reader;
    rapidjson::StringStream stream(padded.c_str());
    return parseText(text, reader, stream, value);
}

ParseResult parseWide(const std::wstring &text, TyxVariant &value)
{
    // RapidJSON reads a wide unit as signed, so a unit past U+10FFFF (or
    // negative) passes its check and trips an assertion while it is encoded
    // as UTF-8. Such text fails here with the message RapidJSON gives for a
    // bad encoding.
    for (size_t i = 0; i < text.size(); ++i) {
        const auto unit = static_cast<uint32_t>(text[i]);
        if (unit > 0x10FFFF) {
            ParseResult outcome;
            outcome.offset = i;
            outcome.line = lineAt(text, i);
            outcome.msg = TyxTextMsg(
                fromUTF8(rapidjson::GetParseError_En(rapidjson::kParseErrorStringInvalidEncoding)) +
                    L" (Line: " + std::to_wstring(outcome.line) + L" Offset: " +
                    std::to_wstring(outcome.offset) + L")",
                __FILE__, __LINE__, TyxTextMsg::Error);
            return outcome;
        }
    }
    rapidjson::GenericReader<rapidjson::UTF32<wchar_t>, rapidjson::UTF8<>> reader;
    rapidjson::GenericStringStream<rapidjson::UTF32<wchar_t>> stream(text.c_str());
    return parseText(text, reader, stream, value);
}

std::string readAll(std::istream &is)
{
    // Bulk copy through the buffer; an empty stream sets failbit, which is harmless here.
    std::ostringstream text;
    if (is.rdbuf())
        text << is.rdbuf();
    return std::move(text).str();
}

std::wstring readAll(std::wistream &is)
{
    return std::wstring(std::istreambuf_iterator<wchar_t>(is), std::istreambuf_iterator<wchar_t>());
}

template <class Writer>
void writeText(Writer &writer, const TyxString &text)
{
    const std::string utf8 = toUTF8(text);
    writer.String(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
}

template <class Writer>
void writeVariant(Writer &writer, const TyxVariant &value, unsigned int depth)
{
    switch (value.type()) {
    case TyxMetaType::Invalid: writer.Null(); return;
    case TyxMetaType::Bool: writer.Bool(value.value<bool>()); return;
    case TyxMetaType::String: writeText(writer, heldValue<TyxString>(value)); return;
    case TyxMetaType::VariantList:
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
            const std::string utf8 = toUTF8(key);
            writer.Key(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
            writeVariant(writer, member, depth + 1);
        }
        writer.EndObject();
        return;
    case TyxMetaType::Int8:
    case TyxMetaType::Int16:
    case TyxMetaType::Int:
    case TyxMetaType::Int64:
    case TyxMetaType::Char: writer.Int64(value.value<int64_t>()); return;
    case TyxMetaType::UInt8:
    case TyxMetaType::UInt16:
    case TyxMetaType::UInt:
    case TyxMetaType::UInt64: writer.Uint64(value.value<uint64_t>()); return;
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
    writeText(writer, value.value<TyxString>());
}

std::string jsonText(const TyxVariant &value, const TyxString &indent, bool pretty)
{
    rapidjson::StringBuffer buffer;
    if (pretty) {
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        if (!indent.empty() && indent.find_first_not_of(indent[0]) == TyxString::npos &&
            (indent[0] == L' ' || indent[0] == L'\t' || indent[0] == L'\n' || indent[0] == L'\r'))
            writer.SetIndent(static_cast<char>(indent[0]), static_cast<unsigned>(indent.size()));
        writeVariant(writer, value, 0);
    } else {
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        writeVariant(writer, value, 0);
    }
    return std::string(buffer.GetString(), buffer.GetSize());
}

TyxJsonNodeType typeOf(const TyxVariant &value)
{
    switch (value.type()) {
    case TyxMetaType::Invalid: return TyxJsonNodeType::Null;
    case TyxMetaType::Bool: return TyxJsonNodeType::Bool;
    case TyxMetaType::String: return TyxJsonNodeType::String;
    case TyxMetaType::VariantList: return TyxJsonNodeType::Array;
    case TyxMetaType::VariantMap: return TyxJsonNodeType::Node;
    default: return value.isNumeric() ? TyxJsonNodeType::Number : TyxJsonNodeType::String;
    }
}

} // namespace

TyxTextMsg fromJson(std::istream &is, TyxVariant &value) { return parseUtf8(readAll(is), value).msg; }

TyxTextMsg fromJson(std::wistream &is, TyxVariant &value) { return parseWide(readAll(is), value).msg; }

void toJson(std::ostream &os, const TyxVariant &value, const TyxString &indent, bool pretty)
{
    os << jsonText(value, indent, pretty);
}

void toJson(std::wostream &os, const TyxVariant &value, const TyxString &indent, bool pretty)
{
    os << fromUTF8(jsonText(value, indent, pretty));
}

TyxJsonNode::TyxJsonNode() = default;

TyxJsonNode::TyxJsonNode(const TyxJsonNodeType &type) : m_impl(std::make_unique<TyxJsonNodeImpl>())
{
    switch (type) {
    case TyxJsonNodeType::String: m_impl->value = TyxVariant(TyxString()); break;
    case TyxJsonNodeType::Number: m_impl->value = TyxVariant(0.0); break;
    case TyxJsonNodeType::Bool: m_impl->value = TyxVariant(false); break;
    case TyxJsonNodeType::Array: m_impl->value = TyxVariant(TyxVariantList()); break;
    case TyxJsonNodeType::Node: m_impl->value = TyxVariant(TyxVariantMap()); break;
    default: break;
    }
}

TyxJsonNode::TyxJsonNode(const TyxString &name, const TyxVariant &value)
    : m_impl(std::make_unique<TyxJsonNodeImpl>(TyxJsonNodeImpl{name, value, TyxString()}))
{
}

TyxJsonNode::TyxJsonNode(const TyxJsonNode &other)
    : TyxObject(other), m_impl(other.m_impl ? std::make_unique<TyxJsonNodeImpl>(*other.m_impl) : nullptr)
{
}

TyxJsonNode::TyxJsonNode(TyxJsonNode &&other) noexcept = default;

TyxJsonNode::TyxJsonNode(std::unique_ptr<TyxJsonNodeImpl> impl) : m_impl(std::move(impl)) {}

TyxJsonNode::~TyxJsonNode() = default;

TyxJsonNode &TyxJsonNode::operator=(const TyxJsonNode &other)
{
    if (this != &other)
        m_impl = other.m_impl ? std::make_unique<TyxJsonNodeImpl>(*other.m_impl) : nullptr;
    return *this;
}

TyxJsonNode &TyxJsonNode::operator=(TyxJsonNode &&other) noexcept = default;

TyxJsonNode &TyxJsonNode::operator=(const TyxVariant &value)
{
    setValue(value);
    return *this;
}

TyxString TyxJsonNode::className() const { return L"TyxJsonNode"; }

void TyxJsonNode::clear()
{
    if (m_impl) {
        m_impl->value.clear();
        m_impl->comment.clear();
    }
}

bool TyxJsonNode::empty() const { return size() == 0; }

size_t TyxJsonNode::size() const
{
    if (!m_impl)
        return 0;
    switch (m_impl->value.type()) {
    case TyxMetaType::VariantList: return heldValue<TyxVariantList>(m_impl->value).size();
    case TyxMetaType::VariantMap: return heldValue<TyxVariantMap>(m_impl->value).size();
    default: return 0;
    }
}

TyxJsonNodeType TyxJsonNode::type() const
{
    return m_impl ? typeOf(m_impl->value) : TyxJsonNodeType(TyxJsonNodeType::Null);
}

TyxString TyxJsonNode::name() const { return m_impl ? m_impl->name : TyxString(); }

void TyxJsonNode::setName(const TyxString &name)
{
    if (!m_impl)
        m_impl = std::make_unique<TyxJsonNodeImpl>();
    m_impl->name = name;
}

TyxString TyxJsonNode::comment() const { return m_impl ? m_impl->comment : TyxString(); }

void TyxJsonNode::setComment(const TyxString &comment)
{
    if (!m_impl)
        m_impl = std::make_unique<TyxJsonNodeImpl>();
    m_impl->comment = comment;
}

TyxVariant TyxJsonNode::value() const { return m_impl ? m_impl->value : TyxVariant(); }

void TyxJsonNode::setValue(const TyxVariant &value)
{
    if (!m_impl)
        m_impl = std::make_unique<TyxJsonNodeImpl>();
    m_impl->value = value;
}

void TyxJsonNode::pushBack(const TyxJsonNode &node)
{
    if (!node.m_impl) {
        TYX_POST_ERROR(L"Cannot pushBack an TyxJsonNodeIFPtr instantiated by a different TyxJsonNode "
                       L"implementation.");
        return;
    }
    if (!m_impl)
        m_impl = std::make_unique<TyxJsonNodeImpl>();
    TyxVariantList list;
    if (m_impl->value.type() == TyxMetaType::VariantList)
        list = heldValue<TyxVariantList>(m_impl->value);
    else if (m_impl->value.isValid())
        list.push_back(m_impl->value);
    list.push_back(node.m_impl->value);
    m_impl->value = TyxVariant(std::move(list));
}

bool TyxJsonNode::toBool() const { return value().value<bool>(); }

double TyxJsonNode::toDouble() const { return value().value<double>(); }

int TyxJsonNode::toInt() const { return value().value<int>(); }

TyxString TyxJsonNode::toString() const { return value().value<TyxString>(); }

TyxJsonNode TyxJsonNode::toNode() const
{
    return TyxJsonNode(name(), TyxVariant(value().value<TyxVariantMap>()));
}

TyxJsonNode TyxJsonNode::toArray() const
{
    return TyxJsonNode(name(), TyxVariant(value().value<TyxVariantList>()));
}

TyxString TyxJsonNode::toJson(bool pretty) const { return fromUTF8(jsonText(value(), TyxString(), pretty)); }

TyxJsonNode TyxJsonNode::at(unsigned int index) const
{
    if (!m_impl)
        return TyxJsonNode();
    if (m_impl->value.type() == TyxMetaType::VariantList) {
        const TyxVariantList &list = heldValue<TyxVariantList>(m_impl->value);
        return index < list.size() ? TyxJsonNode(TyxString(), list[index]) : TyxJsonNode();
    }
    if (m_impl->value.type() == TyxMetaType::VariantMap) {
        const TyxVariantMap &map = heldValue<TyxVariantMap>(m_impl->value);
        if (index >= map.size())
            return TyxJsonNode();
        auto it = std::next(map.begin(), index);
        return TyxJsonNode(it->first, it->second);
    }
    return TyxJsonNode();
}

TyxJsonNode TyxJsonNode::find(const TyxString &name) const
{
    if (!m_impl || m_impl->value.type() != TyxMetaType::VariantMap)
        return TyxJsonNode();
    const TyxVariantMap &map = heldValue<TyxVariantMap>(m_impl->value);
    auto it = map.find(name);
    return it == map.end() ? TyxJsonNode() : TyxJsonNode(it->first, it->second);
}

TyxJsonNode TyxJsonNode::parse(const TyxString &text)
{
    TyxVariant value;
    if (!parseWide(text, value).msg.empty())
        return TyxJsonNode();
    return TyxJsonNode(TyxString(), value);
}

TyxJsonNode TyxJsonNode::parse(std::istream &is)
{
    TyxVariant value;
    if (!fromJson(is, value).empty())
        return TyxJsonNode();
    return TyxJsonNode(TyxString(), value);
}

TyxJsonNode TyxJsonNode::parse(std::wistream &is)
{
    TyxVariant value;
    if (!fromJson(is, value).empty())
        return TyxJsonNode();
    return TyxJsonNode(TyxString(), value);
}

bool TyxJsonNode::isValid(const TyxString &text)
{
    TyxVariant value;
    return parseWide(text, value).msg.empty();
}

bool TyxJsonNode::isValid(std::istream &is, uint64_t &line, uint64_t &offset)
{
    TyxVariant value;
    const ParseResult outcome = parseUtf8(readAll(is), value);
    line = outcome.line;
    offset = outcome.offset;
    return outcome.msg.empty();
}

bool TyxJsonNode::isValid(std::wistream &is, uint64_t &line, uint64_t &offset)
{
    TyxVariant value;
    const ParseResult outcome = parseWide(readAll(is), value);
    line = outcome.line;
    offset = outcome.offset;
    return outcome.msg.empty();
}

TyxString TyxJsonNode::stripWhiteSpace(const TyxString &text)
{
    TyxVariant value;
    if (!parseWide(text, value).msg.empty())
        return text;
    return fromUTF8(jsonText(value, TyxString(), false));
}

std::ostream &operator<<(std::ostream &os, const TyxJsonNode &node)
{
    return os << toUTF8(node.toJson(false));
}

std::wostream &operator<<(std::wostream &os, const TyxJsonNode &node) { return os << node.toJson(false); }

std::istream &operator>>(std::istream &is, TyxJsonNode &node)
{
    node = TyxJsonNode::parse(is);
    if (node.isNull())
        is.setstate(std::ios::failbit);
    return is;
}

std::wistream &operator>>(std::wistream &is, TyxJsonNode &node)
{
    node = TyxJsonNode::parse(is);
    if (node.isNull())
        is.setstate(std::ios::failbit);
    return is;
}

} // namespace tyx
