#pragma once

#include "kvrimage/image/image_words.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// The offset of the first of @p words with a don't-care bit; nothing when there is none. What a fill has set
/// costs its pattern.
[[nodiscard]] std::optional<std::uint64_t> find_dont_care_word(const image_words& words);

} // namespace kvrimage
