#include "Common.h"

#include "CZRB_Exception.h"

#include <sys/stat.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace zrb {

void PrintError(const std::string& command, const std::string& message) {
    std::fprintf(stderr, "zrb %s: %s\n", command.c_str(), message.c_str());
}

std::uint64_t ParseUnsigned(const std::string& text, const std::string& what, std::uint64_t max) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const std::string digits = hex ? text.substr(2) : text;
    const unsigned int base = hex ? 16 : 10;
    std::uint64_t value = 0;
    bool ok = !digits.empty();
    for (const char c : digits) {
        const int digit = std::isdigit(static_cast<unsigned char>(c)) ? c - '0'
                          : hex && std::isxdigit(static_cast<unsigned char>(c))
                              ? std::tolower(static_cast<unsigned char>(c)) - 'a' + 10
                              : -1;
        if (digit < 0 || value > (UINT64_MAX - static_cast<unsigned int>(digit)) / base) {
            ok = false;
            break;
        }
        value = value * base + static_cast<unsigned int>(digit);
    }
    if (!ok || value > max) {
        throw ToolError(what + " \"" + text + "\" is not a number from 0 to " +
                        std::to_string(max) + " (decimal, or hexadecimal after 0x)");
    }
    return value;
}

void RequireReadableFile(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        throw ToolError(path + ": " + std::strerror(errno));
    }
    if (S_ISDIR(status.st_mode)) {
        throw ToolError(path + ": is a directory");
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        throw ToolError(path + ": " + std::strerror(errno));
    }
    std::fclose(file);
}

std::string DescribeException(const CZRB_Exception& e) {
    const char* meaning = "failed";
    switch (e.code) {
    case 2:
        meaning = "value out of range";
        break;
    case 3:
        meaning = "read past the end";
        break;
    case 5:
        meaning = "no such item";
        break;
    case 8:
        meaning = "not supported";
        break;
    case 9:
        meaning = "zero size";
        break;
    case 24:
        meaning = "not readable";
        break;
    case 30:
        meaning = "no file";
        break;
    default:
        break;
    }
    return std::string("the library refused the operation (") + meaning + ", code " +
           std::to_string(e.code) + ")";
}

} // namespace zrb
