// Sorting a point table by x against std::sort of the same x coordinates.
#include <benchmark/benchmark.h>

#include <tyx/TyxPointTable.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using tyx::TyxPoint;
using tyx::TyxPointTable;

constexpr uint64_t kPoints = 1000000;

const TyxPointTable &unsortedTable()
{
    static const TyxPointTable table = [] {
        TyxPointTable t;
        t.reserve(kPoints);
        std::mt19937 random(5);
        std::uniform_real_distribution<double> values(-1000.0, 1000.0);
        for (uint64_t i = 0; i < kPoints; ++i) {
            const double x = values(random);
            const double y = values(random);
            const double z = values(random);
            t.push_back(TyxPoint{x, y, z});
        }
        return t;
    }();
    return table;
}

void BM_PointTableSortByX(benchmark::State &state)
{
    const TyxPointTable &source = unsortedTable();
    for (auto _ : state) {
        state.PauseTiming();
        TyxPointTable table(source);
        state.ResumeTiming();
        table.sortByCoordinate(0, true);
        benchmark::DoNotOptimize(table[0][0]);
        state.PauseTiming();
        table = TyxPointTable();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kPoints));
}
BENCHMARK(BM_PointTableSortByX)->Unit(benchmark::kMillisecond);

void BM_HandSortOfX(benchmark::State &state)
{
    const TyxPointTable &source = unsortedTable();
    std::vector<double> xs;
    for (const TyxPoint &point : source)
        xs.push_back(point[0].toDouble());
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<double> copy(xs);
        state.ResumeTiming();
        std::sort(copy.begin(), copy.end());
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kPoints));
}
BENCHMARK(BM_HandSortOfX)->Unit(benchmark::kMillisecond);

} // namespace
