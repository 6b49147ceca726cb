// Opening and saving a project file.

#include <filesystem>
#include <string>

#include "plain_reference.hpp"
#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

/// A project file that is removed again.
class ProjectFile {
public:
    explicit ProjectFile(int elements)
        : path((std::filesystem::temp_directory_path() / ("kesto_bench_" + std::to_string(elements) + ".road"))
                   .string()) {
        FurnishedHighway(elements).Save(path);
    }
    ProjectFile(const ProjectFile&) = delete;
    ProjectFile& operator=(const ProjectFile&) = delete;
    ~ProjectFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    const std::string& Path() const { return path; }

private:
    std::string path;
};

void OpenLibrary(State& state) {
    const ProjectFile file(static_cast<int>(state.range(0)));
    kesto::Road road;
    for (auto _ : state) {
        if (OpenProject(road.Handle(), file.Path().c_str()) != KESTO_SUCCESS) return state.SkipWithError("not opened");
    }
    state.counters["elements"] = GetElementCount(road.Handle());
}

void OpenPlain(State& state) {
    const ProjectFile file(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(ConvertNumbers(file.Path()));
}

void SaveLibrary(State& state) {
    const auto elements = static_cast<int>(state.range(0));
    const ProjectFile file(elements);
    kesto::Road road = FurnishedHighway(elements);
    for (auto _ : state) {
        if (road.Save(file.Path()) != KESTO_SUCCESS) return state.SkipWithError("not saved");
    }
}

void SavePlain(State& state) {
    const ProjectFile file(static_cast<int>(state.range(0)));
    const Numbers numbers = NumbersOf(file.Path());
    for (auto _ : state) benchmark::DoNotOptimize(WriteNumbers(numbers, file.Path()));
}

}  // namespace

void RegisterProjects() {
    benchmark::RegisterBenchmark("opening a project/library", OpenLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("opening a project/plain", OpenPlain)->Apply(Sizes);
    benchmark::RegisterBenchmark("saving a project/library", SaveLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("saving a project/plain", SavePlain)->Apply(Sizes);
}

}  // namespace bench
