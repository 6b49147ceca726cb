// Turns inputs of the fuzz targets from files into lines of text and back.
// Usage: input_lines pack FILE_OR_FOLDER...   prints one line for each different input, sorted
//        input_lines unpack LINES FOLDER      writes a file for each line into the folder

#include <exception>
#include <fstream>
#include <iostream>
#include <set>
#include <span>
#include <string_view>

#include "input_lines.hpp"

namespace {

namespace fs = std::filesystem;
using kesto::fuzz::Input;

void Pack(std::span<char*> places) {
    std::set<std::string> lines;
    for (const char* const place : places) {
        for (const Input& input : kesto::fuzz::ReadInputFiles(place)) lines.insert(kesto::fuzz::EncodeInput(input));
    }
    lines.erase("");
    for (const std::string& line : lines) std::cout << line << '\n';
}

void Unpack(const fs::path& source, const fs::path& folder) {
    fs::create_directories(folder);
    int number = 0;
    for (const Input& input : kesto::fuzz::ReadInputLines(source)) {
        std::ofstream file(folder / std::to_string(++number), std::ios::binary);
        file.write(reinterpret_cast<const char*>(input.data()), static_cast<std::streamsize>(input.size()));
    }
}

}  // namespace

int main(int argc, char** argv) try {
    const std::span<char*> arguments(argv + 1, static_cast<std::size_t>(argc - 1));
    const std::string_view command = arguments.empty() ? "" : arguments[0];
    if (command == "pack" && arguments.size() > 1) return Pack(arguments.subspan(1)), 0;
    if (command == "unpack" && arguments.size() == 3) return Unpack(arguments[1], arguments[2]), 0;
    std::cerr << "usage: input_lines pack FILE_OR_FOLDER... | input_lines unpack LINES FOLDER\n";
    return 2;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
