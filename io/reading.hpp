/// What the sections of a project file are read into, and what they hand on to each other.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "core/road_design.hpp"
#include "io/record_lines.hpp"

namespace kesto {

/// Undoes what building the chain does to the road. Records that are placed by their stake mileage build it, but a road
/// that is only read and saved again must still hold the elements and the start mileage that its file has.
class ChainAsRead {
public:
    explicit ChainAsRead(RoadDesign& read)
        : road(read),
          elements(read.elements),
          startMileage(read.settings.startMileage),
          totalLength(read.totalLength) {}
    ChainAsRead(const ChainAsRead&) = delete;
    ChainAsRead& operator=(const ChainAsRead&) = delete;
    ~ChainAsRead() {
        road.elements.Swap(elements);
        road.settings.startMileage = startMileage;
        road.totalLength = totalLength;
    }

private:
    RoadDesign& road;
    CountedList<Element> elements;
    double startMileage;  // m
    double totalLength;   // m
};

/// A file on its way into a road.
struct Reading {
    /// Continuous mileages (m) of a table's change sections in the order of the file; nothing for a refused one.
    using Places = std::vector<std::optional<double>>;

    /// Where a record of a list stands.
    struct PlacedLine {
        double order;  // what the list is sorted by; records of one order stand as they were read
        std::int32_t line;
    };

    RoadDesign& road;
    RecordLines& lines;
    std::map<ReadingReport::ListKey, std::vector<PlacedLine>> stored{};    // of each list that is read
    std::array<std::array<Places, changeKindCount>, sideCount> changes{};  // of the section read last: for its types
    std::map<ReadingReport::ListKey, ReadingFinding> untyped{};            // change sections whose types have not come
    std::optional<ChainAsRead> chain{};  // set while a chain may have been built for records that are placed by it

    /// The lines of a list's records, to which each one that is stored adds its own. To be called at their keyword.
    /// @param key see ReadingReport::ListKey
    std::vector<PlacedLine>& LinesOf(KestoList list, std::int32_t key = 0) {
        road.reading.sectionLines.try_emplace({list, key}, lines.LineNumber());
        return stored[{list, key}];
    }

    /// Counts a record as skipped and tells why it was refused; where another one holds its place, at which line.
    /// @param key   see ReadingReport::ListKey
    /// @param line  number of its first line
    /// @param order what its list is sorted by
    void Refuse(ReadingReport::ListKey key, std::int32_t line, const Failure& why, double order);

    /// Hands on what is known when the whole file has been read.
    void Finish();

    /// To be called before such records are read.
    void KeepChain() {
        if (!chain) chain.emplace(road);
    }
    /// To be called before the alignment is read on.
    void ReleaseChain() noexcept { chain.reset(); }
};

}  // namespace kesto
