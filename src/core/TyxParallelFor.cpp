// Chunked parallel loops over an index range on oneTBB's threads.
#include "core/TyxParallelFor.h"

#include <atomic>
#include <limits>
#include <mutex>

namespace tyx::internal {

namespace {

constexpr uint64_t kNoFailure = std::numeric_limits<uint64_t>::max();

// What the chunks of one loop share.
struct Loop {
    TyxChunkBody body;
    void *context;
    // Start of the first failed chunk; chunks beyond it need not run.
    std::atomic<uint64_t> firstFailure{kNoFailure};
    std::exception_ptr failure;
    std::mutex failureLock;
    // The release before the loop and the acquire in each chunk, and the
    // release by each chunk and the acquire after the loop, order the
    // caller's and the chunks' writes in a way race detectors see as well.
    std::atomic<bool> started{false};
    std::atomic<uint64_t> finished{0};
};

void runChunk(void *shared, uint64_t begin, uint64_t end)
{
    Loop &loop = *static_cast<Loop *>(shared);
    (void)loop.started.load(std::memory_order_acquire);
    if (begin > loop.firstFailure.load(std::memory_order_relaxed))
        return;
    try {
        loop.body(loop.context, begin, end);
    } catch (...) {
        const std::lock_guard<std::mutex> hold(loop.failureLock);
        if (begin < loop.firstFailure.load(std::memory_order_relaxed)) {
            loop.firstFailure.store(begin, std::memory_order_relaxed);
            loop.failure = std::current_exception();
        }
    }
    loop.finished.fetch_add(1, std::memory_order_release);
}

} // namespace

std::exception_ptr parallelChunks(uint64_t count, uint64_t grain, TyxChunkBody body, void *context)
{
    if (count == 0)
        return {};
    Loop loop;
    loop.body = body;
    loop.context = context;
    loop.started.store(true, std::memory_order_release);
    runOnWorkers(count, grain == 0 ? 1 : grain, &runChunk, &loop);
    (void)loop.finished.load(std::memory_order_acquire);
    const std::lock_guard<std::mutex> hold(loop.failureLock);
    return loop.failure;
}

} // namespace tyx::internal
