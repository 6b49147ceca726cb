/// What must hold whatever a target is given: a breach ends the process, as a fault that a sanitizer finds does.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace kesto::fuzz {

/// @param what the rule, as a sentence of what should have been
inline void Require(bool holds, const char* what) {
    if (holds) return;
    static_cast<void>(std::fprintf(stderr, "kesto fuzz: broken rule: %s\n", what));
    std::abort();
}

}  // namespace kesto::fuzz
