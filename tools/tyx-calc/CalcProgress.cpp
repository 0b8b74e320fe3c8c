// tyx-calc's progress line on a terminal and its closing summary.
#include "Calc.h"

#include <chrono>
#include <cstdio>
#include <unistd.h>

namespace tyxcalc {

double nowSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

Progress::Progress(uint64_t totalTiles, uint64_t totalPixels, bool quiet)
    : m_totalTiles(totalTiles), m_totalPixels(totalPixels), m_show(!quiet && ::isatty(STDERR_FILENO) == 1),
      m_quiet(quiet), m_start(nowSeconds())
{
}

void Progress::tileDone()
{
    ++m_doneTiles;
    if (!m_show)
        return;
    const double now = nowSeconds();
    if (m_doneTiles == m_totalTiles || now - m_lastDraw >= 0.1) {
        m_lastDraw = now;
        draw();
    }
}

void Progress::draw()
{
    constexpr int kBarWidth = 30;
    const double elapsed = nowSeconds() - m_start;
    const double fraction = m_totalTiles ? double(m_doneTiles) / double(m_totalTiles) : 1.0;
    const double rate = elapsed > 0 ? double(m_doneTiles) / elapsed : 0.0;
    const double left = rate > 0 ? double(m_totalTiles - m_doneTiles) / rate : 0.0;
    char bar[kBarWidth + 1];
    const int filled = static_cast<int>(fraction * kBarWidth);
    for (int i = 0; i < kBarWidth; ++i)
        bar[i] = i < filled ? '#' : '.';
    bar[kBarWidth] = '\0';
    const long secondsLeft = static_cast<long>(left + 0.5);
    std::fprintf(stderr, "\r[%s] %3d%%  %8.1f tiles/s  %ld:%02ld left ", bar,
                 static_cast<int>(fraction * 100), rate, secondsLeft / 60, secondsLeft % 60);
    std::fflush(stderr);
    m_drawn = true;
}

void Progress::abandon()
{
    if (m_drawn) {
        std::fputc('\n', stderr);
        m_drawn = false;
    }
}

void Progress::finish()
{
    abandon();
    if (m_quiet)
        return;
    const double seconds = nowSeconds() - m_start;
    const double rate = seconds > 0 ? double(m_totalPixels) / seconds / 1e6 : 0.0;
    std::printf("tyx-calc: %llu pixels in %.3f s, %.1f megapixels per second\n",
                static_cast<unsigned long long>(m_totalPixels), seconds, rate);
    std::fflush(stdout);
}

} // namespace tyxcalc
