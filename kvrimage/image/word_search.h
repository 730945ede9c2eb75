#pragma once

#include "kvr/memory/store/word_row.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Returns the offset of the first word from @p first to @p end - 1 whose text satisfies @p is_sought. Words
/// that are not set are skipped, and so are rows for which @p has_none returns true. A run is tested once, a
/// cycle over one period.
[[nodiscard]] std::optional<std::uint64_t>
find_word(const image_words& words, std::uint64_t first, std::uint64_t end,
          const std::function<bool(const kvr::word_row& row)>& has_none,
          const std::function<bool(std::string_view word)>& is_sought);

/// Returns the offset of the first word from @p first to @p end - 1 that has no representation in
/// @p digits_radix: a don't-care bit shares a digit with other bits, or the radix is decimal.
[[nodiscard]] std::optional<std::uint64_t> find_unshown_word(const image_words& words, std::uint32_t width,
                                                             radix digits_radix, std::uint64_t first,
                                                             std::uint64_t end);

/// Returns the offset of the first word with a don't-care bit.
[[nodiscard]] std::optional<std::uint64_t> find_dont_care_word(const image_words& words);

} // namespace kvrimage
