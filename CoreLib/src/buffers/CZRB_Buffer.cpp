#include "CZRB_Buffer.h"

#include "CZRB_Exception.h"

#include <cstring>

namespace {

constexpr ZRB::t_ByteOrdering kStreamOrder = ZRB::BYTE_ORDER_LITTLE_ENDIAN;

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
    unsigned char bytes[8];
    ZRB::DoubleToBuf(value, bytes, kStreamOrder);
    AppendData(bytes, 8);
    return *this;
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
    unsigned char bytes[8];
    ZRB::Uint64ToBuf(value, bytes, kStreamOrder);
    AppendData(bytes, 8);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned int value) {
    unsigned char bytes[4];
    ZRB::Uint32ToBuf(value, bytes, kStreamOrder);
    AppendData(bytes, 4);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned short value) {
    unsigned char bytes[2];
    ZRB::Uint16ToBuf(value, bytes, kStreamOrder);
    AppendData(bytes, 2);
    return *this;
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
    unsigned char bytes[8];
    RetrieveData(bytes, 8);
    value = ZRB::DoubleFromBuf(bytes, kStreamOrder);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(float& value) {
    unsigned int bits = 0;
    *this >> bits;
    std::memcpy(&value, &bits, 4);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(__int64& value) {
    unsigned __int64 bits = 0;
    *this >> bits;
    value = static_cast<__int64>(bits);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(int& value) {
    unsigned int bits = 0;
    *this >> bits;
    value = static_cast<int>(bits);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(short& value) {
    unsigned short bits = 0;
    *this >> bits;
    value = static_cast<short>(bits);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(signed char& value) {
    unsigned char bits = 0;
    *this >> bits;
    value = static_cast<signed char>(bits);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned __int64& value) {
    unsigned char bytes[8];
    RetrieveData(bytes, 8);
    value = ZRB::Uint64FromBuf(bytes, kStreamOrder);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned int& value) {
    unsigned char bytes[4];
    RetrieveData(bytes, 4);
    value = ZRB::Uint32FromBuf(bytes, kStreamOrder);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned short& value) {
    unsigned char bytes[2];
    RetrieveData(bytes, 2);
    value = ZRB::Uint16FromBuf(bytes, kStreamOrder);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned char& value) {
    unsigned char byte = 0;
    RetrieveData(&byte, 1);
    value = byte;
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(char& value) {
    unsigned char byte = 0;
    *this >> byte;
    value = static_cast<char>(byte);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator<<(long value) {
    return *this << static_cast<__int64>(value);
}

CZRB_Buffer& CZRB_Buffer::operator<<(unsigned long value) {
    return *this << static_cast<unsigned __int64>(value);
}

CZRB_Buffer& CZRB_Buffer::operator>>(long& value) {
    __int64 wide = 0;
    *this >> wide;
    value = static_cast<long>(wide);
    return *this;
}

CZRB_Buffer& CZRB_Buffer::operator>>(unsigned long& value) {
    unsigned __int64 wide = 0;
    *this >> wide;
    value = static_cast<unsigned long>(wide);
    return *this;
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
