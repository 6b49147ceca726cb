// The calls of a road's life and of its settings.

#include "call_run.hpp"
#include "support/ready_roads.hpp"

namespace kesto::fuzz {

namespace {

void UseRoad(CallRun& it) { it.current = it.in.Byte() % it.roads.size(); }

void Ready(CallRun& it) {
    ++it.Slot().edits;
    test::MakeReady(it.Road(), it.in.Byte() % test::readyRoads);
}

void Start(CallRun& it) {
    if (it.Road() == nullptr) it.Slot().road = KESTO_NAMED(StartRoadDesign)();
}

void End(CallRun& it) {
    ++it.Slot().edits;
    KESTO_NAMED(EndRoadDesign)(it.Road());
    it.Slot().road = nullptr;
}

void Clear(CallRun& it) {
    it.Edit(KESTO_NAMED(ClearRoad));
    Failure failure;
    Require(!GetLastFailure(it.Road(), &failure), "a cleared road has no failure");
    Require(GetElementCount(it.Road()) == 0 && GetStakeCoordinateCount(it.Road()) == 0, "a cleared road is empty");
}

void AskFailure(CallRun& it) {
    Failure failure{};
    const bool told = KESTO_NAMED(GetLastFailure)(it.Road(), it.OrNull(&failure));
    if (told) RequireSensible(failure);
}

void Describe(CallRun& it) {
    Require(KESTO_NAMED(DescribeStatus)(it.in.Index(40)) != nullptr, "a status always has a text");
    Require(KESTO_NAMED(KestoRoadVersion)() != nullptr, "the version is a text");
}

void SetStart(CallRun& it) {
    const double x = it.in.Number(), y = it.in.Number(), azimuth = it.in.Number();
    it.Edit(KESTO_NAMED(SetStartInformation), x, y, azimuth);
}

void SetPrefix(CallRun& it) {
    const std::string prefix = it.in.Text();
    it.Edit(KESTO_NAMED(SetMakeStakePerfix), it.OrNull(prefix.c_str()));
}

void AskPrefix(CallRun& it) {
    const char* const prefix = it.Ask(KESTO_NAMED(GetMakeStakePerfix));
    Require((prefix == nullptr) == (it.Road() == nullptr), "every road has a prefix");
    if (prefix != nullptr) static_cast<void>(std::strlen(prefix));
}

void AskStakeInfo(CallRun& it) {
    double interval = 1;
    it.Ask(KESTO_NAMED(GetMakeStakeInfo), it.OrNull(&interval));
    Require(interval >= 1, "the interval is at least 1");
}

/// Sets a mode and requires that it can be read.
template <class Set, class Get>
void StoreMode(CallRun& it, const Named<Set>& set, const Named<Get>& get) {
    const std::int32_t mode = it.in.Whole();
    it.Edit(set, mode);
    Require(it.Ask(get) == (it.Road() == nullptr ? 0 : mode), "a mode is stored");
}

}  // namespace

const CallGroup settingsCalls{
    UseRoad,
    Ready,
    Start,
    End,
    Clear,
    AskFailure,
    Describe,
    SetStart,
    [](CallRun& it) { it.Edit(KESTO_NAMED(SetStartMileage), it.in.Number()); },
    [](CallRun& it) { it.Edit(KESTO_NAMED(SetMileageInterval), it.in.Number()); },
    [](CallRun& it) { it.Edit(KESTO_NAMED(SetMakeStakeType), it.in.Whole()); },
    SetPrefix,
    AskPrefix,
    AskStakeInfo,
    [](CallRun& it) { StoreMode(it, KESTO_NAMED(SetRoadDesignMode), KESTO_NAMED(GetRoadDesignMode)); },
    [](CallRun& it) { StoreMode(it, KESTO_NAMED(SetVerticalCurveMode), KESTO_NAMED(GetVerticalCurveMode)); },
    [](CallRun& it) { StoreMode(it, KESTO_NAMED(SetSideSlopeMode), KESTO_NAMED(GetSideSlopeMode)); },
    [](CallRun& it) { StoreMode(it, KESTO_NAMED(SetSectionMode), KESTO_NAMED(GetSectionMode)); },
};

}  // namespace kesto::fuzz
