#pragma once

#include "kvrimage/image/memory_image.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/models/choices.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kvr_test {

/// The part of a memory's addresses on which the operations work. No word outside of it is set.
struct memory_part {
    const char* name;
    std::uint32_t width;
    std::uint64_t depth;
    std::uint64_t base;
    std::uint64_t first; ///< offset of the part
    std::uint64_t size;  ///< of the part
};

/// Makes random changes to a memory_image and to a vector of words, and compares the results of all ways to
/// read the memory with the vector.
class memory_image_operations {
public:
    /// @p source must outlive it.
    explicit memory_image_operations(choices& source);

    /// Makes one change and compares the words near it; every 16th time, compares all words.
    /// @throws std::logic_error that describes the difference and names the change.
    void step();

    /// @throws std::logic_error
    void compare_all();

private:
    struct stretch {
        std::uint64_t first; ///< index in the part
        std::uint64_t last;  ///< inclusive
    };

    // The changes. Each returns the indexes that it may have changed.
    stretch set();
    stretch set_many();
    stretch fill();
    stretch fill_unset();
    stretch unset();
    stretch resize();
    stretch copy();
    stretch take_bytes();

    [[nodiscard]] bool ends_memory() const noexcept { return part.first + part.size == part.depth; }
    [[nodiscard]] bool is_whole() const noexcept { return part.first == 0 && ends_memory(); }
    [[nodiscard]] std::uint64_t size() const noexcept { return model.size(); }
    [[nodiscard]] std::uint64_t address(std::uint64_t index) const {
        return image.base() + part.first + index;
    }
    [[nodiscard]] std::uint64_t any_index() { return chosen.below(static_cast<std::uint32_t>(size())); }
    [[nodiscard]] stretch any_stretch();
    [[nodiscard]] kvrimage::word any_word();
    [[nodiscard]] kvrimage::word other_word();

    void compare_words(stretch where) const;
    void compare_runs(stretch where) const;
    void compare_repetition(std::uint64_t index) const;
    void compare_copy_to(stretch where) const;
    void compare_sums(stretch where) const;
    void compare_equality();
    void expect(bool holds, std::string_view what, std::uint64_t index) const {
        if (!holds) {
            fail(what, index);
        }
    }
    [[noreturn]] void fail(std::string_view what, std::uint64_t index) const;

    choices& chosen;
    memory_maker maker;
    const memory_part& part;
    kvrimage::memory_image image;
    std::vector<std::optional<kvrimage::word>> model;
    std::vector<kvrimage::word> values; ///< words that are used again
    std::string_view change = "the start";
    std::uint64_t steps = 0;
};

} // namespace kvr_test
