#pragma once

#include <cstddef>

// The test program's operator new can be told to fail, and to count. Both are off until one of these
// objects lives; of each kind one may live at a time.

/// How often the program has allocated.
[[nodiscard]] std::size_t allocation_count() noexcept;

/// While it lives, the allocation with the given number, counted from 1, throws std::bad_alloc: that one
/// only, or that one and all behind it.
class failing_allocation {
public:
    enum class extent { one, all_from_there };

    explicit failing_allocation(std::size_t number, extent which = extent::one) noexcept;
    ~failing_allocation();
    failing_allocation(const failing_allocation&) = delete;
    failing_allocation& operator=(const failing_allocation&) = delete;

    /// True when so many allocations were asked for that at least one failed.
    [[nodiscard]] static bool happened() noexcept;
};

/// Counts the memory that is allocated while it lives: what the allocator hands out, which may be more
/// than was asked for, and one word for each block.
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
