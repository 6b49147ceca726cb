/// A project file as the library has read it: what the opening told of it, and its records with their lines.
#pragma once

#include <cstdint>
#include <vector>

#include "kesto_road/kesto_road.h"

namespace kesto::host {

/// A record with the line that it comes from.
template <class Record>
struct FromFile {
    Record record;
    std::int64_t line;
};

class OpenedFile {
public:
    static constexpr std::int32_t keyword = -1;  ///< in place of a record's index

    /// @param opened a road that a file has just been opened in; the design run is still to come, which cuts elements,
    ///               sorts grade-change points and may change the start mileage and the stake interval
    explicit OpenedFile(RoadDesign* opened);

    /// The findings of the opening that are kept, in the order of the file.
    [[nodiscard]] const std::vector<ReadingFinding>& Told() const noexcept { return told; }
    /// How many more there were.
    [[nodiscard]] std::int32_t UntoldCount() const noexcept { return untoldCount; }

    /// Line of a record by its key and index (or keyword), as GetRecordLine() takes them; 0 for one that was not read,
    /// and for one that is a line of another section, which its own has swallowed.
    [[nodiscard]] std::int64_t LineOf(KestoList list, std::int32_t key, std::int32_t index) const noexcept;
    /// Whether a line is one of a section that another one has swallowed.
    [[nodiscard]] bool IsSwallowed(std::int64_t line) const noexcept;

    /// The records of a list that are in their own section.
    template <class Record>
    [[nodiscard]] std::vector<FromFile<Record>> Records(KestoList list, bool(KESTO_CALL* get)(RoadDesign*, std::int32_t,
                                                                                              Record*)) const {
        std::vector<FromFile<Record>> records;
        Record record{};
        for (std::int32_t i = 0; get(road, i, &record); ++i) {
            if (const std::int64_t line = LineOf(list, 0, i); line > 0) records.push_back({record, line});
        }
        return records;
    }

    /// What the design run changes, as the file has it.
    [[nodiscard]] double StartMileage() const noexcept { return startMileage; }  ///< m
    [[nodiscard]] double StakeInterval() const noexcept { return interval; }     ///< m
    [[nodiscard]] const std::vector<FromFile<Element>>& Elements() const noexcept { return elements; }
    [[nodiscard]] const std::vector<FromFile<VerticalCurve>>& GradePoints() const noexcept { return gradePoints; }

private:
    RoadDesign* road;
    std::vector<ReadingFinding> told;
    std::int32_t untoldCount;
    double startMileage = 0;
    double interval = 0;
    std::vector<FromFile<Element>> elements;
    std::vector<FromFile<VerticalCurve>> gradePoints;
};

}  // namespace kesto::host
