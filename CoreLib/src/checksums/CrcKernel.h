// The per-byte loop of the table-driven CRC engine, shared by all register widths.
//
// This is the one place that walks the data. A faster loop (several bytes per step, wider
// tables, carry-less multiplication) may replace it, provided its results stay bit-identical:
// the engine and its public interface do not change.
#ifndef LZRB_CRC_KERNEL_H
#define LZRB_CRC_KERNEL_H

#include "ZRB.h"

namespace ZRB_CrcKernel {

// Runs `length` bytes through `reg` with the most-significant-bit-first table of the width of
// Register (8, 16, 32 or 64 bits). With `reflectInput` non-zero each byte is first replaced
// by its entry in `inversion` (the byte with its bits reversed). Returns the new register;
// output reflection and final XOR are the caller's.
template <typename Register>
Register Run(const Register* table, const unsigned char* inversion, unsigned char reflectInput,
             Register reg, const unsigned char* data, unsigned __int64 length);

extern template unsigned char Run(const unsigned char*, const unsigned char*, unsigned char,
                                  unsigned char, const unsigned char*, unsigned __int64);
extern template unsigned short Run(const unsigned short*, const unsigned char*, unsigned char,
                                   unsigned short, const unsigned char*, unsigned __int64);
extern template unsigned int Run(const unsigned int*, const unsigned char*, unsigned char,
                                 unsigned int, const unsigned char*, unsigned __int64);
extern template unsigned __int64 Run(const unsigned __int64*, const unsigned char*, unsigned char,
                                     unsigned __int64, const unsigned char*, unsigned __int64);

} // namespace ZRB_CrcKernel

#endif
