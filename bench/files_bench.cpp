// Files against the standard library doing the same work, in one run so that the ratios hold
// on a shared machine:
//   CsvReadFile      / GetlineSplit     a CSV file of 200,000 lines of 3 fields into records
//                                       (argument: characters added to every field)
//   ReadTextLine     / Getline          the same file line by line
//   CsvWriteRecord   / FprintfFflush    50,000 records, each handed to the system at once
// The write benchmarks also report the system write calls per record (from /proc/self/io).
#include "CZRB_CsvFile.h"
#include "CZRB_File.h"
#include "WriteCalls.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kReadLines = 200000;
constexpr int kWriteRecords = 50000;
constexpr int kLongFieldPadding = 20;

// A fresh temporary folder, removed with everything in it.
class CTempFolder {
public:
    CTempFolder() {
        std::string folder = std::filesystem::temp_directory_path() / "lzrb_bench_XXXXXX";
        m_folder = mkdtemp(folder.data()) != nullptr ? folder : std::string();
    }
    ~CTempFolder() { std::filesystem::remove_all(m_folder); }
    CTempFolder(const CTempFolder&) = delete;
    CTempFolder& operator=(const CTempFolder&) = delete;
    std::string Path(const char* name) const { return m_folder + "/" + name; }

private:
    std::string m_folder;
};

// A file holding `bytes`, in a temporary folder of its own.
class CTempFile {
public:
    explicit CTempFile(const std::string& bytes) : m_path(m_folder.Path("data")) {
        std::ofstream(m_path, std::ios::binary) << bytes;
    }
    const char* Path() const { return m_path.c_str(); }

private:
    CTempFolder m_folder;
    std::string m_path;
};

// The three fields of line or record i.
std::vector<std::string> FieldsOf(int i) {
    return {std::to_string(i), "field" + std::to_string(i * 7), "x"};
}

// The CSV file of the read benchmarks: kReadLines lines of 3 fields, LF ended. With `padding`
// each field is lengthened by that many characters, past what std::string keeps without a
// heap block of its own.
const CTempFile& CsvFile(int padding = 0) {
    static const auto make = [](int extra) {
        std::string bytes;
        for (int i = 0; i < kReadLines; ++i) {
            std::vector<std::string> fields = FieldsOf(i);
            for (std::string& field : fields) {
                field.append(static_cast<std::size_t>(extra), 'p');
            }
            bytes += fields[0] + ';' + fields[1] + ';' + fields[2] + '\n';
        }
        return bytes;
    };
    static const CTempFile shortFields(make(0));
    static const CTempFile longFields(make(kLongFieldPadding));
    return padding == 0 ? shortFields : longFields;
}

void ReportWriteCalls(benchmark::State& state, long long before) {
    const long long after = WriteCalls();
    if (before >= 0 && after >= 0) {
        state.counters["writes_per_record"] =
            static_cast<double>(after - before) /
            (static_cast<double>(state.iterations()) * kWriteRecords);
    }
}

void BM_CsvReadFile(benchmark::State& state) {
    const char* path = CsvFile(static_cast<int>(state.range(0))).Path();
    CZRB_CsvFile csv(3, ';', CZRB_File::LINE_END_LF);
    for (auto _ : state) {
        unsigned int lines = 0;
        std::unique_ptr<CZRB_StringVector[]> records(csv.ReadFile(path, lines));
        if (!records || lines != kReadLines) {
            state.SkipWithError("the CSV file was not read");
        }
        benchmark::DoNotOptimize(records.get());
    }
}
BENCHMARK(BM_CsvReadFile)->Arg(0)->Arg(kLongFieldPadding)->Unit(benchmark::kMillisecond);

void BM_GetlineSplit(benchmark::State& state) {
    const char* path = CsvFile(static_cast<int>(state.range(0))).Path();
    for (auto _ : state) {
        std::vector<std::vector<std::string>> records;
        std::ifstream in(path, std::ios::binary);
        std::string line;
        while (std::getline(in, line)) {
            std::vector<std::string> fields;
            std::size_t start = 0;
            for (std::size_t stop; (stop = line.find(';', start)) != std::string::npos;
                 start = stop + 1) {
                fields.push_back(line.substr(start, stop - start));
            }
            if (start < line.size()) {
                fields.push_back(line.substr(start));
            }
            records.push_back(std::move(fields));
        }
        benchmark::DoNotOptimize(records.data());
    }
}
BENCHMARK(BM_GetlineSplit)->Arg(0)->Arg(kLongFieldPadding)->Unit(benchmark::kMillisecond);

void BM_ReadTextLine(benchmark::State& state) {
    const char* path = CsvFile().Path();
    for (auto _ : state) {
        CZRB_File reader;
        reader.Open(path, CZRB_File::OPEN_READ);
        CZRB_String line;
        int lines = 0;
        while (reader.ReadTextLine(line) == 0) {
            ++lines;
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(BM_ReadTextLine)->Unit(benchmark::kMillisecond);

void BM_Getline(benchmark::State& state) {
    const char* path = CsvFile().Path();
    for (auto _ : state) {
        std::ifstream in(path, std::ios::binary);
        std::string line;
        int lines = 0;
        while (std::getline(in, line)) {
            ++lines;
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(BM_Getline)->Unit(benchmark::kMillisecond);

void BM_CsvWriteRecord(benchmark::State& state) {
    const CTempFolder folder;
    const std::string path = folder.Path("out.csv");
    std::vector<CZRB_StringVector> records(kWriteRecords, CZRB_StringVector(3));
    for (int i = 0; i < kWriteRecords; ++i) {
        const std::vector<std::string> fields = FieldsOf(i);
        for (unsigned int k = 0; k < 3; ++k) {
            records[i][k] = fields[k].c_str();
        }
    }
    const long long before = WriteCalls();
    for (auto _ : state) {
        CZRB_CsvFile csv(3, ';', CZRB_File::LINE_END_LF);
        csv.Open(path.c_str(), CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
        for (CZRB_StringVector& record : records) {
            if (csv.WriteRecord(record) != 0) {
                state.SkipWithError("a record was not written");
                break;
            }
        }
        csv.Close();
    }
    ReportWriteCalls(state, before);
}
BENCHMARK(BM_CsvWriteRecord)->Unit(benchmark::kMillisecond);

void BM_FprintfFflush(benchmark::State& state) {
    const CTempFolder folder;
    const std::string path = folder.Path("out.csv");
    std::vector<std::vector<std::string>> records;
    for (int i = 0; i < kWriteRecords; ++i) {
        records.push_back(FieldsOf(i));
    }
    const long long before = WriteCalls();
    for (auto _ : state) {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        for (const std::vector<std::string>& record : records) {
            std::fprintf(file, "%s;%s;%s\n", record[0].c_str(), record[1].c_str(),
                         record[2].c_str());
            std::fflush(file);
        }
        std::fclose(file);
    }
    ReportWriteCalls(state, before);
}
BENCHMARK(BM_FprintfFflush)->Unit(benchmark::kMillisecond);

// One line of 1 MiB, read again from the start each time.
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
