// 'zrb crc' over a 1 GiB file against the engine's in-memory speed over a 1 GiB buffer, in the
// same run (the file is read from a warm page cache). The tool should reach at least 0.7 of
// the engine. Also the tool's read path in-process: feeding the engine, alone, and feeding
// zlib's crc32, whose ratio to zlib in memory shows what the read path leaves to a faster
// engine.
#include "CZRB_Crc.h"
#include "InputBlocks.h"

#include <benchmark/benchmark.h>

#ifdef LZRB_HAVE_ZLIB
#include <zlib.h>
#endif

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kBytes = std::size_t{1} << 30;

const std::vector<unsigned char>& Buffer() {
    static const std::vector<unsigned char> data = [] {
        std::vector<unsigned char> bytes(kBytes);
        unsigned int state = 12345;
        for (auto& b : bytes) {
            state = state * 1103515245U + 12345U;
            b = static_cast<unsigned char>(state >> 16);
        }
        return bytes;
    }();
    return data;
}

// The buffer written to a file once, removed when the program ends.
class BigFile {
public:
    BigFile() : m_path("/tmp/zrb_crc_bench_" + std::to_string(::getpid()) + ".bin") {
        std::ofstream(m_path, std::ios::binary)
            .write(reinterpret_cast<const char*>(Buffer().data()),
                   static_cast<std::streamsize>(Buffer().size()));
    }
    ~BigFile() { std::remove(m_path.c_str()); }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

const std::string& FilePath() {
    static const BigFile file;
    return file.Path();
}

unsigned int EngineCrc32() {
    static const unsigned int value = [] {
        unsigned int crc = 0;
        CZRB_Crc(CZRB_Crc::CRC_32_ISO_HDLC).Compute(Buffer().data(), Buffer().size(), &crc, 0);
        return crc;
    }();
    return value;
}

void SetThroughput(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(kBytes));
}

// CPU seconds used so far by this process, or by its waited-for children.
double CpuSeconds(int who) {
    rusage usage{};
    ::getrusage(who, &usage);
    const auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// GiB per CPU second: on a shared, busy machine wall time measures the neighbours too.
void SetCpuThroughput(benchmark::State& state, double cpuSeconds) {
    state.counters["GiB_per_cpu_s"] =
        static_cast<double>(state.iterations()) * kBytes / (1 << 30) / cpuSeconds;
}

void BM_EngineInMemory(benchmark::State& state) {
    const CZRB_Crc crc(CZRB_Crc::CRC_32_ISO_HDLC);
    Buffer();
    const double cpuBefore = CpuSeconds(RUSAGE_SELF);
    for (auto _ : state) {
        unsigned int value = 0;
        crc.Compute(Buffer().data(), Buffer().size(), &value, 0);
        benchmark::DoNotOptimize(value);
    }
    SetThroughput(state);
    SetCpuThroughput(state, CpuSeconds(RUSAGE_SELF) - cpuBefore);
}

void BM_ZrbCrcFile(benchmark::State& state) {
    const std::string command = std::string(ZRB_PATH) + " crc --quiet " + FilePath();
    char expected[16];
    std::snprintf(expected, sizeof expected, "%08x", EngineCrc32());
    const double cpuBefore = CpuSeconds(RUSAGE_CHILDREN);
    for (auto _ : state) {
        std::FILE* tool = ::popen(command.c_str(), "r");
        char line[256] = {};
        const bool read = tool != nullptr && std::fgets(line, sizeof line, tool) != nullptr;
        if (tool == nullptr || ::pclose(tool) != 0 || !read ||
            std::string(line).rfind(expected, 0) != 0) {
            state.SkipWithError("zrb crc failed or disagrees with the engine");
            break;
        }
    }
    SetThroughput(state);
    SetCpuThroughput(state, CpuSeconds(RUSAGE_CHILDREN) - cpuBefore);
}

template <class Consume>
void ReadFileThrough(benchmark::State& state, Consume consume) {
    FilePath();
    for (auto _ : state) {
        zrb::InputBlocks input(FilePath());
        input.ForEachBlock(consume);
    }
    SetThroughput(state);
}

void BM_ReadPathEngine(benchmark::State& state) {
    const CZRB_Crc crc(CZRB_Crc::CRC_32_ISO_HDLC);
    unsigned __int64 reg = crc.Begin();
    ReadFileThrough(state, [&](const unsigned char* data, std::size_t length) {
        reg = crc.Update(reg, data, length);
    });
    benchmark::DoNotOptimize(reg);
}

// The read path alone: one byte of every page is looked at, so what is measured is mapping
// (or reading) the file. A CRC engine of speed E keeps 0.7 E from a file only while this is at
// least 2.3 E.
void BM_ReadPathOnly(benchmark::State& state) {
    unsigned int sum = 0;
    ReadFileThrough(state, [&](const unsigned char* data, std::size_t length) {
        for (std::size_t i = 0; i < length; i += 4096) {
            sum += data[i];
        }
    });
    benchmark::DoNotOptimize(sum);
}

#ifdef LZRB_HAVE_ZLIB
void BM_ZlibInMemory(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            crc32(0L, Buffer().data(), static_cast<unsigned int>(Buffer().size())));
    }
    SetThroughput(state);
}

void BM_ReadPathZlib(benchmark::State& state) {
    uLong value = 0;
    ReadFileThrough(state, [&](const unsigned char* data, std::size_t length) {
        value = crc32(value, data, static_cast<unsigned int>(length));
    });
    benchmark::DoNotOptimize(value);
}
#endif

} // namespace

BENCHMARK(BM_EngineInMemory)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_ZrbCrcFile)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_ReadPathEngine)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_ReadPathOnly)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
#ifdef LZRB_HAVE_ZLIB
BENCHMARK(BM_ZlibInMemory)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(BM_ReadPathZlib)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
#endif
