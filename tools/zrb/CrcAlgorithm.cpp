#include "CrcAlgorithm.h"

#include "Common.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <vector>

namespace zrb {
namespace {

const char kCustomPrefix[] = "custom:";

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

bool EndsWith(const std::string& text, const std::string& tail) {
    return text.size() >= tail.size() &&
           text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

// A catalogue name taken apart: "CRC-32/BZIP2 alias (AAL5)" has the base "CRC-32/BZIP2" and
// the alias "AAL5". A parenthesised remark with blanks in it ("rotate-XOR, no table") is no
// alias.
struct NameParts {
    std::string base;
    std::string alias;
};

NameParts Split(const std::string& name) {
    NameParts parts;
    parts.base = name;
    const std::size_t open = name.find(" (");
    if (open != std::string::npos && EndsWith(name, ")")) {
        const std::string inside = name.substr(open + 2, name.size() - open - 3);
        if (inside.find_first_of(" ,") == std::string::npos) {
            parts.alias = inside;
        }
        parts.base = name.substr(0, open);
    }
    for (const std::string word : {" alias", " family"}) {
        if (EndsWith(parts.base, word)) {
            parts.base.resize(parts.base.size() - word.size());
        }
    }
    return parts;
}

std::string WidthPrefix(unsigned int width) {
    return "CRC-" + std::to_string(width) + "/";
}

// Every spelling that names the row, in upper case.
std::vector<std::string> NamesOf(const CZRB_Crc::t_CatalogueEntry& entry) {
    const NameParts parts = Split(entry.name);
    std::vector<std::string> names = {entry.name, parts.base, ToolName(entry)};
    if (!parts.alias.empty()) {
        names.push_back(parts.alias);
        names.push_back(WidthPrefix(entry.width) + parts.alias);
    }
    if (parts.base.find('/') == std::string::npos && parts.base.rfind("CRC", 0) != 0) {
        names.push_back(WidthPrefix(entry.width) + parts.base);
    }
    for (std::string& name : names) {
        name = Upper(name);
    }
    return names;
}

CrcAlgorithm FromCatalogue(const CZRB_Crc::t_CatalogueEntry& entry) {
    return {ToolName(entry), entry.width, CZRB_Crc(entry.standard)};
}

bool ParseFlag(const std::string& text, const std::string& what) {
    const std::string upper = Upper(text);
    if (upper == "TRUE" || upper == "1") {
        return true;
    }
    if (upper == "FALSE" || upper == "0") {
        return false;
    }
    throw ToolError(what + " \"" + text + "\" is neither true nor false");
}

// "width=16,poly=0x1021,refin=true": the parameters after the "custom:" prefix.
CrcParameters ParseCustom(const std::string& text) {
    CrcParameters parameters;
    bool haveWidth = false;
    bool havePoly = false;
    std::istringstream fields(text);
    for (std::string field; std::getline(fields, field, ',');) {
        const std::size_t equals = field.find('=');
        const std::string key = field.substr(0, equals);
        const std::string value = equals == std::string::npos ? "" : field.substr(equals + 1);
        if (key == "width") {
            parameters.width = static_cast<unsigned int>(ParseUnsigned(value, "width", 64));
            haveWidth = true;
        } else if (key == "poly") {
            parameters.polynomial = ParseUnsigned(value, "poly");
            havePoly = true;
        } else if (key == "init") {
            parameters.init = ParseUnsigned(value, "init");
        } else if (key == "refin") {
            parameters.reflectIn = ParseFlag(value, "refin");
        } else if (key == "refout") {
            parameters.reflectOut = ParseFlag(value, "refout");
        } else if (key == "xorout") {
            parameters.xorOut = ParseUnsigned(value, "xorout");
        } else {
            throw ToolError("unknown CRC parameter \"" + key +
                            "\" (width, poly, init, refin, refout, xorout)");
        }
    }
    if (!haveWidth || !havePoly) {
        throw ToolError("a custom CRC needs at least width and poly");
    }
    return parameters;
}

} // namespace

std::string ToolName(const CZRB_Crc::t_CatalogueEntry& entry) {
    const NameParts parts = Split(entry.name);
    if (!parts.alias.empty()) {
        // The name in parentheses is the published one, the rest an older name or an alias.
        return parts.alias.find("CRC") != std::string::npos
                   ? parts.alias
                   : WidthPrefix(entry.width) + parts.alias;
    }
    if (entry.standard != CZRB_Crc::MIL_STD_1760 && parts.base.find('/') == std::string::npos &&
        parts.base.rfind("CRC", 0) != 0) {
        return WidthPrefix(entry.width) + parts.base; // KERMIT is CRC-16/KERMIT
    }
    return parts.base;
}

CrcAlgorithm FindAlgorithm(const std::string& text) {
    std::string lower = text;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (lower.rfind(kCustomPrefix, 0) == 0) {
        return MakeAlgorithm(ParseCustom(lower.substr(sizeof kCustomPrefix - 1)));
    }
    unsigned int count = 0;
    const CZRB_Crc::t_CatalogueEntry* catalogue = CZRB_Crc::GetCatalogue(&count);
    if (lower.rfind("0x", 0) == 0) {
        const std::uint64_t selector = ParseUnsigned(text, "CRC selector");
        for (unsigned int i = 0; i < count; ++i) {
            if (static_cast<std::uint64_t>(catalogue[i].standard) == selector) {
                return FromCatalogue(catalogue[i]);
            }
        }
        throw ToolError("no catalogue CRC has the selector " + text + " (see 'zrb crc --list')");
    }
    const std::string wanted = Upper(text);
    for (unsigned int i = 0; i < count; ++i) {
        const std::vector<std::string> names = NamesOf(catalogue[i]);
        if (std::find(names.begin(), names.end(), wanted) != names.end()) {
            return FromCatalogue(catalogue[i]);
        }
    }
    throw ToolError("unknown CRC algorithm \"" + text + "\" (see 'zrb crc --list')");
}

CrcAlgorithm MakeAlgorithm(const CrcParameters& p) {
    static const CZRB_Crc::t_CrcType kTypes[] = {CZRB_Crc::CRC_TYPE_8, CZRB_Crc::CRC_TYPE_16,
                                                 CZRB_Crc::CRC_TYPE_32, CZRB_Crc::CRC_TYPE_64};
    const unsigned int widths[] = {8, 16, 32, 64};
    const auto* found = std::find(std::begin(widths), std::end(widths), p.width);
    if (found == std::end(widths)) {
        throw ToolError("a CRC width must be 8, 16, 32 or 64, not " + std::to_string(p.width));
    }
    const std::uint64_t mask =
        p.width == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << p.width) - 1;
    for (const auto& [value, what] : {std::pair{p.polynomial, "poly"}, std::pair{p.init, "init"},
                                      std::pair{p.xorOut, "xorout"}}) {
        if ((value & ~mask) != 0) {
            throw ToolError(std::string(what) + " 0x" + FormatCrc(value, 64) + " is wider than " +
                            std::to_string(p.width) + " bits");
        }
    }
    const std::string name = std::string(kCustomPrefix) + "width=" + std::to_string(p.width) +
                             ",poly=0x" + FormatCrc(p.polynomial, p.width) + ",init=0x" +
                             FormatCrc(p.init, p.width) +
                             ",refin=" + (p.reflectIn ? "true" : "false") +
                             ",refout=" + (p.reflectOut ? "true" : "false") + ",xorout=0x" +
                             FormatCrc(p.xorOut, p.width);
    return {name, p.width,
            CZRB_Crc(kTypes[found - std::begin(widths)], p.polynomial, p.init, p.reflectIn,
                     p.reflectOut, p.xorOut)};
}

std::string FormatCrc(std::uint64_t value, unsigned int width) {
    static const char kDigits[] = "0123456789abcdef";
    std::string text(width / 4, '0');
    for (std::size_t i = text.size(); i-- > 0; value >>= 4) {
        text[i] = kDigits[value & 0xF];
    }
    return text;
}

} // namespace zrb
