#include "io/project_file.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "core/status.hpp"
#include "design/design_run.hpp"
#include "io/code_page.hpp"
#include "io/project_text.hpp"
#include "io/safe_file.hpp"

namespace kesto {

namespace {

std::string_view ExtensionOf(ProjectKind kind) noexcept { return kind == ProjectKind::Water ? ".watx" : ".road"; }

#if defined(_WIN32)
inline constexpr std::string_view separators = "/\\:";
#else
inline constexpr std::string_view separators = "/";
#endif

char LowerCase(char letter) noexcept {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The path that a project is saved under.
std::string SavingPath(std::string path, std::string_view projectExtension) {
    const std::size_t dot = path.rfind('.');
    const std::size_t separator = path.find_last_of(separators);
    const bool hasExtension = dot != std::string::npos && (separator == std::string::npos || dot > separator);
    if (hasExtension) {
        const auto extension = path.begin() + static_cast<std::ptrdiff_t>(dot);
        std::transform(extension, path.end(), extension, LowerCase);
        if (path.compare(dot, std::string::npos, projectExtension) == 0) return path;
    }
    return path += projectExtension;
}

/// Replaces a road's design data with what was read. Swapping them leaves the transition types where they are: those
/// that were read join the road's own, which stay wherever no change section was read.
void TakeOver(RoadDesign& road, RoadDesign& opened) noexcept {
    for (std::size_t side = 0; side < sideCount; ++side) {
        for (std::size_t kind = 0; kind < changeKindCount; ++kind) {
            auto& types = road.sections.transitionTypes[side][kind];
            auto& typesRead = opened.sections.transitionTypes[side][kind];
            typesRead.merge(types);
            types.swap(typesRead);
        }
    }
    SwapDesignData(road, opened);
}

Outcome RunDesignOfOpened(RoadDesign& road) {
    try {
        return RunDesign(road);
    } catch (const std::bad_alloc&) {
        return Fail(KESTO_OUT_OF_MEMORY);  // what was read is kept, which the status of the file would deny
    }
}

Outcome Save(RoadDesign& road, const char* path, ProjectKind kind) {
    const Result<std::string> text = FormatProject(road, CodePage::Local(), kind);
    if (!text) return text.failure();
    return WriteWholeFile(SavingPath(path, ExtensionOf(kind)), *text);
}

Outcome OpenText(RoadDesign& road, std::string_view text) {
    const auto opened = std::make_unique<RoadDesign>();
    Outcome read = ParseProject(text, *opened, CodePage::Local());
    TakeOver(road, *opened);
    road.lastFailure.reset();  // as when the road is cleared: what is told from now on concerns this file
    return read;
}

Outcome Open(RoadDesign& road, const char* path, ProjectKind kind) {
    if (!std::string_view(path).ends_with(ExtensionOf(kind))) return Fail(KESTO_WRONG_EXTENSION);
    const Result<std::string> text = ReadWholeFile(path);
    if (!text) return text.failure();
    return OpenText(road, *text);
}

}  // namespace

Outcome SaveRoad(RoadDesign& road, const char* path) { return Save(road, path, ProjectKind::Road); }

Outcome OpenRoad(RoadDesign& road, const char* path) { return Open(road, path, ProjectKind::Road); }

Outcome OpenRoadBytes(RoadDesign& road, const char* bytes, std::int64_t size) {
    if (size < 0) return FailValue(KESTO_RECORD_COUNT_REFUSED, static_cast<double>(size));
    if (size > static_cast<std::int64_t>(largestFile)) return Fail(KESTO_FILE_OUT_OF_MEMORY);
    return OpenText(road, {bytes, static_cast<std::size_t>(size)});
}

Outcome SaveRoadBytes(RoadDesign& road, char* bytes, std::int64_t capacity, std::int64_t& size) {
    const Result<std::string> text = FormatProject(road, CodePage::Local(), ProjectKind::Road);
    if (!text) return text.failure();
    size = static_cast<std::int64_t>(text->size());
    if (capacity < size || bytes == nullptr) {
        return FailLimit(KESTO_ARRAY_TOO_SMALL, KESTO_LIMIT_RECORD_COUNT, static_cast<double>(size),
                         static_cast<double>(capacity));
    }
    std::copy(text->begin(), text->end(), bytes);
    return {};
}

Outcome SaveWater(RoadDesign& road, const char* path) { return Save(road, path, ProjectKind::Water); }

Outcome OpenWater(RoadDesign& road, const char* path) { return Open(road, path, ProjectKind::Water); }

Outcome OpenAndDesignRoad(RoadDesign& road, const char* path) {
    Outcome opened = OpenRoad(road, path);
    if (!opened && opened.failure().status != KESTO_RECORDS_SKIPPED) return opened;
    Outcome designed = RunDesignOfOpened(road);
    return designed ? opened : designed;
}

}  // namespace kesto
