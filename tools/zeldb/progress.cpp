#include "progress.h"

#include "console.h"

#include <unistd.h>

#include <algorithm>

namespace zel::tool {

namespace {

constexpr qint64 QuietMs = 1000;
constexpr qint64 BetweenMs = 100;
constexpr int Width = 40;
constexpr char BackAndWipe[] = "\r\033[K";

} // namespace

Progress::Progress(const char *work, std::int64_t whole)
    : m_work(work), m_whole(whole), m_next(QuietMs), m_seen(isatty(STDERR_FILENO) != 0) {
    m_clock.start();
}

Progress::~Progress() {
    if (m_drawn)
        put(stderr, BackAndWipe);
}

void Progress::tell(std::int64_t done, std::int64_t whole) {
    if (!m_seen || m_clock.elapsed() < m_next)
        return;
    m_next = m_clock.elapsed() + BetweenMs;
    draw(done, whole);
}

void Progress::draw(std::int64_t done, std::int64_t whole) {
    const double part = whole > 0 ? std::clamp(double(done) / double(whole), 0.0, 1.0) : 0.0;
    const int full = int(part * Width);
    put(stderr, BackAndWipe + QByteArray(m_work) + " [" + QByteArray(full, '#') +
                    QByteArray(Width - full, '.') + "] " + QByteArray::number(int(part * 100)) + '%');
    m_drawn = true;
}

} // namespace zel::tool
