#include "CZRB_CsvFile.h"
#include "CZRB_File.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

// The library keeps no state of its own, so threads that each work on their own files never
// meet inside it. (Copies sharing one stream are for one thread only and are not used here.)
// Each thread writes text lines and records, copies its file, and reads everything back.
TEST(FileThreads, ThreadsWithTheirOwnFilesDoNotMeet) {
    const std::string folder =
        std::filesystem::temp_directory_path() / ("lzrb_threads_" + std::to_string(getpid()) + "_");
    const unsigned int threads = 4, lines = 200;
    std::vector<unsigned int> failures(threads, 0);
    std::vector<std::thread> workers;
    for (unsigned int t = 0; t < threads; ++t) {
        workers.emplace_back([&, t] {
            const std::string name = folder + std::to_string(t);
            const CZRB_String text(name.c_str()), copied((name + ".copy").c_str());
            unsigned int& failed = failures[t];
            CZRB_CsvFile csv(2, ';', CZRB_File::LINE_END_CR | CZRB_File::LINE_END_LF);
            failed += csv.Open(text, CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
            CZRB_StringVector record;
            record.Create(2);
            for (unsigned int i = 0; i < lines; ++i) {
                record[0].SetFromNumber(static_cast<long long>(t));
                record[1].SetFromNumber(static_cast<long long>(i));
                failed += csv.WriteRecord(record);
            }
            csv.Close();
            failed += CZRB_File::CopyFile(copied, text, 100);

            CZRB_File file;
            failed += file.Open(copied, CZRB_File::OPEN_READ);
            CZRB_String line;
            char buffer[8];
            for (unsigned int i = 0; i < lines; ++i) {
                const std::string expected = std::to_string(t) + ";" + std::to_string(i);
                failed += i % 2 == 0 ? file.ReadTextLine(line) : file.ReadTextLine(buffer, 7);
                failed += expected != (i % 2 == 0 ? line.GetStringC() : buffer);
            }
            failed += file.GetFullPath() != copied;
            file.Close();

            unsigned int lineCount = 0;
            const std::unique_ptr<CZRB_StringVector[]> read(csv.ReadFile(copied, lineCount));
            failed +=
                read == nullptr || lineCount != lines || read[lines - 1][1].ToSigned() != lines - 1;
            failed += CZRB_File::DeleteFile(text) + CZRB_File::DeleteFile(copied);
        });
    }
    for (auto& worker : workers) {
        worker.join();
    }
    EXPECT_EQ(failures, std::vector<unsigned int>(threads, 0));
}
