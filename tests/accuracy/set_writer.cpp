#include "set_writer.hpp"

#include <array>
#include <charconv>

namespace reference {

Line::~Line() {
    text += '\n';
    std::fputs(text.c_str(), file);
}

Line& Line::Given(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return Word({digits.data(), end});
}

Line& Line::Exact(const Real& number) {
    constexpr int decimals = 16;
    return Word(number.str(decimals, std::ios_base::fixed));
}

Line& Line::Whole(long number) { return Word(std::to_string(number)); }

Line& Line::Word(std::string_view word) {
    text += ' ';
    text += word;
    return *this;
}

void SetWriter::Kind(const std::string& name) {
    if (name == kind) return;
    kind = name;
    Begin("kind").Word(name);
}

void SetWriter::WriteLeftOut() const {
    for (const auto& [reason, count] : leftOut) Begin("left-out").Whole(count).Word(reason);
}

}  // namespace reference
