#pragma once

#include <cstddef>

// The test program's operator new can be made to fail, and to count. Both are off until one of these
// objects exists; of each kind one may exist at a time.

/// The number of allocations of the program so far.
[[nodiscard]] std::size_t allocation_count() noexcept;

/// While it lives, the allocation with the given number, counted from 1, throws std::bad_alloc: that one
/// only, or that one and all after it.
class failing_allocation {
public:
    enum class extent { one, all_from_there };

    explicit failing_allocation(std::size_t number, extent which = extent::one) noexcept;
    ~failing_allocation();
    failing_allocation(const failing_allocation&) = delete;
    failing_allocation& operator=(const failing_allocation&) = delete;

    /// True when the program made so many allocations that at least one failed.
    [[nodiscard]] static bool happened() noexcept;
};

/// Counts the memory that is allocated during its lifetime: the bytes that the allocator provides, which may
/// be more than requested, and one word for each block.
class allocation_meter {
public:
    allocation_meter() noexcept;
    ~allocation_meter();
    allocation_meter(const allocation_meter&) = delete;
    allocation_meter& operator=(const allocation_meter&) = delete;

    /// Bytes allocated since the meter was made, less those freed.
    [[nodiscard]] static std::size_t live() noexcept;
    /// The largest live() so far.
    [[nodiscard]] static std::size_t peak() noexcept;
};
