/// The tables that a road is made from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "tables/csv.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

/// A record with the place it came from, for messages.
template <class Record>
struct FromLine {
    Record record{};
    std::string where;  ///< "profile.csv line 4"
};

struct StartRow {
    double mileage = 0;  ///< m
    std::optional<double> x, y, azimuth;
    std::string where;
};

struct ElementRow {
    Element element{};
    std::optional<double> x, y, azimuth;
    std::string where;
};

struct ProfileTable {
    std::vector<FromLine<VerticalCurve>> points;
    std::int32_t mode = 0;  ///< 0 curves by radius, 1 by their ends
};

/// Calls the body for every row; a bad one becomes a message.
template <class Body>
void ForEachRow(CsvReader& reader, std::vector<std::string>& problems, Body&& body) {
    for (bool more = true; more;) {
        try {
            more = reader.Next();
            if (more) body();
        } catch (const Problem& problem) {
            if (problem.Code() != ExitCode::Data) throw;
            problems.emplace_back(problem.what());
        }
    }
}

/// Each reader appends one message for each bad line to the problems and leaves that line out.
/// @throws Problem when the table cannot be read at all or lacks a column
StartRow ReadStart(const std::string& path, const std::string& prefix, std::vector<std::string>& problems);
std::vector<ElementRow> ReadElements(const std::string& path, std::vector<std::string>& problems);
std::vector<FromLine<BrokenChain>> ReadBrokenChains(const std::string& path, const std::string& prefix,
                                                    std::vector<std::string>& problems);
ProfileTable ReadProfile(const std::string& path, const std::string& prefix, std::vector<std::string>& problems);

}  // namespace kesto::host
