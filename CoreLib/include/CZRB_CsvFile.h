/// @file
/// CZRB_CsvFile: delimiter-separated text files whose records all have the same number of
/// fields.
#ifndef CZRB_CSVFILE_H
#define CZRB_CSVFILE_H

#include "CZRB_File.h"
#include "CZRB_String.h"

/// Delimiter-separated text files whose records all have the same number of fields.
///
/// A CZRB_File used through a restricted interface. Writing encloses a field that contains the
/// separator in double quotes and escapes nothing else; reading splits every line at each
/// separator with no quote handling at all. Kept as shipped: a quoted field that holds the
/// separator therefore comes back split, and such a file is rejected by ReadFile whenever the
/// split changes the field count.
class LZRB_API CZRB_CsvFile : protected CZRB_File {
public:
    /// A closed file whose records have fieldCount fields, split by `separator`, each followed
    /// by the line end `lineEnd` (CZRB_File::LINE_END_* flags). Throws CZRB_Exception 2 with a
    /// null object when fieldCount is 0.
    CZRB_CsvFile(unsigned int fieldCount = 1, char separator = ',',
                 unsigned int lineEnd = CZRB_File::LINE_END_CR | CZRB_File::LINE_END_LF);
    /// Shares the stream of `other` (as CZRB_File copies do) and copies its settings.
    CZRB_CsvFile(const CZRB_CsvFile& other);
    /// Shares the stream of `other` (as CZRB_File copies do) and copies its settings.
    CZRB_CsvFile& operator=(const CZRB_CsvFile& other);
    /// Flushes an open stream; the stream is closed once no copy refers to it.
    virtual ~CZRB_CsvFile();

    /// CZRB_File::Open: the same flags and result codes.
    unsigned int Open(const CZRB_String& path, unsigned int flags);
    /// CZRB_File::Close.
    void Close();

    /// Writes the record as one line: each field formatted by FormatField, separators between
    /// the fields, then the line end; the line reaches the system before the call returns. 2
    /// without writing when the record does not have exactly the field count; otherwise the
    /// result of CZRB_File::WriteTextLine (0, 19 closed, 30 when the system refused the line).
    unsigned int WriteRecord(CZRB_StringVector& record);
    /// The same for a list; the list is walked with its cursor from the first item (the cursor is
    /// moved by the call).
    unsigned int WriteRecord(CZRB_StringList& record);

    /// Reads the whole file: one vector of fields per line (CR and zero bytes dropped, LF ends a
    /// line, split at every separator, a trailing separator adds no empty field). Returns an
    /// array from new[] of lineCount vectors, released by the caller with delete[]; an empty file
    /// gives a valid empty array and lineCount 0. Returns null when the file cannot be opened
    /// (lineCount untouched), when a line cannot be read (lineCount: the lines read before it) or
    /// when a line has another number of fields (lineCount: that line's 1-based number). The
    /// file is closed in every case once it was opened.
    CZRB_StringVector* ReadFile(const CZRB_String& path, unsigned int& lineCount);

protected:
    /// The text written for one field: enclosed in double quotes when it contains the
    /// separator, else unchanged. Nothing else is escaped.
    CZRB_String FormatField(const CZRB_String& field);
    /// Copies the CZRB_File part (sharing the stream) and the three settings.
    void DataCopy(const CZRB_CsvFile& other);

private:
    unsigned int m_fieldCount;
    char m_separator;
    unsigned int m_lineEnd;
};

#endif
