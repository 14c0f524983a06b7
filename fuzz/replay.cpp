// A target without the fuzzer: goes once through each file of the folders that it is given.

#include "fuzzing.h"

#include <filesystem>
#include <fstream>
#include <iterator>

int main(int argc, char **argv) {
    int inputs = 0;
    for (int folder = 1; folder < argc; ++folder)
        for (const auto &entry : std::filesystem::directory_iterator(argv[folder])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string input{std::istreambuf_iterator<char>(file), {}};
            std::printf("%s\n", entry.path().c_str()); // the last one printed is the one that failed
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.data()), input.size());
            ++inputs;
        }
    return inputs > 0 ? 0 : 1;
}
