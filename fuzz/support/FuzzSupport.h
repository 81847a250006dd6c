// Helpers shared by the fuzz targets: the check that stops a run on a broken invariant, typed
// values taken from the fuzzer's bytes, the code of an expected exception, and a scratch file
// for targets whose input must come from a file.
#ifndef LZRB_FUZZ_SUPPORT_H
#define LZRB_FUZZ_SUPPORT_H

#include "CZRB_Exception.h"
#include "CZRB_String.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <unistd.h>

// Aborts with the failed condition when `condition` does not hold; libFuzzer and the replay
// both report the abort with the input that caused it.
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition);     \
            std::abort();                                                                          \
        }                                                                                          \
    } while (0)

// Reads typed values from the front of the fuzzer's bytes; past the end every value is 0.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    // The next sizeof(T) bytes as a T (zero-filled past the end).
    template <class T>
    T Take() {
        T value{};
        const std::size_t count = m_size < sizeof(T) ? m_size : sizeof(T);
        if (count != 0) {
            std::memcpy(&value, m_data, count);
        }
        Skip(count);
        return value;
    }

    // A value from lowest to highest inclusive, taken from one or four bytes.
    unsigned int TakeInRange(unsigned int lowest, unsigned int highest) {
        const unsigned int span = highest - lowest;
        const unsigned int raw = span < 256 ? Take<std::uint8_t>() : Take<std::uint32_t>();
        return span == 0xFFFFFFFFU ? raw : lowest + raw % (span + 1);
    }

    // Up to `count` bytes as a string (embedded zero bytes kept).
    std::string TakeBytes(std::size_t count) {
        if (count > m_size) {
            count = m_size;
        }
        std::string bytes(reinterpret_cast<const char*>(m_data), count);
        Skip(count);
        return bytes;
    }

    // A string whose length (0..maxLength) comes from one byte.
    std::string TakeShortBytes(std::size_t maxLength) {
        return TakeBytes(Take<std::uint8_t>() % (maxLength + 1));
    }

    // All bytes left.
    std::string TakeRest() { return TakeBytes(m_size); }

private:
    void Skip(std::size_t count) {
        m_data += count;
        m_size -= count;
    }

    const std::uint8_t* m_data;
    std::size_t m_size;
};

// The library string of `bytes` (embedded zero bytes kept) and back.
inline CZRB_String ToLib(const std::string& bytes) {
    return CZRB_String(bytes.data(), static_cast<unsigned int>(bytes.size()));
}
inline std::string FromLib(const CZRB_String& text) {
    return std::string(text.GetStringC(), text.GetLength());
}

// The code of the CZRB_Exception that `action` throws, or 0 when it returns. Any other
// exception passes through and ends the run.
template <class F>
unsigned int ThrownCode(F action) {
    try {
        action();
    } catch (const CZRB_Exception& e) {
        FUZZ_CHECK(e.code != 0 && e.detail == 0);
        return e.code;
    }
    return 0;
}

// A file of this process, rewritten with each input. It is created under a unique name in
// $TMPDIR (or /tmp) and removed at once; its path is this process's link to the open file, so
// nothing is left behind, not even when a finding ends the process.
class ScratchFile {
public:
    // Replaces the file's contents by `size` bytes of `data`; returns its path.
    static const CZRB_String& Write(const std::uint8_t* data, std::size_t size) {
        ScratchFile& file = Instance();
        FUZZ_CHECK(ftruncate(file.m_descriptor, 0) == 0);
        std::size_t written = 0;
        while (written < size) {
            const ssize_t count = pwrite(file.m_descriptor, data + written, size - written,
                                         static_cast<off_t>(written));
            FUZZ_CHECK(count > 0);
            written += static_cast<std::size_t>(count);
        }
        return file.m_path;
    }
    static const CZRB_String& Write(const std::string& bytes) {
        return Write(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }

private:
    ScratchFile() {
        const char* folder = std::getenv("TMPDIR");
        std::string name = std::string(folder && *folder ? folder : "/tmp") + "/lzrb-fuzz-XXXXXX";
        m_descriptor = mkstemp(&name[0]);
        FUZZ_CHECK(m_descriptor >= 0 && unlink(name.c_str()) == 0);
        m_path = ("/proc/self/fd/" + std::to_string(m_descriptor)).c_str();
    }

    static ScratchFile& Instance() {
        static ScratchFile file;
        return file;
    }

    int m_descriptor;
    CZRB_String m_path;
};

#endif
