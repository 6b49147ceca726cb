// The calls that ask for mileages, positions and heights, and those that make the road current.

#include "alignment/inverse_index.hpp"
#include "call_run.hpp"

namespace kesto::fuzz {

namespace {

constexpr double untouched = -7;

struct Place {
    double a = untouched, b = untouched, c = untouched;
    std::int32_t k = -7;
    std::int32_t padding = 0;
};

void AskIntersectionIndex(CallRun& it) {
    const double mileage = it.in.Number();
    const std::int32_t found = it.Ask(KESTO_NAMED(GetIntersectionIndex), mileage, it.in.Whole());
    Require(found < std::max(GetIntersectionCount(it.Road()), 1), "an intersection that is found is there");
}

void AskElement(CallRun& it) {
    Element element{};
    element.type = it.in.Whole();
    element.turnDirection = it.in.Byte();
    for (double* number : {&element.startX, &element.startY, &element.startAzimuth, &element.startRadius,
                           &element.endRadius, &element.length})
        *number = it.in.Number();
    if (it.in.Byte() % 2 == 0) GetElement(it.Road(), it.in.Index(GetElementCount(it.Road())), &element);
    const double distance = it.in.Number();
    Place out;
    if (it.Ask(KESTO_NAMED(GetElementPositionAndAzimuth), it.OrNull(&element), distance, &out.a, it.OrNull(&out.b),
               &out.c)) {
        RequireFiniteNumbers(out.a, out.b, out.c);
    }
}

void AskEase(CallRun& it) {
    const double startRadius = it.in.Number(), endRadius = it.in.Number(), length = it.in.Number();
    EaseParam out{};
    if (it.Ask(KESTO_NAMED(CalcEaseParam), startRadius, endRadius, length, it.OrNull(&out))) {
        RequireFiniteNumbers(out.parameterSquared, out.deflection, out.shift, out.tangentOffset, out.chord);
    }
}

void AskContinuous(CallRun& it) {
    const double given = it.in.Number();
    double mileage = given;
    if (it.Ask(KESTO_NAMED(GetSrcMileage), it.OrNull(&mileage), it.in.Whole())) {
        RequireFiniteNumbers(mileage);
    } else {
        Require(SameBits(mileage, given), "a mileage that is not found stays as it is");
    }
}

void AskRoadMileage(CallRun& it) {
    double start = 0;
    RequireFiniteNumbers(it.Ask(KESTO_NAMED(GetRoadMileage), it.OrNull(&start)));
}

void AskPosition(CallRun& it) {
    const double mileage = it.in.Number(), offset = it.in.Number(), angle = it.in.Number();
    const std::int32_t occurrence = it.in.Whole();
    Place out;
    if (it.Ask(KESTO_NAMED(GetPositionAndAzimuth), mileage, offset, angle, &out.a, it.OrNull(&out.b), &out.c,
               occurrence)) {
        RequireFiniteNumbers(out.a, out.b, out.c);
    }
}

/// The index must find the place that a walk along all elements finds, to the bit.
void RequireSameAsWalk(RoadDesign& road, kesto::Point point, const kesto::Stretch& stretch) {
    const kesto::Candidate indexed = kesto::NearestOnRoad(road, point, stretch);
    const kesto::Candidate walked = kesto::WalkElements(road, point, stretch);
    Require(indexed.element == walked.element && SameBits(indexed.mileage, walked.mileage) &&
                SameBits(indexed.offset, walked.offset) && SameBits(indexed.continuous, walked.continuous),
            "the index finds what the walk finds");
}

void AskFoot(CallRun& it) {
    const double x = it.in.Number() + 1000, y = it.in.Number() * 4 + 2000;
    const bool nearOrigin = it.in.Byte() % 2 == 0;
    const kesto::Point point = nearOrigin ? kesto::Point{x - 1000, y - 2000} : kesto::Point{x, y};
    Place out;
    if (it.Ask(KESTO_NAMED(GetMileageAndOffset), point.x, point.y, &out.a, it.OrNull(&out.b), &out.k)) {
        RequireFiniteNumbers(out.a, out.b);
        Require(out.k >= 0, "the mileage of a foot has an occurrence");
    }
    if (it.Road() == nullptr || !UpdateData(it.Road()) || !std::isfinite(x) || !std::isfinite(y)) return;
    ++it.Slot().edits;
    const double start = it.Road()->settings.startMileage;
    RequireSameAsWalk(*it.Road(), point, {start, start + it.Road()->totalLength});
}

void AskFootBetween(CallRun& it) {
    const double x = it.in.Number(), y = it.in.Number(), lower = it.in.Number(), upper = it.in.Number();
    const std::int32_t lowerOccurrence = it.in.Whole(), upperOccurrence = it.in.Whole();
    Place first, second;
    for (Place* out : {&first, &second}) {
        if (it.Ask(KESTO_NAMED(GetMileAndOffsetInLim), x, y, lower, lowerOccurrence, upper, upperOccurrence, &out->a,
                   &out->b, &out->k)) {
            RequireFiniteNumbers(out->a, out->b);
        }
    }
    Require(SameBits(first, second), "a question asked twice has one answer");
}

void AskStakeNearby(CallRun& it) {
    const double x = it.in.Number(), y = it.in.Number();
    StakeCoordinate stake{};
    std::int32_t occurrence = 0;
    it.Ask(KESTO_NAMED(GetNearbyStakeCoordinate), x, y, it.OrNull(&stake), &occurrence);
}

void Design(CallRun& it) {
    constexpr std::int32_t manyStakes = 30000;
    it.Edit(KESTO_NAMED(DesignRoad));
    const std::int32_t count = it.Ask(KESTO_NAMED(GetStakeCoordinateCount));
    Require(count >= 0 && count < manyStakes, "the interval keeps the list of stakes short");
}

void AskStake(CallRun& it) {
    const std::int32_t count = it.Ask(KESTO_NAMED(GetStakeCoordinateCount));
    const std::int32_t index = it.in.Index(count);
    StakeCoordinate stake{};
    StakeCoordinate* const given = it.OrNull(&stake);
    Require(it.Ask(KESTO_NAMED(GetStakeCoordinate), index, given) == (given != nullptr && index >= 0 && index < count),
            "a stake is read by its index");
}

void AskHeight(CallRun& it) {
    const double mileage = it.in.Number();
    const std::int32_t occurrence = it.in.Whole();
    const double offset = it.in.Number();
    Place out;
    if (it.Ask(KESTO_NAMED(GetHeight), mileage, occurrence, offset, it.OrNull(&out.a))) RequireFiniteNumbers(out.a);
}

}  // namespace

const CallGroup queryCalls{
    AskIntersectionIndex,
    AskElement,
    AskEase,
    AskContinuous,
    AskRoadMileage,
    AskPosition,
    AskFoot,
    AskFootBetween,
    AskStakeNearby,
    [](CallRun& it) { it.Edit(KESTO_NAMED(UpdateData)); },
    Design,
    AskStake,
    AskHeight,
};

}  // namespace kesto::fuzz
