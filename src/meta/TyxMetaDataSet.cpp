// Inner nodes of metadata trees, their lazy reading and their fields.
#include <tyx/TyxMetaDataSet.h>

#include <algorithm>
#include <cwctype>
#include <map>
#include <ostream>
#include <sstream>

#include "core/TyxPost.h"

namespace tyx {

namespace internal {

/// Orders names as wcscasecmp does, without regard to case; ASCII letters
/// fold inline, other units through towlower. Lookups may use views.
struct CaseInsensitive {
    using is_transparent = void;
    static wint_t fold(wchar_t c)
    {
        if (c >= 0 && c < 128)
            return (c >= L'A' && c <= L'Z') ? static_cast<wint_t>(c + 32) : static_cast<wint_t>(c);
        return std::towlower(static_cast<wint_t>(c));
    }
    bool operator()(std::wstring_view a, std::wstring_view b) const
    {
        const size_t n = std::min(a.size(), b.size());
        for (size_t i = 0; i < n; ++i) {
            const wint_t x = fold(a[i]);
            const wint_t y = fold(b[i]);
            if (x != y)
                return x < y;
        }
        return a.size() < b.size();
    }
};

/// The shared contents of a set and its copies.
struct TyxMetaDataSetState {
    bool fieldsRequested = false;
    bool subsetsRequested = false;
    std::map<TyxString, TyxMetaDataSet, CaseInsensitive> subsets;
    TyxStrList subsetNames;
    std::map<TyxString, TyxMetaDataField, CaseInsensitive> fields;
    TyxStrList fieldNames;
    TyxMetaDataSet::RepeatIndex repeatIndex;
    TyxMetaDataReaderPtr reader;
    bool quiet = false;
};

} // namespace internal

namespace {

[[maybe_unused]] const bool joinedField = internal::TyxVariantRegistrar::join<TyxMetaDataField>();
[[maybe_unused]] const bool joinedSet = internal::TyxVariantRegistrar::join<TyxMetaDataSet>();

const TyxMetaDataField &emptyField()
{
    static const TyxMetaDataField field;
    return field;
}

const TyxMetaDataSet &emptySet()
{
    static const TyxMetaDataSet set;
    return set;
}

// Replaces the first element of \p names equal, ignoring case, to \p oldName.
void replaceName(TyxStrList &names, const TyxString &oldName, const TyxString &newName)
{
    for (TyxString &name : names) {
        if (stricmp(name.c_str(), oldName.c_str()) == 0) {
            name = newName;
            return;
        }
    }
}

void removeName(TyxStrList &names, const TyxString &gone)
{
    std::vector<TyxString> &items = names;
    for (auto it = items.begin(); it != items.end(); ++it) {
        if (stricmp(it->c_str(), gone.c_str()) == 0) {
            items.erase(it);
            return;
        }
    }
}

} // namespace

TyxMetaDataField::~TyxMetaDataField() = default;

TyxString TyxMetaDataField::className() const { return L"TyxMetaDataField"; }

void TyxMetaDataField::setValue(const TyxVariant &value, size_t index)
{
    if (index == m_values.size()) {
        m_values.push_back(value);
        return;
    }
    if (index > m_values.size())
        m_values.resize(index + 1);
    m_values[index] = value;
}

std::wostream &operator<<(std::wostream &os, const TyxMetaDataField &field)
{
    os << static_cast<const std::wstring &>(field.name()) << L"=[";
    for (size_t i = 0; i < field.size(); ++i)
        os << (i ? L";" : L"") << field[i];
    return os << L']';
}

std::ostream &operator<<(std::ostream &os, const TyxMetaDataField &field)
{
    std::wostringstream wide;
    wide << field;
    return os << toUTF8(wide.str());
}

TyxMetaDataSet::TyxMetaDataSet() : m_state(std::make_shared<internal::TyxMetaDataSetState>()) {}

TyxMetaDataSet::TyxMetaDataSet(const TyxString &name, const TyxString &description)
    : TyxMetaDataObject(name, description), m_state(std::make_shared<internal::TyxMetaDataSetState>())
{
}

TyxMetaDataSet::TyxMetaDataSet(const TyxMetaDataSet &other) = default;

// A moved-from set keeps a usable, empty state.
TyxMetaDataSet::TyxMetaDataSet(TyxMetaDataSet &&other) noexcept
    : TyxMetaDataObject(other), m_state(std::move(other.m_state))
{
    other.m_state = std::make_shared<internal::TyxMetaDataSetState>();
}

TyxMetaDataSet &TyxMetaDataSet::operator=(const TyxMetaDataSet &other) = default;

TyxMetaDataSet &TyxMetaDataSet::operator=(TyxMetaDataSet &&other) noexcept
{
    if (this != &other) {
        TyxMetaDataObject::operator=(other);
        m_state = std::move(other.m_state);
        other.m_state = std::make_shared<internal::TyxMetaDataSetState>();
    }
    return *this;
}

TyxMetaDataSet::~TyxMetaDataSet() = default;

TyxString TyxMetaDataSet::className() const { return L"TyxMetaDataSet"; }

void TyxMetaDataSet::readFieldsOnce() const
{
    internal::TyxMetaDataSetState &s = *m_state;
    if (!s.fields.empty() || s.fieldsRequested || !s.reader || !s.reader->canRead())
        return;
    s.fieldsRequested = true;
    // The reader writes through this set; the flag stops re-entry.
    const TyxMetaDataReaderPtr reader = s.reader;
    if (reader->readFields(const_cast<TyxMetaDataSet &>(*this)) != 0 && !s.quiet)
        TYX_POST_WARNING(L"The fields of the metadata set '" + name() + L"' could not be read.");
}

void TyxMetaDataSet::readSubsetsOnce() const
{
    internal::TyxMetaDataSetState &s = *m_state;
    if (!s.subsets.empty() || s.subsetsRequested || !s.reader || !s.reader->canRead())
        return;
    s.subsetsRequested = true;
    const TyxMetaDataReaderPtr reader = s.reader;
    if (reader->readSubsets(const_cast<TyxMetaDataSet &>(*this)) != 0 && !s.quiet)
        TYX_POST_WARNING(L"The subsets of the metadata set '" + name() + L"' could not be read.");
}

const TyxMetaDataField &TyxMetaDataSet::field(const TyxString &name, bool recurse) const
{
    readFieldsOnce();
    const auto it = m_state->fields.find(name);
    if (it != m_state->fields.end())
        return it->second;
    if (recurse) {
        readSubsetsOnce();
        for (const TyxString &subsetName : m_state->subsetNames) {
            const TyxMetaDataField &found = m_state->subsets.at(subsetName).field(name, true);
            if (&found != &emptyField())
                return found;
        }
    }
    return emptyField();
}

const TyxMetaDataSet &TyxMetaDataSet::subset(const TyxString &name, bool recurse) const
{
    readSubsetsOnce();
    const auto it = m_state->subsets.find(name);
    if (it != m_state->subsets.end())
        return it->second;
    if (recurse) {
        for (const TyxString &subsetName : m_state->subsetNames) {
            const TyxMetaDataSet &found = m_state->subsets.at(subsetName).subset(name, true);
            if (&found != &emptySet())
                return found;
        }
    }
    return emptySet();
}

const TyxMetaDataField *TyxMetaDataSet::fieldAt(std::wstring_view name) const
{
    readFieldsOnce();
    const auto it = m_state->fields.find(name);
    return it == m_state->fields.end() ? nullptr : &it->second;
}

const TyxMetaDataSet *TyxMetaDataSet::subsetAt(std::wstring_view name) const
{
    readSubsetsOnce();
    const auto it = m_state->subsets.find(name);
    return it == m_state->subsets.end() ? nullptr : &it->second;
}

TyxMetaDataSet &TyxMetaDataSet::rsubsetAt(std::wstring_view name)
{
    readSubsetsOnce();
    const auto it = m_state->subsets.find(name);
    return it != m_state->subsets.end() ? it->second : rsubset(TyxString(std::wstring(name)));
}

bool TyxMetaDataSet::containsField(const TyxString &name) const
{
    readFieldsOnce();
    return m_state->fields.count(name) != 0;
}

bool TyxMetaDataSet::containsSubset(const TyxString &name) const
{
    readSubsetsOnce();
    return m_state->subsets.count(name) != 0;
}

const TyxStrList &TyxMetaDataSet::fieldNames() const
{
    readFieldsOnce();
    return m_state->fieldNames;
}

const TyxStrList &TyxMetaDataSet::subsetNames() const
{
    readSubsetsOnce();
    return m_state->subsetNames;
}

std::vector<const TyxMetaDataField *> TyxMetaDataSet::fields() const
{
    std::vector<const TyxMetaDataField *> result;
    for (const TyxString &name : fieldNames())
        result.push_back(&m_state->fields.at(name));
    return result;
}

std::vector<const TyxMetaDataSet *> TyxMetaDataSet::subsets() const
{
    std::vector<const TyxMetaDataSet *> result;
    for (const TyxString &name : subsetNames())
        result.push_back(&m_state->subsets.at(name));
    return result;
}

const TyxMetaDataSet::RepeatIndex &TyxMetaDataSet::repeatIndex() const { return m_state->repeatIndex; }

bool TyxMetaDataSet::empty() const { return fieldNames().empty() && subsetNames().empty(); }

void TyxMetaDataSet::readAll() const
{
    readSubsetsOnce();
    readFieldsOnce();
    for (const TyxString &name : m_state->subsetNames)
        m_state->subsets.at(name).readAll();
}

const TyxMetaDataReaderPtr &TyxMetaDataSet::reader() const { return m_state->reader; }

void TyxMetaDataSet::setReader(const TyxMetaDataReaderPtr &reader)
{
    const TyxMetaDataReaderPtr keep = reader;
    m_state->reader = keep;
}

bool TyxMetaDataSet::quiet() const { return m_state->quiet; }

void TyxMetaDataSet::setQuiet(bool quiet) { m_state->quiet = quiet; }

TyxMetaDataField &TyxMetaDataSet::rfield(const TyxString &name)
{
    readFieldsOnce();
    auto it = m_state->fields.find(name);
    if (it == m_state->fields.end()) {
        it = m_state->fields.emplace(name, TyxMetaDataField(name)).first;
        m_state->fieldNames.push_back(name);
    }
    return it->second;
}

TyxMetaDataSet &TyxMetaDataSet::rsubset(const TyxString &name)
{
    readSubsetsOnce();
    auto it = m_state->subsets.find(name);
    if (it == m_state->subsets.end()) {
        TyxMetaDataSet created(name);
        created.setQuiet(m_state->quiet);
        it = m_state->subsets.emplace(name, std::move(created)).first;
        m_state->subsetNames.push_back(name);
    }
    return it->second;
}

void TyxMetaDataSet::setFieldValue(const TyxString &name, const TyxVariant &value, uint64_t &index)
{
    TyxMetaDataField &target = rfield(name);
    if (index == static_cast<uint64_t>(-1))
        index = target.size();
    target.setValue(value, static_cast<size_t>(index));
    RepeatIndex &repeats = m_state->repeatIndex;
    if (!repeats.empty() && repeats.back().first == target.name())
        repeats.back().second.push_back(index);
    else
        repeats.emplace_back(target.name(), std::vector<uint64_t>{index});
}

void TyxMetaDataSet::appendFieldValue(const TyxString &name, const TyxVariant &value)
{
    uint64_t index = static_cast<uint64_t>(-1);
    setFieldValue(name, value, index);
}

int TyxMetaDataSet::removeField(const TyxString &name)
{
    const auto it = m_state->fields.find(name);
    if (it == m_state->fields.end())
        return 1;
    const TyxString stored = it->second.name();
    m_state->fields.erase(it);
    removeName(m_state->fieldNames, stored);
    RepeatIndex &repeats = m_state->repeatIndex;
    std::erase_if(repeats,
                  [&](const auto &entry) { return stricmp(entry.first.c_str(), stored.c_str()) == 0; });
    return 0;
}

int TyxMetaDataSet::removeSubset(const TyxString &name)
{
    const auto it = m_state->subsets.find(name);
    if (it == m_state->subsets.end())
        return 1;
    const TyxString stored = it->first;
    m_state->subsets.erase(it);
    removeName(m_state->subsetNames, stored);
    return 0;
}

int TyxMetaDataSet::renameField(const TyxString &oldName, const TyxString &newName)
{
    if (m_state->fields.count(newName))
        return 1;
    const auto it = m_state->fields.find(oldName);
    if (it == m_state->fields.end())
        return 1;
    TyxMetaDataField moved = std::move(it->second);
    const TyxString stored = it->first;
    m_state->fields.erase(it);
    moved.setName(newName);
    m_state->fields.emplace(newName, std::move(moved));
    replaceName(m_state->fieldNames, stored, newName);
    return 0;
}

int TyxMetaDataSet::renameSubset(const TyxString &oldName, const TyxString &newName)
{
    if (m_state->subsets.count(newName))
        return 1;
    const auto it = m_state->subsets.find(oldName);
    if (it == m_state->subsets.end())
        return 1;
    TyxMetaDataSet moved = std::move(it->second);
    const TyxString stored = it->first;
    m_state->subsets.erase(it);
    moved.setName(newName);
    m_state->subsets.emplace(newName, std::move(moved));
    replaceName(m_state->subsetNames, stored, newName);
    return 0;
}

void TyxMetaDataSet::clear()
{
    m_state->fields.clear();
    m_state->fieldNames.clear();
    m_state->subsets.clear();
    m_state->subsetNames.clear();
    m_state->repeatIndex.clear();
}

bool TyxMetaDataSet::operator==(const TyxMetaDataSet &other) const
{
    if (!TyxMetaDataObject::operator==(other))
        return false;
    if (m_state == other.m_state)
        return true;
    if (fieldNames().size() != other.fieldNames().size() ||
        subsetNames().size() != other.subsetNames().size())
        return false;
    for (const TyxString &name : fieldNames()) {
        if (!other.containsField(name) || field(name) != other.field(name))
            return false;
    }
    for (const TyxString &name : subsetNames()) {
        if (!other.containsSubset(name) || subset(name) != other.subset(name))
            return false;
    }
    return true;
}

std::wostream &operator<<(std::wostream &os, const TyxMetaDataSet &set)
{
    os << static_cast<const std::wstring &>(set.name()) << L'{';
    bool first = true;
    for (const TyxMetaDataField *field : set.fields()) {
        os << (first ? L"" : L";") << *field;
        first = false;
    }
    for (const TyxMetaDataSet *subset : set.subsets()) {
        os << (first ? L"" : L";") << *subset;
        first = false;
    }
    return os << L'}';
}

std::ostream &operator<<(std::ostream &os, const TyxMetaDataSet &set)
{
    std::wostringstream wide;
    wide << set;
    return os << toUTF8(wide.str());
}

} // namespace tyx
