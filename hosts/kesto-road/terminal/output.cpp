#include "terminal/output.hpp"

#include <cerrno>
#include <system_error>
#include <utility>

namespace kesto::host {

Problem FileProblem(const std::string& path, const std::string& verb, int reason) {
    const std::string why =
        reason == 0 ? "check the path and the permissions" : std::generic_category().message(reason);
    return {ExitCode::File, "'" + path + "' cannot be " + verb + ": " + why};
}

void Output::Close::operator()(std::FILE* stream) const noexcept {
    if (stream != stdout) (void)std::fclose(stream);  // Finish() has reported what there is to report
}

Output::Output(std::string filePath) : path(std::move(filePath)) {
    errno = 0;
    file.reset(path.empty() ? stdout : std::fopen(path.c_str(), "wb"));
    if (!file) throw FileProblem(path, "written", errno);
    if (path.empty()) path = "standard output";
}

void Output::Write(std::string_view text) {
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) throw FileProblem(path, "written", errno);
}

void Output::Finish() {
    errno = 0;
    if (std::fflush(file.get()) != 0) throw FileProblem(path, "written", errno);
}

}  // namespace kesto::host
