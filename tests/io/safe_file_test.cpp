// Saving: the earlier file stays whole until the new one is.

#include "io/safe_file.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/folder_test.hpp"

#if !defined(_WIN32)
#include <signal.h>  // NOLINT(modernize-deprecated-headers)
#include <sys/stat.h>
#include <unistd.h>

#include <thread>
#endif

namespace kesto {
namespace {

namespace fs = std::filesystem;

using SafeFile = test::FolderTest;

TEST_F(SafeFile, TakesTheLongestFileName) {
    const std::string name = std::string(250, 'n') + ".road";
    EXPECT_TRUE(WriteWholeFile(At(name), "new"));
    EXPECT_EQ(Content(name), "new");
    EXPECT_EQ(FileCount(), 1);
}

#if !defined(_WIN32)
TEST_F(SafeFile, KeepsLinksAndPermissions) {
    fs::create_directories(folder / "elsewhere");
    Write("elsewhere/a.road", "old");
    ASSERT_EQ(chmod(At("elsewhere/a.road").c_str(), 0640), 0);
    fs::create_symlink("elsewhere/a.road", folder / "near.road");
    fs::create_symlink("near.road", folder / "link.road");
    EXPECT_TRUE(WriteWholeFile(At("link.road"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "link.road"));
    EXPECT_TRUE(fs::is_symlink(folder / "near.road"));
    EXPECT_EQ(Content("elsewhere/a.road"), "new");
    struct stat saved {};
    ASSERT_EQ(stat(At("elsewhere/a.road").c_str(), &saved), 0);
    EXPECT_EQ(saved.st_mode & 0777U, 0640U);
}

TEST_F(SafeFile, WritesPipesAndDevicesDirectly) {
    EXPECT_TRUE(WriteWholeFile("/dev/null", "text"));
    EXPECT_FALSE(fs::is_regular_file("/dev/null"));

    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = Content("pipe"); });
    const Outcome written = WriteWholeFile(At("pipe"), "through the pipe");
    reader.join();
    EXPECT_TRUE(written);
    EXPECT_EQ(received, "through the pipe");

    // A reader that goes away: a failure, not a signal.
    std::thread leaving([&] { std::ifstream(At("pipe")).get(); });
    EXPECT_FALSE(WriteWholeFile(At("pipe"), std::string(std::size_t{1} << 22U, 'x')));
    leaving.join();
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST_F(SafeFile, AFileWithoutEndIsOutOfMemory) {
    const Result<std::string> endless = ReadWholeFile("/dev/zero", 1000000);
    ASSERT_FALSE(endless);
    EXPECT_EQ(endless.failure().status, KESTO_FILE_OUT_OF_MEMORY);
}
#endif

}  // namespace
}  // namespace kesto
