// Throughput of CZRB_Crc::Compute for one catalogue CRC of each width, with zlib's crc32 and
// a plain bit-at-a-time CRC-32 as baselines, on 1 KiB and 1 MiB buffers.
#include "CZRB_Crc.h"

#include <benchmark/benchmark.h>

#ifdef LZRB_HAVE_ZLIB
#include <zlib.h>
#endif

#include <cstdint>
#include <vector>

namespace {

std::vector<unsigned char> MakeData(std::int64_t size) {
    std::vector<unsigned char> data(static_cast<std::size_t>(size));
    unsigned int state = 12345;
    for (auto& b : data) {
        state = state * 1103515245U + 12345U;
        b = static_cast<unsigned char>(state >> 16);
    }
    return data;
}

// Baselines must agree with the engine's CRC-32 on the same buffer.
void CheckAgainstEngine(benchmark::State& state, const std::vector<unsigned char>& data,
                        unsigned int baseline) {
    unsigned int engine = 0;
    CZRB_Crc(CZRB_Crc::CRC_32_ISO_HDLC).Compute(data.data(), data.size(), &engine, 0);
    if (engine != baseline) {
        state.SkipWithError("baseline disagrees with CZRB_Crc");
    }
}

void SetThroughput(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

template <typename Register>
void BM_Compute(benchmark::State& state, CZRB_Crc::t_StdCrc standard) {
    const CZRB_Crc crc(standard);
    const auto data = MakeData(state.range(0));
    for (auto _ : state) {
        Register result = 0;
        crc.Compute(data.data(), data.size(), &result, 0);
        benchmark::DoNotOptimize(result);
    }
    SetThroughput(state);
}

// CRC-32 (ISO-HDLC) one bit at a time, reflected form: the textbook baseline.
unsigned int BitwiseCrc32(const unsigned char* data, std::size_t length) {
    unsigned int crc = 0xFFFFFFFFU;
    for (std::size_t i = 0; i < length; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ 0xEDB88320U : crc >> 1;
        }
    }
    return ~crc;
}

void BM_BitwiseCrc32(benchmark::State& state) {
    const auto data = MakeData(state.range(0));
    CheckAgainstEngine(state, data, BitwiseCrc32(data.data(), data.size()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(BitwiseCrc32(data.data(), data.size()));
    }
    SetThroughput(state);
}

#ifdef LZRB_HAVE_ZLIB
void BM_ZlibCrc32(benchmark::State& state) {
    const auto data = MakeData(state.range(0));
    CheckAgainstEngine(
        state, data,
        static_cast<unsigned int>(crc32(0L, data.data(), static_cast<unsigned int>(data.size()))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(crc32(0L, data.data(), static_cast<unsigned int>(data.size())));
    }
    SetThroughput(state);
}
BENCHMARK(BM_ZlibCrc32)->Arg(1 << 10)->Arg(1 << 20);
#endif

} // namespace

void BM_Crc8_AUTOSAR(benchmark::State& state) {
    BM_Compute<unsigned char>(state, CZRB_Crc::CRC_8_AUTOSAR);
}
void BM_Crc16_CCITT_FALSE(benchmark::State& state) {
    BM_Compute<unsigned short>(state, CZRB_Crc::CRC_16_CCITT_FALSE);
}
void BM_Crc32_ISO_HDLC(benchmark::State& state) {
    BM_Compute<unsigned int>(state, CZRB_Crc::CRC_32_ISO_HDLC);
}
void BM_Crc64_XZ(benchmark::State& state) {
    BM_Compute<unsigned __int64>(state, CZRB_Crc::CRC_64_XZ);
}

BENCHMARK(BM_Crc8_AUTOSAR)->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(BM_Crc16_CCITT_FALSE)->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(BM_Crc32_ISO_HDLC)->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(BM_Crc64_XZ)->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(BM_BitwiseCrc32)->Arg(1 << 10)->Arg(1 << 20);
