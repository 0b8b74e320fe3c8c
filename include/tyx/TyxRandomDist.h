// Normal and Poisson deviates on top of the deterministic uniform generator.
#pragma once

#include <tyx/TyxGlobal.h>
#include <tyx/TyxRandomNumber.h>

namespace tyx {

/// Adds a normal deviate (polar Box-Muller method) and a Poisson deviate
/// (multiplication of uniforms for means below 12, rejection from a
/// Lorentzian above) to TyxRandomNumber. The same seed gives the same
/// stream of every kind of deviate.
class TYX_EXPORT TyxRandomDist : public TyxRandomNumber {
public:
    /// Seeded with -1.
    TyxRandomDist();
    /// Seeded by initialize(\p seed).
    explicit TyxRandomDist(int seed);

    /// Restarts the uniform stream as TyxRandomNumber::initialize does and
    /// forgets the spare normal value and the values kept for the last mean.
    void initialize(int seed);
    using TyxRandomNumber::ran1;

    /// A deviate of the standard normal distribution. Values come in pairs
    /// from two uniforms; the second of a pair is kept and returned by the
    /// next call without drawing.
    double gasdev();
    /// A deviate of the Poisson distribution of \p mean, as a whole number
    /// in a double. A mean of 0 or below gives 0. For very large means where
    /// the acceptance weight underflows four times in a row the answer is
    /// \p mean - 1; a NaN mean gives NaN without drawing.
    double poidev(double mean);
    /// ln(Gamma(\p x)) for \p x above 0, by Lanczos' series (error below
    /// 2e-10).
    static double gammln(double x);

private:
    bool m_hasSpare = false;
    double m_spare = 0.0;
    double m_sq = 0.0;
    double m_alxm = 0.0;
    double m_g = 0.0;
    double m_oldMean = -1.0;
};

} // namespace tyx
