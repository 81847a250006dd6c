// zrb: CRCs of files, dates in five calendars, a look inside bitmaps and delimiter-separated
// files, each one command over the LZRB_Core library.
#include "Common.h"

#include "CZRB_Exception.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>

namespace {

// "crc", "bmp info": the chain of subcommands the user chose, for error messages.
std::string ChosenCommand(const CLI::App& app) {
    std::string path;
    for (const CLI::App* level = &app;;) {
        const auto chosen = level->get_subcommands();
        if (chosen.empty()) {
            return path;
        }
        level = chosen.front();
        path += (path.empty() ? "" : " ") + level->get_name();
    }
}

// Runs the chosen command, turning every failure into words on standard error and an exit
// status.
int RunChosen(const CLI::App& app, const zrb::CommandRun& run) {
    const std::string command = ChosenCommand(app);
    try {
        return run();
    } catch (const zrb::ToolError& e) {
        zrb::PrintError(command, e.what());
    } catch (const CZRB_Exception& e) {
        zrb::PrintError(command, zrb::DescribeException(e));
    } catch (const std::bad_alloc&) {
        zrb::PrintError(command, "out of memory");
    } catch (const std::exception& e) {
        zrb::PrintError(command, e.what());
    }
    return zrb::kExitBadInput;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"zrb: CRCs of files, dates in five calendars, a look inside BMP and "
                 "delimiter-separated files.",
                 "zrb"};
    app.set_version_flag("--version", "zrb " ZRB_VERSION " (LZRB_Core)");
    app.require_subcommand(1);
    app.footer("Run 'zrb COMMAND --help' for the options of a command; 'man zrb' for more.");

    zrb::CommandRun run;
    zrb::AddCrcCommand(app, run);
    zrb::AddDateCommand(app, run);
    zrb::AddBmpCommand(app, run);
    zrb::AddCsvCommand(app, run);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        // Help and version print and succeed; any other parse error is bad usage.
        return app.exit(e) == 0 ? zrb::kExitOk : zrb::kExitBadInput;
    }

    int status = RunChosen(app, run);
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::fprintf(stderr, "zrb: cannot write the output: %s\n", std::strerror(errno));
        status = zrb::kExitBadInput;
    }
    return status;
}
