#include "checksums/CrcKernel.h"

#include "checksums/CrcClmul.h"

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

// The carry-less kernel of the active path over the 64-bit scaled state (the kernels' form,
// moved to the top of the 64 bits unless reflected); false for the portable path.
bool RunClmul(const t_Plan& plan, unsigned __int64& state, const unsigned char* data,
              unsigned __int64 length) {
    unsigned __int64 (*kernel)(const t_Plan&, unsigned __int64, const unsigned char*,
                               unsigned __int64) = nullptr;
    switch (CurrentPath()) {
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
    const unsigned int shift = plan.reflected ? 0 : 64 - plan.width;
    state = kernel(plan, state << shift, data, length) >> shift;
    return true;
}
#endif

} // namespace

template <typename Register>
Register RunState(const t_Plan& plan, const Register* table, const unsigned char* inversion,
                  Register state, const unsigned char* data, unsigned __int64 length) {
#if defined(__x86_64__)
    unsigned __int64 wide = state;
    if (length >= kClmulMinimum && RunClmul(plan, wide, data, length)) {
        return static_cast<Register>(wide);
    }
#endif
    if (plan.tables32 || plan.tables64) {
        return static_cast<Register>(RunSliced(plan, state, data, length));
    }
    const auto reg = static_cast<Register>(KernelForm(plan, state));
    return static_cast<Register>(
        KernelForm(plan, RunBytes(table, inversion, plan.reflected, reg, data, length)));
}

template <typename Register>
Register Run(const t_Plan* plan, const Register* table, const unsigned char* inversion,
             unsigned char reflectInput, Register reg, const unsigned char* data,
             unsigned __int64 length) {
    if (plan == nullptr) {
        return RunBytes(table, inversion, reflectInput, reg, data, length);
    }
    const auto state = static_cast<Register>(KernelForm(*plan, reg));
    return static_cast<Register>(
        KernelForm(*plan, RunState(*plan, table, inversion, state, data, length)));
}

#define LZRB_CRC_KERNEL_INSTANCES(Register)                                                        \
    template Register RunState(const t_Plan&, const Register*, const unsigned char*, Register,     \
                               const unsigned char*, unsigned __int64);                            \
    template Register Run(const t_Plan*, const Register*, const unsigned char*, unsigned char,     \
                          Register, const unsigned char*, unsigned __int64);
LZRB_CRC_KERNEL_INSTANCES(unsigned char)
LZRB_CRC_KERNEL_INSTANCES(unsigned short)
LZRB_CRC_KERNEL_INSTANCES(unsigned int)
LZRB_CRC_KERNEL_INSTANCES(unsigned __int64)
#undef LZRB_CRC_KERNEL_INSTANCES

} // namespace ZRB_CrcKernel
