// Saving and exporting while the disk, the permissions, the kind of the target or the life of the process fails: the
// earlier file or the new one is there, whole, and nothing else.
#include <fcntl.h>
#include <grp.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): kill() is POSIX, not C++
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <ostream>
#include <random>
#include <thread>

#include "failing_disk.hpp"
#include "support/road.hpp"
#include "support/temporary_folder.hpp"

namespace kesto::test {
namespace {

namespace fs = std::filesystem;

Road SmallRoad(double length = 500) {
    Road road = MakeRoad({Straight(length), Arc(right, 200, 100)});
    AddGradePoints(road, {GradePoint(0, 5), GradePoint(200, 8, 1000), GradePoint(400, 5)});
    EXPECT_TRUE(DesignRoad(road));
    return road;
}

/// One of the functions that write a file.
struct Saving {
    const char* name;
    const char* file;
    std::int32_t (*save)(RoadDesign*, const char*);

    friend void PrintTo(const Saving& saving, std::ostream* out) { *out << saving.name; }
};

const Saving savings[] = {
    {"SaveProject", "a.road", SaveProject},
    {"SaveWaterProject", "a.watx", SaveWaterProject},
    {"SavePartProject", "a.road",
     [](RoadDesign* road, const char* path) { return SavePartProject(road, path, 50, 550, 0, 0); }},
    {"ExportLandXMLFile", "a.xml", ExportLandXMLFile},
};

std::string Content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

/// Runs in a child process. @return its status as waitpid() tells it
int InChild(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
}

class DiskFaults : public testing::TestWithParam<Saving> {
protected:
    DiskFaults() {
        EXPECT_EQ(Save(), KESTO_SUCCESS);
        whole = Content(target);
        Put(target, earlier);
    }

    static void TearDownTestSuite() {
        std::printf(
            "saves on a full disk: %d, with a failing call: %d, with all failing from one on: %d, interrupted: %d, "
            "killed at a call: %d, at any moment: %d\n",
            fullDisks, failingCalls, failingForGood, interruptions, killsAtCalls, killsAtAnyMoment);
    }

    std::int32_t Save() const { return GetParam().save(road, target.c_str()); }

    /// After a save: the one file or the other, whole, alone, as the status tells.
    void ExpectWhole(std::int32_t status, const std::string& before) const {
        const bool saved = status == KESTO_SUCCESS;
        EXPECT_EQ(status, saved ? KESTO_SUCCESS : KESTO_FILE_NOT_WRITTEN);
        EXPECT_TRUE(saved ? Content(target) == whole : Content(target) == before);
        EXPECT_EQ(FileCount(), fs::exists(target) ? 1 : 0) << "a file stays behind";
    }

    std::ptrdiff_t FileCount() const {
        return std::distance(fs::directory_iterator(target.parent_path()), fs::directory_iterator());
    }

    const std::string earlier = "what an earlier save has left";
    const Road road = SmallRoad();
    const TemporaryFolder folder;
    const fs::path target = folder.At(GetParam().file);
    std::string whole;

    static inline int fullDisks = 0;
    static inline int failingCalls = 0;
    static inline int failingForGood = 0;
    static inline int interruptions = 0;
    static inline int killsAtCalls = 0;
    static inline int killsAtAnyMoment = 0;
};

TEST_P(DiskFaults, TheDiskFillsAtAnyByte) {
    for (std::size_t room = 0; room <= whole.size(); ++room) {
        SCOPED_TRACE(room);
        const bool replaces = room % 16 != 0;  // now and then there is no earlier file
        replaces ? Put(target, earlier) : static_cast<void>(fs::remove(target));
        FailingDisk disk;
        disk.room = room;
        const std::int32_t status = Save();
        ASSERT_EQ(status == KESTO_SUCCESS, room == whole.size());
        if (status != KESTO_SUCCESS) ++fullDisks;
        ExpectWhole(status, replaces ? earlier : "");
        ASSERT_FALSE(HasFailure());
    }
}

TEST_P(DiskFaults, AnyCallOfTheSystemFails) {
    const auto fatal = [](DiskCall call) { return call != DiskCall::Owner && call != DiskCall::Remove; };
    for (const int error : {EIO, ENOSPC, EACCES, EDQUOT}) {
        std::size_t calls = 1;
        for (std::size_t n = 0; n < calls; ++n) {
            SCOPED_TRACE(testing::Message() << "call " << n << " fails with " << error);
            Put(target, earlier);
            FailingDisk disk;
            disk.failingCall = static_cast<int>(n);
            disk.error = error;
            const std::int32_t status = Save();
            calls = disk.calls.size();
            ASSERT_GT(calls, n) << "fewer calls than without a failure";
            ++failingCalls;
            ExpectWhole(status, earlier);
            const bool moved = std::find(disk.calls.begin(), disk.calls.begin() + static_cast<std::ptrdiff_t>(n),
                                         DiskCall::Move) != disk.calls.begin() + static_cast<std::ptrdiff_t>(n);
            EXPECT_TRUE(moved || !fatal(disk.calls[n]) || status != KESTO_SUCCESS) << "a failure is not told";
            if (status == KESTO_SUCCESS) continue;
            calls = n + 2;  // it has stopped early: the next call is reached when this one succeeds
        }
        EXPECT_GT(calls, 8U);
    }
}

TEST_P(DiskFaults, TheDiskFailsForGood) {
    bool failed = true;
    for (int n = 0; failed; ++n) {
        SCOPED_TRACE(n);
        Put(target, earlier);
        FailingDisk disk;
        disk.failingCall = n;
        disk.failsForGood = true;
        disk.error = EIO;
        const std::int32_t status = Save();
        failed = disk.calls.size() > static_cast<std::size_t>(n);
        if (failed) ++failingForGood;
        EXPECT_TRUE(status == KESTO_SUCCESS ? Content(target) == whole : Content(target) == earlier);
        EXPECT_TRUE(status == KESTO_SUCCESS || status == KESTO_FILE_NOT_WRITTEN);
        EXPECT_EQ(status == KESTO_SUCCESS,
                  std::find(disk.calls.begin(), disk.calls.end(), DiskCall::Move) - disk.calls.begin() < n);
    }
}

TEST_P(DiskFaults, LittleIsWrittenAtATimeAndInterrupted) {
    FailingDisk disk;
    disk.writesLittle = true;
    ExpectWhole(Save(), earlier);
    EXPECT_TRUE(Content(target) == whole);
    EXPECT_GT(std::ranges::count(disk.calls, DiskCall::Write), static_cast<std::ptrdiff_t>(whole.size() / 7));
}

TEST_P(DiskFaults, InterruptedCallsAreRepeated) {
    for (std::size_t n = 0;; ++n) {
        SCOPED_TRACE(n);
        Put(target, earlier);
        FailingDisk disk;
        disk.failingCall = static_cast<int>(n);
        disk.error = EINTR;
        const std::int32_t status = Save();
        ExpectWhole(status, earlier);
        if (n >= disk.calls.size()) break;
        ++interruptions;
        const DiskCall call = disk.calls[n];
        const bool repeats =
            call == DiskCall::Open || call == DiskCall::Write || call == DiskCall::Sync || call == DiskCall::Close;
        EXPECT_TRUE(!repeats || status == KESTO_SUCCESS);
    }
}

// What a loss of power leaves is up to the file system, which gets the calls in the order that it needs.
TEST_P(DiskFaults, TheFileIsOnDiskBeforeItTakesItsPlace) {
    FailingDisk disk;
    EXPECT_EQ(Save(), KESTO_SUCCESS);
    std::vector<DiskCall> order;
    for (const DiskCall call : disk.calls) {
        const bool counts = call == DiskCall::Write || call == DiskCall::Sync || call == DiskCall::Move;
        if (counts && (order.empty() || order.back() != call)) order.push_back(call);
    }
    EXPECT_EQ(order, (std::vector{DiskCall::Write, DiskCall::Sync, DiskCall::Move, DiskCall::Sync}));
}

TEST_P(DiskFaults, TheProcessIsKilledAtAnyCall) {
    using Moment = FailingDisk::Moment;
    int kills = 0;
    for (const Moment moment : {Moment::Before, Moment::Within, Moment::After}) {
        for (int n = 0, ended = 0; ended == 0; ++n) {
            SCOPED_TRACE(n);
            Put(target, earlier);
            const int status = InChild([&] {
                FailingDisk disk;
                disk.fatalCall = n;
                disk.moment = moment;
                const std::int32_t saved = Save();
                return static_cast<int>(disk.calls.size()) > n ? 1 : saved;
            });
            ended = WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 1 : 0;
            if (WIFSIGNALED(status)) ++kills;
            const std::string left = Content(target);
            EXPECT_TRUE(left == earlier || left == whole);
            ASSERT_EQ(Save(), KESTO_SUCCESS) << "over what the killed one left";
            ExpectWhole(KESTO_SUCCESS, "");
        }
    }
    EXPECT_GT(kills, 15);
    killsAtCalls += kills;
}

/// How often a process is killed at random.
int Kills() {
    const char* const wanted = std::getenv("KESTO_KILLS");
    return wanted == nullptr ? 10 : std::atoi(wanted);
}

TEST_P(DiskFaults, TheProcessIsKilledAtAnyMoment) {
    ASSERT_EQ(Save(), KESTO_SUCCESS);
    const Road other = SmallRoad(700);
    const std::string otherFile = folder.At("other" + target.extension().string());
    ASSERT_EQ(GetParam().save(other, otherFile.c_str()), KESTO_SUCCESS);
    const std::string otherWhole = Content(otherFile);
    fs::remove(otherFile);
    ASSERT_NE(otherWhole, whole);
    std::mt19937 random(8);
    ASSERT_GT(Kills(), 0);
    for (int i = 0; i < Kills(); ++i) {
        const pid_t child = fork();
        if (child == 0) {
            for (;;) {
                if (GetParam().save(other, target.c_str()) != KESTO_SUCCESS || Save() != KESTO_SUCCESS) _exit(1);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status)) << "a save has failed";
        ++killsAtAnyMoment;
        const std::string left = Content(target);
        ASSERT_TRUE(left == otherWhole || left == whole) << "kill " << i;
    }
    ASSERT_EQ(Save(), KESTO_SUCCESS);
    ExpectWhole(KESTO_SUCCESS, "");
}

constexpr uid_t nobody = 65534;

/// Saves as somebody who is not above permissions.
std::int32_t SaveUnprivileged(const Saving& saving, RoadDesign* road, const std::string& path) {
    const int status = InChild([&] {
        const bool root = geteuid() == 0;
        if (root && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) return 99;
        return static_cast<int>(saving.save(road, path.c_str()));
    });
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status);
}

TEST_P(DiskFaults, PermissionsAreRespected) {
    struct Case {
        const char* name;
        mode_t folderMode;
        mode_t fileMode;  // 0: no file
        std::int32_t status;
    };
    const Case cases[] = {
        {"writable", 0755, 0644, KESTO_SUCCESS},
        {"new", 0755, 0, KESTO_SUCCESS},
        {"readonlyfolder", 0555, 0644, KESTO_FILE_NOT_WRITTEN},
        {"readonlyfoldernofile", 0555, 0, KESTO_FILE_NOT_WRITTEN},
        {"readonlyfile", 0755, 0444, KESTO_FILE_NOT_WRITTEN},
        {"closedfolder", 0, 0644, KESTO_FILE_NOT_WRITTEN},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        const fs::path inside = folder.At(it.name);
        const fs::path file = inside / GetParam().file;
        fs::create_directory(inside);
        if (it.fileMode != 0) Put(file, earlier);
        if (geteuid() == 0) {
            ASSERT_EQ(chown(inside.c_str(), nobody, nobody), 0);
            ASSERT_TRUE(it.fileMode == 0 || chown(file.c_str(), nobody, nobody) == 0);
        }
        ASSERT_TRUE(it.fileMode == 0 || chmod(file.c_str(), it.fileMode) == 0);
        ASSERT_EQ(chmod(inside.c_str(), it.folderMode), 0);
        EXPECT_EQ(SaveUnprivileged(GetParam(), road, file.string()), it.status);
        ASSERT_EQ(chmod(inside.c_str(), 0755), 0);
        const std::string left = Content(file);
        EXPECT_TRUE(it.status == KESTO_SUCCESS ? left == whole : left == (it.fileMode != 0 ? earlier : ""));
        EXPECT_EQ(std::distance(fs::directory_iterator(inside), fs::directory_iterator()), left.empty() ? 0 : 1);
    }
}

TEST_P(DiskFaults, TargetsOfEveryKind) {
    const std::string end = GetParam().file + 1;  // with its point
    fs::create_directories(folder.At("inside"));
    fs::create_directories(folder.At("directory" + end) + "/kept");
    Put(folder.At("inside/linked" + end), earlier);
    const std::pair<std::string, std::string> links[] = {
        {"inside/linked" + end, "link"}, {"inside/new" + end, "dangling"}, {"missing/new" + end, "nowhere"},
        {"ring" + end, "ring"},          {"inside", "folderlink"},         {"/dev/full", "full"},
    };
    for (const auto& [to, from] : links) fs::create_symlink(to, folder.At(from + end));
    struct Case {
        const char* name;
        std::int32_t status;
        const char* written;
    };
    const Case cases[] = {
        {"link", KESTO_SUCCESS, "inside/linked"},        {"dangling", KESTO_SUCCESS, "inside/new"},
        {"nowhere", KESTO_FILE_NOT_WRITTEN, nullptr},    {"ring", KESTO_FILE_NOT_WRITTEN, nullptr},
        {"folderlink", KESTO_FILE_NOT_WRITTEN, nullptr}, {"full", KESTO_FILE_NOT_WRITTEN, nullptr},
        {"directory", KESTO_FILE_NOT_WRITTEN, nullptr},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        const fs::path path = folder.At(it.name + end);
        EXPECT_EQ(GetParam().save(road, path.c_str()), it.status);
        EXPECT_EQ(fs::is_symlink(path), std::string_view(it.name) != "directory");
        EXPECT_TRUE(it.written == nullptr || Content(folder.At(it.written + end)) == whole);
    }
    const fs::path device =
        folder.At("device" + end);                   // the path itself; a file system may allow none, and then it fails
    constexpr unsigned memoryDevices = 1, full = 7;  // that of /dev/full
    if (mknod(device.c_str(), S_IFCHR | 0666, makedev(memoryDevices, full)) == 0) {  // as root alone
        EXPECT_EQ(GetParam().save(road, device.c_str()), KESTO_FILE_NOT_WRITTEN);
        EXPECT_TRUE(fs::is_character_file(device));
        fs::remove(device);
    }
    EXPECT_TRUE(fs::is_directory(folder.At("directory" + end) + "/kept"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    const auto left = [](const fs::path& in) { return std::distance(fs::directory_iterator(in), {}); };
    EXPECT_EQ(left(folder.At("inside")), 2);
    EXPECT_EQ(left(folder), 9) << "a file stays behind";
}

INSTANTIATE_TEST_SUITE_P(All, DiskFaults, testing::ValuesIn(savings),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace kesto::test
