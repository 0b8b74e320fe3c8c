// UTF-8 conversion and splitting against plain loops doing the same work.
#include <benchmark/benchmark.h>

#include <tyx/TyxString.h>

namespace {

tyx::TyxString sampleText(size_t length)
{
    const std::wstring piece = L"Grüße, 地図 and maps; ";
    tyx::TyxString text;
    while (text.size() < length)
        text += piece;
    return text;
}

void BM_ToUtf8(benchmark::State &state)
{
    const tyx::TyxString text = sampleText(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(tyx::toUTF8(text));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_ToUtf8)->Arg(64)->Arg(4096);

void BM_FromUtf8(benchmark::State &state)
{
    const std::string text = tyx::toUTF8(sampleText(static_cast<size_t>(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(tyx::fromUTF8(text));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_FromUtf8)->Arg(64)->Arg(4096);

void BM_SplitStr(benchmark::State &state)
{
    const tyx::TyxString text = sampleText(4096);
    for (auto _ : state)
        benchmark::DoNotOptimize(tyx::splitStr(text, L",; ", false));
}
BENCHMARK(BM_SplitStr);

/// The same split written as a plain loop over find_first_of.
void BM_SplitPlainLoop(benchmark::State &state)
{
    const std::wstring text = sampleText(4096);
    const std::wstring delimiters = L",; ";
    for (auto _ : state) {
        std::vector<std::wstring> parts;
        size_t start = text.find_first_not_of(delimiters);
        while (start != std::wstring::npos) {
            const size_t end = text.find_first_of(delimiters, start);
            parts.push_back(text.substr(start, end - start));
            start = text.find_first_not_of(delimiters, end);
        }
        benchmark::DoNotOptimize(parts);
    }
}
BENCHMARK(BM_SplitPlainLoop);

} // namespace
