#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// The first word of @p words from offset @p first to before @p end that cannot be shown in @p digits_radix:
/// a don't-care bit of it stands beside a plain one of the same digit, or the radix is decimal.
[[nodiscard]] std::optional<std::uint64_t> find_unshown_word(const image_words& words, std::uint32_t width,
                                                             radix digits_radix, std::uint64_t first,
                                                             std::uint64_t end);

} // namespace kvrimage
