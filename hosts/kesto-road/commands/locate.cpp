// kesto-road locate: mileage, offset and height difference of measured points, one row at a time.
#include <cmath>
#include <filesystem>
#include <iostream>
#include <numbers>
#include <string>

#include "commands/commands.hpp"
#include "road/conventions.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "tables/csv.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"

namespace kesto::host {

namespace {

constexpr double degree = std::numbers::pi / 180;
constexpr double footTolerance = 1e-3;  // m: a foot is square to the line when it is no further off than this
constexpr double samePlace = 1e-6;      // m: a foot at one of the limits

/// Where a point lies on the road.
struct Foot {
    Stake stake;
    double offset = 0;  ///< m
    double ahead = 0;   ///< how far the point lies ahead of the foot, along the tangent there (m)
};

struct Tally {
    std::int64_t located = 0;
    std::int64_t offRoad = 0;
    std::int64_t unreadable = 0;
};

class Locator {
public:
    Locator(RoadDesign* designed, const LocateOptions& chosen)
        : road(designed), options(chosen), line(designed), limited(chosen.from || chosen.to) {
        lower =
            options.from ? ResolvePlace(road, *options.from, options.fromOccurrence, "--from") : EndOf(line.Start());
        upper = options.to ? ResolvePlace(road, *options.to, options.toOccurrence, "--to") : EndOf(line.End());
        if (lower.continuous > upper.continuous) {
            throw Problem(ExitCode::Usage, "--from lies after --to on the road: exchange them");
        }
    }

    /// The foot of a point. @throws Problem for a point off the road
    Foot Find(double x, double y) {
        Foot foot;
        double* const mileage = &foot.stake.mileage;
        const bool found = limited ? GetMileAndOffsetInLim(road, x, y, lower.stake.mileage, lower.stake.occurrence,
                                                           upper.stake.mileage, upper.stake.occurrence, mileage,
                                                           &foot.offset, &foot.stake.occurrence)
                                   : GetMileageAndOffset(road, x, y, mileage, &foot.offset, &foot.stake.occurrence);
        if (!found) throw Problem(ExitCode::Data, "off the road: " + DescribeLastFailure(road));
        foot.ahead = Ahead(foot, x, y);
        if (std::fabs(foot.ahead) > footTolerance) RefuseBeyond(foot);
        return foot;
    }

    [[nodiscard]] const RoadLine& Line() const noexcept { return line; }

private:
    [[nodiscard]] double Continuous(const Stake& stake) const {
        return ContinuousMileage(road, stake).value_or(line.End());
    }

    [[nodiscard]] RoadPlace EndOf(double continuous) const {
        const Stake stake = line.At(continuous).stake;
        return {stake, Continuous(stake)};
    }

    /// How far a point lies ahead of its foot, along the tangent there (m).
    double Ahead(const Foot& foot, double x, double y) {
        double footX = 0;
        double footY = 0;
        double azimuth = 0;
        if (!GetPositionAndAzimuth(road, foot.stake.mileage, 0, squareOffset, &footX, &footY, &azimuth,
                                   foot.stake.occurrence)) {
            throw Problem(ExitCode::Data, "off the road: " + DescribeLastFailure(road));
        }
        return (x - footX) * std::cos(azimuth * degree) + (y - footY) * std::sin(azimuth * degree);
    }

    /// A point that has no square foot because it lies before or after the stretch is off the road.
    void RefuseBeyond(const Foot& foot) {
        const double place = Continuous(foot.stake);
        const bool before = foot.ahead < 0 && place - lower.continuous < samePlace;
        const bool after = foot.ahead > 0 && upper.continuous - place < samePlace;
        if (!before && !after) return;
        const std::string what = limited ? "stretch" : "road";
        throw Problem(ExitCode::Data,
                      "off the road: " + FormatReal(std::fabs(foot.ahead), 3) + " m " +
                          (before ? "before the " + what + "'s start at " : "beyond the " + what + "'s end at ") +
                          FormatMileage(line.Road(), foot.stake));
    }

    RoadDesign* road;
    const LocateOptions& options;
    RoadLine line;
    bool limited;
    RoadPlace lower{}, upper{};
};

constexpr const char* noResults = ",,,,,,,";  // the fields of a row between those that were read and the note

struct PointColumns {
    CsvReader::Column name, x, y, height;
};

/// The rows of one table of points.
class PointRun {
public:
    PointRun(RoadDesign* road, const LocateOptions& chosen)
        : options(chosen), locator(road, chosen), reader(chosen.points), out((CheckNotInput(chosen), chosen.out)) {
        columns = {reader.Require("name"), reader.Require("x"), reader.Require("y"), reader.Find("height")};
    }

    Tally Run() {
        std::error_code unknown;
        const auto size = std::filesystem::file_size(options.points, unknown);
        Progress progress(unknown ? 0 : size);
        out.Write(
            "name,x,y,height,mileage,stake,occurrence,offset,design_height,difference,"
            "design_height_at_offset,difference_at_offset,note\n");
        while (Row()) progress.Update(reader.BytesRead());
        out.Finish();
        return tally;
    }

private:
    static void CheckNotInput(const LocateOptions& options) {
        std::error_code different;
        if (!options.out.empty() && std::filesystem::equivalent(options.out, options.points, different)) {
            throw Problem(ExitCode::Usage, "'" + options.out + "' is the table of points itself: choose another -o");
        }
    }

    /// One row of the table to one row of the results. @return false at the end
    bool Row() {
        double x = 0;
        double y = 0;
        std::optional<double> height;
        try {
            if (!reader.Next()) return false;
            x = reader.Real(columns.x);
            y = reader.Real(columns.y);
            height = reader.OptionalReal(columns.height);
        } catch (const Problem& problem) {
            if (problem.Code() != ExitCode::Data) throw;
            ++tally.unreadable;
            PrintError(problem.what());
            WriteRow(noResults, problem.what());
            return true;
        }
        try {
            const Foot foot = locator.Find(x, y);
            ++tally.located;
            WriteRow(Results(foot, height), Note(foot));
        } catch (const Problem& problem) {
            ++tally.offRoad;
            WriteRow(noResults, problem.what());
        }
        return true;
    }

    std::string Results(const Foot& foot, std::optional<double> height) {
        const int decimals = options.decimals;
        const auto design = locator.Line().HeightAt(foot.stake);
        // The nearest corner of the line gives a distance, but no side of the road.
        const auto own = IsSquare(foot) ? locator.Line().HeightAt(foot.stake, foot.offset) : std::nullopt;
        const auto heights = [&](const std::optional<double>& designed) {
            return (designed ? FormatReal(*designed, decimals) : "") + "," +
                   (designed && height ? FormatReal(*height - *designed, decimals) : "");
        };
        return FormatReal(foot.stake.mileage, decimals) + "," +
               CsvField(FormatMileage(locator.Line().Road(), foot.stake)) + "," +
               std::to_string(foot.stake.occurrence) + "," + FormatReal(foot.offset, decimals) + "," + heights(design) +
               "," + heights(own);
    }

    static bool IsSquare(const Foot& foot) { return std::fabs(foot.ahead) <= footTolerance; }

    static std::string Note(const Foot& foot) {
        if (IsSquare(foot)) return "";
        return "nearest at a corner of the line: the offset is the distance, without a side";
    }

    void WriteRow(const std::string& results, const std::string& note) {
        const auto echo = [&](CsvReader::Column column) { return CsvField(reader.Text(column)) + ","; };
        out.Write(echo(columns.name) + echo(columns.x) + echo(columns.y) + echo(columns.height) + results + "," +
                  CsvField(note) + "\n");
    }

    const LocateOptions& options;
    Locator locator;
    CsvReader reader;
    Output out;
    PointColumns columns{};
    Tally tally;
};

}  // namespace

ExitCode RunLocate(const LocateOptions& options) {
    if ((options.fromOccurrence && !options.from) || (options.toOccurrence && !options.to)) {
        throw Problem(ExitCode::Usage,
                      "an occurrence needs its mileage: --from-occurrence goes with --from, "
                      "--to-occurrence with --to");
    }
    const RoadHandle road = OpenRoad(options.road);
    const Tally tally = PointRun(road.get(), options).Run();
    std::cerr << tally.located + tally.offRoad + tally.unreadable << " points: " << tally.located << " located, "
              << tally.offRoad << " off the road, " << tally.unreadable << " unreadable\n";
    return tally.offRoad + tally.unreadable == 0 ? ExitCode::Ok : ExitCode::SomeRowsFailed;
}

}  // namespace kesto::host
