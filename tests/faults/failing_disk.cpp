#include "failing_disk.hpp"

#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): kill() is POSIX, not C++
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace kesto::test {
namespace {

constexpr std::size_t littleWritten = 7;  // bytes

FailingDisk* disk = nullptr;

bool IsFatal(FailingDisk::Moment moment) {
    return static_cast<int>(disk->calls.size()) - 1 == disk->fatalCall && moment == disk->moment;
}

void Die() { kill(getpid(), SIGKILL); }

/// Makes a call, or fails in its place.
template <class Make>
auto Call(DiskCall which, Make make) -> decltype(make()) {
    if (disk == nullptr) return make();
    const int number = static_cast<int>(disk->calls.size());
    disk->calls.push_back(which);
    if (IsFatal(FailingDisk::Moment::Before)) Die();
    const bool fails = disk->failingCall != FailingDisk::never &&
                       (disk->failsForGood ? number >= disk->failingCall : number == disk->failingCall);
    const auto result = fails && which != DiskCall::Close ? -1 : make();  // what fails to close is closed all the same
    if (IsFatal(FailingDisk::Moment::After)) Die();
    if (!fails) return result;
    errno = disk->error;
    return -1;
}

ssize_t WriteSome(int file, const void* bytes, std::size_t count);

}  // namespace

FailingDisk::FailingDisk() { disk = this; }
FailingDisk::~FailingDisk() { disk = nullptr; }

}  // namespace kesto::test

using kesto::test::Call;
using kesto::test::DiskCall;

extern "C" {
int __real_open(const char* path, int flags, ...);
ssize_t __real_write(int file, const void* bytes, std::size_t count);
int __real_fsync(int file);
int __real_close(int file);
int __real_rename(const char* from, const char* to);
int __real_fchmod(int file, mode_t mode);
int __real_fchown(int file, uid_t owner, gid_t group);
int __real_unlink(const char* path);

int __wrap_open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return Call(DiskCall::Open, [&] { return __real_open(path, flags, mode); });
}
ssize_t __wrap_write(int file, const void* bytes, std::size_t count) {
    return Call(DiskCall::Write, [&] { return kesto::test::WriteSome(file, bytes, count); });
}
int __wrap_fsync(int file) {
    return Call(DiskCall::Sync, [&] { return kesto::test::disk == nullptr ? __real_fsync(file) : 0; });
}
int __wrap_close(int file) {
    return Call(DiskCall::Close, [&] { return __real_close(file); });
}
int __wrap_rename(const char* from, const char* to) {
    return Call(DiskCall::Move, [&] { return __real_rename(from, to); });
}
int __wrap_fchmod(int file, mode_t mode) {
    return Call(DiskCall::Permissions, [&] { return __real_fchmod(file, mode); });
}
int __wrap_fchown(int file, uid_t owner, gid_t group) {
    return Call(DiskCall::Owner, [&] { return __real_fchown(file, owner, group); });
}
int __wrap_unlink(const char* path) {
    return Call(DiskCall::Remove, [&] { return __real_unlink(path); });
}
}

namespace kesto::test {
namespace {

/// As much as the disk takes.
ssize_t WriteSome(int file, const void* bytes, std::size_t count) {
    if (disk == nullptr) return __real_write(file, bytes, count);
    if (disk->writesLittle && disk->calls.size() % 2 == 0) {
        errno = EINTR;
        return -1;
    }
    if (disk->room == 0 && count > 0) {
        errno = ENOSPC;
        return -1;
    }
    std::size_t taken = std::min(count, disk->room);
    if (disk->writesLittle) taken = std::min(taken, littleWritten);
    const bool fatal = IsFatal(FailingDisk::Moment::Within);
    disk->room -= taken;
    const ssize_t written = __real_write(file, bytes, fatal ? taken / 2 : taken);
    if (fatal) Die();
    return written;
}

}  // namespace
}  // namespace kesto::test
