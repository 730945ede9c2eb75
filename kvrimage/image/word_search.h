#pragma once

#include "kvr/memory/store/word_row.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The first word from offset @p first to before @p end that @p is_sought, which gets its text, answers true
/// for, by its offset. Words that are not set are not asked for. A row that @p has_none answers true for is
/// not looked through; a run takes one look, and a cycle one round.
[[nodiscard]] std::optional<std::uint64_t>
find_word(const image_words& words, std::uint64_t first, std::uint64_t end,
          const std::function<bool(const kvr::word_row& row)>& has_none,
          const std::function<bool(std::string_view word)>& is_sought);

/// The first word of @p words from offset @p first to before @p end that cannot be shown in @p digits_radix:
/// a don't-care bit of it stands beside a plain one of the same digit, or the radix is decimal.
[[nodiscard]] std::optional<std::uint64_t> find_unshown_word(const image_words& words, std::uint32_t width,
                                                             radix digits_radix, std::uint64_t first,
                                                             std::uint64_t end);

/// The first of @p words with a don't-care bit.
[[nodiscard]] std::optional<std::uint64_t> find_dont_care_word(const image_words& words);

} // namespace kvrimage
