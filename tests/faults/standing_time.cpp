// Time stands still, so that documents with a date are the same byte by byte. The linker's --wrap leads calls here.
#include <ctime>

extern "C" std::time_t __wrap_time(std::time_t* out);

std::time_t __wrap_time(std::time_t* out) {
    constexpr std::time_t now = 1'000'000'000;
    if (out != nullptr) *out = now;
    return now;
}
