#include "case_reader.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace accuracy {

namespace {

constexpr double forwardBar = 1e-8;       // m
constexpr double azimuthBar = 1e-9;       // degrees: 10 nm at 570 m
constexpr double plainFootBar = 1e-7;     // m: on straights and arcs
constexpr double spiralFootBar = 1.1e-7;  // m, and the angle below for each metre of offset
constexpr double spiralAngle = 1.5e-7;    // rad: the search compares angles in single precision
constexpr double leastSlope = 0.1;        // 1: of the foot's perpendicular; below it feet are reported apart
constexpr int straightType = 1;
constexpr int spiralType = 3;

constexpr double none = std::numeric_limits<double>::infinity();

/// An error, or infinitely much where an answer is no number.
double ErrorOf(long double error) { return std::isnan(error) ? none : static_cast<double>(error); }

double Difference(double answer, long double exact) { return ErrorOf(std::fabs(answer - exact)); }

double Apart(double x, double y, long double exactX, long double exactY) {
    return std::isnan(x) || std::isnan(y) ? none : ErrorOf(std::hypot(x - exactX, y - exactY));
}

void Require(bool done, const char* what) {
    if (!done) throw std::runtime_error(std::string("the road refuses ") + what);
}

}  // namespace

std::string Words::Word() {
    std::string word;
    if (!(stream >> word)) throw std::runtime_error("a word is missing");
    return word;
}

double Words::Given() {
    const std::string word = Word();
    char* end = nullptr;
    const double number = std::strtod(word.c_str(), &end);
    if (*end != '\0') throw std::runtime_error("no number: " + word);
    return number;
}

long double Words::Exact() {
    const std::string word = Word();
    char* end = nullptr;
    const long double number = std::strtold(word.c_str(), &end);
    if (*end != '\0') throw std::runtime_error("no number: " + word);
    return number;
}

int Words::Whole() { return static_cast<int>(Given()); }

bool Words::AtEnd() { return (stream >> std::ws).eof(); }

std::string Words::Rest() {
    std::string rest;
    std::getline(stream >> std::ws, rest);
    return rest;
}

void CaseReader::Read(const std::string& line) {
    struct Reader {
        std::string_view word;
        void (CaseReader::*read)(Words&);
        bool isCase;
    };
    static constexpr std::array<Reader, 5> readers = {{{"road", &CaseReader::BeginRoad, false},
                                                       {"element", &CaseReader::ReadElement, false},
                                                       {"point", &CaseReader::AskPoint, true},
                                                       {"position", &CaseReader::AskPosition, true},
                                                       {"foot", &CaseReader::AskFoot, true}}};
    Words words(line);
    const std::string first = words.Word();
    if (first == "#") return;
    if (first == "kind") {
        kind = words.Rest();
        return;
    }
    if (first == "left-out") {
        const long count = words.Whole();
        leftOut[words.Rest()] += count;
        return;
    }
    for (const Reader& it : readers) {
        if (it.word != first) continue;
        (this->*it.read)(words);
        cases += it.isCase ? 1 : 0;
        if (!words.AtEnd()) throw std::runtime_error("too many words");
        return;
    }
    throw std::runtime_error("unknown word: " + first);
}

void CaseReader::BeginRoad(Words& words) {
    road.reset(StartRoadDesign(), EndRoadDesign);
    Require(road != nullptr, "memory");
    built = false;
    SetRoadDesignMode(road.get(), 1);
    SetStartMileage(road.get(), words.Given());
}

void CaseReader::ReadElement(Words& words) {
    element = {};
    element.type = words.Whole();
    element.turnDirection = static_cast<std::uint8_t>(words.Whole());
    element.startX = words.Given();
    element.startY = words.Given();
    element.startAzimuth = words.Given();
    element.startRadius = words.Given();
    element.endRadius = words.Given();
    element.length = words.Given();
    Require(SetStartInformation(road.get(), element.startX, element.startY, element.startAzimuth), "its start");
    Require(AddElement(road.get(), &element, -1), "an element");
}

RoadDesign* CaseReader::Built() {
    if (!built) Require(UpdateData(road.get()), "to be built");
    built = true;
    return road.get();
}

void CaseReader::NotePosition(Words& words, bool found, double x, double y, double azimuth) {
    const long double exactX = words.Exact();
    const long double exactY = words.Exact();
    const long double exactAzimuth = words.Exact();
    const double turned = ErrorOf(std::fabs(std::remainder(azimuth - exactAzimuth, 360.0L)));
    table.Of(kind, "10 nm").Add(found ? Apart(x, y, exactX, exactY) : none, forwardBar);
    table.Of("azimuth of all these positions (degrees)", "1e-9").Add(found ? turned : none, azimuthBar);
}

void CaseReader::AskPoint(Words& words) {
    double x = 0;
    double y = 0;
    double azimuth = 0;
    const bool found = GetElementPositionAndAzimuth(road.get(), &element, words.Given(), &x, &y, &azimuth);
    NotePosition(words, found, x, y, azimuth);
}

void CaseReader::AskPosition(Words& words) {
    const double mileage = words.Given();
    const int occurrence = words.Whole();
    const double offset = words.Given();
    double x = 0;
    double y = 0;
    double azimuth = 0;
    const bool found = GetPositionAndAzimuth(Built(), mileage, offset, 90, &x, &y, &azimuth, occurrence);
    NotePosition(words, found, x, y, azimuth);
}

/// Whether the element is a straight so short that the rounding of its ends counts at a distance (m).
bool CaseReader::IsShortFor(double distance) const {
    constexpr double farLengths = 50;
    return element.type == straightType && distance > farLengths * element.length;
}

void CaseReader::AskFoot(Words& words) {
    const double x = words.Given();
    const double y = words.Given();
    const bool onSpiral = words.Whole() == spiralType;
    const long double exactMileage = words.Exact();
    const int exactOccurrence = words.Whole();
    const long double exactOffset = words.Exact();
    const auto slope = static_cast<double>(words.Exact());
    double mileage = 0;
    double offset = 0;
    std::int32_t occurrence = -1;
    const bool found =
        GetMileageAndOffset(Built(), x, y, &mileage, &offset, &occurrence) && occurrence == exactOccurrence;
    const double error = found ? Difference(mileage, exactMileage) : none;
    const double offsetError = found ? Difference(offset, exactOffset) : none;
    const auto distance = static_cast<double>(std::fabs(exactOffset));
    const char* const place = onSpiral ? "spirals" : "arcs";
    const double bar = onSpiral ? spiralAngle * distance / std::fabs(slope) + spiralFootBar : plainFootBar;
    const char* const barText = onSpiral ? "1.5e-7 · d / (1 - κ · d) + 110 nm" : "100 nm";
    const bool nearCentre = std::fabs(slope) < leastSlope;
    const bool counts = !nearCentre && !IsShortFor(distance);
    std::string group = counts ? kind : "foot on straights shorter than a fiftieth of the offset";
    if (nearCentre) group = std::string("foot on ") + place + ", 1 - κ · d from 0.001 to 0.1";
    table.Of(group, barText, counts).Add(error, bar);
    const char* const offsetKind =
        onSpiral ? "offset of all these points, on spirals" : "offset of all these points, on straights and arcs";
    table.Of(offsetKind, onSpiral ? "110 nm" : "100 nm").Add(offsetError, onSpiral ? spiralFootBar : plainFootBar);
}

CaseReader ReadSet(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot open " + path);
    CaseReader reader;
    std::string line;
    for (long number = 1; std::getline(file, line); ++number) {
        try {
            reader.Read(line);
        } catch (const std::runtime_error& problem) {
            throw std::runtime_error(path + ", line " + std::to_string(number) + ": " + problem.what());
        }
    }
    return reader;
}

}  // namespace accuracy
