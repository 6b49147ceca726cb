#include "checks/findings.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace kesto::host {

namespace {

constexpr int jsonIndent = 2;

const char* SeverityName(Severity severity) noexcept {
    switch (severity) {
        case Severity::Note: return "note";
        case Severity::Warning: return "warning";
        case Severity::Error: break;
    }
    return "error";
}

std::string Counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

std::optional<Severity> Grades::Of(double size) const noexcept {
    if (size < note) return std::nullopt;
    if (size < warning) return Severity::Note;
    if (size <= error) return Severity::Warning;
    return Severity::Error;
}

void Findings::Add(std::int64_t line, Severity severity, std::string_view code, std::string text) {
    findings.push_back({line, severity, std::string(code), std::move(text)});
}

void Findings::Note(std::int64_t line, std::string_view code, std::string text) {
    Add(line, Severity::Note, code, std::move(text));
}

void Findings::Warning(std::int64_t line, std::string_view code, std::string text) {
    Add(line, Severity::Warning, code, std::move(text));
}

void Findings::Error(std::int64_t line, std::string_view code, std::string text) {
    Add(line, Severity::Error, code, std::move(text));
}

bool Findings::HasErrorAt(std::int64_t line) const noexcept {
    return std::any_of(findings.begin(), findings.end(),
                       [&](const Finding& it) { return it.line == line && it.severity == Severity::Error; });
}

std::int64_t Findings::FirstLineOf(std::initializer_list<std::string_view> codes) const noexcept {
    const auto found = std::find_if(findings.begin(), findings.end(), [&](const Finding& it) {
        return it.severity == Severity::Error && std::find(codes.begin(), codes.end(), it.code) != codes.end();
    });
    return found == findings.end() ? 0 : found->line;
}

std::size_t Findings::Count(Severity severity) const noexcept {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [&](const Finding& it) { return it.severity == severity; }));
}

std::vector<Finding> Findings::InOrder() const {
    std::vector<Finding> ordered = findings;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Finding& one, const Finding& other) { return one.line < other.line; });
    return ordered;
}

std::string Findings::Text(const std::string& path) const {
    std::string text;
    for (const Finding& it : InOrder()) {
        text += path;
        if (it.line > 0) text.append(":").append(std::to_string(it.line));
        text.append(": ").append(SeverityName(it.severity)).append(": ").append(it.text);
        text.append(" [").append(it.code).append("]\n");
    }
    return text + path + ": " + Counted(Count(Severity::Error), "error") + ", " +
           Counted(Count(Severity::Warning), "warning") + ", " + Counted(Count(Severity::Note), "note") + "\n";
}

std::string Findings::Json(const std::string& path) const {
    auto list = nlohmann::ordered_json::array();
    for (const Finding& it : InOrder()) {
        list.push_back(
            {{"line", it.line}, {"severity", SeverityName(it.severity)}, {"code", it.code}, {"text", it.text}});
    }
    const nlohmann::ordered_json all{{"file", path},
                                     {"errors", Count(Severity::Error)},
                                     {"warnings", Count(Severity::Warning)},
                                     {"notes", Count(Severity::Note)},
                                     {"findings", std::move(list)}};
    return all.dump(jsonIndent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace kesto::host
