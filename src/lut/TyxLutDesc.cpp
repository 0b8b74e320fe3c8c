// Dense look-up table descriptor, its equality and the typed gather loops.
#include <tyx/TyxLutDesc.h>

#include <istream>
#include <limits>
#include <ostream>
#include <type_traits>

#include <tyx/TyxEqnTile.h>

#include "image/TyxSampleTypes.h"

namespace tyx {

namespace {

/// A sample as a signed 64-bit value; U64 values beyond its range saturate,
/// which keeps them above every index a table can hold.
template <class In>
inline int64_t sampleValue(In x)
{
    if constexpr (std::is_same_v<In, uint64_t>)
        return x > uint64_t(std::numeric_limits<int64_t>::max()) ? std::numeric_limits<int64_t>::max()
                                                                 : int64_t(x);
    else
        return int64_t(x);
}

/// The gather loop of one pair of sample types. With \p Clamp the input value
/// is first held within [lo, hi]; without it every value of \p In lies there.
template <class In, class Out, bool Clamp>
void gather(const In *src, uint64_t step, uint64_t n, const Out *table, int64_t lo, int64_t hi, Out *dst)
{
    const uint64_t base = uint64_t(lo);
    if (step == 1) {
        for (uint64_t i = 0; i < n; ++i) {
            int64_t v = sampleValue(src[i]);
            if constexpr (Clamp)
                v = v < lo ? lo : (v > hi ? hi : v);
            dst[i] = table[uint64_t(v) - base];
        }
        return;
    }
    for (uint64_t i = 0; i < n; ++i) {
        int64_t v = sampleValue(src[i * step]);
        if constexpr (Clamp)
            v = v < lo ? lo : (v > hi ? hi : v);
        dst[i] = table[uint64_t(v) - base];
    }
}

/// The gather loop of one band row of an image tile: steps on both sides,
/// and the input held within [lo, hi].
template <class In, class Out>
void gatherStrided(const In *src, uint64_t srcStep, uint64_t n, const Out *table, int64_t lo, int64_t hi,
                   Out *dst, uint64_t dstStep)
{
    const uint64_t base = uint64_t(lo);
    for (uint64_t i = 0; i < n; ++i) {
        int64_t v = sampleValue(src[i * srcStep]);
        v = v < lo ? lo : (v > hi ? hi : v);
        dst[i * dstStep] = table[uint64_t(v) - base];
    }
}

/// Whether the samples of a tile lie inside its buffer.
bool tileFits(const TyxEqnTile &tile)
{
    const TyxBufferConstPtr buffer = tile.buffer();
    const unsigned size = tile.dataType().size();
    if (!buffer || !buffer->data() || size == 0 || tile.size() == 0)
        return false;
    const uint64_t capacity = buffer->size() / size;
    if (capacity == 0)
        return false;
    return tile.step() == 0 || (tile.size() - 1) <= (capacity - 1) / tile.step();
}

} // namespace

TyxLutDesc::TyxLutDesc(TyxBufferPtr buffer, TyxDataType type, unsigned numEntriesPerBand, int64_t minIndex,
                       unsigned numBands, bool reuseLutDataForAllBands)
    : m_reuseLutDataForAllBands(reuseLutDataForAllBands), m_numEntriesPerBand(numEntriesPerBand),
      m_numBands(numBands), m_minIndex(minIndex), m_buffer(std::move(buffer)), m_dataType(type)
{
}

TyxLutDesc::TyxLutDesc(const TyxLutDesc &other)
    : TyxRefCounted(), m_reuseLutDataForAllBands(other.m_reuseLutDataForAllBands),
      m_numEntriesPerBand(other.m_numEntriesPerBand), m_numBands(other.m_numBands),
      m_minIndex(other.m_minIndex), m_buffer(other.m_buffer), m_dataType(other.m_dataType)
{
}

TyxLutDesc &TyxLutDesc::operator=(const TyxLutDesc &other)
{
    m_reuseLutDataForAllBands = other.m_reuseLutDataForAllBands;
    m_numEntriesPerBand = other.m_numEntriesPerBand;
    m_numBands = other.m_numBands;
    m_minIndex = other.m_minIndex;
    m_buffer = other.m_buffer;
    m_dataType = other.m_dataType;
    return *this;
}

TyxLutDesc::~TyxLutDesc() = default;

TyxLutDescPtr TyxLutDesc::clone() const
{
    TyxLutDescPtr copy(new TyxLutDesc(*this));
    if (m_buffer)
        copy->m_buffer = m_buffer->clone();
    return copy;
}

void TyxLutDesc::indexRange(int64_t &min, int64_t &max) const
{
    min = m_minIndex;
    // Unsigned arithmetic: a minimum near the top of the range wraps instead
    // of overflowing.
    max = int64_t(uint64_t(m_minIndex) + m_numEntriesPerBand - 1);
}

bool TyxLutDesc::operator==(const TyxLutDesc &other) const
{
    if (m_dataType != other.m_dataType || m_numEntriesPerBand != other.m_numEntriesPerBand ||
        m_minIndex != other.m_minIndex || m_numBands != other.m_numBands ||
        m_reuseLutDataForAllBands != other.m_reuseLutDataForAllBands)
        return false;
    if (!m_buffer || !other.m_buffer)
        return !m_buffer && !other.m_buffer;
    return *m_buffer == *other.m_buffer;
}

TyxEqnTile TyxLutDesc::apply(const TyxEqnTile &samples, unsigned band) const
{
    const unsigned useBand = m_reuseLutDataForAllBands ? 0 : band;
    const unsigned entrySize = m_dataType.size();
    if (!m_buffer || !m_buffer->data() || m_numEntriesPerBand == 0 || useBand >= m_numBands ||
        entrySize == 0 || !samples.dataType().isInteger() || !tileFits(samples))
        return TyxEqnTile();
    // The band's entries must lie inside the buffer. A band is at most 2^36
    // bytes; the band count is compared by division so nothing can wrap.
    const uint64_t bandBytes = uint64_t(m_numEntriesPerBand) * entrySize;
    if (uint64_t(useBand) + 1 > m_buffer->size() / bandBytes)
        return TyxEqnTile();

    const int64_t lo = m_minIndex;
    const int64_t span = int64_t(m_numEntriesPerBand) - 1;
    const int64_t hi =
        lo > std::numeric_limits<int64_t>::max() - span ? std::numeric_limits<int64_t>::max() : lo + span;
    const uint64_t n = samples.size();
    const uint64_t step = samples.step();
    const char *tableBytes =
        static_cast<const char *>(m_buffer->data()) + uint64_t(useBand) * m_numEntriesPerBand * entrySize;

    return internal::visitSampleCode<internal::SampleSet::Integer>(
        samples.dataType().code(), TyxEqnTile(), [&](auto inTag) {
            using In = typename decltype(inTag)::type;
            const In *src = static_cast<const In *>(samples.buffer()->data());
            const bool covers = lo <= sampleValue(std::numeric_limits<In>::min()) &&
                                hi >= sampleValue(std::numeric_limits<In>::max());
            return internal::visitSampleCode<internal::SampleSet::Real>(
                m_dataType.code(), TyxEqnTile(), [&](auto outTag) {
                    using Out = typename decltype(outTag)::type;
                    TyxEqnTile result(m_dataType, n);
                    if (!result.buffer() || !result.buffer()->data())
                        return TyxEqnTile();
                    Out *dst = static_cast<Out *>(result.buffer()->data());
                    const Out *table = reinterpret_cast<const Out *>(tableBytes);
                    if (covers)
                        gather<In, Out, false>(src, step, n, table, lo, hi, dst);
                    else
                        gather<In, Out, true>(src, step, n, table, lo, hi, dst);
                    return result;
                });
        });
}

TyxImageTilePtr TyxLutDesc::apply(const TyxImageTile &tile) const
{
    const unsigned entrySize = m_dataType.size();
    const unsigned lastBand = m_reuseLutDataForAllBands ? 0 : tile.numBands() - 1;
    if (!m_buffer || !m_buffer->data() || m_numEntriesPerBand == 0 || entrySize == 0 ||
        tile.numBands() == 0 || lastBand >= m_numBands || !tile.dataType().isInteger())
        return nullptr;
    // A shared buffer smaller than the description is never read.
    const TyxBufferConstPtr input = tile.buffer();
    if (!input || !input->data() || input->size() < tile.numBytes())
        return nullptr;
    const uint64_t bandBytes = uint64_t(m_numEntriesPerBand) * entrySize;
    if (uint64_t(lastBand) + 1 > m_buffer->size() / bandBytes)
        return nullptr;

    TyxImageTilePtr result(
        new TyxImageTile(TyxImageTileDesc(tile.tileDesc().roi(), tile.layout(), m_dataType)));
    if (result->allocate() != 0)
        return nullptr;
    const int64_t lo = m_minIndex;
    const int64_t span = int64_t(m_numEntriesPerBand) - 1;
    const int64_t hi =
        lo > std::numeric_limits<int64_t>::max() - span ? std::numeric_limits<int64_t>::max() : lo + span;
    const bool served = internal::visitSampleCode<internal::SampleSet::Integer>(
        tile.dataType().code(), false, [&](auto inTag) {
            using In = typename decltype(inTag)::type;
            return internal::visitSampleCode<internal::SampleSet::Real>(
                m_dataType.code(), false, [&](auto outTag) {
                    using Out = typename decltype(outTag)::type;
                    for (unsigned band = 0; band < tile.numBands(); ++band) {
                        const unsigned useBand = m_reuseLutDataForAllBands ? 0 : band;
                        const Out *table = reinterpret_cast<const Out *>(
                            static_cast<const char *>(m_buffer->data()) + uint64_t(useBand) * bandBytes);
                        for (unsigned y = 0; y < tile.height(); ++y)
                            gatherStrided(tile.ptrAt<In>(0, y, band), tile.pixelStrideSamples(), tile.width(),
                                          table, lo, hi, result->ptrAt<Out>(0, y, band),
                                          result->pixelStrideSamples());
                    }
                    return true;
                });
        });
    return served ? result : nullptr;
}

std::wostream &operator<<(std::wostream &os, const TyxLutDesc &)
{
    os.setstate(std::ios_base::failbit);
    return os;
}

std::ostream &operator<<(std::ostream &os, const TyxLutDesc &)
{
    os.setstate(std::ios_base::failbit);
    return os;
}

std::wistream &operator>>(std::wistream &is, TyxLutDesc &)
{
    is.setstate(std::ios_base::failbit);
    return is;
}

std::istream &operator>>(std::istream &is, TyxLutDesc &)
{
    is.setstate(std::ios_base::failbit);
    return is;
}

} // namespace tyx
