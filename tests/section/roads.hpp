/// Roads and plates as the section tests write them down.
#pragma once

#include <gtest/gtest.h>

#include "core/road_design.hpp"
#include "design/design_run.hpp"
#include "quadrature.hpp"

namespace kesto_test {

inline constexpr std::int32_t left = 0;
inline constexpr std::int32_t right = 1;
inline constexpr std::int32_t heightening = 0;
inline constexpr std::int32_t widening = 1;

inline SectionPlate MakePlate(double width, double crossSlope, double step = 0) {
    SectionPlate plate{};
    plate.width = width;
    plate.crossSlope = crossSlope;
    plate.step = step;
    return plate;
}

/// A designed road in the element method that begins at a mileage.
inline void MakeDesigned(RoadDesign& road, double startMileage, std::initializer_list<Element> elements) {
    road.settings.roadDesignMode = 1;
    road.settings.startMileage = startMileage;
    kesto::SetStart(road, 1000, 2000, 30);
    for (const Element& element : elements) road.elements.Insert(element);
    ASSERT_TRUE(kesto::RunDesign(road));
}

inline void MakeStraightRoad(RoadDesign& road, double startMileage = 0, double length = 1000) {
    MakeDesigned(road, startMileage, {MakeElement(1, false, 0, 0, length, 0, 0, 30)});
}

}  // namespace kesto_test
