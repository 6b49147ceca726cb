/// Inputs of the fuzz targets as lines of text, one input a line: printable ASCII stands for itself, every other byte
/// is \n, \r, \\ or \xHH. Empty lines, and lines that begin with #, are no inputs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kesto::fuzz {

using Input = std::vector<std::uint8_t>;

/// The line of an input, without its end. Blanks and # at the ends are escaped, so that no editor can lose them.
std::string EncodeInput(const Input& input);

/// The inputs of a file of lines, in order. Throws std::runtime_error where the file cannot be read or an escape is not
/// one of the four.
std::vector<Input> ReadInputLines(const std::filesystem::path& path);

/// The bytes of every file given or below a folder given, in no order. Throws std::runtime_error where there is no such
/// file.
std::vector<Input> ReadInputFiles(const std::filesystem::path& path);

}  // namespace kesto::fuzz
