// fromJson and toJson against RapidJSON alone, and loading a plug-in.
#include <tyx/TyxJsonNode.h>
#include <tyx/TyxPlugin.h>

#include <benchmark/benchmark.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <memory>
#include <sstream>
#include <streambuf>
#include <string>

namespace {

using namespace tyx;

// About 10 MB of nested objects holding arrays of numbers and strings.
const std::string &document()
{
    static const std::string text = [] {
        std::string out = "{\"records\":[";
        for (int i = 0; out.size() < 10'000'000; ++i) {
            if (i)
                out += ",";
            out += "{\"id\":" + std::to_string(i) + ",\"name\":\"record " + std::to_string(i) +
                   "\",\"values\":[1.5,-2,3.25e10,4,5],\"tags\":[\"alpha\",\"beta\"],\"pos\":{\"x\":" +
                   std::to_string(i * 0.5) + ",\"y\":" + std::to_string(-i) + "}}";
        }
        out += "]}";
        return out;
    }();
    return text;
}

// Reads the document where it lies, so that no copy of it is timed.
class DocumentBuf : public std::streambuf {
public:
    explicit DocumentBuf(const std::string &text)
    {
        char *begin = const_cast<char *>(text.data());
        setg(begin, begin, begin + text.size());
    }
};

void BM_fromJson(benchmark::State &state)
{
    for (auto _ : state) {
        DocumentBuf buffer(document());
        std::istream is(&buffer);
        TyxVariant value;
        benchmark::DoNotOptimize(fromJson(is, value));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * document().size()));
}
BENCHMARK(BM_fromJson)->Unit(benchmark::kMillisecond);

// The same without the release of the result, which is timed in the one above.
void BM_fromJsonNoRelease(benchmark::State &state)
{
    for (auto _ : state) {
        DocumentBuf buffer(document());
        std::istream is(&buffer);
        auto value = std::make_unique<TyxVariant>();
        benchmark::DoNotOptimize(fromJson(is, *value));
        state.PauseTiming();
        value.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_fromJsonNoRelease)->Unit(benchmark::kMillisecond);

void BM_rapidjsonParse(benchmark::State &state)
{
    for (auto _ : state) {
        rapidjson::Document doc;
        doc.Parse(document().c_str());
        benchmark::DoNotOptimize(doc.HasParseError());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * document().size()));
}
BENCHMARK(BM_rapidjsonParse)->Unit(benchmark::kMillisecond);

void BM_toJson(benchmark::State &state)
{
    DocumentBuf buffer(document());
    std::istream is(&buffer);
    TyxVariant value;
    fromJson(is, value);
    for (auto _ : state) {
        std::ostringstream os;
        toJson(os, value);
        benchmark::DoNotOptimize(os.tellp());
    }
}
BENCHMARK(BM_toJson)->Unit(benchmark::kMillisecond);

void BM_rapidjsonWrite(benchmark::State &state)
{
    rapidjson::Document doc;
    doc.Parse(document().c_str());
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        doc.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetSize());
    }
}
BENCHMARK(BM_rapidjsonWrite)->Unit(benchmark::kMillisecond);

void BM_pluginLoadUnload(benchmark::State &state)
{
    for (auto _ : state) {
        TyxPlugin plugin;
        benchmark::DoNotOptimize(plugin.load(TyxURI(TyxString(TYX_BENCH_PLUGIN))));
        plugin.unload();
    }
}
BENCHMARK(BM_pluginLoadUnload)->Unit(benchmark::kMicrosecond);

} // namespace
