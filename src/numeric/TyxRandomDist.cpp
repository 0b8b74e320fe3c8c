// Normal deviates by the polar method, Poisson deviates by multiplication and by rejection.
#include <tyx/TyxRandomDist.h>

#include <cmath>
#include <numbers>

namespace tyx {

TyxRandomDist::TyxRandomDist() = default;

TyxRandomDist::TyxRandomDist(int seed) : TyxRandomNumber(seed) {}

void TyxRandomDist::initialize(int seed)
{
    TyxRandomNumber::initialize(seed);
    m_hasSpare = false;
    m_spare = 0.0;
    m_sq = 0.0;
    m_alxm = 0.0;
    m_g = 0.0;
    m_oldMean = -1.0;
}

double TyxRandomDist::gasdev()
{
    if (m_hasSpare) {
        m_hasSpare = false;
        return m_spare;
    }
    double a = 0.0;
    double b = 0.0;
    double r = 0.0;
    do {
        a = 2.0 * ran1() - 1.0;
        b = 2.0 * ran1() - 1.0;
        r = a * a + b * b;
    } while (r >= 1.0 || r == 0.0);
    const double f = std::sqrt(-2.0 * std::log(r) / r);
    m_spare = a * f;
    m_hasSpare = true;
    return b * f;
}

double TyxRandomDist::gammln(double x)
{
    static constexpr double cof[6] = {76.18009172947146,  -86.50532032941678,   24.01409824083091,
                                      -1.231739572450155, 0.001208650973866179, -5.395239384953e-6};
    double y = x;
    double tmp = x + 5.5;
    tmp -= (x + 0.5) * std::log(tmp);
    double ser = 1.000000000190015;
    for (double c : cof)
        ser += c / ++y;
    return -tmp + std::log(2.5066282746310007 * ser / x);
}

double TyxRandomDist::poidev(double mean)
{
    // A NaN mean would never pass the rejection test's "em at least 0" and
    // loop for ever.
    if (std::isnan(mean))
        return mean;
    if (mean < 12.0) {
        if (mean != m_oldMean) {
            m_oldMean = mean;
            m_g = std::exp(-mean);
        }
        double em = -1.0;
        double t = 1.0;
        do {
            em += 1.0;
            t *= ran1();
        } while (t > m_g);
        return em;
    }
    if (mean != m_oldMean) {
        m_oldMean = mean;
        m_sq = std::sqrt(2.0 * mean);
        m_alxm = std::log(mean);
        m_g = mean * m_alxm - gammln(mean + 1.0);
    }
    int zeroWeights = 0;
    double em = 0.0;
    double t = 0.0;
    do {
        double y = 0.0;
        do {
            y = std::tan(std::numbers::pi * ran1());
            em = m_sq * y + mean;
        } while (!(em >= 0.0));
        em = std::floor(em);
        const double weight = std::exp(em * m_alxm - gammln(em + 1.0) - m_g);
        if (weight == 0.0) {
            // At very large means the weight underflows; give up rather than
            // loop without end.
            if (++zeroWeights >= 4)
                return mean - 1.0;
        } else {
            zeroWeights = 0;
        }
        t = 0.9 * (1.0 + y * y) * weight;
    } while (ran1() > t);
    return em;
}

} // namespace tyx
