// Files and CSV: text lines written and read back, then records of a fixed field count.
#include <CZRB_CsvFile.h>
#include <CZRB_File.h>

#include <cstdio>
#include <memory>

int main() {
    const CZRB_String path("guide_lines.txt");
    CZRB_File file;
    file.Open(path, CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
    file.WriteTextLine("first", CZRB_File::LINE_END_CR | CZRB_File::LINE_END_LF);
    file.WriteTextLine("second", CZRB_File::LINE_END_LF);
    file.Close();
    file.Open(path, CZRB_File::OPEN_READ);
    CZRB_String line;
    while (file.ReadTextLine(line) == 0) { // carriage returns are dropped
        std::printf("line '%s'\n", line.GetStringC());
    }
    file.Close();
    CZRB_File::DeleteFile(path);

    const CZRB_String table("guide_table.csv");
    CZRB_CsvFile csv(2, ';', CZRB_File::LINE_END_LF);
    csv.Open(table, CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
    const char* rows[][2] = {{"fruit", "price"}, {"apple", "0.40"}, {"lemon", "0.55"}};
    for (const auto& row : rows) {
        CZRB_StringVector record(2);
        record[0] = row[0];
        record[1] = row[1];
        csv.WriteRecord(record);
    }
    CZRB_StringVector tooShort(1);
    std::printf("a record of 1 field: %u\n", csv.WriteRecord(tooShort));
    csv.Close();

    unsigned int lines = 0;
    std::unique_ptr<CZRB_StringVector[]> records(csv.ReadFile(table, lines));
    for (unsigned int i = 0; records && i < lines; ++i) {
        std::printf("%-6s| %s\n", records[i][0].GetStringC(), records[i][1].GetStringC());
    }

    // A field holding the separator is written in quotes, but reading splits at every
    // separator: the file no longer reads back.
    csv.Open(table, CZRB_File::OPEN_WRITE); // write alone appends
    CZRB_StringVector quoted(2);
    quoted[0] = "melon; honeydew";
    quoted[1] = "2.10";
    csv.WriteRecord(quoted);
    csv.Close();
    records.reset(csv.ReadFile(table, lines));
    std::printf("after the quoted field: %s, stopped at line %u\n", records ? "read" : "refused",
                lines);
    CZRB_File::DeleteFile(table);
    return 0;
}
