// The sections of the alignment in the project file: one of its forms, and the broken chains.
#include <array>

#include "alignment/broken_chains.hpp"
#include "alignment/element_generation.hpp"
#include "io/listed_records.hpp"

namespace kesto {

namespace {

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

bool HasPoints(RoadDesign& road) noexcept {
    return !HasRecords<IntersectionLine>(road) && HasRecords<CoordinateLine>(road);
}

bool HasElements(RoadDesign& road) noexcept {
    return !HasRecords<IntersectionLine>(road) && !HasPoints(road) && HasRecords<ElementLine>(road);
}

template <DesignMode mode>
bool HasPointsInMode(RoadDesign& road) noexcept {
    return HasPoints(road) && road.settings.roadDesignMode == static_cast<std::int32_t>(mode);
}

/// Points of a road whose design mode makes nothing of them.
bool HasIdlePoints(RoadDesign& road) noexcept {
    return HasPoints(road) && !HasPointsInMode<DesignMode::Coordinates>(road) &&
           !HasPointsInMode<DesignMode::BrokenLine>(road);
}

void ReadNothing(Reading&) noexcept {}

void ReadBrokenChains(Reading& reading) {
    reading.ReleaseChain();
    ReadRecords<BrokenChainLine>(reading);
}

template <class Line, DesignMode mode>
void ReadAlignment(Reading& reading) {
    reading.ReleaseChain();
    reading.road.settings.roadDesignMode = static_cast<std::int32_t>(mode);
    ReadRecords<Line>(reading);
}

// clang-format off
constexpr std::array sections{
    Section{"Intersection", HasRecords<IntersectionLine>, WriteRecords<IntersectionLine>, ReadAlignment<IntersectionLine, DesignMode::Intersections>, DescriptionOf<IntersectionLine>, oneLine, SectionForm::Alignment},
    Section{"Coordinate", HasPointsInMode<DesignMode::Coordinates>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::Coordinates>, DescriptionOf<CoordinateLine>, oneLine, SectionForm::Alignment},
    Section{"BrokenLine", HasPointsInMode<DesignMode::BrokenLine>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::BrokenLine>, DescriptionOf<CoordinateLine>, oneLine, SectionForm::Alignment},
    Section{"", HasIdlePoints, WriteRecords<CoordinateLine>, ReadNothing, DescriptionOf<CoordinateLine>},
    Section{"Element", HasElements, WriteRecords<ElementLine>, ReadAlignment<ElementLine, DesignMode::Elements>, DescriptionOf<ElementLine>, oneLine, SectionForm::Alignment},
    Section{"BrokenChain", HasRecords<BrokenChainLine>, WriteRecords<BrokenChainLine>, ReadBrokenChains, DescriptionOf<BrokenChainLine>}};
// clang-format on

}  // namespace

std::span<const Section> AlignmentSections() noexcept { return sections; }

}  // namespace kesto
