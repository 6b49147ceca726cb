// The calls of a road's life and of its settings.

#include "ready_roads.hpp"
#include "session.hpp"

namespace kesto::fuzz {

namespace {

void UseRoad(Session& it) { it.current = it.in.Byte() % it.roads.size(); }

void Ready(Session& it) {
    ++it.Slot().edits;
    MakeReady(it.Road(), it.in.Byte() % readyRoads);
}

void Start(Session& it) {
    if (it.Road() == nullptr) it.Slot().road = KESTO_NAMED(StartRoadDesign)();
}

/// Frozen copies live on.
void End(Session& it) {
    ++it.Slot().edits;
    KESTO_NAMED(EndRoadDesign)(it.Road());
    it.Slot().road = nullptr;
}

void Clear(Session& it) {
    it.Edit(KESTO_NAMED(ClearRoad));
    Failure failure;
    Require(!GetLastFailure(it.Road(), &failure), "a cleared road has no failure");
    Require(GetElementCount(it.Road()) == 0 && GetStakeCoordinateCount(it.Road()) == 0, "a cleared road is empty");
}

void AskFailure(Session& it) {
    Failure failure{};
    const bool told = KESTO_NAMED(GetLastFailure)(it.Road(), it.OrNull(&failure));
    if (told) RequireSensible(failure);
}

void Describe(Session& it) {
    Require(KESTO_NAMED(DescribeStatus)(it.in.Index(40)) != nullptr, "a status always has a text");
    Require(KESTO_NAMED(KestoRoadVersion)() != nullptr, "the version is a text");
}

void SetStart(Session& it) {
    const double x = it.in.Number(), y = it.in.Number(), azimuth = it.in.Number();
    it.Edit(KESTO_NAMED(SetStartInformation), x, y, azimuth);
}

void SetPrefix(Session& it) {
    const std::string prefix = it.in.Text();
    it.Edit(KESTO_NAMED(SetMakeStakePerfix), it.OrNull(prefix.c_str()));
}

void AskPrefix(Session& it) {
    const char* const prefix = it.Ask(KESTO_NAMED(GetMakeStakePerfix));
    Require((prefix == nullptr) == (it.Road() == nullptr), "every road has a prefix");
    if (prefix != nullptr) static_cast<void>(std::strlen(prefix));
}

void AskStakeInfo(Session& it) {
    double interval = 1;
    it.Ask(KESTO_NAMED(GetMakeStakeInfo), it.OrNull(&interval));
    Require(interval >= 1, "the interval is at least 1");
}

/// Sets a mode and requires that it can be read.
template <class Set, class Get>
void StoreMode(Session& it, const Named<Set>& set, const Named<Get>& get) {
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
    [](Session& it) { it.Edit(KESTO_NAMED(SetStartMileage), it.in.Number()); },
    [](Session& it) { it.Edit(KESTO_NAMED(SetMileageInterval), it.in.Number()); },
    [](Session& it) { it.Edit(KESTO_NAMED(SetMakeStakeType), it.in.Whole()); },
    SetPrefix,
    AskPrefix,
    AskStakeInfo,
    [](Session& it) { StoreMode(it, KESTO_NAMED(SetRoadDesignMode), KESTO_NAMED(GetRoadDesignMode)); },
    [](Session& it) { StoreMode(it, KESTO_NAMED(SetVerticalCurveMode), KESTO_NAMED(GetVerticalCurveMode)); },
    [](Session& it) { StoreMode(it, KESTO_NAMED(SetSideSlopeMode), KESTO_NAMED(GetSideSlopeMode)); },
    [](Session& it) { StoreMode(it, KESTO_NAMED(SetSectionMode), KESTO_NAMED(GetSectionMode)); },
};

}  // namespace kesto::fuzz
