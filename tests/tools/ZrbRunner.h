// Runs the real zrb binary in a fresh temporary folder and captures what it prints.
#pragma once

#include "files/FileTestSupport.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <vector>

extern char** environ;

struct ZrbResult {
    int status; // exit status; 128 + signal number when a signal ended it
    std::string out;
    std::string err;
};

class ZrbTest : public TempDirTest {
protected:
    // Writes `bytes` to `name` in the folder.
    void Write(const std::string& name, const std::string& bytes) const { MakeFile(name, bytes); }

    // zrb with `args`, run in the folder with standard input from `input`.
    ZrbResult Zrb(const std::vector<std::string>& args, const std::string& input = "") const {
        std::vector<std::string> argv = {ZRB_PATH};
        argv.insert(argv.end(), args.begin(), args.end());
        return Spawn(argv, input);
    }
    // zrb `command` followed by `args`.
    ZrbResult Zrb(std::vector<std::string> command, const std::vector<std::string>& args) const {
        command.insert(command.end(), args.begin(), args.end());
        return Zrb(command);
    }

    // A shell command line, for pipes; "$ZRB" names the binary.
    ZrbResult Shell(const std::string& line) const {
        return Spawn({"/bin/sh", "-c", "ZRB='" ZRB_PATH "'; " + line}, "");
    }

private:
    ZrbResult Spawn(const std::vector<std::string>& args, const std::string& input) const {
        Write(".stdin", input);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addchdir_np(&actions, m_dir.c_str());
        posix_spawn_file_actions_addopen(&actions, 0, ".stdin", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 1, ".stdout", O_WRONLY | O_CREAT | O_TRUNC,
                                         0600);
        posix_spawn_file_actions_addopen(&actions, 2, ".stderr", O_WRONLY | O_CREAT | O_TRUNC,
                                         0600);
        std::vector<char*> argv;
        for (const std::string& arg : args) {
            argv.push_back(const_cast<char*>(arg.c_str()));
        }
        argv.push_back(nullptr);
        pid_t pid = 0;
        const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        int wait = 0;
        if (spawned != 0 || waitpid(pid, &wait, 0) != pid) {
            ADD_FAILURE() << "cannot run " << argv[0];
            return {-1, "", ""};
        }
        const int status = WIFEXITED(wait) ? WEXITSTATUS(wait) : 128 + WTERMSIG(wait);
        return {status, Read(".stdout"), Read(".stderr")};
    }

    std::string Read(const std::string& name) const { return Contents(PathOf(name)); }
};

// Lines of `text` that contain `part`.
inline int CountLines(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        const std::string line = text.substr(at, end - at);
        count += line.find(part) != std::string::npos ? 1 : 0;
        at = end == std::string::npos ? text.size() : end + 1;
    }
    return count;
}
