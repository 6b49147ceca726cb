/// How each record stands in a line of the project file, and how it gets into the road.
#pragma once

#include <array>
#include <string_view>

#include "alignment/broken_chains.hpp"
#include "alignment/chainage.hpp"
#include "core/record_lists.hpp"
#include "core/road_design.hpp"
#include "io/line_format.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

/// What the records of one list share. New() is a record that nothing has been read into yet; Insert() adds a record as
/// the list's exported function does, and Order() is what the list is sorted by.
template <class Kind, ListMember<Kind> listMember>
struct ListedRecord {
    using Record = Kind;
    static constexpr ListMember<Kind> member = listMember;
    static Record New() noexcept { return {}; }
    static double Order(const Record&) noexcept { return 0; }  // as they were read
    static Outcome Insert(RoadDesign& road, const Record& record) {
        (road.*member).Insert(Stored(record));
        return {};
    }
};

struct IntersectionLine : ListedRecord<Intersection, &RoadDesign::intersections> {
    static constexpr auto fields = std::to_array<std::string_view>(
        {"name, NULL for none", "x (m): northing", "y (m): easting", "radius (m) of the arc, 0 for no curve",
         "length of the entry spiral (m), 0 for none", "length of the exit spiral (m), 0 for none",
         "radius at the outer end of the entry spiral (m), 0 for infinite",
         "radius at the outer end of the exit spiral (m), 0 for infinite"});
    static void Fields(auto& line, auto& point) {
        line.NameOrNull(point.name).Real(point.x).Real(point.y).Real(point.radius);
        line.Real(point.spiralIn).Real(point.spiralOut).Real(point.radiusIn).Real(point.radiusOut);
    }
};

struct CoordinateLine : ListedRecord<Coordinate, &RoadDesign::coordinates> {
    static constexpr auto fields = std::to_array<std::string_view>(
        {"type of the element that starts here: 1 straight, 2 arc, 3 spiral", "turn: 0 left, any other right",
         "x (m): northing", "y (m): easting", "radius at this point (m), 0 for infinite", "name"});
    static void Fields(auto& line, auto& point) {
        line.Integer(point.type, smallColumn).Integer(point.turnDirection, smallColumn);
        line.Real(point.x).Real(point.y).Real(point.radius).Name(point.name);
    }
};

struct ElementLine : ListedRecord<Element, &RoadDesign::elements> {
    static constexpr auto fields = std::to_array<std::string_view>(
        {"x (m): northing of its start", "y (m): easting of its start", "azimuth at its start (degrees)", "length (m)",
         "turn: 0 left, any other right", "the azimuth again, not read",
         "type: 0 start record, 1 straight, 2 arc, 3 spiral",
         "radius of an arc, or at a spiral's start (m), 0 for infinite", "radius at a spiral's end (m), 0 for infinite",
         "flag, carried"});
    static void Fields(auto& line, auto& element) {
        line.Real(element.startX).Real(element.startY).Real(element.startAzimuth).Real(element.length);
        line.Integer(element.turnDirection, wideColumn).Repeated(element.startAzimuth);
        line.Integer(element.type, smallColumn).Real(element.startRadius).Real(element.endRadius);
        line.Integer(element.flag, smallColumn);
    }
    static Outcome Insert(RoadDesign& road, Record element) {
        if (element.type == 0) element.secondAzimuth = element.startAzimuth;  // a start record repeats it
        return ListedRecord::Insert(road, element);
    }
};

struct BrokenChainLine : ListedRecord<BrokenChain, &RoadDesign::brokenChains> {
    static constexpr auto fields =
        std::to_array<std::string_view>({"stake mileage before the break (m)", "stake mileage behind it (m)"});
    static void Fields(auto& line, auto& chain) { line.Real(chain.backMileage).Real(chain.aheadMileage); }
    static double Order(const Record& chain) noexcept { return chain.backMileage; }
    static Outcome Insert(RoadDesign& road, const Record& chain) { return InsertBrokenChain(road, chain); }
};

using ProfilePoint = ListedRecord<VerticalCurve, &RoadDesign::verticalCurves>;

/// A grade-change point whose curve is given by its radius.
struct RadiusCurveLine : ProfilePoint {
    static Record New() noexcept {
        Record curve{};
        curve.startOccurrence = curve.endOccurrence = noOccurrence;  // the ends are not known before the derivation
        return curve;
    }
    static constexpr auto fields =
        std::to_array<std::string_view>({"stake mileage (m)", "elevation (m)", "radius of the curve (m), 0 for none",
                                         "occurrence, -1 where the mileage is a continuous one"});
    static void Fields(auto& line, auto& curve) {
        line.Real(curve.mileage).Real(curve.elevation).Real(curve.radius).Integer(curve.occurrence, smallColumn);
    }
};

/// A grade-change point whose curve is given by its ends.
struct GivenEndsCurveLine : ProfilePoint {
    static constexpr auto fields = std::to_array<std::string_view>(
        {"stake mileage (m)", "elevation (m)", "occurrence, -1 where the mileage is a continuous one",
         "stake mileage of the curve's start (m)", "its occurrence, -1 for none",
         "stake mileage of the curve's end (m)", "its occurrence, -1 for none"});
    static void Fields(auto& line, auto& curve) {
        line.Real(curve.mileage).Real(curve.elevation).Integer(curve.occurrence, smallColumn);
        line.Real(curve.startMileage).Integer(curve.startOccurrence, wideColumn);
        line.Real(curve.endMileage).Integer(curve.endOccurrence, wideColumn);
    }
};

}  // namespace kesto
