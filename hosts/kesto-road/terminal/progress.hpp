/// A progress bar on a terminal.
#pragma once

#include <chrono>
#include <cstdint>

namespace kesto::host {

/// Draws on standard error when that is a terminal, and only for work that takes a while.
class Progress {
public:
    /// @param amount the whole work; 0 when it is not known, then nothing is drawn
    explicit Progress(std::uintmax_t amount);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    Progress(Progress&&) = delete;
    Progress& operator=(Progress&&) = delete;

    /// @param done how much of the work is done; cheap enough to be called for every row
    void Update(std::uintmax_t done);

private:
    std::uintmax_t whole;
    unsigned calls = 0;
    bool drawn = false;
    std::chrono::steady_clock::time_point next;
};

}  // namespace kesto::host
