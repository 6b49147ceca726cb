/// Sections whose lines are the records of one list.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/record_lists.hpp"
#include "core/road_design.hpp"
#include "io/section.hpp"

namespace kesto {

/// What the records of one list share. New() is a record that nothing has been read into yet; Insert() adds a record as
/// the list's exported function does, and Order() is what the list is sorted by.
template <class Kind, ListMember<Kind> listMember>
struct ListedRecord {
    using Record = Kind;
    static constexpr ListMember<Kind> member = listMember;
    static Record New() noexcept { return {}; }
    static double Order(const Record&) noexcept { return 0; }  // as they were read
    static Outcome Insert(RoadDesign& road, const Record& record) {
        (road.*member).Insert(Stored(record));
        return {};
    }
};

template <class Line>
bool HasRecords(RoadDesign& road) noexcept {
    return (road.*Line::member).Count() > 0;
}

template <class Line>
void WriteRecords(RoadDesign& road, LineWriter& lines) {
    for (const auto& record : (road.*Line::member).Records()) {
        Line::Fields(lines, record);
        lines.End();
    }
}

template <class Line>
void ReadRecords(Reading& reading) {
    constexpr KestoList list = listOf<typename Line::Record>;
    const LineShape shape = ShapeOf<Line>();
    (reading.road.*Line::member).Reserve(reading.lines.MostRecords(shape));
    std::vector<Reading::PlacedLine>& placed = reading.LinesOf(list);
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        typename Line::Record record = Line::New();
        if (!reading.lines.Parse<Line>(shape, *line, record)) {
            reading.lines.Skip(list);
        } else if (const Outcome stored = Line::Insert(reading.road, record); !stored) {
            reading.Refuse({list, 0}, reading.lines.LineNumber(), stored.failure(), Line::Order(record));
        } else {
            placed.push_back({Line::Order(record), reading.lines.LineNumber()});
        }
    }
}

}  // namespace kesto
