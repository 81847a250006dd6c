// The portable kernel: slicing-by-16, sixteen bytes per step through sixteen 256-entry tables.
//
// CRCs up to 32 bits run as their polynomial scaled to 32 bits, 64-bit CRCs as they are. An
// unreflected CRC keeps its register most-significant-bit first in the top bits of the word;
// a reflected one keeps the bit-reversed register in the low bits and shifts right, so that
// input bytes need no reversal.
#include "checksums/CrcKernel.h"

#include <cstddef>
#include <cstring>

namespace ZRB_CrcKernel {
namespace {

constexpr unsigned int kSlices = 16;
constexpr unsigned int kChunk = 4096; // bytes per stream; a multiple of kSlices

// Little- or big-endian word at p, whatever the byte order of the machine.
template <typename Word, bool LittleEndian>
Word Load(const unsigned char* p) {
    Word v;
    std::memcpy(&v, p, sizeof(v));
    constexpr bool native = LittleEndian == (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__);
    if constexpr (native) {
        return v;
    } else if constexpr (sizeof(Word) == 8) {
        return __builtin_bswap64(v);
    } else {
        return __builtin_bswap32(v);
    }
}

// One byte through the word register, with table 0.
template <typename Word, bool Reflected>
Word Step(const Word* t0, Word s, unsigned char byte) {
    constexpr unsigned int top = sizeof(Word) * 8 - 8;
    if (Reflected) {
        return static_cast<Word>((s >> 8) ^ t0[(s ^ byte) & 0xFF]);
    }
    return static_cast<Word>((s << 8) ^ t0[(s >> top) ^ byte]);
}

// Byte j of a 16-byte block through its table: table k is table 0 followed by k zero bytes,
// so byte j looks up table 15 - j and the sixteen lookups are independent of each other.
template <typename Word>
__attribute__((always_inline)) inline Word Lookup(const Word* tables, unsigned int j,
                                                  unsigned int byte) {
    return tables[std::size_t{256} * (kSlices - 1 - j) + byte];
}

// The block's bytes beyond the first word, which the register does not touch: they are read
// straight from memory and need not wait for the previous block.
template <typename Word>
__attribute__((always_inline)) inline Word LaterBytes(const Word* tables, const unsigned char* p) {
    Word result = 0;
#pragma GCC unroll 16
    for (unsigned int j = sizeof(Word); j < kSlices; ++j) {
        result ^= Lookup(tables, j, p[j]);
    }
    return result;
}

// The first word XORed with the register: its lookups are XORed pairwise so that they wait
// for each other as little as possible.
template <typename Word, bool Reflected>
__attribute__((always_inline)) inline Word FirstWord(const Word* tables, Word v) {
    constexpr unsigned int bytes = sizeof(Word);
    const auto at = [tables, v](unsigned int i) {
        const unsigned int shift = 8 * (Reflected ? i : bytes - 1 - i);
        return Lookup(tables, i, static_cast<unsigned int>((v >> shift) & 0xFF));
    };
    const Word low = (at(0) ^ at(1)) ^ (at(2) ^ at(3));
    if constexpr (bytes == 4) {
        return low;
    } else {
        return low ^ ((at(4) ^ at(5)) ^ (at(6) ^ at(7)));
    }
}

template <typename Word, bool Reflected>
__attribute__((always_inline)) inline Word Block(const Word* tables, Word s,
                                                 const unsigned char* p) {
    return LaterBytes(tables, p) ^ FirstWord<Word, Reflected>(tables, Load<Word, Reflected>(p) ^ s);
}

// a * b mod P in the word's form; `polynomial` is P without its top term, in that form too.
template <typename Word, bool Reflected>
Word MultiplyMod(Word a, Word b, Word polynomial) {
    constexpr unsigned int bits = sizeof(Word) * 8;
    Word product = 0;
    for (unsigned int i = 0; i < bits; ++i) { // b's terms from x^(bits - 1) down
        const Word carry = Reflected ? product & 1U : product >> (bits - 1);
        product = static_cast<Word>(Reflected ? product >> 1 : product << 1);
        product ^= static_cast<Word>(polynomial & (Word{0} - carry));
        const Word term = Reflected ? (b >> i) & 1U : (b >> (bits - 1 - i)) & 1U;
        product ^= static_cast<Word>(a & (Word{0} - term));
    }
    return product;
}

// Long buffers run as two streams, a chunk each, whose blocks are independent of each other,
// so that one stream's lookups fill the other's wait: the first stream's register is then
// moved over the second chunk by one multiplication, skip = x^(8 * kChunk) mod P.
template <typename Word, bool Reflected>
Word RunWords(const Word* tables, Word skip, Word polynomial, Word s, const unsigned char* data,
              unsigned __int64 length) {
    for (; length >= 2 * kChunk; length -= 2 * kChunk, data += 2 * kChunk) {
        Word second = 0;
        for (unsigned int n = 0; n < kChunk; n += kSlices) {
            s = Block<Word, Reflected>(tables, s, data + n);
            second = Block<Word, Reflected>(tables, second, data + kChunk + n);
        }
        s = MultiplyMod<Word, Reflected>(s, skip, polynomial) ^ second;
    }
    for (; length >= kSlices; length -= kSlices, data += kSlices) {
        s = Block<Word, Reflected>(tables, s, data);
    }
    for (; length > 0; --length, ++data) {
        s = Step<Word, Reflected>(tables, s, *data);
    }
    return s;
}

// P without its top term in the word's form: scaled up, or bit-reversed.
template <typename Word>
Word WordPolynomial(unsigned int width, unsigned __int64 polynomial, bool reflected) {
    return static_cast<Word>(reflected ? ReflectLow(polynomial, width)
                                       : polynomial << (sizeof(Word) * 8 - width));
}

// The kernels' form of the register in and out of the word register: a reflected register
// sits in the low bits as it is, an unreflected one is moved to the top.
template <typename Word>
unsigned __int64 RunScaled(const t_Plan& plan, const Word* tables, unsigned __int64 state,
                           const unsigned char* data, unsigned __int64 length) {
    const Word skip = static_cast<Word>(plan.sliceSkip);
    const Word polynomial = static_cast<Word>(plan.slicePolynomial);
    if (plan.reflected) {
        return RunWords<Word, true>(tables, skip, polynomial, static_cast<Word>(state), data,
                                    length);
    }
    const unsigned int shift = sizeof(Word) * 8 - plan.width;
    const Word s = static_cast<Word>(state << shift);
    return RunWords<Word, false>(tables, skip, polynomial, s, data, length) >> shift;
}

template <typename Word>
std::unique_ptr<Word[]> MakeSlices(Word polynomial, bool reflected) {
    constexpr unsigned int bits = sizeof(Word) * 8;
    std::unique_ptr<Word[]> tables(new Word[kSlices * 256]);
    // Table 0 is linear in the byte: eight one-bit entries, the rest XORs of smaller ones.
    tables[0] = 0;
    for (unsigned int bit = 1; bit < 256; bit <<= 1) {
        Word r = static_cast<Word>(reflected ? bit : static_cast<Word>(bit) << (bits - 8));
        for (int step = 0; step < 8; ++step) {
            if (reflected) {
                r = static_cast<Word>((r & 1U) != 0 ? (r >> 1) ^ polynomial : r >> 1);
            } else {
                r = static_cast<Word>((r >> (bits - 1)) != 0 ? (r << 1) ^ polynomial : r << 1);
            }
        }
        tables[bit] = r;
    }
    for (unsigned int i = 3; i < 256; ++i) {
        const unsigned int lowest = i & (0U - i);
        tables[i] = static_cast<Word>(tables[lowest] ^ tables[i ^ lowest]);
    }
    for (unsigned int k = 1; k < kSlices; ++k) {
        for (unsigned int i = 0; i < 256; ++i) {
            const Word previous = tables[(k - 1) * 256 + i];
            tables[k * 256 + i] = reflected ? Step<Word, true>(tables.get(), previous, 0)
                                            : Step<Word, false>(tables.get(), previous, 0);
        }
    }
    return tables;
}

// x^(8 * kChunk) mod P in the word's form, by squaring x.
template <typename Word>
Word MakeSkip(Word polynomial, bool reflected) {
    constexpr unsigned int bits = sizeof(Word) * 8;
    Word power = static_cast<Word>(reflected ? Word{1} << (bits - 2) : 2U); // x
    for (unsigned __int64 exponent = 1; exponent < 8 * kChunk; exponent *= 2) {
        power = reflected ? MultiplyMod<Word, true>(power, power, polynomial)
                          : MultiplyMod<Word, false>(power, power, polynomial);
    }
    return power;
}

template <typename Word>
void Build(t_Plan& plan, unsigned __int64 polynomial, std::unique_ptr<Word[]>& slices) {
    const Word p = WordPolynomial<Word>(plan.width, polynomial, plan.reflected);
    slices = MakeSlices<Word>(p, plan.reflected);
    plan.slicePolynomial = p;
    plan.sliceSkip = MakeSkip<Word>(p, plan.reflected);
}

} // namespace

void BuildSlices(t_Plan& plan, unsigned __int64 polynomial) {
    if (plan.width > 32) {
        Build<unsigned __int64>(plan, polynomial, plan.slices64);
    } else {
        Build<unsigned int>(plan, polynomial, plan.slices32);
    }
}

unsigned __int64 RunSliced(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                           unsigned __int64 length) {
    if (plan.slices64) {
        return RunScaled(plan, plan.slices64.get(), state, data, length);
    }
    return RunScaled(plan, plan.slices32.get(), state, data, length);
}

} // namespace ZRB_CrcKernel
