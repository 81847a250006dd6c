#include "InputBlocks.h"

#include <fcntl.h>
#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

namespace zrb {
namespace {

// Bytes mapped at a time: large enough that mapping costs nothing against the work on the
// bytes, small enough to leave the address space and page tables alone.
constexpr std::uint64_t kWindowSize = std::uint64_t{64} << 20;

// Where a bus error jumps to while a mapped window is being consumed. A file cut short by
// another process while it is mapped raises SIGBUS on the first page beyond its new end; the
// reader turns that into an InputError instead of dying.
sigjmp_buf* volatile g_busErrorJump = nullptr;

extern "C" void OnBusError(int signalNumber) {
    if (g_busErrorJump != nullptr) {
        siglongjmp(*g_busErrorJump, 1);
    }
    ::signal(signalNumber, SIG_DFL); // not ours: die as we would have without the handler
    ::raise(signalNumber);
}

// Installs OnBusError for its lifetime and restores the previous handler afterwards.
class BusErrorHandler {
public:
    BusErrorHandler() {
        struct sigaction action {};
        action.sa_handler = OnBusError;
        sigemptyset(&action.sa_mask);
        ::sigaction(SIGBUS, &action, &m_previous);
    }
    ~BusErrorHandler() { ::sigaction(SIGBUS, &m_previous, nullptr); }
    BusErrorHandler(const BusErrorHandler&) = delete;
    BusErrorHandler& operator=(const BusErrorHandler&) = delete;

private:
    struct sigaction m_previous {};
};

// Consumes one mapped window in blocks, adding each block's length to `done`. Returns false
// when a bus error cut it short. Nothing with a destructor lives in this frame, so the jump
// back skips no clean-up.
bool ConsumeWindow(const unsigned char* data, std::uint64_t length, const BlockConsumer& consume,
                   std::uint64_t& done) {
    sigjmp_buf jump;
    if (sigsetjmp(jump, 1) != 0) {
        g_busErrorJump = nullptr;
        return false;
    }
    g_busErrorJump = &jump;
    try {
        for (std::uint64_t offset = 0; offset < length;) {
            const auto block = static_cast<std::size_t>(
                std::min<std::uint64_t>(InputBlocks::kBlockSize, length - offset));
            consume(data + offset, block);
            offset += block;
            done += block;
        }
    } catch (...) {
        g_busErrorJump = nullptr;
        throw;
    }
    g_busErrorJump = nullptr;
    return true;
}

// A mapped window, unmapped when it goes away.
class Mapping {
public:
    Mapping(int fd, std::uint64_t offset, std::uint64_t length)
        : m_length(length),
          m_data(::mmap(nullptr, length, PROT_READ, MAP_SHARED, fd, static_cast<off_t>(offset))) {
        if (m_data != MAP_FAILED) {
            ::madvise(m_data, m_length, MADV_SEQUENTIAL);
        }
    }
    ~Mapping() {
        if (m_data != MAP_FAILED) {
            ::munmap(m_data, m_length);
        }
    }
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;

    bool IsValid() const { return m_data != MAP_FAILED; }
    const unsigned char* Bytes() const { return static_cast<const unsigned char*>(m_data); }

private:
    std::uint64_t m_length;
    void* m_data;
};

} // namespace

InputBlocks::InputBlocks(const std::string& path)
    : m_name(path == "-" ? "standard input" : path), m_fd(0), m_ownsFd(path != "-"),
      m_regular(false), m_start(0), m_size(0) {
    if (m_ownsFd) {
        m_fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (m_fd < 0) {
            throw InputError(m_name + ": " + std::strerror(errno));
        }
    }
    struct stat status {};
    if (::fstat(m_fd, &status) != 0 || S_ISDIR(status.st_mode)) {
        const std::string reason =
            S_ISDIR(status.st_mode) ? "is a directory" : std::strerror(errno);
        if (m_ownsFd) {
            ::close(m_fd);
        }
        throw InputError(m_name + ": " + reason);
    }
    // Some regular files (those of /proc) report a size of 0 and still have bytes: they are
    // read, not mapped.
    m_regular = S_ISREG(status.st_mode) && status.st_size > 0;
    if (m_regular) {
        m_size = static_cast<std::uint64_t>(status.st_size);
        const off_t position = ::lseek(m_fd, 0, SEEK_CUR); // standard input may be part-read
        m_start = std::min<std::uint64_t>(position > 0 ? static_cast<std::uint64_t>(position) : 0,
                                          m_size);
    }
}

InputBlocks::~InputBlocks() {
    if (m_ownsFd) {
        ::close(m_fd);
    }
}

std::optional<std::uint64_t> InputBlocks::KnownSize() const {
    if (!m_regular) {
        return std::nullopt;
    }
    return m_size - m_start;
}

std::uint64_t InputBlocks::ForEachBlock(const BlockConsumer& consume) {
    return m_regular ? ConsumeMapped(consume) : ConsumeRead(consume);
}

std::uint64_t InputBlocks::ConsumeMapped(const BlockConsumer& consume) {
    const auto page = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    const BusErrorHandler handler;
    std::uint64_t position = m_start;
    while (position < m_size) {
        const std::uint64_t mapStart = position / page * page;
        const std::uint64_t mapEnd = std::min(mapStart + kWindowSize, m_size);
        const Mapping window(m_fd, mapStart, mapEnd - mapStart);
        if (!window.IsValid()) {
            if (position != m_start) {
                throw InputError(m_name + ": " + std::strerror(errno));
            }
            break; // a file that cannot be mapped at all is read instead
        }
        if (!ConsumeWindow(window.Bytes() + (position - mapStart), mapEnd - position, consume,
                           position)) {
            throw InputError(m_name + ": the file was cut short while it was being read");
        }
    }
    // Whatever follows (the rest of an unmappable file, bytes appended meanwhile) is read.
    if (::lseek(m_fd, static_cast<off_t>(position), SEEK_SET) < 0) {
        throw InputError(m_name + ": " + std::strerror(errno));
    }
    return position - m_start + ConsumeRead(consume);
}

std::uint64_t InputBlocks::ConsumeRead(const BlockConsumer& consume) {
    const std::unique_ptr<unsigned char[]> buffer(new unsigned char[kBlockSize]);
    std::uint64_t total = 0;
    for (;;) {
        const ssize_t got = ::read(m_fd, buffer.get(), kBlockSize);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            throw InputError(m_name + ": " + std::strerror(errno));
        }
        if (got == 0) {
            return total;
        }
        consume(buffer.get(), static_cast<std::size_t>(got));
        total += static_cast<std::uint64_t>(got);
    }
}

} // namespace zrb
