/// Roads made at random, with everything that queries read, and questions that some of them cannot answer.
#pragma once

#include <limits>
#include <string>

#include "support/dice.hpp"
#include "support/road.hpp"

namespace kesto::test {

/// Elements of all kinds with broken chains, backward ones among them, a profile and widened plates; designed.
inline Road RandomRoad(Dice& dice) {
    std::vector<Element> elements;
    for (int i = 0; i < 12; ++i) {
        const std::uint8_t turn = dice.In(2) ? left : right;
        const double radius = dice.Between(150, 900);
        elements.push_back(Straight(dice.Between(50, 300)));
        elements.push_back(Spiral(turn, 0, radius, dice.Between(30, 90)));
        elements.push_back(Arc(turn, radius, dice.Between(30, 250)));
        elements.push_back(Spiral(turn, radius, 0, dice.Between(30, 90)));
    }
    Road road = MakeRoad(elements, {5000, 7000, dice.Between(0, 360), 100});
    for (const double back : {700.0, 1900.0, 3100.0}) AddChain(road, back, back + dice.Between(-150, 150));
    EXPECT_TRUE(UpdateData(road));
    SetSectionMode(road, 0);
    AddGradePoints(road, {GradePoint(150, 100), GradePoint(900, 112, 4000), GradePoint(1500, 104, 3000)});
    EXPECT_TRUE(DesignRoad(road));
    AddPlates(road, left, {Plate(3.5, -2), Plate(1.5, -4, 0.1)});
    AddPlates(road, right, {Plate(3.5, -2)});
    const double widths[] = {5, 2};
    EXPECT_TRUE(AddChangeSectionList(road, 500, left, 1, widths, 2, 0, 1));
    return road;
}

/// A question in its own record, as a host may keep it: nothing is aligned to 8 bytes behind the flag.
#pragma pack(push, 1)
struct Question {
    char flag;
    double x, y, mileage, offset, angle;
    std::int32_t occurrence;
};
#pragma pack(pop)

inline std::vector<Question> RandomQuestions(RoadDesign* road, Dice& dice, std::size_t count) {
    std::vector<Question> questions(count);
    for (Question& it : questions) {
        it = {0, 0, 0, dice.Between(50, 4500), dice.Between(-9, 9), dice.Between(-20, 200), dice.In(5) ? 1 : 0};
        if (dice.In(4)) it.offset = 0;
        const Point at = PointAt(road, it.mileage, dice.Between(-60, 60));
        it.x = at.found ? at.x : dice.Between(0, 9000);
        it.y = at.found ? at.y : dice.Between(0, 9000);
        if (dice.In(20)) it.x = it.mileage = std::numeric_limits<double>::quiet_NaN();
        if (dice.In(20)) it.offset = std::numeric_limits<double>::infinity();
    }
    return questions;
}

/// What a road answers to every query, byte by byte: results, then outputs, what was left untouched included.
class EverythingAsked {
public:
    EverythingAsked(RoadDesign* road, const std::vector<Question>& questions) {
        for (const Question& q : questions) AskPlace(road, q);
        AskRecords(road);
        AskBatches(road, questions);
        std::int64_t size = 0;
        Take(SaveProjectToMemory(road, nullptr, 0, &size));
        std::string file(static_cast<std::size_t>(size), ' ');
        Take(SaveProjectToMemory(road, file.data(), size, &size));
        told += file;
    }

    std::size_t Answered() const { return answered; }
    bool operator==(const EverythingAsked&) const = default;

private:
    template <class Result>
    void Take(const Result& result) {
        told.append(reinterpret_cast<const char*>(&result), sizeof result);
        if constexpr (std::is_same_v<Result, bool>) answered += result ? 1 : 0;
    }

    /// Asks, then takes the result and the outputs.
    template <class Ask, class... Outputs>
    void Hear(Ask&& ask, const Outputs&... outputs) {
        Take(ask());
        (Take(outputs), ...);
    }

    void AskPlace(RoadDesign* road, const Question& q) {
        double a = -7, b = -7, c = -7;
        std::int32_t k = -7;
        Hear([&] { return GetMileageAndOffset(road, q.x, q.y, &a, &b, &k); }, a, b, k);
        const double upper = q.mileage + 400;
        Hear([&] { return GetMileAndOffsetInLim(road, q.x, q.y, q.mileage, q.occurrence, upper, 0, &a, &b, &k); }, a, b,
             k);
        Hear([&] { return GetPositionAndAzimuth(road, q.mileage, q.offset, q.angle, &a, &b, &c, q.occurrence); }, a, b,
             c);
        Hear([&] { return GetHeight(road, q.mileage, q.occurrence, q.offset, &a); }, a);
        Hear([&] { return GetSrcMileage(road, &(a = q.mileage), q.occurrence); }, a);
        Take(GetIntersectionIndex(road, q.mileage, q.occurrence));
        StakeCoordinate stake{};
        Hear([&] { return GetNearbyStakeCoordinate(road, q.x, q.y, &stake, &k); }, stake, k);
        for (const std::int32_t side : {0, 1, 5}) {
            for (const auto get : {GetRoadSide, GetRoadSideNoHeight}) {
                SectionPlate plates[2] = {};
                SectionPlateArray array{plates, -7, side == 1 ? 1 : 2};
                Hear([&] { return get(road, q.mileage, q.occurrence, side, &array); }, plates, array.count);
            }
        }
    }

    template <class Record>
    void AskList(RoadDesign* road, std::int32_t (*count)(RoadDesign*),
                 bool (*get)(RoadDesign*, std::int32_t, Record*)) {
        Take(count(road));
        for (std::int32_t i = -1; i <= count(road); ++i) {
            Record record{};
            Hear([&] { return get(road, i, &record); }, record);
        }
    }

    void AskRecords(RoadDesign* road) {
        AskList(road, GetIntersectionCount, GetIntersection);
        AskList(road, GetElementCount, GetElement);
        AskList(road, GetCoordinateCount, GetCoordinate);
        AskList(road, GetBrokenChainCount, GetBrokenChain);
        AskList(road, GetVerticalCurveCount, GetVerticalCurve);
        AskList(road, GetStakeCoordinateCount, GetStakeCoordinate);
        AskList(road, GetSectionMileageIndexCount, GetSectionMileageIndex);
        for (const auto setting : {GetRoadDesignMode, GetVerticalCurveMode, GetSectionMode, GetSideSlopeMode}) {
            Take(setting(road));
        }
        told += GetMakeStakePerfix(road);
        double a = -7, b = -7, c = -7;
        std::int32_t k = -7;
        Hear([&] { return GetMakeStakeInfo(road, &a); }, a);
        Hear([&] { return GetRoadMileage(road, &a); }, a);
        Element element{};
        GetElement(road, 3, &element);
        Hear([&] { return GetElementPositionAndAzimuth(road, &element, 10, &a, &b, &c); }, a, b, c);
        EaseParam ease{};
        Hear([&] { return CalcEaseParam(road, 0, 300, 60, &ease); }, ease);
        for (const std::int32_t side : {0, 1, 5}) {
            SectionPlate plates[2] = {};
            SectionPlateArray array{plates, 0, 2};
            Hear([&] { return GetStandardSection(road, side, &array); }, array.count, plates);
            Hear([&] { return GetStandardSectionPlate(road, side, 0, plates); }, plates);
            Take(GetStandardSectionPlateCount(road, side));
            for (const std::int32_t kind : {0, 1, 5}) {
                double numbers[2] = {-7, -7};
                std::int32_t flags[2] = {-7, -7};
                DoubleArray values{numbers, 0, 2};
                Int32Array marks{flags, 0, 2};
                Take(GetChangeSectionCount(road, side, kind));
                Hear([&] { return GetChangeSection(road, side, kind, 0, &a, &values, &k); }, a, numbers, k);
                Hear([&] { return GetChangeSection2(road, side, kind, 0, &a, &values, &marks, &k); }, a, flags, k);
                Hear([&] { return GetChangeSectionType(road, side, kind, 0, &k); }, k);
            }
        }
    }

    void AskBatches(RoadDesign* road, const std::vector<Question>& questions) {
        for (const Question& q : questions) {  // of one row each: their statuses tell the reasons of failures
            const double x = q.x, y = q.y, mileage = q.mileage, offset = q.offset, angle = q.angle;
            const std::int32_t occurrence = q.occurrence;
            double a = -7, b = -7, c = -7;
            std::int32_t k = -7;
            std::uint8_t status = 99;
            Hear([&] { return GetMileageAndOffsetBatch(road, 1, &x, 0, &y, 0, &a, 0, &b, 0, &k, 0, &status, 0); }, a, b,
                 k, status);
            Hear(
                [&] {
                    return GetPositionAndAzimuthBatch(road, 1, &mileage, 0, &occurrence, 0, &offset, 0, &angle, 0, &a,
                                                      0, &b, 0, &c, 0, &status, 0);
                },
                a, b, c, status);
            Hear([&] { return GetHeightBatch(road, 1, &mileage, 0, &occurrence, 0, &offset, 0, &a, 0, &status, 0); }, a,
                 status);
        }
    }

    std::string told;
    std::size_t answered = 0;
};

}  // namespace kesto::test
