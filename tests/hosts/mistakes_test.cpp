// Mistakes: one clear line on standard error each, the right exit code, and nothing lost that was good.
#include "program_run.hpp"

namespace kesto::test {
namespace {

class Mistakes : public ProgramTest {
protected:
    void SetUp() override {
        std::filesystem::copy(KESTO_TEST_DATA "/../hosts/mistakes", folder);
        Make("trafikverket-crossover", "it.road");
    }
};

TEST_F(Mistakes, GiveOneLineAndTheirCode) {
    int cases = 0;
    for (const std::string& line : Lines(ReadFile(folder / "cases.txt"))) {
        if (line.starts_with('#')) continue;
        const auto cells = Fields(line, '|');  // code, arguments, what it says
        ASSERT_GE(cells.size(), 3U) << line;
        const auto run = Run(cells[1]);
        EXPECT_EQ(run.code, std::stoi(cells[0])) << line << "\n" << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << line << "\n" << run.err;
        for (std::size_t i = 2; i < cells.size(); ++i) {
            const std::string part = cells[i].substr(1, cells[i].size() - (i + 1 < cells.size() ? 2 : 1));
            EXPECT_NE(run.err.find(part), std::string::npos) << part << " in " << run.err;
        }
        ++cases;
    }
    EXPECT_GT(cases, 70);
    EXPECT_FALSE(std::filesystem::exists(folder / "x.road"));
    EXPECT_EQ(ReadFile(folder / "good.csv"), "name,x,y\nA,6721800,161260\n");
}

TEST_F(Mistakes, EveryBadPointOfAPlanIsNamed) {
    Write("bad.csv", "type,turn,x,y,radius\n,,0,0,\narc,,100,0,\nspiral,middle,200,0,\nspiral,left,300,z,\n,,400,0,\n");
    const auto run = Run("make --points bad.csv -o x.road");
    EXPECT_EQ(run.code, 4);
    EXPECT_EQ(Lines(run.err).size(), 5U) << run.err;
    for (const char* part :
         {"line 2: column 'type' is empty", "line 3: column 'turn' is empty", "line 3: an arc needs a radius",
          "line 4: column 'turn' holds 'middle'", "line 5: column 'y' holds 'z'"}) {
        EXPECT_NE(run.err.find(part), std::string::npos) << part << " in " << run.err;
    }
}

TEST_F(Mistakes, SectionsOffTheRoadSaySo) {
    ASSERT_EQ(Run(SectionTables() + " -o s.road").code, 0);
    for (const std::string command : {"section s.road --mileage ", "plot s.road -o s.svg --section "}) {
        const auto beyond = Run(command + "870");
        EXPECT_EQ(beyond.code, 4);
        EXPECT_NE(beyond.err.find("K0+870.000 (occurrence 0) is not on the road: it lies 3.632 m beyond"),
                  std::string::npos)
            << beyond.err;
        EXPECT_EQ(Run(command + "485 --occurrence 2").code, 4);
    }
}

TEST_F(Mistakes, BadRowsOfPointsLoseNoGoodOnes) {
    Write("mixed.csv",
          "name,x,y\nA,6721800,161260\nB,\"6721800,161260\nC,6721800,161260,7,8\nD,,5\nE,6721800,161260\n");
    const auto run = Run("locate it.road mixed.csv");
    EXPECT_EQ(run.code, 1);
    const auto rows = Lines(run.out);
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_NE(Fields(rows[1])[4], "");
    EXPECT_EQ(Fields(rows[5])[4], Fields(rows[1])[4]);
    for (const char* part :
         {"mixed.csv line 3: a quote is not closed", "mixed.csv line 4: 5 fields, but the header has 3",
          "mixed.csv line 5: column 'x' is empty", "5 points: 2 located, 0 off the road, 3 unreadable"}) {
        EXPECT_NE(run.err.find(part), std::string::npos) << part << " in " << run.err;
    }
}

TEST_F(Mistakes, MakeNamesEveryBadLineAndWritesNothing) {
    Write("bad.csv", "type,turn,start_radius,end_radius,length\n1,0,0,0,long\n9,0,0,0,10\n2,0,0,0,10\n1,0,0,0,5\n");
    Write("bad_profile.csv", "mileage,elevation,radius,curve_start,curve_end\nhere,1,0,,\n10,1,,5,\n");
    const auto run = Run("make start.csv bad.csv --profile bad_profile.csv -o x.road");
    EXPECT_EQ(run.code, 4);
    EXPECT_EQ(Lines(run.err).size(), 5U) << run.err;
    for (const char* part : {"bad.csv line 2: column 'length' holds 'long'", "bad.csv line 3: the type is 1",
                             "bad.csv line 4: an arc needs", "bad_profile.csv line 2: column 'mileage' holds 'here'",
                             "bad_profile.csv line 3: give both"}) {
        EXPECT_NE(run.err.find(part), std::string::npos) << part << " in " << run.err;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "x.road"));
}

TEST_F(Mistakes, WhatIsHardlyMeantIsWarnedOf) {
    Write("apart.csv",
          "type,turn,start_x,start_y,start_radius,end_radius,length\n1,0,500,600,0,0,100\n1,0,500,700,0,0,5\n");
    Write("stray.csv", "back_mileage,ahead_mileage\n500,400\n");
    Write("high.csv", "mileage,elevation\n0,10\n200,12\n");
    Write("line.csv", "x,y\n500,600\n500,800\n");
    const auto moved = Run("make start.csv --intersections line.csv -o y.road");
    EXPECT_EQ(moved.code, 0) << moved.err;
    EXPECT_EQ(moved.err, "");
    Write("line.csv", "x,y\n503,604\n500,800\n");
    EXPECT_NE(
        Run("make start.csv --points line.csv --straights -o y.road").err.find("lies 5.000 m from the first point"),
        std::string::npos);
    const auto run = Run("make start.csv apart.csv --broken stray.csv --profile high.csv -o x.road");
    EXPECT_EQ(run.code, 0) << run.err;
    for (const char* part : {"apart.csv line 3: the start point lies 76.537 m from the end",
                             "stray.csv line 2: this broken chain is not on the road",
                             "high.csv line 3: this grade-change point is not on the road: it lies 95.000 m beyond"}) {
        EXPECT_NE(run.err.find(part), std::string::npos) << part << " in " << run.err;
    }
}

TEST_F(Mistakes, SkippedRecordsOfAFileAreWarnedOf) {
    std::string road = ReadFile(folder / "it.road");
    const auto chain = road.find("28000.65965810");
    ASSERT_NE(chain, std::string::npos);
    road.insert(road.find('\n', chain) + 1,
                "    28000.65965810    28001.00000000\r\n");  // the same place a second time
    const auto line = std::count(road.begin(), road.begin() + static_cast<std::ptrdiff_t>(chain), '\n') + 2;
    Write("twice.road", road);
    const auto run = Run("at twice.road K27+300");
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.err.find("warning: 'twice.road' line " + std::to_string(line) + ": 1 record"), std::string::npos)
        << run.err;
}

}  // namespace
}  // namespace kesto::test
