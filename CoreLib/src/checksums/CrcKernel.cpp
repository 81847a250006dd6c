#include "checksums/CrcKernel.h"

#include "checksums/CrcClmul.h"
#include "checksums/CrcPath.h"

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

// The byte-at-a-time loop over the engine's own table.
template <typename Register>
Register RunBytes(const Register* table, const unsigned char* inversion, unsigned char reflectInput,
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

#if defined(__x86_64__)
// Below one lane the table loop is the faster one.
constexpr unsigned __int64 kClmulMinimum = 16;

// The engine register as the 64-bit state of the carry-less kernels, and back.
unsigned __int64 ToState(const t_Plan& plan, unsigned __int64 reg) {
    const unsigned __int64 scaled = reg << (64 - plan.width);
    return plan.reflected ? Reflect64(scaled) : scaled;
}
unsigned __int64 FromState(const t_Plan& plan, unsigned __int64 state) {
    return (plan.reflected ? Reflect64(state) : state) >> (64 - plan.width);
}

// The carry-less kernel of the active path; false for the portable path.
bool RunClmul(const t_Plan& plan, unsigned __int64& reg, const unsigned char* data,
              unsigned __int64 length) {
    unsigned __int64 (*kernel)(const t_Plan&, unsigned __int64, const unsigned char*,
                               unsigned __int64) = nullptr;
    switch (ActivePath()) {
    case PATH_AVX512_VPCLMUL:
        kernel = RunClmulAvx512;
        break;
    case PATH_AVX2_VPCLMUL:
        kernel = RunClmulAvx2;
        break;
    case PATH_SSE41_CLMUL:
        kernel = RunClmulSse41;
        break;
    default:
        return false;
    }
    reg = FromState(plan, kernel(plan, ToState(plan, reg), data, length));
    return true;
}
#endif

} // namespace

template <typename Register>
Register Run(const t_Plan* plan, const Register* table, const unsigned char* inversion,
             unsigned char reflectInput, Register reg, const unsigned char* data,
             unsigned __int64 length) {
    if (plan != nullptr) {
#if defined(__x86_64__)
        unsigned __int64 wide = reg;
        if (length >= kClmulMinimum && RunClmul(*plan, wide, data, length)) {
            return static_cast<Register>(wide);
        }
#endif
        if (plan->slices32 || plan->slices64) {
            return static_cast<Register>(RunSliced(*plan, reg, data, length));
        }
    }
    return RunBytes(table, inversion, reflectInput, reg, data, length);
}

template unsigned char Run(const t_Plan*, const unsigned char*, const unsigned char*, unsigned char,
                           unsigned char, const unsigned char*, unsigned __int64);
template unsigned short Run(const t_Plan*, const unsigned short*, const unsigned char*,
                            unsigned char, unsigned short, const unsigned char*, unsigned __int64);
template unsigned int Run(const t_Plan*, const unsigned int*, const unsigned char*, unsigned char,
                          unsigned int, const unsigned char*, unsigned __int64);
template unsigned __int64 Run(const t_Plan*, const unsigned __int64*, const unsigned char*,
                              unsigned char, unsigned __int64, const unsigned char*,
                              unsigned __int64);

} // namespace ZRB_CrcKernel
