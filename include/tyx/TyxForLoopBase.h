// Loop over an index range that turns an exception of its body into a
// posted message.
#pragma once

#include <cstdint>
#include <exception>
#include <type_traits>

#include <tyx/TyxSystem.h>
#include <tyx/TyxTextMsg.h>

namespace tyx {

/// Range of a loop: from begin towards end (excluded) by step.
struct TyxLoopRange {
    unsigned int end = 0;
    unsigned int begin = 0;
    int64_t step = 1;
};

/// Runs a loop body over a range. An exception from the body ends the loop
/// and is posted as an Error after it.
///
/// Without the parallel flag the body runs in order on the calling thread
/// and no thread is started. With it, the range is divided into sub-ranges
/// that run on oneTBB's worker threads and the calling thread; the indices
/// of one sub-range run in order. A worker's exception is caught there, the
/// sub-ranges after it are skipped, and the one failure a loop in order
/// would have met first is posted once, after the whole range.
class TYX_EXPORT TyxForLoopBase {
public:
    /// Calls \p body with each index of \p range. Returns true when the body
    /// threw and the failure was posted, false when the loop completed. A step
    /// of 0 runs nothing. With \p parallel the body is called from several
    /// threads at once, so its indices must touch disjoint data.
    template <class Body>
    static bool run(const TyxLoopRange &range, bool parallel, bool timing, Body &&body)
    {
        (void)timing;
        TyxTextMsg failure;
        // The process-wide switch holds every loop on the calling thread.
        if (parallel && useParallelLoops()) {
            using B = std::remove_reference_t<Body>;
            runParallel(
                range,
                [](void *context, int64_t first, uint64_t count, int64_t step) {
                    B &b = *static_cast<B *>(context);
                    for (uint64_t k = 0; k < count; ++k)
                        b(first + static_cast<int64_t>(k) * step);
                },
                const_cast<void *>(static_cast<const void *>(&body)), failure);
            return postFailure(failure);
        }
        try {
            if (range.step > 0) {
                for (int64_t i = range.begin; i < static_cast<int64_t>(range.end); i += range.step)
                    body(i);
            } else if (range.step < 0) {
                for (int64_t i = range.begin; i > static_cast<int64_t>(range.end); i += range.step)
                    body(i);
            }
        } catch (const std::exception &error) {
            caught(failure, error.what());
        } catch (...) {
            caughtUnknown(failure);
        }
        return postFailure(failure);
    }

private:
    // Calls piece(context, first, count, step) on sub-ranges of the range
    // over oneTBB and fills \p failure with the first failure in index order.
    static void runParallel(const TyxLoopRange &range,
                            void (*piece)(void *context, int64_t first, uint64_t count, int64_t step),
                            void *context, TyxTextMsg &failure);
    static void caught(TyxTextMsg &failure, const char *what);
    static void caughtUnknown(TyxTextMsg &failure);
    static bool postFailure(const TyxTextMsg &failure);
};

} // namespace tyx
