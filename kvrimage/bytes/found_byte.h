#pragma once

#include "kvrimage/bytes/words_of_bytes.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// format::find_word for a file of bytes: the place of the first byte of the word at @p address that @p find
/// finds, an empty span being none.
[[nodiscard]] std::optional<place> find_byte_of_word(std::string_view contents, const read_options& options,
                                                     std::uint64_t address, const byte_finder& find);

} // namespace kvrimage
