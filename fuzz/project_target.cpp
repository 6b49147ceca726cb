// Any bytes as a project file: opened, asked, designed, saved and opened again.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "kesto_road/kesto_road.h"
#include "saved_road.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::unique_ptr<RoadDesign, decltype(&EndRoadDesign)> road(StartRoadDesign(), EndRoadDesign);
    kesto::fuzz::OpenText(road.get(), {reinterpret_cast<const char*>(data), size});
    kesto::fuzz::AskAround(road.get());
    kesto::fuzz::RequireFixedPoint(road.get());
    DesignRoad(road.get());
    kesto::fuzz::AskAround(road.get());
    kesto::fuzz::RequireFixedPoint(road.get());
    return 0;
}
