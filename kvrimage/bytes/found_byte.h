#pragma once

#include "kvrimage/bytes/words_of_bytes.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::find_word for a byte file: returns the place of the first byte of the word at
/// @p address. @p find gives this place; returns nothing if it is empty.
[[nodiscard]] std::optional<place> find_byte_of_word(std::string_view contents, const read_options& options,
                                                     std::uint64_t address, const byte_finder& find);

} // namespace kvrimage
