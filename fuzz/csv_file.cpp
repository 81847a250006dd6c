// Delimiter-separated files from outside: ReadFile answers every file as reading it line by
// line and splitting each line at every separator does (the same records and fields, or null
// with the number of the line that stopped it), and records it accepted, written back with
// WriteRecord, read back the same when no record ends in an empty field (written, that field
// leaves nothing behind its separator, and reading drops it).
#include "CZRB_CsvFile.h"
#include "FuzzSupport.h"
#include "TextModel.h"

#include <memory>

namespace {

using Records = std::vector<std::vector<std::string>>;

// The records of `content` by the line and field rules; false when a line cannot be read or
// has another number of fields (the records then end with that line, if it was read).
bool ModelRecords(const std::string& content, char separator, std::size_t fieldCount,
                  Records& records) {
    for (std::size_t position = 0; position < content.size();) {
        const LineScan line = ScanLine(content, position, std::string::npos);
        if (GivesNoLine(line)) {
            return false;
        }
        position = line.next;
        records.push_back(SplitFields(line.text, separator));
        if (records.back().size() != fieldCount) {
            return false;
        }
    }
    return true;
}

void CheckRead(CZRB_CsvFile& csv, const CZRB_String& path, bool accepted, const Records& model) {
    unsigned int lineCount = 0xFFFFFFFFU;
    const std::unique_ptr<CZRB_StringVector[]> records(csv.ReadFile(path, lineCount));
    FUZZ_CHECK((records != nullptr) == accepted && lineCount == model.size());
    for (std::size_t line = 0; records && line < model.size(); ++line) {
        FUZZ_CHECK(records[line].GetLength() == model[line].size());
        for (unsigned int field = 0; field < model[line].size(); ++field) {
            FUZZ_CHECK(FromLib(records[line][field]) == model[line][field]);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const unsigned int fieldCount = input.Take<std::uint8_t>() % 9;
    const char separator = input.Take<char>();
    // LF ends every record written back; NUL and CR before it are dropped when reading.
    const unsigned int lineEnd = CZRB_File::LINE_END_LF | (input.Take<std::uint8_t>() & 0x5U);
    const std::string content = input.TakeRest();
    if (fieldCount == 0) {
        FUZZ_CHECK(ThrownCode([&] { CZRB_CsvFile refused(0, separator, lineEnd); }) == 2);
        return 0;
    }

    const CZRB_String& path = ScratchFile::Write(content);
    CZRB_CsvFile csv(fieldCount, separator, lineEnd);
    Records model;
    const bool accepted = ModelRecords(content, separator, fieldCount, model);
    CheckRead(csv, path, accepted, model);
    if (!accepted) {
        return 0;
    }
    for (const auto& fields : model) {
        if (fields.back().empty()) {
            return 0;
        }
    }

    FUZZ_CHECK(csv.Open(path, CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE) == 0);
    for (const auto& fields : model) {
        CZRB_StringVector record;
        record.Create(fieldCount);
        for (unsigned int field = 0; field < fieldCount; ++field) {
            record[field] = ToLib(fields[field]);
        }
        FUZZ_CHECK(csv.WriteRecord(record) == 0);
    }
    csv.Close();
    CheckRead(csv, path, true, model);
    return 0;
}
