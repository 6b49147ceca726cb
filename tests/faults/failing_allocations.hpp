/// Memory that runs out on demand, for everything in the process.
///
/// With glibc the executable's own malloc, calloc and realloc stand before the system's: the C++ operators, TinyXML,
/// iconv and the C library itself all come through here. Elsewhere it is operator new alone.
#pragma once

#include <cstdint>

namespace kesto::test {

enum class Failing { Once, ForGood };

/// What came of the allocations since the first that may fail was named.
struct Allocations {
    int made = 0;    // failed ones included
    int failed = 0;  // as asked for
};

/// From now on, in this thread, `allowed` allocations succeed; then one fails, or all of them.
void FailAllocations(int allowed, Failing failing) noexcept;

/// Every allocation succeeds again.
Allocations StopFailing() noexcept;

/// How many allocations are not released yet; only differences mean something.
std::int64_t LiveAllocations() noexcept;

}  // namespace kesto::test
