#include "failing_allocations.hpp"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>

namespace {

// Plain globals: they are used before and after anything that needs construction.
std::atomic<std::int64_t> live;
thread_local bool armed = false;
thread_local int left = 0;
thread_local bool forGood = false;
thread_local kesto::test::Allocations sinceArmed;

/// Counts an allocation. @return whether it is one to fail
bool Fails() noexcept {
    if (!armed) return false;
    ++sinceArmed.made;
    if (left > 0) {
        --left;
        return false;
    }
    if (sinceArmed.failed > 0 && !forGood) return false;
    ++sinceArmed.failed;
    errno = ENOMEM;
    return true;
}

void* Counted(void* memory) noexcept {
    if (memory != nullptr) ++live;
    return memory;
}

}  // namespace

#if defined(__GLIBC__)

// The allocator behind: with AddressSanitizer its own, which poisons and remembers, otherwise the C library's.
#if defined(__SANITIZE_ADDRESS__)
#define KESTO_BEHIND(name) __interceptor_##name
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KESTO_BEHIND(name) __interceptor_##name
#endif
#endif
#if !defined(KESTO_BEHIND)
#define KESTO_BEHIND(name) __libc_##name
#endif

#pragma GCC visibility push(default)  // for the libraries, too
extern "C" {
void* KESTO_BEHIND(malloc)(std::size_t size);
void* KESTO_BEHIND(calloc)(std::size_t count, std::size_t size);
void* KESTO_BEHIND(realloc)(void* memory, std::size_t size);
void KESTO_BEHIND(free)(void* memory);

void* malloc(std::size_t size) noexcept { return Fails() ? nullptr : Counted(KESTO_BEHIND(malloc)(size)); }

void* calloc(std::size_t count, std::size_t size) noexcept {
    return Fails() ? nullptr : Counted(KESTO_BEHIND(calloc)(count, size));
}

void* realloc(void* memory, std::size_t size) noexcept {
    if (memory == nullptr) return malloc(size);
    return Fails() ? nullptr : KESTO_BEHIND(realloc)(memory, size);
}

void free(void* memory) noexcept {
    if (memory != nullptr) --live;
    KESTO_BEHIND(free)(memory);
}
}
#pragma GCC visibility pop

namespace {

void* New(std::size_t size) noexcept { return malloc(size > 0 ? size : 1); }
void Delete(void* memory) noexcept { free(memory); }

}  // namespace

#else

namespace {

void* New(std::size_t size) noexcept { return Fails() ? nullptr : Counted(std::malloc(size > 0 ? size : 1)); }

void Delete(void* memory) noexcept {
    if (memory != nullptr) --live;
    std::free(memory);
}

}  // namespace

#endif

namespace {

// Through pointers that compilers cannot see through: inlined, free() beside an operator new looks mismatched to them.
void* (*const volatile obtain)(std::size_t) noexcept = New;
void (*const volatile release)(void*) noexcept = Delete;

}  // namespace

void* operator new(std::size_t size) {
    if (void* memory = obtain(size)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return obtain(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }

namespace kesto::test {

void FailAllocations(int allowed, Failing failing) noexcept {
    left = allowed;
    forGood = failing == Failing::ForGood;
    sinceArmed = {};
    armed = true;
}

Allocations StopFailing() noexcept {
    armed = false;
    return sinceArmed;
}

std::int64_t LiveAllocations() noexcept { return live; }

}  // namespace kesto::test
