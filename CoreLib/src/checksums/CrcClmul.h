// The carry-less multiplication kernels (x86-64 only), one source file per instruction set.
//
// Each takes the 64-bit state of t_Plan's scaled polynomial (natural or bit-reversed form, as
// the plan says) and at least 16 bytes, folds the data in lanes of 128 bits, and reduces the
// last lane by Barrett reduction. Only call one whose path is available (CrcPath.h).
#ifndef LZRB_CRC_CLMUL_H
#define LZRB_CRC_CLMUL_H

#if defined(__x86_64__)

#include "checksums/CrcKernel.h"

#include <immintrin.h>

namespace ZRB_CrcKernel {

#define LZRB_TARGET_SSE41_CLMUL __attribute__((target("sse4.1,pclmul")))

// 128-bit lanes, eight at a time.
unsigned __int64 RunClmulSse41(const t_Plan& plan, unsigned __int64 state,
                               const unsigned char* data, unsigned __int64 length);
// 256-bit lanes, four at a time.
unsigned __int64 RunClmulAvx2(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                              unsigned __int64 length);
// 512-bit lanes, four at a time.
unsigned __int64 RunClmulAvx512(const t_Plan& plan, unsigned __int64 state,
                                const unsigned char* data, unsigned __int64 length);

// The common end of every kernel: folds `length` more bytes at `data` into the lane `acc`
// (16 bytes at a time, then the last partial lane), and reduces it to the 64-bit state.
// The 16 bytes before `data` must belong to the buffer.
LZRB_TARGET_SSE41_CLMUL unsigned __int64
FinishClmul(const t_Plan& plan, __m128i acc, const unsigned char* data, unsigned __int64 length);

} // namespace ZRB_CrcKernel

#endif

#endif
