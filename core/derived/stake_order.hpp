/// What the search for the stakes around a mileage keeps between queries.
#pragma once

#include "core/derived/stamp.hpp"

namespace kesto {

/// Whether the stake list may be bisected; valid exactly while the stamp is the list's own.
struct StakeOrder {
    Stamp stamp;
    bool neverFalls = false;  // mileages, each compared with the next one
};

}  // namespace kesto
