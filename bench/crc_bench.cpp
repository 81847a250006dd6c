// Throughput of CZRB_Crc::Compute for catalogue CRCs of every width, on 64 B, 1 KiB, 1 MiB and
// 8 MiB buffers, with the kernel the processor gets ("auto") and with each available kernel
// forced; baselines in the same run: zlib's crc32 and ISA-L's fixed-polynomial kernels. Also
// the time a configuration takes (Create), with the bytes it adds to an engine as a counter.
//
// Names: Crc/<CRC>/<kernel>/<bytes>, Baseline/<function>/<bytes>, Create/<CRC>/<kernel>.
#include "CZRB_Crc.h"
#include "checksums/CrcKernel.h"
#include "checksums/CrcPath.h"

#include <benchmark/benchmark.h>

#ifdef LZRB_HAVE_ZLIB
#include <zlib.h>
#endif
#ifdef LZRB_HAVE_ISAL
#include <isa-l/crc.h>
#include <isa-l/crc64.h>
#endif

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZRB_CrcKernel::t_Path;

const std::int64_t kSizes[] = {64, 1 << 10, 1 << 20, 8 << 20};

struct NamedCrc {
    const char* name;
    CZRB_Crc::t_StdCrc standard;
};

const NamedCrc kCrcs[] = {
    {"CRC-8/SMBUS", CZRB_Crc::CRC_8_SMBUS},
    {"CRC-8/ROHC", CZRB_Crc::CRC_8_ROHC},
    {"CRC-16/T10-DIF", CZRB_Crc::CRC_16_T10_DIF},
    {"CRC-16/ARC", CZRB_Crc::CRC_16_ARC},
    {"CRC-32/ISO-HDLC", CZRB_Crc::CRC_32_ISO_HDLC},
    {"CRC-32/BZIP2", CZRB_Crc::CRC_32_BZIP2},
    {"CRC-32C", CZRB_Crc::CRC_32C},
    {"CRC-64/XZ", CZRB_Crc::CRC_64_XZ},
    {"CRC-64/ECMA-182", CZRB_Crc::CRC_64_ECMA_182},
};

std::vector<unsigned char> MakeData(std::int64_t size) {
    std::vector<unsigned char> data(static_cast<std::size_t>(size));
    unsigned int state = 12345;
    for (auto& b : data) {
        state = state * 1103515245U + 12345U;
        b = static_cast<unsigned char>(state >> 16);
    }
    return data;
}

unsigned int WidthOf(CZRB_Crc::t_StdCrc standard) {
    const int group = standard >> 12;
    return group == 0 ? 8 : group == 1 ? 16 : group == 3 ? 32 : 64;
}

// The engine's CRC of `data` at its width, through the incremental form.
std::uint64_t EngineCrc(const CZRB_Crc& crc, const std::vector<unsigned char>& data) {
    return crc.Finish(crc.Update(crc.Begin(), data.data(), data.size()));
}

void SetThroughput(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

// Runs with `path` forced for engines configured inside; the best path again afterwards.
class ForcedPath {
public:
    explicit ForcedPath(t_Path path) { ZRB_CrcKernel::SelectPath(path); }
    ~ForcedPath() { ZRB_CrcKernel::SelectPath(ZRB_CrcKernel::BestPath()); }
    ForcedPath(const ForcedPath&) = delete;
    ForcedPath& operator=(const ForcedPath&) = delete;
};

template <typename Register>
void Run(benchmark::State& state, const CZRB_Crc& crc, const std::vector<unsigned char>& data) {
    for (auto _ : state) {
        Register result = 0;
        crc.Compute(data.data(), data.size(), &result, 0);
        benchmark::DoNotOptimize(result);
    }
}

void BM_Compute(benchmark::State& state, CZRB_Crc::t_StdCrc standard, t_Path path) {
    const ForcedPath forced(path);
    const CZRB_Crc crc(standard);
    const auto data = MakeData(state.range(0));
    switch (WidthOf(standard)) {
    case 8:
        Run<unsigned char>(state, crc, data);
        break;
    case 16:
        Run<unsigned short>(state, crc, data);
        break;
    case 32:
        Run<unsigned int>(state, crc, data);
        break;
    default:
        Run<unsigned __int64>(state, crc, data);
        break;
    }
    SetThroughput(state);
}

// A baseline function of (initial value, data, length), checked against the engine first.
template <typename Function>
void BM_Baseline(benchmark::State& state, Function function, CZRB_Crc::t_StdCrc same) {
    const auto data = MakeData(state.range(0));
    if (static_cast<std::uint64_t>(function(data)) != EngineCrc(CZRB_Crc(same), data)) {
        state.SkipWithError("baseline disagrees with CZRB_Crc");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(function(data));
    }
    SetThroughput(state);
}

void BM_Create(benchmark::State& state, CZRB_Crc::t_StdCrc standard, t_Path path) {
    const ForcedPath forced(path);
    CZRB_Crc crc;
    for (auto _ : state) {
        crc.Create(standard);
        benchmark::ClobberMemory();
    }
    // What a configuration adds beside the described tables: its plan with the control block
    // of its shared pointer (two words) and the engine's pointer to it, and the portable
    // kernel's tables where that kernel is in use.
    using Plan = ZRB_CrcKernel::t_Plan;
    const std::size_t tables = WidthOf(standard) > 32 ? sizeof(ZRB_CrcKernel::t_PortableTables64)
                                                      : sizeof(ZRB_CrcKernel::t_PortableTables32);
    const std::size_t portable = path == ZRB_CrcKernel::PATH_PORTABLE ? tables : 0;
    state.counters["extra_bytes"] =
        static_cast<double>(sizeof(Plan) + 2 * sizeof(std::shared_ptr<const Plan>) + portable);
}

template <typename Function>
void RegisterBaseline(const char* name, Function function, CZRB_Crc::t_StdCrc same) {
    for (std::int64_t size : kSizes) {
        benchmark::RegisterBenchmark(
            (std::string("Baseline/") + name).c_str(),
            [function, same](benchmark::State& state) { BM_Baseline(state, function, same); })
            ->Arg(size);
    }
}

bool RegisterAll() {
    std::vector<std::pair<std::string, t_Path>> paths = {{"auto", ZRB_CrcKernel::BestPath()}};
    for (int p = ZRB_CrcKernel::PATH_PORTABLE; p < ZRB_CrcKernel::PATH_COUNT; ++p) {
        const auto path = static_cast<t_Path>(p);
        if (ZRB_CrcKernel::IsPathAvailable(path)) {
            paths.emplace_back(ZRB_CrcKernel::PathName(path), path);
        }
    }
    for (const NamedCrc& crc : kCrcs) {
        for (const auto& [label, path] : paths) {
            const std::string name = std::string("Crc/") + crc.name + "/" + label;
            for (std::int64_t size : kSizes) {
                benchmark::RegisterBenchmark(name.c_str(), BM_Compute, crc.standard, path)
                    ->Arg(size);
            }
        }
    }
#ifdef LZRB_HAVE_ZLIB
    RegisterBaseline(
        "zlib_crc32",
        [](const std::vector<unsigned char>& d) {
            return crc32(0L, d.data(), static_cast<unsigned int>(d.size()));
        },
        CZRB_Crc::CRC_32_ISO_HDLC);
#endif
#ifdef LZRB_HAVE_ISAL
    RegisterBaseline(
        "isal_crc32_gzip_refl",
        [](const std::vector<unsigned char>& d) { return crc32_gzip_refl(0, d.data(), d.size()); },
        CZRB_Crc::CRC_32_ISO_HDLC);
    RegisterBaseline(
        "isal_crc32_ieee",
        [](const std::vector<unsigned char>& d) { return crc32_ieee(0, d.data(), d.size()); },
        CZRB_Crc::CRC_32_BZIP2);
    RegisterBaseline(
        "isal_crc16_t10dif",
        [](const std::vector<unsigned char>& d) { return crc16_t10dif(0, d.data(), d.size()); },
        CZRB_Crc::CRC_16_T10_DIF);
    RegisterBaseline(
        "isal_crc64_ecma_refl",
        [](const std::vector<unsigned char>& d) { return crc64_ecma_refl(0, d.data(), d.size()); },
        CZRB_Crc::CRC_64_XZ);
#endif
    for (const NamedCrc& crc : {kCrcs[0], kCrcs[4], kCrcs[7]}) {
        for (const auto& [label, path] : paths) {
            benchmark::RegisterBenchmark((std::string("Create/") + crc.name + "/" + label).c_str(),
                                         BM_Create, crc.standard, path);
        }
    }
    return true;
}

const bool g_registered = RegisterAll();

} // namespace
