#include "demo_sections.h"

#include "CZRB_CsvFile.h"
#include "CZRB_File.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

void DemoFiles() {
    std::puts("== Files: a small CSV file written and read back ==");
    std::string folder = (std::filesystem::temp_directory_path() / "lzrb_demo_XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        std::puts("no temporary folder available");
        return;
    }
    const CZRB_String path((folder + "/fruit.csv").c_str());

    CZRB_CsvFile csv(3, ';', CZRB_File::LINE_END_CR | CZRB_File::LINE_END_LF);
    csv.Open(path, CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
    const char* rows[][3] = {
        {"name", "colour", "price"}, {"apple", "red", "0.40"}, {"lemon", "yellow", "0.55"}};
    for (const auto& row : rows) {
        CZRB_StringVector record(3);
        for (unsigned int i = 0; i < 3; ++i) {
            record[i] = CZRB_String(row[i]);
        }
        std::printf("WriteRecord(%s;%s;%s) -> %u\n", row[0], row[1], row[2],
                    csv.WriteRecord(record));
    }
    csv.Close();
    std::printf("IsPresent: %u; name part (only a backslash separates): %s\n",
                CZRB_File::IsPresent(path), CZRB_File::GetNameFromPath(path).GetStringC());

    unsigned int lineCount = 0;
    std::unique_ptr<CZRB_StringVector[]> lines(csv.ReadFile(path, lineCount));
    std::printf("ReadFile: %s, %u lines\n", lines ? "ok" : "failed", lineCount);
    for (unsigned int i = 0; lines && i < lineCount; ++i) {
        std::printf("  %-6s | %-7s | %s\n", lines[i][0].GetStringC(), lines[i][1].GetStringC(),
                    lines[i][2].GetStringC());
    }
    std::filesystem::remove_all(folder);
}
