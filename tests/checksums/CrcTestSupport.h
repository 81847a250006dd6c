// The bit-at-a-time CRC of the parametric model, and calls of the engine at any register width.
#ifndef LZRB_CRC_TEST_SUPPORT_H
#define LZRB_CRC_TEST_SUPPORT_H

#include "CZRB_Crc.h"

#include <vector>

using U64 = unsigned __int64;

struct Params {
    unsigned int width;
    U64 polynomial, seed;
    unsigned char refIn, refOut;
    U64 finalXor;
};

inline U64 Mask(unsigned int width) {
    return width == 64 ? ~0ULL : (1ULL << width) - 1;
}

inline U64 Reflect(U64 value, unsigned int bits) {
    U64 r = 0;
    for (unsigned int i = 0; i < bits; ++i) {
        r = (r << 1) | ((value >> i) & 1U);
    }
    return r;
}

// The register of the model, fed one byte at a time; `start` is the initial register.
class ReferenceRegister {
public:
    ReferenceRegister(const Params& p, U64 start) : m_p(p), m_r(start & Mask(p.width)) {}
    void Feed(unsigned char byte) {
        const U64 b = m_p.refIn ? Reflect(byte, 8) : byte;
        const U64 top = 1ULL << (m_p.width - 1);
        for (int bit = 7; bit >= 0; --bit) {
            const bool feedback = (((b >> bit) & 1U) != 0) != ((m_r & top) != 0);
            m_r = (m_r << 1) & Mask(m_p.width);
            if (feedback) {
                m_r ^= m_p.polynomial & Mask(m_p.width);
            }
        }
    }
    U64 Result() const {
        return (m_p.refOut ? Reflect(m_r, m_p.width) : m_r) ^ (m_p.finalXor & Mask(m_p.width));
    }

private:
    Params m_p;
    U64 m_r;
};

inline U64 ReferenceCrc(const Params& p, const unsigned char* data, size_t length, U64 start) {
    ReferenceRegister reg(p, start);
    for (size_t i = 0; i < length; ++i) {
        reg.Feed(data[i]);
    }
    return reg.Result();
}

inline U64 ReferenceCrc(const Params& p, const std::vector<unsigned char>& data, U64 start) {
    return ReferenceCrc(p, data.data(), data.size(), start);
}

// Calls use(&r) with a register r of the width's type holding start; returns r afterwards.
template <class F>
U64 WithRegister(unsigned int width, U64 start, F use) {
    const auto run = [&use](auto r) {
        use(&r);
        return static_cast<U64>(r);
    };
    return width == 8    ? run(static_cast<unsigned char>(start))
           : width == 16 ? run(static_cast<unsigned short>(start))
           : width == 32 ? run(static_cast<unsigned int>(start))
                         : run(start);
}

// The byte-buffer Compute of the given width; the register holds start before.
inline U64 ComputeAt(const CZRB_Crc& crc, unsigned int width, const unsigned char* data,
                     size_t length, U64 start, unsigned char continueFlag) {
    return WithRegister(width, start, [&](auto* r) { crc.Compute(data, length, r, continueFlag); });
}

// The catalogue; MIL-STD-1760 is its only row without a CRC table.
inline std::vector<CZRB_Crc::t_CatalogueEntry> Catalogue() {
    unsigned int count = 0;
    const CZRB_Crc::t_CatalogueEntry* rows = CZRB_Crc::GetCatalogue(&count);
    return {rows, rows + count};
}

inline Params ParamsOf(const CZRB_Crc::t_CatalogueEntry& row) {
    return {row.width,          row.polynomial,      row.seed,
            row.inputReflected, row.outputReflected, row.finalXor};
}

#endif
