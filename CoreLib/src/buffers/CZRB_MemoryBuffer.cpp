#include "CZRB_MemoryBuffer.h"

#include "CZRB_Exception.h"

#include <cstring>

namespace {

// memcpy, with the widths of the primitive encodings copied inline.
inline void CopyBytes(unsigned char* target, const unsigned char* source, unsigned int count) {
    switch (count) {
    case 1:
        *target = *source;
        break;
    case 2:
        std::memcpy(target, source, 2);
        break;
    case 4:
        std::memcpy(target, source, 4);
        break;
    case 8:
        std::memcpy(target, source, 8);
        break;
    case 0:
        break; // either pointer may be null then
    default:
        std::memcpy(target, source, count);
        break;
    }
}

// Copies count bytes into the block at offset; a block too short is enlarged first.
void CopyIntoBlock(CZRB_Uint8Vector& block, unsigned int offset, const unsigned char* source,
                   unsigned int count) {
    if (count == 0) {
        return;
    }
    const unsigned __int64 end = static_cast<unsigned __int64>(offset) + count;
    if (block.GetLength() < end) {
        block.Recreate(static_cast<unsigned int>(end), 0);
        if (block.GetLength() < end) {
            throw CZRB_Exception(2, &block, 0);
        }
    }
    std::memcpy(block.GetBuf() + offset, source, count);
}

// Copies count bytes of the block from offset, stopping early at the block's length.
void CopyFromBlock(const CZRB_Uint8Vector& block, unsigned int offset, unsigned char* target,
                   unsigned int count) {
    const unsigned int length = block.GetLength();
    if (offset >= length) {
        return;
    }
    std::memcpy(target, block.GetBuf() + offset, count < length - offset ? count : length - offset);
}

} // namespace

CZRB_MemoryBuffer::CBlockList::CBlockList() = default;

CZRB_MemoryBuffer::CBlockList::CBlockList(const CBlockList& other)
    : CZRB_List<CZRB_Uint8Vector>(other) {}

CZRB_MemoryBuffer::CBlockList::CBlockList(CBlockList&& other)
    : CZRB_List<CZRB_Uint8Vector>(other) {}

CZRB_MemoryBuffer::CBlockList& CZRB_MemoryBuffer::CBlockList::operator=(const CBlockList& other) {
    CZRB_List<CZRB_Uint8Vector>::operator=(other);
    return *this;
}

CZRB_MemoryBuffer::CBlockList::~CBlockList() = default;

CZRB_MemoryBuffer::CZRB_MemoryBuffer(unsigned int blockSize)
    : CZRB_Buffer(blockSize), m_blockOffset(0), m_currentBlock(nullptr), m_blockIndex(0) {}

CZRB_MemoryBuffer::CZRB_MemoryBuffer(const CZRB_MemoryBuffer& other)
    : CZRB_Buffer(other), m_blockOffset(other.m_blockOffset), m_currentBlock(nullptr),
      m_blockIndex(other.m_blockIndex), m_blocks(other.m_blocks) {
    AdoptCurrentFunction(other);
}

CZRB_MemoryBuffer& CZRB_MemoryBuffer::operator=(const CZRB_MemoryBuffer& other) {
    DataCopy(other);
    return *this;
}

CZRB_MemoryBuffer::~CZRB_MemoryBuffer() = default;

void CZRB_MemoryBuffer::DataCopy(const CZRB_MemoryBuffer& other) {
    if (this == &other) {
        return;
    }
    CZRB_Buffer::DataCopy(other);
    m_blockOffset = other.m_blockOffset;
    m_blockIndex = other.m_blockIndex;
    m_currentBlock = nullptr;
    m_blocks.DeleteAll(); // assigning an empty list would leave the old blocks in place
    m_blocks = other.m_blocks;
    AdoptCurrentFunction(other);
}

void CZRB_MemoryBuffer::AdoptCurrentFunction(const CZRB_MemoryBuffer& other) {
    m_currentBlock = nullptr;
    if (other.m_currentBlock != nullptr && m_blocks.GetLength() != 0) {
        m_currentBlock = &m_blocks.ToPos(other.m_blocks.ItemsFromStart());
    }
}

unsigned __int64 CZRB_MemoryBuffer::GetAbsPosition() {
    return static_cast<unsigned __int64>(m_blockIndex) * m_blockSize + m_blockOffset;
}

void CZRB_MemoryBuffer::DeleteAll() {
    m_blocks.DeleteAll();
    m_size = 0;
    m_isEnd = 1;
    m_blockOffset = 0;
    m_currentBlock = nullptr;
    m_blockIndex = 0;
}

void CZRB_MemoryBuffer::ToStart() {
    m_blockOffset = 0;
    m_blockIndex = 0;
    m_currentBlock = m_blocks.GetLength() != 0 ? &m_blocks.ToStart() : nullptr;
    UpdateEndFunction();
}

void CZRB_MemoryBuffer::ToEnd() {
    if (m_blocks.GetLength() != 0) {
        m_currentBlock = &m_blocks.ToEnd();
        m_blockIndex = m_blocks.GetLength() - 1;
        m_blockOffset = m_currentBlock->GetLength();
    } else {
        m_currentBlock = nullptr;
        m_blockIndex = 0;
        m_blockOffset = 0;
    }
    UpdateEndFunction();
}

CZRB_Uint8Vector* CZRB_MemoryBuffer::AppendBlockFunction() {
    CZRB_Uint8Vector* block = m_blocks.AppendItem();
    try {
        block->Create(m_blockSize); // a block size of 0 throws 9 with the new block as object
    } catch (...) {
        m_blocks.DeleteItem(); // the cursor is on the new block
        throw;
    }
    return block;
}

void CZRB_MemoryBuffer::AppendData(void* data, unsigned int count) {
    if (m_access != ACCESS_WRITE && m_access != ACCESS_READ_WRITE) {
        throw CZRB_Exception(23, this, 0);
    }
    if (m_currentBlock != nullptr &&
        static_cast<unsigned __int64>(m_blockOffset) + count < m_blockSize &&
        m_blockOffset + count <= m_currentBlock->GetLength()) {
        // The common case: the bytes fit in the current block without completing it.
        CopyBytes(m_currentBlock->GetBuf() + m_blockOffset, static_cast<unsigned char*>(data),
                  count);
        m_blockOffset += count;
        m_size += count;
        m_isEnd = 1;
        return;
    }
    AppendChunksFunction(static_cast<const unsigned char*>(data), count);
}

void CZRB_MemoryBuffer::AppendChunksFunction(const unsigned char* source, unsigned int count) {
    if (m_currentBlock == nullptr) {
        m_currentBlock = AppendBlockFunction();
    }
    unsigned int remaining = count;
    while (remaining != 0) {
        const unsigned int chunk = remaining < m_blockSize ? remaining : m_blockSize;
        if (static_cast<unsigned __int64>(m_blockOffset) + chunk < m_blockSize) {
            CopyIntoBlock(*m_currentBlock, m_blockOffset, source, chunk);
            m_blockOffset += chunk;
        } else {
            // The chunk completes the block: the rest goes to a new block at the end.
            const unsigned int first = m_blockSize - m_blockOffset;
            CopyIntoBlock(*m_currentBlock, m_blockOffset, source, first);
            m_currentBlock = AppendBlockFunction();
            ++m_blockIndex;
            CopyIntoBlock(*m_currentBlock, 0, source + first, chunk - first);
            m_blockOffset = chunk - first;
        }
        m_size += chunk;
        source += chunk;
        remaining -= chunk;
    }
    m_isEnd = 1;
}

void CZRB_MemoryBuffer::RetrieveData(void* data, unsigned int count) {
    // The stream's checks: access, then the whole read against the size.
    if (m_access != ACCESS_READ && m_access != ACCESS_READ_WRITE) {
        throw CZRB_Exception(24, this, 0);
    }
    const unsigned __int64 position = GetAbsPosition();
    if (position > m_size || m_size - position < count) {
        throw CZRB_Exception(3, this, 0);
    }
    if (m_currentBlock != nullptr &&
        static_cast<unsigned __int64>(m_blockOffset) + count < m_blockSize &&
        m_blockOffset + count <= m_currentBlock->GetLength()) {
        // The common case: the bytes lie in the current block before its end.
        CopyBytes(static_cast<unsigned char*>(data), m_currentBlock->GetBuf() + m_blockOffset,
                  count);
        m_blockOffset += count;
        m_isEnd = GetAbsPosition() >= m_size ? 1 : 0;
        return;
    }
    RetrieveChunksFunction(static_cast<unsigned char*>(data), count);
}

void CZRB_MemoryBuffer::RetrieveChunksFunction(unsigned char* target, unsigned int count) {
    unsigned int remaining = count;
    while (remaining != 0) {
        if (m_currentBlock == nullptr) {
            throw CZRB_Exception(5, &m_blocks, 0);
        }
        const unsigned int chunk = remaining < m_blockSize ? remaining : m_blockSize;
        if (static_cast<unsigned __int64>(m_blockOffset) + chunk < m_blockSize) {
            CopyFromBlock(*m_currentBlock, m_blockOffset, target, chunk);
            m_blockOffset += chunk;
        } else {
            const unsigned int first = m_blockSize - m_blockOffset;
            CopyFromBlock(*m_currentBlock, m_blockOffset, target, first);
            if (m_blocks.CurItemRef() == nullptr || m_blocks.IsEnd() != 0) {
                throw CZRB_Exception(5, &m_blocks, 0);
            }
            m_blocks.Next(1);
            m_currentBlock = &m_blocks.CurItem();
            ++m_blockIndex;
            CopyFromBlock(*m_currentBlock, 0, target + first, chunk - first);
            m_blockOffset = chunk - first;
        }
        target += chunk;
        remaining -= chunk;
    }
    UpdateEndFunction();
}

unsigned int CZRB_MemoryBuffer::GetBlockCount() const {
    return m_blocks.GetLength();
}
