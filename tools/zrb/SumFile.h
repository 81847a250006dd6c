// The lines 'zrb crc' prints and 'zrb crc --check' reads back, in two forms:
//   <hex>  <file>               one algorithm, untagged
//   <ALG> (<file>) = <hex>      tagged with the algorithm's name
// A file name holding a backslash, line feed or carriage return is escaped (\\, \n, \r) and
// its line then starts with a backslash. "-" stands for standard input.
#ifndef ZRB_TOOL_SUM_FILE_H
#define ZRB_TOOL_SUM_FILE_H

#include <optional>
#include <string>

namespace zrb {

struct SumLine {
    std::string algorithm; // empty in the untagged form
    std::string file;
    std::string hex;
};

// The text of the line, without its line end.
std::string FormatSumLine(const SumLine& line);

// The line read back (a carriage return at its end is ignored); empty when it has neither form.
std::optional<SumLine> ParseSumLine(std::string text);

} // namespace zrb

#endif
