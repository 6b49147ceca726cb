// Writes seeds for the fuzz targets: a run of calls for each call there is, on each kind of ready road, and the project
// files of these roads.
// Usage: write_seeds FOLDER

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "support/ready_roads.hpp"

#include "calls/call_run.hpp"

namespace {

namespace fs = std::filesystem;
using kesto::fuzz::CodeOf;

constexpr std::size_t settingsGroup = 0, batchGroup = 4, fileGroup = 5;
constexpr std::size_t ready = 1, freeze = 3, save = 0, saveWater = 5, saveToMemory = 7;  // places in their groups
constexpr std::uint32_t roadFile = 0, waterFile = 1, files = 4;                          // bytes that stand for paths

void Write(const fs::path& path, const std::vector<char>& bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// A ready road, frozen and saved, then one kind of call some times with any arguments.
std::vector<char> RunOf(std::uint8_t call, int road, std::mt19937& random) {
    constexpr std::uint32_t times = 4, arguments = 60;
    std::vector<char> bytes;
    const auto add = [&](std::uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    for (const std::uint32_t byte :
         {std::uint32_t{CodeOf(settingsGroup, ready)}, static_cast<std::uint32_t>(road),
          std::uint32_t{CodeOf(batchGroup, freeze)}, 0U, 0U, std::uint32_t{CodeOf(fileGroup, save)}, roadFile, 0U,
          std::uint32_t{CodeOf(fileGroup, saveWater)}, waterFile, 0U, std::uint32_t{CodeOf(fileGroup, saveToMemory)},
          0U}) {
        add(byte);
    }
    for (std::uint32_t i = 0; i < times; ++i) {
        add(call);
        if (call >= CodeOf(fileGroup, save)) {
            add(i % files);
            add(0);  // no null pointer
        }
        // Mostly bytes that stand for ordinary arguments.
        for (std::uint32_t k = 0; k < arguments; ++k)
            add(static_cast<std::uint32_t>(random() % 8 == 0 ? random() % 256 : 16 + random() % 180));
    }
    return bytes;
}

void WriteCalls(const fs::path& folder) {
    std::mt19937 random(20240501);
    for (std::size_t group = 0; group < kesto::fuzz::callGroups.size(); ++group) {
        const kesto::fuzz::CallGroup& calls = *kesto::fuzz::callGroups[group];
        for (std::size_t place = 0; place < calls.size() && calls[place] != nullptr; ++place) {
            const int road = static_cast<int>((group + place) % kesto::test::readyRoads);
            Write(folder / (std::to_string(group) + '_' + std::to_string(place)),
                  RunOf(CodeOf(group, place), road, random));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const fs::path folder = argv[1];
    fs::create_directories(folder / "project");
    fs::create_directories(folder / "calls");
    for (std::int32_t number = 0; number < kesto::test::readyRoads; ++number) {
        RoadDesign* const road = StartRoadDesign();
        kesto::test::MakeReady(road, number);
        const std::string path = (folder / "project" / ("ready_" + std::to_string(number) + ".road")).string();
        if (SaveProject(road, path.c_str()) != KESTO_SUCCESS) return 1;
        EndRoadDesign(road);
    }
    WriteCalls(folder / "calls");
    return 0;
}
