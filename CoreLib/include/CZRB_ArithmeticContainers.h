/// @file
/// The named arithmetic containers: CZRB_<Type>Vector and CZRB_<Type>List for the ten
/// arithmetic element types, over CZRB_OrderedVector and CZRB_OrderedList.
///
/// They add no data: constructors mirroring their base, assignment from the base types, the
/// typed byte-order-aware access of CZRB_Uint8Vector and the root mean square of
/// CZRB_DoubleVector. Each class also has a header of its own name that includes this one.
#ifndef CZRB_ARITHMETICCONTAINERS_H
#define CZRB_ARITHMETICCONTAINERS_H

#include "CZRB_OrderedList.h"
#include "CZRB_OrderedVector.h"
#include "LZRB_NamedContainer.h"
#include "ZRB.h"

/// The named vector of signed char.
class LZRB_API CZRB_Int8Vector : public CZRB_OrderedVector<signed char> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Int8Vector, CZRB_OrderedVector<signed char>, signed char)
};

/// The named vector of unsigned char, with typed access to the values its bytes hold.
class LZRB_API CZRB_Uint8Vector : public CZRB_OrderedVector<unsigned char> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Uint8Vector, CZRB_OrderedVector<unsigned char>, unsigned char)

public:
    /// @name Typed access
    /// The value of 2, 4 or 8 bytes at offset .. offset + width - 1, order 0 least significant
    /// byte first, any other order most significant byte first; floating values are their IEEE
    /// 754 bit patterns. offset + width beyond the size throws 2 (object = this) before anything
    /// is read or written; the vector never grows.
    /// @{

    /// Signed 16-bit value at offset (the bits of GetUint16).
    short GetInt16(unsigned int offset, ZRB::t_ByteOrdering order) const;
    /// Unsigned 16-bit value at offset.
    unsigned short GetUint16(unsigned int offset, ZRB::t_ByteOrdering order) const;
    /// Signed 32-bit value at offset (the bits of GetUint32).
    int GetInt32(unsigned int offset, ZRB::t_ByteOrdering order) const;
    /// Unsigned 32-bit value at offset.
    unsigned int GetUint32(unsigned int offset, ZRB::t_ByteOrdering order) const;
    /// Signed 64-bit value at offset (the bits of GetUint64).
    __int64 GetInt64(unsigned int offset, ZRB::t_ByteOrdering order) const;
    /// Unsigned 64-bit value at offset.
    unsigned __int64 GetUint64(unsigned int offset, ZRB::t_ByteOrdering order) const;
    /// IEEE 754 single whose 32-bit pattern is at offset.
    float GetFloat(unsigned int offset, ZRB::t_ByteOrdering order) const;
    /// IEEE 754 double whose 64-bit pattern is at offset.
    double GetDouble(unsigned int offset, ZRB::t_ByteOrdering order) const;

    /// Writes the two bytes of value at offset.
    CZRB_Uint8Vector& SetInt16(const short& value, unsigned int offset, ZRB::t_ByteOrdering order);
    /// Writes the two bytes of value at offset.
    CZRB_Uint8Vector& SetUint16(const unsigned short& value, unsigned int offset,
                                ZRB::t_ByteOrdering order);
    /// Writes the four bytes of value at offset.
    CZRB_Uint8Vector& SetInt32(const int& value, unsigned int offset, ZRB::t_ByteOrdering order);
    /// Writes the four bytes of value at offset.
    CZRB_Uint8Vector& SetUint32(const unsigned int& value, unsigned int offset,
                                ZRB::t_ByteOrdering order);
    /// Writes the eight bytes of value at offset.
    CZRB_Uint8Vector& SetInt64(const __int64& value, unsigned int offset,
                               ZRB::t_ByteOrdering order);
    /// Writes the eight bytes of value at offset.
    CZRB_Uint8Vector& SetUint64(const unsigned __int64& value, unsigned int offset,
                                ZRB::t_ByteOrdering order);
    /// Writes the four bytes of the float's bit pattern at offset.
    CZRB_Uint8Vector& SetFloat(const float& value, unsigned int offset, ZRB::t_ByteOrdering order);
    /// Writes the eight bytes of the double's bit pattern at offset.
    CZRB_Uint8Vector& SetDouble(const double& value, unsigned int offset,
                                ZRB::t_ByteOrdering order);
    /// @}

protected:
    /// The first of `width` bytes at offset; throws 2 when they reach beyond the size.
    unsigned char* FieldFunction(unsigned int offset, unsigned int width) const;
};

/// The named vector of short.
class LZRB_API CZRB_Int16Vector : public CZRB_OrderedVector<short> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Int16Vector, CZRB_OrderedVector<short>, short)
};

/// The named vector of unsigned short.
class LZRB_API CZRB_Uint16Vector : public CZRB_OrderedVector<unsigned short> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Uint16Vector, CZRB_OrderedVector<unsigned short>, unsigned short)
};

/// The named vector of int.
class LZRB_API CZRB_Int32Vector : public CZRB_OrderedVector<int> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Int32Vector, CZRB_OrderedVector<int>, int)
};

/// The named vector of unsigned int.
class LZRB_API CZRB_Uint32Vector : public CZRB_OrderedVector<unsigned int> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Uint32Vector, CZRB_OrderedVector<unsigned int>, unsigned int)
};

/// The named vector of __int64.
class LZRB_API CZRB_Int64Vector : public CZRB_OrderedVector<__int64> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Int64Vector, CZRB_OrderedVector<__int64>, __int64)
};

/// The named vector of unsigned __int64.
class LZRB_API CZRB_Uint64Vector : public CZRB_OrderedVector<unsigned __int64> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Uint64Vector, CZRB_OrderedVector<unsigned __int64>,
                              unsigned __int64)
};

/// The named vector of float.
class LZRB_API CZRB_FloatVector : public CZRB_OrderedVector<float> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_FloatVector, CZRB_OrderedVector<float>, float)
};

/// The named vector of double, with its root mean square.
class LZRB_API CZRB_DoubleVector : public CZRB_OrderedVector<double> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_DoubleVector, CZRB_OrderedVector<double>, double)

public:
    /// The square root of the mean of the squared elements; an empty vector gives NaN.
    double GetRMS() const;
};

/// The named list of signed char.
class LZRB_API CZRB_Int8List : public CZRB_OrderedList<signed char> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Int8List, CZRB_OrderedList<signed char>, signed char)
};

/// The named list of unsigned char.
class LZRB_API CZRB_Uint8List : public CZRB_OrderedList<unsigned char> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Uint8List, CZRB_OrderedList<unsigned char>, unsigned char)
};

/// The named list of short.
class LZRB_API CZRB_Int16List : public CZRB_OrderedList<short> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Int16List, CZRB_OrderedList<short>, short)
};

/// The named list of unsigned short.
class LZRB_API CZRB_Uint16List : public CZRB_OrderedList<unsigned short> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Uint16List, CZRB_OrderedList<unsigned short>, unsigned short)
};

/// The named list of int.
class LZRB_API CZRB_Int32List : public CZRB_OrderedList<int> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Int32List, CZRB_OrderedList<int>, int)
};

/// The named list of unsigned int.
class LZRB_API CZRB_Uint32List : public CZRB_OrderedList<unsigned int> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Uint32List, CZRB_OrderedList<unsigned int>, unsigned int)
};

/// The named list of __int64.
class LZRB_API CZRB_Int64List : public CZRB_OrderedList<__int64> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Int64List, CZRB_OrderedList<__int64>, __int64)
};

/// The named list of unsigned __int64.
class LZRB_API CZRB_Uint64List : public CZRB_OrderedList<unsigned __int64> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Uint64List, CZRB_OrderedList<unsigned __int64>, unsigned __int64)
};

/// The named list of float.
class LZRB_API CZRB_FloatList : public CZRB_OrderedList<float> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_FloatList, CZRB_OrderedList<float>, float)
};

/// The named list of double.
class LZRB_API CZRB_DoubleList : public CZRB_OrderedList<double> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_DoubleList, CZRB_OrderedList<double>, double)
};

// The list of byte vectors that holds the blocks of a memory buffer.
extern template class LZRB_API CZRB_List<CZRB_Uint8Vector>;

#endif
