// A corpus of malformed project files, each named after its fault: what opening tells of it, what is read, and that the
// road can be used and saved afterwards. expected.csv says what each gives:
//   design                 status of OpenProject2()
//   intersections ... changes   how many records are read (plates and change sections of the right side's widths)
//   skipped, line, list    the failure that tells of skipped records; line -1 where none are

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <set>

#include "support/csv.hpp"
#include "support/road.hpp"
#include "support/temporary_folder.hpp"

namespace kesto::test {
namespace {

namespace fs = std::filesystem;

const fs::path corpus = fs::path(KESTO_TEST_DATA) / "malformed";

class MalformedFiles : public testing::Test {
protected:
    const TemporaryFolder folder;
    const std::string saved = folder.At("saved.road");
};

std::array<std::int32_t, 6> Counts(RoadDesign* road) {
    return {GetIntersectionCount(road),
            GetElementCount(road),
            GetBrokenChainCount(road),
            GetVerticalCurveCount(road),
            GetStandardSectionPlateCount(road, right),
            GetChangeSectionCount(road, right, 1)};
}

TEST_F(MalformedFiles, EachGivesWhatItsFaultLeaves) {
    std::set<std::string> named;
    for (const Row& row : ReadCsv((corpus / "expected.csv").string())) {
        const std::string name = row.Text("file");
        SCOPED_TRACE(name);
        named.insert(name);
        const std::string path = (corpus / name).string();
        const Road road;
        EXPECT_EQ(OpenProject(road, path.c_str()), KESTO_SUCCESS);
        EXPECT_EQ(Counts(road), (std::array{row.Whole("intersections"), row.Whole("elements"), row.Whole("chains"),
                                            row.Whole("points"), row.Whole("plates"), row.Whole("changes")}));
        const Failure failure = LastFailure(road);
        EXPECT_EQ(failure.status, row.Whole("skipped") > 0 ? KESTO_RECORDS_SKIPPED : KESTO_SUCCESS);
        if (row.Whole("skipped") > 0) {
            EXPECT_EQ(failure.value, row.Whole("skipped"));
            EXPECT_EQ(failure.record, row.Whole("line"));
            EXPECT_EQ(failure.list, row.Whole("list"));
        }
        // What was read is a road: it saves, and the file of it is a good one.
        ASSERT_EQ(SaveProject(road, saved.c_str()), KESTO_SUCCESS);
        const Road again;
        ASSERT_EQ(OpenProject(again, saved.c_str()), KESTO_SUCCESS);
        EXPECT_EQ(LastFailure(again).status, KESTO_SUCCESS);
        EXPECT_EQ(Counts(again)[3], Counts(road)[3]);
        EXPECT_EQ(Counts(again)[5], Counts(road)[5]);
        EXPECT_EQ(OpenProject2(road, path.c_str()), row.Whole("design"));
    }
    std::set<std::string> files;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (entry.path().extension() == ".road") files.insert(entry.path().filename().string());
    }
    EXPECT_EQ(named, files);
}

}  // namespace
}  // namespace kesto::test
