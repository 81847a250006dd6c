// Growing a vector and a string one step at a time, against std::vector and std::string in
// the same run: appends at 20,000, 100,000 and 1,000,000 items (10x the items should cost
// about 10x the time), and the peak heap bytes of 1,000,000 appends. Then other text paths
// that used to copy or scan more than they needed: in-place replacement, text search, short
// formatting, and a code template with many fields.
#include "CZRB_Code.h"
#include "CZRB_Int32Vector.h"
#include "CZRB_String.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

// --- Heap accounting: every operator new of the process, library included ---

namespace {

std::atomic<std::int64_t> g_liveBytes{0};
std::atomic<std::int64_t> g_peakBytes{0};

void* CountedAllocate(std::size_t size) {
    void* block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    const std::int64_t live = g_liveBytes += static_cast<std::int64_t>(malloc_usable_size(block));
    std::int64_t peak = g_peakBytes.load();
    while (live > peak && !g_peakBytes.compare_exchange_weak(peak, live)) {
    }
    return block;
}

void CountedFree(void* block) noexcept {
    if (block != nullptr) {
        g_liveBytes -= static_cast<std::int64_t>(malloc_usable_size(block));
        std::free(block);
    }
}

} // namespace

void* operator new(std::size_t size) {
    return CountedAllocate(size);
}
void* operator new[](std::size_t size) {
    return CountedAllocate(size);
}
void operator delete(void* block) noexcept {
    CountedFree(block);
}
void operator delete[](void* block) noexcept {
    CountedFree(block);
}
void operator delete(void* block, std::size_t) noexcept {
    CountedFree(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    CountedFree(block);
}

namespace {

// Peak heap bytes above the level at construction, while the object lives.
class PeakScope {
public:
    PeakScope() : m_start(g_liveBytes.load()) { g_peakBytes = m_start; }
    std::int64_t Peak() const { return g_peakBytes.load() - m_start; }

private:
    std::int64_t m_start;
};

void SetItems(benchmark::State& state) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

// --- Appending integers ---

void BM_Int32VectorAppend(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        CZRB_Int32Vector v;
        for (int i = 0; i < count; ++i) {
            v.AppendItem(i);
        }
        benchmark::DoNotOptimize(v.GetBuf());
    }
    SetItems(state);
}

void BM_StdVectorPushBack(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        std::vector<int> v;
        for (int i = 0; i < count; ++i) {
            v.push_back(i);
        }
        benchmark::DoNotOptimize(v.data());
    }
    SetItems(state);
}

// --- Appending characters ---

void BM_StringAppendChar(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        CZRB_String s;
        for (int i = 0; i < count; ++i) {
            s += static_cast<char>('a' + i % 26);
        }
        benchmark::DoNotOptimize(s.GetStringC());
    }
    SetItems(state);
}

void BM_StdStringAppendChar(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        std::string s;
        for (int i = 0; i < count; ++i) {
            s += static_cast<char>('a' + i % 26);
        }
        benchmark::DoNotOptimize(s.data());
    }
    SetItems(state);
}

// --- Appending strings to a string vector ---

void BM_StringVectorAppend(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const CZRB_String item("a field of moderate length");
    for (auto _ : state) {
        CZRB_StringVector v;
        for (int i = 0; i < count; ++i) {
            v.AppendItem(item);
        }
        benchmark::DoNotOptimize(v.GetBuf());
    }
    SetItems(state);
}

void BM_StdVectorOfStringPushBack(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const std::string item("a field of moderate length");
    for (auto _ : state) {
        std::vector<std::string> v;
        for (int i = 0; i < count; ++i) {
            v.push_back(item);
        }
        benchmark::DoNotOptimize(v.data());
    }
    SetItems(state);
}

// --- Peak heap bytes of the appends (counter peak_bytes) ---

void BM_Int32VectorAppendPeakBytes(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    std::int64_t peak = 0;
    for (auto _ : state) {
        PeakScope scope;
        {
            CZRB_Int32Vector v;
            for (int i = 0; i < count; ++i) {
                v.AppendItem(i);
            }
            benchmark::DoNotOptimize(v.GetBuf());
        }
        peak = scope.Peak();
    }
    state.counters["peak_bytes"] = static_cast<double>(peak);
}

void BM_StdVectorPushBackPeakBytes(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    std::int64_t peak = 0;
    for (auto _ : state) {
        PeakScope scope;
        {
            std::vector<int> v;
            for (int i = 0; i < count; ++i) {
                v.push_back(i);
            }
            benchmark::DoNotOptimize(v.data());
        }
        peak = scope.Peak();
    }
    state.counters["peak_bytes"] = static_cast<double>(peak);
}

// --- Other text paths ---

// 1,000 three-character replacements that keep the length of a 100,000-character string.
void BM_StringReplaceCharsSameLength(benchmark::State& state) {
    CZRB_String text(100000U, 'x');
    const CZRB_String piece("abc");
    for (auto _ : state) {
        for (unsigned int i = 0; i < 1000; ++i) {
            text.ReplaceChars(piece, (i * 7919U) % 99000U, 0, 3);
        }
        benchmark::DoNotOptimize(text.GetStringC());
    }
}

// A six-character text behind about 1,000,000 characters of prose, exact case.
void BM_StringFindText(benchmark::State& state) {
    CZRB_String text;
    while (text.GetLength() < 1000000) {
        text += "the quick brown fox jumps over the lazy dog ";
    }
    text += "needle";
    const CZRB_String needle("needle");
    for (auto _ : state) {
        unsigned int position = 0;
        benchmark::DoNotOptimize(text.FindFromBegin(needle, &position, 1, 0));
        benchmark::DoNotOptimize(position);
    }
}

void BM_StringFormatShort(benchmark::State& state) {
    CZRB_String text;
    int i = 0;
    for (auto _ : state) {
        text.Format("%d-%s", ++i, "abc");
        benchmark::DoNotOptimize(text.GetStringC());
    }
}

// A template of state.range(0) fields "<f0>;<f1>;...", parsed, filled from text and rendered.
void BM_CodeFormatSetGetString(benchmark::State& state) {
    CZRB_String pattern, text;
    for (int i = 0; i < state.range(0); ++i) {
        pattern += CZRB_String("<f") + CZRB_String::FromNumber(static_cast<long long>(i)) + ">;";
        text += CZRB_String::FromNumber(static_cast<long long>(i)) + ";";
    }
    for (auto _ : state) {
        CZRB_Code code;
        code.Format(pattern);
        code.Set(text);
        benchmark::DoNotOptimize(code.GetString().GetLength());
    }
}

} // namespace

BENCHMARK(BM_Int32VectorAppend)->Arg(20000)->Arg(100000)->Arg(1000000);
BENCHMARK(BM_StdVectorPushBack)->Arg(20000)->Arg(100000)->Arg(1000000);
BENCHMARK(BM_StringAppendChar)->Arg(20000)->Arg(100000)->Arg(1000000);
BENCHMARK(BM_StdStringAppendChar)->Arg(20000)->Arg(100000)->Arg(1000000);
BENCHMARK(BM_StringVectorAppend)->Arg(20000)->Arg(100000);
BENCHMARK(BM_StdVectorOfStringPushBack)->Arg(20000)->Arg(100000);
BENCHMARK(BM_Int32VectorAppendPeakBytes)->Arg(1000000)->Iterations(3);
BENCHMARK(BM_StdVectorPushBackPeakBytes)->Arg(1000000)->Iterations(3);
BENCHMARK(BM_StringReplaceCharsSameLength);
BENCHMARK(BM_StringFindText);
BENCHMARK(BM_StringFormatShort);
BENCHMARK(BM_CodeFormatSetGetString)->Arg(1000)->Arg(10000);
