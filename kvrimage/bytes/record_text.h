#pragma once

#include "kvrimage/bytes/record_style.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Room that any record needs, with its line end.
inline constexpr std::size_t longest_record = 2 + 2 * (1 + most_record_bytes + 6) + 1;

/// Writes the record of @p data at @p address, with LF, to @p place, which has room for longest_record
/// characters.
/// @param address has no more bytes than the style says
/// @param data no more bytes than a count can say, with what else it counts
/// @return the end of the record
char* put_record(const record_style& style, std::uint64_t address, std::string_view data,
                 char* place) noexcept;

} // namespace kvrimage
