// Reading through the shared read-ahead against a model that reads one byte at a time: random
// calls on two copies of one stream, while another handle appends to the file, cuts it short
// or rewrites it.
#include "CZRB_File.h"
#include "FileTestSupport.h"

#include <fcntl.h>
#include <random>
#include <unistd.h>

namespace {

// The file as the text calls describe it, one byte at a time, with the bytes of the file in
// `disk`. Writes reach `disk` at once; the test flushes before another handle acts.
struct CByteModel {
    unsigned int ReadTextLine(std::string& line, std::size_t maxChars, unsigned int noLine) {
        if (m_disk.empty()) {
            return noLine;
        }
        std::string text;
        while (m_position < m_disk.size() && text.size() < maxChars) {
            const char c = m_disk[m_position++];
            if (c == '\n') {
                line = text;
                return 0;
            }
            if (c != '\0' && c != '\r') {
                text += c;
            }
        }
        if (text.empty()) {
            return noLine;
        }
        line = text;
        return 0;
    }
    unsigned int Read(std::string& bytes, std::size_t count) {
        const std::size_t start = m_position < m_disk.size() ? m_position : m_disk.size();
        bytes = m_disk.substr(start, count);
        m_position += bytes.size();
        return bytes.size() < count ? 30 : 0;
    }
    void Write(const std::string& bytes) {
        if (bytes.empty()) {
            return; // a file is not extended to the position by writing nothing
        }
        if (m_disk.size() < m_position + bytes.size()) {
            m_disk.resize(m_position + bytes.size(), '\0');
        }
        m_disk.replace(m_position, bytes.size(), bytes);
        m_position += bytes.size();
    }
    void To(long long offset, unsigned int origin) {
        const long long base = origin == 0   ? static_cast<long long>(m_position)
                               : origin == 1 ? 0
                                             : static_cast<long long>(m_disk.size());
        if (base + offset >= 0) {
            m_position = static_cast<unsigned long long>(base + offset);
        }
    }
    std::string& m_disk;
    unsigned long long m_position = 0;
};

// Bytes from a small alphabet rich in line ends, with now and then (when `longRuns`) a run long
// enough to cross the read-ahead.
std::string RandomBytes(std::mt19937& random, std::size_t count, bool longRuns = false) {
    static const char alphabet[] = {'a', 'b', ';', '\n', '\n', '\r', '\0', 'c', 'd', 'e'};
    std::string bytes(count, 'x');
    for (char& c : bytes) {
        c = alphabet[random() % sizeof(alphabet)];
    }
    if (longRuns && random() % 8 == 0) {
        bytes.insert(random() % (count + 1), std::string(17000 + random() % 9000, 'L'));
    }
    return bytes;
}

using FileReadAheadTest = TempDirTest;

} // namespace

TEST_F(FileReadAheadTest, CopiesSeeTheBytesOfByteAtATimeReading) {
    for (unsigned int seed = 1; seed <= 6; ++seed) {
        std::mt19937 random(seed);
        std::string disk = RandomBytes(random, 30000, true);
        const std::string path = MakeFile("data", disk);
        CByteModel model{disk};
        CZRB_File first;
        ASSERT_EQ(first.Open(path.c_str(), CZRB_File::OPEN_READ | CZRB_File::OPEN_WRITE), 0U);
        CZRB_File second(first);
        CZRB_File* const copies[] = {&first, &second};
        const int outside = open(path.c_str(), O_WRONLY); // the other handle
        ASSERT_GE(outside, 0);
        for (int step = 0; step < 2500; ++step) {
            CZRB_File& file = *copies[random() % 2];
            const unsigned int op = random() % 12;
            std::string got, want; // the call's results and text, and the model's
            switch (op) {
            case 0:
            case 1: { // the most common call
                CZRB_String line("unchanged");
                std::string text = "unchanged";
                got = std::to_string(file.ReadTextLine(line)); // before its text is read
                got += Str(line);
                want = std::to_string(model.ReadTextLine(text, -1, 24));
                want += text;
                break;
            }
            case 2: {
                const unsigned int maxChars = random() % 12;
                char buffer[16] = "unchanged";
                std::string text = "unchanged";
                got = std::to_string(file.ReadTextLine(buffer, maxChars));
                got += buffer;
                want = std::to_string(model.ReadTextLine(text, maxChars, 30));
                want += text;
                break;
            }
            case 3: {
                const unsigned int count = random() % 40;
                std::string bytes(count, '?'), expected;
                got = std::to_string(file.Read(&bytes[0], count));
                got += bytes;
                want = std::to_string(model.Read(expected, count));
                want += expected;
                want.resize(got.size(), '?'); // a short read leaves the rest untouched
                break;
            }
            case 4: {
                std::string bytes = RandomBytes(random, random() % 12);
                got = std::to_string(file.Write(&bytes[0], bytes.size(), random() % 2));
                want = "0";
                model.Write(bytes);
                break;
            }
            case 5: {
                const std::string text = RandomBytes(random, random() % 6);
                const unsigned int lineEnd = random() % 8;
                got = std::to_string(file.WriteTextLine(text.c_str(), lineEnd));
                want = "0";
                model.Write(std::string(text.c_str()) + (lineEnd & 1 ? "\0"s : "") +
                            (lineEnd & 4 ? "\r" : "") + (lineEnd & 2 ? "\n" : ""));
                break;
            }
            case 6: {
                const long long offset = static_cast<long long>(random() % 200) - 100;
                const unsigned int origin = random() % 3;
                got = std::to_string(file.To(static_cast<unsigned __int64>(offset), origin));
                want = "0";
                model.To(offset, origin);
                break;
            }
            case 7:
                got = std::to_string(file.GetPos()) + " " + std::to_string(file.IsEOF()) + " " +
                      std::to_string(file.GetLength());
                want = std::to_string(model.m_position) + " " +
                       std::to_string(model.m_position >= disk.size()) + " " +
                       std::to_string(disk.size());
                break;
            case 8: { // the other handle appends, once this stream has flushed
                file.Flush();
                const std::string bytes = RandomBytes(random, 1 + random() % 300, true);
                ASSERT_EQ(pwrite(outside, bytes.data(), bytes.size(), disk.size()),
                          static_cast<ssize_t>(bytes.size()));
                disk += bytes;
                break;
            }
            case 9: { // the other handle cuts the file short; a length query notices
                file.Flush();
                disk.resize(random() % (disk.size() + 1));
                ASSERT_EQ(ftruncate(outside, static_cast<off_t>(disk.size())), 0);
                got = std::to_string(copies[random() % 2]->GetLength());
                want = std::to_string(disk.size());
                break;
            }
            default: { // the other handle rewrites bytes; a seek notices
                file.Flush();
                const std::string bytes = RandomBytes(random, random() % 50);
                const std::size_t at = random() % (disk.size() + 1);
                ASSERT_EQ(pwrite(outside, bytes.data(), bytes.size(), static_cast<off_t>(at)),
                          static_cast<ssize_t>(bytes.size()));
                disk.resize(std::max(disk.size(), at + bytes.size()));
                disk.replace(at, bytes.size(), bytes);
                got = std::to_string(file.To(0, 0));
                want = "0";
                break;
            }
            }
            ASSERT_EQ(got, want) << "seed " << seed << " step " << step << " op " << op;
        }
        close(outside);
        first.Close();
        EXPECT_EQ(Contents(path), disk) << "seed " << seed;
    }
}
