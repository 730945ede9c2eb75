#pragma once

#include "kvrimage/image/memory_image.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/models/choices.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvr_test {

/// The common part of the tests of operations on whole memories. Each step generates a random memory and an
/// operation on it. It compares the result with that of the same operation on plain words, and the result of
/// the inverse operation with the original memory.
class transformation_operations {
public:
    /// Does nothing: step() has compared everything.
    static void compare_all() {}

protected:
    explicit transformation_operations(choices& source) : decisions(source), memories(source) {}

    [[nodiscard]] choices& chosen() noexcept { return decisions; }
    [[nodiscard]] memory_maker& maker() noexcept { return memories; }
    /// The latest step, for messages.
    [[nodiscard]] std::string& about() noexcept { return title; }
    /// A number up to @p most, usually a small one.
    std::uint64_t size_up_to(std::uint32_t most);
    /// A memory of single words, of fills or of bytes; some words are not set.
    kvrimage::memory_image any_memory(std::uint32_t width, std::uint64_t depth, unsigned dont_care_share,
                                      std::uint64_t base);
    kvrimage::address_range any_range(const kvrimage::memory_image& image);
    /// @throws std::logic_error with @p what if @p holds is false
    void expect(bool holds, std::string_view what) const;

private:
    choices& decisions;
    memory_maker memories;
    std::string title;
};

/// Changes the word width.
class reshape_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit reshape_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that describes the difference
    void step();
};

/// Splits a memory into lanes, banks and blocks, and joins them.
class split_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit split_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that describes the difference
    void step();

private:
    void split_lanes();
    void split_turns();
    void join_parts();
};

/// Merges several memories.
class merge_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit merge_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that describes the difference
    void step();

private:
    void merge_memories();
    void merge_selections();
};

/// Adds check bits to words.
class protection_operations : public transformation_operations {
public:
    /// @p source must outlive it.
    explicit protection_operations(choices& source) : transformation_operations(source) {}
    /// @throws std::logic_error that describes the difference
    void step();
};

} // namespace kvr_test
