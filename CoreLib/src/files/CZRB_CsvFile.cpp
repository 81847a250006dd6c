#include "CZRB_CsvFile.h"

#include "CZRB_Exception.h"
#include "text/TagSplit.h"

#include <cstring>
#include <memory>
#include <string>

namespace {

// Closes the file when a read ends, whichever way it ends.
class CCloseOnExit {
public:
    explicit CCloseOnExit(CZRB_CsvFile& file) : m_file(file) {}
    ~CCloseOnExit() { m_file.Close(); }
    CCloseOnExit(const CCloseOnExit&) = delete;
    CCloseOnExit& operator=(const CCloseOnExit&) = delete;

private:
    CZRB_CsvFile& m_file;
};

// Appends the text written for `field`: enclosed in double quotes when it holds the
// separator, else unchanged (the FormatField rule).
void AppendField(std::string& line, const CZRB_String& field, char separator) {
    const char* text = field.GetStringC();
    const std::size_t length = field.GetLength();
    const bool quoted = std::memchr(text, separator, length) != nullptr;
    if (quoted) {
        line += '"';
    }
    line.append(text, length);
    if (quoted) {
        line += '"';
    }
}

// Drops the zero bytes and CR of text[begin, end) by moving the runs of other bytes down to
// `to`, as ReadTextLine drops them; returns the end of the bytes kept.
std::size_t SqueezeLine(std::string& text, std::size_t begin, std::size_t end, std::size_t to) {
    char* const data = &text[0];
    auto find = [data, end](std::size_t from, int byte) {
        const void* found = std::memchr(data + from, byte, end - from);
        return found != nullptr ? static_cast<std::size_t>(static_cast<const char*>(found) - data)
                                : end;
    };
    std::size_t zero = find(begin, 0);
    std::size_t cr = find(begin, '\r');
    std::size_t run = begin;
    while (true) {
        const std::size_t runEnd = zero < cr ? zero : cr;
        if (to != run) {
            std::memmove(data + to, data + run, runEnd - run);
        }
        to += runEnd - run;
        if (runEnd == end) {
            return to;
        }
        run = runEnd + 1;
        zero = zero < run ? find(run, 0) : zero;
        cr = cr < run ? find(run, '\r') : cr;
    }
}

// The result of CheckLines for a file that ReadFile rejects.
constexpr std::size_t kRejected = static_cast<std::size_t>(-1);

// Cuts `text` (the whole file) into lines the way ReadTextLine reads them and checks that each
// splits into fieldCount fields, counting the lines in lineCount as ReadFile does. The checked
// lines are left at the front of text, squeezed and each ended by LF. Returns their number, or
// kRejected at a line with another field count (lineCount includes it), at a last line of only
// zero bytes and CR, or when the file could not be read to its end (`complete` false;
// lineCount then counts the lines before the failed one).
std::size_t CheckLines(std::string& text, bool complete, char separator, unsigned int fieldCount,
                       unsigned int& lineCount) {
    const bool openEnd = !text.empty() && text.back() != '\n';
    if (openEnd) {
        text += '\n';
    }
    std::size_t kept = 0;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const auto* feed =
            static_cast<const char*>(std::memchr(&text[begin], '\n', text.size() - begin));
        const auto end = static_cast<std::size_t>(feed - text.data());
        const std::size_t lineStart = kept;
        kept = SqueezeLine(text, begin, end, kept);
        if (openEnd && end + 1 == text.size() && (!complete || kept == lineStart)) {
            return kRejected;
        }
        ++lineCount;
        if (ZRB_Detail::CountTags(&text[lineStart], kept - lineStart, separator) != fieldCount) {
            return kRejected;
        }
        text[kept++] = '\n';
        begin = end + 1;
    }
    text.resize(kept);
    return complete ? lineCount : kRejected;
}

} // namespace

CZRB_CsvFile::CZRB_CsvFile(unsigned int fieldCount, char separator, unsigned int lineEnd)
    : m_fieldCount(fieldCount), m_separator(separator), m_lineEnd(lineEnd) {
    if (fieldCount == 0) {
        throw CZRB_Exception(2, nullptr, 0);
    }
}

CZRB_CsvFile::CZRB_CsvFile(const CZRB_CsvFile& other)
    : CZRB_File(other), m_fieldCount(other.m_fieldCount), m_separator(other.m_separator),
      m_lineEnd(other.m_lineEnd) {}

CZRB_CsvFile& CZRB_CsvFile::operator=(const CZRB_CsvFile& other) {
    DataCopy(other);
    return *this;
}

// The stream is shared with copies: this object flushes it and gives up its share, and the
// last owner closes it (in the CZRB_File part).
CZRB_CsvFile::~CZRB_CsvFile() {
    if (IsOpen()) {
        Flush();
    }
}

void CZRB_CsvFile::DataCopy(const CZRB_CsvFile& other) {
    if (this == &other) {
        return;
    }
    CZRB_File::DataCopy(other);
    m_fieldCount = other.m_fieldCount;
    m_separator = other.m_separator;
    m_lineEnd = other.m_lineEnd;
}

unsigned int CZRB_CsvFile::Open(const CZRB_String& path, unsigned int flags) {
    return CZRB_File::Open(path, flags);
}

void CZRB_CsvFile::Close() {
    CZRB_File::Close();
}

CZRB_String CZRB_CsvFile::FormatField(const CZRB_String& field) {
    unsigned int position = 0;
    if (!field.FindFromBegin(m_separator, &position, 0)) {
        return field;
    }
    return CZRB_String('"') + field + '"';
}

unsigned int CZRB_CsvFile::WriteRecord(CZRB_StringVector& record) {
    if (record.GetLength() != m_fieldCount) {
        return 2;
    }
    std::string line;
    for (unsigned int i = 0; i < m_fieldCount; ++i) {
        if (i != 0) {
            line += m_separator;
        }
        AppendField(line, record[i], m_separator);
    }
    return CZRB_File::WriteTextLine(line.c_str(), m_lineEnd);
}

unsigned int CZRB_CsvFile::WriteRecord(CZRB_StringList& record) {
    if (record.GetLength() != m_fieldCount) {
        return 2;
    }
    std::string line;
    record.ToStart();
    for (unsigned int i = 0; i < m_fieldCount; ++i) {
        if (i != 0) {
            line += m_separator;
        }
        AppendField(line, record.Next(1), m_separator);
    }
    return CZRB_File::WriteTextLine(line.c_str(), m_lineEnd);
}

CZRB_StringVector* CZRB_CsvFile::ReadFile(const CZRB_String& path, unsigned int& lineCount) {
    if (Open(path, OPEN_READ) != 0) {
        return nullptr;
    }
    CCloseOnExit closer(*this);
    lineCount = 0;
    std::string text;
    const bool complete = ReadToEndFunction(text);
    // Every line is checked before any record is made, so a rejected file costs no strings.
    const std::size_t lines = CheckLines(text, complete, m_separator, m_fieldCount, lineCount);
    if (lines == kRejected) {
        return nullptr;
    }
    std::unique_ptr<CZRB_StringVector[]> records(new CZRB_StringVector[lines]);
    char* line = &text[0];
    for (std::size_t i = 0; i < lines; ++i) {
        char* const end = static_cast<char*>(
            std::memchr(line, '\n', static_cast<std::size_t>(text.data() + text.size() - line)));
        CZRB_StringVector& record = records[i];
        record.Create(m_fieldCount);
        CZRB_String* field = record.GetBuf();
        // Each field is ended in place by a zero byte over its separator or line feed.
        ZRB_Detail::ForEachTag(line, static_cast<std::size_t>(end - line), m_separator,
                               [&field](char* begin, std::size_t count) {
                                   begin[count] = '\0';
                                   *field++ = begin;
                               });
        line = end + 1;
    }
    return records.release();
}
