// The portable kernel: table lookups in interleaved streams.
//
// Every CRC runs here in one form, whatever its width and bit order: the register is held as
// the bytes it is XORed into, the first of them in the low eight bits of the word (its "byte
// form"). For a reflected CRC that is its bit-reversed register as it stands; an unreflected
// one is moved to the top of the word and byte-swapped. A byte then always moves the register
// eight bits down, and words are assembled from memory lowest byte first, so the same code
// serves both bit orders on a machine of either byte order. In byte form a register at some
// point of the buffer is also the same as a zero register with its bytes XORed into the data
// that follow: that is how a register enters a stream and how streams are joined.
//
// Buffers of 128 bytes and more run as interleaved streams, stream k taking the steps k,
// k + n, k + 2n, ... of the buffer (n streams). A step's contribution goes through tables that
// carry it on to the start of the same stream's next step, so the registers never wait for each
// other:
// - up to 32 bits, six streams of 4-byte steps; a step's 32 bits are looked up as three
//   pieces of 11, 11 and 10 bits (20 KiB of tables): three lookups for four bytes;
// - 64 bits, four streams of 8-byte steps, a lookup per byte (pieces wider than a byte
//   would need tables beyond the first-level cache).
// The last group of steps joins the streams into one register, which takes the rest in
// single 8-byte steps (eight byte tables), then byte by byte. Shorter buffers only take these.
#include "checksums/CrcKernel.h"

#include <cstddef>
#include <cstring>

namespace ZRB_CrcKernel {
namespace {

// Single steps are 8 bytes; byte j of one looks up byte table 7 - j, which holds the byte
// followed by 7 - j zero bytes (carried to the end of the step).
constexpr unsigned int kNearBytes = 8;

// The interleaved steps of each register width.
template <typename Word>
struct Streams;
template <>
struct Streams<unsigned int> {
    static constexpr unsigned int count = 6;
    static constexpr unsigned int stepBytes = 4;
};
template <>
struct Streams<unsigned __int64> {
    static constexpr unsigned int count = 4;
    static constexpr unsigned int stepBytes = 8;
};

// Bytes of one step of every stream.
template <typename Word>
constexpr unsigned int GroupBytes() {
    using S = Streams<Word>;
    return S::count * S::stepBytes;
}

// Below this length single steps are faster: the streams' last group is run as single steps
// anyway, and starting them costs a group's worth of work.
constexpr unsigned int kStreamMinimum = 128;

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

// The bytes of v to p, lowest first: a single store where words are kept that way, so that
// the word loads that read them back get them straight from the store.
template <typename Word>
inline void StoreLowFirst(unsigned char* p, Word v) {
#pragma GCC unroll 8
    for (unsigned int i = 0; i < sizeof(Word); ++i) {
        p[i] = static_cast<unsigned char>((v >> (8 * i)) & 0xFF);
    }
}

// One byte through the register in byte form; `t0` is byte table 0.
template <typename Word>
inline Word ByteStep(const Word* t0, Word m, unsigned char byte) {
    return static_cast<Word>((m >> 8) ^ t0[(m ^ byte) & 0xFF]);
}

// Bytes j .. j + 3 of an 8-byte step, held in x lowest first.
template <typename Word>
__attribute__((always_inline)) inline Word FourBytes(const Word (*tables)[256], unsigned int j,
                                                     unsigned int x) {
    Word r = tables[7 - j][x & 0xFF];
    r ^= tables[6 - j][(x >> 8) & 0xFF];
    x >>= 16;
    r ^= tables[5 - j][x & 0xFF];
    r ^= tables[4 - j][x >> 8];
    return r;
}

// One 8-byte step at p through the register m, byte j through table 7 - j. The four bytes a
// 32-bit register does not cover index their tables straight from memory, which costs fewer
// instructions than taking them out of a word.
template <typename Word>
__attribute__((always_inline)) inline Word Step(const Word (*tables)[256], Word m,
                                                const unsigned char* p) {
    if constexpr (sizeof(Word) == 8) {
        const Word v = LoadLowFirst<Word>(p) ^ m;
        return FourBytes(tables, 0, static_cast<unsigned int>(v & 0xFFFFFFFFU)) ^
               FourBytes(tables, 4, static_cast<unsigned int>(v >> 32));
    } else {
        const Word later =
            (tables[3][p[4]] ^ tables[2][p[5]]) ^ (tables[1][p[6]] ^ tables[0][p[7]]);
        return later ^ FourBytes(tables, 0, LoadLowFirst<unsigned int>(p) ^ m);
    }
}

// Single steps over `length` bytes, then the bytes left one by one.
template <typename Word>
Word RunSingle(const Word (*tables)[256], Word m, const unsigned char* p, unsigned __int64 length) {
    for (; length >= kNearBytes; length -= kNearBytes, p += kNearBytes) {
        m = Step(tables, m, p);
    }
    for (; length > 0; --length, ++p) {
        m = ByteStep(tables[0], m, *p);
    }
    return m;
}

// One interleaved step of stream register m at p.
inline unsigned int StreamStep(const t_PortableTables32& t, unsigned int m,
                               const unsigned char* p) {
    const unsigned int x = LoadLowFirst<unsigned int>(p) ^ m;
    return t.pieceLow[x & 0x7FF] ^ t.pieceMiddle[(x >> 11) & 0x7FF] ^ t.pieceHigh[x >> 22];
}

inline unsigned __int64 StreamStep(const t_PortableTables64& t, unsigned __int64 m,
                                   const unsigned char* p) {
    static_assert(Streams<unsigned __int64>::stepBytes == kNearBytes, "single-sized steps");
    return Step(t.far, m, p);
}

// The register after `length` bytes from m, through tables `t` (t_PortableTables32 or 64).
template <typename Word, typename Tables>
Word RunTables(const Tables& t, Word m, const unsigned char* p, unsigned __int64 length) {
    using S = Streams<Word>;
    constexpr unsigned int group = GroupBytes<Word>();
    static_assert(kStreamMinimum >= 2 * group, "the streams need two groups");
    if (length >= kStreamMinimum) {
        Word registers[S::count] = {m};
        do {
#pragma GCC unroll 8
            for (unsigned int k = 0; k < S::count; ++k) {
                registers[k] = StreamStep(t, registers[k], p + k * S::stepBytes);
            }
            p += group;
            length -= group;
        } while (length >= 2 * group);
        // The registers go into the bytes of the next group, which one register then takes.
        unsigned char joined[group];
        std::memcpy(joined, p, group);
        for (unsigned int k = 0; k < S::count; ++k) {
            const unsigned int at = k * S::stepBytes;
            StoreLowFirst(joined + at,
                          static_cast<Word>(LoadLowFirst<Word>(p + at) ^ registers[k]));
        }
        m = RunSingle(t.bytes, Word{0}, joined, group);
        p += group;
        length -= group;
    }
    return RunSingle(t.bytes, m, p, length);
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

// Every table is linear in its index, so it is built from its one-bit entries: entry i is the
// XOR of the entries of i's set bits. Each one-bit entry doubles the part filled so far.
template <typename Word>
void FillFromBits(Word* table, unsigned int size) {
    table[0] = 0;
    for (unsigned int bit = 1; bit < size; bit <<= 1) {
        const Word top = table[bit];
#pragma GCC unroll 4
        for (unsigned int i = 1; i < bit; ++i) {
            table[bit + i] = static_cast<Word>(top ^ table[i]);
        }
    }
}

// Byte table 0: the register, in byte form, after byte b from a zero register.
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
    FillFromBits(t0, 256);
}

// The one-bit entries of every distance a table needs: carried[d][k] is the register after
// the byte 1 << k followed by d zero bytes.
template <typename Word>
struct CarriedBits {
    static_assert(GroupBytes<Word>() >= kNearBytes, "single steps reach no further than streams");
    Word carried[GroupBytes<Word>()][8];

    explicit CarriedBits(const Word* t0) {
        for (unsigned int k = 0; k < 8; ++k) {
            carried[0][k] = t0[1U << k];
        }
        for (unsigned int d = 1; d < GroupBytes<Word>(); ++d) {
            for (unsigned int k = 0; k < 8; ++k) {
                carried[d][k] = ByteStep(t0, carried[d - 1][k], 0);
            }
        }
    }

    // The table of `bits` bits of a step, from bit `first` on (bit 8j + k is bit k of byte j),
    // carried to `reach` bytes after the start of the step.
    void Fill(Word* table, unsigned int first, unsigned int bits, unsigned int reach) const {
        for (unsigned int b = 0; b < bits; ++b) {
            const unsigned int bit = first + b;
            table[1U << b] = carried[reach - 1 - bit / 8][bit % 8];
        }
        FillFromBits(table, 1U << bits);
    }
};

template <typename Tables, typename Word>
std::unique_ptr<Tables> MakeTables(unsigned int width, unsigned __int64 polynomial,
                                   bool reflected) {
    std::unique_ptr<Tables> t(new Tables); // every entry is filled below
    FillFirstTable<Word>(t->bytes[0], width, polynomial, reflected);
    const CarriedBits<Word> bits(t->bytes[0]);
    for (unsigned int j = 0; j + 1 < kNearBytes; ++j) {
        bits.Fill(t->bytes[7 - j], 8 * j, 8, kNearBytes);
    }
    constexpr unsigned int reach = GroupBytes<Word>();
    if constexpr (sizeof(Word) == 4) {
        bits.Fill(t->pieceLow, 0, 11, reach);
        bits.Fill(t->pieceMiddle, 11, 11, reach);
        bits.Fill(t->pieceHigh, 22, 10, reach);
    } else {
        constexpr unsigned int step = Streams<Word>::stepBytes;
        static_assert(sizeof(t->far) == sizeof(t->far[0]) * step, "a far table per byte");
        for (unsigned int j = 0; j < step; ++j) {
            bits.Fill(t->far[step - 1 - j], 8 * j, 8, reach);
        }
    }
    return t;
}

template <typename Word, typename Tables>
unsigned __int64 Run(const t_Plan& plan, const Tables& tables, unsigned __int64 state,
                     const unsigned char* data, unsigned __int64 length) {
    const Word m = RunTables(tables, ToByteForm<Word>(plan, state), data, length);
    return FromByteForm(plan, m);
}

} // namespace

void BuildSlices(t_Plan& plan, unsigned __int64 polynomial) {
    if (plan.width > 32) {
        plan.tables64 = MakeTables<t_PortableTables64, unsigned __int64>(plan.width, polynomial,
                                                                         plan.reflected);
    } else {
        plan.tables32 =
            MakeTables<t_PortableTables32, unsigned int>(plan.width, polynomial, plan.reflected);
    }
}

unsigned __int64 RunSliced(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                           unsigned __int64 length) {
    if (plan.tables64) {
        return Run<unsigned __int64>(plan, *plan.tables64, state, data, length);
    }
    return Run<unsigned int>(plan, *plan.tables32, state, data, length);
}

} // namespace ZRB_CrcKernel
