#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvrimage {

/// Words of a memory that are not set.
struct unset_words {
    std::uint64_t count = 0;
    std::uint64_t first = 0; ///< the lowest address of them, when there is one
};

/// The cost depends on what is set, and not on how many addresses there are.
[[nodiscard]] unset_words count_unset(const memory_image& image);

/// What check() reports of words of @p result that are not set, with @p consequence as its hint; nothing
/// where all are set, there is no image, or read() has reported it already.
[[nodiscard]] std::optional<diagnostic> find_unset_words(const read_result& result,
                                                         const std::string& consequence);

} // namespace kvrimage
