// Non-template members of the named arithmetic containers: destructors (which anchor the
// classes' type information in the library), the typed access of CZRB_Uint8Vector and
// CZRB_DoubleVector::GetRMS.
#include "CZRB_ArithmeticContainers.h"

#include <cmath>
#include <limits>

CZRB_Int8Vector::~CZRB_Int8Vector() {}
CZRB_Uint8Vector::~CZRB_Uint8Vector() {}
CZRB_Int16Vector::~CZRB_Int16Vector() {}
CZRB_Uint16Vector::~CZRB_Uint16Vector() {}
CZRB_Int32Vector::~CZRB_Int32Vector() {}
CZRB_Uint32Vector::~CZRB_Uint32Vector() {}
CZRB_Int64Vector::~CZRB_Int64Vector() {}
CZRB_Uint64Vector::~CZRB_Uint64Vector() {}
CZRB_FloatVector::~CZRB_FloatVector() {}
CZRB_DoubleVector::~CZRB_DoubleVector() {}
CZRB_Int8List::~CZRB_Int8List() {}
CZRB_Uint8List::~CZRB_Uint8List() {}
CZRB_Int16List::~CZRB_Int16List() {}
CZRB_Uint16List::~CZRB_Uint16List() {}
CZRB_Int32List::~CZRB_Int32List() {}
CZRB_Uint32List::~CZRB_Uint32List() {}
CZRB_Int64List::~CZRB_Int64List() {}
CZRB_Uint64List::~CZRB_Uint64List() {}
CZRB_FloatList::~CZRB_FloatList() {}
CZRB_DoubleList::~CZRB_DoubleList() {}

// The list of byte vectors (memory-buffer blocks); the header's extern declaration carries
// LZRB_API.
template class CZRB_List<CZRB_Uint8Vector>;

// --- CZRB_Uint8Vector: typed access ---

unsigned char* CZRB_Uint8Vector::FieldFunction(unsigned int offset, unsigned int width) const {
    if (static_cast<unsigned __int64>(offset) + width > m_nLength) {
        throw CZRB_Exception(2, this, 0);
    }
    return m_pItems + offset;
}

short CZRB_Uint8Vector::GetInt16(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::Int16FromBuf(FieldFunction(offset, 2), order);
}

unsigned short CZRB_Uint8Vector::GetUint16(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::Uint16FromBuf(FieldFunction(offset, 2), order);
}

int CZRB_Uint8Vector::GetInt32(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::Int32FromBuf(FieldFunction(offset, 4), order);
}

unsigned int CZRB_Uint8Vector::GetUint32(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::Uint32FromBuf(FieldFunction(offset, 4), order);
}

__int64 CZRB_Uint8Vector::GetInt64(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::Int64FromBuf(FieldFunction(offset, 8), order);
}

unsigned __int64 CZRB_Uint8Vector::GetUint64(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::Uint64FromBuf(FieldFunction(offset, 8), order);
}

float CZRB_Uint8Vector::GetFloat(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::FloatFromBuf(FieldFunction(offset, 4), order);
}

double CZRB_Uint8Vector::GetDouble(unsigned int offset, ZRB::t_ByteOrdering order) const {
    return ZRB::DoubleFromBuf(FieldFunction(offset, 8), order);
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetInt16(const short& value, unsigned int offset,
                                             ZRB::t_ByteOrdering order) {
    ZRB::Int16ToBuf(value, FieldFunction(offset, 2), order);
    return *this;
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetUint16(const unsigned short& value, unsigned int offset,
                                              ZRB::t_ByteOrdering order) {
    ZRB::Uint16ToBuf(value, FieldFunction(offset, 2), order);
    return *this;
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetInt32(const int& value, unsigned int offset,
                                             ZRB::t_ByteOrdering order) {
    ZRB::Int32ToBuf(value, FieldFunction(offset, 4), order);
    return *this;
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetUint32(const unsigned int& value, unsigned int offset,
                                              ZRB::t_ByteOrdering order) {
    ZRB::Uint32ToBuf(value, FieldFunction(offset, 4), order);
    return *this;
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetInt64(const __int64& value, unsigned int offset,
                                             ZRB::t_ByteOrdering order) {
    ZRB::Int64ToBuf(value, FieldFunction(offset, 8), order);
    return *this;
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetUint64(const unsigned __int64& value, unsigned int offset,
                                              ZRB::t_ByteOrdering order) {
    ZRB::Uint64ToBuf(value, FieldFunction(offset, 8), order);
    return *this;
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetFloat(const float& value, unsigned int offset,
                                             ZRB::t_ByteOrdering order) {
    ZRB::FloatToBuf(value, FieldFunction(offset, 4), order);
    return *this;
}

CZRB_Uint8Vector& CZRB_Uint8Vector::SetDouble(const double& value, unsigned int offset,
                                              ZRB::t_ByteOrdering order) {
    ZRB::DoubleToBuf(value, FieldFunction(offset, 8), order);
    return *this;
}

// --- CZRB_DoubleVector ---

double CZRB_DoubleVector::GetRMS() const {
    if (m_nLength == 0) {
        return std::numeric_limits<double>::quiet_NaN(); // 0 / 0
    }
    double sum = 0.0;
    for (unsigned int i = 0; i < m_nLength; ++i) {
        sum += m_pItems[i] * m_pItems[i];
    }
    return std::sqrt(sum / static_cast<double>(m_nLength));
}
