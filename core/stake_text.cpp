#include "core/stake_text.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "core/tolerances.hpp"

namespace kesto {

namespace {

inline constexpr double metresPerKilometre = 1000;
inline constexpr int metreDecimals = 3;
inline constexpr std::string_view typographicMinus = "\xE2\x88\x92";  // U+2212
inline constexpr std::string_view digitCharacters = "0123456789";

/// Appends a number in fixed notation, independent of the process locale.
void AppendFixed(std::string& text, double number, int decimals) {
    std::array<char, 352> digits{};  // room for the largest double in fixed notation
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals);
    text.append(digits.data(), end.ptr);
}

std::string_view Trim(std::string_view text) noexcept {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool Take(std::string_view& text, std::string_view front) noexcept {
    if (!text.starts_with(front)) return false;
    text.remove_prefix(front.size());
    return true;
}

char Lower(char letter) noexcept {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

void TakeAnyCase(std::string_view& text, std::string_view front) noexcept {
    const auto same = [](char one, char other) { return Lower(one) == Lower(other); };
    if (text.size() >= front.size() && std::equal(front.begin(), front.end(), text.begin(), same)) {
        text.remove_prefix(front.size());
    }
}

/// The number that a text is from its first character to its last.
std::optional<double> WholeNumber(std::string_view text) noexcept {
    double number = 0;
    const char* const last = text.data() + text.size();
    const auto end = std::from_chars(text.data(), last, number);
    if (end.ec != std::errc() || end.ptr != last || !std::isfinite(number)) return std::nullopt;
    return number;
}

/// Kilometres "+" metres: whole kilometres, metres without sign and exponent.
std::optional<double> Sum(std::string_view kilometres, std::string_view metres) noexcept {
    if (metres.find_first_not_of("0123456789.") != std::string_view::npos) return std::nullopt;
    const std::optional<double> far = WholeNumber(kilometres);
    const std::optional<double> near = WholeNumber(metres);
    if (!far || !near) return std::nullopt;
    const double sum = *far * metresPerKilometre + *near;
    return std::isfinite(sum) ? std::optional(sum) : std::nullopt;
}

}  // namespace

std::string StakeText(std::string_view prefix, double mileage) {
    const double magnitude = std::fabs(mileage);
    const double kilometres = std::trunc(magnitude / metresPerKilometre);
    const double metres = magnitude - kilometres * metresPerKilometre;
    std::string text(prefix);
    AppendFixed(text, kilometres, 0);
    text += '+';
    if (metres < 10 - tolerance::paddedMetres) {
        text += "00";
    } else if (metres < 100 - tolerance::paddedMetres) {
        text += '0';
    }
    AppendFixed(text, metres, metreDecimals);
    return text;
}

std::string StakeName(std::string_view prefix, double mileage, std::int32_t occurrence) {
    std::string front(occurrence > 0 ? "+" : mileage < 0 ? "-" : "");
    front += prefix;
    return StakeText(front, mileage);
}

std::optional<WrittenStake> ReadStake(std::string_view text, std::string_view prefix) noexcept {
    text = Trim(text);
    const bool negative = Take(text, "-") || Take(text, typographicMinus);
    const bool plus = !negative && Take(text, "+");
    TakeAnyCase(text, prefix);
    const std::size_t digits = std::min(text.find_first_not_of(digitCharacters), text.size());
    if (digits == 0) return std::nullopt;
    const bool inKilometres = text.substr(digits).starts_with('+');
    const std::optional<double> size =
        inKilometres ? Sum(text.substr(0, digits), text.substr(digits + 1)) : WholeNumber(text);
    if (!size) return std::nullopt;
    return WrittenStake{negative ? -*size : *size, plus && inKilometres ? 1 : 0};
}

}  // namespace kesto
