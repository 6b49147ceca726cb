/// What the search for the stakes around a mileage keeps between queries.
#pragma once

#include <cstdint>

namespace kesto {

/// Whether the stake list may be bisected; valid exactly while the revision is the list's own.
struct StakeOrder {
    std::uint64_t stakes = ~std::uint64_t{0};  // revision of the stake list
    bool neverFalls = false;                   // mileages, each compared with the next one
};

}  // namespace kesto
