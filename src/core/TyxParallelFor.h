// Chunked parallel loops over an index range on oneTBB's threads.
#pragma once

#include <cstdint>
#include <exception>

namespace tyx::internal {

/// The work of one chunk: the indices from \p begin to \p end (excluded).
using TyxChunkBody = void (*)(void *context, uint64_t begin, uint64_t end);

/// Runs \p body over [0, count) in chunks of at least \p grain indices on
/// oneTBB's worker threads and the calling thread, and returns when all are
/// done. An exception of a chunk is caught in its worker. Chunks that start
/// after a failed one are skipped, so the failure of the chunk that starts
/// first is the one a loop in order would meet; its exception is returned,
/// null when every chunk completed. Everything a chunk wrote is visible to
/// the caller afterwards.
std::exception_ptr parallelChunks(uint64_t count, uint64_t grain, TyxChunkBody body, void *context);

/// parallelChunks with a callable f(begin, end).
template <class F>
std::exception_ptr parallelChunks(uint64_t count, uint64_t grain, F &f)
{
    return parallelChunks(
        count, grain,
        [](void *context, uint64_t begin, uint64_t end) { (*static_cast<F *>(context))(begin, end); }, &f);
}

/// Runs \p chunk over [0, count) in pieces of at least \p grain indices on
/// oneTBB's worker threads and the calling thread; returns when all are
/// done. No exception may leave \p chunk.
void runOnWorkers(uint64_t count, uint64_t grain, TyxChunkBody chunk, void *context);

/// The number of threads a parallel loop may run on at most: the slots of
/// workerSlot().
unsigned workerSlots();

/// The slot of the calling thread inside a parallel loop, below
/// workerSlots(); 0 on the calling thread of the loop and outside loops.
unsigned workerSlot();

} // namespace tyx::internal
