#include "road/mileage_text.hpp"

#include <cmath>
#include <cstring>

#include "road/road_file.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

constexpr std::size_t longestNumber = 352;  // bytes: the largest number in fixed notation
constexpr int stakeDecimals = 3;            // of the metres in a stake text

}  // namespace

Stake ResolveMileage(RoadDesign* road, std::string_view text, std::optional<int> occurrence, std::string_view name) {
    Stake stake;
    if (!ParseStake(road, std::string(text).c_str(), &stake.mileage, &stake.occurrence)) {
        throw Problem(ExitCode::Usage, std::string(name) + ": '" + std::string(text) +
                                           "' is no mileage of this road: write metres or a stake text such as " +
                                           FormatMileage(road, {12345.678, 0}));
    }
    if (occurrence && *occurrence < 0) {
        throw Problem(ExitCode::Usage,
                      std::string(name) + ": an occurrence is 0 or more, not " + std::to_string(*occurrence));
    }
    if (occurrence && *occurrence == 0 && stake.occurrence > 0) {
        throw Problem(ExitCode::Usage, std::string(name) + ": '" + std::string(text) +
                                           "' names a later occurrence, but its occurrence option says 0");
    }
    return {stake.mileage, occurrence.value_or(stake.occurrence)};
}

std::string FormatMileage(RoadDesign* road, const Stake& stake, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double rounded = std::round(stake.mileage * scale) / scale;
    const double mileage = std::isfinite(rounded) ? rounded : stake.mileage;  // too large to have decimals
    std::string text(std::strlen(GetMakeStakePerfix(road)) + longestNumber, '\0');
    if (!FormatStake(road, mileage, stake.occurrence, text.data(), static_cast<std::int32_t>(text.size()))) return "?";
    const int dropped = stakeDecimals - decimals + (decimals == 0 ? 1 : 0);  // the point with the last one
    text.resize(std::strlen(text.c_str()) - static_cast<std::size_t>(dropped));
    return text;
}

bool IsNegativeStakeText(std::string_view argument) {
    if (!argument.starts_with('-') || argument.starts_with("--")) return false;
    const auto digits = argument.find_first_of("0123456789");
    if (digits == std::string_view::npos) return false;
    // A "+" in front says more of kilometres "+" metres, and nothing of a plain number.
    const RoadHandle any = NewRoad();
    Stake stake;
    const std::string later = std::string(1, '+').append(argument.substr(digits));
    return ParseStake(any.get(), later.c_str(), &stake.mileage, &stake.occurrence) && stake.occurrence > 0;
}

}  // namespace kesto::host
