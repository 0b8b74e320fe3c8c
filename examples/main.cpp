// tyx example: band math over two image bands with the expression parser.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <iomanip>
#include <iostream>
#include <span>

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxTextMsg.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint64_t kWidth = 4096;
constexpr uint64_t kHeight = 4096;
constexpr uint64_t kSamples = kWidth * kHeight;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void report(const char *step, double ms)
{
    std::cout << "  " << std::left << std::setw(46) << step << std::right << std::fixed
              << std::setprecision(1) << std::setw(9) << ms << " ms\n";
}

// A band of U16 samples with a smooth pattern; \p shift varies it. No
// sample is 0, so no pixel has a + b == 0.
tyx::TyxEqnTile makeBand(unsigned shift)
{
    tyx::TyxEqnTile band(tyx::TyxDataType(tyx::TyxNumericType::U16), kSamples);
    const std::span<uint16_t> samples = band.samples<uint16_t>();
    for (uint64_t y = 0; y < kHeight; ++y) {
        for (uint64_t x = 0; x < kWidth; ++x)
            samples[y * kWidth + x] =
                static_cast<uint16_t>(1 + (x * 7 + y * (3 + shift) + shift * 1000) % 60000);
    }
    return band;
}

} // namespace

int main()
{
    std::cout << "tyx " << tyx::TyxCoreLibMgr::instance().version()
              << ": normalised difference of two U16 bands of " << kWidth << " x " << kHeight << " samples\n";

    auto start = Clock::now();
    const tyx::TyxEqnTile nir = makeBand(1);
    const tyx::TyxEqnTile red = makeBand(2);
    report("make the bands a and b", millisecondsSince(start));

    tyx::TyxTextMsg msg;
    tyx::TyxEqnParser ratio;
    start = Clock::now();
    if (ratio.parse(L"(a - b) / (a + b)", &msg) != 0) {
        std::cout << "parse failed: " << msg << '\n';
        return 1;
    }
    ratio.setValue(L"a", nir);
    ratio.setValue(L"b", red);
    report("parse \"(a - b) / (a + b)\" and set a, b", millisecondsSince(start));

    start = Clock::now();
    ratio.evaluate(&msg);
    report("first evaluation (picks the routines)", millisecondsSince(start));

    // New values of the same type: the routines stay, and the results of
    // the first evaluation lend their buffers to the second.
    ratio.setValue(L"a", nir);
    ratio.setValue(L"b", red);
    start = Clock::now();
    const tyx::TyxVariant &result = ratio.evaluate(&msg);
    report("second evaluation (reuses the result buffers)", millisecondsSince(start));
    if (!msg.empty() || result.type() != tyx::TyxMetaType::EqnTile) {
        std::cout << "evaluation failed: " << msg << '\n';
        return 1;
    }
    const tyx::TyxEqnTile ndvi = result.value<tyx::TyxEqnTile>();

    tyx::TyxEqnParser scale;
    start = Clock::now();
    if (scale.parse(L"roundclip(x * 10000, \"I16\", -10000, 10000)", &msg) != 0) {
        std::cout << "parse failed: " << msg << '\n';
        return 1;
    }
    scale.setValue(L"x", ndvi);
    const tyx::TyxVariant &scaled = scale.evaluate(&msg);
    report("roundclip(x * 10000) back to I16", millisecondsSince(start));
    if (!msg.empty()) {
        std::cout << "evaluation failed: " << msg << '\n';
        return 1;
    }
    const tyx::TyxEqnTile packed = scaled.value<tyx::TyxEqnTile>();

    // A few samples against the same arithmetic written out.
    start = Clock::now();
    int mismatches = 0;
    const auto a = nir.samples<uint16_t>();
    const auto b = red.samples<uint16_t>();
    const auto got = ndvi.samples<double>();
    const auto gotPacked = packed.samples<int16_t>();
    std::cout << "  sample checks:\n";
    for (const uint64_t i : {uint64_t(0), uint64_t(4097), kSamples / 3, kSamples / 2 + 17, kSamples - 1}) {
        const double expected = (double(a[i]) - double(b[i])) / (double(a[i]) + double(b[i]));
        const double v = std::round(expected * 10000);
        const auto expectedPacked = static_cast<int16_t>(std::clamp(v, -10000.0, 10000.0));
        const bool ok = got[i] == expected && gotPacked[i] == expectedPacked;
        mismatches += ok ? 0 : 1;
        std::cout << "    [" << std::setw(8) << i << "] a=" << std::setw(5) << a[i] << " b=" << std::setw(5)
                  << b[i] << "  ratio " << std::setprecision(6) << std::setw(9) << got[i] << "  I16 "
                  << std::setw(6) << gotPacked[i] << (ok ? "  ok" : "  MISMATCH") << '\n';
    }
    report("check the samples", millisecondsSince(start));
    std::cout << (mismatches == 0 ? "all checked samples match\n" : "some samples do not match\n");
    return mismatches == 0 ? 0 : 1;
}
