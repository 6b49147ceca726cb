/// The road's last failure as a sentence with its numbers.
#pragma once

#include <cstdint>
#include <string>

#include "kesto_road/kesto_road.h"

namespace kesto::host {

/// The road's last failure; status KESTO_SUCCESS when there is none.
Failure LastFailure(RoadDesign* road);

/// A sentence for a status, with the numbers of the failure where it is the same status.
/// @param road gives the stake prefix
std::string DescribeFailure(RoadDesign* road, std::int32_t status, const Failure& failure);

/// The road's last failure as a sentence with its numbers.
std::string DescribeLastFailure(RoadDesign* road);

}  // namespace kesto::host
