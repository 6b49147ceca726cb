/// Roads of every design mode from a seed, with all that a project file holds.
#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "alignment/chainage.hpp"
#include "core/text.hpp"
#include "design/design_run.hpp"
#include "geometry/element_geometry.hpp"
#include "profile/vertical_curves.hpp"
#include "section/change_sections.hpp"
#include "section/mileage_index.hpp"
#include "section/plates.hpp"
#include "support/dice.hpp"
#include "support/records.hpp"

namespace kesto::test {

/// Appends an element where and as the one before it ends.
inline void Join(RoadDesign& road, Element element, std::optional<double> azimuth = {}) {
    const Element& last = road.elements[road.elements.Count() - 1];
    const Position end = *Evaluate(last, last.length);
    element.startX = end.x;
    element.startY = end.y;
    element.startAzimuth = azimuth.value_or(end.azimuth);
    road.elements.Insert(element);
}

class RoadMaker : public Dice {
public:
    /// @param isWinding a road of elements of any kind, some of negative length, with kinks: it may meet itself
    explicit RoadMaker(unsigned seed, bool isWinding = false) : Dice(seed), winding(isWinding) {}

    /// A designed road of about 1 km. Modes of the alignment and of the curves, and the tables, are drawn.
    std::unique_ptr<RoadDesign> Make() {
        road = std::make_unique<RoadDesign>();
        road->settings.startMileage = Between(-500, 5000);
        road->settings.mileageInterval = Between(10, 60);
        road->settings.makeStakeType = Below(2);
        road->settings.sectionMode = Below(2);
        road->settings.sideSlopeMode = Below(2);
        road->settings.roadDesignMode = winding ? 1 : Below(4);
        road->settings.verticalCurveMode = Below(2);
        winding ? MakeWindingAlignment() : MakeAlignment();
        for (int i = winding ? 0 : Below(3); i > 0; --i) {
            const double back = road->settings.startMileage + Between(100, 700);
            static_cast<void>(InsertBrokenChain(*road, {back, back + Between(-60, 60)}));
        }
        if (!RunDesign(*road)) return nullptr;
        MakeProfile();
        for (const std::int32_t side : {0, 1}) MakeSections(side);
        for (int i = Below(3); i > 0; --i) static_cast<void>(InsertSectionMileage(*road, Between(0, 1000)));
        return RunDesign(*road) ? std::move(road) : nullptr;
    }

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
                Intersection point = Named(Numbered("JD", i), Corner(x, y, end ? 0 : Between(60, 90)));
                point.spiralIn = point.spiralOut = end ? 0 : Between(10, 20);
                road->intersections.Insert(point);
            } else if (elements) {
                Element element = Piece(1 + i % 3, Between(50, 250));
                element.turnDirection = static_cast<std::uint8_t>(Below(2));
                element.startRadius = i % 3 == 0 ? 0 : Between(200, 900);
                element.endRadius = i % 3 == 2 ? 0 : element.startRadius;
                Join(*road, element);
            } else {
                road->coordinates.Insert(Named(Numbered("P", i), MainPoint(x, y, 1)));
            }
        }
    }

    void MakeWindingAlignment() {
        SetStart(*road, Between(1e5, 4e6), Between(1e5, 5e5), Between(0, 360));
        double mileage = road->settings.startMileage;
        const int count = 2 + Below(10);
        for (int i = 0; i < count; ++i) {
            Element element = Piece(1 + Below(3), Between(20, 250));
            element.turnDirection = static_cast<std::uint8_t>(Below(2));
            element.startRadius = element.type == 1 ? 0 : std::exp(Between(4.5, 8));
            element.endRadius = element.startRadius;
            if (element.type == 3) {
                element.endRadius = In(2) ? 0 : element.startRadius * Between(1.1, 4);
                if (In(2)) std::swap(element.startRadius, element.endRadius);
            }
            if (i > 0 && In(10)) element.length *= -0.3;
            Join(*road, element, In(5) ? std::optional(Between(0, 360)) : std::nullopt);
            if (element.length > 0 && In(3)) {
                const double back = mileage + Between(0.1, 1) * element.length;
                static_cast<void>(InsertBrokenChain(*road, {back, back + Between(-60, 60)}));
            }
            mileage += element.length;
        }
    }

    /// The stake of a place; its continuous mileage where no stake leads back to it, as off the road.
    void Put(double place, double& mileage, std::int32_t& occurrence) {
        const StakeMileage stake = StakeMileageAt(*road, place);
        const auto back = FindContinuous(*road, stake);
        const bool staked = back && std::fabs(*back - place) < 1e-9;
        mileage = staked ? stake.mileage : place;
        occurrence = staked ? stake.occurrence : noOccurrence;
    }

    /// Grade points whose curves keep apart where their ends count; some lie off the road.
    void MakeProfile() {
        double place = road->settings.startMileage + Between(-100, 400);
        for (int i = Below(8); i > 0; --i) {
            VerticalCurve point = GradePoint(0, Between(90, 110));
            Put(place, point.mileage, point.occurrence);
            Put(place - Between(5, 40), point.startMileage, point.startOccurrence);
            Put(place + Between(5, 40), point.endMileage, point.endOccurrence);
            if (In(10)) point.startOccurrence = noOccurrence;
            point.radius = In(5) ? 0 : Between(50, 400);
            static_cast<void>(InsertVerticalCurve(*road, point));
            place += Between(82, 200);
        }
    }

    void MakeSections(std::int32_t side) {
        const int plates = Below(4);
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
        for (int i = plates == 0 ? 0 : Below(8); i > 0; --i) {
            ChangeSection section;
            for (int plate = 0; plate < plates; ++plate) {
                section.values.push_back(Between(1, 5));
                section.flags.push_back(Below(3));
            }
            const double place = road->settings.startMileage + Between(0, 1) * road->totalLength;
            static_cast<void>(InsertChangeAt(*road, {side, Below(2)}, place, section, Below(4)));
        }
    }

    bool winding;
    std::unique_ptr<RoadDesign> road;
};

}  // namespace kesto::test
