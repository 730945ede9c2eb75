#pragma once

#include "kvrimage/bytes/record_style.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The most characters of a record with its line end.
inline constexpr std::size_t longest_record = 2 + 2 * (1 + most_record_bytes + 6) + 1;

/// Writes the record of @p data at @p address, with LF, to @p place, which must have room for longest_record
/// characters.
/// @param address must fit the address bytes of the style
/// @param data at most as many bytes as the count field allows
/// @return the end of the record
char* put_record(const record_style& style, std::uint64_t address, std::string_view data,
                 char* place) noexcept;

} // namespace kvrimage
