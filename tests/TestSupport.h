// Helpers shared by the test programs of several subsystems.
#ifndef LZRB_TEST_SUPPORT_H
#define LZRB_TEST_SUPPORT_H

#include "CZRB_Exception.h"
#include "CZRB_String.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

inline const char kAnyObject = 0;

// The code of the CZRB_Exception that `action` throws (0 when it throws none). Library code
// reports detail 0; given an `object` (null too), the exception must name it.
template <class F>
unsigned int CodeOf(F action, const void* object = &kAnyObject) {
    try {
        action();
    } catch (const CZRB_Exception& e) {
        EXPECT_TRUE(object == &kAnyObject || e.object == object) << "code " << e.code;
        EXPECT_EQ(e.detail, 0ULL) << "code " << e.code;
        return e.code;
    }
    return 0;
}

inline std::string Str(const CZRB_String& text) {
    return {text.GetStringC(), text.GetLength()};
}

// The bytes of the file at `path`.
inline std::string Contents(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

inline signed char CompareInts(const int& a, const int& b) {
    return static_cast<signed char>(a > b ? 1 : (a < b ? -1 : 0));
}

// A fresh temporary folder per test, and raw file contents.
class TempDirTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = std::filesystem::temp_directory_path() / "lzrb_test_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_dir = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(m_dir); }

    std::string PathOf(const std::string& name) const { return m_dir / name; }
    std::string MakeFile(const std::string& name, const std::string& bytes) const {
        std::ofstream(PathOf(name), std::ios::binary) << bytes;
        return PathOf(name);
    }
    static long OpenDescriptors() { // a stream left open shows up here
        const std::filesystem::directory_iterator fds("/proc/self/fd");
        return std::distance(begin(fds), end(fds));
    }

    std::filesystem::path m_dir;
};

#endif
