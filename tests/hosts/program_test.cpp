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

TEST_F(Program, PublishedPointsAndHeightsHold) {
    // Published is the azimuth at an element's end, printed the one at the next element's start.
    constexpr double kinks = 4e-5;  // degrees: the largest kink of these alignments is 3.2e-5
    int points = 0;
    int heights = 0;
    for (const std::string sample : {"trafikverket-crossover", "finland-m3", "rfi-primary-route"}) {
        Make(sample, "it.road");
        const auto rows = Lines(ReadFile(std::filesystem::path(KESTO_TEST_DATA) / sample / "expected.csv"));
        for (std::size_t i = 1; i < rows.size(); ++i) {
            const auto row = Fields(rows[i]);
            if (row[0] == "station") continue;
            const auto at = At("it.road " + row[3] + " --occurrence " + row[4] + " --decimals 8");
            if (row[0] == "point") {
                const double tolerance = std::stod(row[10]);
                EXPECT_NEAR(std::stod(at[3]), std::stod(row[5]), tolerance) << sample << ": " << rows[i];
                EXPECT_NEAR(std::stod(at[4]), std::stod(row[6]), tolerance) << sample << ": " << rows[i];
                EXPECT_NEAR(std::stod(at[5]), std::stod(row[7]), kinks) << sample << ": " << rows[i];
                ++points;
            } else {
                EXPECT_NEAR(std::stod(at[6]), std::stod(row[8]), std::stod(row[12])) << sample << ": " << rows[i];
                ++heights;
            }
        }
    }
    EXPECT_EQ(points, 13 + 16 + 9);
    EXPECT_EQ(heights, 7 + 5);
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

TEST_F(Program, OffsetGoesToTheRightAndAlongItsAngle) {
    Make("finland-m3", "it.road");  // its first straight has the azimuth 25.0419919 degrees
    const double azimuth = 25.0419919 * std::acos(-1.0) / 180;
    const auto centre = At("it.road K0+050");
    const auto right = At("it.road K0+050 --offset 10");
    const auto ahead = At("it.road K0+050 --offset 10 --angle 0");
    EXPECT_NEAR(std::stod(right[3]) - std::stod(centre[3]), -10 * std::sin(azimuth), 2e-4);
    EXPECT_NEAR(std::stod(right[4]) - std::stod(centre[4]), 10 * std::cos(azimuth), 2e-4);
    EXPECT_NEAR(std::stod(ahead[3]) - std::stod(centre[3]), 10 * std::cos(azimuth), 2e-4);
    EXPECT_EQ(right[6], "-");  // a road without a profile has no height
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
    EXPECT_EQ(last[4] + last[5] + last[6] + last[7] + last[8] + last[9], "");
    EXPECT_EQ(last[10], "off the road: 14.200 m beyond the road's end at K28+406.153");
}

TEST_F(Program, LocateBetweenLimitsFindsTheChosenOccurrence) {
    Make("trafikverket-crossover", "it.road");
    Write("p.csv", "name,x,y\nA,6721701.6355,160573.0043\n");
    const auto row = Lines(Run("locate it.road p.csv --from 27500 --to K28+000.6 --to-occurrence 0").out).at(1);
    EXPECT_EQ(Fields(row)[6], "");  // the second K28+000.000 lies 0.06 m beyond that limit
    const auto second = Lines(Run("locate it.road p.csv --from +K28+000 --to 28300").out).at(1);
    EXPECT_EQ(Fields(second)[6], "1");
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

TEST_F(Program, CurvesGivenByTheirEndsMakeTheProfileSo) {
    Make("profile-unsymmetrical-100-200", "it.road");
    const auto rows =
        Lines(ReadFile(std::filesystem::path(KESTO_TEST_DATA) / "profile-unsymmetrical-100-200/expected.csv"));
    int heights = 0;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        const auto row = Fields(rows[i]);
        if (row[0] != "height") continue;
        EXPECT_NEAR(std::stod(At("it.road " + row[3] + " --decimals 6")[6]), std::stod(row[8]),
                    std::stod(row[12]) + 1e-6);
        ++heights;
    }
    EXPECT_GT(heights, 0);
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
    Make("finland-m3", "plan.road");
    EXPECT_EQ(Run("plot plan.road -o plan.svg").out, "plan.svg: plan 1:4000\n");  // no profile, so plan only
}

TEST_F(Program, HelpHasAnExampleForEveryCommand) {
    for (const std::string command : {"report", "make", "locate", "at", "plot"}) {
        const auto run = Run(command + " --help");
        EXPECT_EQ(run.code, 0);
        EXPECT_NE(run.out.find("Example:\n  kesto-road " + command + " "), std::string::npos) << run.out;
    }
    EXPECT_EQ(Run("--version").out.substr(0, 11), "kesto-road ");
}

}  // namespace
}  // namespace kesto::test
