#include "demo_sections.h"

#include "LZRB_Core.h"

#include <cstdio>

void DemoFoundation() {
    std::puts("== Foundation: byte orders, fields, BCD ==");
    unsigned char bytes[4];
    ZRB::Uint32ToBuf(0x12345678U, bytes, ZRB::BYTE_ORDER_BIG_ENDIAN);
    std::printf("0x12345678 big-endian bytes: %02X %02X %02X %02X\n", bytes[0], bytes[1], bytes[2],
                bytes[3]);
    std::printf("read back little-endian: 0x%08X\n",
                ZRB::Uint32FromBuf(bytes, ZRB::BYTE_ORDER_LITTLE_ENDIAN));

    unsigned __int64 word = 0;
    ZRB::SetSignedField(word, 4, 8, -3, ZRB::NUMBER_REPR_SIGN_MAGNITUDE);
    std::printf("-3 as 8-bit sign-magnitude at bit 4: 0x%llX, read back %lld\n", word,
                ZRB::GetSignedField(word, 4, 8, ZRB::NUMBER_REPR_SIGN_MAGNITUDE));

    word = 0;
    ZRB::SetBcdField(word, 0, 6, 20261122ULL);
    std::printf("20261122 in 6 BCD digits: 0x%06llX -> %llu\n", word, ZRB::GetBcdField(word, 0, 6));
    std::printf("ReflectUint8(0x01) = 0x%02X, ShiftRotatedLeft8(0x81, 9) = 0x%02X\n",
                ZRB::ReflectUint8(0x01), ZRB::ShiftRotatedLeft8(0x81, 9));

    CZRB_Mutex mutex;
    const unsigned int first = mutex.Lock();
    const unsigned int again = mutex.Lock();
    const unsigned int release = mutex.Unlock();
    const unsigned int releaseAgain = mutex.Unlock();
    const unsigned int extra = mutex.Unlock();
    std::printf("mutex locked twice by one thread: %u %u; unlocked: %u %u; extra unlock: %u\n",
                first, again, release, releaseAgain, extra);
}
