/// A disk that fails on demand: the calls by which the library writes files are led here by the linker's --wrap. Those
/// of the tests' own streams, inside the standard library, are not.
#pragma once

#include <cstddef>
#include <vector>

namespace kesto::test {

enum class DiskCall { Open, Write, Sync, Close, Move, Permissions, Owner, Remove };

/// What goes wrong while it lives, counted from its construction. Nothing is waited for: syncing is pretended.
class FailingDisk {
public:
    static constexpr int never = -1;
    enum class Moment { Before, Within, After };  // within: a write has brought half of its bytes out

    FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;
    ~FailingDisk();

    std::size_t room = static_cast<std::size_t>(-1);  // bytes until the disk is full
    int failingCall = never;                          // number of the call that fails
    int error = 0;                                    // its errno
    bool failsForGood = false;                        // and so does every later one
    bool writesLittle = false;                        // a few bytes at a time, and every other call is interrupted
    int fatalCall = never;                            // number of the call that the process does not survive
    Moment moment = Moment::Before;

    std::vector<DiskCall> calls;  // made so far
};

}  // namespace kesto::test
