// System services: switches, byte swapping, time stamps, the loop base,
// the semaphore and geodesy.
#include <gtest/gtest.h>

#include <tyx/TyxForLoopBase.h>
#include <tyx/TyxSemaphore.h>
#include <tyx/TyxSystem.h>
#include <tyx/TyxTextHandler.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include "TyxRecordingHandler.h"

namespace {

using namespace tyx;

TEST(TyxSystemTest, SwapBytesReversesEachElement)
{
    uint16_t halves[] = {0x0102, 0xA0B0};
    swapBytes(halves, 2, 2, false);
    EXPECT_EQ(std::vector<uint16_t>(halves, halves + 2), (std::vector<uint16_t>{0x0201, 0xB0A0}));

    std::vector<uint32_t> words(70000, 0x11223344u);
    swapBytes(words.data(), words.size(), 4, true);
    EXPECT_EQ(words.front(), 0x44332211u);
    EXPECT_EQ(words.back(), 0x44332211u);

    unsigned char odd[] = {1, 2, 3, 4, 5, 6};
    swapBytes(odd, 2, 3, false);
    EXPECT_EQ(std::vector<unsigned char>(odd, odd + 6), (std::vector<unsigned char>{3, 2, 1, 6, 5, 4}));
}

TEST(TyxSystemTest, TimeStampsInLocalTime)
{
    setenv("TZ", "UTC", 1);
    tzset();
    EXPECT_EQ(timeStampFromStr(L"2020010203040"), 0); // 13 characters
    // 2020-01-02 03:04:05 UTC is 1577934245 s after the epoch (date -u -d @1577934245).
    EXPECT_EQ(timeStampFromStr(L"20200102030405"), INT64_C(1577934245000));
    EXPECT_EQ(timeStampFromStr(L"20200102030405.250"), INT64_C(1577934245250));
    EXPECT_EQ(timeStampFromStr(L"20200102030405x25"), INT64_C(1577934245000)); // 17 characters
    setenv("TZ", "CET-1", 1);
    tzset();
    EXPECT_EQ(timeStampFromStr(L"20200102030405"), INT64_C(1577934245000) - 3600 * 1000);
    unsetenv("TZ");
    tzset();
}

// The program's own paths: see ProgramPathsFromManyThreadsAtFirstUse.
TEST(TyxSystemTest, LibraryPath)
{
    EXPECT_NE(dsoPath(reinterpret_cast<const void *>(&exeFilePath)).find(L"libtyx.so"), TyxString::npos);
    EXPECT_EQ(dsoPath(nullptr), L"");
}

// Run alone in a fresh process as well (see CMakeLists.txt), so that these
// threads are the first to ask and race for the lazily built paths.
TEST(TyxSystemTest, ProgramPathsFromManyThreadsAtFirstUse)
{
    constexpr int threadCount = 8;
    std::vector<TyxString> folders(threadCount), files(threadCount);
    std::atomic<int> waiting{threadCount};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, i] {
            --waiting;
            while (waiting.load() > 0) {
            }
            folders[i] = exePath();
            files[i] = exeFilePath();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (int i = 0; i < threadCount; ++i) {
        EXPECT_EQ(folders[i] + L"/tyx_core_tests", files[i]);
    }
}

TEST(TyxSystemTest, GeodesyAgainstIndependentValues)
{
    EXPECT_DOUBLE_EQ(greatCircleHeading(0, 0, 10, 0), 90);
    // A quarter of the circumference from the equator to the pole.
    EXPECT_NEAR(greatCircleDistance(10, 0, 10, 90), 6367444.6571 * 3.14159265358979 / 2, 1e-3);

    EXPECT_DOUBLE_EQ(directHeading(5, 5, 5, 4), 180);

    // At the equator the series give 111132.92 - 559.82 + 1.175 - 0.0023 and
    // 111412.84 - 93.5 + 0.118 metres per degree.
    double latMeters = 0;
    double lonMeters = 0;
    metersPerDegree(0, latMeters, lonMeters);
    EXPECT_NEAR(latMeters, 110574.2727, 1e-4);
    EXPECT_NEAR(lonMeters, 111319.458, 1e-4);
    EXPECT_NEAR(directDistance(0, 0, 1, 0), 111319.458, 1e-3);

    // On the equator the mid longitude, on a meridian the mid latitude is the mean.
    EXPECT_NEAR(longitudeMidPoint(0, 0, 20, 0), 10, 1e-12);
    EXPECT_NEAR(latitudeMidPoint(7, 10, 7, 30), 20, 1e-12);
}

TEST(TyxForLoopBaseTest, RunsTheRangeAndReportsCompletion)
{
    std::vector<int64_t> seen;
    TyxLoopRange range{.end = 11, .begin = 2, .step = 3};
    EXPECT_FALSE(TyxForLoopBase::run(range, false, false, [&](int64_t i) { seen.push_back(i); }));
    EXPECT_EQ(seen, (std::vector<int64_t>{2, 5, 8}));
    // In parallel each index runs once, on whatever thread.
    std::vector<std::atomic<int>> hits(11);
    EXPECT_FALSE(TyxForLoopBase::run(range, true, false, [&](int64_t i) { ++hits[size_t(i)]; }));
    for (size_t i = 0; i < hits.size(); ++i)
        EXPECT_EQ(hits[i].load(), i == 2 || i == 5 || i == 8 ? 1 : 0);

    seen.clear();
    range = {.end = 0, .begin = 5, .step = -2};
    TyxForLoopBase::run(range, false, false, [&](int64_t i) { seen.push_back(i); });
    EXPECT_EQ(seen, (std::vector<int64_t>{5, 3, 1}));

    range.step = 0;
    EXPECT_FALSE(TyxForLoopBase::run(range, false, false, [&](int64_t) { FAIL(); }));
}

TEST(TyxForLoopBaseTest, PostsWhatTheBodyThrows)
{
    auto scope = std::make_unique<tyx::test::HandlerScope>();
    const TyxLoopRange range{.end = 10};
    int calls = 0;
    EXPECT_TRUE(TyxForLoopBase::run(range, false, false, [&](int64_t i) {
        ++calls;
        if (i == 3)
            throw TyxTextMsg(L"stop here", L"Body.cpp", 99, TyxTextMsg::Warning);
    }));
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(scope->messages().back().text(), L"stop here");
    EXPECT_EQ(scope->messages().back().type(), TyxTextMsg::Error);
    EXPECT_EQ(scope->messages().back().srcFname(), L"TyxForLoopBase.cpp");

    EXPECT_TRUE(TyxForLoopBase::run(range, false, false, [](int64_t) { throw 5; }));
    EXPECT_EQ(scope->messages().back().text(), L"Caught an unknown exception.");
    scope.reset();

    EXPECT_THROW(TyxForLoopBase::run(range, false, false, [](int64_t) { throw std::runtime_error("x"); }),
                 TyxTextMsg);
}

TEST(TyxSemaphoreTest, HandsCountsAcrossThreads)
{
    TyxSemaphore semaphore(0);
    ASSERT_TRUE(semaphore.isValid());
    EXPECT_FALSE(semaphore.tryAcquire());
    int produced = 0;
    std::thread producer([&] {
        produced = 42;
        semaphore.release(2);
    });
    EXPECT_TRUE(semaphore.acquire());
    EXPECT_EQ(produced, 42);
    producer.join();
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_FALSE(semaphore.tryAcquire());

    // Without a handle nothing happens.
    TyxSemaphore invalid(0x80000000u); // above the maximum count
    EXPECT_FALSE(invalid.isValid());
    EXPECT_EQ(invalid.systemErrorCode(), -1);
    invalid.release(1);
    EXPECT_FALSE(invalid.acquire());
    EXPECT_FALSE(invalid.tryAcquire());
}

} // namespace
