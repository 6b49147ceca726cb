// Time stands still, so that documents with a date are the same byte by byte. The linker's --wrap leads calls here; on
// Windows the pointer by which a program reaches the system's clock does.
#include <ctime>

namespace {

std::time_t StandingTime(std::time_t* out) noexcept {
    constexpr std::time_t now = 1'000'000'000;
    if (out != nullptr) *out = now;
    return now;
}

}  // namespace

#if defined(_WIN32)
extern "C" {
extern std::time_t (*const __imp__time64)(std::time_t*);
std::time_t (*const __imp__time64)(std::time_t*) = StandingTime;
}
#else
extern "C" std::time_t __wrap_time(std::time_t* out);

std::time_t __wrap_time(std::time_t* out) { return StandingTime(out); }
#endif
