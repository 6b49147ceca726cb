/// Mileages as they are written on stakes.
#pragma once

#include <string>
#include <string_view>

namespace kesto {

/// The stake text of a mileage's magnitude: prefix, kilometres, "+", and the metres padded to three digits before the
/// point and three after it, as in "K12+345.678". The padding is chosen before the metres are rounded.
/// @param prefix  text put in front as it stands
/// @param mileage m; the sign is dropped
std::string StakeText(std::string_view prefix, double mileage);

}  // namespace kesto
