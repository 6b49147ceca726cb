/// Mileages as they stand on stakes and on the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "kesto_road/kesto_road.h"

namespace kesto::host {

/// A stake mileage with its occurrence: one place on the road.
struct Stake {
    double mileage = 0;           ///< m
    std::int32_t occurrence = 0;  ///< which of the equal stake mileages, 0-based
};

/// A mileage as somebody wrote it.
struct WrittenMileage {
    double mileage = 0;  ///< m
    bool later = false;  ///< a "+" stands before the stake text: a later occurrence than the first
};

/// The road's stake prefix.
std::string StakePrefix(RoadDesign* road);

/// Reads a mileage: a plain number of metres, or a stake text. The prefix may be missing, its case does not matter:
/// K12+345.678, 12+345.678 and 12345.678 are the same. "-K0+012.500" is negative (the typographic minus is taken too),
/// "+K28+000.000" a later occurrence, as in stake names.
/// @param text   what was written
/// @param prefix the road's stake prefix; another one is refused, since it belongs to another road
/// @return nothing when the text is no mileage
std::optional<WrittenMileage> ParseMileage(std::string_view text, std::string_view prefix);

/// A mileage given as text, with the occurrence option that belongs to it.
/// @param name what to call it in a message, such as "--from"
/// @throws Problem when the text is no mileage, the occurrence is negative or contradicts the text
Stake ResolveMileage(std::string_view text, std::string_view prefix, std::optional<int> occurrence,
                     std::string_view name);

/// Stake text, "K12+345.678": "-" in front of a negative mileage, "+" in front of a later occurrence. As in stake names
/// a text with "+" has no "-". Unlike in stake names the metres are rounded before they are padded.
/// @param decimals of the metres
std::string FormatMileage(std::string_view prefix, const Stake& stake, int decimals = 3);

/// True for an argument such as "-K0+012.500", which is a mileage although it looks like an option.
bool IsNegativeStakeText(std::string_view argument) noexcept;

}  // namespace kesto::host
