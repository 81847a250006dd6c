// Replays inputs through a fuzz target without libFuzzer: each argument is a file or a folder
// whose files are run in name order. A broken check aborts the program; an input that ends in
// an exception the target lets through terminates it. Fails when no input was found, so that a
// misplaced corpus cannot pass unnoticed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> InputsOf(const std::filesystem::path& argument) {
    std::vector<std::filesystem::path> inputs;
    if (std::filesystem::is_directory(argument)) {
        for (const auto& entry : std::filesystem::directory_iterator(argument)) {
            if (entry.is_regular_file()) {
                inputs.push_back(entry.path());
            }
        }
        std::sort(inputs.begin(), inputs.end());
    } else if (std::filesystem::is_regular_file(argument)) {
        inputs.push_back(argument);
    }
    return inputs;
}

void Replay(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                  std::istreambuf_iterator<char>());
    // A copy of exactly the input's size, so that a read past its end is caught.
    std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

} // namespace

int main(int argc, char** argv) {
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& path : InputsOf(argv[i])) {
            std::fprintf(stderr, "replaying %s\n", path.c_str());
            Replay(path);
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return replayed == 0 ? 1 : 0;
}
