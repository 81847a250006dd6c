// The kernels of the table-driven CRC engine and the data they run from.
//
// The engine keeps a most-significant-bit-first register of its width; every kernel takes that
// register and returns the one the byte-at-a-time table step would give, bit for bit. Which
// kernel runs is chosen per call (CrcPath.h):
// - carry-less multiplication (SSE4.1, AVX2 or AVX-512 with VPCLMULQDQ) folds 16-byte lanes of
//   buffers of 16 bytes and more, for any polynomial, scaled up to 64 bits;
// - the portable kernel runs its own lookup tables in interleaved streams where a
//   configuration built them, else the byte-at-a-time loop over the engine's own table.
//   Short buffers take this path as well.
#ifndef LZRB_CRC_KERNEL_H
#define LZRB_CRC_KERNEL_H

#include "ZRB.h"
#include "checksums/CrcPath.h"

#include <memory>

namespace ZRB_CrcKernel {

// Fold distances in bits; each has a constant pair in t_Plan::fold.
enum t_Fold : int {
    FOLD_128,
    FOLD_256,
    FOLD_384,
    FOLD_512,
    FOLD_640,
    FOLD_768,
    FOLD_896,
    FOLD_1024,
    FOLD_1536,
    FOLD_2048,
    FOLD_COUNT
};

// The portable kernel's tables (see CrcSliced.cpp), entries in the byte form of its register:
// eight byte tables for single 8-byte steps, and those of the interleaved streams.
struct alignas(64) t_PortableTables32 { // 28 KiB
    unsigned int bytes[8][256];
    // Bits 0-10, 11-21 and 22-31 of a 4-byte step.
    unsigned int pieceLow[2048];
    unsigned int pieceMiddle[2048];
    unsigned int pieceHigh[1024];
};
struct alignas(64) t_PortableTables64 { // 32 KiB
    unsigned __int64 bytes[8][256];
    unsigned __int64 far[8][256]; // the bytes of an 8-byte step, one per lookup
};

// What the fast kernels need of one configuration, derived once when it is made.
//
// The carry-less kernels compute the CRC of the polynomial scaled to 64 bits,
// P = x^64 + (polynomial << (64 - width)), whose remainder is the width-bit remainder shifted
// up by 64 - width. Unreflected input uses the natural form (bit i is the coefficient of x^i,
// lanes loaded with their bytes reversed); reflected input the bit-reversed one (bit i of a
// 64-bit value is the coefficient of x^(63 - i), lanes loaded as they are), in which every
// product comes out multiplied by x, so its constants carry one power of x less.
struct t_Plan {
    unsigned int width = 0;
    bool reflected = false;
    // The seed in the kernels' form of the register (see KernelForm).
    unsigned __int64 start = 0;
    // Per distance D, the multipliers of a lane's two halves, arranged so that both forms fold
    // with the same instructions: natural {x^D, x^(D+64)} mod P, reflected the bit reversals of
    // {x^(D+63), x^(D-1)} mod P.
    alignas(16) unsigned __int64 fold[FOLD_COUNT][2] = {};
    // Barrett reduction from 128 to 64 bits: floor(x^128 / P) and P, both without their x^64
    // term, in the form of the input.
    unsigned __int64 quotient = 0;
    unsigned __int64 polynomial = 0;
    // The portable kernel's lookup tables, built only while that kernel is the one in use:
    // 32-bit entries up to width 32, 64-bit entries for width 64.
    std::unique_ptr<t_PortableTables32> tables32;
    std::unique_ptr<t_PortableTables64> tables64;
};

// Derives the plan of a table-driven configuration (width 8, 16, 32 or 64; only the low width
// bits of polynomial and seed count).
std::shared_ptr<const t_Plan> MakePlan(unsigned int width, unsigned __int64 polynomial,
                                       unsigned __int64 seed, bool reflected);
// The folding and reduction constants alone, with no lookup tables: what the carry-less
// kernels need, whatever path is active.
std::shared_ptr<t_Plan> MakeFoldingPlan(unsigned int width, unsigned __int64 polynomial,
                                        unsigned __int64 seed, bool reflected);

// Fills the lookup tables of `plan` (called by MakePlan for the portable kernel).
void BuildSlices(t_Plan& plan, unsigned __int64 polynomial);

// All 64 bits in reverse order.
inline unsigned __int64 Reflect64(unsigned __int64 v) {
    v = ((v >> 1) & 0x5555555555555555ULL) | ((v & 0x5555555555555555ULL) << 1);
    v = ((v >> 2) & 0x3333333333333333ULL) | ((v & 0x3333333333333333ULL) << 2);
    v = ((v >> 4) & 0x0F0F0F0F0F0F0F0FULL) | ((v & 0x0F0F0F0F0F0F0F0FULL) << 4);
    return __builtin_bswap64(v);
}

// The low `width` bits in reverse order (width 1..64).
inline unsigned __int64 ReflectLow(unsigned __int64 v, unsigned int width) {
    return Reflect64(v) >> (64 - width);
}

// The register in the kernels' own form: for reflected input the engine's register reversed
// over its width (the state of the bit-reversed CRC, which needs no reversal of input bytes),
// otherwise the register as it is. The conversion is its own inverse.
inline unsigned __int64 KernelForm(const t_Plan& plan, unsigned __int64 reg) {
    return plan.reflected ? ReflectLow(reg, plan.width) : reg;
}

// ActivePath() for the library's own calls, without going through the exported symbol.
t_Path CurrentPath();

// Runs `length` bytes through `state`, a register in the kernels' form, with the fastest
// kernel the plan and the processor allow. `table` is the engine's most-significant-bit-first
// table of the width of Register and `inversion` its bit-reversal table, for the byte loop.
template <typename Register>
Register RunState(const t_Plan& plan, const Register* table, const unsigned char* inversion,
                  Register state, const unsigned char* data, unsigned __int64 length);

// The same on the engine's own register, whatever the input reflection. `plan` may be null:
// then the byte loop runs, reversing each byte through `inversion` when `reflectInput` is set.
// Output reflection and final XOR are the caller's.
template <typename Register>
Register Run(const t_Plan* plan, const Register* table, const unsigned char* inversion,
             unsigned char reflectInput, Register reg, const unsigned char* data,
             unsigned __int64 length);

#define LZRB_CRC_KERNEL_INSTANCES(Register)                                                        \
    extern template Register RunState(const t_Plan&, const Register*, const unsigned char*,        \
                                      Register, const unsigned char*, unsigned __int64);           \
    extern template Register Run(const t_Plan*, const Register*, const unsigned char*,             \
                                 unsigned char, Register, const unsigned char*, unsigned __int64);
LZRB_CRC_KERNEL_INSTANCES(unsigned char)
LZRB_CRC_KERNEL_INSTANCES(unsigned short)
LZRB_CRC_KERNEL_INSTANCES(unsigned int)
LZRB_CRC_KERNEL_INSTANCES(unsigned __int64)
#undef LZRB_CRC_KERNEL_INSTANCES

// The portable table kernel over a plan that has its tables; the register in the kernels' form.
unsigned __int64 RunSliced(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                           unsigned __int64 length);

// XOR of `wordCount` 16-bit words in memory order, the k-th from the end rotated left by
// k modulo 16: the MIL-STD-1760 checksum started from 0.
unsigned short MilStd1760(const unsigned char* data, unsigned __int64 wordCount);

} // namespace ZRB_CrcKernel

#endif
