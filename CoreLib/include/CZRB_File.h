/// @file
/// CZRB_File: owner of one runtime file stream in binary mode, with its path.
#ifndef CZRB_FILE_H
#define CZRB_FILE_H

#include "CZRB_Object.h"
#include "CZRB_String.h"

#include <memory>
#include <string>

/// Owner of one runtime file stream in binary mode, with its path.
///
/// Every operation but CopyFile reports its outcome as an unsigned result code, 0 for success:
/// - 1  Open or CopyFile could not open a file, or Open was given neither read nor write
/// - 2  To given an origin outside 0..2
/// - 19 no stream is open (most operations); also a failed flush
/// - 24 ReadTextLine into a CZRB_String: no stream, empty file, or nothing left to read
/// - 30 input/output failed: short read or write, failed delete, ReadTextLine into a character
///   buffer with no stream, an empty file or nothing left to read
///
/// Copies share one stream. The stream is reference-counted: it is flushed and closed when the
/// last object that refers to it goes away, never twice (a stream that a second Open replaced
/// without Close is left open, see Open). Close on any copy closes the shared stream for all
/// of them; the others then report a closed file (19).
///
/// Reading goes through a read-ahead that belongs to the shared stream, so every copy and every
/// mix of reads, writes and seeks sees the bytes, positions and lengths of reading one byte at
/// a time. Bytes another handle appends are always read. When another handle cuts the file
/// short, GetLength and IsEOF report the new length and drop what was read ahead past it; bytes
/// it rewrites within the read-ahead (at most 16 KiB past the position) are read afresh after
/// the next seek or write on any copy.
///
/// Written bytes that the system refuses are never reported as written: every call that flushes
/// returns its failure code, and Close returns 30 once any written byte was lost since Open.
///
/// Paths: the full path is the absolute path against the current directory, with "." and ".."
/// resolved lexically, and at most 4095 characters. Only the backslash separates the name from
/// its folder in GetNameFromPath and GetPathFromPath; a forward slash is an ordinary character.
class LZRB_API CZRB_File : public CZRB_Object {
public:
    /// @name Open flags, combined by OR
    /// @{
    static constexpr unsigned int OPEN_WRITE = 0x1;  ///< open for writing
    static constexpr unsigned int OPEN_READ = 0x2;   ///< open for reading
    static constexpr unsigned int OPEN_CREATE = 0x4; ///< start from an empty file
    /// @}
    /// @name Line-end flags of WriteTextLine; the bytes are written NUL, CR, LF in that order
    /// @{
    static constexpr unsigned int LINE_END_NUL = 0x1; ///< a zero byte
    static constexpr unsigned int LINE_END_LF = 0x2;  ///< a line feed
    static constexpr unsigned int LINE_END_CR = 0x4;  ///< a carriage return
    /// @}

    /// Closed, flags 0, empty name.
    CZRB_File();
    /// Shares the stream of `other` and copies its flags and name.
    CZRB_File(const CZRB_File& other);
    /// Gives up this object's share of its stream, then shares the stream of `other`.
    CZRB_File& operator=(const CZRB_File& other);
    /// Flushes an open stream and gives up this object's share; the last owner closes it.
    virtual ~CZRB_File();

    /// Opens `path`: read+write+create "w+b", read+write "r+b", write+create "wb", write alone
    /// "ab" (append), read alone "rb" (create ignored). 1 when neither read nor write is given or
    /// the file cannot be opened, a folder included (the object is then unchanged); else
    /// positions at the start,
    /// stores flags and path, 0. Kept as shipped: a stream already open is not closed by this
    /// call and stays open (the caller closes first); copies that share it keep using it.
    unsigned int Open(const CZRB_String& path, unsigned int flags);
    /// Flushes and closes an open stream (for every copy sharing it); flags become 0, the name
    /// stays. 30 when the final flush or the close failed or written bytes were lost since
    /// Open (the stream is closed all the same), else 0.
    unsigned int Close();
    /// 1 when a stream is open.
    unsigned char IsOpen() const;
    /// The flags of the last successful Open; 0 after Close.
    unsigned int GetOpenFlags() const;

    /// Seeks to offset 0 from the start. 19 if closed. Kept as shipped: a failed seek reports 0.
    unsigned int ToStart();
    /// Seeks to offset 0 from the end. 19 if closed. Kept as shipped: a failed seek reports 0.
    unsigned int ToEnd();
    /// Seeks by `offset` (taken as signed 64-bit) from origin 0 current, 1 start, 2 end. 19 if
    /// closed, 2 for another origin. Kept as shipped: a failed seek reports 0.
    unsigned int To(unsigned __int64 offset, unsigned int origin);
    /// The current position; 0 if closed or when the position cannot be told.
    unsigned __int64 GetPos() const;
    /// The file length measured by seeking to the end and back; 0 if closed.
    unsigned __int64 GetLength() const;
    /// 1 when the position is at or beyond the length (a closed file is at its end).
    unsigned char IsEOF() const;
    /// Hands written bytes to the system: 19 if closed or if the flush fails, else 0.
    unsigned int Flush();

    /// One write of the low 32 bits of `length` bytes; flushes when `flush` is non-zero. 19 if
    /// closed; 30 if fewer bytes were written, the flush failed or the high 32 bits of `length`
    /// are non-zero (the write has then already happened). Without flush the bytes may wait in
    /// the stream, and a failure shows in a later flush or Close.
    unsigned int Write(void* data, unsigned __int64 length, unsigned char flush);
    /// One read of the low 32 bits of `length` bytes. 19 if closed; 30 if fewer bytes came or
    /// the high 32 bits of `length` are non-zero.
    unsigned int Read(void* data, unsigned __int64 length);

    /// Reads one line into `buffer` (room for maxChars + 1 bytes): zero bytes and CR are
    /// dropped, LF ends the line, at most maxChars characters are stored (the rest of a longer
    /// line is left for the next call) and the text is zero-terminated. 0 when a line was read;
    /// 30 when closed, the file is empty, nothing was left to read, a read failed or `buffer` is
    /// null (the buffer is then untouched).
    unsigned int ReadTextLine(char* buffer, unsigned int maxChars);
    /// Reads one line of any length into `line` by the same byte rules. 0 when a line was read
    /// (LF right away gives an empty line); 24 when closed, the file is empty or nothing was left
    /// to read; 30 when a read failed. `line` is changed only on success.
    unsigned int ReadTextLine(CZRB_String& line);

    /// Writes the text without terminator in one write, then flushes. An empty (or null) text
    /// writes nothing and gives 0; else 19 if closed, 30 if the write or the flush failed.
    unsigned int WriteText(const char* text);
    /// WriteText of the string's characters up to its first zero byte.
    unsigned int WriteText(const CZRB_String& text);
    /// Writes the text (as WriteText), then the line end bytes in this fixed order: a zero byte
    /// (LINE_END_NUL), CR (LINE_END_CR), LF (LINE_END_LF). So 0x6 gives CR LF. The whole line
    /// reaches the system before the call returns, with one flush. 0 when nothing is to be
    /// written (empty text, no line end); else 19 if closed, 30 if a write or the flush failed
    /// (a text not written completely gets no line end).
    unsigned int WriteTextLine(const char* text, unsigned int lineEnd);
    /// Forwards to WriteTextLine(text.GetStringC(), lineEnd).
    unsigned int WriteTextLine(const CZRB_String& text, unsigned int lineEnd);

    /// GetNameFromPath of the stored name.
    CZRB_String GetName() const;
    /// GetPathFromPath of the stored name.
    CZRB_String GetPath() const;
    /// GetFullPathFromPath of the stored name.
    CZRB_String GetFullPath() const;

    /// 1 when the path's status can be read (the file or folder exists).
    static unsigned char IsPresent(const CZRB_String& path);
    /// Removes the file; 30 if that fails, else 0.
    static unsigned int DeleteFile(const CZRB_String& path);
    /// Copies `source` to `destination` (created or truncated) in blocks of blockSize bytes,
    /// flushing after each. 1 if either file cannot be opened, 30 on a short read or write, else
    /// 0; a folder as either path gives 1, a flush or close of the copy that fails gives 30.
    /// Throws CZRB_Exception 9 (zero size) for blockSize 0, after both files were opened
    /// (the destination is then empty); both files are closed in every case.
    static unsigned int CopyFile(const CZRB_String& destination, const CZRB_String& source,
                                 unsigned int blockSize);
    /// The absolute path against the current directory, "." and ".." resolved lexically, a
    /// trailing "/" kept; the file need not exist. Empty for an empty path, when the current
    /// directory is unknown, or when the result would be longer than 4095 characters.
    static CZRB_String GetFullPathFromPath(const CZRB_String& path);
    /// The full path's characters after its last backslash (all of it when there is none).
    static CZRB_String GetNameFromPath(const CZRB_String& path);
    /// The full path up to and including its last backslash (empty when there is none).
    static CZRB_String GetPathFromPath(const CZRB_String& path);

protected:
    /// Shares the stream of `other` and copies its flags and name.
    void DataCopy(const CZRB_File& other);
    /// Appends every byte from the position to the end of the file to `bytes` and leaves the
    /// position there. false when no stream is open or a read failed (the bytes before the
    /// failure are appended).
    bool ReadToEndFunction(std::string& bytes);

private:
    struct CStream;
    std::shared_ptr<CStream> m_stream; ///< null or shared with copies; its FILE* null once closed
    unsigned int m_openFlags;
    CZRB_String m_name;
};

#endif
