// Choice of the CRC kernel. Not installed: the engine picks the fastest kernel the processor
// offers by itself; tests and benchmarks include this header to force each kernel in turn.
#ifndef LZRB_CRC_PATH_H
#define LZRB_CRC_PATH_H

#include "LZRB_Export.h"

namespace ZRB_CrcKernel {

enum t_Path : int {
    PATH_PORTABLE = 0,       // lookup tables or the byte loop; runs anywhere
    PATH_SSE41_CLMUL = 1,    // 128-bit lanes: SSE4.1 and PCLMULQDQ
    PATH_AVX2_VPCLMUL = 2,   // 256-bit lanes: AVX2 and VPCLMULQDQ
    PATH_AVX512_VPCLMUL = 3, // 512-bit lanes: AVX-512 (F, BW) and VPCLMULQDQ
    PATH_COUNT = 4
};

// Whether this processor, its operating system and this build can run `path`. The 256- and
// 512-bit kernels must also agree with the 128-bit one on a few buffers, checked once.
LZRB_API bool IsPathAvailable(t_Path path);
// The fastest available path: the one in use unless another was forced.
LZRB_API t_Path BestPath();
// The path the engines use now. Detection runs once, on first use; thread-safe.
LZRB_API t_Path ActivePath();
// Makes every engine use `path` from now on; returns false and changes nothing when it is not
// available. The portable path runs its lookup tables only in engines configured while it is
// active (others fall back to their byte loop); results are the same either way.
LZRB_API bool SelectPath(t_Path path);
// A short name of the path ("portable", "sse41", "avx2", "avx512"); "?" outside the range.
LZRB_API const char* PathName(t_Path path);

} // namespace ZRB_CrcKernel

#endif
