/// Reads the accuracy set, asks the library every question of it, and keeps the errors.
#pragma once

#include <map>
#include <memory>
#include <sstream>
#include <string>

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
    long Cases() const { return cases; }
    /// What the generator drew and left out of the set, and how often.
    const std::map<std::string, long>& LeftOut() const { return leftOut; }

private:
    void BeginRoad(Words& words);
    void ReadElement(Words& words);
    /// Builds the road when its first case comes.
    RoadDesign* Built();

    void AskPoint(Words& words);
    void AskPosition(Words& words);
    bool IsShortFor(double distance) const;
    void AskFoot(Words& words);
    void NotePosition(Words& words, bool found, double x, double y, double azimuth);

    std::shared_ptr<RoadDesign> road;
    bool built = false;
    Element element{};  // of the road
    std::string kind;
    ErrorTable table;
    long cases = 0;
    std::map<std::string, long> leftOut;
};

/// Reads a whole set from a file. Throws std::runtime_error, with the number of the line.
CaseReader ReadSet(const std::string& path);

}  // namespace accuracy
