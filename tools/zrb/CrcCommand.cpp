// zrb crc: CRCs of files through the engine's incremental form, their check against a list,
// the catalogue and its self-test.
#include "Common.h"
#include "CrcAlgorithm.h"
#include "InputBlocks.h"
#include "Progress.h"
#include "SumFile.h"

#include <CLI/CLI.hpp>

#include <cctype>
#include <cstdio>
#include <memory>
#include <optional>
#include <sstream>
#include <vector>

namespace zrb {
namespace {

const char kCommand[] = "crc";
const char kDefaultAlgorithm[] = "CRC-32/ISO-HDLC";

struct CrcOptions {
    std::vector<std::string> algorithms;
    bool tag = false;
    bool check = false;
    std::string sumFile;
    bool list = false;
    bool selfTest = false;
    bool custom = false;
    std::string width, poly, init = "0", xorOut = "0";
    bool reflectIn = false, reflectOut = false;
    bool progress = false, quiet = false;
    std::vector<std::string> files;
};

// Each -a in order, then the CRC of --width/--poly when given.
std::vector<CrcAlgorithm> ChosenAlgorithms(const CrcOptions& options) {
    std::vector<CrcAlgorithm> algorithms;
    for (const std::string& name : options.algorithms) {
        algorithms.push_back(FindAlgorithm(name));
    }
    if (options.custom) {
        CrcParameters parameters;
        parameters.width = static_cast<unsigned int>(ParseUnsigned(options.width, "--width", 64));
        parameters.polynomial = ParseUnsigned(options.poly, "--poly");
        parameters.init = ParseUnsigned(options.init, "--init");
        parameters.reflectIn = options.reflectIn;
        parameters.reflectOut = options.reflectOut;
        parameters.xorOut = ParseUnsigned(options.xorOut, "--xorout");
        algorithms.push_back(MakeAlgorithm(parameters));
    }
    return algorithms;
}

// The CRC of the whole input under each algorithm, in one pass over its bytes. Throws
// InputError.
std::vector<std::uint64_t> ComputeCrcs(const std::string& file,
                                       const std::vector<CrcAlgorithm>& algorithms,
                                       Progress::Mode mode) {
    InputBlocks input(file);
    std::vector<std::uint64_t> registers;
    for (const CrcAlgorithm& algorithm : algorithms) {
        registers.push_back(algorithm.engine.Begin());
    }
    Progress progress(mode, file == "-" ? "standard input" : file, input.KnownSize());
    std::uint64_t done = 0;
    input.ForEachBlock([&](const unsigned char* data, std::size_t length) {
        for (std::size_t i = 0; i < algorithms.size(); ++i) {
            registers[i] = algorithms[i].engine.Update(registers[i], data, length);
        }
        done += length;
        progress.Update(done);
    });
    for (std::size_t i = 0; i < algorithms.size(); ++i) {
        registers[i] = algorithms[i].engine.Finish(registers[i]);
    }
    return registers;
}

int PrintSums(const std::vector<std::string>& files, const std::vector<CrcAlgorithm>& algorithms,
              bool tagged, Progress::Mode mode) {
    int status = kExitOk;
    for (const std::string& file : files) {
        try {
            const std::vector<std::uint64_t> values = ComputeCrcs(file, algorithms, mode);
            for (std::size_t i = 0; i < algorithms.size(); ++i) {
                const std::string hex = FormatCrc(values[i], algorithms[i].width);
                const SumLine line{tagged ? algorithms[i].name : "", file, hex};
                std::printf("%s\n", FormatSumLine(line).c_str());
            }
        } catch (const InputError& e) {
            PrintError(kCommand, e.what());
            status = kExitBadInput;
        }
    }
    return status;
}

// The whole of a (small) list file or standard input.
std::string ReadWhole(const std::string& path) {
    std::string text;
    InputBlocks(path).ForEachBlock([&](const unsigned char* data, std::size_t length) {
        text.append(reinterpret_cast<const char*>(data), length);
    });
    return text;
}

struct CheckCounts {
    unsigned int matched = 0, failed = 0, unreadable = 0, malformed = 0;
};

// Checks the file one line names; counts the outcome.
void CheckLine(const SumLine& line, const CrcAlgorithm& algorithm, const CrcOptions& options,
               Progress::Mode mode, CheckCounts& counts) {
    std::uint64_t value = 0;
    try {
        value = ComputeCrcs(line.file, {algorithm}, mode).front();
    } catch (const InputError& e) {
        PrintError(kCommand, e.what());
        std::printf("%s: FAILED open or read\n", line.file.c_str());
        ++counts.unreadable;
        return;
    }
    std::string expected = line.hex;
    for (char& c : expected) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    const bool ok = FormatCrc(value, algorithm.width) == expected;
    ++(ok ? counts.matched : counts.failed);
    if (!ok || !options.quiet) {
        std::printf("%s: %s\n", line.file.c_str(), ok ? "OK" : "FAILED");
    }
}

int CheckSums(const CrcOptions& options, const std::vector<CrcAlgorithm>& chosen,
              Progress::Mode mode) {
    if (chosen.size() > 1) {
        throw ToolError("--check takes at most one algorithm (the one of untagged lines)");
    }
    const CrcAlgorithm untagged = chosen.empty() ? FindAlgorithm(kDefaultAlgorithm) : chosen[0];
    const std::string listName = options.sumFile == "-" ? "standard input" : options.sumFile;
    std::string listed;
    try {
        listed = ReadWhole(options.sumFile);
    } catch (const InputError& e) {
        throw ToolError(e.what());
    }
    std::istringstream lines(listed);
    CheckCounts counts;
    unsigned int number = 0;
    for (std::string text; std::getline(lines, text);) {
        ++number;
        if (text.empty() || text == "\r") {
            continue;
        }
        const std::string where = listName + ": line " + std::to_string(number) + ": ";
        const std::optional<SumLine> line = ParseSumLine(text);
        if (!line) {
            PrintError(kCommand, where + "not a CRC line");
            ++counts.malformed;
            continue;
        }
        try {
            const CrcAlgorithm algorithm =
                line->algorithm.empty() ? untagged : FindAlgorithm(line->algorithm);
            if (line->hex.size() != algorithm.width / 4) {
                throw ToolError("a " + algorithm.name + " CRC has " +
                                std::to_string(algorithm.width / 4) + " hexadecimal digits");
            }
            CheckLine(*line, algorithm, options, mode, counts);
        } catch (const ToolError& e) {
            PrintError(kCommand, where + e.what());
            ++counts.malformed;
        }
    }
    if (counts.matched + counts.failed + counts.unreadable + counts.malformed == 0) {
        throw ToolError(listName + ": no CRC lines found");
    }
    const std::pair<unsigned int, const char*> warnings[] = {
        {counts.malformed, "line(s) could not be understood"},
        {counts.unreadable, "listed file(s) could not be read"},
        {counts.failed, "computed CRC(s) did NOT match"}};
    for (const auto& [count, what] : warnings) {
        if (count != 0) {
            PrintError(kCommand, "WARNING: " + std::to_string(count) + " " + what);
        }
    }
    return counts.malformed + counts.unreadable != 0 ? kExitBadInput
           : counts.failed != 0                      ? kExitCheckFailed
                                                     : kExitOk;
}

int ListCatalogue() {
    unsigned int count = 0;
    const CZRB_Crc::t_CatalogueEntry* catalogue = CZRB_Crc::GetCatalogue(&count);
    for (unsigned int i = 0; i < count; ++i) {
        const CZRB_Crc::t_CatalogueEntry& row = catalogue[i];
        const bool polynomial = row.standard != CZRB_Crc::MIL_STD_1760;
        const auto hex = [&](std::uint64_t value) {
            return polynomial ? "0x" + FormatCrc(value, row.width) : std::string("-");
        };
        const auto flag = [&](unsigned char value) {
            return !polynomial ? "-" : value != 0 ? "true" : "false";
        };
        std::printf("0x%04x  %-36s %2u  %-18s  %-18s  %-5s  %-5s  %-18s  %s\n",
                    static_cast<unsigned int>(row.standard), row.name, row.width,
                    hex(row.polynomial).c_str(), hex(row.seed).c_str(), flag(row.inputReflected),
                    flag(row.outputReflected), hex(row.finalXor).c_str(), hex(row.check).c_str());
    }
    return kExitOk;
}

// The engine's own check value of a catalogue row, in the row's width.
template <typename Register>
std::uint64_t EngineCheckValue(const CZRB_Crc& engine) {
    Register value = 0;
    engine.ComputeCheckValue(&value);
    return value;
}

// The CRC of "123456789" through the incremental form, fed in two uneven pieces as a file
// would be, and the engine's own check value; both must equal the catalogue's. The
// MIL-STD-1760 checksum has no check value: its incremental and one-shot forms must agree.
int SelfTest() {
    static const unsigned char kDigits[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    unsigned int count = 0;
    const CZRB_Crc::t_CatalogueEntry* catalogue = CZRB_Crc::GetCatalogue(&count);
    unsigned int matched = 0;
    bool milAgrees = true;
    for (unsigned int i = 0; i < count; ++i) {
        const CZRB_Crc::t_CatalogueEntry& row = catalogue[i];
        const CZRB_Crc engine(row.standard);
        const std::uint64_t pieces =
            engine.Finish(engine.Update(engine.Update(engine.Begin(), kDigits, 5), kDigits + 5, 4));
        std::uint64_t expected = row.check;
        std::uint64_t own = 0;
        if (row.standard == CZRB_Crc::MIL_STD_1760) {
            unsigned short once = 0;
            engine.Compute(kDigits, sizeof kDigits, &once, 0);
            expected = own = once;
        } else {
            own = row.width == 8    ? EngineCheckValue<unsigned char>(engine)
                  : row.width == 16 ? EngineCheckValue<unsigned short>(engine)
                  : row.width == 32 ? EngineCheckValue<unsigned int>(engine)
                                    : EngineCheckValue<unsigned __int64>(engine);
        }
        if (pieces == expected && own == expected) {
            matched += row.standard != CZRB_Crc::MIL_STD_1760 ? 1 : 0;
            continue;
        }
        milAgrees = milAgrees && row.standard != CZRB_Crc::MIL_STD_1760;
        std::printf("0x%04x %s: expected %s, incremental %s, engine %s: FAILED\n",
                    static_cast<unsigned int>(row.standard), ToolName(row).c_str(),
                    FormatCrc(expected, row.width).c_str(), FormatCrc(pieces, row.width).c_str(),
                    FormatCrc(own, row.width).c_str());
    }
    std::printf("%u of %u catalogue check values match; MIL-STD-1760 (no check value) %s its "
                "one-shot form\n",
                matched, count - 1, milAgrees ? "agrees with" : "does NOT agree with");
    return matched == count - 1 && milAgrees ? kExitOk : kExitCheckFailed;
}

int RunCrc(const CrcOptions& options) {
    if (options.list) {
        return ListCatalogue();
    }
    if (options.selfTest) {
        return SelfTest();
    }
    std::vector<CrcAlgorithm> algorithms = ChosenAlgorithms(options);
    const Progress::Mode mode = options.quiet      ? Progress::Mode::Off
                                : options.progress ? Progress::Mode::Forced
                                                   : Progress::Mode::Automatic;
    if (options.check) {
        return CheckSums(options, algorithms, mode);
    }
    if (algorithms.empty()) {
        algorithms.push_back(FindAlgorithm(kDefaultAlgorithm));
    }
    const std::vector<std::string> files =
        options.files.empty() ? std::vector<std::string>{"-"} : options.files;
    return PrintSums(files, algorithms, options.tag || algorithms.size() > 1, mode);
}

} // namespace

void AddCrcCommand(CLI::App& app, CommandRun& run) {
    auto options = std::make_shared<CrcOptions>();
    CLI::App* command = app.add_subcommand(
        "crc", "Compute the CRCs of files (standard input for - or no file), or check them.");
    command
        ->add_option("-a,--algorithm", options->algorithms,
                     "CRC to compute: catalogue name, alias or selector (see --list); "
                     "repeat for several. Default CRC-32/ISO-HDLC")
        ->type_name("ALG")
        ->allow_extra_args(false);
    CLI::Option* tag =
        command->add_flag("--tag", options->tag, "Print lines as '<ALG> (<file>) = <hex>'");
    CLI::Option* check =
        command
            ->add_option("-c,--check", options->sumFile,
                         "Check the files listed in SUMFILE (lines as printed by zrb crc)")
            ->type_name("SUMFILE");
    CLI::Option* list = command->add_flag(
        "--list", options->list,
        "List the catalogue: selector, name, width, polynomial, initial value, reflect in, "
        "reflect out, final XOR, check value");
    CLI::Option* selfTest = command->add_flag("--self-test", options->selfTest,
                                              "Check every catalogue CRC against its check value");
    CLI::Option* width =
        command->add_option("--width", options->width, "Own CRC: register width, 8, 16, 32 or 64")
            ->type_name("W");
    CLI::Option* poly = command
                            ->add_option("--poly", options->poly,
                                         "Own CRC: polynomial, normal form without its top bit")
                            ->type_name("P");
    const std::vector<CLI::Option*> ownParameters = {
        command->add_option("--init", options->init, "Own CRC: initial value (default 0)")
            ->type_name("I"),
        command->add_flag("--refin", options->reflectIn, "Own CRC: reflect input bytes"),
        command->add_flag("--refout", options->reflectOut, "Own CRC: reflect the result"),
        command->add_option("--xorout", options->xorOut, "Own CRC: final XOR (default 0)")
            ->type_name("X")};
    CLI::Option* progress = command->add_flag(
        "--progress", options->progress, "Show a progress bar even when it would not be shown");
    CLI::Option* quiet =
        command->add_flag("--quiet", options->quiet, "No progress bar; with --check, no OK lines");
    CLI::Option* files =
        command->add_option("FILE", options->files, "Files to read; - is standard input");

    width->needs(poly);
    poly->needs(width);
    for (CLI::Option* parameter : ownParameters) {
        parameter->needs(poly);
    }
    progress->excludes(quiet);
    check->excludes(files)->excludes(tag);
    for (CLI::Option* mode : {list, selfTest}) {
        mode->excludes(check)->excludes(files)->excludes(tag)->excludes(width);
    }
    list->excludes(selfTest);

    command->callback([options, check, width, &run] {
        options->check = check->count() > 0;
        options->custom = width->count() > 0;
        run = [options] { return RunCrc(*options); };
    });
}

} // namespace zrb
