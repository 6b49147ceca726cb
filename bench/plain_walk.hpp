/// The library's own plain search beside its index: what the index is measured against. In a small shared library of
/// its own, as the rooms and the C++ wrapper do not meet in one program.
#pragma once

#include <cstddef>

#include "kesto_road/kesto_road.h"

#if defined(_WIN32)
#define BENCH_WALK __declspec(dllexport)
#else
#define BENCH_WALK __attribute__((visibility("default")))
#endif

namespace bench {

/// Walks all elements for the place nearest to a point.
/// @return its stake mileage (m)
BENCH_WALK double WalkToMileage(const RoadDesign* road, double x, double y);

/// Size of the index that the road holds now (bytes).
BENCH_WALK std::size_t IndexBytes(const RoadDesign* road);

}  // namespace bench
