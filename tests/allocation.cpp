#include "tests/allocation.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

#if defined(__APPLE__)
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

namespace {

std::size_t allocations = 0;

bool failing = false;
bool failed = false;
bool goes_on_failing = false;
std::size_t allocations_left = 0;
std::size_t least_size_to_fail = SIZE_MAX;

bool metering = false;
std::int64_t live_bytes = 0; // negative if older blocks are freed
std::int64_t peak_bytes = 0;

std::int64_t size_of(void* block) {
#if defined(__APPLE__)
    const std::size_t size = malloc_size(block);
#elif defined(_WIN32)
    const std::size_t size = _msize(block);
#else
    const std::size_t size = malloc_usable_size(block);
#endif
    return static_cast<std::int64_t>(size + sizeof(void*));
}

bool is_to_fail() {
    if (!failing || (allocations_left > 1 && --allocations_left > 0)) {
        return false;
    }
    failing = goes_on_failing;
    failed = true;
    return true;
}

void* allocate(std::size_t size) noexcept {
    ++allocations;
    const bool fails = is_to_fail() || size >= least_size_to_fail;
    void* block = fails ? nullptr : std::malloc(std::max<std::size_t>(size, 1));
    if (metering && block != nullptr) {
        live_bytes += size_of(block);
        peak_bytes = std::max(peak_bytes, live_bytes);
    }
    return block;
}

void* allocate_or_throw(std::size_t size) {
    void* block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void release(void* block) noexcept {
    if (metering && block != nullptr) {
        live_bytes -= size_of(block);
    }
    std::free(block);
}

} // namespace

// All forms without alignment are replaced, so that one implementation allocates and frees each block:
// sanitizers have their own.

// Some compilers declare these two only if they call them.
void operator delete(void* block, std::size_t size) noexcept;
void operator delete[](void* block, std::size_t size) noexcept;

void* operator new(std::size_t size) {
    return allocate_or_throw(size);
}
void* operator new[](std::size_t size) {
    return allocate_or_throw(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}
void operator delete(void* block) noexcept {
    release(block);
}
void operator delete[](void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
    release(block);
}
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
    release(block);
}
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept {
    release(block);
}

std::size_t allocation_count() noexcept {
    return allocations;
}

failing_allocation::failing_allocation(std::size_t number, extent which) noexcept {
    allocations_left = number;
    goes_on_failing = which == extent::all_from_there;
    failed = false;
    failing = true;
}

failing_allocation::~failing_allocation() {
    failing = false;
}

bool failing_allocation::happened() noexcept {
    return failed;
}

failing_large_allocations::failing_large_allocations(std::size_t bytes) noexcept {
    least_size_to_fail = bytes;
}

failing_large_allocations::~failing_large_allocations() {
    least_size_to_fail = SIZE_MAX;
}

allocation_meter::allocation_meter() noexcept {
    live_bytes = 0;
    peak_bytes = 0;
    metering = true;
}

allocation_meter::~allocation_meter() {
    metering = false;
}

std::size_t allocation_meter::live() noexcept {
    return static_cast<std::size_t>(std::max<std::int64_t>(live_bytes, 0));
}

std::size_t allocation_meter::peak() noexcept {
    return static_cast<std::size_t>(std::max<std::int64_t>(peak_bytes, 0));
}
