// Text lines from outside: a script taken from the input mixes both ReadTextLine forms (small
// maxChars), raw reads and seeks on a file and on a copy that shares its stream. Every result,
// every line, every byte and the position after each call must be those of byte-at-a-time
// reading; the character buffer is exactly maxChars + 1 bytes, so a write past it is caught.
#include "CZRB_File.h"
#include "FuzzSupport.h"
#include "TextModel.h"

#include <memory>

namespace {

enum t_Operation { LINE_INTO_BUFFER, LINE_INTO_STRING, RAW_READ, SEEK_FROM_START };

// The position that byte-at-a-time reading reaches, shared by the file and its copy, and the
// answers each call must give from there.
class Reader {
public:
    explicit Reader(const std::string& content) : m_content(content) {}

    void LineIntoBuffer(CZRB_File& file, unsigned int maxChars) {
        const std::unique_ptr<char[]> buffer(new char[maxChars + 1]);
        std::memset(buffer.get(), '#', maxChars + 1);
        const unsigned int result = file.ReadTextLine(buffer.get(), maxChars);
        const LineScan scan = ScanLine(m_content, m_position, maxChars);
        m_position = scan.next;
        if (GivesNoLine(scan)) {
            FUZZ_CHECK(result == 30 && buffer[0] == '#');
        } else {
            FUZZ_CHECK(result == 0 &&
                       scan.text.compare(0, scan.text.size(), buffer.get(), scan.text.size()) == 0);
            FUZZ_CHECK(buffer[scan.text.size()] == '\0');
        }
    }

    void LineIntoString(CZRB_File& file) {
        CZRB_String line("(untouched)");
        const unsigned int result = file.ReadTextLine(line);
        const LineScan scan = ScanLine(m_content, m_position, std::string::npos);
        m_position = scan.next;
        if (GivesNoLine(scan)) {
            FUZZ_CHECK(result == 24 && FromLib(line) == "(untouched)");
        } else {
            FUZZ_CHECK(result == 0 && FromLib(line) == scan.text);
        }
    }

    void RawRead(CZRB_File& file, unsigned int count) {
        std::string bytes(count, '#');
        const unsigned int result = file.Read(&bytes[0], count);
        const std::size_t available = m_content.size() - m_position;
        const std::size_t read = count < available ? count : available;
        FUZZ_CHECK(result == (read < count ? 30U : 0U));
        FUZZ_CHECK(bytes.compare(0, read, m_content, m_position, read) == 0);
        m_position += read;
    }

    void SeekFromStart(CZRB_File& file, std::size_t position) {
        FUZZ_CHECK(file.To(position, 1) == 0);
        m_position = position;
    }

    void CheckPosition(const CZRB_File& file) const {
        FUZZ_CHECK(file.GetPos() == m_position);
        FUZZ_CHECK(file.IsEOF() == (m_position >= m_content.size() ? 1 : 0));
    }

    std::size_t Position() const { return m_position; }

private:
    const std::string& m_content;
    std::size_t m_position = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::string script = input.TakeBytes(input.Take<std::uint8_t>() % 16 + 1);
    const std::string content = input.TakeRest();
    if (script.empty()) {
        return 0;
    }

    CZRB_File file;
    FUZZ_CHECK(file.Open(ScratchFile::Write(content), CZRB_File::OPEN_READ) == 0);
    CZRB_File copy(file);
    // Each script byte: bits 0-1 the operation, bits 2-5 an amount n, bit 6 use the copy.
    // The script repeats until two steps in a row found the file read through.
    Reader reader(content);
    unsigned int stepsAtEnd = 0;
    for (std::size_t step = 0; step < 512 && stepsAtEnd < 2; ++step) {
        const unsigned int op = static_cast<unsigned char>(script[step % script.size()]);
        const unsigned int n = (op >> 2) & 0xFU;
        CZRB_File& target = (op & 0x40U) ? copy : file;
        switch (op & 3U) {
        case LINE_INTO_BUFFER:
            reader.LineIntoBuffer(target, n);
            break;
        case LINE_INTO_STRING:
            reader.LineIntoString(target);
            break;
        case RAW_READ:
            reader.RawRead(target, n);
            break;
        default:
            reader.SeekFromStart(target, content.size() * n / 15);
            break;
        }
        reader.CheckPosition(target);
        stepsAtEnd = reader.Position() >= content.size() ? stepsAtEnd + 1 : 0;
    }
    return 0;
}
