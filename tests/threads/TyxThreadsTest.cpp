// Shared state under load from several threads at once: message posting,
// the type tables, the variant registry, the unit tables and the enumerators
// built on first use. Each test also runs in a process of its own, so it is
// the first user of what it touches; the ThreadSanitizer build
// (-DTYX_SANITIZE=thread) checks the accesses.
#include <gtest/gtest.h>

#include <tyx/TyxByteOrder.h>
#include <tyx/TyxColorModel.h>
#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxDataLayout.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxMathConst.h>
#include <tyx/TyxMetaType.h>
#include <tyx/TyxScalar.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxUnits.h>
#include <tyx/TyxVariant.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "TyxRecordingHandler.h"

namespace {

using namespace tyx;
using internal::integerToString;
using internal::parseInteger;

constexpr int kThreads = 8;

// Types from outside the library that join the variant at run time, one per
// thread, so that registrations meet in the registry.
template <int N>
struct ThreadProbe {
    int level = 0;
    bool operator==(const ThreadProbe &other) const { return level == other.level; }
};

} // namespace

template <int N>
struct tyx::internal::TyxVariantTraits<ThreadProbe<N>> : TyxRegisteredVariantTraits<ThreadProbe<N>> {
    static TyxString className() { return L"TyxThreadProbe" + integerToString(N); }
};

template <int N>
struct tyx::internal::TyxDefaultCasts<ThreadProbe<N>> {
    static bool toString(const ThreadProbe<N> &value, TyxString &text)
    {
        text = integerToString(value.level);
        return true;
    }
    static bool fromString(const TyxString &text, ThreadProbe<N> &value)
    {
        value.level = static_cast<int>(parseInteger(text, true).bits);
        return true;
    }
    static void getDefault(ThreadProbe<N> &value) { value = ThreadProbe<N>(); }
};

namespace {

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

TEST(TyxThreadsTest, EveryPostedMessageArrivesOnceAndErrorsKeepTheLast)
{
    test::HandlerScope scope;
    runTogether([](int i) {
        // Warnings only reach the handler; errors also replace the last error.
        for (int n = 0; n < 200; ++n) {
            const bool error = n % 2 != 0;
            postMessage(TyxTextMsg((error ? L"error " : L"warning ") + std::to_wstring(i),
                                   "TyxThreadsTest.cpp", n, error ? TyxTextMsg::Error : TyxTextMsg::Warning));
        }
    });
    EXPECT_EQ(scope.messages().size(), size_t(kThreads * 200));
    // Read after the posts, on this thread: one of the error texts, whole.
    EXPECT_EQ(lastError().text().rfind(L"error ", 0), 0u);
}

template <int... N>
void joinProbes(int i, std::integer_sequence<int, N...>)
{
    ((N == i ? (void)internal::TyxVariantRegistrar::join<ThreadProbe<N>>() : (void)0), ...);
}

template <int... N>
TyxString probeText(int i, std::integer_sequence<int, N...>)
{
    TyxString text;
    ((N == i ? (void)(text = TyxVariant(ThreadProbe<N>{N + 10}).value<TyxString>()) : (void)0), ...);
    return text;
}

TEST(TyxThreadsTest, TypesJoinTheRegistryTogether)
{
    using Probes = std::make_integer_sequence<int, kThreads>;
    std::vector<TyxString> texts(kThreads);
    std::vector<TyxString> names(kThreads);
    runTogether([&](int i) {
        joinProbes(i, Probes());
        texts[i] = probeText(i, Probes());
        // Conversions between core types read the same registry meanwhile.
        names[i] = TyxMetaType::fromString(L"TyxThreadProbe" + integerToString(i)).toString();
        (void)TyxVariant(TyxString(L"1.5")).value<TyxScalar>();
    });
    std::vector<int> codes;
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(texts[i], integerToString(i + 10));
        EXPECT_EQ(names[i], L"TyxThreadProbe" + integerToString(i));
        const TyxMetaType type = TyxMetaType::fromString(L"TyxThreadProbe" + integerToString(i));
        EXPECT_GE(type.toEnum(), TyxMetaType::FirstRegistered);
        codes.push_back(type.toEnum());
    }
    std::sort(codes.begin(), codes.end());
    EXPECT_EQ(std::unique(codes.begin(), codes.end()), codes.end());
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
    std::vector<const TyxEnum *> others(kThreads * 4);
    std::vector<double> values(kThreads);
    runTogether([&](int i) {
        dataTypes[i] = &TyxDataType::enumerator();
        constants[i] = &TyxMathConst::enumerator();
        others[i * 4] = &TyxDataLayout::enumerator();
        others[i * 4 + 1] = &TyxByteOrder::enumerator();
        others[i * 4 + 2] = &TyxColorModel::enumerator();
        others[i * 4 + 3] = &TyxMetaType::enumerator();
        values[i] = TyxMathConst(L"_DtoR").value().real();
    });
    for (int i = 1; i < kThreads; ++i) {
        for (int k = 0; k < 4; ++k)
            EXPECT_EQ(others[i * 4 + k], others[k]);
        EXPECT_EQ(values[i], values[0]);
    }
    for (int i = 1; i < kThreads; ++i) {
        EXPECT_EQ(dataTypes[i], dataTypes[0]);
        EXPECT_EQ(constants[i], constants[0]);
    }
    EXPECT_EQ(dataTypes[0]->fromString(L"u16"), TyxNumericType::U16);
}

} // namespace
