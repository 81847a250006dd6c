#include "checksums/CrcKernel.h"

namespace ZRB_CrcKernel {
namespace {

// One byte through the register: the byte-wide table step of an MSB-first CRC.
template <typename Register>
inline Register Step(const Register* table, Register reg, unsigned int byte) {
    if constexpr (sizeof(Register) == 1) {
        return table[reg ^ byte];
    } else {
        constexpr unsigned int topShift = sizeof(Register) * 8 - 8;
        const Register shifted = static_cast<Register>(reg << 8);
        return static_cast<Register>(shifted ^ table[(reg >> topShift) ^ byte]);
    }
}

} // namespace

template <typename Register>
Register Run(const Register* table, const unsigned char* inversion, unsigned char reflectInput,
             Register reg, const unsigned char* data, unsigned __int64 length) {
    // Two loops so that the reflection test is not repeated for every byte.
    if (reflectInput != 0) {
        for (unsigned __int64 i = 0; i < length; ++i) {
            reg = Step(table, reg, inversion[data[i]]);
        }
    } else {
        for (unsigned __int64 i = 0; i < length; ++i) {
            reg = Step(table, reg, data[i]);
        }
    }
    return reg;
}

template unsigned char Run(const unsigned char*, const unsigned char*, unsigned char, unsigned char,
                           const unsigned char*, unsigned __int64);
template unsigned short Run(const unsigned short*, const unsigned char*, unsigned char,
                            unsigned short, const unsigned char*, unsigned __int64);
template unsigned int Run(const unsigned int*, const unsigned char*, unsigned char, unsigned int,
                          const unsigned char*, unsigned __int64);
template unsigned __int64 Run(const unsigned __int64*, const unsigned char*, unsigned char,
                              unsigned __int64, const unsigned char*, unsigned __int64);

} // namespace ZRB_CrcKernel
