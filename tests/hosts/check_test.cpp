// The check of project files: planted faults are found where they are, and good roads have no errors.
#include <nlohmann/json.hpp>
#include <set>

#include "kesto_road/kesto_road.hpp"
#include "program_run.hpp"

namespace kesto::test {
namespace {

using Told = std::set<std::string>;  // "12 error gap"

class Check : public ProgramTest {
protected:
    /// The findings of a file, from the JSON output. Its counts and the exit code must go with them.
    Told FindingsIn(const std::string& road) const {
        const auto run = Run("check " + road + " --json");
        const auto json = nlohmann::json::parse(run.out, nullptr, false);
        Told told;
        if (json.is_discarded() || json.value("file", "") != road) {
            ADD_FAILURE() << run.out << run.err;
            return told;
        }
        std::map<std::string, int> counts{{"error", 0}, {"warning", 0}, {"note", 0}};
        for (const auto& it : json["findings"]) {
            ++counts[it["severity"]];
            told.insert(std::to_string(it["line"].get<int>()) + " " + it["severity"].get<std::string>() + " " +
                        it["code"].get<std::string>());
        }
        for (const auto& [severity, count] : counts) EXPECT_EQ(json[severity + "s"], count);
        const bool noRoad = run.out.find("\"no-road\"") != std::string::npos;
        EXPECT_EQ(run.code, noRoad ? 5 : counts["error"] > 0 ? 4 : counts["warning"] > 0 ? 1 : 0) << run.out;
        return told;
    }

    /// Each line's fields as the tests write them, with CR LF as in files.
    void WriteRoad(const std::string& name, std::string text) const {
        for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2) text.insert(i, 1, '\r');
        Write(name, text);
    }
};

/// A change of one line of a good road. What is replaced may be "", which puts the text in front of the line.
struct Planted {
    std::size_t line;
    std::string before, after, told;
};

std::string Plant(const std::string& good, const Planted& fault) {
    std::size_t at = 0;
    for (std::size_t line = 1; line < fault.line; ++line) at = good.find('\n', at) + 1;
    if (!fault.before.empty()) at = good.find(fault.before, at);
    if (at == std::string::npos) return good;
    std::string text = good;
    return text.replace(at, fault.before.size(), fault.after);
}

TEST_F(Check, FindsEveryPlantedFault) {
    const std::string good = ReadFile(std::string(KESTO_SAMPLE_ROADS) + "/superelevated.road");
    Write("it.road", good);
    const Told already = FindingsIn("it.road");
    EXPECT_FALSE(already.contains("12 note kink"));
    const auto listed = nlohmann::json::parse(ReadFile(KESTO_TEST_DATA "/../hosts/check_faults.json"));
    std::vector<Planted> faults{{30, "lane", "l\xE4ne", "30 note names-not-utf8"}};  // which JSON cannot hold
    for (const auto& it : listed) faults.push_back({it[0], it[1], it[2], it[3]});
    ASSERT_GT(faults.size(), 65U);
    for (const Planted& fault : faults) {
        const std::string text = Plant(good, fault);
        EXPECT_NE(text, good) << fault.line << " " << fault.before;
        Write("it.road", text);
        const Told told = FindingsIn("it.road");
        std::string all;
        for (const auto& it : told) all += it + "; ";
        EXPECT_TRUE(told.contains(fault.told) && !already.contains(fault.told)) << fault.told << " in " << all;
        EXPECT_EQ(all.find("skipped-record"), std::string::npos) << fault.told << " in " << all;
    }
}

TEST_F(Check, FindsFaultsOfOtherForms) {
    const struct {
        const char* records;
        const char* told;
    } cases[] = {
        {"Intersection\nA 0 0 0 0 0 0 0\nB 100 0 0 0 0 0 0\nC 200 100 0 0 0 0 0\n", "5 note kink"},
        {"Intersection\nA 0 0 0 0 0 0 0\nB 100 0 900 0 0 0 0\nC 200 100 0 0 0 0 0\n", "5 error no-road"},
        {"Coordinate\n1 0 0 0 0 A\n1 0 100 0 0 B\n1 0 200 1 0 C\n", "5 warning kink"},
        {"Coordinate\n1 0 0 0 0 A\n2 0 100 0 80 B\n1 0 150 80 0 C\n1 0 200 80 0 D\n", "5 error kink"},
        {"Coordinate\n1 0 0 0 0 A\n1 0 0 0 0 B\n1 0 200 1 0 C\n", "4 error no-road"},
        {"Coordinate\n\n1 0 0 0 0 A\n", "3 error no-road"},
        {"Element\n0 0 0 0 0 0 0 0 0 0\n0 0 0 90 300 0 1 0 0 0\n", "5 error number-too-large"},
        {"WidenSectionRight\n9 3 0 1\n\nBrokenLine\n1 0 0 0 0 A\n1 0 99 0 0 B\n", "4 error section-order"},
        {"BrokenLine\n1 0 0 0 0 A\n1 0 99 0 0 B\n\nWidenSectionRight\n9 3 0 1\n\nStandardSectionRight\na b 3 0 0 0\n",
         "8 error section-order"},
        {"BrokenLine\n1 0 0 0 0 A\n1 0 99 0 0 B\n\nVerticalCurve_SECONDPARA\n0 5 0 0 0 0 0\n50 6 0 60 0 70 0\n99 5 0 "
         "99 0 "
         "99 0\n",
         "9 error curve-ends"},
        {"BrokenLine\n1 0 0 0 0 A\n1 0 99 0 0 B\n\nVerticalCurve_SECONDPARA\n0 5 0 0 0 0 0\n30 6 0 20 0 50.002 0\n60 6 "
         "0 "
         "50 0 70 0\n99 5 0 99 0 99 0\n",
         "10 warning curves-overlap"},
    };
    for (const auto& it : cases) {
        WriteRoad("it.road", std::string("0 100 0 K\n\n") + it.records);
        const Told told = FindingsIn("it.road");
        EXPECT_TRUE(told.contains(it.told)) << it.told << "\n" << Run("check it.road").out;
    }
}

TEST_F(Check, GoodRoadsHaveNoErrors) {
    for (const auto& entry : std::filesystem::directory_iterator(KESTO_SAMPLE_ROADS)) {
        if (entry.path().extension() != ".road") continue;
        const auto run = Run("check '" + entry.path().string() + "'");
        EXPECT_EQ(run.code, 0) << run.out;
        EXPECT_NE(run.out.find(": 0 errors, 0 warnings, "), std::string::npos) << run.out;
    }
    // A corner of 0.6 degrees and a gap of 1.06 mm; spirals that do not end with the radius of their neighbours.
    const std::pair<const char*, int> published[] = {
        {"cz-branch", 1},         {"sbb-a50116a", 1},     {"finland-m3", 0},
        {"rfi-primary-route", 0}, {"sncf-san1-xd", 0},    {"trafikverket-crossover", 0},
        {"profile-crest-400", 0}, {"profile-sag-800", 0}, {"profile-unsymmetrical-100-200", 0}};
    for (const auto& [sample, code] : published) {
        Make(sample, "it.road");
        EXPECT_EQ(Run("check it.road").code, code) << sample;
    }
    for (const std::string sample : {"instrument-manual", "mountain-road", "two-arcs"}) {
        ASSERT_EQ(Run(IntersectionTables(sample) + " -o it.road").code, 0);
        EXPECT_EQ(Run("check it.road").code, 0) << Run("check it.road").out;
    }
}

// The library's own files, with every section that it writes, hold nothing that the lines' own rules would tell.
TEST_F(Check, TakesWhatTheLibraryWrites) {
    for (std::int32_t mode = 0; mode < 4; ++mode) {
        Road road;
        road.Start(0, 0, 0).Straight(100).Arc(50, 20, Turn::Right);
        for (const double x : {0.0, 60.0}) {
            const Intersection intersection{"P", x, 0, 0, 0, 0, 0, 0, {}};
            const Coordinate point{1, 0, x, 0, 0, "P"};
            if (mode == 0) AddIntersection(road.Handle(), &intersection, -1);
            if (mode >= 2) AddCoordinate(road.Handle(), &point, -1);
        }
        SetRoadDesignMode(road.Handle(), mode);
        SetVerticalCurveMode(road.Handle(), mode % 2);
        road.BrokenChain(30, 20).GradePoint(0, 5).GradePoint(50, 5);
        const SectionMileageIndex entry{"", 20};
        AddSectionMileageIndex(road.Handle(), &entry);
        for (const Side side : {Side::Left, Side::Right}) {
            road.Plate(side, 3, -2, 0, "lane");
            for (const ChangeOf kind : {ChangeOf::Width, ChangeOf::CrossSlope}) road.Change(side, kind, 10, {3});
        }
        ASSERT_EQ(road.Save((folder / "it.road").string()), 0);
        Told told = FindingsIn("it.road");
        std::erase_if(told, [](const std::string& it) { return it.ends_with("profile-short"); });
        EXPECT_EQ(told, Told());
    }
}

// Points at 0, 300, 650 and 1000 whose curves are given by their ends; an occurrence of -1 stands for the neighbour.
TEST_F(Check, GivenEndsOfCurves) {
    const struct {
        const char *first, *second;
        Told told;
    } cases[] = {
        {"275 0 340 0", "340 0 675 0", {}},
        {"275 0 340 0", "625 -1 675 0", {"10 error curves-overlap"}},
        {"275 0 300 0", "660 -1 675 0", {}},
        {"0 0 340 0", "600 0 0 -1", {}},
        {"275 7 340 0",
         "600 0 1675 0",
         {"9 error curve-end-off-road", "10 warning curve-end-off-road", "11 error curves-overlap"}},
    };
    for (const auto& it : cases) {
        WriteRoad("it.road", std::string("0 100 0 K\n\nBrokenLine\n1 0 0 0 0 A\n1 0 1000 0 0 B\n\nVerticalCurve_"
                                         "SECONDPARA\n0 0 0 0 0 0 0\n300 9 0 ") +
                                 it.first + "\n650 2 0 " + it.second + "\n1000 9 0 0 0 0 0\n");
        Told told;
        for (const std::string& text : FindingsIn("it.road")) {
            if (text.find("curve") != std::string::npos) told.insert(text);
        }
        EXPECT_EQ(told, it.told) << it.first << " " << it.second;
    }
}

TEST_F(Check, TextNamesFileLineAndCode) {
    Write("it.road", Plant(ReadFile(std::string(KESTO_SAMPLE_ROADS) + "/trafikverket-crossover.road"),
                           {21, "28000.65965810", "29000.65965810", ""}));
    Make("trafikverket-crossover", "good.road");
    EXPECT_EQ(Run("check good.road").out, "good.road: 0 errors, 0 warnings, 0 notes\n");
    EXPECT_EQ(Run("check it.txt").code, 3);
    EXPECT_EQ(Run("check none.road").code, 3);
    std::filesystem::create_directory(folder / "folder.road");
    EXPECT_EQ(Run("check folder.road").code, 3);
    std::filesystem::copy(folder / "good.road", folder / "good.watx");
    EXPECT_EQ(Run("check good.watx").out, "good.watx: 0 errors, 0 warnings, 0 notes\n");
    WriteRoad("far.road", "0 100 0 K\n\nElement\n1e308 -1e308 0 0 0 0 0 0 0 0\n-1e308 1e308 0 9 0 0 1 0 0 0\n");
    EXPECT_EQ(Run("check far.road").out.find("inf"), std::string::npos);
    const auto lines = Lines(Run("check it.road").out);
    ASSERT_GE(lines.size(), 2U);
    EXPECT_TRUE(lines.front().starts_with("it.road:")) << lines.front();
    EXPECT_TRUE(lines.front().ends_with("[chain-off-road]")) << lines.front();
    EXPECT_TRUE(lines.back().starts_with("it.road: 1 error, ")) << lines.back();
}

}  // namespace
}  // namespace kesto::test
