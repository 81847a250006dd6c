// What the commands of the zrb tool share: exit codes, errors in words, number parsing and the
// registration of each command with the option parser.
#ifndef ZRB_TOOL_COMMON_H
#define ZRB_TOOL_COMMON_H

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace CLI {
class App;
}
class CZRB_Exception;

namespace zrb {

// Exit status of every command.
enum ExitStatus : int {
    kExitOk = 0,          // success
    kExitCheckFailed = 1, // the command ran and a check it made did not pass
    kExitBadInput = 2     // bad usage or input that cannot be read
};

// An error that ends the command with kExitBadInput; main prints the text, prefixed with the
// command, to standard error.
class ToolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The work of the command the user chose; returns the exit status.
using CommandRun = std::function<int()>;

// Each adds its subcommand to `app`; when the user chooses it, parsing sets `run`.
void AddCrcCommand(CLI::App& app, CommandRun& run);
void AddDateCommand(CLI::App& app, CommandRun& run);
void AddBmpCommand(CLI::App& app, CommandRun& run);
void AddCsvCommand(CLI::App& app, CommandRun& run);

// Prints "zrb <command>: <message>" to standard error, for problems the command survives.
void PrintError(const std::string& command, const std::string& message);

// An unsigned number written in decimal or, after "0x", in hexadecimal; `what` names it in the
// error thrown for anything else or a value above `max`.
std::uint64_t ParseUnsigned(const std::string& text, const std::string& what,
                            std::uint64_t max = UINT64_MAX);

// Throws ToolError "<path>: <reason>" unless `path` names a regular file this process can
// open for reading.
void RequireReadableFile(const std::string& path);

// A library exception in words: its code's meaning.
std::string DescribeException(const CZRB_Exception& e);

} // namespace zrb

#endif
