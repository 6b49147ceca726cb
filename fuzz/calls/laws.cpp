#include "laws.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

#include "alignment/inverse_index.hpp"
#include "calls/samples.hpp"
#include "require.hpp"

namespace kesto::fuzz {

namespace {

using test::BytesOf;
using test::Effect;
using test::Field;
using test::FieldKind;
using test::Gives;
using test::ParameterKind;

std::optional<Failure> LastFailureOf(RoadDesign* road) {
    Failure failure;
    if (!GetLastFailure(road, &failure)) return std::nullopt;
    return failure;
}

bool Same(const std::optional<Failure>& one, const std::optional<Failure>& other) {
    return one.has_value() == other.has_value() && (!one || std::memcmp(&*one, &*other, sizeof *one) == 0);
}

void RequireReason(const Call& call, RoadDesign* road, const Before& before, const Outcome& outcome) {
    const std::optional<Failure> after = LastFailureOf(road);
    if (after) {
        Require(after->status != KESTO_INTERNAL_ERROR, "no fault of the library itself");
        Require(after->status != KESTO_OUT_OF_MEMORY && after->status != KESTO_FILE_OUT_OF_MEMORY,
                "small roads need little memory");
        Require(std::string_view(DescribeStatus(after->status)) != "unknown status", "every status has a sentence");
    }
    if (call.name == "GetLastFailure") return;
    if (call.gives == Gives::Success && outcome.failed) Require(after.has_value(), "a failed call leaves its reason");
    if (call.gives == Gives::Success && !outcome.failed) {
        Require(Same(before.failure, after), "a successful call leaves the last failure as it is");
    }
    if (call.gives == Gives::Status && outcome.failed) {
        Require(after && after->status == outcome.number, "the status of a file call is that of the last failure");
    }
}

/// Records are added, deleted and read by their count.
void RequireCounted(const Call& call, RoadDesign* road, const Before& before, const Outcome& outcome,
                    const std::vector<Argument>& arguments) {
    if (CountCallOf(call) == nullptr) return;
    const std::int32_t change = CountFor(call, road, arguments) - before.count;
    const int given = call.Find("count");
    if (outcome.failed || call.effect == Effect::Answers) {
        Require(change == 0, "a call that fails or answers leaves the list as it is");
    } else if (call.name.starts_with("Add") && given > 0 && call.Find("values") < 0) {
        const std::int64_t most = std::max<std::int64_t>(arguments[static_cast<std::size_t>(given)].whole, 0);
        Require(change <= most, "added records count");
    } else {
        const int more = call.name.starts_with("Add") ? 1 : call.name.starts_with("Del") ? -1 : 0;
        Require(change == more, "an added record counts, a deleted one is gone");
    }
    if (call.parameters.size() != 3 || call.parameters[1].name != "index") return;
    const bool isThere = arguments[1].whole >= 0 && arguments[1].whole < before.count && !arguments[2].isNull;
    if (call.effect == Effect::Answers) Require(outcome.failed != isThere, "a record is read by its index");
}

/// What is found is finite. What is stored is what was given.
void RequireFinite(const Call& call, const std::vector<Argument>& arguments) {
    bool isFound = false;
    for (const Parameter& parameter : call.parameters) isFound = isFound || parameter.kind == ParameterKind::Number;
    for (std::size_t i = 0; isFound && i < arguments.size() && call.Find("count") < 0; ++i) {
        const Parameter& parameter = call.parameters[i];
        if (!parameter.isWritten || parameter.kind != ParameterKind::Memory || arguments[i].isNull) continue;
        for (const Field& field : parameter.fields) {
            double number = 0;
            if (field.kind != FieldKind::Number) continue;
            std::memcpy(&number, arguments[i].memory.data() + field.offset, sizeof number);
            Require(std::isfinite(number), "what is found is finite");
        }
    }
}

/// A setting can be read.
void RequireStored(const Call& call, RoadDesign* road, const std::vector<Argument>& arguments) {
    if (!call.name.ends_with("Mode") || call.effect != Effect::Edits) return;
    const Call& get = test::CallNamed("Get" + std::string(call.name.substr(3)));
    std::vector<Argument> none(1);
    Require(get.run(road, none).number == static_cast<double>(arguments[1].whole), "a mode is stored");
}

/// What is saved of a part is a road that can be built. It has the settings of the whole, a wrong stake type as well,
/// so not every one can be designed.
void RequirePart(const Call& call, const Outcome& outcome, const std::vector<Argument>& arguments) {
    if (call.name != "SavePartProject" || outcome.failed) return;
    std::string path(reinterpret_cast<const char*>(arguments[1].memory.data()));
    if (!path.ends_with(".road")) return;  // its extension is made by the library
    const test::Road part;
    Require(OpenProject(part, path.c_str()) == KESTO_SUCCESS && UpdateData(part), "a part that was saved can be built");
}

/// Every finding of a reading has a line and a reason, they stand in order, and so do the lines of elements.
void RequireFindings(const Call& call, RoadDesign* road) {
    constexpr std::int32_t mostKept = 1000;
    if (!call.name.starts_with("Open")) return;
    ReadingFinding finding{};
    std::int32_t before = 0, index = 0, line = 0;
    for (; GetReadingFinding(road, index, &finding); ++index) {
        Require(finding.line >= before && finding.line > 0 && finding.reason > 0, "findings stand in order");
        before = finding.line;
    }
    Require(index == std::min(GetReadingFindingCount(road), mostKept), "a thousand findings are kept");
    for (index = 0, before = 0; GetRecordLine(road, KESTO_LIST_ELEMENTS, 0, index, &line); ++index) {
        Require(line > before, "elements stand as in the file");
        before = line;
    }
}

// ----------------------------------------------------------------------------------------------------------- answers

Argument& Named(const Call& call, std::vector<Argument>& arguments, const std::string& name) {
    return arguments[static_cast<std::size_t>(call.Find(name))];
}

/// The memory of a row in a column.
const std::uint8_t* RowOf(const Argument& column, std::int64_t step, std::int64_t row) {
    return column.memory.data() + static_cast<std::ptrdiff_t>(column.begin) + step * row;
}

/// Each row of a batch is what the function for one point answers: its columns bear the names of that one's arguments.
void RequireRows(const Call& batch, RoadDesign* road, const Outcome& outcome, std::vector<Argument> columns,
                 std::vector<Argument> before) {
    if (outcome.failed) return Require(BytesOf(columns) == BytesOf(before), "a batch that fails writes nothing");
    const Call& one = test::CallNamed(batch.name.substr(0, batch.name.size() - std::string_view("Batch").size()));
    for (std::int64_t row = 0; row < Named(batch, columns, "count").whole; ++row) {
        std::vector<Argument> arguments(one.parameters.size());
        for (std::size_t i = 1; i < arguments.size(); ++i) {
            const Parameter& parameter = one.parameters[i];
            const Argument& column = Named(batch, before, parameter.name);
            const std::int64_t step = Named(batch, before, parameter.name + "Step").whole;
            if (parameter.IsPointer()) {
                arguments[i].memory.assign(RowOf(column, step, row), RowOf(column, step, row) + parameter.size);
            } else if (parameter.kind == ParameterKind::Number) {
                constexpr double square = 90;  // degrees
                arguments[i].number = parameter.name == "angle" ? square : 0;
                if (!column.isNull) std::memcpy(&arguments[i].number, RowOf(column, step, row), sizeof(double));
            } else if (!column.isNull) {
                std::int32_t whole = 0;
                std::memcpy(&whole, RowOf(column, step, row), sizeof whole);
                arguments[i].whole = whole;
            }
        }
        const bool failed = one.run(road, arguments).failed;
        const std::int32_t status = failed ? LastFailureOf(road)->status : KESTO_SUCCESS;
        Require(*RowOf(Named(batch, columns, "status"), Named(batch, columns, "statusStep").whole, row) == status,
                "a row has the status of its question");
        for (std::size_t i = 1; i < arguments.size(); ++i) {
            const Parameter& parameter = one.parameters[i];
            if (!parameter.IsPointer()) continue;
            const std::uint8_t* const given =
                RowOf(Named(batch, columns, parameter.name), Named(batch, columns, parameter.name + "Step").whole, row);
            Require(std::memcmp(given, arguments[i].memory.data(), parameter.size) == 0,
                    "a row has the answer of its question");
        }
    }
}

/// The index must find the place that a walk along all elements finds, to the bit.
void RequireSameAsWalk(RoadDesign& road, const std::vector<Argument>& arguments) {
    const kesto::Point point{arguments[1].number, arguments[2].number};
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || road.totalLength == 0) return;
    const double start = road.settings.startMileage;
    const kesto::Stretch stretch{start, start + road.totalLength};
    const kesto::Candidate indexed = kesto::NearestOnRoad(road, point, stretch);
    const kesto::Candidate walked = kesto::WalkElements(road, point, stretch);
    const auto same = [](double one, double other) { return std::memcmp(&one, &other, sizeof one) == 0; };
    Require(indexed.element == walked.element && same(indexed.mileage, walked.mileage) &&
                same(indexed.offset, walked.offset) && same(indexed.continuous, walked.continuous),
            "the index finds what the walk finds");
}

}  // namespace

Before::Before(const Call& call, RoadDesign* road, const std::vector<Argument>& given)
    : failure(LastFailureOf(road)), arguments(given), count(CountFor(call, road, given)) {}

void RequireLaws(const Call& call, RoadDesign* road, const Before& before, const Outcome& outcome,
                 const std::vector<Argument>& arguments) {
    if (road == nullptr) {
        const double failing = call.gives == Gives::Status ? KESTO_NULL_HANDLE_OR_PATH : 0;
        Require(!call.HasHandle() || outcome.number == failing, "a null handle gives the failure value");
        Require(BytesOf(arguments) == BytesOf(before.arguments), "nothing is written for a null handle");
        return;
    }
    RequireReason(call, road, before, outcome);
    RequireCounted(call, road, before, outcome, arguments);
    if (!outcome.failed && call.effect == Effect::Answers) RequireFinite(call, arguments);
    RequireStored(call, road, arguments);
    RequirePart(call, outcome, arguments);
    RequireFindings(call, road);
    constexpr std::int32_t manyStakes = 30000;
    Require(GetStakeCoordinateCount(road) < manyStakes, "the interval keeps the list of stakes short");
}

void RequireOneAnswer(const Call& call, const RoadSlot& slot, const Before& before, const Outcome& outcome,
                      const std::vector<Argument>& arguments) {
    if (slot.road == nullptr || call.effect != Effect::Answers || call.Find("path") > 0) return;
    if (call.name == "GetLastFailure" || call.gives == Gives::Truth) return;  // of this very road
    for (RoadDesign* const road : {slot.road, slot.frozen}) {
        std::vector<Argument> again = before.arguments;
        if (road == nullptr) continue;
        Require(call.run(road, again) == outcome, "a question asked twice has one answer");
        Require(BytesOf(again) == BytesOf(arguments), "a question asked twice has one answer");
    }
    if (call.name.ends_with("Batch")) RequireRows(call, slot.road, outcome, arguments, before.arguments);
    if (call.name == "GetMileageAndOffset") RequireSameAsWalk(*slot.road, arguments);
}

void RequireFrozen(const Call& call, RoadDesign* frozen, std::vector<Argument> arguments) {
    if (frozen == nullptr || call.effect != Effect::Edits) return;
    const std::string before = test::Stored(frozen);
    const Outcome outcome = call.run(frozen, arguments);
    Require(outcome.failed || call.gives == Gives::None, "an edit of a frozen road fails");
    Require(test::Stored(frozen) == before, "a frozen road stays as it is");
}

}  // namespace kesto::fuzz
