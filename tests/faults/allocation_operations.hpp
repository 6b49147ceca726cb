/// Every exported function as an operation on a road that makes it allocate, or that it leaves without an allocation.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "support/road.hpp"

namespace kesto::test {

/// Where the operations put what they find out. It starts as zeros and is compared byte by byte.
struct Answer {
    double x, y, z;
    std::int32_t k, count;
    std::int64_t size;
    std::uint8_t row[8];
    StakeCoordinate stake;
    SectionPlate plates[8];
    double values[8];
    std::int32_t flags[8];
    char bytes[16384];
};

struct Operation {
    const char* name;  // of the exported function, and after a blank the case
    Road (*prepare)();
    bool (*run)(RoadDesign*, Answer&);  // true for success
    std::int32_t status = KESTO_OUT_OF_MEMORY;
    const char* file = nullptr;  // what it writes, in the folder of the operations
    bool keepsDesign = false;    // what it read stays where only the design run that follows fails

    std::string Function() const;
    friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
};

/// The operation succeeds whether or not memory runs out: it only takes longer.
inline constexpr std::int32_t doesWithout = KESTO_SUCCESS;

/// Operations that allocate.
std::vector<Operation> AllocatingOperations();

/// Operations on a road with everything that never do, one for each of the other functions that take a road.
std::vector<Operation> OtherOperations();

/// A road with everything: elements, chains, profile, plates, change sections, stakes.
Road RoadWithSections();

/// Where the operations find and leave files.
std::string FileAt(const std::string& name);

}  // namespace kesto::test
