// Mistakes: one clear line on standard error each, the right exit code, and nothing lost that was good.
#include "program_run.hpp"

namespace kesto::test {
namespace {

class Mistakes : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        Make("trafikverket-crossover", "it.road");
        Write("start.csv", "start_mileage,start_x,start_y,start_azimuth_deg\n0,500,600,45\n");
        Write("elements.csv", "type,turn,start_radius,end_radius,length\n1,0,0,0,100\n2,1,200,200,60\n");
        Write("nowhere.csv", "start_mileage,start_x,start_y,start_azimuth_deg\n0,500,,45\n");
        Write("alone.csv", "start_mileage,start_x,start_y,start_azimuth_deg,chained\n0,500,600,45,0\n");
        Write("spiral.csv", "type,turn,start_radius,end_radius,length\n3,0,300,300,100\n");
        Write("short.csv", "type,turn,start_radius,end_radius\n1,0,0,0\n");
        Write("twice.csv", "back_mileage,ahead_mileage\n50,60\n50,70\n");
        Write("points.csv", "name,x,z\nA,1,2\n");
        Write("good.csv", "name,x,y\nA,6721800,161260\n");
        Write("empty.csv", "");
        Write("utf16.csv", std::string("\xFF\xFEn\0a\0m\0e\0\n\0", 12));
        Write("plates.csv", "side,name,width,cross_slope\nleft,lane,3,-2\n");
        Write("blank.csv", "side,name,width,cross_slope\nleft,edge strip,3,-2\n");
        Write("middle.csv", "side,width,cross_slope\nmiddle,3,-2\n");
        const std::string changes = "side,kind,mileage,type,value_1,value_2\n";
        Write("far.csv", changes + "left,widening,161,linear,4,\n");
        Write("again.csv", changes + "left,widening,50,linear,4,\nleft,widening,50,cubic,5,\n");
        Write("more.csv", changes + "left,widening,50,linear,4,5\n");
        Write("quintic.csv", changes + "left,widening,50,quintic,4,\n");
        const std::string polygon = "name,x,y,radius,spiral_in,spiral_out\nA,0,0,,,\n";
        Write("touch.csv", polygon + "JD1,300,0,200,,\nJD2,300,250,100,,\nE,600,250,,,\n");
        Write("wound.csv", polygon + "JD1,900,0,100,200,200\nE,900,900,,,\n");
        Write("upon.csv", polygon + ",0,0,9,,\nE,0,900,,,\n");
        Write("back.csv", polygon + "JD1,900,0,9,,\nE,100,0,,,\n");
        Write("short_end.csv", polygon + "JD1,2000,0,1000\nJD2,2100,100\nE,2500,300\n");
        Write("single.csv", polygon);
        Write("inwards.csv", polygon + "JD1,300,0,-200,,\n");
        const std::string points = "name,type,turn,x,y,radius\nA,straight,,0,0,\n";
        Write("wide.csv", points + "B,arc,left,100,0,50\nC,,,200,100,\n");
        Write("twin.csv", points + "B,straight,,0,0,\n");
        Write("flat.csv", points + "B,spiral,right,100,0,\nC,,,200,0,\n");
        Write("loop.csv", points + "B,loop,left,100,0,50\nC,,,200,100,\n");
        for (const char* empty : {"one.road", "one.watx"}) {
            Write(empty, "        0.00000000       100.00000000                  0                  K\r\n\r\n");
        }
    }
};

struct Mistake {
    const char* arguments;
    int code;
    std::vector<const char*> says;
};

TEST_F(Mistakes, GiveOneLineAndTheirCode) {
    const Mistake cases[] = {
        {"", 2, {"--help"}},
        {"at it.road", 2, {"--every"}},
        {"at it.road 100 --every 5", 2, {"one of the two"}},
        {"at it.road K27+300 --offset wide", 2, {"--offset", "'wide' is no number"}},
        {"at it.road --every 0", 2, {"--every", "above 0"}},
        {"at it.road DK27+300", 2, {"'DK27+300' is no mileage of this road"}},
        {"at it.road +K28+000 --occurrence 0", 2, {"a later occurrence"}},
        {"at none.road 100", 3, {"'none.road' cannot be read", "No such file"}},
        {"at it.txt 100", 3, {"'it.txt' has the wrong extension", ".road"}},
        {"at one.road 100", 5, {"'one.road': no road can be built"}},
        {"at one.watx 100", 5, {"'one.watx': no road can be built"}},
        {"at none.watx 100", 3, {"'none.watx' cannot be read", "No such file"}},
        {"at it.road K28+418.553", 4, {"K28+418.553", "12.400 m beyond the road's end at K28+406.153"}},
        {"at it.road 27200", 4, {"5.415 m before the road's start at K27+205.415"}},
        {"at it.road K28+100 --occurrence 1", 4, {"occurs once", "no occurrence 1"}},
        {"report it.road --out nowhere", 3, {"nowhere/stakes.csv' cannot be written", "No such file"}},
        {"cut it.road --from K27+300 -o part.road", 2, {"--to is required"}},
        {"cut it.road --from K27+300 --to K28+100 -o part.txt", 3, {"'part.txt' has the wrong extension"}},
        {"cut it.road --from K27+300 --to K28+100 -o ./it.road", 2, {"'./it.road' is the road itself"}},
        {"cut it.road --from K28+300 --to K27+300 -o part.road", 2, {"--from lies after --to"}},
        {"cut it.road --from K27+300 --to K27+300 -o part.road", 2, {"the same place"}},
        {"cut it.road --from +K28+000.2 --to K28+000.3 -o part.road",
         2,
         {"exchange them, or end at the +K28+000.300 behind it (--to-occurrence 1)"}},
        {"cut it.road --from K27+000 --to K27+300 -o part.road", 4, {"--from", "205.415 m before the road's start"}},
        {"cut it.road --from K27+300 --to K27+400 -o none/part.road", 3, {"'none/part.road' cannot be written"}},
        {"locate it.road points.csv", 4, {"points.csv line 1: the column 'y' is missing", "name, x, z"}},
        {"locate it.road none.csv", 3, {"'none.csv' cannot be read"}},
        {"locate it.road empty.csv", 4, {"empty.csv is empty"}},
        {"locate it.road utf16.csv", 4, {"UTF-16"}},
        {"locate it.road good.csv --from 27000", 4, {"--from", "205.415 m before the road's start"}},
        {"locate it.road good.csv --from 28300 --to 27300", 2, {"--from lies after --to"}},
        {"locate it.road good.csv --to-occurrence 1", 2, {"--to-occurrence with --to"}},
        {"locate it.road good.csv -o good.csv", 2, {"the table of points itself"}},
        {"make start.csv short.csv -o x.road", 4, {"short.csv line 1: the column 'length' is missing"}},
        {"make start.csv spiral.csv -o x.road", 4, {"spiral.csv line 2: a spiral needs two different radii"}},
        {"make nowhere.csv elements.csv -o x.road", 4, {"nowhere.csv line 2: column 'start_y' is empty"}},
        {"make alone.csv elements.csv -o x.road", 4, {"alone.csv line 2: 'chained' is 0"}},
        {"make start.csv elements.csv --broken twice.csv -o x.road", 4, {"twice.csv line 3", "mileage"}},
        {"make start.csv elements.csv -o x.txt", 3, {"'x.txt' has the wrong extension"}},
        {"make start.csv elements.csv -o nowhere/x.road", 3, {"'nowhere/x.road' cannot be written"}},
        {"make start.csv elements.csv --plates blank.csv -o x.road", 4, {"blank.csv line 2: 'edge strip' has a blank"}},
        {"make start.csv elements.csv --plates middle.csv -o x.road", 4, {"'middle', which is not left or right"}},
        {"make start.csv elements.csv --plates plates.csv --changes far.csv -o x.road",
         4,
         {"far.csv line 2: it lies 1.000 m beyond the road's end at K0+160.000"}},
        {"make start.csv elements.csv --plates plates.csv --changes again.csv -o x.road",
         4,
         {"again.csv line 3", "(change section 1)"}},
        {"make start.csv elements.csv --plates plates.csv --changes more.csv -o x.road", 4, {"value_2 is given"}},
        {"make start.csv elements.csv --changes far.csv -o x.road", 4, {"value_1 is given"}},
        {"make start.csv elements.csv --plates plates.csv --changes quintic.csv -o x.road",
         4,
         {"quintic.csv line 2: column 'type' holds 'quintic', which is not linear, cubic or fourth"}},
        {"make --intersections touch.csv -o x.road",
         5,
         {"touch.csv line 4: no road can be built: the curve of intersection 3 'JD2' does not fit: the tangents "
          "between it and intersection 2 'JD1' take 300.000 m of 250.000 m, 50.000 m too much"}},
        {"make start.csv --intersections wound.csv -o x.road",
         5,
         {"wound.csv line 3", "spirals turn 114.5916 degrees of 90.0000 degrees, 24.5916 degrees"}},
        {"make --intersections upon.csv -o x.road",
         5,
         {"upon.csv line 3", "intersection 2 lies on intersection 1 'A'"}},
        {"make --intersections back.csv -o x.road", 5, {"back.csv line 3", "'JD1' does not fit: the road turns back"}},
        {"make --intersections short_end.csv -o x.road",
         5,
         {"'JD1'", "and intersection 3 'JD2' take 414.214 m of 141.421 m"}},
        {"make --intersections single.csv -o x.road", 4, {"single.csv: a road needs two points"}},
        {"make --intersections inwards.csv -o x.road", 4, {"inwards.csv line 3: column 'radius' is negative"}},
        {"make --intersections points.csv -o x.road", 4, {"points.csv line 1: the column 'y' is missing"}},
        {"make --points wide.csv -o x.road",
         5,
         {"wide.csv line 3", "point 2 'B' cannot be joined to point 3 'C', 141.421 m away",
          "arc is 100.000 m, 41.421 m"}},
        {"make --points twin.csv --straights -o x.road", 5, {"twin.csv line 2", "they are one point"}},
        {"make --points flat.csv -o x.road",
         5,
         {"flat.csv line 3", "no spiral from an infinite radius to an infinite radius"}},
        {"make --points loop.csv -o x.road",
         4,
         {"loop.csv line 3: column 'type' holds 'loop', which is not straight, arc or spiral"}},
        {"make --points good.csv -o x.road", 4, {"good.csv line 1: the column 'type' is missing"}},
        {"make start.csv elements.csv --points wide.csv -o x.road", 2, {"one plan"}},
        {"make start.csv -o x.road", 2, {"one plan"}},
        {"make --intersections touch.csv --straights -o x.road", 2, {"--straights goes with --points"}},
        {"section it.road --mileage K27+300", 4, {"the road has no plates"}},
        {"section it.road", 2, {"--mileage"}},
        {"plot it.road --section K27+300 -o it.svg", 4, {"the road has no plates"}},
        {"plot it.road --occurrence 1 -o it.svg", 2, {"--occurrence goes with --section"}},
        {"plot it.road -o it.jpg", 2, {"'it.jpg'", ".svg, .pdf or .png"}},
        {"export it.road", 2, {"--out"}},
        {"export it.road -o nowhere/it.xml", 3, {"'nowhere/it.xml' cannot be written"}},
        {"export it.road -o ./it.road", 2, {"'./it.road' is the road itself"}},
        {"plot it.road -o nowhere/it.svg", 3, {"'nowhere/it.svg' cannot be written"}},
        {"plot it.road -o nowhere/it.png", 3, {"'nowhere/it.png' cannot be written"}},
    };
    for (const auto& it : cases) {
        const auto run = Run(it.arguments);
        EXPECT_EQ(run.code, it.code) << it.arguments << "\n" << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << it.arguments << "\n" << run.err;
        for (const char* part : it.says) EXPECT_NE(run.err.find(part), std::string::npos) << part << " in " << run.err;
    }
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
