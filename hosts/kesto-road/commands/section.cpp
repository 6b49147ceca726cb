// kesto-road section: the plates of both sides at a mileage, with the place and height of their outer edges.
#include <string>

#include "commands/commands.hpp"
#include "road/cross_section.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"
#include "terminal/text_table.hpp"

namespace kesto::host {

namespace {

constexpr int azimuthDecimals = 6;  // degrees

std::string Heading(RoadDesign* road, const CrossSection& section, int decimals) {
    const CentrePoint& centre = section.centre;
    return "Section  " + FormatMileage(road, centre.stake) + ", occurrence " + std::to_string(centre.stake.occurrence) +
           "\nCentre   x " + FormatReal(centre.x, decimals) + ", y " + FormatReal(centre.y, decimals) + ", azimuth " +
           FormatReal(centre.azimuth, azimuthDecimals) +
           (section.height ? ", height " + FormatReal(*section.height, decimals) + "\n"
                           : "\nHeights are counted from the centre line: the road has no profile.\n");
}

std::string SideTable(const CrossSection& section, std::int32_t side, int decimals) {
    TextTable table({"plate", "code", "width", "cross slope %", "step", "offset", "x", "y", "height"});
    const auto text = [](const char* name) { return std::string(*name == '\0' ? "-" : name); };
    for (const SectionPlate& it : section.plates[static_cast<std::size_t>(side)]) {
        table.Add({text(it.name), text(it.code), FormatReal(it.width, decimals), FormatReal(it.crossSlope, decimals),
                   FormatReal(it.step, decimals), FormatReal(SideSign(side) * it.offset, decimals),
                   FormatReal(it.x, decimals), FormatReal(it.y, decimals), FormatReal(it.height, decimals)});
    }
    return table.Text(side == leftSide ? "Left side: plates with their outer edges, from the centre line outwards"
                                       : "Right side: plates with their outer edges, from the centre line outwards");
}

}  // namespace

ExitCode RunSection(const SectionOptions& options) {
    const RoadHandle road = OpenRoad(options.road);
    const RoadLine line(road.get());
    const Stake stake = ResolveMileage(line.Road(), options.mileage, options.occurrence, "--mileage");
    const CrossSection section = SectionAt(road.get(), line, stake);
    Output out("");
    out.Write(Heading(road.get(), section, options.decimals));
    for (const std::int32_t side : bothSides) out.Write(SideTable(section, side, options.decimals));
    out.Finish();
    return ExitCode::Ok;
}

}  // namespace kesto::host
