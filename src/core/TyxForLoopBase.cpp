// Failure handling and the parallel form of the for-loop base.
#include <tyx/TyxForLoopBase.h>

#include "core/TyxParallelFor.h"

namespace tyx {

namespace {

// The number of indices of a range, each index begin + k * step.
uint64_t iterations(const TyxLoopRange &range)
{
    const int64_t begin = range.begin;
    const int64_t end = range.end;
    if (range.step > 0 && end > begin)
        return uint64_t((end - begin - 1) / range.step) + 1;
    if (range.step < 0 && end < begin)
        return uint64_t((begin - end - 1) / -range.step) + 1;
    return 0;
}

} // namespace

void TyxForLoopBase::runParallel(const TyxLoopRange &range,
                                 void (*piece)(void *context, int64_t first, uint64_t count, int64_t step),
                                 void *context, TyxTextMsg &failure)
{
    const int64_t begin = range.begin;
    const int64_t step = range.step;
    auto chunk = [&](uint64_t first, uint64_t last) {
        piece(context, begin + static_cast<int64_t>(first) * step, last - first, step);
    };
    // Each index is a row or a piece of thousands of samples already, so
    // sub-ranges of one index keep all workers busy to the end.
    const std::exception_ptr error = internal::parallelChunks(iterations(range), 1, chunk);
    if (!error)
        return;
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &e) {
        caught(failure, e.what());
    } catch (...) {
        caughtUnknown(failure);
    }
}

void TyxForLoopBase::caught(TyxTextMsg &failure, const char *what)
{
    failure.setText(TyxString(what), __FILE__, __LINE__, TyxTextMsg::Error);
}

void TyxForLoopBase::caughtUnknown(TyxTextMsg &failure)
{
    failure.setText(L"Caught an unknown exception.", __FILE__, __LINE__, TyxTextMsg::Error);
}

bool TyxForLoopBase::postFailure(const TyxTextMsg &failure)
{
    if (failure.empty())
        return false;
    postMessage(failure);
    return true;
}

} // namespace tyx
