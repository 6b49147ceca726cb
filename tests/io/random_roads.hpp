/// Roads of every design mode from a seed, with all that a project file holds.
#pragma once

#include <cstdint>
#include <memory>
#include <random>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "alignment/chainage.hpp"
#include "alignment/element_geometry.hpp"
#include "design/design_run.hpp"
#include "io/roads.hpp"
#include "profile/vertical_curves.hpp"
#include "section/change_sections.hpp"
#include "section/mileage_index.hpp"
#include "section/plates.hpp"

namespace kesto::test {

class RoadMaker {
public:
    explicit RoadMaker(unsigned seed) : random(seed) {}

    /// A designed road of about 1 km. Modes of the alignment and of the curves, and the tables, are drawn.
    std::unique_ptr<RoadDesign> Make() {
        road = std::make_unique<RoadDesign>();
        road->settings.startMileage = Between(-500, 5000);
        road->settings.mileageInterval = Between(10, 60);
        road->settings.makeStakeType = Draw(2);
        road->settings.sectionMode = Draw(2);
        road->settings.sideSlopeMode = Draw(2);
        road->settings.roadDesignMode = Draw(4);
        road->settings.verticalCurveMode = Draw(2);
        MakeAlignment();
        for (int i = Draw(3); i > 0; --i) {
            const double back = road->settings.startMileage + Between(100, 700);
            static_cast<void>(InsertBrokenChain(*road, {back, back + Between(-60, 60)}));
        }
        if (!RunDesign(*road)) return nullptr;
        MakeProfile();
        for (const std::int32_t side : {0, 1}) MakeSections(side);
        for (int i = Draw(3); i > 0; --i) static_cast<void>(InsertSectionMileage(*road, Between(0, 1000)));
        return RunDesign(*road) ? std::move(road) : nullptr;
    }

    double Between(double lower, double upper) { return std::uniform_real_distribution<double>(lower, upper)(random); }
    int Draw(int choices) { return std::uniform_int_distribution<int>(0, choices - 1)(random); }

private:
    static std::string Numbered(const char* name, int number) {
        return std::string(name).append(std::to_string(number));
    }

    void MakeAlignment() {
        const bool elements = road->settings.roadDesignMode == 1;
        if (elements) SetStart(*road, Between(0, 5e5), Between(0, 5e6), Between(0, 360));
        for (int i = 0; i < 6; ++i) {
            const bool end = i == 0 || i == 5;
            const double x = 200.0 * i + Between(0, 20);
            const double y = (i % 2) * 90 + Between(0, 20);
            if (road->settings.roadDesignMode == 0) {
                Intersection point = Point(Numbered("JD", i), x, y, end ? 0 : Between(60, 90));
                point.spiralIn = point.spiralOut = end ? 0 : Between(10, 20);
                road->intersections.Insert(point);
            } else if (elements) {
                Element element = Piece(1 + i % 3, Between(50, 250));
                element.turnDirection = static_cast<std::uint8_t>(Draw(2));
                element.startRadius = i % 3 == 0 ? 0 : Between(200, 900);
                element.endRadius = i % 3 == 2 ? 0 : element.startRadius;
                const std::span<const Element> before = road->elements.Records();
                element.startAzimuth = Evaluate(before.back(), before.back().length)->azimuth;
                road->elements.Insert(element);
            } else {
                road->coordinates.Insert(Polygon(Numbered("P", i), x, y));
            }
        }
    }

    StakeMileage Stake(double continuous) { return StakeMileageAt(*road, continuous); }

    void MakeProfile() {
        const int count = Draw(6);
        const double spacing = road->totalLength / (count + 1);
        for (int i = 0; i < count; ++i) {
            const double place = road->settings.startMileage + (i + Between(0.2, 0.8)) * spacing;
            const StakeMileage stake = Stake(place);
            VerticalCurve point = GradePoint(stake.mileage, Between(100, 130));
            point.occurrence = stake.occurrence;
            point.radius = Between(100, 500);
            const StakeMileage start = Stake(place - 0.1 * spacing), end = Stake(place + 0.1 * spacing);
            point.startMileage = start.mileage;
            point.startOccurrence = start.occurrence;
            point.endMileage = end.mileage;
            point.endOccurrence = end.occurrence;
            static_cast<void>(InsertVerticalCurve(*road, point));
        }
    }

    void MakeSections(std::int32_t side) {
        const int plates = Draw(4);
        for (int i = 0; i < plates; ++i) {
            SectionPlate plate{};
            SetText(plate.name, i == 0 ? ""
                                       : "Stra\xC3\x9F"
                                         "e");
            SetText(plate.code, i == 2 ? "" : Numbered("c", i));
            plate.width = Between(1, 4);
            plate.crossSlope = Between(-6, 6);
            plate.step = Between(0, 0.2);
            static_cast<void>(InsertPlate(*road, plate, side, -1));
        }
        for (int i = plates == 0 ? 0 : Draw(8); i > 0; --i) {
            ChangeSection section;
            for (int plate = 0; plate < plates; ++plate) {
                section.values.push_back(Between(1, 5));
                section.flags.push_back(Draw(3));
            }
            const double place = road->settings.startMileage + Between(0, 1) * road->totalLength;
            static_cast<void>(InsertChangeAt(*road, {side, Draw(2)}, place, section, Draw(4)));
        }
    }

    std::mt19937 random;
    std::unique_ptr<RoadDesign> road;
};

}  // namespace kesto::test
