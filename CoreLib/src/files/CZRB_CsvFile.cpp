#include "CZRB_CsvFile.h"

#include "CZRB_Exception.h"

#include <deque>
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

// Appends the text of `field` (all its characters) to `line`.
void AppendText(std::string& line, const CZRB_String& field) {
    line.append(field.GetStringC(), field.GetLength());
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
        AppendText(line, FormatField(record[i]));
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
        AppendText(line, FormatField(record.Next(1)));
    }
    return CZRB_File::WriteTextLine(line.c_str(), m_lineEnd);
}

CZRB_StringVector* CZRB_CsvFile::ReadFile(const CZRB_String& path, unsigned int& lineCount) {
    if (Open(path, OPEN_READ) != 0) {
        return nullptr;
    }
    CCloseOnExit closer(*this);
    lineCount = 0;
    std::deque<CZRB_StringVector> records;
    CZRB_String line;
    while (GetPos() < GetLength()) {
        if (ReadTextLine(line) != 0) {
            return nullptr;
        }
        records.emplace_back();
        line.ExtractTags(m_separator, records.back());
        ++lineCount;
        if (records.back().GetLength() != m_fieldCount) {
            return nullptr;
        }
    }
    std::unique_ptr<CZRB_StringVector[]> result(new CZRB_StringVector[lineCount]);
    for (unsigned int i = 0; i < lineCount; ++i) {
        result[i] = records.front();
        records.pop_front();
    }
    return result.release();
}
