#pragma once

#include "kvrimage/image/image_words.h"

#include <optional>

namespace kvrimage {

/// The first of @p words with a don't-care bit, and those that equal it after it; nothing when there is none.
[[nodiscard]] std::optional<text_run> find_dont_care_word(const image_words& words);

} // namespace kvrimage
