#include "CZRB_FileBuffer.h"

#include "CZRB_Exception.h"

#include <cstring>

CZRB_FileBuffer::CZRB_FileBuffer(unsigned int blockSize)
    : CZRB_Buffer(blockSize), m_cacheOffset(0), m_position(0),
      m_cache(new unsigned char[blockSize]()), m_file(nullptr), m_lastError(0) {}

CZRB_FileBuffer::CZRB_FileBuffer(const CZRB_FileBuffer& other)
    : CZRB_Buffer(other), m_cacheOffset(other.m_cacheOffset), m_position(other.m_position),
      m_cache(new unsigned char[other.m_blockSize]), m_file(other.m_file),
      m_lastError(other.m_lastError) {
    std::memcpy(m_cache, other.m_cache, other.m_blockSize);
}

CZRB_FileBuffer& CZRB_FileBuffer::operator=(const CZRB_FileBuffer& other) {
    DataCopy(other);
    return *this;
}

CZRB_FileBuffer::~CZRB_FileBuffer() {
    CZRB_FileBuffer::Close();
    delete[] m_cache;
}

void CZRB_FileBuffer::DataCopy(const CZRB_FileBuffer& other) {
    if (this == &other) {
        return;
    }
    unsigned char* cache = new unsigned char[other.m_blockSize];
    std::memcpy(cache, other.m_cache, other.m_blockSize);
    delete[] m_cache;
    m_cache = cache;
    CZRB_Buffer::DataCopy(other);
    m_cacheOffset = other.m_cacheOffset;
    m_position = other.m_position;
    m_file = other.m_file;
    m_lastError = other.m_lastError;
}

unsigned __int64 CZRB_FileBuffer::GetAbsPosition() {
    return m_position;
}

unsigned __int64 CZRB_FileBuffer::GetLastError() const {
    return m_lastError;
}

void CZRB_FileBuffer::ToStart() {
    if (m_access == ACCESS_WRITE) {
        throw CZRB_Exception(10, this, 0);
    }
    m_position = 0;
    if (m_file == nullptr) {
        // Nothing attached: nothing to read, and a later attachment for writing starts with
        // an empty cache.
        m_cacheOffset = 0;
        m_size = 0;
    } else {
        m_file->ToStart();
        m_cacheOffset = m_blockSize;
        m_size = m_file->GetLength();
    }
    UpdateEndFunction();
}

void CZRB_FileBuffer::CheckBlockSize(unsigned int count) {
    if (count != 0 && m_blockSize == 0) {
        throw CZRB_Exception(9, this, 0);
    }
}

void CZRB_FileBuffer::AppendData(void* data, unsigned int count) {
    if (m_file == nullptr) {
        throw CZRB_Exception(30, this, 0);
    }
    CZRB_Buffer::AppendData(data, count); // access check: 23 while reading
    CheckBlockSize(count);
    const unsigned int blockSize = m_blockSize;
    const unsigned char* source = static_cast<const unsigned char*>(data);
    unsigned int remaining = count;
    while (remaining > 0) {
        const unsigned int chunk = remaining < blockSize ? remaining : blockSize;
        const unsigned int offset = static_cast<unsigned int>(m_cacheOffset);
        if (offset + static_cast<unsigned __int64>(chunk) >= blockSize) {
            const unsigned int head = blockSize - offset;
            std::memcpy(m_cache + offset, source, head);
            WriteCache(blockSize);
            std::memcpy(m_cache, source + head, chunk - head);
            m_cacheOffset = chunk - head;
        } else {
            std::memcpy(m_cache + offset, source, chunk);
            m_cacheOffset += chunk;
        }
        source += chunk;
        remaining -= chunk;
        m_size += chunk;
        m_position += chunk;
    }
    m_isEnd = 1;
}

void CZRB_FileBuffer::RefillCache() {
    m_lastError = m_file == nullptr ? 19 : m_file->Read(m_cache, m_blockSize);
}

void CZRB_FileBuffer::RetrieveData(void* data, unsigned int count) {
    CZRB_Buffer::RetrieveData(data, count); // 24 while writing, 3 past the size
    CheckBlockSize(count);
    const unsigned int blockSize = m_blockSize;
    unsigned char* target = static_cast<unsigned char*>(data);
    unsigned int remaining = count;
    while (remaining > 0) {
        const unsigned int chunk = remaining < blockSize ? remaining : blockSize;
        const unsigned int offset = static_cast<unsigned int>(m_cacheOffset);
        if (offset + static_cast<unsigned __int64>(chunk) < blockSize) {
            std::memcpy(target, m_cache + offset, chunk);
            m_cacheOffset += chunk;
        } else {
            const unsigned int head = blockSize - offset;
            std::memcpy(target, m_cache + offset, head);
            RefillCache();
            std::memcpy(target + head, m_cache, chunk - head);
            m_cacheOffset = chunk - head;
        }
        target += chunk;
        remaining -= chunk;
        m_position += chunk;
    }
    UpdateEndFunction();
}

unsigned int CZRB_FileBuffer::AttachFile(CZRB_File* file, t_Access access) {
    if (m_file != nullptr) {
        return 10;
    }
    if (access != ACCESS_WRITE && access != ACCESS_READ) {
        return 2;
    }
    if (file == nullptr || !file->IsOpen()) {
        return 19;
    }
    const unsigned int needed =
        access == ACCESS_READ ? CZRB_File::OPEN_READ : CZRB_File::OPEN_WRITE;
    if ((file->GetOpenFlags() & needed) == 0) {
        return 10;
    }
    file->ToStart();
    if (access == ACCESS_READ) {
        m_cacheOffset = m_blockSize;
        m_size = file->GetLength();
    }
    m_file = file;
    m_access = access;
    m_position = 0;
    UpdateEndFunction();
    return 0;
}

void CZRB_FileBuffer::Close() {
    if (m_file != nullptr && m_access == ACCESS_WRITE && m_cacheOffset > 0) {
        WriteCache(m_cacheOffset);
    }
    Abort();
}

void CZRB_FileBuffer::WriteCache(unsigned __int64 count) {
    // The flush only follows a complete write; either failing is recorded, never thrown.
    if (m_file->Write(m_cache, count, 0) != 0 || m_file->Flush() != 0) {
        m_lastError = 30;
    }
}

void CZRB_FileBuffer::Abort() {
    m_cacheOffset = 0;
    m_position = 0;
    m_file = nullptr;
}
