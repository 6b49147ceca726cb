/// Runs the program as a shell would, in a folder of its own.
#pragma once

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/folder_test.hpp"

namespace kesto::test {

struct RunResult {
    int code;
    std::string out, err;
};

inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// Fields of a line without quotes; an empty last field counts.
inline std::vector<std::string> Fields(const std::string& line, char separator = ',') {
    std::vector<std::string> fields(1);
    for (const char c : line) c == separator ? static_cast<void>(fields.emplace_back()) : fields.back().push_back(c);
    return fields;
}

class ProgramTest : public FolderTest {
protected:
    /// Runs the program in the test's folder with arguments as a shell reads them.
    RunResult Run(const std::string& arguments) const {
        const std::string command = "cd '" + folder.string() + "' && " KESTO_LEAK_OPTIONS " '" KESTO_ROAD_PROGRAM "' " +
                                    arguments + " >stdout.txt 2>stderr.txt </dev/null";
        const int status = std::system(command.c_str());  // NOLINT(cert-env33-c): the tests want a shell
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(folder / "stdout.txt"),
                ReadFile(folder / "stderr.txt")};
    }

    /// Arguments that make a road from one of the sample alignments.
    static std::string Tables(const std::string& sample) {
        const std::filesystem::path data = std::filesystem::path(KESTO_TEST_DATA) / sample;
        const auto quoted = [&](const char* name) { return " '" + (data / name).string() + "'"; };
        std::string arguments = "make" + quoted("start.csv") + quoted("elements.csv");
        if (exists(data / "broken_chains.csv")) arguments += " --broken" + quoted("broken_chains.csv");
        if (exists(data / "profile.csv")) arguments += " --profile" + quoted("profile.csv");
        return arguments;
    }

    /// The same for a sample that is given by its intersections.
    static std::string IntersectionTables(const std::string& sample) {
        const std::string data = std::string(KESTO_TEST_DATA) + "/intersections-" + sample + "/";
        return "make '" + data + "start.csv' --intersections '" + data + "intersections.csv'";
    }

    /// The same for the sample road with cross sections.
    static std::string SectionTables() {
        const std::string data = std::string(KESTO_SAMPLE_ROADS) + "/superelevated/";
        return "make '" + data + "start.csv' '" + data + "elements.csv' --broken '" + data +
               "broken_chains.csv' --profile '" + data + "profile.csv' --plates '" + data + "plates.csv' --changes '" +
               data + "changes.csv' --interval 20";
    }

    /// Makes a road of a sample alignment.
    void Make(const std::string& sample, const std::string& road) const {
        const auto made = Run(Tables(sample) + " -o " + road);
        ASSERT_EQ(made.code, 0) << made.err;
        ASSERT_EQ(made.err, "");
    }
};

}  // namespace kesto::test
