/// What the program says and returns when something is wrong: exit codes, and the exception that carries a message.
#pragma once

#include <stdexcept>
#include <string>

namespace kesto::host {

/// The program's exit codes, as documented in docs/kesto-road.md.
enum class ExitCode : int {
    Ok = 0,
    SomeRowsFailed = 1,  ///< the run is complete, but some rows have no result
    Warnings = 1,        ///< check: the gravest finding is a warning
    Usage = 2,           ///< the command line is wrong
    File = 3,            ///< a file cannot be read or written
    Data = 4,            ///< what a file or an argument says is wrong
    Road = 5             ///< no road can be built from the data
};

/// A mistake that ends the run, or one row of it: the message says in one line what, where and what to do.
class Problem : public std::runtime_error {
public:
    Problem(ExitCode exitCode, const std::string& message) : std::runtime_error(message), code(exitCode) {}
    [[nodiscard]] ExitCode Code() const noexcept { return code; }

private:
    ExitCode code;
};

/// Prints one line to standard error, with the program's name in front.
void PrintError(const std::string& message);
/// Prints one line to standard error, marked as a warning.
void PrintWarning(const std::string& message);

}  // namespace kesto::host
