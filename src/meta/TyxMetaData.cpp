// Metadata trees: path lookup, writing, removal and iteration.
#include <tyx/TyxMetaData.h>

#include <climits>
#include <limits>
#include <ostream>
#include <sstream>

#include <tyx/internal/TyxMetaDataSegmentedPath.h>

namespace tyx {

using internal::TyxMetaDataSegmentedPath;

namespace {

// How far past a field's values a write may reach; the gap is filled with
// invalid values, so a larger index would take memory in proportion.
constexpr uint64_t kMaxIndexGap = uint64_t{1} << 20;

bool indexReachable(const TyxMetaDataField *field, uint64_t index)
{
    const uint64_t size = field ? field->size() : 0;
    return index == TyxMetaDataSegmentedPath::NO_INDEX || index <= size + kMaxIndexGap;
}

[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxMetaData>();

const TyxMetaDataField &emptyField()
{
    static const TyxMetaDataField field;
    return field;
}

// The value at \p index of \p field; out of range is a miss, not a read
// past the vector.
const TyxVariant &valueAt(const TyxMetaDataField &field, uint64_t index)
{
    const uint64_t i = index == TyxMetaDataSegmentedPath::NO_INDEX ? 0 : index;
    return i < field.size() ? field[static_cast<size_t>(i)] : TyxMetaData::EMPTY_VARIANT();
}

} // namespace

TyxMetaData::TyxMetaData() = default;

TyxMetaData::TyxMetaData(const TyxMetaDataSet &root) : m_root(root) {}

TyxMetaData::TyxMetaData(const TyxMetaData &other)
    : TyxObject(other), TyxRefCounted(), m_root(other.m_root), m_quiet(other.m_quiet)
{
}

TyxMetaData &TyxMetaData::operator=(const TyxMetaData &other)
{
    m_root = other.m_root;
    m_quiet = other.m_quiet;
    return *this;
}

TyxMetaData::~TyxMetaData() = default;

const TyxVariant &TyxMetaData::EMPTY_VARIANT()
{
    static const TyxVariant empty;
    return empty;
}

void TyxMetaData::clear() { m_root.clear(); }

TyxString TyxMetaData::className() const { return L"TyxMetaData"; }

bool TyxMetaData::quiet() const { return m_quiet; }

void TyxMetaData::quiet(bool quiet) const
{
    m_quiet = quiet;
    const_cast<TyxMetaDataSet &>(m_root).setQuiet(quiet);
}

const TyxMetaDataSet *TyxMetaData::walk(const TyxMetaDataSegmentedPath &path, size_t count) const
{
    const TyxMetaDataSet *set = &m_root;
    for (size_t i = 0; i < count && set; ++i)
        set = set->subsetAt(path[i].fullName);
    return set;
}

const TyxVariant &TyxMetaData::value(const TyxString &path) const
{
    // Segments as views into the path: a lookup allocates nothing.
    constexpr size_t capacity = 16;
    TyxMetaDataSegmentedPath::SegmentView segments[capacity];
    bool namesSubset = false;
    bool isRoot = false;
    const size_t count = TyxMetaDataSegmentedPath::split(path, segments, capacity, namesSubset, isRoot);
    if (count > capacity) {
        // Deep paths take the general route.
        const TyxMetaDataSegmentedPath full(path);
        const TyxMetaDataSet *set = walk(full, full.size() - 1);
        if (!set || full.namesSubset())
            return EMPTY_VARIANT();
        const auto &last = full.last();
        if (const TyxMetaDataField *field = set->fieldAt(last.name))
            return valueAt(*field, last.index);
        const TyxMetaDataSet *group = set->subsetAt(last.fullName);
        const TyxMetaDataField *field = group ? group->fieldAt(last.name) : nullptr;
        return field ? valueAt(*field, last.index) : EMPTY_VARIANT();
    }
    if (count == 0 || namesSubset)
        return EMPTY_VARIANT();
    const TyxMetaDataSet *set = &m_root;
    for (size_t i = 0; i + 1 < count; ++i) {
        set = set->subsetAt(segments[i].fullName);
        if (!set)
            return EMPTY_VARIANT();
    }
    const auto &last = segments[count - 1];
    if (const TyxMetaDataField *field = set->fieldAt(last.name))
        return valueAt(*field, last.index);
    const TyxMetaDataSet *group = set->subsetAt(last.fullName);
    const TyxMetaDataField *field = group ? group->fieldAt(last.name) : nullptr;
    return field ? valueAt(*field, last.index) : EMPTY_VARIANT();
}

TyxVariant TyxMetaData::get(const TyxString &path)
{
    const TyxMetaDataSegmentedPath segments(path);
    if (segments.isRoot())
        return TyxVariant(TyxMetaData(*this));
    if (segments.empty())
        return TyxVariant();
    if (segments.namesSubset()) {
        const TyxMetaDataSet *set = walk(segments, segments.size());
        return set ? TyxVariant(TyxMetaData(*set)) : TyxVariant();
    }
    const TyxMetaDataSet *set = walk(segments, segments.size() - 1);
    if (!set)
        return TyxVariant();
    const auto &last = segments.last();
    if (set->containsField(last.name))
        return valueAt(set->field(last.name), last.index);
    if (set->containsSubset(last.fullName)) {
        const TyxMetaDataSet &group = set->subset(last.fullName);
        if (group.containsField(last.name))
            return valueAt(group.field(last.name), last.index);
        return TyxVariant(TyxMetaData(group));
    }
    return TyxVariant();
}

const TyxMetaDataObject *TyxMetaData::find(const TyxString &path) const
{
    const TyxMetaDataSegmentedPath segments(path);
    if (segments.isRoot())
        return &m_root;
    if (segments.empty())
        return nullptr;
    const TyxMetaDataSet *set = walk(segments, segments.size() - 1);
    if (!set)
        return nullptr;
    const auto &last = segments.last();
    if (!segments.namesSubset() && set->containsField(last.name))
        return &set->field(last.name);
    if (set->containsSubset(last.fullName))
        return &set->subset(last.fullName);
    return nullptr;
}

const TyxMetaDataField *TyxMetaData::findField(const TyxString &path) const
{
    return dynamic_cast<const TyxMetaDataField *>(find(path));
}

const TyxMetaDataSet *TyxMetaData::findSubset(const TyxString &path) const
{
    return dynamic_cast<const TyxMetaDataSet *>(find(path));
}

const TyxMetaDataField &TyxMetaData::field(const TyxString &path) const
{
    const TyxMetaDataField *found = findField(path);
    return found ? *found : emptyField();
}

uint64_t TyxMetaData::size(const TyxString &path) const
{
    const TyxMetaDataObject *object = find(path);
    if (const auto *field = dynamic_cast<const TyxMetaDataField *>(object))
        return field->size();
    const auto *set = dynamic_cast<const TyxMetaDataSet *>(object);
    const size_t first = path.find_first_not_of(L" \t\r\n");
    const bool leadingSlash = first != TyxString::npos && path[first] == L'/';
    const TyxMetaDataSegmentedPath segments(path);
    if (set && (segments.isRoot() || segments.namesSubset() || (leadingSlash && segments.size() == 1)))
        return set->fieldNames().size() + set->subsetNames().size();
    if (segments.empty() || segments.namesSubset())
        return 0;
    // The number of repeating elements "<name>[n]" beside the set.
    const TyxMetaDataSet *parent = walk(segments, segments.size() - 1);
    if (!parent)
        return 0;
    uint64_t count = 0;
    while (parent->containsSubset(TyxMetaDataSegmentedPath::indexName(segments.last().fullName, count)))
        ++count;
    return count;
}

int TyxMetaData::setValue(TyxString &&path, const TyxVariant &value, const TyxString &description,
                          const TyxString &formatSpec)
{
    return write(path, value, description, formatSpec, false);
}

int TyxMetaData::setValue(const TyxString &path, const TyxVariant &value, const TyxString &description,
                          const TyxString &formatSpec)
{
    return write(path, value, description, formatSpec, false);
}

int TyxMetaData::pushBack(const TyxString &path, const TyxVariant &value, const TyxString &description,
                          const TyxString &formatSpec)
{
    return write(path, value, description, formatSpec, true);
}

int TyxMetaData::write(const TyxString &path, const TyxVariant &value, const TyxString &description,
                       const TyxString &formatSpec, bool pushBack)
{
    const TyxMetaType type = value.type();
    if (!value.isValid() || type == internal::TyxVariantTraits<TyxMetaDataField>::type() ||
        type == internal::TyxVariantTraits<TyxMetaDataSet>::type())
        return setValueImpl(TyxMetaDataSegmentedPath(path), value, description, formatSpec, pushBack);
    // A plain value: segments as views, names copied only where entries are made.
    constexpr size_t capacity = 16;
    TyxMetaDataSegmentedPath::SegmentView segments[capacity];
    bool namesSubset = false;
    bool isRoot = false;
    const size_t count = TyxMetaDataSegmentedPath::split(path, segments, capacity, namesSubset, isRoot);
    if (count > capacity)
        return setValueImpl(TyxMetaDataSegmentedPath(path), value, description, formatSpec, pushBack);
    if (count == 0 || namesSubset)
        return 1;
    // A leading segment that names a field cannot be stepped through.
    const TyxMetaDataSet *probe = &m_root;
    for (size_t i = 0; i + 1 < count && probe; ++i) {
        const TyxMetaDataSet *next = probe->subsetAt(segments[i].fullName);
        if (!next && probe->fieldAt(segments[i].fullName))
            return 1;
        probe = next;
    }
    if (!indexReachable(probe ? probe->fieldAt(segments[count - 1].name) : nullptr,
                        segments[count - 1].index))
        return 1;
    TyxMetaDataSet *set = &m_root;
    for (size_t i = 0; i + 1 < count; ++i)
        set = &set->rsubsetAt(segments[i].fullName);
    const auto &last = segments[count - 1];
    const TyxMetaDataField *existing = set->fieldAt(last.name);
    TyxMetaDataField &field = existing ? const_cast<TyxMetaDataField &>(*existing)
                                       : set->rfield(TyxString(std::wstring(last.name)));
    uint64_t index = last.index;
    if (index == TyxMetaDataSegmentedPath::NO_INDEX)
        index = pushBack ? field.size() : 0;
    set->setFieldValue(field.name(), value, index);
    if (!description.empty() && field.description().empty())
        field.setDescription(description);
    if (!formatSpec.empty() && field.formatSpec().empty())
        field.setFormatSpec(formatSpec);
    return 0;
}

bool TyxMetaData::set(TyxString &&path, const TyxVariant &value, const TyxString &description,
                      const TyxString &formatSpec)
{
    return setValue(std::move(path), value, description, formatSpec) == 0;
}

bool TyxMetaData::set(const TyxString &path, const TyxVariant &value, const TyxString &description,
                      const TyxString &formatSpec)
{
    return setValue(path, value, description, formatSpec) == 0;
}

bool TyxMetaData::push_back(const TyxString &path, const TyxVariant &value, const TyxString &description,
                            const TyxString &formatSpec)
{
    return pushBack(path, value, description, formatSpec) == 0;
}

namespace {

// Copies every field value and subset of \p from into \p to.
void copySet(const TyxMetaDataSet &from, TyxMetaDataSet &to)
{
    for (const TyxMetaDataField *field : from.fields()) {
        for (const TyxVariant &v : field->values())
            to.appendFieldValue(field->name(), v);
    }
    for (const TyxMetaDataSet *subset : from.subsets())
        copySet(*subset, to.rsubset(subset->name()));
}

} // namespace

int TyxMetaData::setValueImpl(const TyxMetaDataSegmentedPath &path, const TyxVariant &value,
                              const TyxString &description, const TyxString &formatSpec, bool pushBack)
{
    if (!value.isValid() || path.empty())
        return 1;
    const TyxMetaType fieldType = internal::TyxVariantTraits<TyxMetaDataField>::type();
    const TyxMetaType setType = internal::TyxVariantTraits<TyxMetaDataSet>::type();
    const bool isField = value.type() == fieldType;
    const bool isSet = value.type() == setType;

    if (!isField && !isSet) {
        if (path.namesSubset())
            return 1;
        // A leading segment that names a field cannot be stepped through.
        const TyxMetaDataSet *probe = &m_root;
        for (size_t i = 0; i + 1 < path.size() && probe; ++i) {
            const TyxMetaDataSet *next = probe->subsetAt(path[i].fullName);
            if (!next && probe->fieldAt(path[i].fullName))
                return 1;
            probe = next;
        }
        if (!indexReachable(probe ? probe->fieldAt(path.last().name) : nullptr, path.last().index))
            return 1;
        TyxMetaDataSet *set = &m_root;
        for (size_t i = 0; i + 1 < path.size(); ++i)
            set = &set->rsubset(path[i].fullName);
        const auto &last = path.last();
        TyxMetaDataField &field = set->rfield(last.name);
        uint64_t index = last.index;
        if (!last.hasIndex())
            index = pushBack ? field.size() : 0;
        set->setFieldValue(last.name, value, index);
        if (!description.empty() && field.description().empty())
            field.setDescription(description);
        if (!formatSpec.empty() && field.formatSpec().empty())
            field.setFormatSpec(formatSpec);
        return 0;
    }

    TyxMetaDataSegmentedPath target = path;
    if (pushBack && !path.last().hasIndex()) {
        // A new repeating element: the first free "<name>[n]" in the parent.
        const TyxMetaDataSet *parent = walk(path, path.size() - 1);
        uint64_t n = 0;
        while (parent && parent->containsSubset(TyxMetaDataSegmentedPath::indexName(path.last().name, n)))
            ++n;
        TyxString text;
        for (size_t i = 0; i + 1 < path.size(); ++i)
            text += path[i].fullName + L"/";
        text += TyxMetaDataSegmentedPath::indexName(path.last().name, n);
        target = TyxMetaDataSegmentedPath(text);
    }
    TyxMetaDataSet *set = &m_root;
    for (size_t i = 0; i + 1 < target.size(); ++i)
        set = &set->rsubset(target[i].fullName);
    if (isSet) {
        const TyxMetaDataSet source = value.value<TyxMetaDataSet>();
        TyxMetaDataSet &dest = set->rsubset(target.last().fullName);
        if (dest.sharesWith(source) || dest.sharesWith(*set))
            return 1; // a set copied into itself
        copySet(source, dest);
        if (!description.empty() && dest.description().empty())
            dest.setDescription(description);
        return 0;
    }
    const TyxMetaDataField source = value.value<TyxMetaDataField>();
    TyxMetaDataSet &dest =
        (pushBack && !path.last().hasIndex()) ? set->rsubset(target.last().fullName) : *set;
    const TyxString fieldName = (pushBack && !path.last().hasIndex()) ? source.name() : target.last().name;
    for (const TyxVariant &v : source.values())
        dest.appendFieldValue(fieldName.empty() ? target.last().name : fieldName, v);
    return 0;
}

bool TyxMetaData::remove(const TyxString &path)
{
    const TyxMetaDataSegmentedPath segments(path);
    if (segments.isRoot()) {
        clear();
        return true;
    }
    if (segments.empty())
        return false;
    TyxMetaDataSet *set = &m_root;
    for (size_t i = 0; i + 1 < segments.size(); ++i) {
        if (!set->containsSubset(segments[i].fullName))
            return false;
        set = &set->rsubset(segments[i].fullName);
    }
    const auto &last = segments.last();
    if (!segments.namesSubset() && set->containsField(last.name))
        return set->removeField(last.name) == 0;
    return set->removeSubset(last.fullName) == 0;
}

bool TyxMetaData::parseFieldName(const TyxString &path, std::vector<TyxString> &subsets, TyxString &fieldName)
{
    subsets.clear();
    fieldName.clear();
    const TyxMetaDataSegmentedPath segments(path);
    if (segments.empty() || segments.namesSubset())
        return false;
    fieldName = segments.last().name;
    for (size_t i = 0; i + 1 < segments.size(); ++i)
        subsets.push_back(segments[i].fullName);
    return true;
}

std::map<TyxString, TyxVariant, TyxLexigraphicalNoCase> TyxMetaData::toVariantMap() const
{
    std::map<TyxString, TyxVariant, TyxLexigraphicalNoCase> map;
    for (auto it = begin(); it != end(); ++it)
        map[*it] = value(*it);
    return map;
}

void TyxMetaData::fromVariantMap(const std::map<TyxString, TyxVariant, TyxLexigraphicalNoCase> &) { clear(); }

TyxMetaData::const_iterator TyxMetaData::begin(const TyxString &path) const
{
    return const_iterator(this, path, true, true, false);
}

bool TyxMetaData::isValidCharVariant(const TyxString &, const TyxVariant &value)
{
    if (value.type() == TyxMetaType::Char)
        return true;
    return value.type() == TyxMetaType::String && value.value<TyxString>().size() == 1;
}

namespace {

// A number of a code up to \p lastNumeric, or a text that converts to T,
// within the limits; a limit at the extreme of T is not tested.
template <class T>
bool isValidNumber(const TyxVariant &value, T min, T max, int lastNumeric)
{
    constexpr T least = std::numeric_limits<T>::lowest();
    constexpr T greatest = std::numeric_limits<T>::max();
    const int code = value.type().toEnum();
    T number{};
    if (code > lastNumeric) {
        if (code != TyxMetaType::String || !value.value(internal::TyxVariantTraits<T>::type(), &number))
            return false;
    } else {
        if (min == least && max == greatest)
            return true;
        if (!value.value(internal::TyxVariantTraits<T>::type(), &number))
            return false;
    }
    return (min == least || number >= min) && (max == greatest || number <= max);
}

} // namespace

bool TyxMetaData::isValidIntegerVariant(const TyxString &, const TyxVariant &value, int min, int max)
{
    return isValidNumber<int>(value, min, max, TyxMetaType::UInt64);
}

bool TyxMetaData::isValidDoubleVariant(const TyxString &, const TyxVariant &value, double min, double max)
{
    return isValidNumber<double>(value, min, max, TyxMetaType::Double);
}

bool TyxMetaData::isValidDoubleVariantList(const TyxString &name, const TyxVariant &value)
{
    if (value.type() != TyxMetaType::VariantList)
        return false;
    for (const TyxVariant &element : value.value<TyxVariantList>()) {
        if (!isValidDoubleVariant(name, element, std::numeric_limits<double>::lowest(),
                                  std::numeric_limits<double>::max()))
            return false;
    }
    return true;
}

bool TyxMetaData::isValidStringVariantList(const TyxString &, const TyxVariant &value)
{
    if (value.type() == TyxMetaType::StrList)
        return true;
    if (value.type() != TyxMetaType::VariantList)
        return false;
    for (const TyxVariant &element : value.value<TyxVariantList>()) {
        if (element.type() != TyxMetaType::String)
            return false;
    }
    return true;
}

TyxMetaData::const_iterator::const_iterator(const TyxMetaData *metaData, const TyxString &path, bool recurse,
                                            bool fieldPaths, bool repeating)
    : m_owner(metaData), m_metaData(metaData), m_start(path), m_recurse(recurse), m_fieldPaths(fieldPaths),
      m_repeating(repeating)
{
    fill();
}

void TyxMetaData::const_iterator::fill()
{
    m_paths.clear();
    m_position = 0;
    m_metaData = m_owner;
    if (!m_metaData)
        return;
    const TyxMetaDataSegmentedPath segments(m_start);
    const TyxMetaDataSet *set =
        segments.empty() ? &m_metaData->root() : m_metaData->walk(segments, segments.size());
    if (!set)
        return;
    TyxString prefix;
    for (const auto &segment : segments.segments())
        prefix += segment.fullName + L"/";
    if (m_fieldPaths)
        fieldPathsRecurse(*set, prefix);
    else
        subsetPathsRecurse(*set, prefix);
    if (m_paths.empty())
        m_metaData = nullptr;
}

void TyxMetaData::const_iterator::fieldPathsRecurse(const TyxMetaDataSet &set, const TyxString &prefix)
{
    for (const TyxMetaDataField *field : set.fields()) {
        if (!m_repeating || field->size() > 1)
            m_paths.push_back(prefix + field->name());
    }
    if (!m_recurse)
        return;
    for (const TyxMetaDataSet *subset : set.subsets())
        fieldPathsRecurse(*subset, prefix + subset->name() + L"/");
}

void TyxMetaData::const_iterator::subsetPathsRecurse(const TyxMetaDataSet &set, const TyxString &prefix)
{
    for (const TyxMetaDataSet *subset : set.subsets()) {
        const TyxMetaDataSegmentedPath segment(subset->name());
        if (!m_repeating || (!segment.empty() && segment.last().hasIndex()))
            m_paths.push_back(prefix + subset->name() + L"/");
        if (m_recurse)
            subsetPathsRecurse(*subset, prefix + subset->name() + L"/");
    }
}

TyxMetaData::const_iterator &TyxMetaData::const_iterator::operator++()
{
    if (++m_position >= m_paths.size()) {
        m_paths.clear();
        m_position = 0;
        m_metaData = nullptr;
    }
    return *this;
}

bool TyxMetaData::const_iterator::operator==(const const_iterator &other) const
{
    return m_metaData == other.m_metaData && m_position == other.m_position &&
           m_paths.size() == other.m_paths.size();
}

TyxMetaData::const_iterator TyxMetaData::const_iterator::norecurse() const
{
    const_iterator copy = *this;
    copy.m_recurse = false;
    copy.fill();
    return copy;
}

TyxMetaData::const_iterator TyxMetaData::const_iterator::paths() const
{
    const_iterator copy = *this;
    copy.m_fieldPaths = false;
    copy.fill();
    return copy;
}

TyxMetaData::const_iterator TyxMetaData::const_iterator::repeating() const
{
    const_iterator copy = *this;
    copy.m_repeating = true;
    copy.fill();
    return copy;
}

std::wostream &operator<<(std::wostream &os, const TyxMetaData &metaData) { return os << metaData.root(); }

std::ostream &operator<<(std::ostream &os, const TyxMetaData &metaData) { return os << metaData.root(); }

} // namespace tyx
