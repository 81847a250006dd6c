#include "CZRB_Buffer.h"

#include "CZRB_Exception.h"

#include <cstring>

namespace {

// The stream's byte order is fixed: least significant byte first, whatever the host.

// Composes the low `Width` bytes of value in a local array and appends them in one call.
template <unsigned int Width>
CZRB_Buffer& AppendEncoded(CZRB_Buffer& stream, unsigned __int64 value) {
    unsigned char bytes[Width];
    for (unsigned int i = 0; i < Width; ++i) {
        bytes[i] = static_cast<unsigned char>(value >> (8 * i));
    }
    stream.AppendData(bytes, Width);
    return stream;
}

// Retrieves `Width` bytes in one call and assembles them; `value` is written only after the
// read succeeded.
template <unsigned int Width, typename Value>
CZRB_Buffer& RetrieveDecoded(CZRB_Buffer& stream, Value& value) {
    unsigned char bytes[Width];
    stream.RetrieveData(bytes, Width);
    unsigned __int64 assembled = 0;
    for (unsigned int i = 0; i < Width; ++i) {
        assembled |= static_cast<unsigned __int64>(bytes[i]) << (8 * i);
    }
    value = static_cast<Value>(assembled);
    return stream;
}

// Reads the unsigned form of the same width and converts it; `value` is written only after
// the read succeeded.
template <typename Stored, typename Value>
CZRB_Buffer& RetrieveAs(CZRB_Buffer& stream, Value& value) {
    Stored stored = 0;
    stream >> stored;
    value = static_cast<Value>(stored);
    return stream;
}

} // namespace

CZRB_Buffer::CZRB_Buffer(unsigned int blockSize)
    : m_size(0), m_isEnd(1), m_blockSize(blockSize), m_access(ACCESS_READ_WRITE) {}

CZRB_Buffer::CZRB_Buffer(const CZRB_Buffer& other)
    : CZRB_Object(other), m_size(other.m_size), m_isEnd(other.m_isEnd),
      m_blockSize(other.m_blockSize), m_access(other.m_access) {}

CZRB_Buffer& CZRB_Buffer::operator=(const CZRB_Buffer& other) {
    DataCopy(other);
    return *this;
}

CZRB_Buffer::~CZRB_Buffer() = default;

void CZRB_Buffer::DataCopy(const CZRB_Buffer& other) {
    m_size = other.m_size;
    m_isEnd = other.m_isEnd;
    m_blockSize = other.m_blockSize;
    m_access = other.m_access;
}

void CZRB_Buffer::UpdateEndFunction() {
    m_isEnd = GetAbsPosition() >= m_size ? 1 : 0;
}

// The four positioning operations share one body on the base stream.
void CZRB_Buffer::NotSupportedFunction() const {
    throw CZRB_Exception(8, this, 0);
}

unsigned __int64 CZRB_Buffer::GetAbsPosition() {
    NotSupportedFunction();
    return 0;
}
void CZRB_Buffer::DeleteAll() {
    NotSupportedFunction();
}
void CZRB_Buffer::ToStart() {
    NotSupportedFunction();
}
void CZRB_Buffer::ToEnd() {
    NotSupportedFunction();
}

void CZRB_Buffer::AppendData(void*, unsigned int) {
    if (m_access != ACCESS_WRITE && m_access != ACCESS_READ_WRITE) {
        throw CZRB_Exception(23, this, 0);
    }
}

void CZRB_Buffer::RetrieveData(void*, unsigned int count) {
    if (m_access != ACCESS_READ && m_access != ACCESS_READ_WRITE) {
        throw CZRB_Exception(24, this, 0);
    }
    const unsigned __int64 position = GetAbsPosition();
    // A position near the 64-bit limit must not wrap past the size check.
    if (position > m_size || m_size - position < count) {
        throw CZRB_Exception(3, this, 0);
    }
}

CZRB_Buffer& CZRB_Buffer::operator<<(void*) {
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator<<(double value) {
    unsigned __int64 bits = 0;
    std::memcpy(&bits, &value, 8);
    return AppendEncoded<8>(*this, bits);
}

CZRB_Buffer& CZRB_Buffer::operator<<(float value) {
    unsigned int bits = 0;
    std::memcpy(&bits, &value, 4);
    return *this << bits;
}

CZRB_Buffer& CZRB_Buffer::operator<<(__int64 value) {
    return *this << static_cast<unsigned __int64>(value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(int value) {
    return *this << static_cast<unsigned int>(value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(short value) {
    return *this << static_cast<unsigned short>(value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(signed char value) {
    return *this << static_cast<unsigned char>(value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned __int64 value) {
    return AppendEncoded<8>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned int value) {
    return AppendEncoded<4>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned short value) {
    return AppendEncoded<2>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned char value) {
    AppendData(&value, 1);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator<<(char value) {
    return *this << static_cast<unsigned char>(value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(void*) {
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(double& value) {
    unsigned __int64 bits = 0;
    RetrieveDecoded<8>(*this, bits);
    std::memcpy(&value, &bits, 8);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(float& value) {
    unsigned int bits = 0;
    *this >> bits;
    std::memcpy(&value, &bits, 4);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(__int64& value) {
    return RetrieveAs<unsigned __int64>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(int& value) {
    return RetrieveAs<unsigned int>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(short& value) {
    return RetrieveAs<unsigned short>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(signed char& value) {
    return RetrieveAs<unsigned char>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned __int64& value) {
    return RetrieveDecoded<8>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned int& value) {
    return RetrieveDecoded<4>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned short& value) {
    return RetrieveDecoded<2>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned char& value) {
    unsigned char byte = 0;
    RetrieveData(&byte, 1);
    value = byte;
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(char& value) {
    return RetrieveAs<unsigned char>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(long value) {
    return *this << static_cast<__int64>(value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned long value) {
    return *this << static_cast<unsigned __int64>(value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(long& value) {
    return RetrieveAs<__int64>(*this, value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned long& value) {
    return RetrieveAs<unsigned __int64>(*this, value);
}

unsigned __int64 CZRB_Buffer::GetSize() const {
    return m_size;
}

unsigned char CZRB_Buffer::IsEnd() const {
    return m_isEnd;
}

unsigned int CZRB_Buffer::GetBlockSize() const {
    return m_blockSize;
}

CZRB_Buffer::t_Access CZRB_Buffer::GetAccess() const {
    return m_access;
}
