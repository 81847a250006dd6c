// Reading a whole input, a file or standard input, in large blocks without copying it whole into
// memory: regular files are mapped a window at a time, anything else is read into one buffer.
#ifndef ZRB_TOOL_INPUT_BLOCKS_H
#define ZRB_TOOL_INPUT_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

namespace zrb {

// An input that could not be opened or read; the text names the input and the reason.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Receives the input block by block, in order.
using BlockConsumer = std::function<void(const unsigned char* data, std::size_t length)>;

class InputBlocks {
public:
    // Opens `path` for reading; "-" is standard input (which is not closed afterwards).
    // Throws InputError when it cannot be opened or is a directory.
    explicit InputBlocks(const std::string& path);
    ~InputBlocks();
    InputBlocks(const InputBlocks&) = delete;
    InputBlocks& operator=(const InputBlocks&) = delete;

    // The bytes left to read when known in advance (a regular file); empty otherwise.
    std::optional<std::uint64_t> KnownSize() const;

    // Hands the rest of the input to `consume`, block by block (no block is longer than
    // kBlockSize), and returns the number of bytes. Throws InputError when a read fails or a
    // mapped file shrinks under the reader.
    std::uint64_t ForEachBlock(const BlockConsumer& consume);

    static constexpr std::size_t kBlockSize = std::size_t{2} << 20;

private:
    std::uint64_t ConsumeMapped(const BlockConsumer& consume);
    std::uint64_t ConsumeRead(const BlockConsumer& consume);

    std::string m_name; // for messages: the path, or "standard input"
    int m_fd;
    bool m_ownsFd;
    bool m_regular;
    std::uint64_t m_start; // offset the reading starts at
    std::uint64_t m_size;  // file size when regular
};

} // namespace zrb

#endif
