/// @file
/// CZRB_FileBuffer: the binary stream over an open CZRB_File, writing or reading in whole
/// blocks through a cache of block-size bytes.
#ifndef CZRB_FILEBUFFER_H
#define CZRB_FILEBUFFER_H

#include "CZRB_Buffer.h"
#include "CZRB_File.h"

/// The binary stream over an open CZRB_File, writing or reading in whole blocks through a
/// cache of block-size bytes.
///
/// A file buffer goes one way at a time: attached for writing (ACCESS_WRITE) or for reading
/// (ACCESS_READ). The file stays owned by the caller and must outlive its attachment; the buffer
/// never opens or closes it. DeleteAll and ToEnd are not supported (code 8). Each copy has its
/// own cache and refers to the same file.
class LZRB_API CZRB_FileBuffer : public CZRB_Buffer {
public:
    /// Detached: size 0, end flag 1, access read-and-write, empty cache of blockSize bytes,
    /// position 0, last error 0.
    CZRB_FileBuffer(unsigned int blockSize = 1024);
    /// Copies every member; the copy gets its own cache holding the same bytes.
    CZRB_FileBuffer(const CZRB_FileBuffer& other);
    /// Copies every member into this buffer's own cache (see the copy constructor).
    CZRB_FileBuffer& operator=(const CZRB_FileBuffer& other);
    /// Close(), then frees the cache.
    virtual ~CZRB_FileBuffer();

    /// The stream's absolute position in bytes.
    unsigned __int64 GetAbsPosition() override;
    /// Reading only: seeks the file to its start, empties the cache, measures the size from the
    /// file's length and sets the position to 0. Throws CZRB_Exception 10 while writing. With no
    /// file attached nothing can be read afterwards (size 0).
    void ToStart() override;
    /// Appends through the cache; a cache that fills is written as one block and flushed when
    /// the block was written completely. Throws 30 when no file is attached, 23 while reading,
    /// 9 when the block size is 0 and count is not. A block the system refuses is not thrown:
    /// it sets the last error to 30, and the file's Close then returns 30.
    void AppendData(void* data, unsigned int count) override;
    /// Retrieves through the cache, refilling it one block at a time and recording each refill's
    /// outcome as the last error. Throws 24 while writing, 3 when position + count passes the
    /// size (nothing is read), 9 when the block size is 0 and count is not. Kept as shipped:
    /// refilling from the final partial block records 30 although the data is complete.
    void RetrieveData(void* data, unsigned int count) override;

    /// Attaches an open file for writing (ACCESS_WRITE) or reading (ACCESS_READ) and positions
    /// it at its start; for reading the size becomes the file's length. 10 when a file is
    /// already attached, 2 for any other access, 19 when the file is null or not open, 10 when
    /// the file was not opened for that direction; 0 on success. Nothing changes on failure.
    virtual unsigned int AttachFile(CZRB_File* file, t_Access access);
    /// When writing, writes the cached bytes in one write and flushes when all were written
    /// (a refusal sets the last error to 30); then detaches. Access and size are kept.
    virtual void Close();
    /// Detaches without writing anything. Access and size are kept.
    virtual void Abort();

    /// The outcome of the last cache refill: 0 a full block, 30 a shorter read, 19 no stream;
    /// also 30 after a block write or flush that the system refused.
    unsigned __int64 GetLastError() const;

protected:
    /// Copies every member; the cache bytes are duplicated into this buffer's own cache.
    void DataCopy(const CZRB_FileBuffer& other);

private:
    /// Reads the next block of the file into the cache and records the outcome.
    void RefillCache();
    /// Writes the first count cache bytes to the file and flushes; a failure sets last error 30.
    void WriteCache(unsigned __int64 count);
    /// Throws CZRB_Exception 9 when there is data to move but the cache has no room.
    void CheckBlockSize(unsigned int count);

    unsigned __int64 m_cacheOffset; ///< writing: bytes waiting; reading: next unread cache byte
    unsigned __int64 m_position;
    unsigned char* m_cache;
    CZRB_File* m_file;
    unsigned __int64 m_lastError;
};

#endif
