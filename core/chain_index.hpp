/// What lookups along the element chain keep between queries.
#pragma once

#include <cstdint>
#include <vector>

namespace kesto {

/// Derived from the element chain by CurrentIndex(); valid exactly while the key equals the chain's own.
struct ChainIndex {
    struct Key {
        std::uint64_t elements = ~std::uint64_t{0};  // revision of the element list
        double startMileage = 0;                     // m
        bool operator==(const Key&) const = default;
    };
    Key key;
    bool rising = false;          // positive lengths, starts and ends never falling: lookups may bisect
    std::vector<double> running;  // m: continuous mileage at the start of element 1, 2, ..., and at the road's end
};

}  // namespace kesto
