/// @file
/// CZRB_Buffer: the abstract binary stream of the library.
#ifndef CZRB_BUFFER_H
#define CZRB_BUFFER_H

#include "CZRB_Object.h"

/// The abstract binary stream of the library.
///
/// Bytes are appended at and retrieved from a current position. The base class fixes the one
/// encoding of every primitive value (fixed width, least significant byte first whatever the
/// host, no tags, no alignment) and the access and range checks; derived streams (memory,
/// file) move the data by overriding the six operations GetAbsPosition .. RetrieveData. The
/// primitive operators are never overridden: they always reach the data through AppendData
/// and RetrieveData. Every failure throws CZRB_Exception with the stream as object, detail 0.
class LZRB_API CZRB_Buffer : public CZRB_Object {
public:
    /// Access mode of a stream: ACCESS_WRITE writing only, ACCESS_READ reading only,
    /// ACCESS_READ_WRITE both.
    enum t_Access : int { ACCESS_WRITE = 0, ACCESS_READ = 1, ACCESS_READ_WRITE = 2 };

    /// Size 0, end flag 1, access ACCESS_READ_WRITE; the block size is only stored here.
    explicit CZRB_Buffer(unsigned int blockSize = 1024);
    /// Copies size, end flag, block size and access.
    CZRB_Buffer(const CZRB_Buffer& other);
    /// Copies size, end flag, block size and access; returns this stream.
    CZRB_Buffer& operator=(const CZRB_Buffer& other);
    /// Does nothing here; derived streams release their data.
    virtual ~CZRB_Buffer();

    /// Current position in bytes from the start of the data. Base: throws 8.
    virtual unsigned __int64 GetAbsPosition();
    /// Discards all data. Base: throws 8.
    virtual void DeleteAll();
    /// Moves to the first byte. Base: throws 8.
    virtual void ToStart();
    /// Moves to the end. Base: throws 8.
    virtual void ToEnd();
    /// Writes count bytes at the current position. Base: throws 23 unless the access allows
    /// writing, else writes nothing (derived streams call this check first).
    virtual void AppendData(void* data, unsigned int count);
    /// Reads count bytes into data. Base: throws 24 unless the access allows reading, then 3
    /// when position + count passes the size (reading exactly up to the size is allowed);
    /// reads nothing itself. No state changes before a throw.
    virtual void RetrieveData(void* data, unsigned int count);

    /// Writes nothing: the pointer form is a deliberate no-op.
    virtual CZRB_Buffer& operator<<(void* value);
    /// Writes the 8 bytes of the IEEE 754 pattern, least significant first.
    virtual CZRB_Buffer& operator<<(double value);
    /// Writes the 4 bytes of the IEEE 754 pattern, least significant first.
    virtual CZRB_Buffer& operator<<(float value);
    /// Writes 8 bytes, least significant first.
    virtual CZRB_Buffer& operator<<(__int64 value);
    /// Writes 4 bytes, least significant first.
    virtual CZRB_Buffer& operator<<(int value);
    /// Writes 2 bytes, least significant first.
    virtual CZRB_Buffer& operator<<(short value);
    /// Writes the byte as it is.
    virtual CZRB_Buffer& operator<<(signed char value);
    /// Writes 8 bytes, least significant first.
    virtual CZRB_Buffer& operator<<(unsigned __int64 value);
    /// Writes 4 bytes, least significant first.
    virtual CZRB_Buffer& operator<<(unsigned int value);
    /// Writes 2 bytes, least significant first.
    virtual CZRB_Buffer& operator<<(unsigned short value);
    /// Writes the byte as it is.
    virtual CZRB_Buffer& operator<<(unsigned char value);
    /// Writes the byte as it is.
    virtual CZRB_Buffer& operator<<(char value);

    /// Reads nothing: the pointer form is a deliberate no-op.
    virtual CZRB_Buffer& operator>>(void* value);
    /// Reads 8 bytes as an IEEE 754 double; throws 24 or 3 as RetrieveData does.
    virtual CZRB_Buffer& operator>>(double& value);
    /// Reads 4 bytes as an IEEE 754 single; throws 24 or 3 as RetrieveData does.
    virtual CZRB_Buffer& operator>>(float& value);
    /// Reads 8 bytes; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(__int64& value);
    /// Reads 4 bytes; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(int& value);
    /// Reads 2 bytes; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(short& value);
    /// Reads 1 byte; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(signed char& value);
    /// Reads 8 bytes; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(unsigned __int64& value);
    /// Reads 4 bytes; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(unsigned int& value);
    /// Reads 2 bytes; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(unsigned short& value);
    /// Reads 1 byte; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(unsigned char& value);
    /// Reads 1 byte; the value is untouched when the read throws.
    virtual CZRB_Buffer& operator>>(char& value);

    /// Writes a long as the 8-byte __int64 form (so int64_t and ssize_t stream unambiguously).
    CZRB_Buffer& operator<<(long value);
    /// Writes an unsigned long as the 8-byte unsigned __int64 form (uint64_t, size_t).
    CZRB_Buffer& operator<<(unsigned long value);
    /// Reads the 8-byte __int64 form into a long.
    CZRB_Buffer& operator>>(long& value);
    /// Reads the 8-byte unsigned __int64 form into an unsigned long.
    CZRB_Buffer& operator>>(unsigned long& value);

    /// Number of data bytes the stream holds.
    unsigned __int64 GetSize() const;
    /// 1 when the position is at or beyond the size, else 0.
    unsigned char IsEnd() const;
    /// The block size given to the constructor.
    unsigned int GetBlockSize() const;
    /// The access mode.
    t_Access GetAccess() const;

protected:
    /// Copies the four stream members.
    void DataCopy(const CZRB_Buffer& other);
    /// Sets the end flag from the current position against the size.
    void UpdateEndFunction();

    /// Throws 8 (not supported): the shared body of the base positioning operations.
    [[noreturn]] void NotSupportedFunction() const;

    unsigned __int64 m_size;  ///< data bytes the stream holds
    unsigned char m_isEnd;    ///< 1 when the position is at or beyond the size
    unsigned int m_blockSize; ///< the block size given to the constructor
    t_Access m_access;        ///< the access mode
};

#endif
