// The bands the band-math benchmarks compute on: 4096 x 4096 U16 samples.
#pragma once

#include <cstdint>
#include <span>

#include <tyx/TyxDataType.h>
#include <tyx/TyxEqnTile.h>

namespace tyx::bench {

constexpr uint64_t kSamples = 4096 * 4096;

/// A band of values 1 to 60000 in a pattern that \p shift moves.
inline TyxEqnTile band(unsigned shift)
{
    TyxEqnTile tile(TyxDataType(TyxNumericType::U16), kSamples);
    const std::span<uint16_t> p = tile.samples<uint16_t>();
    for (uint64_t i = 0; i < kSamples; ++i)
        p[i] = static_cast<uint16_t>(1 + (i * 7 + shift * 1013) % 60000);
    return tile;
}

} // namespace tyx::bench
