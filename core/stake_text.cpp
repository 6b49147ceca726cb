#include "core/stake_text.hpp"

#include <array>
#include <charconv>
#include <cmath>

#include "core/tolerances.hpp"

namespace kesto {

namespace {

inline constexpr double metresPerKilometre = 1000;
inline constexpr int metreDecimals = 3;

/// Appends a number in fixed notation, independent of the process locale.
void AppendFixed(std::string& text, double number, int decimals) {
    std::array<char, 352> digits{};  // room for the largest double in fixed notation
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals);
    text.append(digits.data(), end.ptr);
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

}  // namespace kesto
