// Carry-less folding in 256-bit registers (AVX2, VPCLMULQDQ): two 128-bit lanes per register,
// four registers at a time; the last lanes are finished by the 128-bit code.
#include "checksums/CrcClmul.h"

#if defined(__x86_64__)

namespace ZRB_CrcKernel {
namespace {

#define TARGET __attribute__((target("avx2,pclmul,vpclmulqdq")))

// Shuffle that reverses the sixteen bytes of a lane.
alignas(16) constexpr unsigned char kReverse[16] = {15, 14, 13, 12, 11, 10, 9, 8,
                                                    7,  6,  5,  4,  3,  2,  1, 0};

// Two message lanes; natural form reverses the bytes of each.
template <bool Reflected>
TARGET inline __m256i Lanes(const unsigned char* p) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    if constexpr (Reflected) {
        return v;
    } else {
        const __m128i reverse = _mm_load_si128(reinterpret_cast<const __m128i*>(kReverse));
        return _mm256_shuffle_epi8(v, _mm256_broadcastsi128_si256(reverse));
    }
}

// The start state on the top half of the first lane.
template <bool Reflected>
TARGET inline __m256i StateLanes(unsigned __int64 state) {
    const long long s = static_cast<long long>(state);
    return Reflected ? _mm256_set_epi64x(0, 0, 0, s) : _mm256_set_epi64x(0, 0, s, 0);
}

TARGET inline __m256i Constants(const t_Plan& plan, t_Fold fold) {
    return _mm256_broadcastsi128_si256(
        _mm_load_si128(reinterpret_cast<const __m128i*>(plan.fold[fold])));
}

TARGET inline __m256i Fold(__m256i a, __m256i k) {
    return _mm256_xor_si256(_mm256_clmulepi64_epi128(a, k, 0x00),
                            _mm256_clmulepi64_epi128(a, k, 0x11));
}

template <bool Reflected>
TARGET unsigned __int64 Run(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                            unsigned __int64 length) {
    if (length < 32) {
        return RunClmulSse41(plan, state, data, length);
    }
    const __m256i start = StateLanes<Reflected>(state);
    __m256i a;
    if (length >= 128) {
        __m256i x0 = _mm256_xor_si256(Lanes<Reflected>(data), start);
        __m256i x1 = Lanes<Reflected>(data + 32);
        __m256i x2 = Lanes<Reflected>(data + 64);
        __m256i x3 = Lanes<Reflected>(data + 96);
        const __m256i k1024 = Constants(plan, FOLD_1024);
        for (data += 128, length -= 128; length >= 128; data += 128, length -= 128) {
            x0 = _mm256_xor_si256(Fold(x0, k1024), Lanes<Reflected>(data));
            x1 = _mm256_xor_si256(Fold(x1, k1024), Lanes<Reflected>(data + 32));
            x2 = _mm256_xor_si256(Fold(x2, k1024), Lanes<Reflected>(data + 64));
            x3 = _mm256_xor_si256(Fold(x3, k1024), Lanes<Reflected>(data + 96));
        }
        a = _mm256_xor_si256(Fold(x0, Constants(plan, FOLD_768)),
                             Fold(x1, Constants(plan, FOLD_512)));
        a = _mm256_xor_si256(a, _mm256_xor_si256(Fold(x2, Constants(plan, FOLD_256)), x3));
    } else {
        a = _mm256_xor_si256(Lanes<Reflected>(data), start);
        data += 32;
        length -= 32;
    }
    const __m256i k256 = Constants(plan, FOLD_256);
    for (; length >= 32; data += 32, length -= 32) {
        a = _mm256_xor_si256(Fold(a, k256), Lanes<Reflected>(data));
    }
    // The first lane moves ahead by 128 bits onto the second.
    const __m128i k128 = _mm_load_si128(reinterpret_cast<const __m128i*>(plan.fold[FOLD_128]));
    const __m128i first = _mm256_castsi256_si128(a);
    const __m128i folded = _mm_xor_si128(_mm_clmulepi64_si128(first, k128, 0x00),
                                         _mm_clmulepi64_si128(first, k128, 0x11));
    return FinishClmul(plan, _mm_xor_si128(folded, _mm256_extracti128_si256(a, 1)), data, length);
}

} // namespace

unsigned __int64 RunClmulAvx2(const t_Plan& plan, unsigned __int64 state, const unsigned char* data,
                              unsigned __int64 length) {
    return plan.reflected ? Run<true>(plan, state, data, length)
                          : Run<false>(plan, state, data, length);
}

} // namespace ZRB_CrcKernel

#endif
