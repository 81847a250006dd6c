// Plain models of the library's text rules, written byte by byte from their contracts, against
// which the fuzz targets compare what the library answers.
#ifndef LZRB_FUZZ_TEXT_MODEL_H
#define LZRB_FUZZ_TEXT_MODEL_H

#include <cstddef>
#include <string>
#include <vector>

// One text line read from `bytes` at `position`: NUL and CR are dropped, LF ends the line,
// and at most maxChars characters are stored (the rest of a longer line stays unread).
struct LineScan {
    std::string text;
    bool endedByLineFeed;
    std::size_t next; // the position after the bytes consumed
};

inline LineScan ScanLine(const std::string& bytes, std::size_t position, std::size_t maxChars) {
    LineScan scan{std::string(), false, position};
    while (scan.next < bytes.size() && scan.text.size() < maxChars) {
        const char byte = bytes[scan.next++];
        if (byte == '\n') {
            scan.endedByLineFeed = true;
            break;
        }
        if (byte != '\0' && byte != '\r') {
            scan.text += byte;
        }
    }
    return scan;
}

// A scan that gives no line: it stopped without a line feed and stored nothing.
inline bool GivesNoLine(const LineScan& scan) {
    return !scan.endedByLineFeed && scan.text.empty();
}

// The fields of `text` split at `separator`: every separator ends a field (empty ones too),
// the text after the last one is a field only when it is not empty; no text gives no fields.
inline std::vector<std::string> SplitFields(const std::string& text, char separator) {
    std::vector<std::string> fields;
    std::string field;
    for (const char c : text) {
        if (c == separator) {
            fields.push_back(field);
            field.clear();
        } else {
            field += c;
        }
    }
    if (!field.empty()) {
        fields.push_back(field);
    }
    return fields;
}

#endif
