#include "checksums/CrcPath.h"

#include "checksums/CrcClmul.h"
#include "checksums/CrcKernel.h"

#include <atomic>
#include <initializer_list>

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace ZRB_CrcKernel {
namespace {

#if defined(__x86_64__)
// Register state the operating system saves (XCR0): without it the wide registers may not be used
// even where the processor has them.
unsigned long long EnabledRegisterState() {
    unsigned int low = 0;
    unsigned int high = 0;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return (static_cast<unsigned long long>(high) << 32) | low;
}

// The available paths as bits (1 << t_Path), from cpuid.
unsigned int DetectPaths() {
    unsigned int paths = 1U << PATH_PORTABLE;
    unsigned int a = 0, b = 0, c = 0, d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0) {
        return paths;
    }
    const bool pclmul = (c & (1U << 1)) != 0;
    const bool sse41 = (c & (1U << 19)) != 0;
    const bool osxsave = (c & (1U << 27)) != 0;
    if (!pclmul || !sse41) {
        return paths;
    }
    paths |= 1U << PATH_SSE41_CLMUL;
    if (!osxsave || __get_cpuid_count(7, 0, &a, &b, &c, &d) == 0) {
        return paths;
    }
    const unsigned long long state = EnabledRegisterState();
    const bool ymmState = (state & 0x6) == 0x6;               // SSE and AVX halves
    const bool zmmState = ymmState && (state & 0xE0) == 0xE0; // opmasks and upper ZMM
    const bool avx2 = (b & (1U << 5)) != 0;
    const bool avx512f = (b & (1U << 16)) != 0;
    const bool avx512bw = (b & (1U << 30)) != 0;
    const bool vpclmul = (c & (1U << 10)) != 0;
    if (ymmState && avx2 && vpclmul) {
        paths |= 1U << PATH_AVX2_VPCLMUL;
    }
    if (zmmState && avx512f && avx512bw && vpclmul) {
        paths |= 1U << PATH_AVX512_VPCLMUL;
    }
    return paths;
}
#else
unsigned int DetectPaths() {
    return 1U << PATH_PORTABLE;
}
#endif

#if defined(__x86_64__)
// Whether the wide kernel of `path` gives the 128-bit kernel's states for both bit orders and
// for lengths that reach each of its loops and its tail.
bool AgreesWithSse41(t_Path path) {
    const auto kernel = path == PATH_AVX512_VPCLMUL ? RunClmulAvx512 : RunClmulAvx2;
    unsigned char data[1100];
    unsigned __int64 noise = 0x9E3779B97F4A7C15ULL;
    for (unsigned char& byte : data) {
        noise = noise * 6364136223846793005ULL + 1442695040888963407ULL;
        byte = static_cast<unsigned char>(noise >> 56);
    }
    const struct {
        unsigned int width;
        unsigned __int64 polynomial;
        bool reflected;
    } configurations[] = {{32, 0x04C11DB7, true},
                          {64, 0x42F0E1EBA9EA3693ULL, false},
                          {16, 0x8BB7, false},
                          {8, 0x07, true}};
    for (const auto& c : configurations) {
        const auto plan = MakeFoldingPlan(c.width, c.polynomial, ~0ULL, c.reflected);
        const unsigned __int64 state =
            plan->reflected ? plan->start : plan->start << (64 - plan->width);
        for (unsigned __int64 length : {64, 100, 256, 300, 517, 1100}) {
            if (kernel(*plan, state, data, length) != RunClmulSse41(*plan, state, data, length)) {
                return false;
            }
        }
    }
    return true;
}
#endif

// The detected paths, less any wide kernel that disagrees with the 128-bit one on this
// processor: a safety net, so that a fault there costs speed, never a wrong checksum.
unsigned int CheckedPaths() {
    unsigned int paths = DetectPaths();
#if defined(__x86_64__)
    for (t_Path wide : {PATH_AVX2_VPCLMUL, PATH_AVX512_VPCLMUL}) {
        if ((paths & (1U << wide)) != 0 && !AgreesWithSse41(wide)) {
            paths &= ~(1U << wide);
        }
    }
#endif
    return paths;
}

unsigned int AvailablePaths() {
    static const unsigned int paths = CheckedPaths(); // initialised once, thread-safe
    return paths;
}

// -1 until the first use picks the best path.
std::atomic<int> g_activePath{-1};

} // namespace

bool IsPathAvailable(t_Path path) {
    return path >= PATH_PORTABLE && path < PATH_COUNT && (AvailablePaths() & (1U << path)) != 0;
}

t_Path BestPath() {
    for (int path = PATH_COUNT - 1; path > PATH_PORTABLE; --path) {
        if (IsPathAvailable(static_cast<t_Path>(path))) {
            return static_cast<t_Path>(path);
        }
    }
    return PATH_PORTABLE;
}

t_Path ActivePath() {
    return CurrentPath();
}

t_Path CurrentPath() {
    int path = g_activePath.load(std::memory_order_relaxed);
    if (path < 0) {
        int expected = -1;
        const int best = BestPath();
        path = g_activePath.compare_exchange_strong(expected, best) ? best : expected;
    }
    return static_cast<t_Path>(path);
}

bool SelectPath(t_Path path) {
    if (!IsPathAvailable(path)) {
        return false;
    }
    g_activePath.store(path);
    return true;
}

const char* PathName(t_Path path) {
    static const char* const names[PATH_COUNT] = {"portable", "sse41", "avx2", "avx512"};
    return path >= PATH_PORTABLE && path < PATH_COUNT ? names[path] : "?";
}

} // namespace ZRB_CrcKernel
