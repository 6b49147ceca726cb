/// A road that ends itself.
#pragma once

#include <memory>

#include "kesto_road/kesto_road.h"

namespace kesto::test {

class Road {
public:
    Road() : Road(StartRoadDesign()) {}
    explicit Road(RoadDesign* made) : handle(made, EndRoadDesign) {}
    operator RoadDesign*() const { return handle.get(); }  // NOLINT(google-explicit-constructor)

private:
    std::unique_ptr<RoadDesign, decltype(&EndRoadDesign)> handle;
};

}  // namespace kesto::test
