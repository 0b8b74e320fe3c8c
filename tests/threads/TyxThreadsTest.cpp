// Shared state under load from several threads at once: message posting,
// the type tables, the unit tables and the enumerators built on first use.
// The program runs alone, so each test is the first user of what it touches;
// the ThreadSanitizer build (-DTYX_SANITIZE=thread) checks the accesses.
#include <gtest/gtest.h>

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxMathConst.h>
#include <tyx/TyxMetaType.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxUnits.h>
#include <tyx/TyxVariant.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using namespace tyx;

constexpr int kThreads = 8;

// Runs \p work(index) on kThreads threads released together.
void runTogether(const std::function<void(int)> &work)
{
    std::atomic<int> waiting{kThreads};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            --waiting;
            while (waiting.load() > 0) {
            }
            work(i);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

class CountingHandler : public TyxTextHandler {
public:
    void handleMessage(const TyxTextMsg &message) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        texts.push_back(message.text());
    }
    std::vector<TyxString> texts;

private:
    std::mutex m_mutex;
};

TEST(TyxThreadsTest, EveryPostedMessageArrivesOnce)
{
    TyxSmartPtr<CountingHandler> handler(new CountingHandler);
    TyxCoreLibMgr::instance().setTextHandler(handler);
    runTogether([](int i) {
        for (int n = 0; n < 200; ++n)
            postMessage(
                TyxTextMsg(L"thread " + std::to_wstring(i), "TyxThreadsTest.cpp", n, TyxTextMsg::Warning));
    });
    TyxCoreLibMgr::instance().setTextHandler(nullptr);
    EXPECT_EQ(handler->texts.size(), size_t(kThreads * 200));
}

TEST(TyxThreadsTest, TypeTableAnswersAlikeAtFirstUse)
{
    std::vector<TyxStrList> keys(kThreads);
    std::vector<int> codes(kThreads);
    runTogether([&](int i) {
        keys[i] = TyxMetaType::allKeys();
        codes[i] = TyxMetaType::fromString(L"ComplexDouble").toEnum();
    });
    for (int i = 1; i < kThreads; ++i) {
        EXPECT_EQ(keys[i], keys[0]);
        EXPECT_EQ(codes[i], codes[0]);
    }
    EXPECT_EQ(codes[0], TyxMetaType::ComplexDouble);
}

TEST(TyxThreadsTest, VariantConversionsShareTheRegistry)
{
    std::vector<double> values(kThreads);
    std::vector<TyxString> texts(kThreads);
    runTogether([&](int i) {
        values[i] = TyxVariant(TyxString(L"2.5")).value<double>();
        texts[i] = TyxVariant(TyxDataType(TyxNumericType::U16)).value<TyxString>();
    });
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(values[i], 2.5);
        EXPECT_EQ(texts[i], L"(U16,16)");
    }
}

TEST(TyxThreadsTest, UnitTablesAreBuiltOnceForAll)
{
    std::vector<double> scales(kThreads);
    std::vector<TyxString> texts(kThreads);
    runTogether([&](int i) {
        TyxUnits units;
        scales[i] = units.fromString(L"km / hr");
        texts[i] = units.toString();
    });
    for (int i = 1; i < kThreads; ++i) {
        EXPECT_EQ(scales[i], scales[0]);
        EXPECT_EQ(texts[i], texts[0]);
    }
    EXPECT_EQ(texts[0], TyxUnits(L"km / hr").toString());
}

TEST(TyxThreadsTest, EnumeratorsAreBuiltOnceForAll)
{
    std::vector<const TyxEnum *> dataTypes(kThreads), constants(kThreads);
    runTogether([&](int i) {
        dataTypes[i] = &TyxDataType::enumerator();
        constants[i] = &TyxMathConst::enumerator();
    });
    for (int i = 1; i < kThreads; ++i) {
        EXPECT_EQ(dataTypes[i], dataTypes[0]);
        EXPECT_EQ(constants[i], constants[0]);
    }
    EXPECT_EQ(dataTypes[0]->fromString(L"u16"), TyxNumericType::U16);
}

} // namespace
