#pragma once

#include "kvrimage/image/memory_image.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/models/choices.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvr_test {

/// What the tests of the operations on whole memories have in common. Each of their steps makes a random
/// memory and an operation on it, and compares with what the operation makes of plain words, and with the
/// memory that its reverse gives back.
class transformation_operations {
public:
    /// All has been compared already.
    static void compare_all() {}

protected:
    explicit transformation_operations(choices& source) : decisions(source), memories(source) {}

    [[nodiscard]] choices& chosen() noexcept { return decisions; }
    [[nodiscard]] memory_maker& maker() noexcept { return memories; }
    /// The latest step, for messages.
    [[nodiscard]] std::string& about() noexcept { return title; }
    /// A number up to @p most, mostly a small one.
    std::uint64_t size_up_to(std::uint32_t most);
    /// A memory of words one by one, of fills, or of bytes; some words are not set.
    kvrimage::memory_image any_memory(std::uint32_t width, std::uint64_t depth, unsigned dont_care_share,
                                      std::uint64_t base);
    kvrimage::address_range any_range(const kvrimage::memory_image& image);
    /// @throws std::logic_error with @p what when @p holds is false
    void expect(bool holds, std::string_view what) const;

private:
    choices& decisions;
    memory_maker memories;
    std::string title;
};

/// Words of another width.
class reshape_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit reshape_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that says what differs
    void step();
};

/// Lanes, banks and blocks, and the memory that they make together.
class split_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit split_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that says what differs
    void step();

private:
    void split_lanes();
    void split_turns();
    void join_parts();
};

/// Several memories as one.
class merge_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit merge_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that says what differs
    void step();

private:
    void merge_memories();
    void merge_selections();
};

/// Words with check bits.
class protection_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit protection_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that says what differs
    void step();
};

} // namespace kvr_test
