// Memory that runs out while the C library loads a code page for the first time: only a new process can try that.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <new>
#include <string>

#include "failing_allocations.hpp"
#include "io/code_page.hpp"

namespace kesto::test {
namespace {

enum class Ending : int { Converted, OutOfMemory, Unconverted, NotReached };

/// Converts a name in a child process with an allocation failing.
Ending ConvertWithout(int allowed, Failing failing) {
    const pid_t child = fork();
    if (child == 0) {
        const CodePage page("GB18030");
        auto ending = Ending::OutOfMemory;
        FailAllocations(allowed, failing);
        try {
            const std::string utf8 = page.ToUtf8("\xB5\xC0\xC2\xB7");
            ending = utf8 == "\xE9\x81\x93\xE8\xB7\xAF" ? Ending::Converted : Ending::Unconverted;
        } catch (const std::bad_alloc&) {
        }
        if (StopFailing().failed == 0 && ending == Ending::Converted) ending = Ending::NotReached;
        _exit(static_cast<int>(ending));
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    return static_cast<Ending>(WEXITSTATUS(status));
}

TEST(FirstConversion, IsDoneOrFailsForWantOfMemory) {
    for (const Failing failing : {Failing::Once, Failing::ForGood}) {
        int failures = 0;
        for (int n = 0; n < 1000; ++n) {
            const Ending ending = ConvertWithout(n, failing);
            if (ending == Ending::NotReached) break;
            EXPECT_TRUE(ending != Ending::Unconverted) << "allocation " << n + 1;
            if (ending == Ending::OutOfMemory) ++failures;
        }
        EXPECT_GT(failures, 5);
    }
}

TEST(FailingAllocations, ReachTheCLibrary) {
    FailAllocations(0, Failing::ForGood);
    std::FILE* const file = std::fopen("/dev/null", "rb");
    const Allocations allocations = StopFailing();
    EXPECT_EQ(allocations.failed, 1);
    EXPECT_EQ(file, nullptr);
    if (file != nullptr) std::fclose(file);
}

}  // namespace
}  // namespace kesto::test
