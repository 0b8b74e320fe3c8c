// Deterministic uniform random deviates: the minimal-standard generator with a shuffle table.
#pragma once

#include <cstdint>

#include <tyx/TyxGlobal.h>

namespace tyx {

/// A uniform generator on (0, 1): Park and Miller's minimal-standard linear
/// congruential generator (multiplier 16807, modulus 2^31 - 1, by Schrage's
/// factorisation in double arithmetic) behind a Bays-Durham shuffle of 32
/// entries. Every step is exact integer arithmetic, so one seed gives the
/// same stream, bit for bit, on every platform. An object belongs to one
/// thread.
class TYX_EXPORT TyxRandomNumber {
public:
    /// Seeded with -1, the same stream as seeds 0, 1 and -1.
    TyxRandomNumber();
    /// Seeded by initialize(\p seed).
    explicit TyxRandomNumber(int seed);

    /// Restarts the stream. The state keeps the seed as a negative number:
    /// \p seed itself when negative, -\p seed when positive, -1 for 0, so
    /// that \p seed and -\p seed give the same stream. The shuffle table is
    /// refilled on the next draw.
    void initialize(int seed);
    /// The running state; negative until the first draw after seeding.
    int seed() const { return m_seed; }
    /// The next deviate, in the open interval (0, 1) and not above
    /// 0.99999988.
    double ran1();

protected:
    static constexpr int kTableSize = 32;

private:
    /// One step of the generator: seed * 16807 mod (2^31 - 1).
    void step();

    int32_t m_seed = -1;
    int32_t m_iy = 0;
    int32_t m_iv[kTableSize] = {};
};

} // namespace tyx
