#include "terminal/numbers.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kesto::host {

namespace {

constexpr std::size_t longestFixed = 352;  // characters: the largest double in fixed notation with decimals

bool OnlyZeros(std::string_view digits) noexcept { return digits.find_first_of("123456789") == std::string_view::npos; }

}  // namespace

std::string_view Trim(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::optional<double> ParseReal(std::string_view text, bool decimalComma) noexcept {
    text = Trim(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);  // from_chars takes no "+"
    std::array<char, longestFixed> copy{};
    if (text.empty() || text.size() > copy.size()) return std::nullopt;
    auto* const end = std::copy(text.begin(), text.end(), copy.begin());
    if (decimalComma && text.find('.') == std::string_view::npos) std::replace(copy.begin(), end, ',', '.');
    double number = 0;
    const char* const last = copy.data() + text.size();
    const auto [stop, error] = std::from_chars(copy.data(), last, number);
    if (error != std::errc() || stop != last || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<int> ParseInteger(std::string_view text) noexcept {
    text = Trim(text);
    int number = 0;
    const char* const last = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), last, number);
    if (text.empty() || error != std::errc() || stop != last) return std::nullopt;
    return number;
}

std::string FormatReal(double number, int decimals) {
    std::array<char, longestFixed> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals);
    std::string text(digits.data(), end.ptr);
    if (text.starts_with('-') && OnlyZeros(text)) text.erase(0, 1);
    return text;
}

std::string FormatShort(double number) {
    std::array<char, longestFixed> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), end.ptr};
}

}  // namespace kesto::host
