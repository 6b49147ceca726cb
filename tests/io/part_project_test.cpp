// A part of a road is that road: the same points, heights and cross sections at the same stake mileages, as it is made
// and again after it has been through a file.

#include "io/part_project.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "alignment/inverse.hpp"
#include "alignment/position.hpp"
#include "design/design_run.hpp"
#include "io/project_file.hpp"
#include "io/project_text.hpp"
#include "io/roads.hpp"
#include "profile/height.hpp"
#include "profile/vertical_curves.hpp"
#include "section/mileage_index.hpp"
#include "section/section_at.hpp"

namespace kesto {
namespace {

using test::GradePoint;
using test::Piece;
using test::Point;
using test::Polygon;

const CodePage utf8("UTF-8");
constexpr double nearBreak = 1e-5;  // m: closer to a junction, either side of a break may answer

constexpr double samePlace = 1e-7;   // m

/// How far a part may be from its road.
struct Allowed {
    double perElement;  // m: of a position, for each element up to the point
    double perMetre;    // of a position, for each metre up to the point
    double height;      // m
    double section;     // per cent or m: where a curved transition is cut
};
constexpr Allowed asMade{1e-9, 0, 1e-9, 1e-6};
constexpr Allowed asRead{1e-8, 1e-10, 1e-8, 1e-6};

/// The part as a reader has it, designed.
std::unique_ptr<RoadDesign> ReadBack(RoadDesign& part) {
    auto read = std::make_unique<RoadDesign>();
    const auto rounded = RoundForFile(part);
    const auto text = rounded ? FormatProject(**rounded, utf8) : Result<std::string>(rounded.failure());
    EXPECT_TRUE(text && ParseProject(*text, *read, utf8) && RunDesign(*read));
    return read;
}

std::vector<double> Junctions(const RoadDesign& road) {
    std::vector<double> places{road.settings.startMileage};
    for (const Element& element : road.elements.Records().subspan(1)) {
        places.push_back(places.back() + std::fabs(element.length));
    }
    return places;
}

void ExpectSamePlace(RoadDesign& whole, StakeMileage at, RoadDesign& part, StakeMileage in, double metres,
                     std::size_t element, const Allowed& allowed) {
    const double near = allowed.perElement * static_cast<double>(element + 1) + allowed.perMetre * metres;
    EXPECT_NEAR(in.mileage, at.mileage, samePlace);
    in.mileage = at.mileage;  // the part is asked for the stake mileage of the whole road
    const auto back = FindContinuous(part, in);
    ASSERT_TRUE(back);
    EXPECT_NEAR(*back, part.settings.startMileage + metres, samePlace);
    const auto one = CentrePoint(whole, at), other = CentrePoint(part, in);
    ASSERT_TRUE(one && other);
    EXPECT_NEAR(std::hypot(one->x - other->x, one->y - other->y), 0, near);
    EXPECT_NEAR(std::remainder(one->azimuth - other->azimuth, 360), 0, 1e-7);
    bool known = false;
    const auto height = CentreHeight(whole, at, known), inPart = CentreHeight(part, in, known);
    ASSERT_EQ(static_cast<bool>(height), static_cast<bool>(inPart));
    EXPECT_NEAR(height ? *height : 0, inPart ? *inPart : 0, allowed.height);
    if (part.stakes.Count() == 0) return;
    for (const std::int32_t side : {0, 1}) {
        const auto plates = GetSectionAtMileage(whole, at, side), own = GetSectionAtMileage(part, in, side);
        ASSERT_EQ(static_cast<bool>(plates), static_cast<bool>(own));
        for (std::size_t i = 0; plates && i < plates->size(); ++i) {
            EXPECT_NEAR((*plates)[i].width, (*own)[i].width, allowed.section) << side;
            EXPECT_NEAR((*plates)[i].crossSlope, (*own)[i].crossSlope, allowed.section) << side;
        }
    }
}

/// Compares a part with its road between two continuous mileages: at places all along it, beside every junction and
/// beside both ends.
void ExpectSameRoad(RoadDesign& whole, RoadDesign& part, double start, double end, const Allowed& allowed) {
    EXPECT_NEAR(part.totalLength, end - start, 1e-7);
    const std::vector<double> all = Junctions(whole), own = Junctions(part);
    std::vector<double> places{start + 2 * nearBreak, end - 2 * nearBreak};
    for (int i = 0; i < 60; ++i) places.push_back(start + (end - start) * (i + 0.37) / 60);
    for (const double junction : all) {
        for (const double beside : {-1e-3, 2e-3}) places.push_back(junction + beside);
    }
    for (const double place : places) {
        if (place < start || place > end) continue;
        if (std::ranges::any_of(all, [&](double it) { return std::fabs(it - place) < nearBreak; })) continue;
        const double metres = place - start;
        const double inPart = part.settings.startMileage + metres;
        const auto element = static_cast<std::size_t>(std::ranges::upper_bound(own, inPart) - own.begin());
        const StakeMileage at = StakeMileageAt(whole, place);
        const auto back = FindContinuous(whole, at);
        if (!back || std::fabs(*back - place) > 1e-7) continue;  // the whole road cannot be asked there either
        SCOPED_TRACE(testing::Message() << "continuous " << place << ", stake " << at.mileage << " " << at.occurrence);
        ExpectSamePlace(whole, at, part, StakeMileageAt(part, inPart), metres, element, allowed);
        if (testing::Test::HasFailure()) return;
    }
}

/// Cuts between two continuous mileages and compares what comes out, before and behind a file.
void ExpectPart(RoadDesign& whole, double start, double end) {
    const StakeMileage from = StakeMileageAt(whole, start), to = StakeMileageAt(whole, end);
    SCOPED_TRACE(testing::Message() << from.mileage << " " << from.occurrence << " to " << to.mileage << " "
                                    << to.occurrence);
    const auto part = MakePart(whole, from, to);
    ASSERT_TRUE(part);
    ExpectSameRoad(whole, **part, start, end, asMade);
    if (testing::Test::HasFailure()) return;
    const auto read = ReadBack(**part);
    ExpectSameRoad(whole, *read, start, end, asRead);
}

// ------------------------------------------------------------------------------------------------------ random roads

class RandomRoad {
public:
    explicit RandomRoad(unsigned seed) : random(seed) {
        road.settings.roadDesignMode = 1;
        road.settings.startMileage = Uniform(-500, 30000);
        SetStart(road, Uniform(1e5, 4e6), Uniform(1e5, 5e5), Uniform(0, 360));
        AddElements();
        EXPECT_TRUE(RunDesign(road));
        AddProfile();
        for (auto& plates : road.sections.plates) plates.assign(2, SectionPlate{});
        for (const std::int32_t table : {0, 1, 2, 3}) AddChanges({table / 2, table % 2});
        DeriveProfile(road);
    }

    double Uniform(double from, double to) { return std::uniform_real_distribution(from, to)(random); }
    bool Chance(double probability) { return Uniform(0, 1) < probability; }
    double Place() { return road.settings.startMileage + Uniform(0, road.totalLength); }

    /// A place that stake mileage and occurrence lead back to.
    double StakedPlace() {
        for (;;) {
            const double place = Place();
            const auto back = FindContinuous(road, StakeMileageAt(road, place));
            if (back && std::fabs(*back - place) < 1e-8) return place;
        }
    }

    RoadDesign road;

private:
    void AddElements() {
        Position next{road.elements[0].startX, road.elements[0].startY, road.elements[0].startAzimuth};
        double mileage = road.settings.startMileage;
        const int count = 2 + static_cast<int>(Uniform(0, 10));
        for (int i = 0; i < count; ++i) {
            Element element = Piece(1 + static_cast<int>(Uniform(0, 3)), Uniform(20, 250));
            element.turnDirection = Chance(0.5);
            element.startRadius = element.type == 1 ? 0 : std::exp(Uniform(4.5, 8));
            element.endRadius = element.startRadius;
            if (element.type == 3) {
                element.endRadius = element.startRadius * Uniform(1.1, 4);
                if (Chance(0.6)) element.endRadius = 0;
                if (Chance(0.5)) std::swap(element.startRadius, element.endRadius);
            }
            if (i > 0 && Chance(0.1)) element.length *= -0.3;
            element.startX = next.x;
            element.startY = next.y;
            element.startAzimuth = Chance(0.2) ? Uniform(0, 360) : next.azimuth;
            road.elements.Insert(element);
            next = *Evaluate(element, element.length);
            if (element.length > 0 && Chance(0.4)) {
                const double back = mileage + Uniform(0.1, 1) * element.length;
                static_cast<void>(InsertBrokenChain(road, {back, back + Uniform(-60, 60)}));
            }
            mileage += element.length;
        }
    }

    void AddProfile() {
        road.settings.verticalCurveMode = Chance(0.5);
        double place = Place() - 100;
        double tangent = 0;
        for (int i = static_cast<int>(Uniform(0, 8)); i > 0; --i) {
            VerticalCurve curve = GradePoint(place, Uniform(90, 110));
            tangent = Uniform(5, 40);
            const auto put = [&](double at, double& mileage, std::int32_t& occurrence) {
                const StakeMileage stake = StakeMileageAt(road, at);
                const auto back = FindContinuous(road, stake);
                const bool staked = back && std::fabs(*back - at) < 1e-9;
                mileage = staked ? stake.mileage : at;
                occurrence = staked ? stake.occurrence : noOccurrence;
            };
            put(place, curve.mileage, curve.occurrence);
            put(place - tangent, curve.startMileage, curve.startOccurrence);
            put(place + Uniform(5, 40), curve.endMileage, curve.endOccurrence);
            if (Chance(0.1)) curve.startOccurrence = noOccurrence;
            curve.radius = Chance(0.2) ? 0 : Uniform(50, 400);
            static_cast<void>(InsertVerticalCurve(road, curve));
            place += Uniform(82, 200);
        }
    }

    void AddChanges(ChangeTable which) {
        for (int i = static_cast<int>(Uniform(0, 5)); i > 0; --i) {
            const std::int32_t types[] = {0, 1, 2, 7};
            const ChangeSection section{{Uniform(-8, 8), Uniform(2, 5)}, {1, 2}};
            static_cast<void>(InsertChangeAt(road, which, Place(), section, types[static_cast<int>(Uniform(0, 4))]));
        }
    }

    std::mt19937 random;
};

TEST(PartProject, OfARandomRoadIsThatRoad) {
    for (unsigned seed = 1; seed <= 400 && !HasFailure(); ++seed) {
        RandomRoad it(seed);
        double start = it.StakedPlace(), end = it.StakedPlace();
        if (start > end) std::swap(start, end);
        if (end - start < 1e-3) continue;
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectPart(it.road, start, end);
    }
}

}  // namespace
}  // namespace kesto
