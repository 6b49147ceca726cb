// Many points at once, and of a frozen road, beside one call of the road for each point. Times are per point.

#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

constexpr std::size_t rowCount = 1U << 14U;
constexpr auto rows = static_cast<std::int32_t>(rowCount);
constexpr std::int32_t step = sizeof(double);
constexpr std::int32_t wholeStep = sizeof(std::int32_t);
constexpr double squareAngle = 90;  // degrees
constexpr int elementsPerGradePoint = 10;

/// A highway with grade points, what is asked of it, and room for the answers.
struct Scene {
    Scene(const State& state, double band) : road(Highway(static_cast<int>(state.range(0)))) {
        for (const Query& it : Queries(road, band, rowCount)) {
            x.push_back(it.x);
            y.push_back(it.y);
            mileage.push_back(it.mileage);
            offset.push_back(it.offset);
        }
        const double length = GetRoadMileage(road.Handle(), nullptr);
        const int points = 2 + static_cast<int>(state.range(0)) / elementsPerGradePoint;
        for (int i = 0; i < points; ++i) road.GradePoint(length * i / (points - 1), i % 2 == 0 ? 100 : 120, 5000);
        frozen = FreezeRoad(road.Handle());
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene() { EndRoadDesign(frozen); }

    kesto::Road road;
    RoadDesign* frozen = nullptr;
    RoadDesign* asked = nullptr;  // the road, or the frozen one
    std::vector<double> x, y, mileage, offset;
    std::vector<double> first = std::vector<double>(rowCount);
    std::vector<double> second = std::vector<double>(rowCount);
    std::vector<double> third = std::vector<double>(rowCount);
    std::vector<std::int32_t> occurrence = std::vector<std::int32_t>(rowCount);
    std::vector<std::uint8_t> status = std::vector<std::uint8_t>(rowCount);
};

/// The three questions, one by one and in a batch.
struct Feet {
    static constexpr double band = nearBand;
    static bool One(Scene& s, std::size_t i) {
        return GetMileageAndOffset(s.asked, s.x[i], s.y[i], &s.first[i], &s.second[i], &s.occurrence[i]);
    }
    static bool Batch(Scene& s) {
        return GetMileageAndOffsetBatch(s.asked, rows, s.x.data(), step, s.y.data(), step, s.first.data(), step,
                                        s.second.data(), step, s.occurrence.data(), wholeStep, s.status.data(), 1);
    }
};

struct Positions {
    static constexpr double band = 5;  // m
    static bool One(Scene& s, std::size_t i) {
        return GetPositionAndAzimuth(s.asked, s.mileage[i], s.offset[i], squareAngle, &s.first[i], &s.second[i],
                                     &s.third[i], 0);
    }
    static bool Batch(Scene& s) {
        return GetPositionAndAzimuthBatch(s.asked, rows, s.mileage.data(), step, nullptr, 0, s.offset.data(), step,
                                          nullptr, 0, s.first.data(), step, s.second.data(), step, s.third.data(), step,
                                          s.status.data(), 1);
    }
};

struct Heights {
    static constexpr double band = 5;  // m
    static bool One(Scene& s, std::size_t i) { return GetHeight(s.asked, s.mileage[i], 0, 0, &s.first[i]); }
    static bool Batch(Scene& s) {
        return GetHeightBatch(s.asked, rows, s.mileage.data(), step, nullptr, 0, nullptr, 0, s.first.data(), step,
                              s.status.data(), 1);
    }
};

/// One pass over all rows after the other.
template <class Question>
void Measure(State& state, bool (*pass)(Scene&), bool ofFrozen) {
    Scene scene(state, Question::band);
    scene.asked = ofFrozen ? scene.frozen : scene.road.Handle();
    while (state.KeepRunningBatch(rows)) {
        if (!pass(scene)) return state.SkipWithError("no answer");
        benchmark::ClobberMemory();
    }
}

template <bool ask(Scene&, std::size_t)>
bool EachOne(Scene& scene) {
    for (std::size_t i = 0; i < rowCount; ++i) {
        if (!ask(scene, i)) return false;
    }
    return true;
}

template <class Question>
void Register(const std::string& name) {
    const auto way = [](const std::string& called, bool (*pass)(Scene&), bool ofFrozen) {
        benchmark::RegisterBenchmark(called.c_str(), Measure<Question>, pass, ofFrozen)->Arg(100)->Arg(10000);
    };
    way(name + " in a batch/library", Question::Batch, false);
    way(name + " in a batch/plain", EachOne<Question::One>, false);
    way(name + ", frozen/library", EachOne<Question::One>, true);
    way(name + ", frozen/plain", EachOne<Question::One>, false);
    way(name + " in a frozen batch/library", Question::Batch, true);
    way(name + " in a frozen batch/plain", EachOne<Question::One>, false);
}

}  // namespace

void RegisterBatches() {
    Register<Positions>("positions");
    Register<Heights>("heights");
    Register<Feet>("feet within 30 m");
}

}  // namespace bench
