#include "road/mileage_text.hpp"

#include <algorithm>
#include <cmath>

#include "terminal/numbers.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

constexpr double metresPerKilometre = 1000;
constexpr std::string_view typographicMinus = "\xE2\x88\x92";

bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

bool TakePrefix(std::string_view& text, std::string_view prefix) noexcept {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

char Lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool TakePrefixAnyCase(std::string_view& text, std::string_view prefix) noexcept {
    const bool same = text.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), text.begin(),
                                                                 [](char a, char b) { return Lower(a) == Lower(b); });
    if (same) text.remove_prefix(prefix.size());
    return same;
}

/// Unsigned metres, or kilometres "+" metres.
std::optional<double> ParseMagnitude(std::string_view text, bool& stakeForm) noexcept {
    if (text.empty() || !IsDigit(text.front())) return std::nullopt;
    const auto plus = text.find('+');
    stakeForm = plus != std::string_view::npos && text.find_first_not_of("0123456789") == plus;
    if (!stakeForm) return ParseReal(text);
    const auto kilometres = ParseReal(text.substr(0, plus));
    const auto metresText = text.substr(plus + 1);
    if (metresText.find_first_not_of("0123456789.") != std::string_view::npos) return std::nullopt;
    const auto metres = ParseReal(metresText);
    if (!kilometres || !metres) return std::nullopt;
    return *kilometres * metresPerKilometre + *metres;
}

}  // namespace

std::string StakePrefix(RoadDesign* road) {
    const char* prefix = GetMakeStakePerfix(road);
    return prefix == nullptr ? "" : prefix;
}

std::optional<WrittenMileage> ParseMileage(std::string_view text, std::string_view prefix) {
    text = Trim(text);
    const bool negative = TakePrefix(text, "-") || TakePrefix(text, typographicMinus);
    const bool plus = !negative && TakePrefix(text, "+");
    TakePrefixAnyCase(text, prefix);
    bool stakeForm = false;
    const auto magnitude = ParseMagnitude(text, stakeForm);
    if (!magnitude) return std::nullopt;
    return WrittenMileage{negative ? -*magnitude : *magnitude, plus && stakeForm};
}

Stake ResolveMileage(std::string_view text, std::string_view prefix, std::optional<int> occurrence,
                     std::string_view name) {
    const auto written = ParseMileage(text, prefix);
    if (!written) {
        throw Problem(ExitCode::Usage, std::string(name) + ": '" + std::string(text) +
                                           "' is no mileage of this road: write metres or a stake text such as " +
                                           FormatMileage(prefix, {12345.678, 0}));
    }
    if (occurrence && *occurrence < 0) {
        throw Problem(ExitCode::Usage,
                      std::string(name) + ": an occurrence is 0 or more, not " + std::to_string(*occurrence));
    }
    if (occurrence && *occurrence == 0 && written->later) {
        throw Problem(ExitCode::Usage, std::string(name) + ": '" + std::string(text) +
                                           "' names a later occurrence, but its occurrence option says 0");
    }
    return {written->mileage, occurrence.value_or(written->later ? 1 : 0)};
}

std::string FormatMileage(std::string_view prefix, const Stake& stake, int decimals) {
    const double unit = std::pow(10.0, -decimals);
    const double rounded = std::round(std::fabs(stake.mileage) / unit) * unit;
    const double kilometres = std::floor((rounded + unit / 2) / metresPerKilometre);
    const std::string metres = FormatReal(std::fabs(rounded - kilometres * metresPerKilometre), decimals);
    const std::size_t digits = decimals > 0 ? 4 + static_cast<std::size_t>(decimals) : 3;
    std::string text = stake.occurrence > 0 ? "+" : (stake.mileage < 0 && rounded > 0 ? "-" : "");
    text += prefix;
    text += FormatReal(kilometres, 0) + "+";
    text.append(digits - std::min(digits, metres.size()), '0');
    return text + metres;
}

bool IsNegativeStakeText(std::string_view argument) noexcept {
    if (!TakePrefix(argument, "-") || argument.starts_with('-')) return false;
    const auto* const digits = std::find_if(argument.begin(), argument.end(), IsDigit);
    bool stakeForm = false;
    argument.remove_prefix(static_cast<std::size_t>(digits - argument.begin()));
    return ParseMagnitude(argument, stakeForm).has_value() && stakeForm;
}

}  // namespace kesto::host
