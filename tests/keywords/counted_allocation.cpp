#include "tests/keywords/counted_allocation.h"

#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t unlimited = static_cast<std::size_t>(-1);

std::size_t allocation_count = 0;
std::size_t allocation_limit = unlimited;

} // namespace

void* operator new(std::size_t size) {
    void* memory = allocation_count < allocation_limit ? std::malloc(size) : nullptr;
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++allocation_count;
    return memory;
}

void operator delete(void* memory, std::size_t) noexcept; // clang 14 does not declare it by itself

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace kvr::test {

std::size_t allocations() {
    return allocation_count;
}

failure_after::failure_after(std::size_t count) {
    allocation_limit = allocation_count + count;
}

failure_after::~failure_after() {
    allocation_limit = unlimited;
}

} // namespace kvr::test
