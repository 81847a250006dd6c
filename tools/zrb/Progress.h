// A one-line progress bar on standard error for inputs that take a while to read.
#ifndef ZRB_TOOL_PROGRESS_H
#define ZRB_TOOL_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace zrb {

class Progress {
public:
    enum class Mode {
        Automatic, // on a terminal, once an input has taken longer than a second
        Forced,    // always, from the start, ending with a line of its own
        Off
    };

    // A bar for the input `name` of `total` bytes (empty when not known in advance).
    Progress(Mode mode, std::string name, std::optional<std::uint64_t> total);
    // Clears an automatic bar from the terminal; a forced one ends its line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // `done` bytes are read so far; redraws at most ten times a second.
    void Update(std::uint64_t done);

private:
    void Draw(std::uint64_t done, double seconds);

    Mode m_mode;
    std::string m_name;
    std::optional<std::uint64_t> m_total;
    std::chrono::steady_clock::time_point m_start;
    std::chrono::steady_clock::time_point m_lastDraw;
    std::uint64_t m_done;
    bool m_shown;
};

} // namespace zrb

#endif
