/// Mileages as they are written on stakes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kesto {

/// The stake text of a mileage's magnitude: prefix, kilometres, "+", and the metres padded to three digits before the
/// point and three after it, as in "K12+345.678". The padding is chosen before the metres are rounded.
/// @param prefix  text put in front as it stands
/// @param mileage m; the sign is dropped
std::string StakeText(std::string_view prefix, double mileage);

/// The text of a place as the stake list writes it: "+" in front of a later occurrence, which wins over the "-" of a
/// negative mileage.
/// @param mileage stake mileage (m)
std::string StakeName(std::string_view prefix, double mileage, std::int32_t occurrence);

/// A mileage as somebody wrote it.
struct WrittenStake {
    double mileage = 0;           // m
    std::int32_t occurrence = 0;  // 1 for a stake text behind a "+": a later one than the first
};

/// Reads a mileage: a stake text, with or without the prefix, or a plain number of metres. The prefix's case does not
/// matter, and the typographic minus is a minus.
/// @param prefix the road's: another one belongs to another road
/// @return nothing for a text that is no mileage
std::optional<WrittenStake> ReadStake(std::string_view text, std::string_view prefix) noexcept;

}  // namespace kesto
