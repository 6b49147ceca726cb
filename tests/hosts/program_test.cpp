// The program from end to end: from tables to a road, its stakes, positions, located points and pictures.
#include <sys/resource.h>

#include <cmath>

#include "program_run.hpp"

#if defined(__SANITIZE_ADDRESS__)
#define KESTO_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KESTO_SANITIZED 1
#endif
#endif

namespace kesto::test {
namespace {

class Program : public ProgramTest {
protected:
    /// The last line of `at`: stake, mileage, occurrence, x, y, azimuth, height.
    std::vector<std::string> At(const std::string& arguments) const {
        const auto run = Run("at " + arguments);
        EXPECT_EQ(run.code, 0) << run.err;
        std::vector<std::string> cells;
        const auto lines = Lines(run.out);
        if (lines.empty()) return std::vector<std::string>(7);
        std::istringstream stream(lines.back());
        for (std::string cell; stream >> cell;) cells.push_back(cell);
        cells.resize(7);
        return cells;
    }
};

TEST_F(Program, WaterProjectsAreRead) {
    Make("trafikverket-crossover", "it.road");
    std::filesystem::copy(folder / "it.road", folder / "it.watx");
    const auto road = Run("at it.road --every 100");
    const auto water = Run("at it.watx --every 100");
    EXPECT_EQ(water.code, 0) << water.err;
    EXPECT_EQ(water.out, road.out);
    EXPECT_GT(Lines(road.out).size(), 10U);
}

TEST_F(Program, EveryOccurrenceIsListedInOrderOfTravel) {
    Make("trafikverket-crossover", "it.road");
    const auto run = Run("at it.road --every 0.5");
    ASSERT_EQ(run.code, 0) << run.err;
    std::vector<std::string> nearBreak;
    for (const auto& line : Lines(run.out)) {
        std::string stake;
        std::istringstream(line) >> stake;
        if (stake.find("K28+000.") != std::string::npos || stake == "K28+001.000") nearBreak.push_back(stake);
    }
    EXPECT_EQ(nearBreak,
              (std::vector<std::string>{"K28+000.000", "K28+000.500", "+K28+000.000", "+K28+000.500", "K28+001.000"}));
    EXPECT_EQ(Lines(run.out)[1].substr(0, 15), "    K27+205.415");
    EXPECT_EQ(Lines(run.out).back().substr(0, 15), "    K28+406.153");
}

TEST_F(Program, NegativeMileagesAreNoOptions) {
    Make("sncf-san1-xd", "it.road");
    for (const char* text : {"-K0+008.0", "-8", "-0+008"}) EXPECT_EQ(At(std::string("it.road ") + text)[1], "-8.0000");
    Write("p.csv", "name,x,y\nA,3126624,1892018\n");
    EXPECT_EQ(Run("locate it.road p.csv --from -K0+008.2 --to 100").code, 0);
}

TEST_F(Program, ReportWritesEveryStake) {
    Make("trafikverket-crossover", "it.road");
    std::filesystem::create_directory(folder / "results");
    const auto run = Run("report it.road --out results");
    ASSERT_EQ(run.code, 0) << run.err;
    for (const char* part : {"1201.399 m", "Elements (14)", "Main points (20)", "backward (overlap)",
                             "Grade-change points (5)", "32 stakes written"}) {
        EXPECT_NE(run.out.find(part), std::string::npos) << part << " in\n" << run.out;
    }
    const auto rows = Lines(ReadFile(folder / "results/stakes.csv"));
    ASSERT_EQ(rows.size(), 33U);
    EXPECT_EQ(rows[0], "name,label,mileage,occurrence,x,y,azimuth,design_height");
    const auto first = Fields(rows[1]);
    EXPECT_EQ(first[0] + first[1], "QDQD");
    EXPECT_NEAR(std::stod(first[4]), 6721815.456267, 1e-4);
    EXPECT_NEAR(std::stod(first[7]), 85.992, 1e-3);
    for (const auto& row : rows) EXPECT_EQ(Fields(row).size(), 8U) << row;
}

TEST_F(Program, LocatesThePointsOfTheSampleRoad) {
    const std::string samples = KESTO_SAMPLE_ROADS;
    const auto run =
        Run("locate '" + samples + "/trafikverket-crossover.road' '" + samples + "/points.csv' -o out.csv");
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "13 points: 12 located, 1 off the road, 0 unreadable\n");
    const auto rows = Lines(ReadFile(folder / "out.csv"));
    ASSERT_EQ(rows.size(), 14U);
    const auto tenth = Fields(rows[10]);  // measured 3.580 m right of the second K28+000.410, 0.047 m above the grade
    EXPECT_EQ(tenth[0], "P10");
    EXPECT_NEAR(std::stod(tenth[4]), 28000.410, 1e-3);
    EXPECT_EQ(tenth[6], "1");
    EXPECT_NEAR(std::stod(tenth[7]), 3.580, 1e-3);
    EXPECT_NEAR(std::stod(tenth[9]), 0.047, 1e-3);
    const auto last = Fields(rows[13]);
    for (std::size_t i = 4; i < 12; ++i) EXPECT_EQ(last[i], "");
    EXPECT_EQ(last[12], "off the road: 14.200 m beyond the road's end at K28+406.153");
}

TEST_F(Program, LocateBetweenLimitsFindsTheChosenOccurrence) {
    Make("trafikverket-crossover", "it.road");
    Write("p.csv", "name,x,y\nA,6721701.6355,160573.0043\n");
    const auto row = Lines(Run("locate it.road p.csv --from 27500 --to K28+000.6 --to-occurrence 0").out).at(1);
    EXPECT_EQ(Fields(row)[6], "");  // the second K28+000.000 lies 0.06 m beyond that limit
    const auto second = Lines(Run("locate it.road p.csv --from +K28+000 --to 28300").out).at(1);
    EXPECT_EQ(Fields(second)[6], "1");
}

TEST_F(Program, APartAnswersAsItsRoad) {
    Make("trafikverket-crossover", "it.road");
    const auto cut = Run("cut it.road --from K27+500 --to +K28+000.5 -o part.road");
    ASSERT_EQ(cut.code, 0) << cut.err;
    EXPECT_EQ(cut.out.substr(0, 42), "part.road: K27+500.000 to +K28+000.500, 50");
    for (const std::string at : {"K27+500", "K27+777", "K28+000.4", "+K28+000.4", "+K28+000.5"}) {
        const auto whole = Run("at it.road " + at), part = Run("at part.road " + at);
        ASSERT_EQ(part.code, 0) << part.err;
        EXPECT_EQ(part.out, whole.out) << at;
    }
    EXPECT_EQ(Run("at part.road K27+499").code, 4);
    ASSERT_EQ(Run("cut it.road --from K28+000.5 --from-occurrence 1 --to K28+300 -o behind.road").code, 0);
    EXPECT_EQ(Lines(Run("at behind.road K28+000.5").out).at(1).substr(30),
              "    0" + Lines(Run("at it.road +K28+000.5").out).at(1).substr(35));
}

TEST_F(Program, TenThousandTimesThePointsNeedNoMoreMemory) {
    Make("trafikverket-crossover", "it.road");
    const auto table = [this](const std::string& name, int count) {
        std::ofstream stream(folder / name);
        stream << "name,x,y,height\n";
        for (int i = 0; i < count; ++i) {
            stream << (i == count / 2 ? "bad,6721800,here,1\n" : "P,6721800.5,161260.25,90.125\n");
        }
    };
    const auto peak = [] {
        rusage usage{};
        getrusage(RUSAGE_CHILDREN, &usage);
        return usage.ru_maxrss;  // KiB on Linux
    };
    table("few.csv", 10);
    ASSERT_EQ(Run("locate it.road few.csv -o few-out.csv").code, 1);
    const auto before = peak();
    table("many.csv", 100000);
    const auto run = Run("locate it.road many.csv -o many-out.csv");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("many.csv line 50002: column 'y' holds 'here'"), std::string::npos) << run.err;
    EXPECT_EQ(Lines(ReadFile(folder / "many-out.csv")).size(), 100001U);
#if !defined(KESTO_SANITIZED)
    EXPECT_LT(peak() - before, 1024);
#else
    (void)before;
#endif
}

TEST_F(Program, TablesMayComeFromAnySpreadsheet) {
    Write("start.csv", "start_mileage,start_x,start_y,start_azimuth_deg\n1000.5,500,600,45\n");
    Write("elements.csv",
          "type,turn,start_x,start_y,start_azimuth_deg,start_radius,end_radius,length\n"
          "1,0,,,,0,0,100.25\n3,1,,,,0,200,40\n2,1,,,,200,200,60\n");
    Write("start2.csv",
          "\xEF\xBB\xBF\"Start mileage\";start_x;start_y;start_azimuth_deg\r\n\r\nK1+000,5;\"500\";600;45\r\n");
    Write("elements2.csv",
          "length\tend_radius\tstart_radius\tturn\ttype\tremark\r\n"
          "100,25\t0\t\t0\t1\t\"a \"\"straight\"\"\"\r\n40\t200\t\t1\t3\r\n\t\t\r\n60\t200\t200\t1\t2\t\r\n");
    ASSERT_EQ(Run("make start.csv elements.csv -o a.road").code, 0);
    const auto second = Run("make start2.csv elements2.csv -o b.road");
    ASSERT_EQ(second.code, 0) << second.err;
    EXPECT_EQ(ReadFile(folder / "a.road"), ReadFile(folder / "b.road"));
    EXPECT_NE(ReadFile(folder / "a.road"), "");
}

// The second K0+485 of the sample lies 495 m along the road, 26.816117 m into the transitions of 40 m that lead out of
// the left curve: cubic from 4 and -4 to -2.5 per cent, fourth degree from 3.8 to 3.5 m on the left. The grade line
// falls from 5 m at 349.9981 by 3 m in 300.0038 m.
struct Expected {
    double leftSlope, rightSlope, leftWidth, centre;
};
Expected SecondK0485() {
    const double t = 26.816117 / 40;
    const double cubic = t * t * (3 - 2 * t);
    return {-4 + 1.5 * cubic, 4 - 6.5 * cubic, 3.8 - 0.3 * t * t * t * (4 - 3 * t),
            5 - 3 * (495 - 349.9981) / 300.0038};
}

TEST_F(Program, LocateTellsCutAndFillAtThePointsOwnOffset) {
    ASSERT_EQ(Run(SectionTables() + " -o s.road").code, 0);
    const Expected is = SecondK0485();
    const auto point = [&](const std::string& offset) {
        const auto at = At("s.road +K0+485 --decimals 6 --offset " + offset);
        return "P," + at[3] + "," + at[4] + ",4\n";
    };
    Write("p.csv", "name,x,y,height\n" + point("-2") + point("5") + point("6"));
    const auto rows = Lines(Run("locate s.road p.csv --decimals 6").out);
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].substr(rows[0].find("design_height")),
              "design_height,difference,design_height_at_offset,difference_at_offset,note");
    const double designs[] = {is.centre + 2 * is.leftSlope / 100, is.centre + 4 * is.rightSlope / 100 - 0.03 - 0.06};
    for (std::size_t i = 0; i < 2; ++i) {
        const auto row = Fields(rows[i + 1]);
        EXPECT_NEAR(std::stod(row[9]), 4 - is.centre, 2e-6);
        EXPECT_NEAR(std::stod(row[10]), designs[i], 2e-6);
        EXPECT_NEAR(std::stod(row[11]), 4 - designs[i], 2e-6);
    }
    const auto beyond = Fields(rows[3]);  // the verge ends at 5.5 m
    EXPECT_NE(beyond[8], "");
    EXPECT_EQ(beyond[10] + beyond[11], "");
}

TEST_F(Program, SectionsOfARoadWithoutAProfileCountFromTheCentreLine) {
    Write("plates.csv", "side,width,cross_slope\nright,3,-2\n");
    ASSERT_EQ(Run(Tables("finland-m3") + " --plates plates.csv -o s.road").code, 0);
    const auto run = Run("section s.road --mileage 50");
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.out.find("Heights are counted from the centre line: the road has no profile."), std::string::npos);
    EXPECT_NE(run.out.find(" -0.0600\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("(0)\n  none\n"), std::string::npos) << run.out;  // the left side
}

TEST_F(Program, PlotsInEveryFormat) {
    Make("trafikverket-crossover", "it.road");
    const std::pair<std::string, std::string> formats[] = {{"a.svg", "<?xml"}, {"a.pdf", "%PDF"}, {"a.PNG", "\x89PNG"}};
    for (const auto& [name, magic] : formats) {
        const auto run = Run("plot it.road -o " + name + " --paper a4");
        EXPECT_EQ(run.code, 0) << run.err;
        const auto picture = ReadFile(folder / name);
        EXPECT_EQ(picture.substr(0, magic.size()), magic);
        EXPECT_GT(picture.size(), 5000U);
    }
    EXPECT_NE(ReadFile(folder / "a.svg").find("width=\"841"), std::string::npos);  // 297 mm in points
    ASSERT_EQ(Run(SectionTables() + " -o s.road").code, 0);
    EXPECT_EQ(Run("plot s.road --section 300 -o s.svg").out, "s.svg: section 1:40 / 1:8\n");
    ASSERT_EQ(Run("plot s.road -o t.svg").code, 0);
    ASSERT_EQ(Run(SectionTables().replace(SectionTables().find("--plates"), std::string::npos, "-o u.road")).code, 0);
    ASSERT_EQ(Run("plot u.road -o u.svg").code, 0);
    EXPECT_GT(ReadFile(folder / "t.svg").size(), ReadFile(folder / "u.svg").size() + 10000);  // the diagrams
    Make("finland-m3", "plan.road");
    EXPECT_EQ(Run("plot plan.road -o plan.svg").out, "plan.svg: plan 1:4000\n");  // no profile, so plan only
}

TEST_F(Program, ExportsLandXml) {
    Make("trafikverket-crossover", "it.road");
    const auto run = Run("export it.road -o it.xml");
    EXPECT_EQ(run.code, 0) << run.err;
    // One element more than in the table: the broken chain splits one.
    EXPECT_EQ(run.out, "it.xml: LandXML 1.1, 14 elements, 5 grade-change points\n");
    EXPECT_NE(ReadFile(folder / "it.xml").find("</LandXML>"), std::string::npos);
}

TEST_F(Program, HelpHasAnExampleForEveryCommand) {
    for (const std::string command : {"report", "make", "cut", "locate", "at", "section", "check", "plot", "export"}) {
        const auto run = Run(command + " --help");
        EXPECT_EQ(run.code, 0);
        EXPECT_NE(run.out.find("Example:\n  kesto-road " + command + " "), std::string::npos) << run.out;
    }
    EXPECT_EQ(Run("--version").out.substr(0, 11), "kesto-road ");
}

}  // namespace
}  // namespace kesto::test
