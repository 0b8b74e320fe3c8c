// XML text of variants and documents: toXml, fromXml and the element codec.
#include "document/TyxXmlText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <istream>
#include <iterator>
#include <limits>
#include <map>
#include <ostream>
#include <sstream>

#include <tyx/TyxBase64.h>
#include <tyx/TyxBuffer.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxSimpleStream.h>

#include "core/TyxPost.h"

namespace tyx {

namespace internal {

namespace {

using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

constexpr int kBuiltinCount = TyxMetaType::Invalid;

// UTF-8 names of the built-in codes, made once so that writing a value costs
// no conversion of its type name.
const std::array<std::string, kBuiltinCount> &builtinNames()
{
    static const std::array<std::string, kBuiltinCount> names = [] {
        std::array<std::string, kBuiltinCount> n;
        for (int code = 0; code < kBuiltinCount; ++code)
            n[static_cast<size_t>(code)] = toUTF8(TyxMetaType(code).toString());
        return n;
    }();
    return names;
}

std::string typeNameOf(const TyxMetaType &type)
{
    const int code = type.toEnum();
    if (code >= 0 && code < kBuiltinCount)
        return builtinNames()[static_cast<size_t>(code)];
    return toUTF8(type.toString());
}

// The type of an attribute text: exact names first, then the type table,
// which ignores case.
TyxMetaType typeOfName(const char *name)
{
    static const std::map<std::string, int, std::less<>> exact = [] {
        std::map<std::string, int, std::less<>> m;
        for (int code = 0; code < kBuiltinCount; ++code)
            m.emplace(builtinNames()[static_cast<size_t>(code)], code);
        return m;
    }();
    const auto it = exact.find(std::string_view(name));
    if (it != exact.end())
        return TyxMetaType(it->second);
    return TyxMetaType::fromString(fromUTF8(name));
}

const TyxMetaType &proxyType() { return TyxVariantTraits<TyxObjectProxy>::type(); }

template <class T>
const T &held(const TyxVariant &value)
{
    return static_cast<const TyxVariantImpl<T> &>(value.impl()).get();
}

template <class T>
void appendNumber(std::string &out, T number)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    out.append(buffer, result.ptr);
}

template <class T>
std::string numberText(T number)
{
    std::string text;
    appendNumber(text, number);
    return text;
}

// Text that XML would not give back as it stands (surrounding blanks, line
// ends normalised by the parser, characters XML forbids) travels as Base64.
bool needsBase64(const TyxString &text)
{
    if (text.empty())
        return false;
    auto blank = [](wchar_t c) { return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r'; };
    if (blank(text.front()) || blank(text.back()))
        return true;
    for (const wchar_t c : text) {
        const auto u = static_cast<uint32_t>(c);
        if ((u < 0x20 && c != L'\n' && c != L'\t') || (u >= 0xD800 && u <= 0xDFFF) || u == 0xFFFE ||
            u == 0xFFFF || u > 0x10FFFF)
            return true;
    }
    return false;
}

// Text has an "encoding" attribute when it is Base64; buffers always are.
void pushBase64(TyxXmlPrinter &printer, const void *data, size_t size, bool markEncoding)
{
    std::string text;
    TyxBase64::encode(data, size, text);
    if (markEncoding)
        printer.PushAttribute("encoding", "base64");
    printer.PushText(text.c_str());
}

void writeText(TyxXmlPrinter &printer, const TyxString &text)
{
    const std::string utf8 = toUTF8(text);
    if (needsBase64(text))
        pushBase64(printer, utf8.data(), utf8.size(), true);
    else if (!utf8.empty())
        printer.PushText(utf8.c_str());
}

// The stream form of a value, doubles in it at full precision.
std::string streamForm(const TyxVariant &value)
{
    std::wostringstream os;
    os.precision(std::numeric_limits<double>::max_digits10);
    value.impl().write(os);
    return toUTF8(os.str());
}

// Reads the stream form of \p type; invalid when the text does not convert.
TyxVariant fromStreamForm(const TyxMetaType &type, const std::string &text)
{
    TyxVariant fresh(type, nullptr);
    if (!fresh.isValid())
        return fresh;
    std::wistringstream is(fromUTF8(text));
    // The fresh value has no other owner, so it may be written in place.
    const_cast<TyxVariantIF &>(fresh.impl()).read(is);
    if (is.fail() || !(is >> std::ws).eof())
        return TyxVariant();
    return fresh;
}

void writeTile(TyxXmlPrinter &printer, const TyxEqnTile &tile)
{
    const size_t sampleSize = tile.dataType().size();
    const size_t count = static_cast<size_t>(tile.size());
    std::vector<uint8_t> bytes(sampleSize * count);
    if (tile.buffer() && sampleSize > 0) {
        const auto *data = static_cast<const uint8_t *>(tile.buffer()->data());
        const size_t stride = static_cast<size_t>(tile.step()) * sampleSize;
        for (size_t i = 0; i < count; ++i)
            std::memcpy(bytes.data() + i * sampleSize, data + i * stride, sampleSize);
    }
    printer.PushAttribute("data_type", streamForm(TyxVariant(tile.dataType())).c_str());
    printer.PushAttribute("size", std::to_string(count).c_str());
    pushBase64(printer, bytes.data(), bytes.size(), false);
}

// Writes the value of \p value inside its open element.
void writeContent(TyxXmlPrinter &printer, const TyxVariant &value, int depth)
{
    std::string text;
    switch (value.type()) {
    case TyxMetaType::Invalid: return;
    case TyxMetaType::Bool: printer.PushText(held<bool>(value) ? "true" : "false"); return;
    case TyxMetaType::Int8: text = numberText(static_cast<int>(held<signed char>(value))); break;
    case TyxMetaType::UInt8: text = numberText(static_cast<unsigned>(held<unsigned char>(value))); break;
    case TyxMetaType::Int16: text = numberText(held<short>(value)); break;
    case TyxMetaType::UInt16: text = numberText(held<unsigned short>(value)); break;
    case TyxMetaType::Int: text = numberText(held<int>(value)); break;
    case TyxMetaType::UInt: text = numberText(held<unsigned int>(value)); break;
    case TyxMetaType::Int64: text = numberText(held<int64_t>(value)); break;
    case TyxMetaType::UInt64: text = numberText(held<uint64_t>(value)); break;
    case TyxMetaType::Float: text = numberText(held<float>(value)); break;
    case TyxMetaType::Double: text = numberText(held<double>(value)); break;
    case TyxMetaType::Char: text = numberText(static_cast<uint32_t>(held<wchar_t>(value))); break;
    case TyxMetaType::ComplexDouble: {
        const auto &c = held<std::complex<double>>(value);
        text = "(";
        appendNumber(text, c.real());
        text += ',';
        appendNumber(text, c.imag());
        text += ')';
        break;
    }
    case TyxMetaType::String: writeText(printer, held<TyxString>(value)); return;
    case TyxMetaType::EqnTile: writeTile(printer, held<TyxEqnTile>(value)); return;
    case TyxMetaType::StrList:
        for (const TyxString &item : held<TyxStrList>(value))
            writeXmlVariant(printer, TyxVariant(item), nullptr, depth + 1);
        return;
    case TyxMetaType::BufferPtr: {
        const TyxBufferPtr &buffer = held<TyxBufferPtr>(value);
        if (!buffer)
            printer.PushAttribute("null", "true");
        else
            pushBase64(printer, buffer->data(), static_cast<size_t>(buffer->size()), false);
        return;
    }
    case TyxMetaType::KeyValuePair: {
        const auto &pair = held<TyxVariantPair>(value);
        printer.PushAttribute("name", toUTF8(pair.first).c_str());
        writeXmlVariant(printer, pair.second, nullptr, depth + 1);
        return;
    }
    case TyxMetaType::VariantList:
        for (const TyxVariant &element : held<TyxVariantList>(value))
            writeXmlVariant(printer, element, nullptr, depth + 1);
        return;
    case TyxMetaType::VariantMap:
        for (const auto &[key, member] : held<TyxVariantMap>(value))
            writeXmlVariant(printer, member, toUTF8(key).c_str(), depth + 1);
        return;
    default:
        if (value.type() == proxyType()) {
            writeXmlObject(printer, held<TyxObjectProxy>(value), depth + 1);
            return;
        }
        if (TyxObjectProxy::isHolder(value.type())) {
            // An object travels as its document; one that cannot be read as
            // a document falls back to the stream form below.
            TyxObjectProxy document;
            if (TyxObjectProxy::fromHolder(value, document).empty()) {
                if (document.objectClassName().empty())
                    printer.PushAttribute("null", "true");
                else
                    writeXmlObject(printer, document, depth + 1);
                return;
            }
        }
        // Every other type in its stream form.
        writeText(printer, fromUTF8(streamForm(value)));
        return;
    }
    printer.PushText(text.c_str());
}

TyxString lineOf(const XMLNode *node) { return L" at line " + std::to_wstring(node->GetLineNum()) + L"."; }

TyxString nameOf(const XMLElement *element) { return fromUTF8(element->Name()); }

bool isBlank(const char *text)
{
    for (; *text; ++text) {
        if (*text != ' ' && *text != '\t' && *text != '\n' && *text != '\r')
            return false;
    }
    return true;
}

// The text of an element that may not hold elements; null on wrong nesting.
TyxTextMsg leafText(const XMLElement *element, const TyxString &typeName, std::string &text)
{
    text.clear();
    for (const XMLNode *child = element->FirstChild(); child; child = child->NextSibling()) {
        if (child->ToElement())
            return TYX_ERROR_MSG(L"A " + typeName + L" value may not hold the element <" +
                                 nameOf(child->ToElement()) + L">" + lineOf(child));
        if (child->ToText())
            text += child->Value();
    }
    if (const char *encoding = element->Attribute("encoding")) {
        if (std::strcmp(encoding, "base64") != 0)
            return TYX_ERROR_MSG(L"Unknown encoding '" + fromUTF8(encoding) + L"'" + lineOf(element));
        std::vector<uint8_t> bytes;
        if (TyxTextMsg msg = TyxBase64::decode(std::string_view(text), bytes); !msg.empty())
            return TYX_ERROR_MSG(msg.text().substr(0, msg.text().size() - 1) + lineOf(element));
        text.assign(bytes.begin(), bytes.end());
    }
    return TyxTextMsg();
}

// Calls \p each for every child element; text other than blanks is wrong nesting.
template <class Each>
TyxTextMsg forEachChild(const XMLElement *element, const TyxString &typeName, Each each)
{
    for (const XMLNode *child = element->FirstChild(); child; child = child->NextSibling()) {
        if (const XMLElement *e = child->ToElement()) {
            if (TyxTextMsg msg = each(e); !msg.empty())
                return msg;
        } else if (child->ToText() && !isBlank(child->Value())) {
            return TYX_ERROR_MSG(L"A " + typeName + L" may not hold text" + lineOf(child));
        }
    }
    return TyxTextMsg();
}

TyxTextMsg notConverting(const std::string &text, const TyxString &typeName, const XMLNode *where)
{
    const TyxString shown = fromUTF8(text.size() > 40 ? text.substr(0, 40) + "..." : text);
    return TYX_ERROR_MSG(L"The value '" + shown + L"' does not convert to " + typeName + lineOf(where));
}

template <class T>
bool parseNumber(std::string_view text, T &out)
{
    if constexpr (std::is_integral_v<T>) {
        using Wide = std::conditional_t<std::is_signed_v<T>, int64_t, uint64_t>;
        Wide wide{};
        const auto r = std::from_chars(text.data(), text.data() + text.size(), wide);
        if (r.ec != std::errc() || r.ptr != text.data() + text.size() || text.empty())
            return false;
        if (wide < static_cast<Wide>(std::numeric_limits<T>::min()) ||
            wide > static_cast<Wide>(std::numeric_limits<T>::max()))
            return false;
        out = static_cast<T>(wide);
        return true;
    } else {
        const auto r = std::from_chars(text.data(), text.data() + text.size(), out);
        return r.ec == std::errc() && r.ptr == text.data() + text.size() && !text.empty();
    }
}

template <class T>
TyxTextMsg readNumber(const std::string &text, const TyxString &typeName, const XMLElement *element,
                      TyxVariant &value)
{
    T number{};
    if (!parseNumber(std::string_view(text), number))
        return notConverting(text, typeName, element);
    value = TyxVariant(number);
    return TyxTextMsg();
}

TyxTextMsg readTile(const XMLElement *element, const std::string &text, TyxVariant &value)
{
    const char *typeText = element->Attribute("data_type");
    uint64_t count = 0;
    const TyxVariant type = fromStreamForm(TyxMetaType::DataType, typeText ? typeText : "");
    if (!type.isValid() || element->QueryUnsigned64Attribute("size", &count) != tinyxml2::XML_SUCCESS)
        return TYX_ERROR_MSG(L"A TyxEqnTile needs the attributes data_type and size" + lineOf(element));
    std::vector<uint8_t> bytes;
    if (TyxTextMsg msg = TyxBase64::decode(std::string_view(text), bytes); !msg.empty())
        return TYX_ERROR_MSG(msg.text().substr(0, msg.text().size() - 1) + lineOf(element));
    const TyxDataType dataType = type.value<TyxDataType>();
    if (bytes.size() / std::max(1u, dataType.size()) != count || bytes.size() != count * dataType.size())
        return TYX_ERROR_MSG(L"A TyxEqnTile of " + std::to_wstring(count) + L" samples holds " +
                             std::to_wstring(bytes.size()) + L" bytes" + lineOf(element));
    TyxEqnTile tile = count == 0 ? TyxEqnTile() : TyxEqnTile(dataType, count);
    if (!bytes.empty())
        std::memcpy(tile.buffer()->data(), bytes.data(), bytes.size());
    value = TyxVariant(tile);
    return TyxTextMsg();
}

TyxTextMsg readLeaf(const XMLElement *element, const TyxMetaType &type, const TyxString &typeName,
                    TyxVariant &value)
{
    std::string text;
    if (TyxTextMsg msg = leafText(element, typeName, text); !msg.empty())
        return msg;
    switch (type) {
    case TyxMetaType::Bool:
        if (text != "true" && text != "false")
            return notConverting(text, typeName, element);
        value = TyxVariant(text == "true");
        return TyxTextMsg();
    case TyxMetaType::Int8: return readNumber<signed char>(text, typeName, element, value);
    case TyxMetaType::UInt8: return readNumber<unsigned char>(text, typeName, element, value);
    case TyxMetaType::Int16: return readNumber<short>(text, typeName, element, value);
    case TyxMetaType::UInt16: return readNumber<unsigned short>(text, typeName, element, value);
    case TyxMetaType::Int: return readNumber<int>(text, typeName, element, value);
    case TyxMetaType::UInt: return readNumber<unsigned int>(text, typeName, element, value);
    case TyxMetaType::Int64: return readNumber<int64_t>(text, typeName, element, value);
    case TyxMetaType::UInt64: return readNumber<uint64_t>(text, typeName, element, value);
    case TyxMetaType::Float: return readNumber<float>(text, typeName, element, value);
    case TyxMetaType::Double: return readNumber<double>(text, typeName, element, value);
    case TyxMetaType::Char: {
        uint32_t code = 0;
        if (!parseNumber(std::string_view(text), code))
            return notConverting(text, typeName, element);
        value = TyxVariant(static_cast<wchar_t>(code));
        return TyxTextMsg();
    }
    case TyxMetaType::ComplexDouble: {
        const std::string_view view(text);
        const size_t comma = view.find(',');
        double re = 0, im = 0;
        if (view.size() < 5 || view.front() != '(' || view.back() != ')' || comma == std::string_view::npos ||
            !parseNumber(view.substr(1, comma - 1), re) ||
            !parseNumber(view.substr(comma + 1, view.size() - comma - 2), im))
            return notConverting(text, typeName, element);
        value = TyxVariant(std::complex<double>(re, im));
        return TyxTextMsg();
    }
    case TyxMetaType::String: value = TyxVariant(fromUTF8(text)); return TyxTextMsg();
    case TyxMetaType::BufferPtr: {
        if (element->BoolAttribute("null")) {
            value = TyxVariant(TyxBufferPtr());
            return TyxTextMsg();
        }
        std::vector<uint8_t> bytes;
        if (!element->Attribute("encoding")) {
            if (TyxTextMsg msg = TyxBase64::decode(std::string_view(text), bytes); !msg.empty())
                return TYX_ERROR_MSG(msg.text().substr(0, msg.text().size() - 1) + lineOf(element));
        } else {
            bytes.assign(text.begin(), text.end());
        }
        TyxBufferPtr buffer(new TyxBuffer(bytes.size(), true));
        if (!bytes.empty())
            std::memcpy(buffer->data(), bytes.data(), bytes.size());
        value = TyxVariant(buffer);
        return TyxTextMsg();
    }
    case TyxMetaType::EqnTile: return readTile(element, text, value);
    default: break;
    }
    // Any other type reads its stream form into a fresh value of its own.
    if (!TyxVariant::prototype(type).isValid())
        return TYX_ERROR_MSG(L"The type " + typeName + L" cannot be read" + lineOf(element));
    TyxVariant read = fromStreamForm(type, text);
    if (!read.isValid())
        return notConverting(text, typeName, element);
    value = read;
    return TyxTextMsg();
}

TyxTextMsg readContainer(const XMLElement *element, const TyxMetaType &type, const TyxString &typeName,
                         TyxVariant &value, int depth)
{
    switch (type) {
    case TyxMetaType::StrList: {
        TyxStrList list;
        TyxTextMsg msg = forEachChild(element, typeName, [&](const XMLElement *child) {
            TyxVariant item;
            if (TyxTextMsg m = readXmlVariant(child, item, depth + 1); !m.empty())
                return m;
            if (item.type() != TyxMetaType::String)
                return TYX_ERROR_MSG(L"A TyxStrList may hold only TyxString values" + lineOf(child));
            list.push_back(held<TyxString>(item));
            return TyxTextMsg();
        });
        if (msg.empty())
            value = TyxVariant(std::move(list));
        return msg;
    }
    case TyxMetaType::VariantList: {
        TyxVariantList list;
        TyxTextMsg msg = forEachChild(element, typeName, [&](const XMLElement *child) {
            list.emplace_back();
            return readXmlVariant(child, list.back(), depth + 1);
        });
        if (msg.empty())
            value = TyxVariant(std::move(list));
        return msg;
    }
    case TyxMetaType::VariantMap: {
        TyxVariantMap map;
        TyxTextMsg msg = forEachChild(element, typeName, [&](const XMLElement *child) {
            const char *key = child->Attribute("key");
            if (!key)
                return TYX_ERROR_MSG(L"A member of a TyxVariantMap has no key" + lineOf(child));
            TyxVariant member;
            if (TyxTextMsg m = readXmlVariant(child, member, depth + 1); !m.empty())
                return m;
            if (!map.emplace(fromUTF8(key), member).second)
                return TYX_ERROR_MSG(L"The key '" + fromUTF8(key) + L"' appears twice in a TyxVariantMap" +
                                     lineOf(child));
            return TyxTextMsg();
        });
        if (msg.empty())
            value = TyxVariant(std::move(map));
        return msg;
    }
    default: break;
    }
    // A holder of a null object.
    if (element->BoolAttribute("null")) {
        if (element->FirstChildElement())
            return TYX_ERROR_MSG(L"A null " + typeName + L" may not hold an element" + lineOf(element));
        if (TyxTextMsg m = TyxObjectProxy().toHolder(type, value); !m.empty())
            return TYX_ERROR_MSG(m.text().substr(0, m.text().size() - 1) + lineOf(element));
        return TyxTextMsg();
    }
    // A pair, a document or an object: exactly one child element.
    const XMLElement *only = nullptr;
    TyxTextMsg msg = forEachChild(element, typeName, [&](const XMLElement *child) {
        if (only)
            return TYX_ERROR_MSG(L"A " + typeName + L" holds one element, not more" + lineOf(child));
        only = child;
        return TyxTextMsg();
    });
    if (!msg.empty())
        return msg;
    if (!only)
        return TYX_ERROR_MSG(L"A " + typeName + L" needs one element" + lineOf(element));
    if (type == TyxMetaType::KeyValuePair) {
        const char *name = element->Attribute("name");
        if (!name)
            return TYX_ERROR_MSG(L"A TyxKeyValuePair has no name" + lineOf(element));
        TyxVariant second;
        if (TyxTextMsg m = readXmlVariant(only, second, depth + 1); !m.empty())
            return m;
        value = TyxVariant(TyxVariantPair(fromUTF8(name), second));
        return TyxTextMsg();
    }
    TyxObjectProxy document;
    if (TyxTextMsg m = readXmlObject(only, document, depth + 1); !m.empty())
        return m;
    if (type == proxyType()) {
        value = TyxVariant(std::move(document));
        return TyxTextMsg();
    }
    if (TyxTextMsg m = document.toHolder(type, value); !m.empty())
        return TYX_ERROR_MSG(m.text().substr(0, m.text().size() - 1) + lineOf(only));
    return TyxTextMsg();
}

TyxTextMsg tooDeep(const XMLElement *element)
{
    return TYX_ERROR_MSG(L"The values are nested deeper than " + std::to_wstring(TyxXmlMaxDepth) +
                         L" levels" + lineOf(element));
}

} // namespace

void writeXmlVariant(TyxXmlPrinter &printer, const TyxVariant &value, const char *key, int depth)
{
    printer.OpenElement("variant", printer.isCompact());
    if (key)
        printer.PushAttribute("key", key);
    if (value.isValid() && depth < TyxXmlMaxDepth) {
        printer.PushAttribute("type", typeNameOf(value.type()).c_str());
        writeContent(printer, value, depth);
    }
    printer.CloseElement(printer.isCompact());
}

void writeXmlObject(TyxXmlPrinter &printer, const TyxObjectProxy &document, int depth)
{
    printer.OpenElement("object", printer.isCompact());
    printer.PushAttribute("class", toUTF8(document.objectClassName()).c_str());
    for (const auto &[name, value] : document.properties())
        writeXmlVariant(printer, value, toUTF8(name).c_str(), depth + 1);
    printer.CloseElement(printer.isCompact());
}

TyxTextMsg readXmlVariant(const XMLElement *element, TyxVariant &value, int depth)
{
    if (std::strcmp(element->Name(), "variant") != 0)
        return TYX_ERROR_MSG(L"Expected a <variant> element, found <" + nameOf(element) + L">" +
                             lineOf(element));
    if (depth > TyxXmlMaxDepth)
        return tooDeep(element);
    const char *typeText = element->Attribute("type");
    if (!typeText) {
        std::string text;
        if (TyxTextMsg msg = leafText(element, L"invalid", text); !msg.empty())
            return msg;
        if (!isBlank(text.c_str()))
            return TYX_ERROR_MSG(L"A <variant> without a type may not hold text" + lineOf(element));
        value = TyxVariant();
        return TyxTextMsg();
    }
    const TyxMetaType type = typeOfName(typeText);
    const TyxString typeName = fromUTF8(typeText);
    if (type == TyxMetaType::Invalid)
        return TYX_ERROR_MSG(L"Unknown type name '" + typeName + L"'" + lineOf(element));
    const bool container = type == TyxMetaType::StrList || type == TyxMetaType::VariantList ||
                           type == TyxMetaType::VariantMap || type == TyxMetaType::KeyValuePair ||
                           type == proxyType() || TyxObjectProxy::isHolder(type);
    return container ? readContainer(element, type, typeName, value, depth)
                     : readLeaf(element, type, typeName, value);
}

TyxTextMsg readXmlObject(const XMLElement *element, TyxObjectProxy &document, int depth)
{
    if (std::strcmp(element->Name(), "object") != 0)
        return TYX_ERROR_MSG(L"Expected an <object> element, found <" + nameOf(element) + L">" +
                             lineOf(element));
    if (depth > TyxXmlMaxDepth)
        return tooDeep(element);
    const char *className = element->Attribute("class");
    if (!className || !*className)
        return TYX_ERROR_MSG(L"An <object> element has no class" + lineOf(element));
    TyxObjectProxy read(fromUTF8(className));
    TyxTextMsg msg = forEachChild(element, L"<object>", [&](const XMLElement *child) {
        const char *key = child->Attribute("key");
        if (!key)
            return TYX_ERROR_MSG(L"A property of an <object> has no key" + lineOf(child));
        const TyxString name = fromUTF8(key);
        if (read.contains(name))
            return TYX_ERROR_MSG(L"The property '" + name + L"' appears twice" + lineOf(child));
        TyxVariant value;
        if (TyxTextMsg m = readXmlVariant(child, value, depth + 1); !m.empty())
            return m;
        read.setProperty(name, value);
        return TyxTextMsg();
    });
    if (msg.empty())
        document = std::move(read);
    return msg;
}

TyxTextMsg parseXmlText(std::string_view text, tinyxml2::XMLDocument &doc)
{
    if (doc.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS)
        return TYX_ERROR_MSG(fromUTF8(doc.ErrorStr()));
    const XMLElement *root = doc.RootElement();
    if (!root)
        return TYX_ERROR_MSG(L"The XML text holds no element.");
    if (root->NextSiblingElement())
        return TYX_ERROR_MSG(L"The XML text holds more than one top-level element.");
    return TyxTextMsg();
}

std::string xmlText(const TyxVariant &value, bool pretty)
{
    TyxXmlPrinter printer(!pretty);
    writeXmlVariant(printer, value, nullptr, 0);
    return std::string(printer.CStr(), static_cast<size_t>(printer.CStrSize() - 1));
}

std::string xmlText(const TyxObjectProxy &document, bool pretty)
{
    TyxXmlPrinter printer(!pretty);
    writeXmlObject(printer, document, 0);
    return std::string(printer.CStr(), static_cast<size_t>(printer.CStrSize() - 1));
}

} // namespace internal

namespace {

TyxTextMsg variantFromText(std::string_view text, TyxVariant &value)
{
    tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
    if (TyxTextMsg msg = internal::parseXmlText(text, doc); !msg.empty())
        return msg;
    TyxVariant read;
    if (TyxTextMsg msg = internal::readXmlVariant(doc.RootElement(), read, 0); !msg.empty())
        return msg;
    value = read;
    return TyxTextMsg();
}

} // namespace

void toXml(std::ostream &os, const TyxVariant &value, bool pretty) { os << internal::xmlText(value, pretty); }

void toXml(std::wostream &os, const TyxVariant &value, bool pretty)
{
    os << fromUTF8(internal::xmlText(value, pretty));
}

TyxTextMsg fromXml(std::istream &is, TyxVariant &value)
{
    const std::string text((std::istreambuf_iterator<char>(is)), std::istreambuf_iterator<char>());
    return variantFromText(text, value);
}

TyxTextMsg fromXml(std::wistream &is, TyxVariant &value)
{
    const std::wstring text((std::istreambuf_iterator<wchar_t>(is)), std::istreambuf_iterator<wchar_t>());
    return variantFromText(toUTF8(text), value);
}

TyxTextMsg fromXml(std::string_view text, TyxVariant &value) { return variantFromText(text, value); }

} // namespace tyx
