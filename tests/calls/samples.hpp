/// Arguments with which every call succeeds, and the road on which it does.
#pragma once

#include <string>
#include <vector>

#include "calls/call.hpp"
#include "support/owned_road.hpp"

namespace kesto::test {

/// A designed road with some of everything.
Road SampleRoad();

/// Arguments with which the call succeeds on that road. Outputs hold marks.
std::vector<Argument> SampleArguments(const Call& call);

/// Number `row` of the sample records or numbers that stand for a field, of a record or behind a pointer.
double SampleOf(const std::string& owner, const std::string& name, std::size_t row);

/// A path in the folder of the samples, which the process removes at its end.
std::string SamplePath(const std::string& name);

/// The records and numbers of an argument's memory, so many rows, each as a sample has it.
void FillWithSamples(const std::string& function, const Parameter& parameter, std::size_t rows, Argument& argument);

/// A road's reading functions asked for all that is stored, nothing that would have to be built: equal exactly where
/// nothing has changed.
std::string Stored(RoadDesign* road);

}  // namespace kesto::test
