#include "tests/session/failing_allocation.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

thread_local std::size_t allocations_left = 0;
thread_local std::size_t counted_bytes = never;
thread_local bool failed = false;

}  // namespace

namespace kestrel_app {

void fail_allocation_after(std::size_t skipped, std::size_t least_bytes) {
    allocations_left = skipped;
    counted_bytes = least_bytes;
    failed = false;
}

bool allocation_failed() {
    counted_bytes = never;
    return failed;
}

}  // namespace kestrel_app

// The global allocation functions of this test program.
void* operator new(std::size_t size) {
    if (size >= counted_bytes && allocations_left-- == 0) {
        counted_bytes = never;
        failed = true;
        throw std::bad_alloc();
    }
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
