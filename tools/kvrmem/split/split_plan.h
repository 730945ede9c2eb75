#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kvrmem {

/// How a memory is split, by --bits, --every or --blocks.
struct split_plan {
    enum class kind : std::uint8_t { lanes, banks, blocks } how;
    std::uint64_t number; ///< bits of a lane, or number of banks or blocks

    /// Returns "--bits 8".
    [[nodiscard]] std::string title() const;
    /// Returns the number of parts of a memory with words of @p width bits, which must be divisible
    /// accordingly.
    [[nodiscard]] std::uint64_t part_count(std::uint32_t width) const noexcept;
};

/// Returns the plan in @p given.
/// @throws tool_error (wrong usage) if it has none or several
[[nodiscard]] split_plan plan_of(const arguments& given);

/// Splits @p image.
/// @throws tool_error (wrong usage) if the plan does not fit its size
[[nodiscard]] std::vector<kvrimage::memory_image> parts_of(const kvrimage::memory_image& image,
                                                           const split_plan& plan);

/// Joins @p parts to one memory.
/// @throws tool_error: wrong usage if they are not parts of one memory, bad input if a word is incomplete
[[nodiscard]] kvrimage::memory_image joined(std::span<const kvrimage::memory_image> parts,
                                            const split_plan& plan);

} // namespace kvrmem
