// Runs a target over files and folders of files, in any build: the corpus and the findings of earlier runs.
// Usage: TARGET [--exports LIST] FILE_OR_FOLDER...   With --exports, every function in the list must have been called
// with success.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "called.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void Run(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> read{std::istreambuf_iterator<char>(file), {}};
    const std::vector<std::uint8_t> input(read.begin(), read.end());
    static_cast<void>(LLVMFuzzerTestOneInput(input.data(), input.size()));
}

int RunAll(const fs::path& path) {
    if (!fs::is_directory(path)) return Run(path), 1;
    int count = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) Run(entry.path()), ++count;
    }
    return count;
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

int main(int argc, char** argv) {
    const char* exports = nullptr;
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--exports" && i + 1 < argc) {
            exports = argv[++i];
        } else {
            if (!fs::exists(argv[i])) return std::printf("missing: %s\n", argv[i]), 1;
            count += RunAll(argv[i]);
        }
    }
    std::printf("%d inputs\n", count);
    if (count == 0) return 1;
    return exports != nullptr && CountMissing(exports) > 0 ? 1 : 0;
}
