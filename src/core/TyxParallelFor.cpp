// Chunked parallel loops over an index range on oneTBB's threads.
#include "core/TyxParallelFor.h"

#include <atomic>
#include <limits>
#include <mutex>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

namespace tyx::internal {

std::exception_ptr parallelChunks(uint64_t count, uint64_t grain, TyxChunkBody body, void *context)
{
    if (count == 0)
        return {};
    constexpr uint64_t none = std::numeric_limits<uint64_t>::max();
    // Start of the first failed chunk; chunks beyond it need not run.
    std::atomic<uint64_t> firstFailure{none};
    std::exception_ptr failure;
    std::mutex failureLock;
    // The release by each chunk and the acquire below order the chunks'
    // writes before the caller's reads in a way that race detectors see as
    // well; oneTBB's own synchronisation is in an uninstrumented library.
    std::atomic<uint64_t> published{0};
    std::atomic<bool> started{false};
    started.store(true, std::memory_order_release);
    tbb::parallel_for(tbb::blocked_range<uint64_t>(0, count, grain == 0 ? 1 : grain),
                      [&](const tbb::blocked_range<uint64_t> &chunk) {
                          (void)started.load(std::memory_order_acquire);
                          if (chunk.begin() > firstFailure.load(std::memory_order_relaxed))
                              return;
                          try {
                              body(context, chunk.begin(), chunk.end());
                          } catch (...) {
                              const std::lock_guard<std::mutex> hold(failureLock);
                              if (chunk.begin() < firstFailure.load(std::memory_order_relaxed)) {
                                  firstFailure.store(chunk.begin(), std::memory_order_relaxed);
                                  failure = std::current_exception();
                              }
                          }
                          published.fetch_add(1, std::memory_order_release);
                      });
    (void)published.load(std::memory_order_acquire);
    const std::lock_guard<std::mutex> hold(failureLock);
    return failure;
}

unsigned workerSlots()
{
    const int slots = tbb::this_task_arena::max_concurrency();
    return slots > 0 ? unsigned(slots) : 1u;
}

unsigned workerSlot()
{
    const int slot = tbb::this_task_arena::current_thread_index();
    return slot >= 0 ? unsigned(slot) : 0u;
}

} // namespace tyx::internal
