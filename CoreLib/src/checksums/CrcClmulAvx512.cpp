// Carry-less folding in 512-bit registers (AVX-512 F and BW, VPCLMULQDQ): four 128-bit lanes
// per register, four registers at a time; the last lanes are finished by the 128-bit code.
#include "checksums/CrcClmul.h"

#if defined(__x86_64__)

namespace ZRB_CrcKernel {
namespace {

#define TARGET __attribute__((target("avx512f,avx512bw,pclmul,vpclmulqdq")))

// The zero-masked broadcast and extract: the plain ones start from an undefined register,
// which GCC 12 reports as possibly uninitialised.
TARGET inline __m512i Broadcast(__m128i v) {
    return _mm512_maskz_broadcast_i32x4(0xFFFF, v);
}
template <int Lane>
TARGET inline __m128i Extract(__m512i v) {
    return _mm512_maskz_extracti32x4_epi32(0xF, v, Lane);
}

// Shuffle that reverses the sixteen bytes of a lane.
alignas(16) constexpr unsigned char kReverse[16] = {15, 14, 13, 12, 11, 10, 9, 8,
                                                    7,  6,  5,  4,  3,  2,  1, 0};

// Four message lanes; natural form reverses the bytes of each.
template <bool Reflected>
TARGET inline __m512i Lanes(const unsigned char* p) {
    const __m512i v = _mm512_loadu_si512(p);
    if constexpr (Reflected) {
        return v;
    } else {
        const __m128i reverse = _mm_load_si128(reinterpret_cast<const __m128i*>(kReverse));
        return _mm512_shuffle_epi8(v, Broadcast(reverse));
    }
}

// The start state on the top half of the first lane.
template <bool Reflected>
TARGET inline __m512i StateLanes(unsigned __int64 state) {
    const long long s = static_cast<long long>(state);
    return Reflected ? _mm512_set_epi64(0, 0, 0, 0, 0, 0, 0, s)
                     : _mm512_set_epi64(0, 0, 0, 0, 0, 0, s, 0);
}

TARGET inline __m512i Constants(const t_Plan& plan, t_Fold fold) {
    return Broadcast(_mm_load_si128(reinterpret_cast<const __m128i*>(plan.fold[fold])));
}

// The lanes moved ahead by the distance of `k`, with `b` added.
TARGET inline __m512i FoldXor(__m512i a, __m512i k, __m512i b) {
    return _mm512_ternarylogic_epi64(_mm512_clmulepi64_epi128(a, k, 0x00),
                                     _mm512_clmulepi64_epi128(a, k, 0x11), b, 0x96);
}

TARGET inline __m128i Fold128(__m128i a, const t_Plan& plan, t_Fold fold) {
    const __m128i k = _mm_load_si128(reinterpret_cast<const __m128i*>(plan.fold[fold]));
    return _mm_xor_si128(_mm_clmulepi64_si128(a, k, 0x00), _mm_clmulepi64_si128(a, k, 0x11));
}

template <bool Reflected>
TARGET unsigned __int64 Run(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                            unsigned __int64 length) {
    if (length < 64) {
        return RunClmulSse41(plan, state, data, length);
    }
    const __m512i start = StateLanes<Reflected>(state);
    __m512i a;
    if (length >= 256) {
        __m512i x0 = _mm512_xor_si512(Lanes<Reflected>(data), start);
        __m512i x1 = Lanes<Reflected>(data + 64);
        __m512i x2 = Lanes<Reflected>(data + 128);
        __m512i x3 = Lanes<Reflected>(data + 192);
        const __m512i k2048 = Constants(plan, FOLD_2048);
        for (data += 256, length -= 256; length >= 256; data += 256, length -= 256) {
            x0 = FoldXor(x0, k2048, Lanes<Reflected>(data));
            x1 = FoldXor(x1, k2048, Lanes<Reflected>(data + 64));
            x2 = FoldXor(x2, k2048, Lanes<Reflected>(data + 128));
            x3 = FoldXor(x3, k2048, Lanes<Reflected>(data + 192));
        }
        a = FoldXor(x0, Constants(plan, FOLD_1536), x3);
        a = FoldXor(x1, Constants(plan, FOLD_1024), a);
        a = FoldXor(x2, Constants(plan, FOLD_512), a);
    } else {
        a = _mm512_xor_si512(Lanes<Reflected>(data), start);
        data += 64;
        length -= 64;
    }
    const __m512i k512 = Constants(plan, FOLD_512);
    for (; length >= 64; data += 64, length -= 64) {
        a = FoldXor(a, k512, Lanes<Reflected>(data));
    }
    // The four lanes, first to last, move ahead onto the last one.
    __m128i x = Extract<3>(a);
    x = _mm_xor_si128(x, Fold128(Extract<2>(a), plan, FOLD_128));
    x = _mm_xor_si128(x, Fold128(Extract<1>(a), plan, FOLD_256));
    x = _mm_xor_si128(x, Fold128(Extract<0>(a), plan, FOLD_384));
    return FinishClmul(plan, x, data, length);
}

} // namespace

unsigned __int64 RunClmulAvx512(const t_Plan& plan, unsigned __int64 state,
                                const unsigned char* data, unsigned __int64 length) {
    return plan.reflected ? Run<true>(plan, state, data, length)
                          : Run<false>(plan, state, data, length);
}

} // namespace ZRB_CrcKernel

#endif
