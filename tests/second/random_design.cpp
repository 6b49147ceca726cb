#include "random_design.hpp"

#include <algorithm>
#include <numeric>

namespace kesto::second {

namespace {

using test::Arc;
using test::Spiral;
using test::Straight;

/// Curves between straights. Only tangent intersections need every straight and no more than one arc between two.
std::vector<Element> RandomCurves(Dice& dice, Form form) {
    std::vector<Element> curves{Straight(dice.Between(20, 250))};
    for (int count = 2 + dice.Below(9); count > 0; --count) {
        const std::uint8_t turn = dice.In(2) ? test::left : test::right;
        const double radius = 60 * std::pow(25, dice.Between(0, 1));
        const double other = radius * (dice.In(4) ? dice.Between(0.98, 0.99) : dice.Between(1.2, 3));
        const auto spiral = [&](double from, double to) {
            const double length = std::min(150.0, dice.Between(0.1, 0.5) * radius);
            curves.push_back(Spiral(turn, from, to, length));
        };
        const double mostTurn = form == Form::Elements && dice.In(6) ? 5 : 0.8;  // rad
        const auto arc = [&](double of) {
            curves.push_back(Arc(turn, of, dice.In(4) ? 40 : dice.Between(0.1, mostTurn) * of));
        };
        switch (form == Form::Polygon ? -1 : dice.Below(form == Form::Intersections ? 2 : 4)) {
            case 0: arc(radius); break;
            case 1: spiral(0, radius), arc(radius), spiral(radius, 0); break;
            case 2: spiral(0, radius), spiral(radius, other), arc(other), spiral(other, 0); break;
            case 3: arc(radius), arc(other); break;
            default: break;
        }
        const bool joined = form == Form::Elements && count > 1 && dice.In(4);
        if (!joined) curves.push_back(Straight(dice.Between(5, 250)));
    }
    return curves;
}

double Length(const Design& design) {
    return std::accumulate(design.curves.begin(), design.curves.end(), 0.0,
                           [](double sum, const Element& curve) { return sum + curve.length; });
}

/// Breaks in order, the next one always where it can be found; some in the gap of the one before, which do nothing.
std::vector<BrokenChain> RandomBreaks(Dice& dice, const Design& design) {
    std::vector<BrokenChain> breaks;
    const double length = Length(design);
    double along = 0;
    double stake = design.mileage;
    for (int count = dice.Below(5); count > 0; --count) {
        double place = along + dice.Between(0.05, 0.5) * length;
        double joint = 0;
        const bool atJoint = dice.In(3);
        for (const Element& curve : design.curves) {
            joint += curve.length;
            if (atJoint ? joint > place : std::fabs(joint - place) < 0.1) {
                place = joint + (dice.In(2) ? 0 : dice.Between(0.001, 0.02));
                break;
            }
        }
        const double back = stake + place - along;
        const bool findable = place < length - 1 && (breaks.empty() || back > breaks.back().backMileage);
        if (!findable) break;
        const double ahead = back + dice.Between(-600, 600);
        breaks.push_back({back, ahead});
        if (ahead > back && dice.In(3)) breaks.push_back({dice.Between(back, ahead), dice.Between(0, 1000)});
        along = place;
        stake = ahead;
    }
    return breaks;
}

/// With the ends of curves drawn, or of the radius, some profiles reach beyond the road.
void DrawProfile(Dice& dice, Design& design) {
    const double length = Length(design);
    const int count = dice.Below(8);
    const bool beyond = design.curveMode == 0 && dice.In(3);
    const double spacing = beyond ? 2 * length / (count + 1) : length / (count + 1);
    const double first = beyond ? design.mileage - length / 2 : design.mileage;
    const double steepest = 2 * 10 / (0.5 * spacing);  // change of grade
    for (int i = 1; i <= count; ++i) {
        Grade grade{};
        grade.continuous = first + (i + dice.Between(-0.25, 0.25)) * spacing;
        grade.elevation = dice.Between(100, 110);
        // Up to a fifth of the spacing on either side neighbouring curves keep apart; some overlap.
        const double reach = (dice.In(8) ? 1.5 : 0.2) * spacing;
        grade.radius = dice.In(5) ? 0 : 2 * dice.Between(0.1, 1) * reach / steepest;
        grade.from = grade.continuous - dice.Between(0.05, 1) * reach;
        grade.to = grade.continuous + dice.Between(0.05, 1) * reach;
        design.grades.push_back(grade);
    }
}

void DrawSections(Dice& dice, Design& design) {
    const double length = Length(design);
    for (std::int32_t side = 0; side < 2; ++side) {
        auto& plates = design.plates[static_cast<std::size_t>(side)];
        for (int count = dice.Below(5); count > 0; --count) {
            const double width = dice.Between(0.5, 5);
            const double crossSlope = dice.Between(-8, 8);
            plates.push_back(test::Plate(width, crossSlope, dice.In(3) ? dice.Between(-0.3, 0.3) : 0));
        }
        if (plates.empty()) continue;
        for (std::int32_t kind = 0; kind < 2; ++kind) {
            double place = design.mileage;
            for (int count = dice.Below(6); count > 0; --count) {
                place += dice.Between(0.05, 0.4) * length;
                if (place > design.mileage + length) break;
                std::vector<double> values;
                for (std::size_t i = 0; i < plates.size(); ++i) {
                    values.push_back(kind == 0 ? dice.Between(-8, 8) : dice.Between(0.5, 6));
                }
                design.changes.push_back({side, kind, place, values, dice.In(8) ? 7 : dice.Below(3)});
            }
        }
    }
}

void AddElements(RoadDesign* road, const std::vector<Curve>& curves, const Design& design) {
    EXPECT_TRUE(SetStartInformation(road, design.x, design.y, design.azimuth));
    for (std::size_t i = 0; i < curves.size(); ++i) {
        Element element = design.curves[i];
        element.startX = static_cast<double>(curves[i].start.real());
        element.startY = static_cast<double>(curves[i].start.imag());
        element.startAzimuth = static_cast<double>(curves[i].heading / degree);
        EXPECT_TRUE(AddElement(road, &element, -1));
    }
}

/// Every point begins a curve; the last one ends the road.
void AddCoordinates(RoadDesign* road, const std::vector<Curve>& curves, const Design& design) {
    for (std::size_t i = 0; i <= curves.size(); ++i) {
        const Curve& curve = curves[std::min(i, curves.size() - 1)];
        const Plane at = i < curves.size() ? curve.start : curve.At(curve.length);
        Coordinate point{};
        point.x = static_cast<double>(at.real());
        point.y = static_cast<double>(at.imag());
        point.type = curve.type;
        if (i < curves.size()) {
            point.turnDirection = design.curves[i].turnDirection;
            point.radius = design.curves[i].startRadius;
        }
        EXPECT_TRUE(AddCoordinate(road, &point, -1));
    }
}

/// The ends of the road, and where the straights before and behind every arc meet.
void AddIntersections(RoadDesign* road, const std::vector<Curve>& curves, const Design& design) {
    const auto add = [&](Plane at, double radius, double in, double out) {
        Intersection point{};
        point.x = static_cast<double>(at.real());
        point.y = static_cast<double>(at.imag());
        point.radius = radius;
        point.spiralIn = in;
        point.spiralOut = out;
        EXPECT_TRUE(AddIntersection(road, &point, -1));
    };
    add(curves.front().start, 0, 0, 0);
    for (std::size_t i = 0; i < curves.size(); ++i) {
        if (curves[i].type != 2) continue;
        const bool eased = curves[i - 1].type == 3;
        const Curve& before = curves[eased ? i - 2 : i - 1];
        const Curve& behind = curves[eased ? i + 2 : i + 1];
        const Plane seen = before.Seen(behind.start, 0);
        const Real ahead = seen.real() - seen.imag() / std::tan(behind.heading - before.heading);
        add(before.start + ahead * before.DirectionAt(0), design.curves[i].startRadius,
            eased ? design.curves[i - 1].length : 0, eased ? design.curves[i + 1].length : 0);
    }
    add(curves.back().At(curves.back().length), 0, 0, 0);
}

}  // namespace

Design RandomDesign(Dice& dice, Form form) {
    Design design;
    design.form = form;
    design.x = dice.Between(-5000, 5000);
    design.y = dice.Between(-5000, 5000);
    design.azimuth = dice.Between(0, 360);
    design.mileage = dice.Between(-800, 5000);
    design.curves = RandomCurves(dice, form);
    design.kinks.resize(design.curves.size());
    const bool kinked = form == Form::Polygon || (form != Form::Intersections && dice.In(3));
    for (std::size_t i = 1; kinked && i < design.kinks.size(); ++i) design.kinks[i] = dice.Between(-25, 25);
    design.breaks = RandomBreaks(dice, design);
    design.stakeType = dice.Below(2);
    design.interval = dice.In(2) ? 20 : dice.Between(5, 60);
    design.curveMode = dice.Below(2);
    DrawProfile(dice, design);
    DrawSections(dice, design);
    return design;
}

test::Road Build(const Design& design, const SecondRoad& second) {
    test::Road road;
    SetStartMileage(road, design.mileage);
    SetMileageInterval(road, design.interval);
    SetMakeStakeType(road, design.stakeType);
    SetVerticalCurveMode(road, design.curveMode);
    switch (design.form) {
        case Form::Intersections: SetRoadDesignMode(road, 0), AddIntersections(road, second.Curves(), design); break;
        case Form::Elements: SetRoadDesignMode(road, 1), AddElements(road, second.Curves(), design); break;
        case Form::Coordinates: SetRoadDesignMode(road, 2), AddCoordinates(road, second.Curves(), design); break;
        case Form::Polygon: SetRoadDesignMode(road, 3), AddCoordinates(road, second.Curves(), design); break;
    }
    for (const BrokenChain& chain : design.breaks) EXPECT_TRUE(AddBrokenChain(road, &chain));
    EXPECT_TRUE(DesignRoad(road));
    const auto place = [&](double continuous, double& mileage, std::int32_t& occurrence) {
        const bool onRoad = continuous >= second.Start() && continuous <= second.End();
        const Stake stake = onRoad ? second.StakeAt(continuous) : Stake{continuous, -1};
        mileage = static_cast<double>(stake.mileage);
        occurrence = stake.occurrence;
    };
    for (const Grade& grade : design.grades) {
        VerticalCurve curve = test::GradePoint(0, grade.elevation, grade.radius);
        place(grade.continuous, curve.mileage, curve.occurrence);
        place(grade.from, curve.startMileage, curve.startOccurrence);
        place(grade.to, curve.endMileage, curve.endOccurrence);
        EXPECT_TRUE(AddVerticalCurve(road, &curve));
    }
    for (std::int32_t side = 0; side < 2; ++side) {
        test::AddPlates(road, side, design.plates[static_cast<std::size_t>(side)]);
    }
    for (const Change& change : design.changes) {
        double mileage = 0;
        std::int32_t occurrence = 0;
        place(change.continuous, mileage, occurrence);
        EXPECT_TRUE(AddChangeSectionList(road, mileage, change.side, change.kind, change.values.data(),
                                         static_cast<std::int32_t>(change.values.size()), occurrence, change.type));
    }
    EXPECT_TRUE(DesignRoad(road));
    return road;
}

}  // namespace kesto::second
