// The calls into oneTBB behind the parallel loops. The ThreadSanitizer build
// compiles this file without instrumentation, like the oneTBB library itself:
// the tool cannot see oneTBB's own hand-offs, so the loops make theirs
// visible in TyxParallelFor.cpp instead.
#include "core/TyxParallelFor.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

namespace tyx::internal {

void runOnWorkers(uint64_t count, uint64_t grain, TyxChunkBody chunk, void *context)
{
    tbb::parallel_for(
        tbb::blocked_range<uint64_t>(0, count, grain),
        [chunk, context](const tbb::blocked_range<uint64_t> &r) { chunk(context, r.begin(), r.end()); });
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
