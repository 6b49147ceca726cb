#include "input_lines.hpp"

#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>

namespace kesto::fuzz {
namespace {

namespace fs = std::filesystem;

std::string Escape(std::uint8_t byte) {
    constexpr const char* digits = "0123456789abcdef";
    return {'\\', 'x', digits[byte / 16], digits[byte % 16]};
}

std::optional<Input> Decode(const std::string& line) {
    Input input;
    for (std::size_t i = 0; i < line.size(); ++i) {
        auto byte = static_cast<std::uint8_t>(line[i]);
        if (line[i] == '\\') {
            const char kind = ++i < line.size() ? line[i] : '\0';
            if (kind == 'x') {
                const char* const first = line.data() + i + 1;
                const std::size_t digits = std::min<std::size_t>(2, line.size() - i - 1);
                if (std::from_chars(first, first + digits, byte, 16).ptr != first + 2) return std::nullopt;
                i += 2;
            } else if (kind == 'n' || kind == 'r' || kind == '\\') {
                byte = static_cast<std::uint8_t>(kind == 'n' ? '\n' : kind == 'r' ? '\r' : '\\');
            } else {
                return std::nullopt;
            }
        }
        input.push_back(byte);
    }
    return input;
}

Input ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    const std::vector<char> read{std::istreambuf_iterator<char>(file), {}};
    return {read.begin(), read.end()};
}

}  // namespace

std::string EncodeInput(const Input& input) {
    std::string line;
    for (std::size_t i = 0; i < input.size(); ++i) {
        const std::uint8_t byte = input[i];
        const bool first = i == 0;
        const bool last = i + 1 == input.size();
        if (byte == '\n') {
            line += "\\n";
        } else if (byte == '\r') {
            line += "\\r";
        } else if (byte == '\\') {
            line += "\\\\";
        } else if (byte < ' ' || byte > '~' || (byte == ' ' && (first || last)) || (byte == '#' && first)) {
            line += Escape(byte);
        } else {
            line += static_cast<char>(byte);
        }
    }
    return line;
}

std::vector<Input> ReadInputLines(const fs::path& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    std::vector<Input> inputs;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line[0] == '#') continue;
        const std::optional<Input> input = Decode(line);
        if (!input) throw std::runtime_error(path.string() + ":" + std::to_string(number) + ": an unknown escape");
        inputs.push_back(*input);
    }
    return inputs;
}

std::vector<Input> ReadInputFiles(const fs::path& path) {
    if (!fs::is_directory(path)) return {ReadFile(path)};
    std::vector<Input> inputs;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) inputs.push_back(ReadFile(entry.path()));
    }
    return inputs;
}

}  // namespace kesto::fuzz
