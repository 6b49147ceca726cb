#include "calls/samples.hpp"

#include <algorithm>
#include <cstring>
#include <set>

#include "support/ready_roads.hpp"
#include "support/temporary_folder.hpp"

namespace kesto::test {

namespace {

constexpr std::uint8_t mark = 0xA5;       // fills outputs
constexpr std::int32_t arrayRoom = 8;     // records
constexpr std::int64_t textRoom = 32768;  // bytes

/// A value by the name that it has: of an argument ("Function.name"), of a record's field ("Record.name"), or anywhere.
struct Sample {
    std::string_view name;
    double value;
    double growth = 0;  // from one row to the next
};

constexpr Sample samples[] = {
    // What a name means wherever it stands: metres, degrees, per cent.
    {"mileage", 130},
    {"x", 1065, 3},
    {"y", 2110, 5},
    {"offset", 1},
    {"angle", 90},
    {"azimuth", 60},
    {"interval", 25},
    {"distance", 10},
    {"lower", 10},
    {"upper", 400},
    {"startMileage", 20},
    {"endMileage", 400},
    {"startRadius", 0},
    {"endRadius", 200},
    {"radius", 200},
    {"length", 50},
    {"width", 3},
    {"crossSlope", 2},
    {"values", 3, 1},
    {"flags", 1},
    {"count", 2},
    {"side", 1},
    {"kind", 1},
    {"type", 1},
    {"mode", 1},
    {"capacity", textRoom},
    // What is added stands behind what there is.
    {"BrokenChain.backMileage", 5000, 10},
    {"BrokenChain.aheadMileage", 5020, 10},
    {"VerticalCurve.mileage", 5000, 100},
    {"VerticalCurve.radius", 500},
    {"GetSrcMileage.mileage", 350},  // behind a broken chain
    {"GetRecordLine.list", KESTO_LIST_BROKEN_CHAINS},
};

const test::TemporaryFolder& Folder() {
    static const test::TemporaryFolder folder("kesto_calls_");
    return folder;
}

const Sample* Find(const std::string& name) {
    const auto* const found = std::ranges::find(samples, name, &Sample::name);
    return found == std::end(samples) ? nullptr : found;
}

/// The text of a project file of the sample road.
const std::string& ProjectText() {
    static const std::string text = [] {
        std::string bytes(textRoom, '\0');
        std::int64_t size = 0;
        SaveProjectToMemory(SampleRoad(), bytes.data(), textRoom, &size);
        return bytes.substr(0, static_cast<std::size_t>(size));
    }();
    return text;
}

std::string SampleText(const Call& call, const Parameter& parameter) {
    if (parameter.name == "bytes") return ProjectText();
    if (parameter.name == "path") {
        const std::string extension = call.name.find("Water") != std::string_view::npos ? ".watx"
                                      : call.name.find("XML") != std::string_view::npos ? ".xml"
                                                                                        : ".road";
        return SamplePath((call.effect == Effect::Edits ? "source" : "saved") + extension);
    }
    if (call.name == "ParseStake") return "+K0+130.000";
    return "a text that is longer than any short string";
}

void FillColumn(const Call& call, std::size_t place, std::size_t rows, std::vector<Argument>& arguments) {
    const Parameter& parameter = call.parameters[place];
    Argument& argument = arguments[place];
    if (call.Find(parameter.name + "Step") > 0) {
        arguments[static_cast<std::size_t>(call.Find(parameter.name + "Step"))].whole =
            static_cast<std::int64_t>(parameter.size);
    }
    FillWithSamples(std::string(call.name), parameter, rows, argument);
}

}  // namespace

std::string SamplePath(const std::string& name) {
    const std::string path = Folder().At(name);
    static std::set<std::string> written;
    if (!name.starts_with("source.") || !written.insert(name).second) return path;
    if (name == "source.road") SaveProject(SampleRoad(), path.c_str());
    if (name == "source.watx") SaveWaterProject(SampleRoad(), path.c_str());
    return path;
}

Road SampleRoad() {
    constexpr std::string_view doubtful = "0 100 0 K\n\nBrokenChain\n8 9x\n";  // the report of its reading stays
    Road road;
    OpenProjectFromMemory(road, doubtful.data(), static_cast<std::int64_t>(doubtful.size()));
    DeleteBrokenChain(road, 0);
    AddIntersections(road);
    AddPoints(road, 2);
    MakeReady(road, 1);
    return road;
}

double SampleOf(const std::string& owner, const std::string& name, std::size_t row) {
    const Sample* found = Find(owner + "." + name);
    if (found == nullptr) found = Find(name);
    return found == nullptr ? 0 : found->value + found->growth * static_cast<double>(row);
}

void FillWithSamples(const std::string& function, const Parameter& parameter, std::size_t rows, Argument& argument) {
    argument.memory.assign(parameter.size * rows, parameter.isRead ? 0 : mark);
    for (std::size_t row = 0; parameter.isRead && row < rows; ++row) {
        std::uint8_t* const record = argument.memory.data() + row * parameter.size;
        for (const Field& field : parameter.fields) {
            const double value = SampleOf(parameter.record.empty() ? function : parameter.record, field.name, row);
            const auto whole = static_cast<std::int32_t>(value);
            if (field.kind == FieldKind::Number) std::memcpy(record + field.offset, &value, sizeof value);
            if (field.kind == FieldKind::Whole) std::memcpy(record + field.offset, &whole, sizeof whole);
        }
    }
}

std::vector<Argument> SampleArguments(const Call& call) {
    std::vector<Argument> arguments(call.parameters.size());
    const auto valueOf = [&](const Parameter& it) { return SampleOf(std::string(call.name), it.name, 0); };
    const int counted = call.Find("count"), sized = call.Find("capacity");
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Parameter& parameter = call.parameters[i];
        Argument& argument = arguments[i];
        switch (parameter.kind) {
            case ParameterKind::Handle: break;
            case ParameterKind::Number: argument.number = valueOf(parameter); break;
            case ParameterKind::Whole:
            case ParameterKind::Size:
                if (!parameter.name.ends_with("Step")) argument.whole = static_cast<std::int64_t>(valueOf(parameter));
                break;
            case ParameterKind::Text: {
                const std::string text = SampleText(call, parameter);
                const int size = call.Find("size");
                if (size > 0) arguments[static_cast<std::size_t>(size)].whole = static_cast<std::int64_t>(text.size());
                argument.memory.assign(text.c_str(), text.c_str() + text.size() + (size > 0 ? 0 : 1));
                break;
            }
            case ParameterKind::Array:
                argument.count = parameter.isRead ? static_cast<std::int32_t>(SampleOf("", "count", 0)) : 0;
                argument.capacity = arrayRoom;
                FillWithSamples(std::string(call.name), parameter,
                                static_cast<std::size_t>(parameter.isRead ? argument.count : arrayRoom), argument);
                break;
            case ParameterKind::Memory: {
                const bool isText = parameter.fields[0].kind == FieldKind::Text && sized > 0;
                const double rows = isText        ? SampleOf(std::string(call.name), "capacity", 0)
                                    : counted > 0 ? SampleOf(std::string(call.name), "count", 0)
                                                  : 1;
                FillColumn(call, i, static_cast<std::size_t>(rows), arguments);
                break;
            }
        }
    }
    return arguments;
}

std::string Stored(RoadDesign* road) {
    constexpr std::int64_t mostRecords = 100;  // some functions answer for any index
    std::string bytes;
    for (const Call& call : Calls()) {
        const bool isPlain = std::ranges::all_of(call.parameters, [](const Parameter& it) {
            return it.kind == ParameterKind::Handle || it.name == "side" || it.name == "kind" || it.name == "index" ||
                   (it.IsPointer() && !it.isRead);
        });
        if (call.effect != Effect::Answers || !isPlain || !call.name.starts_with("Get") ||
            call.name == "GetLastFailure") {
            continue;
        }
        const std::vector<Argument> sample = SampleArguments(call);
        const auto ask = [&](std::int64_t side, std::int64_t kind, std::int64_t index) {
            std::vector<Argument> arguments = sample;
            for (const auto& [name, value] : {std::pair("side", side), {"kind", kind}, {"index", index}}) {
                const int place = call.Find(name);
                if (place > 0) arguments[static_cast<std::size_t>(place)].whole = value;
            }
            const Outcome outcome = call.run(road, arguments);
            bytes += std::to_string(outcome.number) + BytesOf(arguments);
            return !outcome.failed;
        };
        for (std::int64_t side = 0; side <= (call.Find("side") > 0 ? 1 : 0); ++side) {
            for (std::int64_t kind = 0; kind <= (call.Find("kind") > 0 ? 1 : 0); ++kind) {
                std::int64_t index = 0;
                while (ask(side, kind, index) && call.Find("index") > 0 && index < mostRecords) ++index;
            }
        }
    }
    return bytes + GetMakeStakePerfix(road);
}

}  // namespace kesto::test
