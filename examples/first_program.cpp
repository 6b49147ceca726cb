// A first program: a road of five elements with a broken chain and a profile, and the station of a measured point.
#include <cmath>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>

#include "kesto_road/kesto_road.hpp"

using kesto::Turn;

int main() try {
    // x is north and y is east (m), azimuths are degrees clockwise from north, radius 0 is straight.
    kesto::Road road;
    road.Start(4203100, 512400, 30);
    road.Straight(120);
    road.Spiral(0, 300, 60, Turn::Right).Arc(300, 150, Turn::Right).Spiral(300, 0, 60, Turn::Right);
    road.Straight(110);
    road.BrokenChain(300, 200);  // at K0+300 the stakes jump back to K0+200
    road.GradePoint(0, 100).GradePoint(250, 105, 6000).GradePoint(400, 100);
    if (!road.Design()) {
        std::cerr << "the road cannot be built: " << kesto::Describe(road.LastFailure()->status) << '\n';
        return 1;
    }

    const auto place = road.Locate(4203362.959, 512624.399);  // a measured point
    const auto height = place ? road.Height(place->mileage, place->occurrence) : std::nullopt;
    if (!height) {
        std::cerr << "no answer: " << kesto::Describe(road.LastFailure()->status) << '\n';
        return 1;
    }
    std::printf("station     %s\n", road.StakeText(place->mileage, place->occurrence).c_str());
    std::printf("occurrence  %d\n", static_cast<int>(place->occurrence));
    std::printf("offset      %.3f m %s\n", std::fabs(place->offset), place->offset < 0 ? "left" : "right");
    std::printf("height      %.3f m\n", *height);
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
