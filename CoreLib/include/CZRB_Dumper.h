/// @file
/// CZRB_Dumper: a one-line text sink for debugging output on the process's standard output.
#ifndef CZRB_DUMPER_H
#define CZRB_DUMPER_H

#include "LZRB_Export.h"
#include "ZRB.h"

class CZRB_String;

/// A one-line text sink for debugging output on the process's standard output.
///
/// Every insertion is written at once with the standard output stream's own formatting, with
/// no separator; a dumper that wrote anything ends the line when it is destroyed. Meant to be
/// used as a temporary: CZRB_Dumper() << "count " << n;
class LZRB_API CZRB_Dumper {
public:
    /// Level 2, nothing written yet.
    CZRB_Dumper();
    /// `level` 0, 1 or 2 is kept; any other value, read as a signed 32-bit number, becomes 2.
    explicit CZRB_Dumper(int level);
    /// Copies the level and the written flag.
    CZRB_Dumper(const CZRB_Dumper& other);
    /// Copies the level and the written flag; returns *this.
    CZRB_Dumper& operator=(const CZRB_Dumper& other);
    /// Ends the line (end of line and flush) when anything was written; otherwise writes
    /// nothing. Not virtual, by design.
    ~CZRB_Dumper();

    /// The detail level 0..2; stored and copied, but consulted by no operation.
    unsigned int GetLevel() const { return m_Level; }

    /// Writes `value` in the stream's current notation (by default 6 significant digits).
    virtual CZRB_Dumper& operator<<(double value);
    /// Writes the zero-terminated text; a null pointer writes nothing but still counts as an
    /// insertion.
    virtual CZRB_Dumper& operator<<(const char* text);
    /// Writes `value` as an unsigned decimal number.
    virtual CZRB_Dumper& operator<<(unsigned __int64 value);
    /// Writes `value` as a signed decimal number.
    virtual CZRB_Dumper& operator<<(__int64 value);
    /// Writes `value` as an unsigned decimal number.
    virtual CZRB_Dumper& operator<<(unsigned int value);
    /// Writes `value` as a signed decimal number.
    virtual CZRB_Dumper& operator<<(int value);
    /// Writes the string up to its first zero byte.
    virtual CZRB_Dumper& operator<<(const CZRB_String& text);

    /// Forwards to the signed 64-bit insertion, so int64_t and long values are not ambiguous.
    CZRB_Dumper& operator<<(long value) { return *this << static_cast<__int64>(value); }
    /// Forwards to the unsigned 64-bit insertion, so uint64_t and size_t values are not
    /// ambiguous.
    CZRB_Dumper& operator<<(unsigned long value) {
        return *this << static_cast<unsigned __int64>(value);
    }

protected:
    /// Copies the level and the written flag.
    void DataCopy(const CZRB_Dumper& other);

private:
    unsigned int m_Level;
    unsigned char m_Written;
};

#endif
