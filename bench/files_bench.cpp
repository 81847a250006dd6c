// Reading text: CSV files of many short lines, and one very long line.
#include "CZRB_CsvFile.h"
#include "CZRB_File.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace {

// A file in a fresh temporary folder, removed with the folder.
class CTempFile {
public:
    explicit CTempFile(const std::string& bytes) {
        std::string folder = std::filesystem::temp_directory_path() / "lzrb_bench_XXXXXX";
        m_folder = mkdtemp(folder.data()) != nullptr ? folder : std::string();
        m_path = m_folder + "/data";
        std::FILE* file = std::fopen(m_path.c_str(), "wb");
        if (file != nullptr) {
            std::fwrite(bytes.data(), 1, bytes.size(), file);
            std::fclose(file);
        }
    }
    ~CTempFile() { std::filesystem::remove_all(m_folder); }
    CTempFile(const CTempFile&) = delete;
    CTempFile& operator=(const CTempFile&) = delete;
    const char* Path() const { return m_path.c_str(); }

private:
    std::string m_folder;
    std::string m_path;
};

void BM_CsvReadFile(benchmark::State& state) {
    std::string bytes;
    for (int i = 0; i < state.range(0); ++i) {
        bytes += std::to_string(i) + ";field" + std::to_string(i) + ";x\r\n";
    }
    const CTempFile file(bytes);
    CZRB_CsvFile csv(3, ';', CZRB_File::LINE_END_LF);
    for (auto _ : state) {
        unsigned int lines = 0;
        std::unique_ptr<CZRB_StringVector[]> records(csv.ReadFile(file.Path(), lines));
        benchmark::DoNotOptimize(records.get());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long long>(bytes.size()));
}
BENCHMARK(BM_CsvReadFile)->Arg(1000)->Arg(100000);

void BM_ReadTextLineLong(benchmark::State& state) {
    const CTempFile file(std::string(static_cast<std::size_t>(state.range(0)), 'q') + "\n");
    CZRB_File reader;
    reader.Open(file.Path(), CZRB_File::OPEN_READ);
    CZRB_String line;
    for (auto _ : state) {
        reader.ToStart();
        benchmark::DoNotOptimize(reader.ReadTextLine(line));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ReadTextLineLong)->Arg(1 << 20);

} // namespace
