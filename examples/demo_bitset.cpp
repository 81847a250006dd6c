#include "demo_sections.h"

#include "CZRB_BitSet.h"
#include "CZRB_Register.h"

#include <cstdio>

void DemoBitSet() {
    std::puts("== Values: bit set and register ==");
    CZRB_BitSet header(4, 0), payload(12, 0);
    header.SetFieldUnsigned(0, 4, 0xA);
    payload.SetFieldUnsigned(0, 12, 0x5C3);
    const CZRB_BitSet frame = header.Join(payload);
    std::printf("header 0xA joined with payload 0x5C3: %u bits, %s (hex %s)\n", frame.GetNumBits(),
                frame.ToString(2, 4, '_').GetStringC(), frame.ToString(16, 0, ' ').GetStringC());
    std::printf("bits 4..11: 0x%llX; frame >> 4: 0x%llX; parity %u\n", frame.GetFieldUnsigned(4, 8),
                (frame >> 4).ToUnsigned(), frame.Xor());

    // Whole-word operations write the bits above the length; whole-word readers see them.
    const CZRB_BitSet ones(10, 1);
    std::printf("10 bits filled with ones: ToUnsigned 0x%llX, field 0x%llX, above 1023: %u\n",
                ones.ToUnsigned(), ones.GetFieldUnsigned(0, 64), ones > 1023ULL);

    unsigned char bytes[4] = {0, 0, 0, 0};
    CZRB_BitSet word(64, 0);
    word = 0x1122334455667788ULL;
    word.GetRawByteBuffer(bytes, 4, ZRB::BYTE_ORDER_BIG_ENDIAN);
    std::printf("raw bytes (big-endian, low 32 bits of each word): %02X %02X %02X %02X\n", bytes[0],
                bytes[1], bytes[2], bytes[3]);

    CZRB_Register status;
    CZRB_Register shared(status); // shares the mutex
    shared.Lock();
    status.SetField(60, 8, 0xFF).SetField(0, 4, 9);
    shared.Unlock();
    std::printf("register: field(60, 8) = 0x%llX, field(0, 4) = %llu, as text %s\n",
                status.GetField(60, 8), status.GetField(0, 4),
                status.ToString(16, 4, '\'').GetStringC());
}
