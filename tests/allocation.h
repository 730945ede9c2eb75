#pragma once

#include <cstddef>

// The test program's operator new can fail on request and can count. Both are off unless one of these objects
// exists. Only one object of each kind may exist at a time.

/// The number of allocations since the program started.
[[nodiscard]] std::size_t allocation_count() noexcept;

/// During its lifetime, the allocation with the given number, counted from 1, throws std::bad_alloc: only
/// that one, or that one and all later ones.
class failing_allocation {
public:
    enum class extent { one, all_from_there };

    explicit failing_allocation(std::size_t number, extent which = extent::one) noexcept;
    ~failing_allocation();
    failing_allocation(const failing_allocation&) = delete;
    failing_allocation& operator=(const failing_allocation&) = delete;

    /// True if at least one allocation has failed.
    [[nodiscard]] static bool happened() noexcept;
};

/// During its lifetime, allocations of at least the given number of bytes throw std::bad_alloc.
class failing_large_allocations {
public:
    explicit failing_large_allocations(std::size_t bytes) noexcept;
    ~failing_large_allocations();
    failing_large_allocations(const failing_large_allocations&) = delete;
    failing_large_allocations& operator=(const failing_large_allocations&) = delete;
};

/// Counts the memory that is allocated during its lifetime: the bytes that the allocator provides, which may
/// be more than requested, plus one word for each block.
class allocation_meter {
public:
    allocation_meter() noexcept;
    ~allocation_meter();
    allocation_meter(const allocation_meter&) = delete;
    allocation_meter& operator=(const allocation_meter&) = delete;

    /// The bytes allocated since the meter was created, minus those freed.
    [[nodiscard]] static std::size_t live() noexcept;
    /// The largest live() so far.
    [[nodiscard]] static std::size_t peak() noexcept;
};
