#include "saved_road.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "require.hpp"
#include "support/owned_road.hpp"

namespace kesto::fuzz {

namespace {

std::int32_t StatusOfLastFailure(RoadDesign* road) {
    Failure failure{};
    GetLastFailure(road, &failure);
    return failure.status;
}

}  // namespace

std::string SavedText(RoadDesign* road) {
    constexpr std::size_t mostly = 32768;  // bytes
    std::string text(mostly, '\0');
    std::int64_t size = -1;
    std::int32_t status = SaveProjectToMemory(road, text.data(), static_cast<std::int64_t>(text.size()), &size);
    if (status == KESTO_FILE_NOT_WRITTEN) return {};
    Require(size > 0, "a save tells its size");
    const bool hadRoom = size <= static_cast<std::int64_t>(text.size());
    Require(status == (hadRoom ? KESTO_SUCCESS : KESTO_ARRAY_TOO_SMALL), "a save succeeds where it has room");
    text.resize(static_cast<std::size_t>(size));
    if (hadRoom) return text;
    status = SaveProjectToMemory(road, text.data(), size, &size);
    Require(status == KESTO_SUCCESS && size == static_cast<std::int64_t>(text.size()), "a save has the size it told");
    return text;
}

bool OpenText(RoadDesign* road, std::string_view text) {
    // In memory of its own size, so that a sanitizer sees a read behind its end.
    const auto copy = std::make_unique<char[]>(text.size());
    std::copy(text.begin(), text.end(), copy.get());
    const std::int32_t status = OpenProjectFromMemory(road, copy.get(), static_cast<std::int64_t>(text.size()));
    Require(status == KESTO_SUCCESS, "any text can be opened");
    const std::int32_t told = StatusOfLastFailure(road);
    Require(told == KESTO_SUCCESS || told == KESTO_RECORDS_SKIPPED, "an opened text has at most skipped records");
    return told == KESTO_SUCCESS;
}

bool IsReadable(std::string_view text) {
    constexpr std::string_view signAndDigits = "-0123456789";
    constexpr std::size_t smallest = 4, decimals = 8;  // characters: an integer's column, a real's digits
    if (text.find("nan") != std::string_view::npos || text.find("inf") != std::string_view::npos) return false;
    for (std::size_t at = 0; (at = text.find_first_of(signAndDigits, at)) != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_not_of(signAndDigits, at), text.size());
        const bool ofReal = (end < text.size() && text[end] == '.') || (at > 0 && text[at - 1] == '.');
        if (end - at > (ofReal ? decimals : smallest)) return false;
        at = end;
    }
    return true;
}

void RequireFixedPoint(RoadDesign* road) {
    // Places of broken chains and grade points are compared when they are added only: edits of them, or of the chain
    // below, can move two records to one place, of which a reader keeps the first. So the first file may differ from
    // the second.
    const std::string first = SavedText(road);
    if (first.empty()) return;
    const test::Road back;
    if (!OpenText(back, first) && IsReadable(first)) {
        Failure failure{};
        GetLastFailure(back, &failure);
        Require(failure.list == KESTO_LIST_BROKEN_CHAINS || failure.list == KESTO_LIST_VERTICAL_CURVES,
                "what was saved is read whole");
    }
    const std::string second = SavedText(back);
    if (!IsReadable(first) || !IsReadable(second)) return;
    Require(!second.empty(), "what was read from a saved file can be saved");
    const test::Road again;
    Require(OpenText(again, second), "what was saved again is read whole");
    Require(SavedText(again) == second, "from its second file on a road is saved the same");
}

void AskAround(RoadDesign* road) {
    double startMileage = 0;
    GetRoadMileage(road, &startMileage);
    for (const double mileage : {startMileage + 30, 1e9}) {
        double a = 0, b = 0, c = 0;
        std::int32_t occurrence = 0;
        if (GetHeight(road, mileage, 0, 1, &a)) Require(std::isfinite(a), "a height is finite");
        if (GetPositionAndAzimuth(road, mileage, 2, 90, &a, &b, &c, 0)) {
            Require(std::isfinite(a) && std::isfinite(b) && std::isfinite(c), "a position is finite");
        }
        if (GetMileageAndOffset(road, 100, mileage, &a, &b, &occurrence)) {
            Require(std::isfinite(a) && std::isfinite(b), "a foot is finite");
        }
        SectionPlate plates[4];
        SectionPlateArray array{plates, 0, 4};
        GetRoadSide(road, mileage, 0, 1, &array);
    }
}

}  // namespace kesto::fuzz
