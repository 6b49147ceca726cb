// Runs a target over inputs, in any build: the corpus and the findings of earlier runs.
// Usage: TARGET [--exports LIST] [--lines FILE]... FILE_OR_FOLDER...   FILE holds one input a line, see
// input_lines.hpp. With --exports, every function in the list must have been called with success.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

#include "called.hpp"
#include "input_lines.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::size_t RunAll(const std::vector<kesto::fuzz::Input>& inputs) {
    for (const kesto::fuzz::Input& input : inputs) {
        static_cast<void>(LLVMFuzzerTestOneInput(input.data(), input.size()));
    }
    return inputs.size();
}

int CountMissing(const char* list) {
    std::ifstream exports(list);
    int names = 0;
    int missing = 0;
    for (std::string name; std::getline(exports, name); ++names) {
        if (kesto::fuzz::CalledNames().count(name) > 0) continue;
        std::printf("never called with success: %s\n", name.c_str());
        ++missing;
    }
    if (names == 0) std::printf("no names in %s\n", list);
    return names == 0 ? 1 : missing;
}

}  // namespace

int main(int argc, char** argv) try {
    const char* exports = nullptr;
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--exports" && i + 1 < argc) {
            exports = argv[++i];
        } else if (argument == "--lines" && i + 1 < argc) {
            count += RunAll(kesto::fuzz::ReadInputLines(argv[++i]));
        } else {
            count += RunAll(kesto::fuzz::ReadInputFiles(argument));
        }
    }
    std::printf("%zu inputs\n", count);
    if (count == 0) return 1;
    return exports != nullptr && CountMissing(exports) > 0 ? 1 : 0;
} catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 1;
}
