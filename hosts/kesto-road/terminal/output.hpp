/// Text output to a file or to standard output, with every failure noticed.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "terminal/problem.hpp"

namespace kesto::host {

/// The problem of a file that cannot be used.
/// @param verb   "read" or "written"
/// @param reason an errno value, 0 when there is none
Problem FileProblem(const std::string& path, const std::string& verb, int reason);

/// Writes text to a file, or to standard output for an empty path.
class Output {
public:
    /// @throws Problem when the file cannot be made
    explicit Output(std::string filePath);
    /// @throws Problem when the text cannot be written
    void Write(std::string_view text);
    /// To be called at the end. @throws Problem when not all has reached the file, as on a full disk
    void Finish();

private:
    struct Close {
        void operator()(std::FILE* stream) const noexcept;
    };

    std::string path;
    std::unique_ptr<std::FILE, Close> file;
};

}  // namespace kesto::host
