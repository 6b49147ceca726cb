// The sections of the profile in the project file: its curves by radius or by their ends.
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "alignment/chainage.hpp"
#include "io/listed_records.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

namespace {

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

template <CurveMode mode>
bool HasCurvesInMode(RoadDesign& road) noexcept {
    return HasRecords<ProfilePoint>(road) && road.settings.verticalCurveMode == static_cast<std::int32_t>(mode);
}

template <class Line, CurveMode mode>
void ReadProfile(Reading& reading) {
    reading.KeepChain();
    reading.road.settings.verticalCurveMode = static_cast<std::int32_t>(mode);
    const LineShape shape = ShapeOf<Line>();
    std::vector<Reading::PlacedLine>& placed = reading.LinesOf(KESTO_LIST_VERTICAL_CURVES);
    std::vector<VerticalCurve> points;
    std::vector<std::int32_t> lineNumbers;
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        VerticalCurve point = Line::New();
        if (reading.lines.Parse<Line>(shape, *line, point)) {
            points.push_back(point);
            lineNumbers.push_back(reading.lines.LineNumber());
        } else {
            reading.lines.Skip(KESTO_LIST_VERTICAL_CURVES);
        }
    }
    const std::vector<TriedPoint> tried = InsertEachVerticalCurve(reading.road, points);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (tried[i].inserted) placed.push_back({tried[i].place, lineNumbers[i]});
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (tried[i].inserted) continue;
        // A file holds no number that is not finite, so nothing but a point at the same place can be the reason.
        reading.Refuse({KESTO_LIST_VERTICAL_CURVES, 0}, lineNumbers[i],
                       FailValue(KESTO_DUPLICATE_MILEAGE, points[i].mileage), tried[i].place);
    }
}

// clang-format off
constexpr std::array sections{
    Section{"VerticalCurve", HasCurvesInMode<CurveMode::Radius>, WriteRecords<RadiusCurveLine>, ReadProfile<RadiusCurveLine, CurveMode::Radius>, DescriptionOf<RadiusCurveLine>, oneLine, SectionForm::Profile},
    Section{"VerticalCurve_SECONDPARA", HasCurvesInMode<CurveMode::GivenEnds>, WriteRecords<GivenEndsCurveLine>, ReadProfile<GivenEndsCurveLine, CurveMode::GivenEnds>, DescriptionOf<GivenEndsCurveLine>, oneLine, SectionForm::Profile}};
// clang-format on

}  // namespace

std::span<const Section> ProfileSections() noexcept { return sections; }

}  // namespace kesto
