// Metadata path reads and writes, and property access by name, against a
// standard map of paths and a direct setter doing the same work.
#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include <tyx/TyxMetaData.h>
#include <tyx/TyxMetaObjectImpl.h>

namespace {

using namespace tyx;

// 10,000 field paths: 100 groups of 100 fields, one set level between.
const std::vector<TyxString> &paths()
{
    static const std::vector<TyxString> all = [] {
        std::vector<TyxString> list;
        for (int g = 0; g < 100; ++g) {
            for (int f = 0; f < 100; ++f)
                list.push_back(L"group" + std::to_wstring(g) + L"/image/field" + std::to_wstring(f));
        }
        return list;
    }();
    return all;
}

void BM_MetaDataSetValue(benchmark::State &state)
{
    TyxMetaData md;
    const TyxVariant value(1.5);
    for (auto _ : state) {
        for (const TyxString &path : paths())
            benchmark::DoNotOptimize(md.setValue(path, value));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(paths().size()));
}
BENCHMARK(BM_MetaDataSetValue);

void BM_MapSetValue(benchmark::State &state)
{
    std::map<std::wstring, TyxVariant> map;
    const TyxVariant value(1.5);
    for (auto _ : state) {
        for (const TyxString &path : paths())
            map[path] = value;
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(paths().size()));
}
BENCHMARK(BM_MapSetValue);

void BM_MetaDataValue(benchmark::State &state)
{
    TyxMetaData md;
    for (const TyxString &path : paths())
        md.setValue(path, TyxVariant(2));
    for (auto _ : state) {
        for (const TyxString &path : paths())
            benchmark::DoNotOptimize(&md.value(path));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(paths().size()));
}
BENCHMARK(BM_MetaDataValue);

void BM_MapValue(benchmark::State &state)
{
    std::map<std::wstring, TyxVariant> map;
    for (const TyxString &path : paths())
        map[path] = TyxVariant(2);
    for (auto _ : state) {
        for (const TyxString &path : paths())
            benchmark::DoNotOptimize(&map.find(path)->second);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(paths().size()));
}
BENCHMARK(BM_MapValue);

// A class with one property, set through its meta object or directly.
class Gauge : public TyxObject {
public:
    void setLevel(double level) { m_level = level; }
    double level() const { return m_level; }
    TyxMetaObjectConstPtr metaObject() const override;
    using TyxObject::metaObject;

private:
    double m_level = 0;
};

class GaugeMetaObj : public TyxMetaObjectImpl<GaugeMetaObj, Gauge> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;
    void initProperties() override
    {
        beginProperties(L"Gauge");
        addProperty(
            TyxMetaProperty(L"level", TyxMetaType::Double),
            [](GaugeMetaObj &m, const TyxVariant &v) {
                double level = 0;
                if (!take(v, level))
                    return 1;
                m.object()->setLevel(level);
                return 0;
            },
            [](GaugeMetaObj &m, TyxVariant &v) { return (v = m.object()->level()), 0; });
    }
};

TyxMetaObjectConstPtr Gauge::metaObject() const
{
    return TyxMetaObjectConstPtr(new GaugeMetaObj(const_cast<Gauge *>(this)));
}

void BM_PropertySetByName(benchmark::State &state)
{
    Gauge gauge;
    const TyxMetaObjectPtr meta = gauge.metaObject();
    const TyxString name = L"level";
    const TyxVariant value(2.5);
    for (auto _ : state)
        benchmark::DoNotOptimize(meta->setProperty(name, value));
    benchmark::DoNotOptimize(gauge.level());
}
BENCHMARK(BM_PropertySetByName);

void BM_PropertySetDirect(benchmark::State &state)
{
    Gauge gauge;
    const TyxVariant value(2.5);
    for (auto _ : state) {
        // The same conversion from the variant, then the setter.
        gauge.setLevel(value.value<double>());
        benchmark::DoNotOptimize(gauge);
    }
}
BENCHMARK(BM_PropertySetDirect);

} // namespace
