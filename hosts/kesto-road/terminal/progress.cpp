#include "terminal/progress.hpp"

#include <algorithm>
#include <iostream>
#include <string>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kesto::host {

namespace {

constexpr auto firstAfter = std::chrono::milliseconds(500);
constexpr auto interval = std::chrono::milliseconds(200);
constexpr unsigned callsPerLook = 256;  // rows between two looks at the clock
constexpr std::uintmax_t width = 40;    // characters
constexpr std::uintmax_t percent = 100;

bool ErrorsGoToTerminal() noexcept {
#if defined(_WIN32)
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

Progress::Progress(std::uintmax_t amount)
    : whole(ErrorsGoToTerminal() ? amount : 0), next(std::chrono::steady_clock::now() + firstAfter) {}

Progress::~Progress() {
    if (drawn) std::cerr << '\r' << std::string(width + 8, ' ') << '\r' << std::flush;
}

void Progress::Update(std::uintmax_t done) {
    if (whole == 0 || ++calls % callsPerLook != 0) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next) return;
    next = now + interval;
    drawn = true;
    done = std::min(done, whole);
    const auto filled = static_cast<std::size_t>(width * done / whole);
    std::cerr << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << percent * done / whole
              << " %" << std::flush;
}

}  // namespace kesto::host
