// Prints results of the library with all their bits, the same questions on every platform, each with the difference
// that another platform may show. The questions themselves are made by additions, multiplications and divisions only,
// which every platform rounds alike.
//
// platform_figures print SAMPLE_ROADS FOLDER    writes FOLDER/figures.txt, and files beside it
// platform_figures compare REFERENCE OTHER      compares two such files

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <regex>
#include <string>

#include "figure_comparison.hpp"
#include "kesto_road/kesto_road.hpp"

namespace {

constexpr double forwardBound = 1e-9;  // m, degrees
constexpr double heightBound = 1e-9;   // m
constexpr double footBound = 1e-9;     // m
constexpr double gridX = 3412345.678;  // m: coordinates of a national grid
constexpr double gridY = 512345.678;

/// Numbers that look random, from a fixed seed.
class Random {
public:
    double Between(double lower, double upper) noexcept {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return lower + (upper - lower) * static_cast<double>(state >> 11U) * 0x1p-53;
    }

private:
    std::uint64_t state = 20240229;
};

class Figures {
public:
    explicit Figures(const std::string& path) : file(std::fopen(path.c_str(), "wb")) {}
    Figures(const Figures&) = delete;
    Figures& operator=(const Figures&) = delete;
    ~Figures() {
        if (file != nullptr) std::fclose(file);
    }
    bool IsOpen() const noexcept { return file != nullptr; }

    /// In decimal with seventeen digits, which tell every bit.
    void Number(const char* group, double bound, double value) {
        std::fprintf(file, "%s;%.3e;%.17g\n", group, bound, value);
    }
    void Text(const char* group, const std::string& text) { std::fprintf(file, "%s;text;%s\n", group, text.c_str()); }

private:
    std::FILE* file;
};

void PrintElements(Figures& figures) {
    Random random;
    const kesto::Road road;
    for (int i = 0; i < 2000; ++i) {
        Element element{};
        element.type = 1 + i % 3;
        element.turnDirection = static_cast<std::uint8_t>(i / 3 % 2);
        element.startX = gridX;
        element.startY = gridY;
        element.startAzimuth = random.Between(0, 360);
        element.length = random.Between(20, 200);
        if (element.type != 1) element.endRadius = random.Between(100, 3000);
        if (element.type == 2) element.startRadius = element.endRadius;
        if (element.type == 3 && i % 2 == 0) element.startRadius = random.Between(100, 3000);
        double x = 0;
        double y = 0;
        double azimuth = 0;
        const bool found =
            GetElementPositionAndAzimuth(road.Handle(), &element, random.Between(0, element.length), &x, &y, &azimuth);
        figures.Text("element found", found ? "yes" : "no");
        const char* const group = element.type == 3 ? "points of spirals" : "points of straights, arcs";
        figures.Number(group, forwardBound, x);
        figures.Number(group, forwardBound, y);
        figures.Number("azimuths", forwardBound, azimuth);
    }
}

/// A road of straights and curves to the right and left by turns, so that it never comes back to itself.
kesto::Road Highway(Random& random) {
    kesto::Road road;
    road.Start(gridX, gridY, 25);
    for (int i = 0; i < 20; ++i) {
        const double radius = random.Between(250, 3000);
        const double spiral = random.Between(60, 150);
        const double arc = random.Between(0.1, 0.5) * radius;
        for (const kesto::Turn turn : {kesto::Turn::Right, kesto::Turn::Left}) {
            road.Straight(random.Between(100, 900));
            road.Spiral(0, radius, spiral, turn);
            road.Arc(radius, arc, turn);
            road.Spiral(radius, 0, spiral, turn);
        }
    }
    return road;
}

/// Whether a mileage (m) lies on a spiral, on a road without breaks.
bool IsOnSpiral(RoadDesign* road, double mileage) {
    Element element{};
    for (int i = 0; GetElement(road, i, &element); ++i) {
        const double along = mileage - element.startMileage;
        if (element.type == 3 && along >= 0 && along <= element.length) return true;
    }
    return false;
}

void PrintFeet(Figures& figures) {
    Random random;
    const kesto::Road highway = Highway(random);
    RoadDesign* const road = highway.Handle();
    figures.Text("designed", DesignRoad(road) ? "yes" : "no");
    const double length = GetRoadMileage(road, nullptr);
    for (int i = 0; i < 5000; ++i) {
        const double mileage = random.Between(0, length);
        const double offset = i % 10 == 0 ? 0 : random.Between(-60, 60);
        double x = 0;
        double y = 0;
        double azimuth = 0;
        GetPositionAndAzimuth(road, mileage, offset, 90, &x, &y, &azimuth, 0);
        figures.Number("positions", forwardBound, x);
        figures.Number("positions", forwardBound, y);
        // The same question everywhere: a point in whole tenths of a millimetre.
        constexpr double steps = 10000;
        double foundMileage = 0;
        double foundOffset = 0;
        std::int32_t occurrence = -1;
        GetMileageAndOffset(road, std::round(x * steps) / steps, std::round(y * steps) / steps, &foundMileage,
                            &foundOffset, &occurrence);
        const char* const group = IsOnSpiral(road, mileage) ? "feet on spirals" : "feet on straights, arcs";
        figures.Number(group, footBound, foundMileage);
        figures.Number(group, footBound, foundOffset);
        figures.Text("occurrences", std::to_string(occurrence));
    }
}

void PrintLines(Figures& figures, const char* group, const std::string& path) {
    static const std::regex times(R"(\d{4}-\d\d-\d\d(T\d\d:\d\d:\d\d)?|\d\d:\d\d:\d\d)");
    std::ifstream file(path, std::ios::binary);
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r') line.back() = '$';  // the line's end, to be seen
        figures.Text(group, std::regex_replace(line, times, "*"));
    }
}

void PrintRoad(Figures& figures, const std::string& path, const std::string& folder) {
    kesto::Road opened;
    RoadDesign* const road = opened.Handle();
    figures.Text("opened", std::to_string(OpenProject2(road, path.c_str())));
    StakeCoordinate stake{};
    for (int i = 0; GetStakeCoordinate(road, i, &stake); ++i) {
        figures.Text("stake names",
                     std::string(stake.name) + "|" + stake.label + "|" + std::to_string(stake.occurrence));
        figures.Number("stakes", forwardBound, stake.mileage);
        figures.Number("stakes", forwardBound, stake.x);
        figures.Number("stakes", forwardBound, stake.y);
        for (const double offset : {-4.0, 0.0, 3.0}) {
            double height = 0;
            figures.Text("height found",
                         GetHeight(road, stake.mileage, stake.occurrence, offset, &height) ? "yes" : "no");
            figures.Number("heights", heightBound, height);
        }
    }
    const std::string saved = folder + "/saved.road";
    figures.Text("saved", std::to_string(SaveProject(road, saved.c_str())));
    PrintLines(figures, "project text", saved);
    const std::string exported = folder + "/exported.xml";
    figures.Text("exported", std::to_string(ExportLandXMLFile(road, exported.c_str())));
    PrintLines(figures, "LandXML text", exported);
}

bool PrintFigures(const std::string& roads, const std::string& folder) {
    Figures figures(folder + "/figures.txt");
    if (!figures.IsOpen()) return false;
    PrintElements(figures);
    PrintFeet(figures);
    for (const char* name : {"finland-m3", "mountain-road", "rfi-primary-route", "sncf-san1-xd", "superelevated",
                             "trafikverket-crossover"}) {
        PrintRoad(figures, roads + "/" + name + ".road", folder);
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == "print") return PrintFigures(argv[2], argv[3]) ? 0 : 1;
    if (argc == 4 && std::string(argv[1]) == "compare") return platforms::CompareFigures(argv[2], argv[3]) ? 0 : 1;
    std::fprintf(stderr, "usage: platform_figures print SAMPLE_ROADS FOLDER | compare REFERENCE OTHER\n");
    return 2;
}
