// Shared handle on a typed value, and the process-wide registry of its types.
#include <tyx/TyxVariant.h>

#include <array>
#include <cstring>
#include <istream>
#include <iterator>
#include <mutex>
#include <ostream>
#include <sstream>
#include <utility>

#include "core/TyxVariantRegistry.h"

namespace tyx {

namespace internal {

namespace {

constexpr int builtinCount = TyxMetaType::Invalid;

bool isBuiltin(int code) { return code >= 0 && code < builtinCount; }

// trim() leaves text made only of blanks as it is; here it becomes empty.
TyxString stripped(const TyxString &text)
{
    TyxString result = trim(text);
    return result.find_first_not_of(L" \t\r\n") == TyxString::npos ? TyxString() : result;
}

using CastRow = std::array<TyxCastFn, builtinCount>;

// The prototypes, the cast table and the defaults. Rows of built-in codes are
// fixed arrays, read without the lock: every registration happens at static
// initialisation. Rows of run-time codes live in a map read under the lock.
struct Registry {
    std::mutex mutex;
    std::map<int, std::shared_ptr<TyxVariantIF>> prototypes;
    std::array<CastRow, builtinCount> casts{};
    std::map<int, CastRow> runtimeCasts;
    std::array<TyxDefaultFn, builtinCount> defaults{};
    std::array<TyxMetaType, 5> aliases;
};

// The tables without the core types; registration goes here, so that a type
// may join before or after the core.
Registry &rawRegistry()
{
    static Registry registry;
    return registry;
}

template <class... T>
void joinAll(TyxTypeList<T...>)
{
    (TyxVariantRegistrar::join<T>(), ...);
}

bool joinCore()
{
    joinAll(TyxCoreVariantTypes{});
    Registry &r = rawRegistry();
    std::lock_guard<std::mutex> lock(r.mutex);
    r.aliases[static_cast<size_t>(TyxValueAlias::CharPointer)] = registeredType(L"TyxChar*");
    r.aliases[static_cast<size_t>(TyxValueAlias::StdString)] = registeredType(L"StdString");
    r.aliases[static_cast<size_t>(TyxValueAlias::NarrowChar)] = registeredType(L"char");
    r.aliases[static_cast<size_t>(TyxValueAlias::WideChar)] = registeredType(L"wchar_t");
    r.aliases[static_cast<size_t>(TyxValueAlias::Variant)] = registeredType(L"TyxVariant");
    return true;
}

// The registry with the core types joined, built on first use.
Registry &registry()
{
    static const bool core = joinCore();
    (void)core;
    return rawRegistry();
}

// The core joins when the library loads, so the aliases' run-time codes do not
// depend on what a program happens to use first.
[[maybe_unused]] const bool coreJoinedAtLoad = (registry(), true);

TyxCastFn findCast(Registry &r, int from, int to)
{
    if (isBuiltin(from))
        return r.casts[static_cast<size_t>(from)][static_cast<size_t>(to)];
    std::lock_guard<std::mutex> lock(r.mutex);
    auto it = r.runtimeCasts.find(from);
    return it == r.runtimeCasts.end() ? nullptr : it->second[static_cast<size_t>(to)];
}

std::shared_ptr<TyxVariantIF> findPrototype(const TyxMetaType &type)
{
    Registry &r = registry();
    std::lock_guard<std::mutex> lock(r.mutex);
    auto it = r.prototypes.find(type.toEnum());
    return it == r.prototypes.end() ? nullptr : it->second;
}

} // namespace

std::shared_ptr<TyxVariantIF> invalidVariantImpl() noexcept
{
    // The one invalid value is never destroyed, so variants released during
    // the program's exit may still use it, and it is held without a count
    // (an empty owner): making, copying, moving from and dropping an invalid
    // variant touches no counter that all threads share.
    union Immortal {
        Immortal() : value() {}
        ~Immortal() {}
        TyxInvalidVariant value;
    };
    static Immortal invalid;
    return std::shared_ptr<TyxVariantIF>(std::shared_ptr<TyxVariantIF>(), &invalid.value);
}

void writeDefault(const TyxMetaType &target, void *dest)
{
    const int code = target.toEnum();
    if (!isBuiltin(code))
        return;
    if (TyxDefaultFn fn = registry().defaults[static_cast<size_t>(code)])
        fn(dest);
}

TyxMetaType registeredType(const TyxString &className)
{
    return TyxVariantRegistrar::registerName(className);
}

TyxMetaType TyxVariantRegistrar::registerName(const TyxString &className)
{
    return TyxMetaType::registerType(typeIdOf(className), className);
}

const TyxMetaType &aliasType(TyxValueAlias alias) { return registry().aliases[static_cast<size_t>(alias)]; }

bool convertValue(int fromCode, const void *from, const TyxMetaType &target, void *dest)
{
    Registry &r = registry();
    const int to = target.toEnum();
    if (isBuiltin(to)) {
        if (TyxCastFn fn = findCast(r, fromCode, to))
            return fn(from, dest);
        if (TyxDefaultFn fn = r.defaults[static_cast<size_t>(to)])
            fn(dest);
        return false;
    }
    if (target == r.aliases[static_cast<size_t>(TyxValueAlias::StdString)]) {
        TyxString text;
        const bool ok = convertValue(fromCode, from, TyxMetaType(TyxMetaType::String), &text);
        *static_cast<std::string *>(dest) = toUTF8(text);
        return ok;
    }
    if (target == r.aliases[static_cast<size_t>(TyxValueAlias::NarrowChar)]) {
        wchar_t character = 0;
        const bool ok = convertValue(fromCode, from, TyxMetaType(TyxMetaType::Char), &character);
        *static_cast<char *>(dest) = static_cast<char>(character);
        return ok;
    }
    if (target == r.aliases[static_cast<size_t>(TyxValueAlias::Variant)]) {
        // A new variant holding a copy of the value.
        *static_cast<TyxVariant *>(dest) = TyxVariant(TyxMetaType(fromCode), from);
        return static_cast<TyxVariant *>(dest)->isValid();
    }
    if (target == r.aliases[static_cast<size_t>(TyxValueAlias::CharPointer)]) {
        // Not a copy: the pointer lives as long as the implementation object.
        if (fromCode != TyxMetaType::String)
            return false;
        *static_cast<const wchar_t **>(dest) = static_cast<const TyxString *>(from)->c_str();
        return true;
    }
    return false;
}

bool TyxVariantRegistrar::registerPrototype(const TyxMetaType &type, std::shared_ptr<TyxVariantIF> prototype)
{
    return TyxVariant::registerType(type, std::move(prototype));
}

void TyxVariantRegistrar::registerCast(int from, int to, TyxCastFn fn)
{
    if (!isBuiltin(to) || from < 0 || from == TyxMetaType::Invalid)
        return;
    Registry &r = rawRegistry();
    std::lock_guard<std::mutex> lock(r.mutex);
    if (isBuiltin(from))
        r.casts[static_cast<size_t>(from)][static_cast<size_t>(to)] = fn;
    else
        r.runtimeCasts[from][static_cast<size_t>(to)] = fn;
}

void TyxVariantRegistrar::registerDefault(int code, TyxDefaultFn fn)
{
    if (!isBuiltin(code))
        return;
    Registry &r = rawRegistry();
    std::lock_guard<std::mutex> lock(r.mutex);
    r.defaults[static_cast<size_t>(code)] = fn;
}

// ---- Stream forms of the containers -----------------------------------------

std::wostream &writeValue(std::wostream &os, const TyxVariantPair &value)
{
    return os << static_cast<const std::wstring &>(value.first) << L',' << value.second;
}

std::wostream &writeValue(std::wostream &os, const TyxVariantList &value)
{
    os << L'[';
    for (size_t i = 0; i < value.size(); ++i) {
        if (i)
            os << L',';
        os << value[i];
    }
    return os << L']';
}

std::wostream &writeValue(std::wostream &os, const TyxVariantMap &value)
{
    os << L'{';
    bool first = true;
    for (const auto &[key, element] : value) {
        if (!first)
            os << L',';
        first = false;
        os << static_cast<const std::wstring &>(key) << L':' << element;
    }
    return os << L'}';
}

namespace {

// The text between \p open and \p close, when the first non-blank character
// is \p open; otherwise that character goes back and the answer is false.
bool readEnclosed(std::wistream &is, wchar_t open, wchar_t close, std::wstring &inner)
{
    wchar_t first = 0;
    if (!(is >> first))
        return false;
    if (first != open) {
        is.unget();
        return false;
    }
    std::getline(is, inner, close);
    return true;
}

// The elements of a list or map: the parts between commas, joined again two
// by two, so that the comma of each "type,value" survives. A part left over
// fails the stream.
std::vector<TyxString> enclosedEntries(std::wistream &is, const std::wstring &inner)
{
    std::vector<TyxString> entries;
    if (stripped(inner).empty())
        return entries;
    const std::vector<TyxString> parts = splitStr(inner, L",", true);
    for (size_t i = 0; i + 1 < parts.size(); i += 2)
        entries.push_back(parts[i] + L"," + parts[i + 1]);
    if (parts.size() % 2 != 0)
        is.setstate(std::ios_base::failbit);
    return entries;
}

bool readVariant(const TyxString &text, TyxVariant &variant)
{
    std::wistringstream ss(text);
    ss >> variant;
    return !ss.fail();
}

} // namespace

std::wistream &readValue(std::wistream &is, TyxVariantPair &value) { return is >> value; }

std::wistream &readValue(std::wistream &is, TyxVariantList &value)
{
    value.clear();
    std::wstring inner;
    if (!readEnclosed(is, L'[', L']', inner))
        return is;
    for (const TyxString &entry : enclosedEntries(is, inner)) {
        TyxVariant element;
        if (!readVariant(entry, element))
            is.setstate(std::ios_base::failbit);
        value.push_back(element);
    }
    return is;
}

std::wistream &readValue(std::wistream &is, TyxVariantMap &value)
{
    value.clear();
    std::wstring inner;
    if (!readEnclosed(is, L'{', L'}', inner))
        return is;
    for (const TyxString &entry : enclosedEntries(is, inner)) {
        const size_t colon = entry.find(L':');
        if (colon == TyxString::npos) {
            is.setstate(std::ios_base::failbit);
            continue;
        }
        TyxVariant element;
        if (!readVariant(entry.substr(colon + 1), element))
            is.setstate(std::ios_base::failbit);
        value[entry.substr(0, colon)] = element;
    }
    return is;
}

TyxString readRest(std::wistream &is)
{
    TyxString text{std::istreambuf_iterator<wchar_t>(is), std::istreambuf_iterator<wchar_t>()};
    is.setstate(std::ios_base::eofbit);
    return text;
}

} // namespace internal

// ---- TyxVariant ----------------------------------------------------------------

TyxVariant::TyxVariant() noexcept : m_impl(internal::invalidVariantImpl()) {}

TyxVariant::TyxVariant(TyxVariant &&other) noexcept
    : m_impl(std::exchange(other.m_impl, internal::invalidVariantImpl()))
{
}

TyxVariant &TyxVariant::operator=(TyxVariant &&other) noexcept
{
    if (this != &other)
        m_impl = std::exchange(other.m_impl, internal::invalidVariantImpl());
    return *this;
}

TyxVariant::TyxVariant(char value)
    : m_impl(std::make_shared<TyxVariantImpl<wchar_t>>(static_cast<wchar_t>(value)))
{
}

TyxVariant::TyxVariant(long long value)
    : m_impl(std::make_shared<TyxVariantImpl<int64_t>>(static_cast<int64_t>(value)))
{
}

TyxVariant::TyxVariant(unsigned long long value)
    : m_impl(std::make_shared<TyxVariantImpl<uint64_t>>(static_cast<uint64_t>(value)))
{
}

TyxVariant::TyxVariant(const char *text) : m_impl(std::make_shared<TyxStringVariant>(TyxString(text))) {}

TyxVariant::TyxVariant(const wchar_t *text)
    : m_impl(std::make_shared<TyxStringVariant>(text ? TyxString(text) : TyxString()))
{
}

TyxVariant::TyxVariant(const std::string &text) : m_impl(std::make_shared<TyxStringVariant>(TyxString(text)))
{
}

TyxVariant::TyxVariant(const std::wstring &text) : m_impl(std::make_shared<TyxStringVariant>(TyxString(text)))
{
}

TyxVariant::TyxVariant(const TyxMetaType &type, const void *value) : m_impl(fromValue(type, value).m_impl) {}

TyxVariant &TyxVariant::operator=(const char *text) { return assignText(TyxString(text)); }

TyxVariant &TyxVariant::operator=(const std::string &text) { return assignText(TyxString(text)); }

TyxVariant &TyxVariant::operator=(const wchar_t *text)
{
    return assignText(text ? TyxString(text) : TyxString());
}

TyxVariant &TyxVariant::operator=(const std::wstring &text) { return assignText(TyxString(text)); }

TyxVariant &TyxVariant::assignText(TyxString &&text)
{
    // In place only for the sole owner: a copy must keep its value.
    if (type() == TyxMetaType::String && m_impl.use_count() < 2) {
        *static_cast<TyxString *>(m_impl->data()) = std::move(text);
        return *this;
    }
    static const std::shared_ptr<TyxVariantIF> prototype = internal::findPrototype(TyxMetaType::String);
    m_impl = prototype->create(&text);
    return *this;
}

TyxVariant &TyxVariant::assignChar(wchar_t character)
{
    if (type() == TyxMetaType::Char && m_impl.use_count() < 2) {
        *static_cast<wchar_t *>(m_impl->data()) = character;
        return *this;
    }
    static const std::shared_ptr<TyxVariantIF> prototype = internal::findPrototype(TyxMetaType::Char);
    m_impl = prototype->create(&character);
    return *this;
}

bool TyxVariant::isNumeric() const
{
    if (type().isNumeric())
        return true;
    double number = 0.0;
    return m_impl->value(TyxMetaType(TyxMetaType::Double), &number);
}

void TyxVariant::clear()
{
    if (isValid())
        m_impl = internal::invalidVariantImpl();
}

TyxVariant TyxVariant::prototype(const TyxMetaType &type)
{
    std::shared_ptr<TyxVariantIF> found = internal::findPrototype(type);
    return found ? TyxVariant(std::move(found)) : TyxVariant();
}

TyxMetaType TyxVariant::typeFromName(const TyxString &name)
{
    internal::Registry &r = internal::registry();
    std::lock_guard<std::mutex> lock(r.mutex);
    for (const auto &[code, prototype] : r.prototypes) {
        if (prototype->className() == name)
            return prototype->type();
    }
    return TyxMetaType();
}

TyxVariant TyxVariant::fromValue(const TyxMetaType &type, const void *value)
{
    std::shared_ptr<TyxVariantIF> prototype = internal::findPrototype(type);
    if (!prototype)
        return TyxVariant();
    std::shared_ptr<TyxVariantIF> impl = prototype->clone();
    if (value)
        impl->setValue(type, value);
    return TyxVariant(std::move(impl));
}

bool TyxVariant::registerType(const TyxMetaType &type, std::shared_ptr<TyxVariantIF> prototype)
{
    if (!prototype || !type.isValid())
        return false;
    internal::Registry &r = internal::rawRegistry();
    std::lock_guard<std::mutex> lock(r.mutex);
    r.prototypes[type.toEnum()] = std::move(prototype);
    return true;
}

void TyxVariant::clearPOD(void *memory, size_t size) { std::memset(memory, 0, size); }

// ---- Streams ---------------------------------------------------------------------

std::wostream &operator<<(std::wostream &os, const TyxVariant &variant)
{
    os << static_cast<const std::wstring &>(variant.typeName()) << L',';
    if (!variant.isValid())
        return os << L' ';
    return variant.impl().write(os);
}

std::ostream &operator<<(std::ostream &os, const TyxVariant &variant)
{
    std::wostringstream wide;
    wide.flags(os.flags());
    wide.precision(os.precision());
    wide << variant;
    return os << toUTF8(wide.str());
}

std::wistream &operator>>(std::wistream &is, TyxVariant &variant)
{
    std::wstring typeText;
    if (!std::getline(is, typeText, L','))
        return is;
    if (is.eof()) {
        // No comma: not the form of a variant.
        is.setstate(std::ios_base::failbit);
        return is;
    }
    std::wstring rest;
    if (!std::getline(is, rest) && is.eof())
        is.clear(std::ios_base::eofbit); // an empty value is no failure
    const TyxString name = internal::stripped(typeText);
    const TyxString value = internal::stripped(rest);
    // A type text without a prototype, the invalid variant's empty one
    // included, reads the value as text.
    std::shared_ptr<TyxVariantIF> prototype = internal::findPrototype(TyxMetaType::fromString(name));
    std::shared_ptr<TyxVariantIF> impl =
        prototype ? prototype->clone() : std::make_shared<TyxStringVariant>(TyxString());
    std::wistringstream valueStream(value);
    impl->read(valueStream);
    variant.m_impl = std::move(impl);
    if (valueStream.fail())
        is.setstate(std::ios_base::failbit);
    return is;
}

std::istream &operator>>(std::istream &is, TyxVariant &variant)
{
    TyxString line;
    if (!getline(is, line))
        return is;
    std::wistringstream wide(line);
    wide >> variant;
    if (wide.fail())
        is.setstate(std::ios_base::failbit);
    return is;
}

std::wostream &operator<<(std::wostream &os, const TyxVariantPair &pair)
{
    return internal::writeValue(os, pair);
}

std::ostream &operator<<(std::ostream &os, const TyxVariantPair &pair)
{
    std::wostringstream wide;
    wide.flags(os.flags());
    wide.precision(os.precision());
    wide << pair;
    return os << toUTF8(wide.str());
}

std::wistream &operator>>(std::wistream &is, TyxVariantPair &pair)
{
    std::wstring key;
    if (!std::getline(is, key, L','))
        return is;
    if (is.eof()) {
        is.setstate(std::ios_base::failbit);
        return is;
    }
    pair.first = key;
    return is >> pair.second;
}

std::istream &operator>>(std::istream &is, TyxVariantPair &pair)
{
    TyxString line;
    if (!getline(is, line))
        return is;
    std::wistringstream wide(line);
    wide >> pair;
    if (wide.fail())
        is.setstate(std::ios_base::failbit);
    return is;
}

} // namespace tyx
