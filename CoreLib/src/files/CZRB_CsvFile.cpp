#include "CZRB_CsvFile.h"

#include "CZRB_Exception.h"

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

// The result of CheckLines for a file that ReadFile rejects.
constexpr std::size_t kRejected = static_cast<std::size_t>(-1);

// Cuts `text` (the whole file) into lines as ReadTextLine reads them (zero bytes and CR
// dropped, LF ends a line) and each line into fields as ExtractTags splits it, counting the
// lines in lineCount as ReadFile does. The fields of the lines are left at the front of text,
// each ended by a zero byte. Returns the number of lines, or kRejected at a line that has
// another field count (lineCount includes it), at a last line of only zero bytes and CR, or
// when the file could not be read to its end (`complete` false; lineCount then counts the
// lines before the one that failed).
std::size_t CheckLines(std::string& text, bool complete, char separator, unsigned int fieldCount,
                       unsigned int& lineCount) {
    const bool openEnd = !text.empty() && text.back() != '\n';
    if (openEnd) {
        text += '\n'; // every line ends with LF from here on
    }
    char* const data = &text[0];
    const std::size_t size = text.size();
    // Most files hold no zero byte and no CR: then no byte of a line is dropped, and the line
    // is split where it stands (moved down only behind a line that ended in a separator).
    const bool nothingDropped =
        std::memchr(data, '\0', size) == nullptr && std::memchr(data, '\r', size) == nullptr;
    std::size_t kept = 0;
    std::size_t next = 0;
    while (next < size) {
        const std::size_t lineStart = kept;
        std::size_t separators = 0;
        if (nothingDropped) {
            const std::size_t length =
                static_cast<const char*>(std::memchr(data + next, '\n', size - next)) -
                (data + next);
            if (kept != next) {
                std::memmove(data + kept, data + next, length);
            }
            for (char *c = data + kept, *end = c + length; c != end; ++c) {
                const bool isSeparator = *c == separator;
                *c = isSeparator ? '\0' : *c;
                separators += isSeparator;
            }
            kept += length;
            next += length + 1;
        } else {
            // Without branches but for the line end: the byte is stored in any case and kept
            // by advancing past it, a separator stored as the zero byte that ends its field.
            for (char c; (c = data[next++]) != '\n';) {
                const bool isKept = (c != '\0') & (c != '\r');
                const bool isSeparator = (c == separator) & isKept;
                data[kept] = isSeparator ? '\0' : c;
                kept += isKept;
                separators += isSeparator;
            }
        }
        if (openEnd && next == size && (!complete || kept == lineStart)) {
            return kRejected;
        }
        ++lineCount;
        // As ExtractTags counts: an empty line has no field, and a trailing separator ends the
        // last field without starting another. Every field is left ended by a zero byte.
        std::size_t fields = 0;
        if (kept > lineStart) {
            const bool trailing = data[kept - 1] == '\0';
            fields = trailing ? separators : separators + 1;
            if (!trailing) {
                data[kept++] = '\0'; // over a byte consumed already: at least the LF
            }
        }
        if (fields != fieldCount) {
            return kRejected;
        }
    }
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
    std::string fields;
    const bool complete = ReadToEndFunction(fields);
    // Every line is checked before any record is made, so a rejected file costs no strings.
    const std::size_t lines = CheckLines(fields, complete, m_separator, m_fieldCount, lineCount);
    if (lines == kRejected) {
        return nullptr;
    }
    std::unique_ptr<CZRB_StringVector[]> records(new CZRB_StringVector[lines]);
    const char* text = fields.data();
    for (std::size_t i = 0; i < lines; ++i) {
        records[i].Create(m_fieldCount);
        CZRB_String* field = records[i].GetBuf();
        for (unsigned int k = 0; k < m_fieldCount; ++k, ++field) {
            *field = text; // fields hold no zero byte: each ends at its own
            text += field->GetLength() + 1;
        }
    }
    return records.release();
}
