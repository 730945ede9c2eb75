#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvrimage {

/// The unset words of a memory.
struct unset_words {
    std::uint64_t count = 0;
    std::uint64_t first = 0; ///< the lowest address of an unset word, if there is one
};

/// Counts the unset words. Takes time proportional to the stored words, not to the depth.
[[nodiscard]] unset_words count_unset(const memory_image& image);

/// Returns the diagnostic of check() for unset words of @p result, with @p consequence as its hint. Returns
/// nothing if all words are set, if there is no image, or if read() has already reported it.
[[nodiscard]] std::optional<diagnostic> find_unset_words(const read_result& result,
                                                         const std::string& consequence);

} // namespace kvrimage
