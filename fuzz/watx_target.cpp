// Any bytes as a water project's file, which is known by its path only: opened, asked, saved and opened again.

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "kesto_road/kesto_road.h"
#include "require.hpp"
#include "saved_road.hpp"
#include "support/temporary_folder.hpp"

namespace {

using kesto::fuzz::Require;
using Road = std::unique_ptr<RoadDesign, decltype(&EndRoadDesign)>;

Road NewRoad() { return {StartRoadDesign(), EndRoadDesign}; }

std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Saves a road and opens the file again.
/// @return the road that was read; none where the road cannot be saved
Road SavedAndOpened(RoadDesign* road, const std::string& path) {
    // An extension of any case is saved as the lower one.
    const std::string shouted = path.substr(0, path.rfind('.')) + ".WATX";
    const std::int32_t saved = SaveWaterProject(road, shouted.c_str());
    Require(saved == KESTO_SUCCESS || saved == KESTO_FILE_NOT_WRITTEN, "a road can be saved");
    Road back = NewRoad();
    if (saved != KESTO_SUCCESS) return {nullptr, EndRoadDesign};
    Require(OpenWaterProject(back.get(), path.c_str()) == KESTO_SUCCESS, "a saved file can be opened");
    return back;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kesto::test::TemporaryFolder folder{"kesto_fuzz_"};
    const std::string given = folder.At("given.watx");
    const std::string saved = folder.At("saved.watx");
    std::ofstream(given, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

    const Road road = NewRoad();
    Require(OpenWaterProject(road.get(), given.c_str()) == KESTO_SUCCESS, "any file can be opened");
    kesto::fuzz::AskAround(road.get());
    const Road back = SavedAndOpened(road.get(), saved);
    if (!back) return 0;
    const std::string first = Content(saved);
    Require(GetSectionMileageIndexCount(back.get()) == 0, "a water project has no section mileages");
    if (!SavedAndOpened(back.get(), saved)) return 0;
    const std::string second = Content(saved);
    if (!kesto::fuzz::IsReadable(first) || !kesto::fuzz::IsReadable(second)) return 0;
    const Road third = NewRoad();
    Require(OpenWaterProject(third.get(), saved.c_str()) == KESTO_SUCCESS, "a saved file can be opened");
    SavedAndOpened(third.get(), saved);
    Require(Content(saved) == second, "from its second file on a road is saved the same");
    return 0;
}
