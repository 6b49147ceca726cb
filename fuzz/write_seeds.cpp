// Writes seeds for the fuzz targets: for each call a run on a ready road that answers, and the project files of the
// ready roads.
// Usage: write_seeds FOLDER

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "called.hpp"
#include "calls/call_run.hpp"
#include "kesto_road/kesto_road.h"
#include "support/ready_roads.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;
using kesto::test::Call;
using Input = std::vector<std::uint8_t>;

void Write(const fs::path& path, const Input& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

/// A ready road, frozen, saved and perhaps read again, then a call some times with any arguments.
Input RunOf(const Call& call, std::uint32_t road, std::mt19937& random) {
    constexpr std::uint32_t times = 4, mostArguments = 60;
    constexpr std::uint8_t ready = 1, freeze = 2;
    Input bytes{ready, static_cast<std::uint8_t>(road), freeze};
    const auto add = [&](const Call& it) {
        bytes.push_back(static_cast<std::uint8_t>(kesto::fuzz::PlaceOf(it) / 256U));
        bytes.push_back(static_cast<std::uint8_t>(kesto::fuzz::PlaceOf(it) % 256U));
    };
    for (const auto& [save, path] : {std::pair("SaveProject", 0), {"SaveWaterProject", 1}}) {
        add(kesto::test::CallNamed(save));
        bytes.insert(bytes.end(), {0, static_cast<std::uint8_t>(path)});
    }
    if (random() % 2 == 0) {  // read from a file with three other bytes somewhere: findings are told
        add(kesto::test::CallNamed("OpenProjectFromMemory"));
        bytes.insert(bytes.end(), {0, 3});
        for (int i = 0; i < 9; ++i) bytes.push_back(static_cast<std::uint8_t>(random() % 256));
        bytes.push_back(0);
    }
    for (std::uint32_t i = 0; i < times; ++i) {
        add(call);
        // Mostly bytes that stand for ordinary arguments.
        for (auto k = random() % mostArguments; k > 0; --k) {
            bytes.push_back(static_cast<std::uint8_t>(random() % 8 == 0 ? random() % 256 : random() % 196));
        }
    }
    return bytes;
}

void WriteCalls(const fs::path& folder) {
    constexpr std::uint32_t mostTries = 500;
    std::mt19937 random(20240501);
    for (const Call& call : kesto::test::Calls()) {
        const std::string name(call.name);
        if (call.effect == kesto::test::Effect::Life) continue;
        Input input;
        kesto::fuzz::CalledNames().erase(name);
        for (std::uint32_t i = 0; i < mostTries && kesto::fuzz::CalledNames().count(name) == 0; ++i) {
            input = RunOf(call, i % kesto::test::readyRoads, random);
            LLVMFuzzerTestOneInput(input.data(), input.size());
        }
        Write(folder / name, input);
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
