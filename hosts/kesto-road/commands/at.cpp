// kesto-road at: position, azimuth and height at a mileage, or at every multiple of a step.
#include <string>
#include <utility>

#include "commands/commands.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"

namespace kesto::host {

namespace {

constexpr int heightDecimals = 3;   // millimetres
constexpr int azimuthDecimals = 6;  // degrees: 2 mm at 100 km

/// Right-aligned in a column; a longer text keeps a blank before it.
std::string Cell(const std::string& text, std::size_t width) {
    return std::string(text.size() < width ? width - text.size() : 1, ' ') + text;
}

std::string Row(const std::string& stake, const std::string& mileage, const std::string& occurrence,
                const std::string& x, const std::string& y, const std::string& azimuth, const std::string& height) {
    return Cell(stake, 15) + Cell(mileage, 15) + Cell(occurrence, 5) + Cell(x, 17) + Cell(y, 17) + Cell(azimuth, 12) +
           Cell(height, 11) + "\n";
}

class Lister {
public:
    Lister(RoadDesign* designed, const AtOptions& chosen) : road(designed), options(chosen), line(designed), out("") {}

    void Print(const Stake& stake) {
        double x = 0;
        double y = 0;
        double azimuth = 0;
        if (!GetPositionAndAzimuth(road, stake.mileage, options.offset, options.angle, &x, &y, &azimuth,
                                   stake.occurrence)) {
            throw Problem(ExitCode::Data, NotOnRoad(road, stake));
        }
        if (!std::exchange(begun, true)) out.Write(Row("stake", "mileage", "occ", "x", "y", "azimuth", "height"));
        const auto height = line.HeightAt(stake);
        const int decimals = options.decimals;
        out.Write(Row(FormatMileage(line.Road(), stake), FormatReal(stake.mileage, decimals),
                      std::to_string(stake.occurrence), FormatReal(x, decimals), FormatReal(y, decimals),
                      FormatReal(azimuth, azimuthDecimals + (decimals > 4 ? decimals - 4 : 0)),
                      height ? FormatReal(*height, decimals > 4 ? decimals : heightDecimals) : "-"));
    }

    void PrintEvery(double step) {
        line.ForEachMultiple(step, [this](const CentrePoint& point) { Print(point.stake); });
    }

    void Finish() { out.Finish(); }

private:
    RoadDesign* road;
    const AtOptions& options;
    RoadLine line;
    Output out;
    bool begun = false;
};

}  // namespace

ExitCode RunAt(const AtOptions& options) {
    if (options.mileage.has_value() == options.step.has_value()) {
        throw Problem(ExitCode::Usage, "give a mileage or --every D, one of the two");
    }
    const RoadHandle road = OpenRoad(options.road);
    Lister lister(road.get(), options);
    if (options.step) {
        lister.PrintEvery(*options.step);
    } else {
        lister.Print(ResolveMileage(road.get(), *options.mileage, options.occurrence, "the mileage"));
    }
    lister.Finish();
    return ExitCode::Ok;
}

}  // namespace kesto::host
