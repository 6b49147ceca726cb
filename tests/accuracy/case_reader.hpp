/// Reads the accuracy set, asks the library every question of it, and keeps the errors.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "error_table.hpp"
#include "kesto_road/kesto_road.h"

namespace accuracy {

/// The words of a line, read one after another. Throws std::runtime_error where one is missing or no number.
class Words {
public:
    explicit Words(const std::string& line) : stream(line) {}

    double Given();
    /// A number of the reference: more digits than a double holds.
    long double Exact();
    int Whole();
    bool AtEnd();
    std::string Word();
    std::string Rest();

private:
    std::istringstream stream;
};

class CaseReader {
public:
    /// Takes the next line of the set. Throws std::runtime_error where the line is none or its road cannot be built.
    void Read(const std::string& line);

    const ErrorTable& Table() const { return table; }
    /// Cases asked, stations and cross sections counted once each.
    long Cases() const { return cases; }
    /// What the generator drew and left out of the set, and how often.
    const std::map<std::string, long>& LeftOut() const { return leftOut; }

private:
    void BeginRoad(Words& words);
    void ReadElement(Words& words);
    void ReadGrade(Words& words);
    void ReadPlate(Words& words);
    void ReadChange(Words& words);
    /// Builds the road when its first case comes.
    RoadDesign* Built();

    void AskPoint(Words& words);
    void AskPosition(Words& words);
    bool IsShortFor(double distance);
    void AskFoot(Words& words);
    void AskContinuous(Words& words);
    void AskStation(Words& words);
    void AskHeight(Words& words);
    void AskSide(Words& words);
    void NotePosition(Words& words, bool found, double x, double y, double azimuth);

    struct Change {
        double mileage;
        int side, kind, occurrence, type;
        std::vector<double> values;
    };
    std::shared_ptr<RoadDesign> road;
    bool built = false;
    std::vector<VerticalCurve> grades;
    std::vector<Change> changes;
    Element lastElement{};
    std::string kind;
    ErrorTable table;
    long cases = 0;
    std::map<std::string, long> leftOut;
};

/// Reads a whole set from a file. Throws std::runtime_error, with the number of the line.
CaseReader ReadSet(const std::string& path);

}  // namespace accuracy
