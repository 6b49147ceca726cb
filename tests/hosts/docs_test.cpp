// What the documents show of the program is what it prints.
#include "program_run.hpp"

namespace kesto::test {
namespace {

class Docs : public ProgramTest {};

TEST_F(Docs, ShowWhatTheProgramPrints) {
    const std::filesystem::path root = std::filesystem::path(KESTO_SAMPLE_ROADS).parent_path().parent_path();
    create_directory_symlink(root / "examples", folder / "examples");
    const std::string start = "```console\n$ kesto-road ";
    int shown = 0;
    for (const char* document : {"README.md", "docs/kesto-road.md"}) {
        const std::string text = ReadFile(root / document);
        for (std::size_t at = 0; (at = text.find(start, at)) != std::string::npos; ++shown) {
            at += start.size();
            const std::size_t output = text.find('\n', at) + 1;
            const auto run = Run(text.substr(at, output - 1 - at));
            EXPECT_EQ(run.code, 0) << run.err;
            EXPECT_EQ(run.out, text.substr(output, text.find("```\n", output) - output));
        }
    }
    EXPECT_EQ(shown, 3);
}

}  // namespace
}  // namespace kesto::test
