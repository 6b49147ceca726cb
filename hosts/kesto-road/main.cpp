// kesto-road: stakes, positions, mileages, heights and pictures of roads. This file sets up the command line only.
#include <CLI/CLI.hpp>
#include <clocale>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "kesto_road/kesto_road.h"
#include "road/mileage_text.hpp"
#include "terminal/numbers.hpp"

namespace {

using namespace kesto::host;

constexpr int mostDecimals = 12;

std::string CheckReal(const std::string& text) {
    return ParseReal(text) ? std::string() : "'" + text + "' is no number";
}

std::string CheckPositive(const std::string& text) {
    const auto number = ParseReal(text);
    return number && *number > 0 ? std::string() : "'" + text + "' is no number above 0";
}

void AddDecimals(CLI::App* command, int& decimals) {
    command->add_option("--decimals", decimals, "Decimals of coordinates, mileages and offsets")
        ->check(CLI::Range(0, mostDecimals))
        ->capture_default_str();
}

CLI::App* AddCommand(CLI::App& app, const std::string& name, const std::string& what, const std::string& example) {
    CLI::App* command = app.add_subcommand(name, what);
    command->footer("Example:\n  kesto-road " + name + " " + example);
    return command;
}

void SetUpReport(CLI::App& app, ReportOptions& options, ExitCode& result) {
    auto* command = AddCommand(app, "report",
                               "Print a summary of a road and write its stakes to stakes.csv, its curves to curves.csv",
                               "demo.road --out results");
    command->add_option("ROAD", options.road, "Project file (.road, .watx)")->required();
    command->add_option("--out", options.folder, "Folder for these tables, which must exist")->capture_default_str();
    AddDecimals(command, options.decimals);
    command->callback([&] { result = RunReport(options); });
}

void SetUpMake(CLI::App& app, MakeOptions& options, ExitCode& result) {
    auto* command =
        AddCommand(app, "make", "Make a road from tables",
                   "start.csv elements.csv --broken broken_chains.csv --profile profile.csv -o demo.road\n  "
                   "kesto-road make start.csv --intersections intersections.csv -o demo.road\n  "
                   "kesto-road make --points points.csv --straights -o demo.road");
    command->add_option("START", options.start, "Table with the start mileage, and for ELEMENTS point and azimuth");
    command->add_option("ELEMENTS", options.elements, "Table with one element a line");
    command->add_option("--intersections", options.intersections,
                        "Instead of ELEMENTS: table of tangent intersections");
    command->add_option("--points", options.points, "Instead of ELEMENTS: table of main points");
    command->add_flag("--straights", options.straights, "Join the points by straights, whatever their types");
    command->add_option("--broken", options.broken, "Table of broken chains");
    command->add_option("--profile", options.profile, "Table of grade-change points");
    command->add_option("--plates", options.plates, "Table of the plates of both sides");
    command->add_option("--changes", options.changes, "Table of change sections: widening and superelevation");
    command->add_option("-o,--out", options.road, "Project file to write (.road)")->required();
    command->add_option("--prefix", options.prefix, "Text before stake mileages")->capture_default_str();
    command->add_option("--interval", options.interval, "Spacing of regular stakes (m)")
        ->check(CheckPositive)
        ->capture_default_str();
    command->callback([&] { result = RunMake(options); });
}

void SetUpCut(CLI::App& app, CutOptions& options, ExitCode& result) {
    auto* command = AddCommand(app, "cut", "Save a stretch of a road as a road of its own",
                               "demo.road --from K27+500 --to K28+100 --to-occurrence 0 -o part.road");
    command->add_option("ROAD", options.road, "Project file (.road)")->required();
    command->add_option("--from", options.from, "Where the part begins: metres or a stake text")->required();
    command->add_option("--from-occurrence", options.fromOccurrence, "Which of the equal mileages, from 0");
    command->add_option("--to", options.to, "Where it ends")->required();
    command->add_option("--to-occurrence", options.toOccurrence, "Which of the equal mileages, from 0");
    command->add_option("-o,--out", options.out, "Project file to write (.road)")->required();
    command->callback([&] { result = RunCut(options); });
}

void SetUpLocate(CLI::App& app, LocateOptions& options, ExitCode& result) {
    auto* command = AddCommand(app, "locate", "Find mileage, offset and height difference of measured points",
                               "demo.road points.csv --from K27+500 --to K28+100 --to-occurrence 0 -o located.csv");
    command->add_option("ROAD", options.road, "Project file (.road, .watx)")->required();
    command->add_option("POINTS", options.points, "Table with name, x, y and optionally height")->required();
    command->add_option("--from", options.from, "Search from this mileage on");
    command->add_option("--from-occurrence", options.fromOccurrence, "Which of the equal mileages, from 0");
    command->add_option("--to", options.to, "Search up to this mileage");
    command->add_option("--to-occurrence", options.toOccurrence, "Which of the equal mileages, from 0");
    command->add_option("-o,--out", options.out, "Table to write; standard output without it");
    AddDecimals(command, options.decimals);
    command->callback([&] { result = RunLocate(options); });
}

void SetUpAt(CLI::App& app, AtOptions& options, ExitCode& result) {
    auto* command = AddCommand(app, "at", "Print position, azimuth and height at a mileage, or at every multiple",
                               "demo.road K27+680.203 --offset 3.5\n  kesto-road at demo.road --every 20");
    command->add_option("ROAD", options.road, "Project file (.road, .watx)")->required();
    command->add_option("MILEAGE", options.mileage, "Metres or a stake text: 12345.678, K12+345.678, -K0+012.500");
    command->add_option("--occurrence", options.occurrence, "Which of the equal mileages, from 0");
    command->add_option("--every", options.step, "List every multiple of this mileage, start and end (m)")
        ->check(CheckPositive);
    command->add_option("--offset", options.offset, "Offset from the centre line (m), positive to the right")
        ->check(CheckReal)
        ->capture_default_str();
    command->add_option("--angle", options.angle, "Angle from the tangent clockwise to the offset line (degrees)")
        ->check(CLI::Range(0.0, 180.0))
        ->capture_default_str();
    AddDecimals(command, options.decimals);
    command->callback([&] { result = RunAt(options); });
}

void SetUpSection(CLI::App& app, SectionOptions& options, ExitCode& result) {
    auto* command =
        AddCommand(app, "section", "Print the cross section at a mileage", "demo.road --mileage K0+374.719");
    command->add_option("ROAD", options.road, "Project file (.road, .watx)")->required();
    command->add_option("--mileage", options.mileage, "Metres or a stake text")->required();
    command->add_option("--occurrence", options.occurrence, "Which of the equal mileages, from 0");
    AddDecimals(command, options.decimals);
    command->callback([&] { result = RunSection(options); });
}

void SetUpCheck(CLI::App& app, CheckOptions& options, ExitCode& result) {
    auto* command = AddCommand(app, "check", "Find what is wrong or doubtful in a project file", "demo.road --json");
    command->add_option("ROAD", options.road, "Project file (.road, .watx)")->required();
    command->add_flag("--json", options.json, "Print the findings as one JSON object");
    command->callback([&] { result = RunCheck(options); });
}

void SetUpPlot(CLI::App& app, PlotOptions& options, ExitCode& result) {
    auto* command = AddCommand(app, "plot", "Draw plan, profile and diagrams, or a cross section",
                               "demo.road -o demo.pdf --paper A3\n"
                               "  kesto-road plot demo.road --section K12+345.678 -o section.pdf");
    command->add_option("ROAD", options.road, "Project file (.road, .watx)")->required();
    command->add_option("--section", options.section, "Draw the cross section at this mileage instead");
    command->add_option("--occurrence", options.occurrence, "Which of the equal mileages, from 0");
    command->add_option("-o,--out", options.out, "Picture to write: .svg, .pdf or .png")->required();
    command->add_option("--paper", options.paper, "Sheet, landscape")
        ->check(CLI::IsMember({"A3", "A4"}, CLI::ignore_case))
        ->capture_default_str();
    command->add_option("--title", options.title, "Title on the sheet; the file's name without it");
    command->callback([&] { result = RunPlot(options); });
}

void SetUpExport(CLI::App& app, ExportOptions& options, ExitCode& result) {
    auto* command = AddCommand(app, "export", "Write alignment and profile as LandXML", "demo.road -o demo.xml");
    command->add_option("ROAD", options.road, "Project file (.road)")->required();
    command->add_option("-o,--out", options.out, "LandXML file to write (.xml)")->required();
    command->callback([&] { result = RunExport(options); });
}

/// "-K0+012.500" is a mileage, not an option: the typographic minus keeps the parser from taking it for one.
std::vector<std::string> Arguments(int count, char** values) {
    std::vector<std::string> arguments(values + (count > 0 ? 1 : 0), values + count);
    for (auto& argument : arguments) {
        if (IsNegativeStakeText(argument)) argument.replace(0, 1, "\xE2\x88\x92");
    }
    return {arguments.rbegin(), arguments.rend()};  // the parser takes them from the back
}

std::string OneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    for (char& c : text) {
        if (c == '\n') c = ' ';
    }
    return text;
}

int Run(int count, char** values) {
    CLI::App app("Roads from project files: stakes, positions, mileages, heights and pictures.", "kesto-road");
    app.set_version_flag("--version", std::string("kesto-road ") + KestoRoadVersion());
    app.require_subcommand(1);
    app.footer(
        "Example:\n  kesto-road at demo.road K12+345.678 --offset 3.5\n"
        "Exit codes: 0 done, 1 some rows have no result or a check has warnings, 2 wrong command line, 3 a file cannot "
        "be read or "
        "written,\n  4 wrong data, 5 no road can be built. 'kesto-road COMMAND --help' tells more.");
    ReportOptions report;
    MakeOptions make;
    CutOptions cut;
    LocateOptions locate;
    AtOptions at;
    SectionOptions section;
    CheckOptions check;
    PlotOptions plot;
    ExportOptions exported;
    ExitCode result = ExitCode::Ok;
    SetUpReport(app, report, result);
    SetUpMake(app, make, result);
    SetUpCut(app, cut, result);
    SetUpLocate(app, locate, result);
    SetUpAt(app, at, result);
    SetUpSection(app, section, result);
    SetUpCheck(app, check, result);
    SetUpPlot(app, plot, result);
    SetUpExport(app, exported, result);
    try {
        app.parse(Arguments(count, values));
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        PrintError(OneLine(error.what()) + " ('kesto-road --help' shows the commands)");
        return static_cast<int>(ExitCode::Usage);
    }
    return static_cast<int>(result);
}

}  // namespace

int main(int count, char** values) {
    (void)std::setlocale(LC_CTYPE, "");  // file names and names of points are in the user's code page
    try {
        return Run(count, values);
    } catch (const Problem& problem) {
        PrintError(problem.what());
        return static_cast<int>(problem.Code());
    } catch (const std::bad_alloc&) {
        PrintError("memory ran out");
    } catch (const std::exception& error) {
        PrintError(error.what());
    }
    return static_cast<int>(ExitCode::Road);
}
