// The CRCs the tool computes: catalogue entries found by name, alias or selector, and CRCs of
// parameters given on the command line.
#ifndef ZRB_TOOL_CRC_ALGORITHM_H
#define ZRB_TOOL_CRC_ALGORITHM_H

#include "CZRB_Crc.h"

#include <cstdint>
#include <string>

namespace zrb {

// One CRC: the configured engine, its register width in bits and the name it is printed under
// (which FindAlgorithm reads back).
struct CrcAlgorithm {
    std::string name;
    unsigned int width;
    CZRB_Crc engine;
};

// The parameters of a CRC of one's own.
struct CrcParameters {
    unsigned int width = 0; // 8, 16, 32 or 64
    std::uint64_t polynomial = 0;
    std::uint64_t init = 0;
    bool reflectIn = false;
    bool reflectOut = false;
    std::uint64_t xorOut = 0;
};

// The name the tool prints for a catalogue row, without blanks: the published name in the
// row's parentheses after "CRC-<width>/" ("CRC-16/ACORN (XMODEM)" is "CRC-16/XMODEM"), else
// the row's own name ("KERMIT alias" is "CRC-16/KERMIT", "MIL-STD-1760 (...)" "MIL-STD-1760").
std::string ToolName(const CZRB_Crc::t_CatalogueEntry& entry);

// The CRC that `text` names, ignoring case: a catalogue name as the library spells it or as
// ToolName spells it, the alias in its parentheses alone or after "CRC-<width>/", a selector
// ("0x3000"), or a "custom:width=...,poly=...,init=...,refin=...,refout=...,xorout=..." text
// (init, refin, refout and xorout may be left out: 0 and false). A name several rows share is
// the first of them. Throws ToolError for anything else.
CrcAlgorithm FindAlgorithm(const std::string& text);

// A CRC of the given parameters, named by its custom text. Throws ToolError for a width other
// than 8, 16, 32 or 64 and for a value wider than the width.
CrcAlgorithm MakeAlgorithm(const CrcParameters& parameters);

// `value` as width / 4 lower-case hexadecimal digits.
std::string FormatCrc(std::uint64_t value, unsigned int width);

} // namespace zrb

#endif
