#pragma once

#include <cstddef>

/// Counts the allocations of the program that links counted_allocation.cpp, and makes them fail.
namespace kvr::test {

/// How often the program has allocated.
std::size_t allocations();

/// Lets @p count allocations succeed and all further ones fail, for as long as it lives.
class failure_after {
public:
    explicit failure_after(std::size_t count);
    ~failure_after();
    failure_after(const failure_after&) = delete;
    failure_after& operator=(const failure_after&) = delete;
};

} // namespace kvr::test
