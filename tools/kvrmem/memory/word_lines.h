#pragma once

#include "kvr/memory/store/word_store.h"

#include <cstdint>
#include <limits>
#include <optional>

namespace kvrmem {

/// The size of the largest memory.
constexpr std::uint32_t every_address = std::numeric_limits<std::uint32_t>::max();

/// Which line of a file has set which word of a memory. The cost depends on the lines, not on how many words
/// each of them sets.
class word_lines {
public:
    explicit word_lines(std::uint32_t depth) { lines.resize(depth, ""); }

    /// A word that was set before.
    struct earlier {
        std::uint64_t address;
        std::uint64_t line;
    };

    /// Notes that @p line sets the words from @p first to @p last, and answers with the first of these that
    /// an earlier line has set. Addresses beyond the memory are left out.
    std::optional<earlier> set(std::uint64_t first, std::uint64_t last, std::uint64_t line);

    /// The line that has set the word at @p address; 0 when there is none.
    [[nodiscard]] std::uint64_t line_of(std::uint64_t address) const;

    /// The words that no line has set.
    struct gaps {
        std::uint64_t words = 0;
        std::uint64_t first = 0; ///< the lowest of them
    };
    [[nodiscard]] gaps between(std::uint64_t first, std::uint64_t last) const;

    [[nodiscard]] bool empty() const noexcept { return nothing_set; }
    /// The lowest and the highest address that was set.
    [[nodiscard]] std::uint64_t lowest() const noexcept { return lowest_set; }
    [[nodiscard]] std::uint64_t highest() const noexcept { return highest_set; }

private:
    [[nodiscard]] std::optional<earlier> find_set(std::uint32_t first, std::uint32_t last) const;

    kvr::word_store lines; ///< numbers of lines as text, "" for none
    bool nothing_set = true;
    std::uint64_t lowest_set = 0;
    std::uint64_t highest_set = 0;
};

} // namespace kvrmem
