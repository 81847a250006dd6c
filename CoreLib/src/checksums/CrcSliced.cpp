// The portable kernel: one table lookup per byte, eight bytes a step, three steps in flight.
//
// Every CRC runs here in one form, whatever its width and bit order: the register is held as
// the bytes it is XORed into, the first of them in the low eight bits of the word (its "byte
// form"). For a reflected CRC that is its bit-reversed register as it stands; an unreflected
// one is moved to the top of the word and byte-swapped. A byte then always moves the register
// eight bits down, and words are assembled from memory lowest byte first, so the same code
// serves both bit orders on a machine of either byte order.
//
// Buffers of two groups (48 bytes) and more run as three interleaved streams: stream k takes
// the 8-byte blocks k, k + 3, k + 6, ... of the buffer. A block's bytes go through tables that
// carry them 24 bytes on, to the start of the stream's next block, so the three registers
// never wait for each other. In the last group the three registers join into one, which takes
// what remains a block at a time, then byte by byte.
#include "checksums/CrcKernel.h"

#include <cstddef>

namespace ZRB_CrcKernel {
namespace {

// The shape of the interleaved steps for each register width: `bytes` per step, of which the
// first `fromWords` are taken out of 32-bit words (those the register covers among them) and
// the rest index their tables straight from memory; `streams` steps in flight.
template <typename Word>
struct Shape;
template <>
struct Shape<unsigned int> {
    static constexpr unsigned int bytes = 8;
    static constexpr unsigned int fromWords = 4;
    static constexpr unsigned int streams = 3;
};
template <>
struct Shape<unsigned __int64> {
    static constexpr unsigned int bytes = 8;
    static constexpr unsigned int fromWords = 8;
    static constexpr unsigned int streams = 3;
};
// Single steps (the start of a short buffer, the end of every buffer) are 8 bytes.
constexpr unsigned int kNearBytes = 8;

// The tables: kNearBytes "near" ones, then Shape::bytes "far" ones, 256 entries each. Byte j of
// a step of n bytes looks up table n - 1 - j of its set: near table t holds the byte followed by
// t zero bytes (carried to the end of its step), far table t the byte followed by
// t + (streams - 1) * bytes zero bytes (carried on to the same stream's next step).
template <typename Word>
using TableSet = const Word (*)[256];

template <typename Word>
constexpr unsigned int TableCount() {
    return kNearBytes + Shape<Word>::bytes;
}

template <typename Word>
inline Word ByteSwap(Word v) {
    if constexpr (sizeof(Word) == 8) {
        return __builtin_bswap64(v);
    } else {
        return __builtin_bswap32(v);
    }
}

// The word whose byte i is p[i] counted from the least significant end; compilers turn this
// into a single load on machines that keep words that way.
template <typename Word>
inline Word LoadLowFirst(const unsigned char* p) {
    Word v = 0;
#pragma GCC unroll 8
    for (unsigned int i = 0; i < sizeof(Word); ++i) {
        v |= static_cast<Word>(static_cast<Word>(p[i]) << (8 * i));
    }
    return v;
}

// One byte through the register in byte form; `t0` is near table 0.
template <typename Word>
inline Word ByteStep(const Word* t0, Word m, unsigned char byte) {
    return static_cast<Word>((m >> 8) ^ t0[(m ^ byte) & 0xFF]);
}

// Bytes j .. j + 3 of a step of Bytes bytes, held in x lowest first.
template <unsigned int Bytes, typename Word>
__attribute__((always_inline)) inline Word FourBytes(TableSet<Word> set, unsigned int j,
                                                     unsigned int x) {
    Word r = set[Bytes - 1 - j][x & 0xFF];
    r ^= set[Bytes - 2 - j][(x >> 8) & 0xFF];
    x >>= 16;
    r ^= set[Bytes - 3 - j][x & 0xFF];
    r ^= set[Bytes - 4 - j][x >> 8];
    return r;
}

// One step of Bytes bytes at p through the register m. Indexing a table straight from memory
// costs fewer instructions than taking the byte out of a word, but more loads: the mix is
// chosen per width (Shape).
template <unsigned int Bytes, unsigned int FromWords, typename Word>
__attribute__((always_inline)) inline Word Step(TableSet<Word> set, Word m,
                                                const unsigned char* p) {
    Word r = 0;
#pragma GCC unroll 16
    for (unsigned int j = FromWords; j < Bytes; ++j) {
        r ^= set[Bytes - 1 - j][p[j]];
    }
#pragma GCC unroll 4
    for (unsigned int j = 0; j < FromWords; j += 4) {
        const unsigned int covered =
            j < sizeof(Word) ? static_cast<unsigned int>(m >> (8 * j)) : 0U;
        r ^= FourBytes<Bytes>(set, j, LoadLowFirst<unsigned int>(p + j) ^ covered);
    }
    return r;
}

// Single steps over `length` bytes, then the bytes left one by one.
template <typename Word>
Word RunNear(TableSet<Word> tables, Word m, const unsigned char* p, unsigned __int64 length) {
    for (; length >= kNearBytes; length -= kNearBytes, p += kNearBytes) {
        m = Step<kNearBytes, sizeof(Word)>(tables, m, p);
    }
    for (; length > 0; --length, ++p) {
        m = ByteStep(tables[0], m, *p);
    }
    return m;
}

template <typename Word>
Word RunBlocks(TableSet<Word> tables, Word m, const unsigned char* p, unsigned __int64 length) {
    using S = Shape<Word>;
    constexpr unsigned int group = S::bytes * S::streams;
    if (length >= 2 * group) {
        const TableSet<Word> far = tables + kNearBytes;
        Word streams[S::streams] = {m};
        do {
#pragma GCC unroll 4
            for (unsigned int k = 0; k < S::streams; ++k) {
                streams[k] = Step<S::bytes, S::fromWords>(far, streams[k], p + k * S::bytes);
            }
            p += group;
            length -= group;
        } while (length >= 2 * group);
        // The streams' registers are what they add to the first bytes of their next steps.
        m = streams[0];
        for (unsigned int k = 1; k < S::streams; ++k) {
            m = static_cast<Word>(RunNear(tables, m, p, S::bytes) ^ streams[k]);
            p += S::bytes;
            length -= S::bytes;
        }
    }
    return RunNear(tables, m, p, length);
}

// The kernels' form of a register (see KernelForm) to byte form and back.
template <typename Word>
Word ToByteForm(const t_Plan& plan, unsigned __int64 state) {
    if (plan.reflected) {
        return static_cast<Word>(state);
    }
    return ByteSwap(static_cast<Word>(state << (sizeof(Word) * 8 - plan.width)));
}

template <typename Word>
unsigned __int64 FromByteForm(const t_Plan& plan, Word m) {
    if (plan.reflected) {
        return m;
    }
    return ByteSwap(m) >> (sizeof(Word) * 8 - plan.width);
}

// Table 0 of the near set: the register, in byte form, after byte b from a zero register.
// It is linear in b, so only its eight one-bit entries are stepped bit by bit.
template <typename Word>
void FillFirstTable(Word* t0, unsigned int width, unsigned __int64 polynomial, bool reflected) {
    constexpr unsigned int bits = sizeof(Word) * 8;
    const Word reversed = static_cast<Word>(ReflectLow(polynomial, width));
    const Word scaled = static_cast<Word>(polynomial << (bits - width));
    for (unsigned int bit = 1; bit < 256; bit <<= 1) {
        Word r = static_cast<Word>(reflected ? bit : static_cast<Word>(bit) << (bits - 8));
        for (int step = 0; step < 8; ++step) {
            if (reflected) {
                r = static_cast<Word>((r & 1U) != 0 ? (r >> 1) ^ reversed : r >> 1);
            } else {
                r = static_cast<Word>((r >> (bits - 1)) != 0 ? (r << 1) ^ scaled : r << 1);
            }
        }
        t0[bit] = reflected ? r : ByteSwap(r);
    }
}

// Fills a table whose one-bit entries are set: every other entry is an XOR of two smaller.
template <typename Word>
void FillFromBits(Word* table) {
    table[0] = 0;
    for (unsigned int i = 3; i < 256; ++i) {
        const unsigned int lowest = i & (0U - i);
        table[i] = static_cast<Word>(table[lowest] ^ table[i ^ lowest]);
    }
}

// All tables. The one-bit entries of each distance come from those of the distance before
// through one zero byte; only the tables in use are filled.
template <typename Word>
std::unique_ptr<Word[][256]> MakeTables(unsigned int width, unsigned __int64 polynomial,
                                        bool reflected) {
    using S = Shape<Word>;
    constexpr unsigned int farStart = (S::streams - 1) * S::bytes;
    std::unique_ptr<Word[][256]> tables(new Word[TableCount<Word>()][256]);
    Word* t0 = tables[0];
    FillFirstTable(t0, width, polynomial, reflected);
    FillFromBits(t0);
    Word bitEntries[8];
    for (unsigned int k = 0; k < 8; ++k) {
        bitEntries[k] = t0[1U << k];
    }
    for (unsigned int distance = 1; distance < farStart + S::bytes; ++distance) {
        for (Word& entry : bitEntries) {
            entry = ByteStep(t0, entry, 0);
        }
        Word* table = nullptr;
        if (distance < kNearBytes) {
            table = tables[distance];
        } else if (distance >= farStart) {
            table = tables[kNearBytes + distance - farStart];
        } else {
            continue;
        }
        for (unsigned int k = 0; k < 8; ++k) {
            table[1U << k] = bitEntries[k];
        }
        FillFromBits(table);
    }
    return tables;
}

template <typename Word>
unsigned __int64 Run(const t_Plan& plan, TableSet<Word> tables, unsigned __int64 state,
                     const unsigned char* data, unsigned __int64 length) {
    const Word m = RunBlocks(tables, ToByteForm<Word>(plan, state), data, length);
    return FromByteForm(plan, m);
}

} // namespace

void BuildSlices(t_Plan& plan, unsigned __int64 polynomial) {
    if (plan.width > 32) {
        plan.tables64 = MakeTables<unsigned __int64>(plan.width, polynomial, plan.reflected);
    } else {
        plan.tables32 = MakeTables<unsigned int>(plan.width, polynomial, plan.reflected);
    }
}

unsigned __int64 RunSliced(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                           unsigned __int64 length) {
    if (plan.tables64) {
        return Run<unsigned __int64>(plan, plan.tables64.get(), state, data, length);
    }
    return Run<unsigned int>(plan, plan.tables32.get(), state, data, length);
}

} // namespace ZRB_CrcKernel
