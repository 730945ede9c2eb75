#pragma once

#include "kvrimage/bytes/record_style.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Neighbouring data records of one length, each of which goes on where the one before it ends.
struct record_run {
    std::uint64_t address = 0; ///< of the first one
    std::size_t records = 0;   ///< 0: none was taken
    std::size_t bytes = 0;     ///< of the data
    std::size_t size = 0;      ///< characters, line ends included
    std::size_t last = 0;      ///< where the last record begins
};

/// Takes the records at the front of @p lines that are as nearly all are: each in a line of its own that ends
/// with LF or CR LF, without a fault, with data that end within the addresses. The parser, which gets what
/// was not taken, would make the same of them.
/// @param data takes the bytes of the data; anything may be left after them. It has room for half as many as
/// @p lines has characters.
[[nodiscard]] record_run parse_record_run(std::string_view lines, const record_style& style,
                                          char* data) noexcept;

} // namespace kvrimage
