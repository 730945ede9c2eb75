#pragma once

#include "kvrimage/image/image_words.h"

#include <optional>

namespace kvrimage {

/// The first word with a don't-care bit, by its offset; nothing when there is none.
[[nodiscard]] std::optional<text_run> find_dont_care_word(const image_words& words);

} // namespace kvrimage
