// The minimal-standard uniform generator with its shuffle table.
#include <tyx/TyxRandomNumber.h>

#include <algorithm>

namespace tyx {

namespace {

constexpr double kMultiplier = 16807.0;
constexpr double kQuotient = 127773.0;           // modulus / multiplier
constexpr double kRemainder = 2836.0;            // modulus % multiplier
constexpr double kDivisor = 67108864.9375;       // 1 + (modulus - 1) / table size
constexpr double kScale = 4.656612875245797e-10; // 1 / modulus
constexpr double kHighest = 0.99999988;
constexpr int kWarmUp = 8;

} // namespace

TyxRandomNumber::TyxRandomNumber() = default;

TyxRandomNumber::TyxRandomNumber(int seed) { initialize(seed); }

void TyxRandomNumber::initialize(int seed)
{
    m_seed = seed < 0 ? seed : (seed > 0 ? -seed : -1);
    m_iy = 0;
}

void TyxRandomNumber::step()
{
    // Every intermediate is an integer below 2^53, so the doubles are exact.
    const double k = static_cast<double>(static_cast<int32_t>(m_seed / kQuotient));
    int32_t next = static_cast<int32_t>((m_seed - k * kQuotient) * kMultiplier - k * kRemainder);
    if (next < 0)
        next += 2147483647;
    m_seed = next;
}

double TyxRandomNumber::ran1()
{
    if (m_seed <= 0 || m_iy == 0) {
        // The negation is taken in 64 bits and reduced modulo 2^31 - 1: the
        // seeds -2^31 and +-(2^31 - 1) would otherwise overflow or reach the
        // state 0, which the generator never leaves and which would make
        // every later deviate 0. They give the stream of seed 1.
        const int64_t negated = -static_cast<int64_t>(m_seed) % 2147483647;
        m_seed = static_cast<int32_t>(std::max<int64_t>(negated, 1));
        for (int j = kTableSize + kWarmUp - 1; j >= 0; --j) {
            step();
            if (j < kTableSize)
                m_iv[j] = m_seed;
        }
        m_iy = m_iv[0];
    }
    step();
    const int j = static_cast<int>(m_iy / kDivisor);
    m_iy = m_iv[j];
    m_iv[j] = m_seed;
    return std::min(m_iy * kScale, kHighest);
}

} // namespace tyx
