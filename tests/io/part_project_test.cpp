// A part of a road is that road: the same points, heights and cross sections at the same stake mileages, as it is made
// and again after it has been through a file.

#include "part/part_project.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "alignment/inverse.hpp"
#include "alignment/position.hpp"
#include "design/design_run.hpp"
#include "io/project_file.hpp"
#include "io/project_text.hpp"
#include "profile/height.hpp"
#include "profile/vertical_curves.hpp"
#include "section/mileage_index.hpp"
#include "section/road_side.hpp"
#include "section/section_at.hpp"
#include "support/code_pages.hpp"
#include "support/road_maker.hpp"
#include "support/temporary_folder.hpp"

namespace kesto {
namespace {

using test::GradePoint;
using test::Join;
using test::Piece;

const CodePage utf8(test::utf8Page);
constexpr double nearBreak = 1e-5;         // m: closer to a junction, either side of a break may answer
constexpr double samePlace = 1e-7;         // m
constexpr double besideTransition = 1e-6;  // per cent or m: where a curved transition is cut

/// How far a part may be from its road.
struct Allowed {
    double once;        // m: of a position
    double perElement;  // m: more for each element up to the point
    double perMetre;    // more for each metre up to the point
    double height;      // m
};
constexpr Allowed asMade{1e-9, 0, 0, 1e-9};
constexpr Allowed asRead{0, 1e-8, 1e-10, 1e-8};

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

/// Whether a stake mileage is the start or the end of a road.
bool IsEnd(RoadDesign& road, StakeMileage at) {
    const auto place = FindContinuous(road, at);
    const double metres = place ? *place - road.settings.startMileage : 0;
    return place && std::min(metres, road.totalLength - metres) < samePlace;
}

/// Compares the height beside the road, and where the road sees a point there. Where several places see it, the nearest
/// may lie outside the part.
void ExpectSameBeside(RoadDesign& whole, StakeMileage at, RoadDesign& part, StakeMileage in, double near, double up) {
    constexpr double offset = 1.5;          // m
    constexpr double footTolerance = 1e-6;  // m, of a foot on a spiral
    constexpr double besideEnds = 1e-3;     // m: nearer to an end the foot may be that end
    double height = 0, inPart = 0;
    ASSERT_EQ(static_cast<bool>(FindHeight(whole, at, offset, height)),
              static_cast<bool>(FindHeight(part, in, offset, inPart)));
    EXPECT_NEAR(height, inPart, up + offset * besideTransition);
    const double metres = *FindContinuous(part, in) - part.settings.startMileage;
    if (metres < besideEnds || part.totalLength - metres < besideEnds) return;
    const Position point = Moved(*CentrePoint(whole, at), {offset});
    std::optional<Located> seen, own;
    ASSERT_TRUE(Locate(whole, {point.x, point.y}, seen));
    if (std::fabs(seen->stake.mileage - at.mileage) > footTolerance || seen->stake.occurrence != at.occurrence) return;
    ASSERT_TRUE(Locate(part, {point.x, point.y}, own));
    // A part that turns back on itself may end nearer to the point than the foot that the whole road finds.
    if (std::fabs(own->offset) < std::fabs(seen->offset) - 1e-9 - near && IsEnd(part, own->stake)) return;
    EXPECT_NEAR(own->stake.mileage, at.mileage, footTolerance + near);
    EXPECT_NEAR(own->offset, seen->offset, 1e-9 + near);
}

void ExpectSamePlace(RoadDesign& whole, StakeMileage at, RoadDesign& part, StakeMileage in, double metres,
                     std::size_t element, const Allowed& allowed) {
    const double near =
        allowed.once + allowed.perElement * static_cast<double>(element + 1) + allowed.perMetre * metres;
    EXPECT_NEAR(in.mileage, at.mileage, samePlace);
    in.mileage = at.mileage;  // the part is asked for the stake mileage of the whole road
    const auto back = FindContinuous(part, in);
    ASSERT_TRUE(back);
    EXPECT_NEAR(*back, part.settings.startMileage + metres, samePlace);
    const auto one = CentrePoint(whole, at), other = CentrePoint(part, in);
    ASSERT_TRUE(one && other);
    const double digits = 4e-16 * std::hypot(one->x, one->y);  // m: what a double leaves of the coordinates
    EXPECT_NEAR(std::hypot(one->x - other->x, one->y - other->y), 0, near + digits);
    EXPECT_NEAR(std::remainder(one->azimuth - other->azimuth, 360), 0, 1e-7);
    const auto height = CentreHeight(whole, at), inPart = CentreHeight(part, in);
    ASSERT_EQ(static_cast<bool>(height), static_cast<bool>(inPart));
    EXPECT_NEAR(height ? *height : 0, inPart ? *inPart : 0, allowed.height);
    if (part.stakes.Count() == 0) return;
    ExpectSameBeside(whole, at, part, in, near + digits, allowed.height);
    for (const std::int32_t side : {0, 1}) {
        const auto plates = GetSectionAtMileage(whole, at, side), own = GetSectionAtMileage(part, in, side);
        ASSERT_EQ(static_cast<bool>(plates), static_cast<bool>(own));
        for (std::size_t i = 0; plates && i < plates->size(); ++i) {
            EXPECT_NEAR((*plates)[i].width, (*own)[i].width, besideTransition) << side;
            EXPECT_NEAR((*plates)[i].crossSlope, (*own)[i].crossSlope, besideTransition) << side;
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

Element Curved(std::int32_t type, double length, double startRadius, double endRadius) {
    Element element = Piece(type, length);
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    return element;
}

void Break(RoadDesign& road, double back, double ahead) { ASSERT_TRUE(InsertBrokenChain(road, {back, ahead})); }

/// A place of a road that stake mileage and occurrence lead back to.
double StakedPlace(RoadDesign& road, test::RoadMaker& maker) {
    for (;;) {
        const double place = road.settings.startMileage + maker.Between(0, road.totalLength);
        const auto back = FindContinuous(road, StakeMileageAt(road, place));
        if (back && std::fabs(*back - place) < 1e-8) return place;
    }
}

TEST(PartProject, OfARandomRoadIsThatRoad) {
    int parts = 0;
    for (unsigned seed = 1; seed <= 120 && !HasFailure(); ++seed) {
        test::RoadMaker maker(seed, seed % 3 != 0);
        const std::unique_ptr<RoadDesign> road = maker.Make();
        if (!road) continue;
        double start = StakedPlace(*road, maker), end = StakedPlace(*road, maker);
        if (start > end) std::swap(start, end);
        if (end - start < 1e-3) continue;
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectPart(*road, start, end);
        ++parts;
    }
    EXPECT_GT(parts, 100);
}

/// A road whose elements a test appends; starts at mileage 0.
void Begin(RoadDesign& road) {
    road.settings.roadDesignMode = 1;
    SetStart(road, 1000, 2000, 30);
}

/// A profile two of whose curves are given far beyond its ends, where it is level all the same.
void FillFarCurves(RoadDesign& road) {
    Begin(road);
    Join(road, Piece(1, 1000));
    road.settings.verticalCurveMode = 1;
    const double points[][4] = {{300, 5, 300, 300}, {400, 8, 380, 900}, {500, 6, 100, 520}, {600, 9, 600, 600}};
    for (const auto& [mileage, elevation, start, end] : points) {
        VerticalCurve curve = GradePoint(mileage, elevation);
        curve.startMileage = start;
        curve.endMileage = end;
        ASSERT_TRUE(InsertVerticalCurve(road, curve));
    }
}

void FillEgg(RoadDesign& road) {
    Begin(road);
    Join(road, Piece(1, 50));
    Join(road, Curved(3, 400, 500, 505));
}

struct SpecialRoad {
    const char* name;
    void (*fill)(RoadDesign& road);
    double start, end;  // continuous mileages (m)
};

const SpecialRoad specialRoads[] = {
    {"a break close behind an element's start acts behind the element, and the next one lies before that",
     [](RoadDesign& road) {
         Begin(road);
         Join(road, Piece(1, 100));
         Join(road, Piece(1, 100));
         Join(road, Piece(1, 200));
         Break(road, 100.000005, 50);
         Break(road, 180, 500);
     },
     20, 390},
    {"a spiral cut where it is all but straight, with a radius too large for its column",
     [](RoadDesign& road) {
         Begin(road);
         Join(road, Piece(1, 100));
         Join(road, Curved(3, 100, 0, 300));
         Join(road, Curved(2, 100, 300, 300));
         Join(road, Curved(3, 100, 300, 0));
         Join(road, Piece(1, 50));
     },
     100.000025, 399.99999},
    {"a break that splits a spiral a hair's breadth from its flat end",
     [](RoadDesign& road) {
         Begin(road);
         Join(road, Curved(3, 100, 0, 300));
         Join(road, Piece(1, 50));
         Break(road, 0.000015, 7);
     },
     0, 140},
    {"an end so close behind the start of a spiral that its radii are equal in a file", FillEgg, 0, 50.0000003},
    {"change sections before a start that has moved and behind an end",
     [](RoadDesign& road) {
         Begin(road);
         Join(road, Piece(1, 300));
         for (auto& plates : road.sections.plates) plates.assign(1, SectionPlate{});
         for (const double mileage : {-50.0, 200.0, 350.0}) {
             ASSERT_TRUE(InsertChangeAt(road, {1, 0}, mileage, {{4 + mileage / 70}, {1}}, 1));
         }
         ASSERT_TRUE(InsertChangeAt(road, {0, 1}, -50, {{3}, {1}}, 0));
     },
     0, 290},
    {"places within rounding of the junctions",
     [](RoadDesign& road) {
         Begin(road);
         Join(road, Piece(1, 100));
         Join(road, Curved(2, 100, 300, 300));
         Join(road, Piece(1, 100));
     },
     100 - 4e-8, 200 + 4e-8},
    {"a curve that reaches back before the profile", FillFarCurves, 50, 120},
};

TEST(PartProject, OfASpecialRoadIsThatRoad) {
    for (const SpecialRoad& it : specialRoads) {
        SCOPED_TRACE(it.name);
        RoadDesign road;
        it.fill(road);
        ASSERT_TRUE(RunDesign(road));
        ASSERT_LT(it.end, road.settings.startMileage + road.totalLength);
        ExpectPart(road, it.start, it.end);
    }
}

// A road that was never designed keeps its gaps: the part has the elements where they were entered.
TEST(PartProject, GapsOfAnUndesignedRoadStay) {
    RoadDesign road;
    Begin(road);
    Join(road, Piece(1, 100));
    Join(road, Curved(3, 100, 0, 300));
    road.elements.Edit()[2].startX += 0.5;
    ASSERT_TRUE(BuildChain(road));
    const auto part = MakePart(road, {60, 0}, {170, 0});
    ASSERT_TRUE(part);
    ExpectSameRoad(road, **part, 60, 170, asMade);
    EXPECT_EQ((*part)->elements[2].startX, road.elements[2].startX);
    EXPECT_NEAR((*part)->elements[2].endRadius, 300 * 100 / 70.0, 1e-9);  // curvature grows evenly
}

/// Straight of 1000 m from mileage 0 that goes back from 400 to 350, with a profile and cross sections.
void FillOverlapped(RoadDesign& road) {
    Begin(road);
    Join(road, Piece(1, 1000));
    Break(road, 400, 350);
    road.settings.makeStakeType = 1;
    road.settings.mileageInterval = 25;
    road.settings.stakePrefix = "DK";
    for (const double mileage : {100.0, 450.0, 800.0}) {
        VerticalCurve curve = GradePoint(mileage, mileage / 20 + mileage * mileage / 9e4);
        curve.radius = 2000;
        ASSERT_TRUE(InsertVerticalCurve(road, curve));
    }
    road.sections.plates[1].assign(1, SectionPlate{});
    ASSERT_TRUE(InsertChangeAt(road, {1, 0}, 300, {{2}, {5}}, 1));
    ASSERT_TRUE(InsertChangeAt(road, {1, 0}, 700, {{6}, {6}}, 2));
    for (const double mileage : {100.0, 380.0, 640.0}) ASSERT_TRUE(InsertSectionMileage(road, mileage));
}

TEST(PartProject, ThePartHasTheRoadsSettingsAndItsOwnRecords) {
    RoadDesign road;
    FillOverlapped(road);
    const auto part = MakePart(road, {370, 1}, {600, 0});
    ASSERT_TRUE(part);
    const auto read = ReadBack(**part);
    EXPECT_EQ(read->settings.roadDesignMode, 1);
    EXPECT_EQ(read->settings.startMileage, 370);
    EXPECT_EQ(read->settings.makeStakeType, 1);
    EXPECT_EQ(read->settings.mileageInterval, 25);
    EXPECT_EQ(read->settings.stakePrefix, "DK");
    ASSERT_EQ(read->verticalCurves.Count(), 3);
    const double mileages[] = {50, 450, 800};  // the first lies 320 m of road before the part
    const std::int32_t occurrences[] = {-1, 0, -1};
    for (const std::int32_t i : {0, 1, 2}) {
        EXPECT_EQ(read->verticalCurves[i].mileage, mileages[i]);
        EXPECT_EQ(read->verticalCurves[i].occurrence, occurrences[i]);
    }
    ASSERT_EQ(read->sections.mileageIndex.size(), 1U);
    EXPECT_EQ(read->sections.mileageIndex[0].mileage, 380);
    const auto& changes = read->sections.changeSections[1][0];
    EXPECT_EQ(changes.begin()->first, 370);
    EXPECT_EQ(changes.rbegin()->first, 600);
    EXPECT_EQ(changes.begin()->second.flags, (std::vector{5}));
    EXPECT_LT(changes.size(), 2000U);
    for (const auto& [mileage, type] : read->sections.transitionTypes[1][0]) EXPECT_EQ(type, 0) << mileage;
}

TEST(PartProject, APartOfARoadThatCannotBeDesignedIsMade) {
    RoadDesign road;
    FillOverlapped(road);
    road.settings.makeStakeType = 2;
    EXPECT_TRUE(MakePart(road, {370, 1}, {600, 0}));
}

// An element's start swallows the first break, so that the second one would have to stand before the part.
TEST(PartProject, ABreakThatNoListGivesIsRefused) {
    RoadDesign road;
    Begin(road);
    Join(road, Piece(1, 100));
    Join(road, Piece(1, 200));
    Break(road, 0.000005, -99.999995);
    Break(road, 50, 1000);
    ASSERT_TRUE(BuildChain(road));
    const auto part = MakePart(road, {60, 0}, {1100, 0});
    ASSERT_FALSE(part);
    EXPECT_EQ(part.failure().status, KESTO_NOTHING_TO_SAVE);
    EXPECT_EQ(part.failure().list, KESTO_LIST_BROKEN_CHAINS);
    EXPECT_EQ(part.failure().value, 1000);
}

TEST(PartProject, WithoutAStretchTheReasonIsTold) {
    struct Case {
        StakeMileage from, to;
        std::int32_t limit;
        double value, bound;
    };
    const double nan = std::nan("");
    const Case cases[] = {
        {{100, 0}, {100, 0}, KESTO_LIMIT_NONE, 100, 100},
        {{100, 0}, {100.00000005, 0}, KESTO_LIMIT_NONE, 100.00000005, 100},
        {{380, 1}, {390, 0}, KESTO_LIMIT_NONE, 390, 430},
        {{-1, 0}, {100, 0}, KESTO_LIMIT_ROAD_START, -1, 0},
        {{100, 0}, {951, 0}, KESTO_LIMIT_ROAD_END, 951, 950},
        {{100, 0}, {500, 1}, KESTO_LIMIT_OCCURRENCES, 1, 1},
        {{100, -1}, {500, 0}, KESTO_LIMIT_OCCURRENCES, -1, 1},
        {{nan, 0}, {500, 0}, KESTO_LIMIT_OCCURRENCES, 0, 0},
    };
    RoadDesign road;
    FillOverlapped(road);
    for (const Case& it : cases) {
        SCOPED_TRACE(testing::Message() << it.from.mileage << " to " << it.to.mileage);
        const auto part = MakePart(road, it.from, it.to);
        ASSERT_FALSE(part);
        EXPECT_EQ(part.failure().status, KESTO_NOTHING_TO_SAVE);
        EXPECT_EQ(part.failure().limit, it.limit);
        EXPECT_EQ(part.failure().value, it.value);
        EXPECT_EQ(part.failure().bound, it.bound);
    }
}

TEST(PartProject, ARefusalWritesNothingAndTheRoadStays) {
    struct Case {
        double to;
        void (*spoil)(RoadDesign& road);
        const char* file;
        std::int32_t status;
    };
    const auto nothing = [](RoadDesign&) {};
    const Case cases[] = {
        {100, nothing, "a.road", KESTO_NOTHING_TO_SAVE},
        {500, [](RoadDesign& it) { it.settings.roadDesignMode = 9, it.totalLength = 0; }, "a.road", 1},
        {500, [](RoadDesign& it) { it.elements.Remove(2), it.elements.Remove(1), it.totalLength = 0; }, "a.road", 3},
        {500, [](RoadDesign& it) { it.elements.Edit()[1] = Curved(3, 400, 300, 300); }, "a.road", 7},
        {500, nothing, "missing/a.road", KESTO_FILE_NOT_WRITTEN},
        {500, nothing, "A.ROAD", KESTO_SUCCESS},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(testing::Message() << it.status << " in " << it.file);
        const test::TemporaryFolder temporary;
        const std::filesystem::path folder = temporary;
        RoadDesign road;
        FillOverlapped(road);
        ASSERT_TRUE(BuildChain(road));
        it.spoil(road);
        const auto before = FormatProject(road, utf8);
        const VerticalCurve curve = road.verticalCurves[1];
        const Outcome saved = SavePart(road, (folder / it.file).string().c_str(), {100, 0}, {it.to, 0});
        EXPECT_EQ(saved ? std::int32_t{KESTO_SUCCESS} : saved.failure().status, it.status);
        EXPECT_EQ(std::filesystem::is_empty(folder), it.status != KESTO_SUCCESS);
        EXPECT_EQ(std::filesystem::exists(folder / "A.road"), it.status == KESTO_SUCCESS);  // its extension lower-cased
        EXPECT_EQ(*FormatProject(road, utf8), *before);
        EXPECT_EQ(road.verticalCurves[1].gradeOut, curve.gradeOut) << "the profile was derived in the road";
    }
}

}  // namespace
}  // namespace kesto
