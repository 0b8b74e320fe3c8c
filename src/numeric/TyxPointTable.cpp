#include <tyx/TyxPointTable.h>

#include <algorithm>
#include <cfloat>
#include <utility>

#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxVariant.h>

namespace tyx {

namespace {

TyxMetaPropertyPtr coordinateProperty(const wchar_t *name, const wchar_t *label, const wchar_t *description,
                                      uint64_t index)
{
    TyxMetaPropertyPtr property(
        new TyxMetaProperty(name, TyxMetaType::Double, TyxMetaFlag(), label, description));
    property->setData(TyxVariant(index));
    return property;
}

} // namespace

TyxPointTable::TyxPointTable() : TyxDataTable<TyxPoint>(defaultProperties(), 0, TyxPoint()) {}

TyxPointTable::TyxPointTable(const TyxPointTable &other) : TyxRefCounted(), TyxDataTable<TyxPoint>(other) {}

TyxPointTable::TyxPointTable(const TyxMetaProperties &properties)
    : TyxDataTable<TyxPoint>(properties, 0, TyxPoint())
{
    setIndexes();
}

TyxPointTable::TyxPointTable(uint64_t count, const TyxPoint &fill)
    : TyxDataTable<TyxPoint>(defaultProperties(), count, fill)
{
}

TyxPointTable::TyxPointTable(const TyxMetaProperties &properties, uint64_t count, const TyxPoint &fill)
    : TyxDataTable<TyxPoint>(properties, count, fill)
{
    setIndexes();
}

TyxPointTable::~TyxPointTable() = default;

TyxPointTable &TyxPointTable::operator=(const TyxPointTable &other)
{
    TyxDataTable<TyxPoint>::operator=(other);
    return *this;
}

TyxPointTable &TyxPointTable::operator=(const TyxMetaProperties &properties)
{
    TyxDataTable<TyxPoint>::operator=(properties);
    setIndexes();
    return *this;
}

const TyxMetaProperties &TyxPointTable::defaultProperties()
{
    static const TyxMetaProperties properties = [] {
        TyxMetaProperties made(L"attributes", TyxMetaPropertiesPtr());
        made.append(coordinateProperty(L"x", L"X", L"The X coordinate of the 3D position", 0));
        made.append(coordinateProperty(L"y", L"Y", L"The Y coordinate of the 3D position", 1));
        made.append(coordinateProperty(L"z", L"Z", L"The Z coordinate of the 3D position", 2));
        return made;
    }();
    return properties;
}

void TyxPointTable::setIndexes()
{
    // The property objects may be shared with other collections (copies of
    // TyxMetaProperties share them), so a property whose stored index is not
    // its position is replaced by a copy instead of being changed in place.
    const TyxMetaProperties &current = properties();
    const TyxStrList names = current.propertyNames();
    bool inPlace = true;
    for (size_t i = 0; i < names.size() && inPlace; ++i) {
        const TyxMetaPropertyConstPtr property = current.property(names[i]);
        inPlace = property && property->data().type() == TyxMetaType::UInt64 &&
                  property->data().value<uint64_t>() == i;
    }
    if (inPlace)
        return;
    TyxMetaProperties indexed(current.metaClassName(), TyxMetaPropertiesPtr());
    for (size_t i = 0; i < names.size(); ++i) {
        const TyxMetaPropertyConstPtr property = current.property(names[i]);
        if (!property)
            continue;
        TyxMetaPropertyPtr copy(new TyxMetaProperty(*property));
        copy->setData(TyxVariant(static_cast<uint64_t>(i)));
        indexed.append(copy);
    }
    rProperties() = indexed;
}

uint64_t TyxPointTable::indexOf(const TyxString &name) const
{
    const TyxMetaPropertyConstPtr property = properties().property(name);
    if (!property || !property->data().isValid())
        return INVALID_INDEX();
    return property->data().value<uint64_t>();
}

uint64_t TyxPointTable::registerProperty(const TyxMetaProperty &property)
{
    if (properties().contains(property.name()))
        return indexOf(property.name());
    const uint64_t index = properties().propertyNames().size();
    TyxMetaPropertyPtr copy(new TyxMetaProperty(property));
    copy->setData(TyxVariant(index));
    rProperties().append(copy);
    return index;
}

TyxPoint TyxPointTable::createPoint(const TyxPointAttributeVal &fill) const
{
    const uint64_t count = properties().propertyNames().size();
    return TyxPoint(std::max<uint64_t>(count, 3), fill);
}

TyxPointTable::IndexList TyxPointTable::findByCoordinate(uint64_t index, double low, double high,
                                                         bool negate) const
{
    switch (index) {
    case 0:
        return negate ? find_aux(FilterImpl<CoordinateFilterNegate_X>({low, high}))
                      : find_aux(FilterImpl<CoordinateFilter_X>({low, high}));
    case 1:
        return negate ? find_aux(FilterImpl<CoordinateFilterNegate_Y>({low, high}))
                      : find_aux(FilterImpl<CoordinateFilter_Y>({low, high}));
    case 2:
        return negate ? find_aux(FilterImpl<CoordinateFilterNegate_Z>({low, high}))
                      : find_aux(FilterImpl<CoordinateFilter_Z>({low, high}));
    default: return IndexList(new std::vector<uint64_t>);
    }
}

TyxPointTable::IndexList TyxPointTable::findByROI(const TyxROIRect<double> &roi, bool twoDimensional,
                                                  bool negate) const
{
    if (twoDimensional)
        return negate ? find_aux(FilterImpl<RoiFilter2DNegate>({roi}))
                      : find_aux(FilterImpl<RoiFilter2D>({roi}));
    return negate ? find_aux(FilterImpl<RoiFilter3DNegate>({roi})) : find_aux(FilterImpl<RoiFilter3D>({roi}));
}

TyxPointTable::IndexList TyxPointTable::findByAttribute(uint64_t index, const TyxVariant &value,
                                                        bool negate) const
{
    const TyxPointAttributeVal wanted(value);
    if (negate)
        return find_aux(FilterImpl<MatchAttributeFilterNegate>({index, wanted}));
    return find_aux(FilterImpl<MatchAttributeFilter>({index, wanted}));
}

TyxPointTable::IndexList TyxPointTable::findByAttribute(const TyxString &name, const TyxVariant &value,
                                                        bool negate) const
{
    return findByAttribute(indexOf(name), value, negate);
}

template <int Index, bool Ascending>
void TyxPointTable::sortBy()
{
    // Sorting (key, position) pairs and moving each point once keeps the
    // comparisons on contiguous doubles instead of chasing every point's
    // heap block.
    std::vector<TyxPoint> &points = records();
    const size_t n = points.size();
    std::vector<std::pair<double, uint64_t>> keys(n);
    // The points' values lie wherever the heap put them: fetching a few
    // points ahead hides most of the cache misses of reading the keys.
    constexpr size_t kAhead = 16;
    for (size_t i = 0; i < n; ++i) {
        if (i + kAhead < n)
            __builtin_prefetch(points[i + kAhead].data());
        keys[i] = {coordinate(points[i], Index), i};
    }
    // NaN has no place in an order: those points go last, so the comparison
    // below stays a strict weak order.
    const auto numbers =
        std::partition(keys.begin(), keys.end(), [](const auto &key) { return key.first == key.first; });
    std::sort(keys.begin(), numbers, [](const auto &a, const auto &b) {
        if constexpr (Ascending)
            return a.first < b.first;
        else
            return a.first > b.first;
    });
    std::vector<TyxPoint> sorted;
    sorted.reserve(n);
    for (const auto &key : keys)
        sorted.push_back(std::move(points[key.second]));
    points.swap(sorted);
}

void TyxPointTable::sortByCoordinate(uint64_t index, bool ascending)
{
    switch (index) {
    case 0: ascending ? sortBy<0, true>() : sortBy<0, false>(); break;
    case 1: ascending ? sortBy<1, true>() : sortBy<1, false>(); break;
    default: ascending ? sortBy<2, true>() : sortBy<2, false>(); break;
    }
}

void TyxPointTable::coordinateExtents(TyxCoord3D<double> &minimum, TyxCoord3D<double> &maximum) const
{
    double lo[3] = {DBL_MAX, DBL_MAX, DBL_MAX};
    double hi[3] = {DBL_MIN, DBL_MIN, DBL_MIN};
    for (const TyxPoint &point : *this) {
        for (uint64_t c = 0; c < 3; ++c) {
            const double v = coordinate(point, c);
            if (v < lo[c])
                lo[c] = v;
            if (v > hi[c])
                hi[c] = v;
        }
    }
    minimum = TyxCoord3D<double>(lo[0], lo[1], lo[2]);
    maximum = TyxCoord3D<double>(hi[0], hi[1], hi[2]);
}

} // namespace tyx
