/// What a check of a project file found: graded, with lines, as text or JSON.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kesto::host {

enum class Severity { Note, Warning, Error };

struct Finding {
    std::int64_t line;  ///< of the file, 1-based; 0 for the file as a whole
    Severity severity;
    std::string code;  ///< names the kind of fault, for programs
    std::string text;
};

/// From which size on something is worth a note, a warning, an error.
struct Grades {
    double note, warning, error;
    /// The grade of a size; nothing for one that is too small to be told. A size that is not a number is an error.
    [[nodiscard]] std::optional<Severity> Of(double size) const noexcept;
};

/// The findings of one file.
class Findings {
public:
    void Add(std::int64_t line, Severity severity, std::string_view code, std::string text);
    void Note(std::int64_t line, std::string_view code, std::string text);
    void Warning(std::int64_t line, std::string_view code, std::string text);
    void Error(std::int64_t line, std::string_view code, std::string text);

    [[nodiscard]] bool HasErrorAt(std::int64_t line) const noexcept;
    /// Line of the first error of these codes; 0 where there is none.
    [[nodiscard]] std::int64_t FirstLineOf(std::initializer_list<std::string_view> codes) const noexcept;
    [[nodiscard]] std::size_t Count(Severity severity) const noexcept;
    /// All, in the order of the file.
    [[nodiscard]] std::vector<Finding> InOrder() const;

    /// One line for each finding, "demo.road:12: warning: ... [gap]", and a last line that counts them.
    [[nodiscard]] std::string Text(const std::string& path) const;
    /// One JSON object. Bytes that are not UTF-8 are replaced.
    [[nodiscard]] std::string Json(const std::string& path) const;

private:
    std::vector<Finding> findings;
};

}  // namespace kesto::host
