// The file functions as a host meets them: paths, statuses, and what a failing call leaves alone.

#include <gtest/gtest.h>

#include <filesystem>

#include "support/folder_test.hpp"
#include "support/road.hpp"

namespace kesto::test {
namespace {

namespace fs = std::filesystem;

using ProjectFile = FolderTest;

std::int32_t LastStatus(RoadDesign* road) {
    Failure failure{};
    return GetLastFailure(road, &failure) ? failure.status : -1;
}

/// A road of 300 m with a break and a profile, saved in design mode 1.
Road SmallRoad() {
    Road road = MakeRoad({Straight(100), Arc(right, 500, 200)}, {.x = 1000, .y = 2000, .azimuth = 30, .mileage = 5});
    SetRoadDesignMode(road, 1);
    const BrokenChain chain{150, 160};
    EXPECT_TRUE(AddBrokenChain(road, &chain));
    for (const double mileage : {10.0, 100.0, 250.0}) {
        VerticalCurve point{};
        point.mileage = mileage;
        point.elevation = mileage / 10;
        point.radius = 1000;
        EXPECT_TRUE(AddVerticalCurve(road, &point));
    }
    return road;
}

// On every platform: where files have names of wide characters, a test alone sees whether the right one was made.
TEST_F(ProjectFile, PathsAreUtf8) {
    const Road road = SmallRoad();
    const fs::path inside = folder / u8"Stra\u00DFe \u9053\u8DEF";
    fs::create_directories(inside);
    const auto utf8 = [](const fs::path& path) {
        const std::u8string text = path.u8string();
        return std::string(text.begin(), text.end());
    };
    const fs::path project = inside / u8"\u0159eka.road", document = inside / u8"\u0159eka.xml";
    for (int i = 0; i < 2; ++i) ASSERT_EQ(SaveProject(road, utf8(project).c_str()), KESTO_SUCCESS) << i;
    ASSERT_EQ(ExportLandXMLFile(road, utf8(document).c_str()), KESTO_SUCCESS);
    EXPECT_TRUE(fs::is_regular_file(project) && fs::is_regular_file(document));
    EXPECT_EQ(std::distance(fs::directory_iterator(inside), fs::directory_iterator()), 2);
    const Road opened;
    ASSERT_EQ(OpenProject(opened, utf8(project).c_str()), KESTO_SUCCESS);
    EXPECT_EQ(GetElementCount(opened), GetElementCount(road));
}

TEST_F(ProjectFile, MemoryHoldsTheBytesOfTheFile) {
    const Road road = SmallRoad();
    ASSERT_EQ(SaveProject(road, At("a.road").c_str()), KESTO_SUCCESS);
    const std::string file = Content("a.road");
    std::int64_t size = -1;
    EXPECT_EQ(SaveProjectToMemory(road, nullptr, 0, &size), KESTO_ARRAY_TOO_SMALL);
    ASSERT_EQ(size, static_cast<std::int64_t>(file.size()));
    EXPECT_EQ(LastStatus(road), KESTO_ARRAY_TOO_SMALL);
    std::string bytes(file.size(), '#');
    EXPECT_EQ(SaveProjectToMemory(road, bytes.data(), size - 1, &size), KESTO_ARRAY_TOO_SMALL);
    EXPECT_EQ(bytes, std::string(file.size(), '#'));
    EXPECT_EQ(SaveProjectToMemory(road, bytes.data(), size, &size), KESTO_SUCCESS);
    EXPECT_EQ(bytes, file);

    const Road fromFile, fromMemory;
    ASSERT_EQ(OpenProject(fromFile, At("a.road").c_str()), KESTO_SUCCESS);
    EXPECT_EQ(OpenProjectFromMemory(fromMemory, bytes.data(), size), KESTO_SUCCESS);
    EXPECT_EQ(Snapshot(fromMemory), Snapshot(fromFile));
    const std::string before = Snapshot(fromMemory);
    EXPECT_EQ(OpenProjectFromMemory(fromMemory, bytes.data(), -1), KESTO_RECORD_COUNT_REFUSED);
    EXPECT_EQ(Snapshot(fromMemory), before);
    bytes += "VerticalCurve\n1e999 1 1 0\n";
    EXPECT_EQ(OpenProjectFromMemory(fromMemory, bytes.data(), static_cast<std::int64_t>(bytes.size())), KESTO_SUCCESS);
    EXPECT_EQ(LastStatus(fromMemory), KESTO_RECORDS_SKIPPED);
    EXPECT_EQ(OpenProjectFromMemory(fromMemory, "", 0), KESTO_SUCCESS);
    EXPECT_EQ(GetElementCount(fromMemory), 0);
}

TEST_F(ProjectFile, TheExtensionIsMadeThatOfTheProject) {
    struct Case {
        const char *given, *asRoad, *asWater;
    };
    const Case cases[] = {
        {"plain.road", "plain.road", "plain.road.watx"},
        {"Upper.ROAD", "Upper.road", "Upper.road.watx"},
        {"mixed.rOaD", "mixed.road", "mixed.road.watx"},
        {"text.txt", "text.txt.road", "text.txt.watx"},
        {"Text.TXT", "Text.txt.road", "Text.txt.watx"},
        {"none", "none.road", "none.watx"},
        {"end.", "end..road", "end..watx"},
        {"a.road.bak", "a.road.bak.road", "a.road.bak.watx"},
        {"W.WATX", "W.watx.road", "W.watx"},
    };
    const Road road;
    for (const Case& it : cases) {
        for (const auto& [save, written] : {std::pair(&SaveProject, it.asRoad), {&SaveWaterProject, it.asWater}}) {
            EXPECT_EQ(save(road, At(it.given).c_str()), KESTO_SUCCESS) << it.given;
            EXPECT_TRUE(fs::exists(folder / written)) << it.given;  // the folder's own capitals stay
            fs::remove(folder / written);
        }
    }
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(ProjectFile, AWaterProjectLeavesTheSectionMileagesOut) {
    const Road road = SmallRoad();
    ASSERT_EQ(SaveProject(road, At("bare.road").c_str()), KESTO_SUCCESS);
    const SectionMileageIndex entry{"", 40};
    ASSERT_TRUE(AddSectionMileageIndex(road, &entry));
    ASSERT_EQ(SaveProject(road, At("a.road").c_str()), KESTO_SUCCESS);
    ASSERT_EQ(SaveWaterProject(road, At("a.watx").c_str()), KESTO_SUCCESS);
    EXPECT_NE(Content("a.road"), Content("a.watx"));
    EXPECT_EQ(Content("bare.road"), Content("a.watx"));
    const Road opened;
    ASSERT_EQ(OpenWaterProject(opened, At("a.watx").c_str()), KESTO_SUCCESS);
    EXPECT_EQ(GetSectionMileageIndexCount(opened), 0);
    EXPECT_EQ(GetVerticalCurveCount(opened), 3);
    // Whatever section a file brings is read.
    fs::copy(At("a.road"), At("b.watx"));
    ASSERT_EQ(OpenWaterProject(opened, At("b.watx").c_str()), KESTO_SUCCESS);
    EXPECT_EQ(GetSectionMileageIndexCount(opened), 1);
}

TEST_F(ProjectFile, AFailingOpenLeavesTheRoad) {
    const Road road = SmallRoad();
    SetMakeStakePerfix(road, "AK");
    Write("capitals.ROAD", "0 100 0 K\r\n");
    Write("a.road ", "0 100 0 K\r\n");
    fs::create_directories(folder / "folder.road");
    const std::pair<const char*, std::int32_t> cases[] = {
        {"missing.road", KESTO_FILE_NOT_OPENED},  {"folder.road", KESTO_FILE_NOT_OPENED},
        {"capitals.ROAD", KESTO_WRONG_EXTENSION}, {"a.road ", KESTO_WRONG_EXTENSION},
        {"missing.txt", KESTO_WRONG_EXTENSION},   {"road", KESTO_WRONG_EXTENSION},
    };
    for (const auto& [name, status] : cases) {
        for (const auto open : {OpenProject, OpenProject2}) {
            EXPECT_EQ(open(road, At(name).c_str()), status) << name;
            EXPECT_EQ(LastStatus(road), status) << name;
        }
    }
    EXPECT_EQ(OpenProject(road, nullptr), KESTO_NULL_HANDLE_OR_PATH);
    EXPECT_EQ(OpenProject(road, ""), KESTO_WRONG_EXTENSION);
    EXPECT_EQ(OpenProject(road, At("missing.watx").c_str()), KESTO_WRONG_EXTENSION);
    EXPECT_EQ(OpenWaterProject(road, At("capitals.ROAD").c_str()), KESTO_WRONG_EXTENSION);
    EXPECT_EQ(OpenWaterProject(road, At("missing.watx").c_str()), KESTO_FILE_NOT_OPENED);
    EXPECT_EQ(OpenProject(nullptr, "x"), KESTO_NULL_HANDLE_OR_PATH);
    EXPECT_STREQ(GetMakeStakePerfix(road), "AK");
    EXPECT_EQ(GetVerticalCurveCount(road), 3);
    EXPECT_EQ(GetBrokenChainCount(road), 1);
}

TEST_F(ProjectFile, OpeningReplacesAllThatClearingEmpties) {
    const Road road = SmallRoad();
    ASSERT_TRUE(DesignRoad(road));
    Write("empty.road", "");
    EXPECT_EQ(OpenProject(road, At("empty.road").c_str()), KESTO_SUCCESS);
    EXPECT_EQ(GetElementCount(road) + GetBrokenChainCount(road) + GetVerticalCurveCount(road), 0);
    EXPECT_EQ(GetStakeCoordinateCount(road), 0);
    EXPECT_EQ(GetRoadDesignMode(road), 0);
    double x = 0, y = 0, azimuth = 0;
    EXPECT_FALSE(GetPositionAndAzimuth(road, 50, 0, 90, &x, &y, &azimuth, 0));
}

TEST_F(ProjectFile, TheChainIsBuiltFromWhatWasOpened) {
    const Road other = MakeRoad({Straight(100), Straight(100)}, {.mileage = 500});
    ASSERT_EQ(SaveProject(other, At("a.road").c_str()), KESTO_SUCCESS);
    const Road road = SmallRoad();
    ASSERT_TRUE(DesignRoad(road));
    ASSERT_EQ(OpenProject(road, At("a.road").c_str()), KESTO_SUCCESS);
    const Foot foot = FootOf(road, 150, 3);
    EXPECT_NEAR(foot.mileage, 650, 1e-7);
    EXPECT_NEAR(foot.offset, 3, 1e-7);
}

// Transition types outlive their change sections, so those that a road has stay where the file brings none.
TEST_F(ProjectFile, TransitionTypesOfTheFileJoinThoseOfTheRoad) {
    const auto addChange = [](RoadDesign* road, double mileage, std::int32_t type) {
        const double width = 4;
        return AddChangeSectionList(road, mileage, right, widening, &width, 1, 0, type);
    };
    const auto types = [](RoadDesign* road) {
        std::vector<std::int32_t> found(4, -1);
        for (std::int32_t i = 0; i < 4; ++i) GetChangeSectionType(road, right, widening, i, &found[std::size_t(i)]);
        return found;
    };
    const SectionPlate plate{};
    const Road saved = SmallRoad();
    const Road road = SmallRoad();
    for (const Road* it : {&saved, &road}) ASSERT_TRUE(AddStandardSectionPlate(*it, &plate, right, -1));
    for (const double mileage : {20.0, 40.0}) ASSERT_TRUE(addChange(saved, mileage, 2));
    for (const double mileage : {20.0, 30.0}) ASSERT_TRUE(addChange(road, mileage, 1));
    ASSERT_EQ(SaveProject(saved, At("a.road").c_str()), KESTO_SUCCESS);
    EXPECT_EQ(OpenProject(road, At("missing.road").c_str()), KESTO_FILE_NOT_OPENED);
    EXPECT_EQ(types(road), (std::vector<std::int32_t>{1, 1, 0, 0}));
    EXPECT_EQ(OpenProject(road, At("a.road").c_str()), KESTO_SUCCESS);
    EXPECT_EQ(types(road), (std::vector<std::int32_t>{2, 1, 2, 0}));
    EXPECT_EQ(GetChangeSectionCount(road, right, widening), 2);
    ASSERT_EQ(SaveProject(road, At("b.road").c_str()), KESTO_SUCCESS);
    EXPECT_EQ(Content("b.road"), Content("a.road"));
}

TEST_F(ProjectFile, SkippedRecordsAreToldBesideSuccess) {
    Write("a.road", "0 100 0 K\r\n\r\nBrokenChain\r\n1 2\r\n1 3\r\n4 1e999\r\n");
    const Road road;
    EXPECT_EQ(OpenProject(road, At("a.road").c_str()), KESTO_SUCCESS);
    Failure failure{};
    ASSERT_TRUE(GetLastFailure(road, &failure));
    EXPECT_EQ(failure.status, KESTO_RECORDS_SKIPPED);
    EXPECT_EQ(failure.list, KESTO_LIST_BROKEN_CHAINS);
    EXPECT_EQ(failure.record, 5);
    EXPECT_EQ(failure.value, 2);
    EXPECT_EQ(GetBrokenChainCount(road), 1);
    Write("b.road", "0 100 0 K\r\n\r\nBrokenChain\r\n1 2\r\n");
    EXPECT_EQ(OpenProject(road, At("b.road").c_str()), KESTO_SUCCESS);
    EXPECT_FALSE(GetLastFailure(road, &failure)) << "a whole file leaves nothing of the one before";
}

TEST_F(ProjectFile, AFailingDesignRunKeepsWhatWasRead) {
    Write("a.road", "7 100 0 K\r\n\r\nElement\r\n0 0 0 0 0 0 0 0 0 0\r\n1e999\r\n");
    const Road road;
    EXPECT_EQ(OpenProject2(road, At("a.road").c_str()), KESTO_TOO_FEW_ELEMENTS);
    EXPECT_EQ(LastStatus(road), KESTO_TOO_FEW_ELEMENTS);
    EXPECT_EQ(GetElementCount(road), 1);
    double start = 0;
    GetRoadMileage(road, &start);
    EXPECT_EQ(start, 7);
}

TEST_F(ProjectFile, AFailingSaveIsToldAndLeavesTheEarlierFile) {
    const Road road = SmallRoad();
    EXPECT_EQ(SaveProject(road, At("missing/a.road").c_str()), KESTO_FILE_NOT_WRITTEN);
    EXPECT_EQ(LastStatus(road), KESTO_FILE_NOT_WRITTEN);
    ASSERT_EQ(SaveProject(road, At("a.road").c_str()), KESTO_SUCCESS);
    const std::string earlier = Content("a.road");
    SetMakeStakePerfix(road, std::string(300, 'K').c_str());
    EXPECT_EQ(SaveProject(road, At("a.road").c_str()), KESTO_FILE_NOT_WRITTEN);
    EXPECT_EQ(Content("a.road"), earlier);
    EXPECT_EQ(SaveProject(road, nullptr), KESTO_NULL_HANDLE_OR_PATH);
}

}  // namespace
}  // namespace kesto::test
