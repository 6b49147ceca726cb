/// Which exported functions have answered.
#pragma once

#include <set>
#include <string>

namespace kesto::fuzz {

/// The names of those that have been called with success.
inline std::set<std::string>& CalledNames() {
    static std::set<std::string> names;
    return names;
}

}  // namespace kesto::fuzz
