// Writes the accuracy set, or a share of it, to a file: cases with their exact answers, made without the library.
// Usage: generate_accuracy_set FILE [SHARE]

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "element_cases.hpp"

int main(int count, char** arguments) {
    constexpr std::uint64_t seed = 20250301;
    std::FILE* const file = count < 2 ? nullptr : std::fopen(arguments[1], "wb");
    const double share = count < 3 ? 1 : std::atof(arguments[2]);
    if (file == nullptr || !(share > 0 && share <= 1)) {
        std::fprintf(stderr, "usage: generate_accuracy_set FILE [SHARE, above 0 up to 1]\n");
        return 2;
    }
    reference::SetWriter set(file);
    reference::Dice dice(seed);
    set.Begin("#").Word(
        "Questions about elements and their exact answers; the format is told in tests/accuracy/README.md.");
    reference::WriteElementCases(set, dice, share);
    set.WriteLeftOut();
    return std::fclose(file) == 0 ? 0 : 1;
}
