/// @file
/// Namespace ZRB: byte-order conversions, bit reflection and rotation, bit, signed and BCD
/// field access, and the shared enumerations of the library.
#ifndef ZRB_H
#define ZRB_H

#include "LZRB_Export.h"

#ifndef __int64
/// Caller code written with the 64-bit keyword of other compilers keeps compiling.
#define __int64 long long
#endif

/// Byte-order conversions, bit reflection and rotation, bit, signed and BCD field access, and
/// the shared enumerations of the library.
///
/// None of these functions allocate or throw. Buffers are plain byte pointers; the caller
/// guarantees that 2, 4 or 8 bytes are there. Bit 0 is the least significant bit of a word; a
/// field is given by the position of its least significant bit and its width.
namespace ZRB {

/// Byte order of every conversion between values and bytes: BYTE_ORDER_LITTLE_ENDIAN (0) is
/// least significant byte first; any non-zero value is big-endian.
enum t_ByteOrdering : int { BYTE_ORDER_LITTLE_ENDIAN = 0, BYTE_ORDER_BIG_ENDIAN = 1 };

/// How a signed value is held in a bit field.
enum t_ZRB_NumberRepr : int {
    NUMBER_REPR_UNSIGNED = 0,        ///< the bits are the value
    NUMBER_REPR_ONES_COMPLEMENT = 1, ///< a negative number is the inverse of its magnitude
    NUMBER_REPR_TWOS_COMPLEMENT = 2, ///< a negative number v is stored as v + 2^width
    NUMBER_REPR_SIGN_MAGNITUDE = 3,  ///< top bit is the sign, the rest the magnitude
    NUMBER_REPR_OFFSET_BINARY = 4    ///< the field holds v + 2^(width-1)
};

/// A palette entry or pixel of a Windows bitmap; each component holds 0..255.
struct t_WinRgbQuad {
    unsigned short Red;      ///< red component
    unsigned short Green;    ///< green component
    unsigned short Blue;     ///< blue component
    unsigned short Reserved; ///< the fourth byte of the entry (or an alpha value, where stated)
};

/// @name Values from bytes (2, 4 or 8 bytes read from `buffer`)
/// @{

/// Signed 16-bit value of two bytes in the given order.
LZRB_API short Int16FromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// Unsigned 16-bit value of two bytes in the given order.
LZRB_API unsigned short Uint16FromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// Signed 32-bit value of four bytes in the given order.
LZRB_API int Int32FromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// Unsigned 32-bit value of four bytes in the given order.
LZRB_API unsigned int Uint32FromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// Unsigned 64-bit value of eight bytes in the given order.
LZRB_API unsigned __int64 Uint64FromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// Signed 64-bit value: the bits of Uint64FromBuf.
LZRB_API __int64 Int64FromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// IEEE 754 single whose 32-bit pattern is assembled from four bytes in the given order.
LZRB_API float FloatFromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// IEEE 754 double whose 64-bit pattern is assembled from eight bytes in the given order.
LZRB_API double DoubleFromBuf(const unsigned char* buffer, t_ByteOrdering order);
/// @}

/// @name Values to bytes
/// @{

/// Writes two bytes of `value` in the given order.
LZRB_API void Uint16ToBuf(const unsigned short& value, unsigned char* buffer, t_ByteOrdering order);
/// Writes two bytes of `value` in the given order.
LZRB_API void Int16ToBuf(const short& value, unsigned char* buffer, t_ByteOrdering order);
/// Writes four bytes of `value` in the given order.
LZRB_API void Uint32ToBuf(const unsigned int& value, unsigned char* buffer, t_ByteOrdering order);
/// Writes four bytes of `value` in the given order.
LZRB_API void Int32ToBuf(const int& value, unsigned char* buffer, t_ByteOrdering order);
/// Writes the four bytes of the float's bit pattern in the given order.
LZRB_API void FloatToBuf(const float& value, unsigned char* buffer, t_ByteOrdering order);
/// Writes eight bytes of `value` in the given order.
LZRB_API void Uint64ToBuf(const unsigned __int64& value, unsigned char* buffer,
                          t_ByteOrdering order);
/// Writes eight bytes of `value` in the given order.
LZRB_API void Int64ToBuf(const __int64& value, unsigned char* buffer, t_ByteOrdering order);
/// Writes the eight bytes of the double's bit pattern in the given order.
LZRB_API void DoubleToBuf(const double& value, unsigned char* buffer, t_ByteOrdering order);

/// Reverses `length` bytes in place; a length of 0 or 1 does nothing.
LZRB_API void InvertByteOrder(unsigned char* buffer, unsigned int length);
/// @}

/// @name Reflection, rounding up, rotation
/// @{

/// The byte with its bit order reversed.
LZRB_API unsigned char ReflectUint8(unsigned char value);
/// The 16-bit value with its bit order reversed.
LZRB_API unsigned short ReflectUint16(unsigned short value);
/// The 32-bit value with its bit order reversed.
LZRB_API unsigned int ReflectUint32(unsigned int value);
/// The 64-bit value with its bit order reversed.
LZRB_API unsigned __int64 ReflectUint64(unsigned __int64 value);

/// a / b rounded up. A zero divisor returns 0 instead of faulting.
LZRB_API unsigned __int64 IntCeil(unsigned __int64 a, unsigned __int64 b);

/// Rotates left by `count` modulo 8.
LZRB_API unsigned char ShiftRotatedLeft8(unsigned char value, unsigned char count);
/// Rotates left by `count` modulo 16.
LZRB_API unsigned short ShiftRotatedLeft16(unsigned short value, unsigned short count);
/// Rotates left by `count` modulo 32.
LZRB_API unsigned int ShiftRotatedLeft32(unsigned int value, unsigned int count);
/// Rotates left by `count` modulo 64.
LZRB_API unsigned __int64 ShiftRotatedLeft64(unsigned __int64 value, unsigned __int64 count);
/// Rotates right by `count` modulo 8.
LZRB_API unsigned char ShiftRotatedRight8(unsigned char value, unsigned char count);
/// Rotates right by `count` modulo 16.
LZRB_API unsigned short ShiftRotatedRight16(unsigned short value, unsigned short count);
/// Rotates right by `count` modulo 32.
LZRB_API unsigned int ShiftRotatedRight32(unsigned int value, unsigned int count);
/// Rotates right by `count` modulo 64.
LZRB_API unsigned __int64 ShiftRotatedRight64(unsigned __int64 value, unsigned __int64 count);
/// @}

/// @name Single bits
/// @{

/// Sets (state non-zero) or clears a bit. Kept as shipped: acts on bit (bit mod 32) when that is
/// below 8, otherwise leaves the byte unchanged.
LZRB_API void SetBit(unsigned char& word, unsigned int bit, unsigned char state);
/// Sets or clears a bit. Kept as shipped: acts on bit (bit mod 16).
LZRB_API void SetBit(unsigned short& word, unsigned int bit, unsigned char state);
/// Sets or clears a bit; a bit number of 32 or more leaves the word unchanged.
LZRB_API void SetBit(unsigned int& word, unsigned int bit, unsigned char state);
/// Sets or clears a bit; a bit number of 64 or more leaves the word unchanged.
LZRB_API void SetBit(unsigned __int64& word, unsigned int bit, unsigned char state);
/// 1 when the bit is set, else 0; 0 for a bit number of 64 or more.
LZRB_API unsigned char GetBit(unsigned __int64 word, unsigned int bit);
/// @}

/// @name Bit fields (bits position .. position+width-1, cut at the word's top bit)
/// @{

/// Stores the low bits of `value` in the field; bits outside the field are kept. The end
/// position+width is formed in 32-bit arithmetic; an empty field writes nothing.
LZRB_API void SetField(unsigned char& word, unsigned int position, unsigned int width,
                       unsigned char value);
/// As above, for a 16-bit word.
LZRB_API void SetField(unsigned short& word, unsigned int position, unsigned int width,
                       unsigned short value);
/// As above, for a 32-bit word.
LZRB_API void SetField(unsigned int& word, unsigned int position, unsigned int width,
                       unsigned int value);
/// As above, for a 64-bit word.
LZRB_API void SetField(unsigned __int64& word, unsigned int position, unsigned int width,
                       unsigned __int64 value);
/// The field as an unsigned value; an empty field (width 0, position 64 or more) reads 0.
LZRB_API unsigned __int64 GetField(unsigned __int64 word, unsigned int position,
                                   unsigned int width);

/// The field read as a signed value in representation `repr`; an unknown representation
/// reads 0. Kept as shipped: a one-bit field reads 0 in one's complement, two's complement and
/// sign-magnitude, and two's complement of width 64 returns the whole word whatever the
/// position.
LZRB_API __int64 GetSignedField(unsigned __int64 word, unsigned int position, unsigned int width,
                                t_ZRB_NumberRepr repr);
/// Stores `value` in the field in representation `repr`, truncated to the field's width
/// without a range check; an unknown representation clears the field.
LZRB_API void SetSignedField(unsigned __int64& word, unsigned int position, unsigned int width,
                             __int64 value, t_ZRB_NumberRepr repr);

/// The packed BCD field of `digits` decimal digits (clamped to 16) as a number. Nibbles 10
/// to 15 are not rejected: they count with their binary value.
LZRB_API unsigned __int64 GetBcdField(unsigned __int64 word, unsigned int position,
                                      unsigned int digits);
/// Stores the lowest `digits` decimal digits (clamped to 16) of `value` as packed BCD; higher
/// digits are dropped.
LZRB_API void SetBcdField(unsigned __int64& word, unsigned int position, unsigned int digits,
                          unsigned __int64 value);

/// Splits a 32-bit bitmap colour word: red bits 16-23, green 8-15, blue 0-7, reserved 24-31.
LZRB_API t_WinRgbQuad ToWinRgbQuad32Bit(unsigned int colour);
/// @}

} // namespace ZRB

#endif
