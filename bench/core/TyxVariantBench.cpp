// Variant copies and value look-ups, and the matrix's text casts, against the
// standard library doing the same work.
#include <benchmark/benchmark.h>

#include <any>
#include <cwchar>
#include <memory>

#include <tyx/TyxCast.h>
#include <tyx/TyxVariant.h>

namespace {

void BM_VariantCopy(benchmark::State &state)
{
    const tyx::TyxVariant source(42);
    for (auto _ : state) {
        tyx::TyxVariant copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_VariantCopy);

void BM_SharedPtrCopy(benchmark::State &state)
{
    const std::shared_ptr<int> source = std::make_shared<int>(42);
    for (auto _ : state) {
        std::shared_ptr<int> copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_SharedPtrCopy);

void BM_VariantValueDouble(benchmark::State &state)
{
    const tyx::TyxVariant source(2.5);
    benchmark::DoNotOptimize(source);
    for (auto _ : state)
        benchmark::DoNotOptimize(source.value<double>());
}
BENCHMARK(BM_VariantValueDouble);

void BM_AnyCastDouble(benchmark::State &state)
{
    const std::any source(2.5);
    benchmark::DoNotOptimize(source);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::any_cast<double>(source));
}
BENCHMARK(BM_AnyCastDouble);

void BM_VariantValueIntToDouble(benchmark::State &state)
{
    const tyx::TyxVariant source(7);
    for (auto _ : state)
        benchmark::DoNotOptimize(source.value<double>());
}
BENCHMARK(BM_VariantValueIntToDouble);

void BM_DoubleToTextCast(benchmark::State &state)
{
    double value = 1234.56789;
    tyx::TyxString text;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        tyx::internal::TyxCast<double, tyx::TyxString>::cast(value, text);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_DoubleToTextCast);

void BM_DoubleToTextSwprintf(benchmark::State &state)
{
    double value = 1234.56789;
    wchar_t buffer[64];
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        std::swprintf(buffer, 64, L"%.21g", value);
        benchmark::DoNotOptimize(buffer);
    }
}
BENCHMARK(BM_DoubleToTextSwprintf);

void BM_TextToDoubleCast(benchmark::State &state)
{
    const tyx::TyxString text = L"1234.56789";
    double value = 0.0;
    for (auto _ : state) {
        tyx::internal::TyxCast<tyx::TyxString, double>::cast(text, value);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(BM_TextToDoubleCast);

void BM_TextToDoubleWcstod(benchmark::State &state)
{
    const std::wstring text = L"1234.56789";
    for (auto _ : state)
        benchmark::DoNotOptimize(std::wcstod(text.c_str(), nullptr));
}
BENCHMARK(BM_TextToDoubleWcstod);

void BM_VariantTextToDouble(benchmark::State &state)
{
    const tyx::TyxVariant source(L"1234.56789");
    for (auto _ : state)
        benchmark::DoNotOptimize(source.value<double>());
}
BENCHMARK(BM_VariantTextToDouble);

} // namespace
