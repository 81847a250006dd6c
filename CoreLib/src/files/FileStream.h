// The runtime stream that every copy of one opened CZRB_File shares, with the read-ahead the
// text readers and block reads go through.
//
// The read-ahead holds bytes of the file from windowStart on; the bytes [next, filled) are not
// handed out yet. While some are left, the runtime stream stands at windowStart + filled and
// the position the callers see is windowStart + next. Anything that writes or moves the
// position first puts the runtime stream back at that position and drops the read-ahead, so
// every copy sees the bytes in file order whatever mix of calls it makes. The read-ahead never
// remembers where the file ended: once it is used up the next read asks the system again, so
// bytes another handle appends are seen. A length query that finds the file shorter than what
// was read ahead drops the read-ahead as well.
#ifndef LZRB_FILES_FILESTREAM_H
#define LZRB_FILES_FILESTREAM_H

#include "CZRB_File.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ZRB_Detail {

// Zero bytes behind the copy of the read-ahead that PlainLength may read past its end.
constexpr std::size_t kCutPadding = 16;

// strlen, with the usual short line found by one sixteen-byte comparison; it may read up to
// sixteen bytes from `text` whatever its length.
inline std::size_t PlainLength(const char* text) {
#if defined(__SSE2__)
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    const int zeros = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128()));
    if (zeros != 0) {
        return static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned int>(zeros)));
    }
    return 16 + std::strlen(text + 16);
#else
    return std::strlen(text);
#endif
}

} // namespace ZRB_Detail

struct CZRB_File::CStream {
    // How reading a text line ended.
    enum t_LineEnd : int { LINE_FEED, LINE_STOPPED, LINE_READ_FAILED };

    CStream(std::FILE* opened, bool writable);
    // Flushes and closes the stream when it is still open.
    ~CStream();
    CStream(const CStream&) = delete;
    CStream& operator=(const CStream&) = delete;

    bool IsOpen() const { return m_file != nullptr; }
    // Lets go of the stream without closing it (it stays open until the process ends).
    void Abandon();
    // Flushes and closes once. False when written bytes were lost since the stream was opened
    // or when the final flush or the close fails.
    bool Close();

    // The position the callers see; 0 when it cannot be told.
    unsigned __int64 Position();
    // The file's length; 0 when it cannot be told.
    unsigned __int64 Length();
    // fseeko's own result after dropping the read-ahead (0 done, -1 failed).
    int Seek(__int64 offset, int whence);
    // Hands pending bytes to the system. False when it refused them.
    bool Flush();

    // Up to count bytes from the position on; the number read. `failed` tells a failed read
    // from the end of the file.
    std::size_t Read(void* data, std::size_t count, bool& failed);
    // Writes count bytes at the position; the number the runtime accepted.
    std::size_t Write(const void* data, std::size_t count);

    // Reads one text line: zero bytes and CR are dropped, LF ends the line and is consumed, and
    // at most maxChars kept bytes are passed to keep(const char* run, std::size_t count) in
    // order. Stops without consuming more once maxChars bytes were kept.
    template <class Keep>
    t_LineEnd ReadLine(std::size_t maxChars, Keep keep);

    // The next line when it lies whole in the read-ahead and holds no zero byte or CR, but for
    // one CR right before its LF: the line is consumed and its text returned, ended by a zero
    // byte. Null otherwise, with nothing consumed.
    const char* TakePlainLine();

    // CZRB_File::ReadTextLine(CZRB_String&) for a line that TakePlainLine does not take.
    unsigned int ReadTextLine(CZRB_String& line);

private:
    // Reads the next part of the file ahead: 1 when bytes came, 0 at the end, -1 when the read
    // failed while the file still has bytes at the position.
    int Refill();
    // Moves up to count read-ahead bytes to target; the number moved.
    std::size_t TakeReadAhead(char* target, std::size_t count);
    // One runtime read of count bytes; `failed` tells a failed read from the end of the file.
    std::size_t ReadRuntime(char* target, std::size_t count, bool& failed);
    // Puts the runtime stream back at the position the callers see; no read-ahead is left.
    void DropReadAhead();
    // Flushes bytes written since the last flush, so that reading and measuring see them.
    void FlushPending();
    // Fills m_cut from the read-ahead.
    void CutLines();
    // Passes the kept bytes of [begin, end) to keep until `kept` reaches maxChars; returns the
    // number of bytes consumed (all of them unless maxChars was reached).
    template <class Keep>
    std::size_t KeepSpan(const char* begin, const char* end, std::size_t maxChars,
                         std::size_t& kept, Keep& keep);

    std::FILE* m_file;
    bool m_writable;
    bool m_pendingWrite; // bytes handed to the runtime since its last flush
    bool m_lost;         // the system refused written bytes since the stream was opened
    std::unique_ptr<char[]> m_window;
    std::size_t m_next;
    std::size_t m_filled;
    unsigned __int64 m_windowStart;
    // The read-ahead with every CR and LF turned into a zero byte and a zero byte behind it, so
    // that a line's text can be taken as it is (made once per refill, when lines are read).
    std::unique_ptr<char[]> m_cut;
    bool m_cutReady;
    std::string m_line; // a line gathered from several runs or read-aheads
};

inline const char* CZRB_File::CStream::TakePlainLine() {
    if (m_next >= m_filled) {
        return nullptr;
    }
    if (!m_cutReady) {
        CutLines();
    }
    const char* const text = m_cut.get() + m_next;
    std::size_t consumed = ZRB_Detail::PlainLength(text); // up to the first zero byte, CR or LF
    const char* raw = m_window.get() + m_next + consumed;
    if (m_next + consumed < m_filled && *raw == '\r') {
        ++consumed; // a CR is allowed right before the LF only
        ++raw;
    }
    if (m_next + consumed >= m_filled || *raw != '\n') {
        return nullptr;
    }
    m_next += consumed + 1;
    return text;
}

template <class Keep>
CZRB_File::CStream::t_LineEnd CZRB_File::CStream::ReadLine(std::size_t maxChars, Keep keep) {
    std::size_t kept = 0;
    while (kept < maxChars) {
        if (m_next == m_filled) {
            const int refill = Refill();
            if (refill <= 0) {
                return refill < 0 ? LINE_READ_FAILED : LINE_STOPPED;
            }
        }
        const char* begin = m_window.get() + m_next;
        const std::size_t available = m_filled - m_next;
        const char* feed = static_cast<const char*>(std::memchr(begin, '\n', available));
        const char* end = feed != nullptr ? feed : begin + available;
        m_next += KeepSpan(begin, end, maxChars, kept, keep);
        if (kept == maxChars) {
            return LINE_STOPPED; // the rest of the line, LF included, is left for the next call
        }
        if (feed != nullptr) {
            ++m_next;
            return LINE_FEED;
        }
    }
    return LINE_STOPPED;
}

template <class Keep>
std::size_t CZRB_File::CStream::KeepSpan(const char* begin, const char* end, std::size_t maxChars,
                                         std::size_t& kept, Keep& keep) {
    // The next zero byte and CR, each searched again only once the scan has passed it, so a
    // span is walked in linear time however many of them it holds.
    auto find = [end](const char* from, int byte) {
        const void* found = std::memchr(from, byte, static_cast<std::size_t>(end - from));
        return found != nullptr ? static_cast<const char*>(found) : end;
    };
    const char* zero = find(begin, 0);
    const char* cr = find(begin, '\r');
    const char* run = begin;
    while (true) {
        const char* runEnd = zero < cr ? zero : cr;
        std::size_t count = static_cast<std::size_t>(runEnd - run);
        if (count > maxChars - kept) {
            count = maxChars - kept;
        }
        if (count > 0) {
            keep(run, count);
            kept += count;
        }
        if (kept == maxChars) {
            return static_cast<std::size_t>(run + count - begin);
        }
        if (runEnd == end) {
            return static_cast<std::size_t>(end - begin);
        }
        run = runEnd + 1; // the zero byte or CR is dropped
        if (zero < run) {
            zero = find(run, 0);
        }
        if (cr < run) {
            cr = find(run, '\r');
        }
    }
}

#endif
