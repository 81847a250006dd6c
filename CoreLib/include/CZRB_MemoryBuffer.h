/// @file
/// CZRB_MemoryBuffer: the stream of CZRB_Buffer kept in memory as a chain of fixed-size
/// blocks, so that appending never moves bytes already written.
#ifndef CZRB_MEMORYBUFFER_H
#define CZRB_MEMORYBUFFER_H

#include "CZRB_Buffer.h"
#include "CZRB_List.h"
#include "CZRB_Uint8Vector.h"

/// The stream of CZRB_Buffer kept in memory as a chain of fixed-size blocks, so that
/// appending never moves bytes already written.
///
/// Every block is a byte vector of exactly the block size. The position is
/// block index * block size + block offset. The stream is meant to be written sequentially from
/// the start (or after DeleteAll) and read after ToStart. Failures throw CZRB_Exception with
/// detail 0: 23, 24 and 3 with the stream as object, 9 (block size 0) with the new block, 5 (no
/// first, last or next block) with the block list.
class LZRB_API CZRB_MemoryBuffer : public CZRB_Buffer {
public:
    /// The chain of blocks; its cursor marks the current block.
    class LZRB_API CBlockList : public CZRB_List<CZRB_Uint8Vector> {
    public:
        /// No blocks.
        CBlockList();
        /// Duplicates every block.
        CBlockList(const CBlockList& other);
        /// Duplicates every block (the list has no cheaper transfer); other is unchanged.
        CBlockList(CBlockList&& other);
        /// Duplicates every block of other (the list assignment rules apply).
        CBlockList& operator=(const CBlockList& other);
        /// Frees every block.
        virtual ~CBlockList();
    };

    /// Size 0, end flag 1, access ACCESS_READ_WRITE, no blocks, offset 0, index 0.
    explicit CZRB_MemoryBuffer(unsigned int blockSize = 1024);
    /// Copies the stream and position members and duplicates every block. The copy's current
    /// block is its own duplicate of the source's current block.
    CZRB_MemoryBuffer(const CZRB_MemoryBuffer& other);
    /// As the copy constructor; returns this stream.
    CZRB_MemoryBuffer& operator=(const CZRB_MemoryBuffer& other);
    /// Frees all blocks.
    virtual ~CZRB_MemoryBuffer();

    /// block index * block size + block offset, in 64 bits.
    unsigned __int64 GetAbsPosition() override;
    /// Frees all blocks: size 0, end flag 1, offset 0, index 0, no current block.
    void DeleteAll() override;
    /// Position 0 on the first block (none without blocks); end flag from position and size.
    void ToStart() override;
    /// Kept as shipped: moves to the end of the last block's room (block count * block size),
    /// not behind the last byte written, so an append after ToEnd on a partly filled last
    /// block starts in a new block and leaves the unwritten rest inside the stream's bytes.
    void ToEnd() override;
    /// Writes count bytes (23 unless writable). The first write creates the first block (9
    /// when the block size is 0). A block that becomes exactly full gets an empty successor at
    /// once, and a write that crosses a block boundary always continues in a block appended at
    /// the end of the chain. Every append adds count to the size; the end flag becomes 1.
    void AppendData(void* data, unsigned int count) override;
    /// Reads count bytes (24 unless readable, 3 past the size, nothing read then). Reading to
    /// the end of a block moves on to the next one (5 when there is none).
    void RetrieveData(void* data, unsigned int count) override;

    /// Number of blocks in the chain.
    unsigned int GetBlockCount() const;

protected:
    /// Copies the stream members and the positions and duplicates the blocks.
    void DataCopy(const CZRB_MemoryBuffer& other);

private:
    /// Appends a block of block-size bytes at the end of the chain and returns it.
    CZRB_Uint8Vector* AppendBlockFunction();
    /// AppendData beyond the common case: the first block, and chunks that complete blocks.
    void AppendChunksFunction(const unsigned char* source, unsigned int count);
    /// RetrieveData beyond the common case (checks done): chunks that reach a block's end.
    void RetrieveChunksFunction(unsigned char* target, unsigned int count);
    /// Takes as current block the own block at the list position of other's current block.
    void AdoptCurrentFunction(const CZRB_MemoryBuffer& other);

    unsigned int m_blockOffset;
    CZRB_Uint8Vector* m_currentBlock;
    unsigned int m_blockIndex;
    CBlockList m_blocks;
};

#endif
