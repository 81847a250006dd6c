// Folding and reduction constants of one configuration, derived from its polynomial.
#include "checksums/CrcKernel.h"

namespace ZRB_CrcKernel {
namespace {

// The fold distances in bits, in the order of t_Fold (ascending).
constexpr unsigned int kDistances[FOLD_COUNT] = {128, 256, 384,  512,  640,
                                                 768, 896, 1024, 1536, 2048};

// Powers of x modulo P = x^64 + low, walked upwards four exponents at a time: the four bits
// shifted out on top come back as their multiple of x^64 mod P, from a 16-entry table.
class PowerWalk {
public:
    explicit PowerWalk(unsigned __int64 low) {
        m_overflow[0] = 0;
        unsigned __int64 power = low; // x^64 mod P, then x^65, x^66, x^67
        for (unsigned int bit = 1; bit < 16; bit <<= 1) {
            m_overflow[bit] = power;
            power = (power << 1) ^ ((power >> 63) != 0 ? low : 0);
        }
        for (unsigned int i = 3; i < 16; ++i) {
            const unsigned int lowest = i & (0U - i);
            m_overflow[i] = m_overflow[lowest] ^ m_overflow[i ^ lowest];
        }
    }
    // x^k mod P; k never goes down from one call to the next.
    unsigned __int64 At(unsigned int k) {
        for (; m_exponent + 4 <= k; m_exponent += 4) {
            m_value = (m_value << 4) ^ m_overflow[m_value >> 60];
        }
        for (; m_exponent < k; ++m_exponent) {
            m_value = (m_value << 1) ^ m_overflow[m_value >> 63];
        }
        return m_value;
    }

private:
    unsigned __int64 m_overflow[16];
    unsigned __int64 m_value = 1; // x^0
    unsigned int m_exponent = 0;
};

// floor(x^128 / P) without its x^64 term, P = x^64 + low: long division of x^128, one
// quotient bit per step from x^63 down. `high` holds the remainder's terms x^64..x^127; the
// lower terms never decide a quotient bit and are not kept.
unsigned __int64 BarrettQuotient(unsigned __int64 low) {
    unsigned __int64 high = low; // x^128 - x^64 * P leaves x^64 * low
    unsigned __int64 quotient = 0;
    for (int j = 63; j >= 0; --j) {
        if (((high >> j) & 1U) == 0) {
            continue;
        }
        quotient |= 1ULL << j; // subtract x^j * P
        high ^= (1ULL << j) ^ (j == 0 ? 0 : low >> (64 - j));
    }
    return quotient;
}

} // namespace

std::shared_ptr<t_Plan> MakeFoldingPlan(unsigned int width, unsigned __int64 polynomial,
                                        unsigned __int64 seed, bool reflected) {
    const unsigned __int64 mask = width >= 64 ? ~0ULL : (1ULL << width) - 1;
    const unsigned __int64 low = (polynomial & mask) << (64 - width);
    auto plan = std::make_shared<t_Plan>();
    plan->width = width;
    plan->reflected = reflected;
    plan->start = KernelForm(*plan, seed & mask);
    PowerWalk power(low);
    for (int i = 0; i < FOLD_COUNT; ++i) {
        const unsigned int d = kDistances[i];
        // Natural form: {low half * x^D, high half * x^(D+64)}. Reflected: the high half sits in
        // the low 64 bits, and each product gains a factor x.
        const unsigned __int64 forLowHalf = power.At(reflected ? d - 1 : d);
        const unsigned __int64 forHighHalf = power.At(reflected ? d + 63 : d + 64);
        plan->fold[i][0] = reflected ? Reflect64(forHighHalf) : forLowHalf;
        plan->fold[i][1] = reflected ? Reflect64(forLowHalf) : forHighHalf;
    }
    const unsigned __int64 quotient = BarrettQuotient(low);
    plan->quotient = reflected ? Reflect64(quotient) : quotient;
    plan->polynomial = reflected ? Reflect64(low) : low;
    return plan;
}

std::shared_ptr<const t_Plan> MakePlan(unsigned int width, unsigned __int64 polynomial,
                                       unsigned __int64 seed, bool reflected) {
    std::shared_ptr<t_Plan> plan = MakeFoldingPlan(width, polynomial, seed, reflected);
    if (CurrentPath() == PATH_PORTABLE) {
        const unsigned __int64 mask = width >= 64 ? ~0ULL : (1ULL << width) - 1;
        BuildSlices(*plan, polynomial & mask);
    }
    return plan;
}

} // namespace ZRB_CrcKernel
