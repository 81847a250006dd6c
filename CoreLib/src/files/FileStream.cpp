#include "files/FileStream.h"

#include <sys/stat.h>
#include <sys/types.h>

namespace {

// Bytes read ahead at a time: a few runtime buffers' worth, small enough to stay in cache.
constexpr std::size_t kReadAhead = 16384;

} // namespace

CZRB_File::CStream::CStream(std::FILE* opened, bool writable)
    : m_file(opened), m_writable(writable), m_pendingWrite(false), m_lost(false), m_next(0),
      m_filled(0), m_windowStart(0), m_cutReady(false) {}

CZRB_File::CStream::~CStream() {
    Close();
}

void CZRB_File::CStream::Abandon() {
    m_file = nullptr;
    m_next = m_filled = 0;
}

bool CZRB_File::CStream::Close() {
    if (m_file == nullptr) {
        return true;
    }
    bool done = !m_lost;
    done = std::fflush(m_file) == 0 && done;
    done = std::fclose(m_file) == 0 && done;
    m_file = nullptr;
    m_next = m_filled = 0;
    m_pendingWrite = m_lost = false;
    return done;
}

unsigned __int64 CZRB_File::CStream::Position() {
    if (m_next < m_filled) {
        return m_windowStart + m_next;
    }
    const off_t position = ftello(m_file);
    return position < 0 ? 0 : static_cast<unsigned __int64>(position);
}

unsigned __int64 CZRB_File::CStream::Length() {
    FlushPending();
    struct stat status {};
    if (fstat(fileno(m_file), &status) == 0 && S_ISREG(status.st_mode)) {
        const auto length = static_cast<unsigned __int64>(status.st_size);
        if (m_next < m_filled && length < m_windowStart + m_filled) {
            DropReadAhead(); // another handle cut the file short: read it again from here
        }
        return length;
    }
    // Not a regular file: measured by seeking to the end and back.
    const off_t position = ftello(m_file);
    fseeko(m_file, 0, SEEK_END);
    const off_t length = ftello(m_file);
    if (position >= 0) {
        fseeko(m_file, position, SEEK_SET);
    }
    return length < 0 ? 0 : static_cast<unsigned __int64>(length);
}

int CZRB_File::CStream::Seek(__int64 offset, int whence) {
    DropReadAhead();
    Flush(); // also drops anything the runtime read ahead, so the file is read afresh
    return fseeko(m_file, static_cast<off_t>(offset), whence);
}

bool CZRB_File::CStream::Flush() {
    m_pendingWrite = false;
    if (std::fflush(m_file) != 0) {
        m_lost = m_lost || m_writable;
        return false;
    }
    return true;
}

std::size_t CZRB_File::CStream::Read(void* data, std::size_t count, bool& failed) {
    failed = false;
    char* const target = static_cast<char*>(data);
    std::size_t done = TakeReadAhead(target, count);
    while (done < count) {
        // Whole read-ahead sizes go straight to the caller, the rest through the read-ahead,
        // so that the runtime never holds bytes read ahead of its own.
        const std::size_t remaining = count - done;
        const std::size_t direct = remaining - remaining % kReadAhead;
        if (direct > 0) {
            const std::size_t read = ReadRuntime(target + done, direct, failed);
            done += read;
            if (read < direct) {
                break;
            }
            continue;
        }
        const int refill = Refill();
        if (refill <= 0) {
            failed = refill < 0;
            break;
        }
        done += TakeReadAhead(target + done, remaining);
    }
    return done;
}

std::size_t CZRB_File::CStream::Write(const void* data, std::size_t count) {
    DropReadAhead();
    const std::size_t written = std::fwrite(data, 1, count, m_file);
    m_pendingWrite = true;
    if (written < count) {
        m_lost = m_lost || m_writable;
    }
    return written;
}

unsigned int CZRB_File::CStream::ReadTextLine(CZRB_String& line) {
    m_line.clear();
    const t_LineEnd end = ReadLine(m_line.max_size(), [this](const char* run, std::size_t count) {
        m_line.append(run, count);
    });
    if (end == LINE_READ_FAILED) {
        return 30;
    }
    if (end == LINE_STOPPED && m_line.empty()) {
        return 24;
    }
    line = m_line.c_str(); // zero bytes were dropped, so the text ends at its terminator
    return 0;
}

void CZRB_File::CStream::CutLines() {
    if (!m_cut) {
        m_cut.reset(new char[kReadAhead + ZRB_Detail::kCutPadding]()); // padded for PlainLength
    }
    const char* raw = m_window.get();
    char* cut = m_cut.get();
    std::size_t i = 0;
#if defined(__SSE2__)
    // Sixteen bytes at a time: every x86-64 processor has these instructions.
    const __m128i feeds = _mm_set1_epi8('\n');
    const __m128i returns = _mm_set1_epi8('\r');
    for (; i + 16 <= m_filled; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(raw + i));
        const __m128i ends =
            _mm_or_si128(_mm_cmpeq_epi8(bytes, feeds), _mm_cmpeq_epi8(bytes, returns));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(cut + i), _mm_andnot_si128(ends, bytes));
    }
#endif
    for (; i < m_filled; ++i) {
        cut[i] = raw[i] == '\n' || raw[i] == '\r' ? '\0' : raw[i];
    }
    cut[m_filled] = '\0';
    m_cutReady = true;
}

int CZRB_File::CStream::Refill() {
    if (!m_window) {
        m_window.reset(new char[kReadAhead]);
    }
    m_next = m_filled = 0;
    FlushPending();
    const off_t start = ftello(m_file);
    m_windowStart = start < 0 ? 0 : static_cast<unsigned __int64>(start);
    bool failed = false;
    m_filled = ReadRuntime(m_window.get(), kReadAhead, failed);
    m_cutReady = false;
    if (m_filled > 0) {
        return 1;
    }
    // A failed read at or past the end of the file is the end of the file.
    return failed && m_windowStart < Length() ? -1 : 0;
}

std::size_t CZRB_File::CStream::TakeReadAhead(char* target, std::size_t count) {
    const std::size_t available = m_filled - m_next;
    const std::size_t taken = count < available ? count : available;
    if (taken > 0) {
        std::memcpy(target, m_window.get() + m_next, taken);
        m_next += taken;
    }
    return taken;
}

std::size_t CZRB_File::CStream::ReadRuntime(char* target, std::size_t count, bool& failed) {
    FlushPending();
    std::clearerr(m_file); // a file that grew since its end was met is read on
    const std::size_t read = std::fread(target, 1, count, m_file);
    failed = std::ferror(m_file) != 0;
    std::clearerr(m_file);
    return read;
}

void CZRB_File::CStream::DropReadAhead() {
    if (m_next < m_filled) {
        fseeko(m_file, static_cast<off_t>(m_windowStart + m_next), SEEK_SET);
    }
    m_next = m_filled = 0;
}

void CZRB_File::CStream::FlushPending() {
    if (m_pendingWrite) {
        Flush();
    }
}
