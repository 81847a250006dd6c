// A fresh temporary folder per test, and raw file contents.
#pragma once

#include "CZRB_Exception.h"
#include "CZRB_String.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace std::string_literals;

class TempDirTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = std::filesystem::temp_directory_path() / "lzrb_files_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_dir = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(m_dir); }

    std::string PathOf(const std::string& name) const { return m_dir / name; }
    std::string MakeFile(const std::string& name, const std::string& bytes) const {
        std::ofstream(PathOf(name), std::ios::binary) << bytes;
        return PathOf(name);
    }
    static std::string Contents(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    static long OpenDescriptors() { // a stream left open shows up here
        const std::filesystem::directory_iterator fds("/proc/self/fd");
        return std::distance(begin(fds), end(fds));
    }

    std::filesystem::path m_dir;
};

inline std::string Str(const CZRB_String& text) {
    return {text.GetStringC(), text.GetLength()};
}
