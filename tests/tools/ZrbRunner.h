// Runs the real zrb binary in a fresh temporary folder and captures what it prints.
#pragma once

#include "files/FileTestSupport.h"

#include <cstdlib>
#include <sys/wait.h>
#include <utility>
#include <vector>

struct ZrbResult {
    int status; // exit status; 128 + signal number when a signal ended it
    std::string out;
    std::string err;
};

// Cases of one command: the arguments and a part of what the command says.
using ZrbCases = std::vector<std::pair<std::vector<std::string>, std::string>>;

class ZrbTest : public TempDirTest {
protected:
    void Write(const std::string& name, const std::string& bytes) const { MakeFile(name, bytes); }

    // zrb `command` followed by `args`, with standard input from `input`.
    ZrbResult Zrb(const std::vector<std::string>& command,
                  const std::vector<std::string>& args = {}, const std::string& input = "") const {
        std::string line = "'" ZRB_PATH "'";
        for (const std::vector<std::string>* list : {&command, &args}) {
            for (std::string arg : *list) {
                for (size_t at = 0; (at = arg.find('\'', at)) != std::string::npos; at += 4) {
                    arg.replace(at, 1, "'\\''");
                }
                line += " '" + arg + "'";
            }
        }
        return Shell(line, input);
    }

    // A shell command line run in the folder, for pipes; "$ZRB" names the binary.
    ZrbResult Shell(const std::string& line, const std::string& input = "") const {
        Write(".stdin", input);
        const int wait = std::system(("cd '" + m_dir.string() + "' && ZRB='" ZRB_PATH "' && (" +
                                      line + ") < .stdin > .stdout 2> .stderr")
                                         .c_str());
        const int status = WIFEXITED(wait) ? WEXITSTATUS(wait) : 128 + WTERMSIG(wait);
        return {status, Contents(PathOf(".stdout")), Contents(PathOf(".stderr"))};
    }

    // Each case exits with 2, prints nothing and says why on standard error.
    void ExpectRefusals(const std::vector<std::string>& command, const ZrbCases& cases) const {
        for (const auto& [args, message] : cases) {
            const ZrbResult r = Zrb(command, args);
            EXPECT_EQ(r.status, 2) << message;
            EXPECT_EQ(r.out, "") << message;
            EXPECT_EQ(CountLines(r.err, message), 1) << r.err;
        }
    }

    // Lines of `text` that contain `part`.
    static int CountLines(const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find('\n', at);
            count += text.substr(at, end - at).find(part) != std::string::npos ? 1 : 0;
            at = end == std::string::npos ? text.size() : end + 1;
        }
        return count;
    }
};
