/// The commands of the program: their options, and one function each.
#pragma once

#include <optional>
#include <string>

#include "terminal/problem.hpp"

namespace kesto::host {

struct ReportOptions {
    std::string road;
    std::string folder = ".";  ///< where stakes.csv and curves.csv go
    int decimals = 4;          ///< of coordinates and mileages in these tables
};
/// Prints a summary of a road and writes its stakes, and the curves of a road made from intersections, as tables.
/// @throws Problem
ExitCode RunReport(const ReportOptions& options);

struct MakeOptions {
    std::string start;                             ///< table of the start; empty: the road starts at mileage 0
    std::string elements, intersections, points;   ///< tables of the plan, of which one is given
    bool straights = false;                        ///< the points are joined by straights
    std::string broken, profile, plates, changes;  ///< further tables; empty where there is none
    std::string road;                              ///< project file to write
    std::string prefix = "K";
    double interval = 100;  ///< spacing of regular stakes (m)
};
/// Makes a project file from tables. @throws Problem
ExitCode RunMake(const MakeOptions& options);

struct CutOptions {
    std::string road, from, to;
    std::string out;  ///< project file to write
    std::optional<int> fromOccurrence, toOccurrence;
};
/// A stretch of a road as a project file of its own. @throws Problem
ExitCode RunCut(const CutOptions& options);

struct LocateOptions {
    std::string road, points;
    std::string out;  ///< empty: standard output
    std::optional<std::string> from, to;
    std::optional<int> fromOccurrence, toOccurrence;
    int decimals = 4;
};
/// Mileage, offset and height difference of measured points. @throws Problem
ExitCode RunLocate(const LocateOptions& options);

struct AtOptions {
    std::string road;
    std::optional<std::string> mileage;  ///< not needed with a step
    std::optional<int> occurrence;
    std::optional<double> step;  ///< m: list every multiple of it
    double offset = 0;           ///< m, positive to the right
    double angle = 90;           ///< degrees from the tangent clockwise to the offset line
    int decimals = 4;
};
/// Position, azimuth and height at a mileage, or a list of them. @throws Problem
ExitCode RunAt(const AtOptions& options);

struct SectionOptions {
    std::string road, mileage;
    std::optional<int> occurrence;
    int decimals = 4;
};
/// The cross section at a mileage. @throws Problem
ExitCode RunSection(const SectionOptions& options);

struct CheckOptions {
    std::string road;
    bool json = false;
};
/// Prints what is wrong or doubtful in a project file. @throws Problem
ExitCode RunCheck(const CheckOptions& options);

struct PlotOptions {
    std::string road;
    std::string out;                     ///< .svg, .pdf or .png
    std::string paper = "A3";            ///< A3 or A4, landscape
    std::string title;                   ///< empty: the file's name
    std::optional<std::string> section;  ///< mileage: draw the cross section there instead
    std::optional<int> occurrence;       ///< of that mileage
};
/// Draws plan, profile and the diagrams of the cross sections, or one cross section. @throws Problem
ExitCode RunPlot(const PlotOptions& options);

struct ExportOptions {
    std::string road;
    std::string out;  ///< LandXML file to write
};
/// Writes a road's alignment and profile as a LandXML file. @throws Problem
ExitCode RunExport(const ExportOptions& options);

}  // namespace kesto::host
