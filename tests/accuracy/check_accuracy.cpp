// Compares the library with an accuracy set and prints the table of errors. The result is 1 where a bar is not kept.
// Usage: check_accuracy FILE

#include <cstdio>
#include <exception>

#include "case_reader.hpp"

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: check_accuracy FILE\n");
        return 2;
    }
    try {
        const accuracy::CaseReader reader = accuracy::ReadSet(arguments[1]);
        std::printf("\n%ld cases.\n\n%s", reader.Cases(), reader.Table().Text().c_str());
        std::printf("\nDrawn and left out of the set:\n\n| cases | what |\n|--:|---|\n");
        for (const auto& [reason, cases] : reader.LeftOut()) std::printf("| %ld | %s |\n", cases, reason.c_str());
        return reader.Table().Passed() ? 0 : 1;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "check_accuracy: %s\n", problem.what());
        return 2;
    }
}
