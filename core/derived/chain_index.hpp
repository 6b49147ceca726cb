/// What lookups along the element chain keep between queries.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/derived/element_frames.hpp"
#include "core/derived/stamp.hpp"

namespace kesto {

/// Where a search in sorted numbers begins: a table of equally wide buckets, each with a first guess.
struct GuessTable {
    double low = 0;  // m: where the first bucket begins
    double bucketsPerMetre = 0;
    std::size_t firstBucket = 0;  // of the table, among the guesses of its owner
    std::size_t bucketCount = 0;
};

/// Consecutive elements [first, last). With a sense, starts and ends of their stake mileages, times the sense, never
/// fall; without one nothing is known of their order.
struct MileageRun {
    std::int32_t first = 0;
    std::int32_t last = 0;
    double sense = 0;  // +1 positive lengths, -1 negative lengths, 0 no order
    double low = 0;    // m, times the sense: start of the first element
    double high = 0;   // m, times the sense: end of the last element
    GuessTable guesses;
};

/// Derived from the element chain by CurrentIndex(); valid exactly while the stamp is the chain's own.
struct ChainIndex {
    Stamp stamp;
    std::int32_t asked = 0;  // lookups since the chain changed or memory ran out
    bool filled = false;     // what follows holds

    std::vector<MileageRun> runs;       // in chain order; every element but the start record lies in one
    std::vector<double> running;        // m: continuous mileage at the end of every element
    std::int32_t summed = 0;            // elements whose continuous mileages are numbers, from the first on
    GuessTable runningGuesses;          // for the summed ones
    std::vector<std::int32_t> guesses;  // elements, of all guess tables
    double lowest = 0;                  // m: least stake mileage at an end of an element
    double highest = 0;                 // m

    // Worked out for an element when it is first asked for.
    std::vector<EvaluationFrame> frames;    // one per element; none on very long roads
    std::vector<std::uint8_t> framesKnown;  // 1 where the frame is worked out
};

}  // namespace kesto
