#include "Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace zrb {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMiB = 1024.0 * 1024.0;
constexpr int kBarWidth = 30;
constexpr std::size_t kNameWidth = 24;

double SecondsBetween(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double>(to - from).count();
}

} // namespace

Progress::Progress(Mode mode, std::string name, std::optional<std::uint64_t> total)
    : m_mode(mode == Mode::Automatic && ::isatty(STDERR_FILENO) == 0 ? Mode::Off : mode),
      m_name(std::move(name)), m_total(total), m_start(Clock::now()), m_lastDraw(m_start),
      m_done(0), m_shown(false) {
    if (m_name.size() > kNameWidth) {
        m_name = "..." + m_name.substr(m_name.size() - (kNameWidth - 3));
    }
}

Progress::~Progress() {
    if (m_mode == Mode::Forced) {
        Draw(m_done, SecondsBetween(m_start, Clock::now()));
        std::fputc('\n', stderr);
    } else if (m_shown) {
        std::fputs("\r\033[K", stderr); // the terminal line is left as it was found
    }
    std::fflush(stderr);
}

void Progress::Update(std::uint64_t done) {
    m_done = done;
    if (m_mode == Mode::Off) {
        return;
    }
    const Clock::time_point now = Clock::now();
    const double elapsed = SecondsBetween(m_start, now);
    if ((m_mode == Mode::Automatic && elapsed < 1.0) || SecondsBetween(m_lastDraw, now) < 0.1) {
        return;
    }
    m_lastDraw = now;
    Draw(done, elapsed);
}

void Progress::Draw(std::uint64_t done, double seconds) {
    const double rate = seconds > 0 ? static_cast<double>(done) / kMiB / seconds : 0;
    std::fprintf(stderr, "\r%-*s ", static_cast<int>(kNameWidth), m_name.c_str());
    if (m_total) {
        // Bytes appended while the file is read may carry it past its size at the start.
        const double fraction =
            *m_total == 0
                ? 1.0
                : std::min(1.0, static_cast<double>(done) / static_cast<double>(*m_total));
        const int filled = static_cast<int>(fraction * kBarWidth);
        std::fprintf(stderr, "[%.*s%*s] %3d%% ", filled, "##############################",
                     kBarWidth - filled, "", static_cast<int>(fraction * 100));
    }
    std::fprintf(stderr, "%9.1f MiB %8.1f MiB/s", static_cast<double>(done) / kMiB, rate);
    std::fflush(stderr);
    m_shown = true;
}

} // namespace zrb
