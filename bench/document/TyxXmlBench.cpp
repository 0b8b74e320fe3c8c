// toXml and fromXml of 100,000 values against tinyxml2 printing and parsing
// the same text alone.
#include <tyx/TyxSimpleStream.h>

#include <benchmark/benchmark.h>

#include <tinyxml2.h>

#include <sstream>

namespace {

using namespace tyx;

// A list of 100,000 values: integers, doubles and short texts in turn.
const TyxVariant &values()
{
    static const TyxVariant list = [] {
        TyxVariantList out;
        out.reserve(100'000);
        for (int i = 0; i < 100'000; ++i) {
            switch (i % 3) {
            case 0: out.emplace_back(i); break;
            case 1: out.emplace_back(i * 0.25 + 1e-3); break;
            default: out.emplace_back(TyxString(L"value ") + std::to_wstring(i)); break;
            }
        }
        return TyxVariant(std::move(out));
    }();
    return list;
}

const std::string &text()
{
    static const std::string xml = [] {
        std::ostringstream os;
        toXml(os, values());
        return os.str();
    }();
    return xml;
}

void BM_toXml(benchmark::State &state)
{
    text(); // the values and their text are made before timing starts
    for (auto _ : state) {
        std::ostringstream os;
        toXml(os, values());
        benchmark::DoNotOptimize(os.tellp());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text().size()));
}

// tinyxml2 printing a parsed document of the same text.
void BM_Tinyxml2Print(benchmark::State &state)
{
    tinyxml2::XMLDocument doc;
    doc.Parse(text().data(), text().size());
    for (auto _ : state) {
        tinyxml2::XMLPrinter printer(nullptr, true);
        doc.Print(&printer);
        std::ostringstream os;
        os.write(printer.CStr(), printer.CStrSize() - 1);
        benchmark::DoNotOptimize(os.tellp());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text().size()));
}

void BM_fromXml(benchmark::State &state)
{
    text();
    for (auto _ : state) {
        std::istringstream is(text());
        TyxVariant value;
        benchmark::DoNotOptimize(fromXml(is, value).empty());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text().size()));
}

// tinyxml2 parsing the same text, read from a stream the same way.
void BM_Tinyxml2Parse(benchmark::State &state)
{
    text();
    for (auto _ : state) {
        std::istringstream is(text());
        const std::string read((std::istreambuf_iterator<char>(is)), std::istreambuf_iterator<char>());
        tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
        benchmark::DoNotOptimize(doc.Parse(read.data(), read.size()));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text().size()));
}

BENCHMARK(BM_toXml)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Tinyxml2Print)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_fromXml)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Tinyxml2Parse)->Unit(benchmark::kMillisecond);

} // namespace
