// Runs the real zrb binary in a fresh temporary folder and captures what it prints.
#pragma once

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

extern char** environ;

struct ZrbResult {
    int status; // exit status; 128 + signal number when a signal ended it
    std::string out;
    std::string err;
};

class ZrbTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = std::filesystem::temp_directory_path() / "zrb_tool_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_dir = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(m_dir); }

    // Writes `bytes` to `name` in the folder; returns the name.
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(m_dir / name, std::ios::binary) << bytes;
        return name;
    }

    // zrb with `args`, run in the folder with standard input from `input`.
    ZrbResult Zrb(const std::vector<std::string>& args, const std::string& input = "") const {
        std::vector<std::string> argv = {ZRB_PATH};
        argv.insert(argv.end(), args.begin(), args.end());
        return Spawn(argv, input);
    }

    // A shell command line, for pipes; "$ZRB" names the binary.
    ZrbResult Shell(const std::string& line) const {
        return Spawn({"/bin/sh", "-c", "ZRB='" ZRB_PATH "'; " + line}, "");
    }

    std::filesystem::path m_dir;

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

    std::string Read(const std::string& name) const {
        std::ifstream in(m_dir / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
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
