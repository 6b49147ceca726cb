#include "terminal/problem.hpp"

#include <iostream>

namespace kesto::host {

void PrintError(const std::string& message) { std::cerr << "kesto-road: " << message << '\n'; }

void PrintWarning(const std::string& message) { std::cerr << "kesto-road: warning: " << message << '\n'; }

}  // namespace kesto::host
