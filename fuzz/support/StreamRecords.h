// Reading stream records from arbitrary bytes, shared by the memory and the file stream
// targets: a script picks the record read at each step, and every read is checked against the
// bytes the stream holds. A record read completely, written again, gives exactly the bytes it
// was read from; a read that fails throws 3 (past the end) or 32 (unknown address version),
// and a fixed-width read that fails leaves its value and the position as they were.
#ifndef LZRB_FUZZ_STREAM_RECORDS_H
#define LZRB_FUZZ_STREAM_RECORDS_H

#include "CZRB_Color.h"
#include "CZRB_Date.h"
#include "CZRB_IpAddress.h"
#include "CZRB_MemoryBuffer.h"
#include "CZRB_String.h"
#include "CZRB_Time.h"
#include "FuzzSupport.h"

#include <memory>
#include <string>

// The kinds of step a script byte (modulo STEP_KINDS) selects; PlayScript performs them.
enum t_Step {
    READ_STRING,
    READ_DATE,
    READ_TIME,
    READ_ADDRESS,
    READ_COLOR,
    READ_BYTE,
    READ_SHORT,
    READ_FLOAT,
    READ_DOUBLE,
    READ_INT64,
    REWIND,
    CONTINUE_ON_COPY,
    STEP_KINDS
};

class RecordReader {
public:
    explicit RecordReader(const std::string& bytes) : m_bytes(bytes) {}

    // Reads one record of `step` (READ_STRING .. READ_INT64) from `stream`.
    void Read(CZRB_Buffer& stream, unsigned int step) {
        FUZZ_CHECK(stream.GetAbsPosition() == m_offset && stream.GetSize() == m_bytes.size());
        switch (step) {
        case READ_STRING: {
            CZRB_String text("(untouched)");
            Variable(stream, text, 4, LengthAt(m_offset) + 4ULL);
            break;
        }
        case READ_DATE: {
            CZRB_Date date(2000, 1, 1, CZRB_Date::CALENDAR_GREGORIAN);
            Fixed(stream, date, 8);
            break;
        }
        case READ_TIME: {
            CZRB_Time time(12, 0, 0, 0);
            Fixed(stream, time, 4);
            break;
        }
        case READ_ADDRESS:
            Address(stream);
            break;
        case READ_COLOR: {
            CZRB_Color color(0x12345678U);
            Fixed(stream, color, 4);
            break;
        }
        case READ_BYTE: {
            unsigned char value = 0x5A;
            Fixed(stream, value, 1);
            break;
        }
        case READ_SHORT: {
            short value = 0x5A5A;
            Fixed(stream, value, 2);
            break;
        }
        case READ_FLOAT: {
            float value = 1.5F;
            Fixed(stream, value, 4);
            break;
        }
        case READ_DOUBLE: {
            double value = 1.5;
            Fixed(stream, value, 8);
            break;
        }
        default: {
            __int64 value = 0x5A5A5A5A5A5A5A5ALL;
            Fixed(stream, value, 8);
            break;
        }
        }
    }

    // The stream went back to its start.
    void Rewound() { m_offset = 0; }
    // Bytes read so far.
    std::size_t Offset() const { return m_offset; }

private:
    // The bytes `stream << value` writes.
    template <class T>
    static std::string Written(T& value) {
        CZRB_MemoryBuffer out(16);
        out << value;
        out.ToStart();
        std::string bytes(static_cast<std::size_t>(out.GetSize()), '\0');
        if (!bytes.empty()) {
            out.RetrieveData(&bytes[0], static_cast<unsigned int>(bytes.size()));
        }
        return bytes;
    }

    // The little-endian 32-bit value at `at`, or 0 past the end.
    unsigned int LengthAt(std::size_t at) const {
        unsigned int value = 0;
        for (std::size_t i = 4; i-- > 0;) {
            value = value << 8 |
                    (at + i < m_bytes.size() ? static_cast<unsigned char>(m_bytes[at + i]) : 0U);
        }
        return value;
    }

    std::size_t Remaining() const { return m_bytes.size() - m_offset; }

    // Reads a record of `width` bytes: all of it or nothing.
    template <class T>
    void Fixed(CZRB_Buffer& stream, T& value, std::size_t width) {
        const std::string before = Written(value);
        const unsigned int code = ThrownCode([&] { stream >> value; });
        if (Remaining() < width) {
            FUZZ_CHECK(code == 3 && Written(value) == before);
            FUZZ_CHECK(stream.GetAbsPosition() == m_offset);
            return;
        }
        FUZZ_CHECK(code == 0 && Written(value) == m_bytes.substr(m_offset, width));
        m_offset += width;
        FUZZ_CHECK(stream.GetAbsPosition() == m_offset);
        FUZZ_CHECK(stream.IsEnd() == (m_offset >= m_bytes.size() ? 1 : 0));
    }

    // Reads a record of a `head`-byte header announcing `total` bytes in all. A record that
    // does not fit leaves the value as it was.
    template <class T>
    void Variable(CZRB_Buffer& stream, T& value, std::size_t head, unsigned long long total) {
        const std::string before = Written(value);
        const unsigned int code = ThrownCode([&] { stream >> value; });
        if (Remaining() < total) {
            FUZZ_CHECK(code == 3 && Written(value) == before);
            Resync(stream, Remaining() < head ? 0 : head);
            return;
        }
        FUZZ_CHECK(code == 0 && Written(value) == m_bytes.substr(m_offset, total));
        m_offset += total;
        FUZZ_CHECK(stream.GetAbsPosition() == m_offset);
    }

    // An address record: a 16-bit version, then for versions 0 and 1 a count and the parts.
    void Address(CZRB_Buffer& stream) {
        CZRB_IpAddress address(CZRB_String("10.0.0.1"));
        const unsigned int code = ThrownCode([&] { stream >> address; });
        if (Remaining() < 2) {
            FUZZ_CHECK(code == 3 && address == CZRB_IpAddress());
            Resync(stream, 0);
            return;
        }
        const unsigned int version = LengthAt(m_offset) & 0xFFFFU;
        if (version == CZRB_IpAddress::VERSION_INVALID) {
            // Kept as shipped: the count written behind an invalid version is not read back.
            FUZZ_CHECK(code == 0 && address == CZRB_IpAddress());
            FUZZ_CHECK(Written(address) == m_bytes.substr(m_offset, 2) + std::string(4, '\0'));
            Resync(stream, 2);
            return;
        }
        if (version != CZRB_IpAddress::VERSION_IPV4 && version != CZRB_IpAddress::VERSION_IPV6) {
            FUZZ_CHECK(code == 32);
            Resync(stream, 2);
            return;
        }
        const unsigned long long total = 6 + 4ULL * LengthAt(m_offset + 2);
        if (Remaining() < total) {
            FUZZ_CHECK(code == 3); // the version stays set, without parts
            Resync(stream, Remaining() < 6 ? 2 : 6);
            return;
        }
        FUZZ_CHECK(code == 0 && Written(address) == m_bytes.substr(m_offset, total));
        m_offset += total;
        FUZZ_CHECK(stream.GetAbsPosition() == m_offset);
    }

    // After a record that stopped inside its header: the header's `consumed` bytes were read.
    void Resync(CZRB_Buffer& stream, std::size_t consumed) {
        m_offset += consumed;
        FUZZ_CHECK(stream.GetAbsPosition() == m_offset);
    }

    const std::string& m_bytes;
    std::size_t m_offset = 0;
};

// Plays `script` over a stream holding `bytes`, positioned at its start: reads records,
// rewinds and continues on copies, each read checked by a RecordReader. Rewinding and copying
// cost a full pass or a full copy: three of each at most.
template <class Stream>
void PlayScript(std::unique_ptr<Stream>& stream, const std::string& bytes,
                const std::string& script) {
    RecordReader reader(bytes);
    unsigned int stepsAtEnd = 0, rewinds = 0, copies = 0;
    for (std::size_t step = 0; step < 256 && stepsAtEnd < 2; ++step) {
        const unsigned int kind =
            static_cast<unsigned char>(script[step % script.size()]) % STEP_KINDS;
        if (kind == REWIND && ++rewinds <= 3) {
            stream->ToStart();
            reader.Rewound();
        } else if (kind == CONTINUE_ON_COPY && ++copies <= 3) {
            stream = std::make_unique<Stream>(*stream);
        } else if (kind < REWIND) {
            reader.Read(*stream, kind);
        }
        stepsAtEnd = reader.Offset() >= bytes.size() ? stepsAtEnd + 1 : 0;
    }
}

#endif
