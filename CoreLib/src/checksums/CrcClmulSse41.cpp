// Carry-less folding in 128-bit lanes (SSE4.1, PCLMULQDQ), and the final steps every wider
// kernel shares: the last partial lane and the Barrett reduction.
//
// A lane A = Ah * x^64 + Al followed by D more bits of message is worth
// Ah * (x^(D+64) mod P) + Al * (x^D mod P): two 64x64-bit products, no wider than a lane.
#include "checksums/CrcClmul.h"

#if defined(__x86_64__)

namespace ZRB_CrcKernel {
namespace {

#define TARGET LZRB_TARGET_SSE41_CLMUL

// Shuffle that reverses the sixteen bytes of a lane.
alignas(16) constexpr unsigned char kReverse[16] = {15, 14, 13, 12, 11, 10, 9, 8,
                                                    7,  6,  5,  4,  3,  2,  1, 0};
// Byte shifts by shuffle: 16 bytes from offset o select byte j - 16 + o, or zero.
alignas(16) const unsigned char kShift[48] = {
    0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80,
    0,    1,    2,    3,    4,    5,    6,    7,    8,    9,    10,   11,   12,   13,   14,   15,
    0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
// Byte masks: 16 bytes from offset o keep bytes j with o + j < 16 or o + j >= 32.
alignas(16) const unsigned char kKeep[48] = {
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

TARGET inline __m128i LoadU(const unsigned char* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

// Sixteen message bytes as a lane: natural form wants the first byte on top.
template <bool Reflected>
TARGET inline __m128i Lane(const unsigned char* p) {
    if constexpr (Reflected) {
        return LoadU(p);
    } else {
        return _mm_shuffle_epi8(LoadU(p), LoadU(kReverse));
    }
}

// The start state goes onto the first 64 message bits: the lane's top half.
template <bool Reflected>
TARGET inline __m128i StateLane(unsigned __int64 state) {
    const long long s = static_cast<long long>(state);
    return Reflected ? _mm_set_epi64x(0, s) : _mm_set_epi64x(s, 0);
}

TARGET inline __m128i Constants(const t_Plan& plan, t_Fold fold) {
    return _mm_load_si128(reinterpret_cast<const __m128i*>(plan.fold[fold]));
}

// The lane moved ahead by the distance of `k`.
TARGET inline __m128i Fold(__m128i a, __m128i k) {
    return _mm_xor_si128(_mm_clmulepi64_si128(a, k, 0x00), _mm_clmulepi64_si128(a, k, 0x11));
}

TARGET inline __m128i Xor3(__m128i a, __m128i b, __m128i c) {
    return _mm_xor_si128(_mm_xor_si128(a, b), c);
}

TARGET inline unsigned __int64 Low64(__m128i v) {
    return static_cast<unsigned __int64>(_mm_cvtsi128_si64(v));
}
TARGET inline unsigned __int64 High64(__m128i v) {
    return static_cast<unsigned __int64>(_mm_extract_epi64(v, 1));
}

// The lane followed by the last t (1..15) message bytes, which end at `end`: the t bytes that
// the lane pushes beyond 128 bits are folded by 128, the rest of it shifted, and the new bytes
// taken from the last 16 bytes of the message.
template <bool Reflected>
TARGET __m128i FoldPartial(__m128i a, __m128i k128, const unsigned char* end, unsigned int t) {
    const __m128i last = Lane<Reflected>(end - 16);
    __m128i out, kept, fresh;
    if constexpr (Reflected) {
        out = _mm_shuffle_epi8(a, LoadU(kShift + t));
        kept = _mm_shuffle_epi8(a, LoadU(kShift + 16 + t));
        fresh = _mm_and_si128(last, LoadU(kKeep + 16 + t));
    } else {
        out = _mm_shuffle_epi8(a, LoadU(kShift + 32 - t));
        kept = _mm_shuffle_epi8(a, LoadU(kShift + 16 - t));
        fresh = _mm_and_si128(last, LoadU(kKeep + 16 - t));
    }
    return Xor3(Fold(out, k128), kept, fresh);
}

// The CRC state of the message that ends with lane A: (A * x^64) mod P. Ah * x^128 is
// folded to 128 bits first, then Barrett: q = floor(R / x^64 * mu / x^64), R - q * P.
template <bool Reflected>
TARGET unsigned __int64 Reduce(const t_Plan& plan, __m128i a, __m128i k128) {
    const __m128i barrett = _mm_set_epi64x(static_cast<long long>(plan.polynomial),
                                           static_cast<long long>(plan.quotient));
    if constexpr (Reflected) {
        // Products come out multiplied by x here: hence the shifts by one.
        const __m128i r = _mm_xor_si128(_mm_clmulepi64_si128(a, k128, 0x10), _mm_srli_si128(a, 8));
        const unsigned __int64 top = Low64(r);
        const __m128i t1 = _mm_clmulepi64_si128(r, barrett, 0x00);
        const unsigned __int64 q = (Low64(t1) << 1) ^ top;
        const __m128i t2 =
            _mm_clmulepi64_si128(_mm_cvtsi64_si128(static_cast<long long>(q)), barrett, 0x10);
        return High64(r) ^ (High64(t2) << 1) ^ (Low64(t2) >> 63);
    } else {
        const __m128i r = _mm_xor_si128(_mm_clmulepi64_si128(a, k128, 0x01), _mm_slli_si128(a, 8));
        const unsigned __int64 top = High64(r);
        const __m128i t1 = _mm_clmulepi64_si128(r, barrett, 0x01);
        const unsigned __int64 q = High64(t1) ^ top;
        const __m128i t2 =
            _mm_clmulepi64_si128(_mm_cvtsi64_si128(static_cast<long long>(q)), barrett, 0x10);
        return Low64(r) ^ Low64(t2);
    }
}

template <bool Reflected>
TARGET unsigned __int64 Finish(const t_Plan& plan, __m128i a, const unsigned char* data,
                               unsigned __int64 length) {
    const __m128i k128 = Constants(plan, FOLD_128);
    for (; length >= 16; length -= 16, data += 16) {
        a = _mm_xor_si128(Fold(a, k128), Lane<Reflected>(data));
    }
    if (length > 0) {
        a = FoldPartial<Reflected>(a, k128, data + length, static_cast<unsigned int>(length));
    }
    return Reduce<Reflected>(plan, a, k128);
}

template <bool Reflected>
TARGET unsigned __int64 Run(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                            unsigned __int64 length) {
    const __m128i start = StateLane<Reflected>(state);
    if (length < 128) {
        const __m128i a = _mm_xor_si128(Lane<Reflected>(data), start);
        return Finish<Reflected>(plan, a, data + 16, length - 16);
    }
    // Eight lanes, each folded over the 128 bytes of the other seven and itself.
    __m128i x0 = _mm_xor_si128(Lane<Reflected>(data), start);
    __m128i x1 = Lane<Reflected>(data + 16), x2 = Lane<Reflected>(data + 32);
    __m128i x3 = Lane<Reflected>(data + 48), x4 = Lane<Reflected>(data + 64);
    __m128i x5 = Lane<Reflected>(data + 80), x6 = Lane<Reflected>(data + 96);
    __m128i x7 = Lane<Reflected>(data + 112);
    const __m128i k1024 = Constants(plan, FOLD_1024);
    for (data += 128, length -= 128; length >= 128; data += 128, length -= 128) {
        x0 = _mm_xor_si128(Fold(x0, k1024), Lane<Reflected>(data));
        x1 = _mm_xor_si128(Fold(x1, k1024), Lane<Reflected>(data + 16));
        x2 = _mm_xor_si128(Fold(x2, k1024), Lane<Reflected>(data + 32));
        x3 = _mm_xor_si128(Fold(x3, k1024), Lane<Reflected>(data + 48));
        x4 = _mm_xor_si128(Fold(x4, k1024), Lane<Reflected>(data + 64));
        x5 = _mm_xor_si128(Fold(x5, k1024), Lane<Reflected>(data + 80));
        x6 = _mm_xor_si128(Fold(x6, k1024), Lane<Reflected>(data + 96));
        x7 = _mm_xor_si128(Fold(x7, k1024), Lane<Reflected>(data + 112));
    }
    __m128i a = Xor3(Fold(x0, Constants(plan, FOLD_896)), Fold(x1, Constants(plan, FOLD_768)),
                     Fold(x2, Constants(plan, FOLD_640)));
    a = Xor3(a, Fold(x3, Constants(plan, FOLD_512)), Fold(x4, Constants(plan, FOLD_384)));
    a = Xor3(a, Fold(x5, Constants(plan, FOLD_256)), Fold(x6, Constants(plan, FOLD_128)));
    return Finish<Reflected>(plan, _mm_xor_si128(a, x7), data, length);
}

} // namespace

unsigned __int64 RunClmulSse41(const t_Plan& plan, unsigned __int64 state,
                               const unsigned char* data, unsigned __int64 length) {
    return plan.reflected ? Run<true>(plan, state, data, length)
                          : Run<false>(plan, state, data, length);
}

unsigned __int64 FinishClmul(const t_Plan& plan, __m128i acc, const unsigned char* data,
                             unsigned __int64 length) {
    return plan.reflected ? Finish<true>(plan, acc, data, length)
                          : Finish<false>(plan, acc, data, length);
}

} // namespace ZRB_CrcKernel

#endif
