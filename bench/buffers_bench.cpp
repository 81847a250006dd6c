// Throughput of the memory stream, against a hand-written little-endian encoder over a
// std::vector in the same run, and of the string's number formatting.
#include "CZRB_MemoryBuffer.h"
#include "CZRB_String.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

// Appends 1 MiB in records of state.range(1) bytes to a stream of state.range(0)-byte blocks,
// then reads it back.
void BM_MemoryBufferWriteRead(benchmark::State& state) {
    const auto blockSize = static_cast<unsigned int>(state.range(0));
    const auto recordSize = static_cast<unsigned int>(state.range(1));
    const unsigned int records = (1U << 20) / recordSize;
    std::vector<unsigned char> record(recordSize, 0x5A);
    for (auto _ : state) {
        CZRB_MemoryBuffer buffer(blockSize);
        for (unsigned int i = 0; i < records; ++i) {
            buffer.AppendData(record.data(), recordSize);
        }
        buffer.ToStart();
        for (unsigned int i = 0; i < records; ++i) {
            buffer.RetrieveData(record.data(), recordSize);
        }
        benchmark::DoNotOptimize(record.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * records * recordSize * 2);
}
BENCHMARK(BM_MemoryBufferWriteRead)->Args({1024, 8})->Args({1024, 256})->Args({65536, 256});

// 64-bit values through the primitive operators.
void BM_MemoryBufferPrimitives(benchmark::State& state) {
    for (auto _ : state) {
        CZRB_MemoryBuffer buffer(4096);
        for (unsigned long long i = 0; i < 4096; ++i) {
            buffer << i;
        }
        buffer.ToStart();
        unsigned long long sum = 0;
        for (int i = 0; i < 4096; ++i) {
            unsigned long long value = 0;
            buffer >> value;
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * 4096);
}
BENCHMARK(BM_MemoryBufferPrimitives);

// 1,000,000 unsigned ints written with operator<< to a stream of default 1024-byte blocks and
// read back with operator>>; the baseline below does the same by hand.
constexpr unsigned int kRoundTripValues = 1000000;

void BM_MemoryBufferUint32RoundTrip(benchmark::State& state) {
    for (auto _ : state) {
        CZRB_MemoryBuffer buffer;
        for (unsigned int i = 0; i < kRoundTripValues; ++i) {
            buffer << i;
        }
        buffer.ToStart();
        unsigned int sum = 0;
        for (unsigned int i = 0; i < kRoundTripValues; ++i) {
            unsigned int value = 0;
            buffer >> value;
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * kRoundTripValues);
}
BENCHMARK(BM_MemoryBufferUint32RoundTrip);

// The baseline: a growing vector of bytes with a hand-written little-endian encoder.
void BM_HandEncoderUint32RoundTrip(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<unsigned char> bytes;
        for (unsigned int i = 0; i < kRoundTripValues; ++i) {
            bytes.push_back(static_cast<unsigned char>(i));
            bytes.push_back(static_cast<unsigned char>(i >> 8));
            bytes.push_back(static_cast<unsigned char>(i >> 16));
            bytes.push_back(static_cast<unsigned char>(i >> 24));
        }
        std::size_t position = 0;
        unsigned int sum = 0;
        for (unsigned int i = 0; i < kRoundTripValues; ++i) {
            const unsigned char* p = bytes.data() + position;
            sum += static_cast<unsigned int>(p[0]) | static_cast<unsigned int>(p[1]) << 8 |
                   static_cast<unsigned int>(p[2]) << 16 | static_cast<unsigned int>(p[3]) << 24;
            position += 4;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * kRoundTripValues);
}
BENCHMARK(BM_HandEncoderUint32RoundTrip);

// Grouped decimal text of 64-bit values.
void BM_StringFromNumber(benchmark::State& state) {
    unsigned long long value = 0x9E3779B97F4A7C15ULL;
    for (auto _ : state) {
        value = value * 6364136223846793005ULL + 1442695040888963407ULL;
        CZRB_String text = CZRB_String::FromNumber(value, 10, 3, '.');
        benchmark::DoNotOptimize(text.GetStringC());
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}
BENCHMARK(BM_StringFromNumber);

} // namespace
