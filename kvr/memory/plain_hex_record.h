#pragma once

#include "kvr/memory/hex_record.h"
#include "kvr/numeric/eight_digits.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Adds the bytes of @p digits, an even number of characters from eight to 520, to @p sum. False when one of
/// them is no hexadecimal digit.
inline bool add_plain_bytes(std::string_view digits, std::uint32_t& sum) noexcept {
    constexpr std::size_t step = 8;
    std::uint64_t sums = 0; // 65 steps of 255 at most in each 16 bits
    std::uint64_t other = 0;
    const auto bytes_at = [&](std::size_t at) {
        const std::uint64_t eight = load_eight(digits.data() + at);
        other |= classes_of_eight(eight).other;
        return four_bytes(eight);
    };
    std::size_t at = 0;
    for (; at + step <= digits.size(); at += step) {
        sums += bytes_at(at);
    }
    if (at < digits.size()) {
        // The last eight characters, of which the first ones are in the sums already.
        const std::size_t counted = step - (digits.size() - at);
        sums += bytes_at(digits.size() - step) >> (counted / 2 * 16);
    }
    sum += sum_of_four(sums);
    return other == 0;
}

/// Length of the line end at the front of @p text: 1 for LF, 2 for CR LF, 0 for anything else.
inline std::size_t line_end_size(std::string_view text) noexcept {
    if (text.starts_with('\n')) {
        return 1;
    }
    return text.starts_with("\r\n") ? 2 : 0;
}

/// The fast way past split_hex_record() and check_hex_record() for what nearly every line is. It assumes
/// that the record begins with the first character of @p lines, is hexadecimal digits all through, has a
/// known type and a valid checksum, and ends with LF or CR LF, without a blank in it. For every other line
/// it answers 0 and leaves the verdict to the exact way; for such a line both give the same record.
///
/// @return number of bytes of the line with its LF, or 0; @p record is set only when it is not 0.
[[nodiscard]] inline std::size_t take_plain_hex_record(std::string_view lines, hex_record& record) noexcept {
    constexpr std::size_t shortest = 11; // the colon, eight digits of the header and two of the checksum
    if (lines.size() < shortest || lines.front() != ':') {
        return 0;
    }
    // Whether these are digits is tested with all the others.
    const std::uint64_t fields = four_bytes(load_eight(lines.data() + 1));
    const auto data_bytes = static_cast<std::uint32_t>(fields & 0xFF);
    const auto address = static_cast<std::uint32_t>((fields >> 16 & 0xFF) << 8 | (fields >> 32 & 0xFF));
    const auto type = static_cast<std::uint32_t>(fields >> 48);
    const std::size_t digits = shortest - 1 + 2 * std::size_t{data_bytes};
    if (lines.size() <= digits) {
        return 0;
    }
    const std::string_view text(lines.data() + 1, digits);
    std::uint32_t sum = 0;
    if (!add_plain_bytes(text, sum) || (sum & 0xFF) != 0) {
        return 0;
    }
    const std::size_t line_end = line_end_size(lines.substr(1 + digits));
    if (line_end == 0 || type >= static_cast<std::uint32_t>(hex_record_type::unknown)) {
        return 0;
    }
    record.text = text;
    record.data_bytes = data_bytes;
    record.word_address = address;
    record.kind = static_cast<hex_record_type>(type);
    return 1 + digits + line_end;
}

} // namespace kvr
