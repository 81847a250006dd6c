// Files made byte by byte for the file readers and the tool.
#pragma once

#include "TestSupport.h"

#include <string>
#include <vector>

using namespace std::string_literals;

inline void PutLe(std::string& out, unsigned long long value, int width) {
    for (int i = 0; i < width; ++i) {
        out += static_cast<char>(value >> (8 * i));
    }
}

// A BMP file. `rows` are pixel rows, top row first: palette indexes (1, 4, 8 bits, packed most
// significant bit first) or 0x00RRGGBB colours (24, 32 bits). Rows are padded to 4 bytes with
// 0xEE and stored bottom-up (top-down when asked).
struct BmpFile {
    unsigned int headerSize = 40;
    int bits = 24;
    std::vector<std::vector<unsigned int>> rows;
    std::vector<unsigned int> palette;
    unsigned int colorsUsed = 0;
    unsigned int sizeImage = 0; // written as it is; 0 lets the reader compute it
    bool topDown = false;

    std::string Build() const {
        const unsigned int offset = 14 + headerSize + 4 * static_cast<unsigned int>(palette.size());
        const int height = static_cast<int>(rows.size());
        std::string out = "BM";
        PutLe(out, 0, 8); // file size (set below) and reserved word
        for (unsigned int field : {offset, headerSize, rows.empty() ? 0U : unsigned(rows[0].size()),
                                   static_cast<unsigned int>(topDown ? -height : height)}) {
            PutLe(out, field, 4);
        }
        PutLe(out, 1 | static_cast<unsigned int>(bits) << 16, 4); // planes, bit count
        for (unsigned int field : {0U, sizeImage, 2835U, 2835U, colorsUsed, 0U}) {
            PutLe(out, field, 4);
        }
        out.resize(14 + headerSize, 0);
        for (unsigned int entry : palette) {
            PutLe(out, entry, 4);
        }
        for (size_t i = 0; i < rows.size(); ++i) {
            std::string row;
            unsigned int pending = 0, used = 0;
            for (unsigned int v : rows[topDown ? i : rows.size() - 1 - i]) {
                if (bits >= 24) {
                    PutLe(row, v, bits / 8);
                    continue;
                }
                pending = pending << bits | v;
                if ((used += static_cast<unsigned int>(bits)) == 8) {
                    row += static_cast<char>(pending);
                    pending = used = 0;
                }
            }
            if (used) {
                row += static_cast<char>(pending << (8 - used));
            }
            out += row.append((4 - row.size() % 4) % 4, '\xEE');
        }
        std::string size;
        PutLe(size, static_cast<unsigned int>(out.size()), 4);
        return out.replace(2, 4, size);
    }
};
