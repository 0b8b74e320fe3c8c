// Loop over an index range that turns an exception of its body into a
// posted message.
#pragma once

#include <cstdint>
#include <exception>

#include <tyx/TyxTextMsg.h>

namespace tyx {

/// Range of a loop: from begin towards end (excluded) by step.
struct TyxLoopRange {
    unsigned int end = 0;
    unsigned int begin = 0;
    int64_t step = 1;
};

/// Runs a loop body over a range. An exception from the body ends the loop
/// and is posted as an Error after it. The library starts no threads: the
/// parallel flag is carried for the callers' thresholds, and the body always
/// runs in order on the calling thread.
class TYX_EXPORT TyxForLoopBase {
public:
    /// Calls \p body with each index of \p range. Returns true when the body
    /// threw and the failure was posted, false when the loop completed. A step
    /// of 0 runs nothing.
    template <class Body>
    static bool run(const TyxLoopRange &range, bool parallel, bool timing, Body &&body)
    {
        (void)parallel;
        (void)timing;
        TyxTextMsg failure;
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
    static void caught(TyxTextMsg &failure, const char *what);
    static void caughtUnknown(TyxTextMsg &failure);
    static bool postFailure(const TyxTextMsg &failure);
};

} // namespace tyx
