// Type codes: the tag of every value a variant holds.
#include <tyx/TyxMetaType.h>

#include <array>
#include <istream>
#include <mutex>
#include <ostream>

#include <tyx/TyxVariant.h>

namespace tyx {

namespace {

constexpr int builtinCount = TyxMetaType::Invalid;

const std::array<const wchar_t *, builtinCount> &textNames()
{
    static const std::array<const wchar_t *, builtinCount> names = {L"Bool",           L"Int8",
                                                                    L"UInt8",          L"Int16",
                                                                    L"UInt16",         L"Int",
                                                                    L"UInt",           L"Int64",
                                                                    L"UInt64",         L"Float",
                                                                    L"Double",         L"ComplexDouble",
                                                                    L"TyxI64Rational", L"TyxU64Rational",
                                                                    L"TyxChar",        L"TyxString",
                                                                    L"TyxStrList",     L"TyxEqnTile",
                                                                    L"TyxBufferPtr",   L"TyxI32Coord",
                                                                    L"TyxDblCoord",    L"TyxDblCoord2D",
                                                                    L"TyxU32Size",     L"TyxImageSize",
                                                                    L"TyxUnits",       L"TyxScalar",
                                                                    L"TyxImageROI",    L"TyxDataType",
                                                                    L"TyxDataLayout",  L"TyxColorModel",
                                                                    L"TyxByteOrder",   L"TyxKeyValuePair",
                                                                    L"TyxVariantList", L"TyxVariantMap"};
    return names;
}

// The one lock of the type table. It is not recursive: nothing that holds it
// calls back into an operation that takes it.
std::mutex &typeMutex()
{
    static std::mutex mutex;
    return mutex;
}

struct TypeTable {
    TyxEnum types;
    int nextCode = TyxMetaType::FirstRegistered;
};

TypeTable &typeTable()
{
    static TypeTable *table = [] {
        std::lock_guard<std::mutex> lock(typeMutex());
        auto *t = new TypeTable;
        for (int code = 0; code < builtinCount; ++code) {
            const uint64_t id = internal::typeIdOf(internal::builtinClassName(code));
            t->types.insert(TyxEnum::Item(code, textNames()[code], TyxVariant(id)));
        }
        return t;
    }();
    return *table;
}

uint64_t storedId(const TyxEnum::Item &item) { return item.data ? item.data->value<uint64_t>() : 0; }

} // namespace

namespace internal {

uint64_t typeIdOf(const TyxString &className)
{
    uint64_t hash = UINT64_C(0xcbf29ce484222325);
    for (wchar_t unit : className) {
        auto bits = static_cast<uint32_t>(unit);
        for (int byte = 0; byte < 4; ++byte) {
            hash ^= (bits >> (8 * byte)) & 0xFF;
            hash *= UINT64_C(0x100000001b3);
        }
    }
    return hash;
}

const TyxString &builtinClassName(int code)
{
    // Names of the C++ types; the class types carry a stable spelling of
    // their own, since no file of the library stores these names.
    static const std::array<TyxString, builtinCount> names = {
        L"bool",
        L"signed char",
        L"unsigned char",
        L"short",
        L"unsigned short",
        L"int",
        L"unsigned int",
        L"TyxI64",
        L"TyxU64",
        L"float",
        L"double",
        L"TyxDblComplex",
        L"TyxRational<TyxI64>",
        L"TyxRational<TyxU64>",
        L"wchar_t",
        L"TyxString",
        L"TyxStrList",
        L"TyxEqnTile",
        L"TyxBufferPtr",
        L"TyxCoord3D<int>",
        L"TyxCoord3D<double>",
        L"TyxCoord2D<double>",
        L"TyxSize3D<unsigned int>",
        L"TyxImageSize",
        L"TyxUnits",
        L"TyxScalar",
        L"TyxImageROI",
        L"TyxDataType",
        L"TyxDataLayout",
        L"TyxColorModel",
        L"TyxByteOrder",
        L"std::pair<TyxString,TyxVariant>",
        L"std::vector<TyxVariant>",
        L"std::map<TyxString,TyxVariant,TyxLexigraphicalNoCase>"};
    static const TyxString empty;
    return code >= 0 && code < builtinCount ? names[static_cast<size_t>(code)] : empty;
}

} // namespace internal

TyxMetaType::Code TyxMetaType::checked(int code)
{
    if (code < 0)
        return Invalid;
    return enumerator().isValid(code) ? static_cast<Code>(code) : Invalid;
}

const TyxString &TyxMetaType::toString() const
{
    static const TyxString empty;
    const auto &items = enumerator().items();
    auto it = items.find(m_code);
    return it == items.end() ? empty : it->second.name;
}

uint64_t TyxMetaType::typeID() const
{
    if (m_code == Invalid)
        return 0;
    const auto &items = enumerator().items();
    auto it = items.find(m_code);
    return it == items.end() ? 0 : storedId(it->second);
}

const TyxEnum &TyxMetaType::enumerator() { return typeTable().types; }

TyxStrList TyxMetaType::allKeys() { return TyxStrList(enumerator().allKeys()); }

TyxMetaType TyxMetaType::fromString(const TyxString &name)
{
    // Under the mutex: another thread may be entering a type meanwhile.
    TypeTable &table = typeTable();
    std::lock_guard<std::mutex> lock(typeMutex());
    const int code = table.types.fromString(name);
    return code == TyxEnum::INVALID_ENUM() ? TyxMetaType() : TyxMetaType(static_cast<Code>(code));
}

TyxMetaType TyxMetaType::fromTypeID(uint64_t typeID)
{
    TypeTable &table = typeTable();
    {
        std::lock_guard<std::mutex> lock(typeMutex());
        for (const auto &[code, item] : table.types.items()) {
            if (storedId(item) == typeID)
                return TyxMetaType(static_cast<Code>(code));
        }
    }
    // The items already hold these identities; the second look stays so that
    // "int" and "unsigned int" answer even in a table built differently.
    if (typeID == internal::typeIdOf(L"int"))
        return TyxMetaType(Int);
    if (typeID == internal::typeIdOf(L"unsigned int"))
        return TyxMetaType(UInt);
    return TyxMetaType();
}

bool TyxMetaType::isValid(const TyxString &name) { return enumerator().isValid(name); }

TyxMetaType TyxMetaType::registerType(uint64_t typeID, const TyxString &name)
{
    if (name.empty())
        return TyxMetaType();
    TypeTable &table = typeTable();
    // Looked up and entered under one lock, so no reader meets the table
    // while another thread enters a type.
    std::lock_guard<std::mutex> lock(typeMutex());
    const int existing = table.types.fromString(name);
    if (existing != TyxEnum::INVALID_ENUM())
        return TyxMetaType(static_cast<Code>(existing));
    for (const auto &[known, item] : table.types.items()) {
        if (storedId(item) == typeID)
            return TyxMetaType(static_cast<Code>(known));
    }
    if (typeID == internal::typeIdOf(L"int"))
        return TyxMetaType(Int);
    if (typeID == internal::typeIdOf(L"unsigned int"))
        return TyxMetaType(UInt);
    const int code = table.nextCode++;
    table.types.insert(TyxEnum::Item(code, name, TyxVariant(typeID)));
    return TyxMetaType(static_cast<Code>(code));
}

std::wostream &operator<<(std::wostream &os, const TyxMetaType &type) { return os << type.toString(); }

std::ostream &operator<<(std::ostream &os, const TyxMetaType &type) { return os << type.toString(); }

std::wistream &operator>>(std::wistream &is, TyxMetaType &type)
{
    std::wstring word;
    if (is >> word)
        type = TyxMetaType::fromString(word);
    return is;
}

std::istream &operator>>(std::istream &is, TyxMetaType &type)
{
    std::string word;
    if (is >> word)
        type = TyxMetaType::fromString(fromUTF8(word));
    return is;
}

} // namespace tyx
