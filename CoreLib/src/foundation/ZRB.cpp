#include "ZRB.h"

#include <cstring>

namespace ZRB {

namespace {

// Assembles `count` bytes into an unsigned value; any non-zero order is big-endian.
unsigned __int64 AssembleBytes(const unsigned char* buffer, unsigned int count,
                               t_ByteOrdering order) {
    unsigned __int64 value = 0;
    for (unsigned int i = 0; i < count; ++i) {
        const unsigned int index = order != 0 ? i : count - 1 - i;
        value = (value << 8) | buffer[index];
    }
    return value;
}

// Writes the low `count` bytes of `value`; any non-zero order is big-endian.
void SplitBytes(unsigned __int64 value, unsigned char* buffer, unsigned int count,
                t_ByteOrdering order) {
    for (unsigned int i = 0; i < count; ++i) {
        const unsigned int index = order != 0 ? count - 1 - i : i;
        buffer[index] = static_cast<unsigned char>(value >> (8 * i));
    }
}

// Bits [position, min(position + width, wordBits)) set; the end is summed in 32 bits.
unsigned __int64 FieldMask(unsigned int position, unsigned int width, unsigned int wordBits) {
    unsigned int end = position + width;
    if (end > wordBits) {
        end = wordBits;
    }
    if (position >= end) {
        return 0;
    }
    const unsigned int span = end - position;
    const unsigned __int64 ones = span >= 64 ? ~0ULL : (1ULL << span) - 1;
    return ones << position;
}

template <typename Word>
void SetFieldOf(Word& word, unsigned int position, unsigned int width, Word value) {
    const unsigned __int64 mask = FieldMask(position, width, sizeof(Word) * 8);
    if (mask == 0) {
        return;
    }
    const unsigned __int64 stored = (static_cast<unsigned __int64>(value) << position) & mask;
    word = static_cast<Word>(stored | (word & ~mask));
}

// 2^exponent with the shift count taken modulo 64, as the 64-bit shift instruction does.
unsigned __int64 PowerOfTwo(unsigned int exponent) {
    return 1ULL << (exponent & 63U);
}

template <typename Word>
Word Reflect(Word value) {
    Word result = 0;
    for (unsigned int i = 0; i < sizeof(Word) * 8; ++i) {
        result = static_cast<Word>((result << 1) | ((value >> i) & 1U));
    }
    return result;
}

template <typename Word>
Word RotateLeft(Word value, unsigned __int64 count) {
    constexpr unsigned int bits = sizeof(Word) * 8;
    const unsigned int n = static_cast<unsigned int>(count % bits);
    if (n == 0) {
        return value;
    }
    return static_cast<Word>((value << n) | (value >> (bits - n)));
}

template <typename Word>
Word RotateRight(Word value, unsigned __int64 count) {
    constexpr unsigned int bits = sizeof(Word) * 8;
    return RotateLeft<Word>(value, bits - static_cast<unsigned int>(count % bits));
}

template <typename Word>
void SetOrClear(Word& word, unsigned int bit, unsigned char state) {
    const Word mask = static_cast<Word>(static_cast<Word>(1) << bit);
    word = state != 0 ? static_cast<Word>(word | mask) : static_cast<Word>(word & ~mask);
}

} // namespace

short Int16FromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    return static_cast<short>(AssembleBytes(buffer, 2, order));
}
unsigned short Uint16FromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    return static_cast<unsigned short>(AssembleBytes(buffer, 2, order));
}
int Int32FromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    return static_cast<int>(AssembleBytes(buffer, 4, order));
}
unsigned int Uint32FromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    return static_cast<unsigned int>(AssembleBytes(buffer, 4, order));
}
unsigned __int64 Uint64FromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    return AssembleBytes(buffer, 8, order);
}
__int64 Int64FromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    return static_cast<__int64>(Uint64FromBuf(buffer, order));
}
float FloatFromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    const unsigned int bits = Uint32FromBuf(buffer, order);
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}
double DoubleFromBuf(const unsigned char* buffer, t_ByteOrdering order) {
    const unsigned __int64 bits = Uint64FromBuf(buffer, order);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

void Uint16ToBuf(const unsigned short& value, unsigned char* buffer, t_ByteOrdering order) {
    SplitBytes(value, buffer, 2, order);
}
void Int16ToBuf(const short& value, unsigned char* buffer, t_ByteOrdering order) {
    SplitBytes(static_cast<unsigned short>(value), buffer, 2, order);
}
void Uint32ToBuf(const unsigned int& value, unsigned char* buffer, t_ByteOrdering order) {
    SplitBytes(value, buffer, 4, order);
}
void Int32ToBuf(const int& value, unsigned char* buffer, t_ByteOrdering order) {
    SplitBytes(static_cast<unsigned int>(value), buffer, 4, order);
}
void FloatToBuf(const float& value, unsigned char* buffer, t_ByteOrdering order) {
    unsigned int bits;
    std::memcpy(&bits, &value, sizeof bits);
    SplitBytes(bits, buffer, 4, order);
}
void Uint64ToBuf(const unsigned __int64& value, unsigned char* buffer, t_ByteOrdering order) {
    SplitBytes(value, buffer, 8, order);
}
void Int64ToBuf(const __int64& value, unsigned char* buffer, t_ByteOrdering order) {
    SplitBytes(static_cast<unsigned __int64>(value), buffer, 8, order);
}
void DoubleToBuf(const double& value, unsigned char* buffer, t_ByteOrdering order) {
    unsigned __int64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    SplitBytes(bits, buffer, 8, order);
}

void InvertByteOrder(unsigned char* buffer, unsigned int length) {
    for (unsigned int i = 0; i < length / 2; ++i) {
        const unsigned char first = buffer[i];
        buffer[i] = buffer[length - 1 - i];
        buffer[length - 1 - i] = first;
    }
}

unsigned char ReflectUint8(unsigned char value) {
    return Reflect(value);
}
unsigned short ReflectUint16(unsigned short value) {
    return Reflect(value);
}
unsigned int ReflectUint32(unsigned int value) {
    return Reflect(value);
}
unsigned __int64 ReflectUint64(unsigned __int64 value) {
    return Reflect(value);
}

unsigned __int64 IntCeil(unsigned __int64 a, unsigned __int64 b) {
    if (b == 0) {
        return 0;
    }
    return a / b + (a % b != 0 ? 1 : 0);
}

unsigned char ShiftRotatedLeft8(unsigned char value, unsigned char count) {
    return RotateLeft(value, count);
}
unsigned short ShiftRotatedLeft16(unsigned short value, unsigned short count) {
    return RotateLeft(value, count);
}
unsigned int ShiftRotatedLeft32(unsigned int value, unsigned int count) {
    return RotateLeft(value, count);
}
unsigned __int64 ShiftRotatedLeft64(unsigned __int64 value, unsigned __int64 count) {
    return RotateLeft(value, count);
}
unsigned char ShiftRotatedRight8(unsigned char value, unsigned char count) {
    return RotateRight(value, count);
}
unsigned short ShiftRotatedRight16(unsigned short value, unsigned short count) {
    return RotateRight(value, count);
}
unsigned int ShiftRotatedRight32(unsigned int value, unsigned int count) {
    return RotateRight(value, count);
}
unsigned __int64 ShiftRotatedRight64(unsigned __int64 value, unsigned __int64 count) {
    return RotateRight(value, count);
}

void SetBit(unsigned char& word, unsigned int bit, unsigned char state) {
    // The byte is shifted as a 32-bit quantity: only bit numbers modulo 32 below 8 land in it.
    const unsigned int effective = bit % 32;
    if (effective < 8) {
        SetOrClear(word, effective, state);
    }
}
void SetBit(unsigned short& word, unsigned int bit, unsigned char state) {
    SetOrClear(word, bit % 16, state);
}
void SetBit(unsigned int& word, unsigned int bit, unsigned char state) {
    if (bit < 32) {
        SetOrClear(word, bit, state);
    }
}
void SetBit(unsigned __int64& word, unsigned int bit, unsigned char state) {
    if (bit < 64) {
        SetOrClear(word, bit, state);
    }
}
unsigned char GetBit(unsigned __int64 word, unsigned int bit) {
    return bit < 64 ? static_cast<unsigned char>((word >> bit) & 1U) : 0;
}

void SetField(unsigned char& word, unsigned int position, unsigned int width, unsigned char value) {
    SetFieldOf(word, position, width, value);
}
void SetField(unsigned short& word, unsigned int position, unsigned int width,
              unsigned short value) {
    SetFieldOf(word, position, width, value);
}
void SetField(unsigned int& word, unsigned int position, unsigned int width, unsigned int value) {
    SetFieldOf(word, position, width, value);
}
void SetField(unsigned __int64& word, unsigned int position, unsigned int width,
              unsigned __int64 value) {
    SetFieldOf(word, position, width, value);
}
unsigned __int64 GetField(unsigned __int64 word, unsigned int position, unsigned int width) {
    const unsigned __int64 mask = FieldMask(position, width, 64);
    return mask == 0 ? 0 : (word & mask) >> position;
}

__int64 GetSignedField(unsigned __int64 word, unsigned int position, unsigned int width,
                       t_ZRB_NumberRepr repr) {
    const unsigned __int64 raw = GetField(word, position, width);
    if (width == 0) {
        return 0;
    }
    const bool negative = width <= 64 && ((raw >> (width - 1)) & 1U) != 0;
    const unsigned __int64 magnitudeMask = width <= 64 ? PowerOfTwo(width - 1) - 1 : ~0ULL;
    switch (repr) {
    case NUMBER_REPR_UNSIGNED:
        return static_cast<__int64>(raw);
    case NUMBER_REPR_ONES_COMPLEMENT:
        if (width == 1) {
            return 0;
        }
        return static_cast<__int64>(negative ? 0ULL - (~raw & magnitudeMask) : raw);
    case NUMBER_REPR_TWOS_COMPLEMENT:
        if (width == 1) {
            return 0;
        }
        if (width == 64) {
            return static_cast<__int64>(word); // the position is ignored here, as shipped
        }
        return static_cast<__int64>(negative ? raw - PowerOfTwo(width) : raw);
    case NUMBER_REPR_SIGN_MAGNITUDE:
        if (width == 1) {
            return 0;
        }
        return static_cast<__int64>(negative ? 0ULL - (raw & magnitudeMask) : raw);
    case NUMBER_REPR_OFFSET_BINARY:
        return static_cast<__int64>(raw - PowerOfTwo(width - 1));
    default:
        return 0;
    }
}

void SetSignedField(unsigned __int64& word, unsigned int position, unsigned int width,
                    __int64 value, t_ZRB_NumberRepr repr) {
    const unsigned __int64 bits = static_cast<unsigned __int64>(value);
    unsigned __int64 pattern = 0;
    switch (repr) {
    case NUMBER_REPR_UNSIGNED:
        pattern = bits;
        break;
    case NUMBER_REPR_ONES_COMPLEMENT:
        pattern = value < 0 ? bits - 1 : bits;
        break;
    case NUMBER_REPR_TWOS_COMPLEMENT:
        pattern = value < 0 && width < 64 ? bits + PowerOfTwo(width) : bits;
        break;
    case NUMBER_REPR_SIGN_MAGNITUDE:
        pattern = value < 0 ? (0ULL - bits) | PowerOfTwo(width - 1) : bits;
        break;
    case NUMBER_REPR_OFFSET_BINARY:
        pattern = bits + PowerOfTwo(width - 1);
        break;
    default:
        pattern = 0;
        break;
    }
    SetField(word, position, width, pattern);
}

unsigned __int64 GetBcdField(unsigned __int64 word, unsigned int position, unsigned int digits) {
    if (digits > 16) {
        digits = 16;
    }
    const unsigned __int64 raw = GetField(word, position, 4 * digits);
    unsigned __int64 result = 0;
    unsigned __int64 scale = 1;
    for (unsigned int k = 0; k < digits; ++k) {
        result += ((raw >> (4 * k)) & 0xFU) * scale;
        scale *= 10;
    }
    return result;
}

void SetBcdField(unsigned __int64& word, unsigned int position, unsigned int digits,
                 unsigned __int64 value) {
    if (digits > 16) {
        digits = 16;
    }
    unsigned __int64 pattern = 0;
    for (unsigned int k = 0; k < digits; ++k) {
        pattern |= (value % 10) << (4 * k);
        value /= 10;
    }
    SetField(word, position, 4 * digits, pattern);
}

t_WinRgbQuad ToWinRgbQuad32Bit(unsigned int colour) {
    t_WinRgbQuad quad;
    quad.Red = static_cast<unsigned short>((colour >> 16) & 0xFFU);
    quad.Green = static_cast<unsigned short>((colour >> 8) & 0xFFU);
    quad.Blue = static_cast<unsigned short>(colour & 0xFFU);
    quad.Reserved = static_cast<unsigned short>((colour >> 24) & 0xFFU);
    return quad;
}

} // namespace ZRB
