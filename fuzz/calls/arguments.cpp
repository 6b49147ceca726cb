// Bytes as the arguments of any call, by their types and names.

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "call_run.hpp"
#include "saved_road.hpp"
#include "support/temporary_folder.hpp"

namespace kesto::fuzz {

namespace {

using test::Field;
using test::FieldKind;
using test::ParameterKind;

constexpr std::uint8_t unwritten = 0xA5;  // fills outputs before a call: no status is 165
constexpr std::int32_t mostRows = 40;
constexpr std::size_t longestName = 300;  // characters: more than a file system takes

const test::TemporaryFolder& Folder() {
    static const test::TemporaryFolder folder("kesto_fuzz_");
    return folder;
}

/// A path in the folder: mostly one that other calls use too, else a name of any bytes, the folder, or a missing one.
std::string PathFrom(Bytes& in) {
    const std::uint8_t kind = in.Byte();
    switch (kind < 200 ? kind % 4 : kind) {
        case 0: return Folder().At("road.road");
        case 1: return Folder().At("road.watx");
        case 2: return Folder().At("other.ROAD");
        case 3: return Folder().At("road.xml");
        case 200: return Folder().At("");
        case 201: return Folder().At("missing/road.road");
        case 202: return Folder().At(std::string(longestName, 'x'));
        case 203: return Folder().At("missing.road");
        default: break;
    }
    std::string name = in.Text();
    name.insert(name.begin(), 'x');  // never the folder's parent
    std::replace(name.begin(), name.end(), '/', '_');
    std::replace(name.begin(), name.end(), '\0', '_');
    return Folder().At(name + (kind % 2 == 0 ? ".road" : ""));
}

/// The road's own project text, with some bytes changed.
std::string ProjectTextFrom(Bytes& in, RoadDesign* road) {
    std::string text = road == nullptr ? std::string() : SavedText(road);
    if (text.empty()) text = "0 50 0 K\n\nElement\n";
    for (int changes = in.Byte() % 4; changes > 0; --changes) {
        const std::size_t at = in.Raw<std::uint16_t>() % text.size();
        text[at] = static_cast<char>(in.Byte());
    }
    return text;
}

/// Mostly characters that mileages are written with.
std::string MileageTextFrom(Bytes& in) {
    constexpr std::string_view characters = "01234567890123456789+-.K";
    if (in.Rarely()) return in.Text();
    std::string text(in.Byte() % 12U, '\0');
    for (char& character : text) character = characters[in.Byte() % characters.size()];
    return text;
}

template <class Value>
void Put(std::uint8_t* place, const Field& field, Value value) {
    std::memcpy(place + field.offset, &value, std::min(sizeof value, field.size));
}

void FillRecord(Bytes& in, const Parameter& parameter, std::uint8_t* record) {
    for (const Field& field : parameter.fields) {
        switch (field.kind) {
            case FieldKind::Number: Put(record, field, in.Number()); break;
            case FieldKind::Whole: Put(record, field, in.Whole()); break;
            case FieldKind::Size: Put(record, field, std::int64_t{in.Whole()}); break;
            case FieldKind::Byte: Put(record, field, in.Byte()); break;
            case FieldKind::Bytes: break;
            case FieldKind::Text: {  // which need not end within its field
                const std::string text = in.Text();
                std::memcpy(record + field.offset, text.data(), std::min(text.size(), field.size));
            }
        }
    }
}

/// Rows of one value each: some numbers, each a start of a row of evenly spaced ones.
void FillColumn(Bytes& in, const Field& field, std::int32_t rows, std::ptrdiff_t step, std::uint8_t* first) {
    constexpr std::int32_t stretch = 8;
    double number = 0, growth = 0;
    for (std::int32_t i = 0; i < rows; ++i) {
        if (field.kind == FieldKind::Number) {
            if (i % stretch == 0) number = in.Number(), growth = in.Byte() * 0.4;
            Put(first + step * i, field, number + growth * (i % stretch));
        } else {
            Put(first + step * i, field, i % 4 == 0 ? in.Whole() : 0);
        }
    }
}

/// Rows in memory of just their size. Columns with a step have any step and alignment.
void FillRows(Bytes& in, const Parameter& parameter, std::int32_t rows, Argument& argument, Argument* stepOf) {
    const auto size = static_cast<std::int32_t>(parameter.size);
    std::int32_t step = size;
    if (stepOf != nullptr) {
        const std::uint8_t kind = in.Byte();
        if (kind >= 128) step = static_cast<std::int32_t>(kind % 64) - 32;
        // Or rows would overwrite each other.
        if (parameter.isWritten && std::abs(step) < size) step = step < 0 ? -size : size;
        argument.begin = kind % 2;
        stepOf->whole = step;
    }
    const auto span = static_cast<std::size_t>(std::abs(step)) * static_cast<std::size_t>(std::max(rows - 1, 0));
    argument.memory.assign(rows > 0 ? span + parameter.size + argument.begin : argument.begin, unwritten);
    if (step < 0) argument.begin += span;
    if (!parameter.isRead || rows <= 0) return;
    std::uint8_t* const first = argument.memory.data() + argument.begin;
    if (parameter.record.empty() && rows > 1) return FillColumn(in, parameter.fields[0], rows, step, first);
    std::fill(argument.memory.begin(), argument.memory.end(), std::uint8_t{0});
    for (std::int32_t row = 0; row < rows; ++row) FillRecord(in, parameter, first + std::ptrdiff_t{step} * row);
}

/// An array: to be read with mostly one value for each plate of the side, to be written with mostly room enough.
void FillArray(Bytes& in, const Call& call, RoadDesign* road, std::size_t place, std::vector<Argument>& arguments) {
    constexpr std::int32_t usualRoom = 12;
    const int side = call.Find("side");
    const std::int32_t plates =
        side > 0 ? GetStandardSectionPlateCount(
                       road, static_cast<std::int32_t>(arguments[static_cast<std::size_t>(side)].whole))
                 : usualRoom;
    Argument& argument = arguments[place];
    const std::int32_t rows = in.Rarely() ? in.Byte() % 5 : call.parameters[place].isRead ? plates : usualRoom;
    argument.count = call.parameters[place].isRead ? rows : -3;
    argument.capacity = rows;
    FillRows(in, call.parameters[place], rows, argument, nullptr);
}

std::int64_t WholeFrom(Bytes& in, const Call& call, const Parameter& parameter, RoadDesign* road,
                       const std::vector<Argument>& arguments) {
    const int side = call.Find("side");
    const bool isOfPlates = call.Find("values") > 0 && side > 0;
    if (parameter.name == "index") return in.Index(CountFor(call, road, arguments));
    if (parameter.name == "status") return in.Index(mostRows);
    if (parameter.name == "count" && isOfPlates && !in.Rarely()) {
        return GetStandardSectionPlateCount(road,
                                            static_cast<std::int32_t>(arguments[static_cast<std::size_t>(side)].whole));
    }
    if (parameter.name == "count") {
        const std::uint8_t byte = in.Byte();
        return byte == 0xFF ? -1 : byte % (mostRows + 1);
    }
    if (parameter.name == "capacity") return in.Rarely() ? in.Byte() % 8 : 32768;
    return in.Whole();
}

}  // namespace

std::vector<Argument> ArgumentsFrom(Bytes& in, const Call& call, RoadDesign* road) {
    std::vector<Argument> arguments(call.parameters.size());
    const auto at = [&](const std::string& name) {
        return call.Find(name) < 0 ? nullptr : &arguments[static_cast<std::size_t>(call.Find(name))];
    };
    const auto plain = [](const Parameter& it) { return !it.IsPointer() && !it.name.ends_with("Step"); };
    // Plain values first: sizes of memory, and the lists that an index is one of, follow from them.
    for (const bool isIndex : {false, true}) {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const Parameter& parameter = call.parameters[i];
            const bool isLater = parameter.name == "index" || parameter.name == "count";
            if (!plain(parameter) || parameter.kind == ParameterKind::Handle || isLater != isIndex) continue;
            if (parameter.kind == ParameterKind::Number) {
                arguments[i].number = in.Number();
            } else {
                arguments[i].whole = WholeFrom(in, call, parameter, road, arguments);
            }
        }
    }
    const Argument* const count = at("count");
    const Argument* const capacity = at("capacity");
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Parameter& parameter = call.parameters[i];
        Argument& argument = arguments[i];
        if (!parameter.IsPointer()) continue;
        argument.isNull = in.Rarely();
        if (parameter.kind == ParameterKind::Text) {
            Argument* const size = at("size");
            const std::string text = parameter.name == "path"   ? PathFrom(in)
                                     : size != nullptr          ? ProjectTextFrom(in, road)
                                     : parameter.name == "text" ? MileageTextFrom(in)
                                                                : in.Text();
            if (size != nullptr) size->whole = in.Rarely() ? -1 : static_cast<std::int64_t>(text.size());
            argument.memory.assign(text.c_str(), text.c_str() + text.size() + (size != nullptr ? 0 : 1));
        } else if (parameter.kind == ParameterKind::Array) {
            FillArray(in, call, road, i, arguments);
        } else {
            const bool isText = capacity != nullptr && parameter.fields[0].kind == FieldKind::Text;
            const std::int64_t rows = isText ? capacity->whole : count != nullptr ? count->whole : 1;
            FillRows(in, parameter, static_cast<std::int32_t>(rows), argument, at(parameter.name + "Step"));
        }
    }
    return arguments;
}

void RemoveFiles() { Folder().Empty(); }

}  // namespace kesto::fuzz
