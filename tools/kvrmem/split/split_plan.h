#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kvrmem {

/// How a memory is, or was, split: the one of --bits, --every and --blocks that was given.
struct split_plan {
    enum class kind : std::uint8_t { lanes, banks, blocks } how;
    std::uint64_t number; ///< bits of a lane, or how many banks or blocks there are

    /// "--bits 8"
    [[nodiscard]] std::string title() const;
    /// Parts of a memory of words of @p width bits that can be split so.
    [[nodiscard]] std::uint64_t part_count(std::uint32_t width) const noexcept;
};

/// The plan that @p given names.
/// @throws tool_error (wrong usage) when it names none or several
[[nodiscard]] split_plan plan_of(const arguments& given);

/// The parts of @p image.
/// @throws tool_error (wrong usage) when it cannot be split so
[[nodiscard]] std::vector<kvrimage::memory_image> parts_of(const kvrimage::memory_image& image,
                                                           const split_plan& plan);

/// The memory of which @p parts are the parts.
/// @throws tool_error: wrong usage when they are not parts of one memory, bad input when a word is not whole
[[nodiscard]] kvrimage::memory_image joined(std::span<const kvrimage::memory_image> parts,
                                            const split_plan& plan);

} // namespace kvrmem
