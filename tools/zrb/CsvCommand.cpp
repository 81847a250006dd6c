// zrb csv: a delimiter-separated file validated and cut as CZRB_CsvFile reads it.
#include "Common.h"

#include "CZRB_CsvFile.h"

#include <CLI/CLI.hpp>

#include <climits>
#include <cstdio>
#include <fstream>
#include <memory>
#include <vector>

namespace zrb {
namespace {

struct CsvOptions {
    std::string file;
    unsigned int fields = 0;
    std::string separator = ",";
    std::vector<unsigned int> keep;
};

// The records of a file, released with the array the reader allocates.
struct Records {
    std::unique_ptr<CZRB_StringVector[]> lines;
    unsigned int count = 0;
};

char SeparatorOf(const std::string& text) {
    if (text == "\\t" || text == "tab") {
        return '\t';
    }
    if (text.size() != 1) {
        throw ToolError("the separator must be one character (or tab), not \"" + text + "\"");
    }
    return text[0];
}

// Line `number` (1-based) as the reader sees it: zero bytes and carriage returns dropped.
std::string LineOf(const std::string& path, unsigned int number) {
    std::ifstream in(path, std::ios::binary);
    std::string line;
    for (unsigned int i = 0; i < number && std::getline(in, line); ++i) {
    }
    std::string kept;
    for (const char c : line) {
        if (c != '\0' && c != '\r') {
            kept += c;
        }
    }
    return kept;
}

// Why the reader stopped at line `number`, in words.
std::string WhyRejected(const CsvOptions& options, char separator, unsigned int number) {
    const std::string line = LineOf(options.file, number);
    CZRB_StringVector fields;
    CZRB_String(line.c_str(), static_cast<unsigned int>(line.size()))
        .ExtractTags(separator, fields);
    const std::string where = options.file + ": line " + std::to_string(number) + ": ";
    if (fields.GetLength() == options.fields) {
        return where + "the line after it could not be read";
    }
    std::string why = where + std::to_string(fields.GetLength()) + " field(s), " +
                      std::to_string(options.fields) + " expected";
    if (line.find('"') != std::string::npos) {
        why += " (quotes are not special: a separator between quotes still splits)";
    }
    return why;
}

// Reads the whole file; an empty `problem` means every line had the field count.
Records Read(const CsvOptions& options, std::string& problem) {
    RequireReadableFile(options.file);
    const char separator = SeparatorOf(options.separator);
    CZRB_CsvFile csv(options.fields, separator, CZRB_File::LINE_END_LF);
    Records records;
    unsigned int lineCount = UINT_MAX;
    records.lines.reset(csv.ReadFile(options.file.c_str(), lineCount));
    if (records.lines) {
        records.count = lineCount;
    } else if (lineCount == UINT_MAX) {
        throw ToolError(options.file + ": cannot be opened");
    } else {
        problem = WhyRejected(options, separator, lineCount);
    }
    return records;
}

int RunCheck(const CsvOptions& options) {
    std::string problem;
    const Records records = Read(options, problem);
    if (!problem.empty()) {
        std::printf("%s\n", problem.c_str());
        return kExitCheckFailed;
    }
    std::printf("%s: %u record(s) of %u field(s)\n", options.file.c_str(), records.count,
                options.fields);
    return kExitOk;
}

int RunCut(const CsvOptions& options) {
    for (const unsigned int column : options.keep) {
        if (column < 1 || column > options.fields) {
            throw ToolError("column " + std::to_string(column) + " is not between 1 and " +
                            std::to_string(options.fields));
        }
    }
    std::string problem;
    const Records records = Read(options, problem);
    if (!problem.empty()) {
        throw ToolError(problem);
    }
    const char separator = SeparatorOf(options.separator);
    for (unsigned int i = 0; i < records.count; ++i) {
        std::string line;
        for (std::size_t k = 0; k < options.keep.size(); ++k) {
            const CZRB_String& field = records.lines[i][options.keep[k] - 1];
            line.append(k == 0 ? "" : std::string(1, separator))
                .append(field.GetStringC(), field.GetLength());
        }
        std::printf("%s\n", line.c_str());
    }
    return kExitOk;
}

// The options both subcommands share.
void AddFileOptions(CLI::App& command, CsvOptions& options) {
    command.add_option("FILE", options.file, "The delimiter-separated file")->required();
    command.add_option("--fields", options.fields, "Number of fields of every record")
        ->type_name("N")
        ->required()
        ->check(CLI::Range(1u, UINT_MAX));
    command
        .add_option("--sep", options.separator,
                    "Field separator, one character or tab "
                    "(default ,)")
        ->type_name("C");
}

} // namespace

void AddCsvCommand(CLI::App& app, CommandRun& run) {
    auto options = std::make_shared<CsvOptions>();
    CLI::App* command = app.add_subcommand(
        "csv", "Validate or cut a delimiter-separated file whose records have N fields.");
    command->require_subcommand(1);

    CLI::App* check = command->add_subcommand(
        "check", "Print the number of records, or the first bad line and why it is bad.");
    AddFileOptions(*check, *options);
    check->callback([options, &run] { run = [options] { return RunCheck(*options); }; });

    CLI::App* cut = command->add_subcommand("cut", "Print the chosen columns of every record.");
    AddFileOptions(*cut, *options);
    cut->add_option("-k,--keep", options->keep, "Columns to print, 1-based, comma-separated")
        ->type_name("K[,K...]")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->required();
    cut->callback([options, &run] { run = [options] { return RunCut(*options); }; });
}

} // namespace zrb
