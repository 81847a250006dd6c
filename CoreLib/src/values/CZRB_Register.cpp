#include "CZRB_Register.h"

CZRB_Register::CZRB_Register() : CZRB_BitSet(64, 0), m_mutex(), m_userFlag0(0), m_userFlag1(0) {
    CZRB_BitSet::Reset();
}

CZRB_Register::CZRB_Register(const CZRB_Register& other)
    : CZRB_BitSet(other), m_mutex(other.m_mutex), m_userFlag0(other.m_userFlag0),
      m_userFlag1(other.m_userFlag1) {}

CZRB_Register& CZRB_Register::operator=(const CZRB_Register& other) {
    DataCopy(other);
    return *this;
}

CZRB_Register::~CZRB_Register() = default;

void CZRB_Register::DataCopy(const CZRB_Register& other) {
    CZRB_BitSet::DataCopy(other);
    m_mutex = other.m_mutex;
    m_userFlag0 = other.m_userFlag0;
    m_userFlag1 = other.m_userFlag1;
}

CZRB_Register& CZRB_Register::Reset() {
    CZRB_BitSet::Reset();
    m_userFlag0 = 0;
    m_userFlag1 = 0;
    return *this;
}

unsigned __int64 CZRB_Register::GetField(unsigned char position, unsigned char width) const {
    return CZRB_BitSet::GetField(position, width).ToUnsigned();
}

CZRB_Register& CZRB_Register::SetField(unsigned char position, unsigned char width,
                                       unsigned __int64 value) {
    SetFieldUnsigned(position, width, value);
    return *this;
}

void CZRB_Register::Lock() {
    m_mutex.Lock();
}

void CZRB_Register::Unlock() {
    m_mutex.Unlock();
}
