// Image tiles: sample conversion between data types, one loop per pair of
// sample types (144 pairs), dispatched once per call.
#include <tyx/TyxImageTile.h>

#include <tyx/TyxForLoopBase.h>

#include "image/TyxTileLoops.h"

namespace tyx::internal {

namespace {

// Samples per piece of the loop: large enough for the element loop to run at
// full speed, small enough for the pieces to spread over workers.
constexpr uint64_t kPiece = 16384;

} // namespace

bool convertTileSamples(int fromCode, int toCode, void *dst, const void *src, uint32_t n, bool parallel,
                        bool timing)
{
    return visitSampleCode(fromCode, false, [&](auto fromTag) {
        using From = typename decltype(fromTag)::type;
        return visitSampleCode(toCode, false, [&](auto toTag) {
            using To = typename decltype(toTag)::type;
            To *d = static_cast<To *>(dst);
            const From *s = static_cast<const From *>(src);
            const uint64_t pieces = (uint64_t(n) + kPiece - 1) / kPiece;
            TyxForLoopBase::run(TyxLoopRange{static_cast<unsigned int>(pieces), 0, 1}, parallel, timing,
                                [d, s, n](int64_t piece) {
                                    const uint64_t begin = uint64_t(piece) * kPiece;
                                    convertSamples<From, To>(d, s, begin,
                                                             std::min<uint64_t>(n, begin + kPiece));
                                });
            return true;
        });
    });
}

} // namespace tyx::internal
