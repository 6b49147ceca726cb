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

/// A mileage given as text, with the occurrence option that belongs to it.
/// @param road gives the stake prefix
/// @param name what to call it in a message, such as "--from"
/// @throws Problem when the text is no mileage, the occurrence is negative or contradicts the text
Stake ResolveMileage(RoadDesign* road, std::string_view text, std::optional<int> occurrence, std::string_view name);

/// The text of a place as FormatStake() writes it, of a mileage that is rounded first: never with 1000 metres, nor with
/// a "-" in front of nothing. "?" for a mileage that is not finite.
/// @param decimals of the metres, at most 3
std::string FormatMileage(RoadDesign* road, const Stake& stake, int decimals = 3);

/// True for an argument such as "-K0+012.500", which is a mileage although it looks like an option.
bool IsNegativeStakeText(std::string_view argument);

}  // namespace kesto::host
