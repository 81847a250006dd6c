#include "SumFile.h"

#include <algorithm>
#include <cctype>

namespace zrb {
namespace {

bool IsHex(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](unsigned char c) { return std::isxdigit(c) != 0; });
}

bool NeedsEscape(const std::string& file) {
    return file.find_first_of("\\\n\r") != std::string::npos;
}

std::string Escape(const std::string& file) {
    std::string text;
    for (const char c : file) {
        text += c == '\\' ? "\\\\" : c == '\n' ? "\\n" : c == '\r' ? "\\r" : std::string(1, c);
    }
    return text;
}

// The escaped name read back; empty for a backslash that starts no known escape.
std::optional<std::string> Unescape(const std::string& text) {
    std::string file;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            file += text[i];
            continue;
        }
        const char next = i + 1 < text.size() ? text[++i] : '\0';
        if (next != '\\' && next != 'n' && next != 'r') {
            return std::nullopt;
        }
        file += next == '\\' ? '\\' : next == 'n' ? '\n' : '\r';
    }
    return file;
}

std::optional<SumLine> ParseUntagged(const std::string& text) {
    const std::size_t end = text.find(' ');
    if (end == std::string::npos || end + 2 >= text.size() ||
        (text[end + 1] != ' ' && text[end + 1] != '*') || !IsHex(text.substr(0, end))) {
        return std::nullopt;
    }
    return SumLine{"", text.substr(end + 2), text.substr(0, end)};
}

std::optional<SumLine> ParseTagged(const std::string& text) {
    const std::size_t open = text.find(" (");
    const std::size_t close = text.rfind(") = ");
    if (open == std::string::npos || close == std::string::npos || close < open + 2 || open == 0 ||
        !IsHex(text.substr(close + 4))) {
        return std::nullopt;
    }
    return SumLine{text.substr(0, open), text.substr(open + 2, close - open - 2),
                   text.substr(close + 4)};
}

} // namespace

std::string FormatSumLine(const SumLine& line) {
    const bool escaped = NeedsEscape(line.file);
    const std::string file = escaped ? Escape(line.file) : line.file;
    const std::string text = line.algorithm.empty()
                                 ? line.hex + "  " + file
                                 : line.algorithm + " (" + file + ") = " + line.hex;
    return escaped ? "\\" + text : text;
}

std::optional<SumLine> ParseSumLine(std::string text) {
    if (!text.empty() && text.back() == '\r') {
        text.pop_back();
    }
    const bool escaped = !text.empty() && text.front() == '\\';
    if (escaped) {
        text.erase(0, 1);
    }
    std::optional<SumLine> line = ParseUntagged(text);
    if (!line) {
        line = ParseTagged(text);
    }
    if (line && escaped) {
        const std::optional<std::string> file = Unescape(line->file);
        if (!file) {
            return std::nullopt;
        }
        line->file = *file;
    }
    if (line && line->file.empty()) {
        return std::nullopt;
    }
    return line;
}

} // namespace zrb
