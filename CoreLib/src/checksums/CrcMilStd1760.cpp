// The MIL-STD-1760 checksum, sixteen words per step.
//
// Word i of n is rotated by (n - i) mod 16, which depends only on i mod 16. So the words are
// XORed column-wise over 32-byte rows first (a rotation distributes over XOR), and each of
// the sixteen column sums is rotated once at the end.
#include "checksums/CrcKernel.h"

#include <cstring>

namespace ZRB_CrcKernel {

unsigned short MilStd1760(const unsigned char* data, unsigned __int64 wordCount) {
    constexpr unsigned int kColumns = 16;
    unsigned __int64 rows[4] = {0, 0, 0, 0}; // 16 words, in memory order
    const unsigned __int64 fullRows = wordCount / kColumns;
    for (unsigned __int64 row = 0; row < fullRows; ++row, data += 2 * kColumns) {
        unsigned __int64 words[4];
        std::memcpy(words, data, sizeof(words));
        for (unsigned int i = 0; i < 4; ++i) {
            rows[i] ^= words[i];
        }
    }
    unsigned short columns[kColumns];
    std::memcpy(columns, rows, sizeof(columns));
    const unsigned int rest = static_cast<unsigned int>(wordCount % kColumns);
    for (unsigned int c = 0; c < rest; ++c) {
        unsigned short word = 0;
        std::memcpy(&word, data + 2 * c, sizeof(word));
        columns[c] = static_cast<unsigned short>(columns[c] ^ word);
    }
    unsigned short sum = 0;
    for (unsigned int c = 0; c < kColumns; ++c) {
        const unsigned int rotation = (rest + kColumns - c) % kColumns; // (n - c) mod 16
        const unsigned int column = columns[c];
        sum ^= static_cast<unsigned short>((column << rotation) | (column >> (16 - rotation)));
    }
    return sum;
}

} // namespace ZRB_CrcKernel
