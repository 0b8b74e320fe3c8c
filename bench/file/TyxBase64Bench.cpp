// Base64 encoding and decoding of 64 MiB against a plain hand-written loop.
#include <tyx/TyxBase64.h>

#include <benchmark/benchmark.h>

#include <random>

namespace {

using tyx::TyxBase64;

constexpr size_t kBytes = 64u << 20;
constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

const std::vector<uint8_t> &bytes()
{
    static const std::vector<uint8_t> data = [] {
        std::vector<uint8_t> out(kBytes);
        std::mt19937 random(1);
        for (auto &b : out)
            b = static_cast<uint8_t>(random());
        return out;
    }();
    return data;
}

const std::string &encoded()
{
    static const std::string text = [] {
        std::string out;
        TyxBase64::encode(bytes(), out);
        return out;
    }();
    return text;
}

void BM_Base64Encode(benchmark::State &state)
{
    bytes(); // the data is made before timing starts
    std::string text;
    for (auto _ : state) {
        TyxBase64::encode(bytes(), text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

// One alphabet lookup per six bits, no padding (the size is a multiple of 3).
void BM_HandEncode(benchmark::State &state)
{
    const std::vector<uint8_t> &in = bytes();
    std::string text;
    for (auto _ : state) {
        text.resize(in.size() / 3 * 4);
        char *o = text.data();
        for (size_t i = 0; i + 3 <= in.size(); i += 3) {
            const uint32_t v = uint32_t(in[i]) << 16 | uint32_t(in[i + 1]) << 8 | in[i + 2];
            *o++ = kAlphabet[v >> 18];
            *o++ = kAlphabet[(v >> 12) & 63];
            *o++ = kAlphabet[(v >> 6) & 63];
            *o++ = kAlphabet[v & 63];
        }
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

void BM_Base64Decode(benchmark::State &state)
{
    encoded();
    std::vector<uint8_t> out;
    for (auto _ : state) {
        TyxBase64::decode(std::string_view(encoded()), out);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

// One table lookup per character with a validity check, whole groups only.
void BM_HandDecode(benchmark::State &state)
{
    uint8_t table[256];
    std::fill(std::begin(table), std::end(table), uint8_t(0x80));
    for (int i = 0; i < 64; ++i)
        table[static_cast<unsigned char>(kAlphabet[i])] = static_cast<uint8_t>(i);
    const std::string &text = encoded();
    std::vector<uint8_t> out;
    for (auto _ : state) {
        out.resize(text.size() / 4 * 3);
        uint8_t *o = out.data();
        bool bad = false;
        for (size_t i = 0; i + 4 <= text.size(); i += 4) {
            const uint32_t a = table[static_cast<unsigned char>(text[i])];
            const uint32_t b = table[static_cast<unsigned char>(text[i + 1])];
            const uint32_t c = table[static_cast<unsigned char>(text[i + 2])];
            const uint32_t d = table[static_cast<unsigned char>(text[i + 3])];
            bad |= ((a | b | c | d) & 0x80) != 0;
            const uint32_t v = a << 18 | b << 12 | c << 6 | d;
            *o++ = static_cast<uint8_t>(v >> 16);
            *o++ = static_cast<uint8_t>(v >> 8);
            *o++ = static_cast<uint8_t>(v);
        }
        benchmark::DoNotOptimize(bad);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

BENCHMARK(BM_Base64Encode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HandEncode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Base64Decode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HandDecode)->Unit(benchmark::kMillisecond);

} // namespace
